#include "runtime/Funktionen32/DecimalDigits.h"

#include "runtime/Funktionen32/BigNatural.h"
#include "runtime/RuntimeError.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>

namespace tarv {
namespace {

// IEEE 754 double: mantissa * 2^exponent.
constexpr int mantissaBits = 52;
constexpr std::uint64_t hiddenBit = std::uint64_t{1} << mantissaBits;
constexpr int exponentBias = 1075;
constexpr int exponentOfInfinity = 2047;

constexpr std::uint64_t powerOf10(int exponent) {
    std::uint64_t power = 1;
    for (; exponent > 0; --exponent)
        power *= 10;
    return power;
}
constexpr std::uint64_t firstTooLong = powerOf10(significantDigits);

constexpr std::array<std::uint64_t, 28> makePowersOf5() {
    std::array<std::uint64_t, 28> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i)
        powers[i] = powers[i - 1] * 5;
    return powers;
}
/// 5^0 ... 5^27: all that fit into 64 bits.
constexpr auto powersOf5 = makePowersOf5();

struct Binary {
    std::uint64_t mantissa;
    int exponent;
};

/// A number cut to a whole one, and whether the first bit cut off was a one (a half or more was lost).
struct Cut {
    std::uint64_t whole;
    bool half;
};

/// mantissa * 5^power / 2^shift in 128 bits (32-bit targets have no wider type).
Cut scaledByWords(std::uint64_t mantissa, int power, int shift) {
    const std::uint64_t factor = powersOf5[static_cast<std::size_t>(power)];
    const std::uint64_t low = (mantissa & UINT32_MAX) * (factor & UINT32_MAX);
    const std::uint64_t middle = (mantissa >> 32) * (factor & UINT32_MAX) + (low >> 32);
    const std::uint64_t cross = (mantissa & UINT32_MAX) * (factor >> 32) + (middle & UINT32_MAX);
    const std::uint64_t high = (mantissa >> 32) * (factor >> 32) + (middle >> 32) + (cross >> 32);
    const std::uint64_t bottom = cross << 32 | (low & UINT32_MAX);

    const auto from = [&](int bits) {
        if (bits >= 64)
            return high >> (bits - 64);
        return bits == 0 ? bottom : bottom >> bits | high << (64 - bits);
    };
    return {from(shift), (from(shift - 1) & 1) != 0};
}

Cut scaledExactly(Binary number, int power) {
    // One bit more than the whole number: the half.
    const int shift = number.exponent + power + 1;
    BigNatural value(number.mantissa);
    value.multiplyByPower(5, power);
    if (shift > 0)
        value.shiftLeft(shift);
    value.divideByPower(5, -power);
    bool lost = false;
    const std::uint64_t twice = value.bitsFrom(std::max(0, -shift), lost);
    return {twice >> 1, (twice & 1) != 0};
}

/// number * 10^power, cut.
Cut scaled(Binary number, int power) {
    if (power >= 0 && power < static_cast<int>(powersOf5.size()))
        return scaledByWords(number.mantissa, power, -(number.exponent + power));
    return scaledExactly(number, power);
}

/// Puts a double together from its leading 64 bits (the highest of them set), `top` * 2^`exponent`, half to
/// even.
double rounded(std::uint64_t top, bool lost, int exponent) {
    // Subnormal numbers have fewer bits, down to none.
    const int missing = std::max(0, 1 - (exponent + 63 + 1023));
    const int dropped = 64 - (mantissaBits + 1) + missing;
    if (dropped > 64)
        return 0;
    const std::uint64_t half = std::uint64_t{1} << (dropped - 1);
    const std::uint64_t rest = top & (half | (half - 1));
    std::uint64_t mantissa = dropped == 64 ? 0 : top >> dropped;
    if (rest > half || (rest == half && (lost || (mantissa & 1) != 0)))
        ++mantissa;
    // A carry out of the mantissa runs into the exponent, as it should.
    const int biased = missing > 0 ? 0 : exponent + 63 + 1023 - 1;
    if (biased >= exponentOfInfinity - 1)
        return std::numeric_limits<double>::infinity();
    return std::bit_cast<double>((static_cast<std::uint64_t>(biased) << mantissaBits) + mantissa);
}

} // namespace

DecimalDigits decimalDigits(double number) {
    const auto bits = std::bit_cast<std::uint64_t>(number);
    const int biased = static_cast<int>(bits >> mantissaBits) & exponentOfInfinity;
    if (biased == exponentOfInfinity)
        raise(error_number::overflow);
    Binary binary{bits & (hiddenBit - 1), std::max(biased, 1) - exponentBias};
    if (biased != 0)
        binary.mantissa |= hiddenBit;
    if (binary.mantissa == 0)
        return {};

    // 78913 / 2^18 is log10(2): the position of the first digit, or one less.
    const int firstBit = 63 - std::countl_zero(binary.mantissa);
    int power = significantDigits - 1 - ((firstBit + binary.exponent) * 78913 >> 18);
    // Subnormal numbers take the exact way, which needs no full mantissa.
    Cut cut = scaled(binary, power);
    if (cut.whole >= firstTooLong)
        cut = scaled(binary, --power);
    std::uint64_t digits = cut.whole + (cut.half ? 1 : 0);
    if (digits == firstTooLong) {
        digits /= 10;
        --power;
    }
    return {(bits >> 63) != 0, digits, -power};
}

double nearestDouble(std::string_view digits, int exponent) {
    BigNatural value(0);
    for (const char digit : digits)
        value.multiply(10, static_cast<std::uint32_t>(digit - '0'));
    if (value.bitLength() == 0)
        return 0;
    int binaryExponent = 0;
    bool lost = false;
    if (exponent >= 0) {
        value.multiplyByPower(10, exponent);
    } else {
        // 65 bits more than the divisor, so that the quotient has the 64 that are looked at.
        const int needed = 65 + static_cast<int>(-exponent * 2.3219281) + 1;
        binaryExponent = exponent;
        if (value.bitLength() < needed) {
            binaryExponent -= needed - value.bitLength();
            value.shiftLeft(needed - value.bitLength());
        }
        lost = value.divideByPower(5, -exponent);
    }
    int length = value.bitLength();
    if (length < 64) {
        value.shiftLeft(64 - length);
        binaryExponent -= 64 - length;
        length = 64;
    }
    const std::uint64_t top = value.bitsFrom(length - 64, lost);
    return rounded(top, lost, binaryExponent + length - 64);
}

} // namespace tarv
