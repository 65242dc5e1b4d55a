#include "runtime/Funktionen32/RegionalText.h"

#include "runtime/Funktionen32/NumberReader.h"
#include "runtime/Funktionen32/NumberText.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/RuntimeError.h"

#include <type_traits>

namespace tarv {
namespace {

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

std::wstring regionalText(const Value& value, const NumberFormat& format) {
    return std::visit(
        [&](const auto& held) -> std::wstring {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::wstring>)
                return held;
            else if constexpr (std::is_same_v<Held, bool>)
                return held ? L"Wahr" : L"Falsch";
            else if constexpr (std::is_same_v<Held, Date>)
                return numberText(held.days, {&format.decimal, 1});
            else if constexpr (std::is_arithmetic_v<Held>)
                return numberText(held, {&format.decimal, 1});
            else
                return {};
        },
        value);
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
