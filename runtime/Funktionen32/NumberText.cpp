#include "runtime/Funktionen32/NumberText.h"

#include "runtime/Funktionen32/DecimalDigits.h"

#include <algorithm>
#include <type_traits>

namespace tarv {

std::wstring numberText(double number, std::wstring_view decimalSeparator) {
    DecimalDigits decimal = decimalDigits(number);
    while (decimal.digits != 0 && decimal.digits % 10 == 0) {
        decimal.digits /= 10;
        ++decimal.exponent;
    }
    std::wstring digits = std::to_wstring(decimal.digits);
    if (decimal.exponent >= 0) {
        digits.append(static_cast<std::size_t>(decimal.exponent), L'0');
    } else {
        const auto places = static_cast<std::size_t>(-decimal.exponent);
        if (digits.size() <= places)
            digits.insert(0, places + 1 - digits.size(), L'0');
        digits.insert(digits.size() - places, decimalSeparator);
    }
    return decimal.negative ? L'-' + digits : digits;
}

std::wstring invariantText(const Value& value) {
    return std::visit(
        [](const auto& held) -> std::wstring {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::wstring>)
                return held;
            else if constexpr (std::is_same_v<Held, bool>)
                return held ? L"-1" : L"0";
            else if constexpr (std::is_same_v<Held, Date>)
                return numberText(held.days, L".");
            else if constexpr (std::is_arithmetic_v<Held>)
                return numberText(held, L".");
            else
                return {};
        },
        value);
}

} // namespace tarv
