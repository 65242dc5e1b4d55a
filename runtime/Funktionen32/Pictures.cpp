#include "runtime/Funktionen32/Pictures.h"

#include "platform/Platform.h"
#include "platform/SystemFacts.h"
#include "runtime/Funktionen32/DecimalDigits.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

namespace tarv {
namespace {

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

NumberFormat numberFormat(Runtime& rt) {
    const std::wstring decimal = rt.platform.facts->decimalSeparator();
    const std::wstring thousands = rt.platform.facts->thousandsSeparator();
    NumberFormat format;
    if (!decimal.empty())
        format.decimal = decimal.front();
    if (!thousands.empty() && !isDigit(thousands.front()) && thousands.front() != format.decimal)
        format.thousands = thousands.front();
    return format;
}

void appendFormatted(TextBuffer& text, double number, const Picture& picture, const NumberFormat& format) {
    const DecimalDigits decimal = decimalDigits(number);
    const Places digits(decimal, picture.mostPlaces);
    if (decimal.negative && !digits.zero())
        text.append(L'-');
    for (int place = std::max(picture.wholeDigits, digits.whole()) - 1; place >= 0; --place)
        text.append(digits.at(place));
    if (!picture.point)
        return;
    text.append(format.decimal);
    int places = picture.mostPlaces;
    while (places > picture.places && digits.at(-places) == L'0')
        --places;
    for (int place = 1; place <= places; ++place)
        text.append(digits.at(-place));
}

} // namespace tarv
