#include "runtime/detail/NumberFormat.h"

#include "platform/Platform.h"
#include "platform/SystemFacts.h"
#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/NumberText.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"
#include "runtime/detail/TextBuffer.h"

#include <type_traits>

namespace tarv {
namespace {

bool isSign(wchar_t c) {
    return c == L'-' || c == L'+';
}

double numberInText(std::wstring_view written, const NumberFormat& format) {
    std::wstring_view text = trim(written);
    TextBuffer number;
    if (!text.empty() && (isSign(text.front()) || isSign(text.back()))) {
        const bool front = isSign(text.front());
        number.append(front ? text.front() : text.back());
        text = trim(front ? text.substr(1) : text.substr(0, text.size() - 1));
    }

    enum {
        whole,
        decimals,
        exponentSign,
        exponent
    } part = whole;
    bool digits = false;
    for (wchar_t c : text) {
        if (isDigit(c)) {
            digits = true;
            part = part == exponentSign ? exponent : part;
        } else if (part == whole && c == format.decimal) {
            c = L'.';
            part = decimals;
        } else if (part == whole && digits && c == format.thousands && c != L'\0') {
            continue;
        } else if (part <= decimals && digits && (c == L'E' || c == L'e')) {
            digits = false;
            part = exponentSign;
        } else if (part == exponentSign && isSign(c)) {
            part = exponent;
        } else {
            raise(error_number::typeMismatch);
        }
        number.append(c);
    }
    if (!digits)
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
