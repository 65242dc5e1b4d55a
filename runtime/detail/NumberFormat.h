#pragma once

#include "platform/Automation.h"
#include "runtime/detail/TextBuffer.h"

#include <string>
#include <string_view>

namespace tarv {

struct Runtime;

/// The separators of the regional settings in force, one character each.
struct NumberFormat {
    /// "." where the settings have none.
    wchar_t decimal = L'.';
    /// NUL where the settings have none, or one that is a digit or the decimal separator again.
    wchar_t thousands = L'\0';
};

/// Reads the settings anew: a change in the control panel counts at the next call.
NumberFormat numberFormat(Runtime& rt);

/// A value as the user reads it: numbers with the decimal separator in force, "Wahr" and "Falsch", dates as
/// their day number; empty for Empty, Null, Missing and objects.
std::wstring regionalText(const Value& value, const NumberFormat& format);

/// The number that a value holds; true is -1, Empty 0. Text is read as the user writes it: blanks around, a
/// sign on either side, thousands separators in front of the decimal separator, an exponent, nothing else.
///
/// Raises invalid use of Null (94), type mismatch (13) for text that is no number and for objects, overflow
/// (6).
double regionalNumber(const Value& value, const NumberFormat& format);

/// How a number is to be written: "#" stands for a digit where there is one, "0" for a digit in any case, "."
/// for the decimal separator. Other characters mean nothing.
struct NumberPicture {
    int wholeDigits = 0;
    bool point = false;
    /// Decimal places shown in any case, and at most.
    int places = 0;
    int mostPlaces = 0;
};

constexpr NumberPicture numberPicture(std::wstring_view text) {
    NumberPicture result;
    for (const wchar_t c : text)
        if (c == L'.')
            result.point = true;
        else if (c != L'0' && c != L'#')
            continue;
        else if (!result.point)
            result.wholeDigits += c == L'0' || result.wholeDigits > 0 ? 1 : 0;
        else if (++result.mostPlaces; c == L'0')
            result.places = result.mostPlaces;
    return result;
}

/// Appends a number in a picture: 15 significant digits, rounded half away from zero. The sign stands in
/// front; what rounds to zero has none. Raises overflow (6) for what is no finite number.
void appendFormatted(TextBuffer& text, double number, const NumberPicture& picture,
                     const NumberFormat& format);

} // namespace tarv
