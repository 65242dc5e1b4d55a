#pragma once

#include "runtime/Funktionen32/TextBuffer.h"

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

/// A number picture: "#" stands for a digit where there is one, "0" for a digit in any case, "." for the
/// decimal separator. Other characters mean nothing.
struct Picture {
    int wholeDigits = 0;
    bool point = false;
    /// Decimal places shown in any case, and at most.
    int places = 0;
    int mostPlaces = 0;
};

constexpr Picture picture(std::wstring_view text) {
    Picture result;
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

/// Appends a number formatted with a picture: of its 15 significant digits, half away from zero. The sign
/// stands in front; what rounds to zero has none. Raises overflow (6) for what is no finite number.
void appendFormatted(TextBuffer& text, double number, const Picture& picture, const NumberFormat& format);

} // namespace tarv
