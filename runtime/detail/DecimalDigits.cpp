#include "runtime/detail/DecimalDigits.h"

#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/Texts.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <cwchar>

namespace tarv {
namespace {

// IEEE 754 double: mantissa * 2^exponent.
constexpr int mantissaBits = 52;
constexpr std::uint64_t hiddenBit = std::uint64_t{1} << mantissaBits;
constexpr int exponentBias = 1023;

constexpr std::uint64_t firstTooLong = 1'000'000'000'000'000;
static_assert(significantDigits == 15);

constexpr std::array<std::uint64_t, 28> makePowersOf5() {
    std::array<std::uint64_t, 28> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i)
        powers[i] = powers[i - 1] * 5;
    return powers;
}
/// 5^0 ... 5^27: all that fit into 64 bits.
constexpr auto powersOf5 = makePowersOf5();

/// mantissa * 5^power / 2^shift in 128 bits (32-bit targets have no wider type), cut.
std::uint64_t scaledByWords(std::uint64_t mantissa, int power, int shift) {
    const std::uint64_t factor = powersOf5[static_cast<std::size_t>(power)];
    const std::uint64_t low = (mantissa & UINT32_MAX) * (factor & UINT32_MAX);
    const std::uint64_t middle = (mantissa >> 32) * (factor & UINT32_MAX) + (low >> 32);
    const std::uint64_t cross = (mantissa & UINT32_MAX) * (factor >> 32) + (middle & UINT32_MAX);
    const std::uint64_t high = (mantissa >> 32) * (factor >> 32) + (middle >> 32) + (cross >> 32);
    const std::uint64_t bottom = cross << 32 | (low & UINT32_MAX);
    return shift >= 64 ? high >> (shift - 64) : bottom >> shift | high << (64 - shift);
}

/// number * 10^power in halves, cut. For numbers from 1e-12 up to 1e17.
std::uint64_t halves(double number, int power) {
    if (power < 0)
        return static_cast<std::uint64_t>(number * 2) / (power == -1 ? 10 : 100);
    const auto bits = std::bit_cast<std::uint64_t>(number);
    const int exponent = static_cast<int>(bits >> mantissaBits) - exponentBias - mantissaBits;
    return scaledByWords((bits & (hiddenBit - 1)) | hiddenBit, power, -(exponent + power + 1));
}

/// For numbers below 1e-12 or from 1e17 on. None of them lies half-way between two numbers of 15 digits, so
/// it does not matter that the C library rounds halves to even. (That of MinGW is exact, other than that of
/// msvcrt.dll.) std::to_chars does the same, but with it the program exceeds the 700 KB that it may have:
/// tried, 810 KB instead of 640.
DecimalDigits digitsByLibrary(double number) {
    // In wide characters: that half of the library is in the program already.
    std::array<wchar_t, 32> text;
    static_cast<void>(std::swprintf(text.data(), text.size(), L"%.14e", number));
    DecimalDigits result;
    const wchar_t* at = text.data();
    // The point may be any character: it follows the program's locale.
    for (; *at != L'e'; ++at)
        if (isDigit(*at))
            result.digits = result.digits * 10 + static_cast<std::uint64_t>(*at - L'0');
    result.exponent = static_cast<int>(std::wcstol(at + 1, nullptr, 10)) - (significantDigits - 1);
    return result;
}

DecimalDigits positiveDigits(double number) {
    if (number < 1e-12 || number >= 1e17)
        return digitsByLibrary(number);
    // 78913 / 2^18 is log10(2): the position of the first digit, or one less.
    const int exponent =
        static_cast<int>(std::bit_cast<std::uint64_t>(number) >> mantissaBits) - exponentBias;
    int power = significantDigits - 1 - (exponent * 78913 >> 18);
    std::uint64_t twice = halves(number, power);
    if (twice >= 2 * firstTooLong)
        twice = halves(number, --power);
    const std::uint64_t digits = (twice + 1) / 2;
    if (digits == firstTooLong)
        return {false, digits / 10, 1 - power};
    return {false, digits, -power};
}

} // namespace

DecimalDigits decimalDigits(double number) {
    if (!std::isfinite(number))
        raise(error_number::overflow);
    if (number == 0)
        return {};
    DecimalDigits result = positiveDigits(std::fabs(number));
    result.negative = number < 0;
    return result;
}

} // namespace tarv
