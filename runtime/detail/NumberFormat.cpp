#include "runtime/detail/NumberFormat.h"

#include "platform/Platform.h"
#include "platform/SystemFacts.h"
#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/NumberText.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"
#include "runtime/detail/DecimalDigits.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <type_traits>

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

bool isSign(wchar_t c) {
    return c == L'-' || c == L'+';
}

/// Cuts a sign off one end, and the blanks inside of it, into `number`.
void takeSign(std::wstring_view& text, TextBuffer& number) {
    const bool front = !text.empty() && isSign(text.front());
    const bool back = !front && !text.empty() && isSign(text.back());
    if (!front && !back)
        return;
    number.append(front ? text.front() : text.back());
    text = trim(front ? text.substr(1) : text.substr(0, text.size() - 1));
}

/// Cuts the digits at the start off into `number`, skipping separators behind a digit; answers how many there
/// were.
std::size_t takeDigits(std::wstring_view& text, TextBuffer& number, wchar_t separator) {
    std::size_t count = 0;
    for (; !text.empty(); text.remove_prefix(1)) {
        if (isDigit(text.front())) {
            number.append(text.front());
            ++count;
        } else if (count == 0 || separator == L'\0' || text.front() != separator) {
            break;
        }
    }
    return count;
}

double numberInText(std::wstring_view written, const NumberFormat& format) {
    std::wstring_view text = trim(written);
    TextBuffer number;
    takeSign(text, number);
    std::size_t digits = takeDigits(text, number, format.thousands);
    if (!text.empty() && text.front() == format.decimal) {
        number.append(L'.');
        text.remove_prefix(1);
        digits += takeDigits(text, number, L'\0');
    }
    bool complete = digits > 0;
    if (complete && !text.empty() && (text.front() == L'E' || text.front() == L'e')) {
        number.append(L'E');
        text.remove_prefix(1);
        if (!text.empty() && isSign(text.front())) {
            number.append(text.front());
            text.remove_prefix(1);
        }
        complete = takeDigits(text, number, L'\0') > 0;
    }
    if (!complete || !text.empty())
        raise(error_number::typeMismatch);
    return readNumber(number.view());
}

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

void appendFormatted(TextBuffer& text, double number, const NumberPicture& picture,
                     const NumberFormat& format) {
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

std::wstring regionalText(const Value& value, const NumberFormat& format) {
    if (const bool* truth = std::get_if<bool>(&value))
        return *truth ? L"Wahr" : L"Falsch";
    return invariantText(value, {&format.decimal, 1});
}

double regionalNumber(const Value& value, const NumberFormat& format) {
    return std::visit(
        [&](const auto& held) -> double {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::wstring>)
                return numberInText(held, format);
            else if constexpr (std::is_same_v<Held, bool>)
                return held ? -1 : 0;
            else if constexpr (std::is_same_v<Held, Date>)
                return held.days;
            else if constexpr (std::is_arithmetic_v<Held>)
                return held;
            else if constexpr (std::is_same_v<Held, Empty>)
                return 0;
            else if constexpr (std::is_same_v<Held, Null>)
                raise(error_number::invalidUseOfNull);
            else
                raise(error_number::typeMismatch);
        },
        value);
}

} // namespace tarv
