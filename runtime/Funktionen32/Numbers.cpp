#include "runtime/Funktionen32/Numbers.h"

#include "platform/Desktop.h"
#include "platform/Platform.h"
#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/NumberText.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"
#include "runtime/detail/FormattedNumber.h"
#include "runtime/detail/NumberFormat.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>

namespace tarv {
namespace {

/// Whether the text is a number with an exponent rather than an amount with a remark.
bool isScientific(std::wstring_view text) {
    if (text.size() < 3)
        return false;
    const auto exponent = std::ranges::find_if(text, [](wchar_t c) { return c == L'E' || c == L'e'; });
    const auto index = static_cast<std::size_t>(exponent - text.begin());
    return index >= 1 && index + 1 < text.size() && IsFormulaText(text.substr(0, index)) &&
           IsFormulaText(text.substr(index + 1)) && text[index - 1] != L' ';
}

/// The value of a scientific number, rounded to 8 places, as an ordinary number text.
std::wstring scientificAsText(Runtime& rt, std::wstring_view text, const NumberFormat& format) {
    TextBuffer written;
    written.append(text);
    if (!written.contains(L'.'))
        written.replaceAll(L',', L'.');
    Value number = readNumber(written.view());
    bool thirdDecimalFlag = false;
    const Value rounded = RoundValue(rt, number, 8, thirdDecimalFlag);
    return std::wstring(trim(regionalText(rounded, format)));
}

/// Copies characters of numbers up to the first other one, or up to the stop character.
void appendNumberText(TextBuffer& number, std::wstring_view text, const NumberFormat& format,
                      std::wstring_view stop) {
    for (const wchar_t c : text) {
        const bool numeric = isDigit(c) || c == L',' || c == L'.' || c == L' ' || c == L'-' || c == L'+' ||
                             (c == format.thousands && c != L'\0');
        if (!numeric || (stop.size() == 1 && c == stop[0]))
            break;
        number.append(c);
    }
}

/// Brings a number text to "." as decimal point. What looks unequal here between the conventions is meant so.
void normaliseSeparators(Runtime& rt, TextBuffer& number, const NumberFormat& format) {
    const auto [decimal, thousands] = format;
    const std::size_t none = number.size();
    const std::size_t firstDecimal = number.find(decimal);
    const std::size_t firstThousands = thousands != L'\0' ? number.find(thousands) : none;
    if (firstDecimal != none && firstThousands != none) {
        if (firstThousands < firstDecimal) {
            number.removeAll(thousands);
        } else {
            if (bIstEntwicklung(rt))
                rt.platform.desktop->messageBox(
                    TranslateText(L"Warum Englisch Formatiert:  ").append(number.view()),
                    TranslateText(L"ToVal - bistEntwicklung"), message_box::ok | message_box::systemModal);
            number.removeAll(decimal);
        }
    } else if (thousands == L',' && number.contains(L',') && number.contains(L'.') &&
               number.size() >= number.find(L',') + 1 + 3) {
        number.removeAll(L',');
    } else if (thousands == L' ') {
        number.removeAll(L' ');
    } else {
        number.replaceAll(L',', L'.');
    }

    if (std::ranges::count(number.view(), L'.') >= 2)
        number.removeAt(number.find(L'.'));
    if (decimal == L',')
        number.replaceAll(L',', L'.');
}

double numberOf(Runtime& rt, std::wstring_view text, std::wstring_view stop, const NumberFormat& format,
                bool scientific) {
    try {
        TextBuffer number;
        if (scientific)
            appendNumberText(number, scientificAsText(rt, text, format), format, {});
        else
            appendNumberText(number, text, format, stop);
        normaliseSeparators(rt, number, format);
        return readNumber(number.view());
    } catch (const RuntimeError&) {
        return 0;
    }
}

double finite(double number) {
    if (!std::isfinite(number))
        raise(error_number::overflow);
    return number;
}

/// 10^exponent, correctly rounded: the same on every machine.
double powerOf10(int exponent) {
    constexpr std::array usual{1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};
    const auto index = static_cast<std::size_t>(exponent);
    return index < usual.size() ? usual[index] : readNumber(L"1E" + std::to_wstring(exponent));
}

/// Whether a third decimal place is there, in the number as it is shown.
bool hasThirdDecimal(double number) {
    TextBuffer text;
    appendFormatted(text, number, {0, true, 2, 3}, L'.');
    return text.size() - text.find(L'.') > 3;
}

bool endsAs(double number, std::wstring_view decimals, const NumberFormat& format) {
    return regionalText(number, format).ends_with(std::wstring(1, format.decimal).append(decimals));
}

Value roundedValue(Runtime& rt, double number, std::int16_t decimals, bool& thirdDecimalFlag,
                   const NumberFormat& format) {
    const double factor = powerOf10(decimals);
    // 0.501 and not 0.5: prices of the suite have always been rounded so.
    const double rounded = finite(std::floor(finite(factor * std::fabs(number) + 0.501)) / factor);
    TextBuffer text;
    const bool point = decimals > 0;
    appendFormatted(text, rounded, {point ? 1 : 0, point, decimals, decimals}, format.decimal);
    // Not scientific, though the decimal separator be an "E".
    double result = numberOf(rt, text.view(), {}, format, false);
    if (number < 0)
        result = 0 - result;

    thirdDecimalFlag = thirdDecimalFlag && hasThirdDecimal(number);
    if (decimals == 2 && thirdDecimalFlag) {
        if (endsAs(result, L"99", format))
            result += 0.01;
        else if (endsAs(result, L"01", format))
            result -= 0.01;
    }
    // Without decimals zero is shown as an empty text.
    return text.size() == 0 ? Value(std::int16_t{0}) : Value(result);
}

} // namespace

double ToVal(Runtime& rt, std::wstring_view text, std::wstring_view stop) {
    return numberOf(rt, text, stop, numberFormat(rt), isScientific(text));
}

Value RoundValue(Runtime& rt, Value& value, std::int16_t decimals, bool& thirdDecimalFlag) {
    if (decimals < 0)
        return value;
    const NumberFormat format = numberFormat(rt);
    try {
        return roundedValue(rt, regionalNumber(value, format), decimals, thirdDecimalFlag, format);
    } catch (const RuntimeError& error) {
        if (IsDesign(rt)) {
            ErrorRecord record = error.record();
            ShowErrorMsg(rt, record, TranslateText(L"beim Runden der Zahl:") + regionalText(value, format),
                         {});
        }
        if (value == Value(Null{}) || value == Value(std::wstring()))
            value = std::int16_t{0};
        return value;
    }
}

std::int32_t CountOccurrences(Runtime& rt, const Value& text, std::wstring_view find) {
    if (find.empty())
        return 0;
    const std::wstring searched = regionalText(text, numberFormat(rt));
    std::int32_t count = 0;
    for (auto at = searched.find(find); at != searched.npos; at = searched.find(find, at + find.size()))
        ++count;
    return count;
}

bool IsFormulaText(std::wstring_view text) {
    static constexpr std::wstring_view allowed = L" +-*/,.()0123456789";
    return !text.empty() &&
           std::ranges::all_of(text, [](wchar_t c) { return allowed.find(c) != allowed.npos; });
}

std::wstring PadLeft(Runtime& rt, const Value& value, std::int32_t width, std::wstring_view pad, bool noPad) {
    if (width < 1)
        return {};
    std::wstring text = regionalText(value, numberFormat(rt));
    const auto wanted = static_cast<std::size_t>(width);
    if (wanted < text.size())
        return pad.empty() ? text : text.substr(text.size() - wanted);
    if (noPad || pad.empty())
        return text;
    // The pad text repeats up to the value, so a part of it can only stand at the very left.
    const std::size_t missing = wanted - text.size();
    try {
        std::wstring filled;
        filled.reserve(wanted);
        filled = pad.substr(pad.size() - missing % pad.size());
        while (filled.size() < missing)
            filled.append(pad);
        return filled.append(text);
    } catch (const std::exception&) {
        return text; // a width beyond memory
    }
}

} // namespace tarv
