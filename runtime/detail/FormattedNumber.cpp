#include "runtime/detail/FormattedNumber.h"

#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/Texts.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cwchar>

namespace tarv {
namespace {

// IEEE 754 double: mantissa * 2^exponent.
constexpr int mantissaBits = 52;
constexpr std::uint64_t hiddenBit = std::uint64_t{1} << mantissaBits;
constexpr int exponentBias = 1023;

constexpr int significantDigits = 15;
constexpr std::uint64_t firstTooLong = 1'000'000'000'000'000;

/// A number in 15 significant digits: `digits` * 10^`exponent`.
struct DecimalDigits {
    std::uint64_t digits = 0;
    int exponent = 0;
};

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

/// Rounded half away from zero from the exact value. For what is not negative.
DecimalDigits decimalDigits(double number) {
    if (number == 0)
        return {};
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
        return {digits / 10, 1 - power};
    return {digits, -power};
}

/// The digits of a decimal number by their place: 0 is the ones' place, -1 the first behind the point.
class Places {
public:
    /// `decimal` rounded half away from zero to `places` behind the point.
    Places(DecimalDigits decimal, int places) : lowest_(decimal.exponent) {
        std::uint64_t digits = decimal.digits;
        if (const int dropped = -places - decimal.exponent; dropped > 0) {
            digits = dropped > significantDigits ? 0 : withoutLast(digits, dropped);
            lowest_ = -places;
        }
        for (; digits != 0; digits /= 10)
            digits_[static_cast<std::size_t>(count_++)] = static_cast<wchar_t>(L'0' + digits % 10);
    }

    bool zero() const { return count_ == 0; }
    int whole() const { return zero() ? 0 : std::max(0, lowest_ + count_); }
    int decimals() const { return std::max(0, -lowest_); }

    wchar_t at(int place) const {
        const int index = place - lowest_;
        return index < 0 || index >= count_ ? L'0' : digits_[static_cast<std::size_t>(index)];
    }

private:
    static std::uint64_t withoutLast(std::uint64_t digits, int dropped) {
        std::uint64_t unit = 1;
        for (; dropped > 0; --dropped)
            unit *= 10;
        return digits / unit + (digits % unit >= unit / 2 ? 1 : 0);
    }

    /// The lowest place first.
    std::array<wchar_t, significantDigits + 1> digits_;
    int count_ = 0;
    int lowest_;
};

} // namespace

void appendFormatted(TextBuffer& text, double number, const NumberPicture& picture,
                     wchar_t decimalSeparator) {
    if (!std::isfinite(number))
        raise(error_number::overflow);
    const Places digits(decimalDigits(std::fabs(number)), picture.mostPlaces);
    if (number < 0 && !digits.zero())
        text.append(L'-');
    for (int place = std::max(picture.wholeDigits, digits.whole()) - 1; place >= 0; --place)
        text.append(digits.at(place));
    if (!picture.point)
        return;
    text.append(decimalSeparator);
    int places = std::max(picture.places, std::min(picture.mostPlaces, digits.decimals()));
    while (places > picture.places && digits.at(-places) == L'0')
        --places;
    for (int place = 1; place <= places; ++place)
        text.append(digits.at(-place));
}

} // namespace tarv
