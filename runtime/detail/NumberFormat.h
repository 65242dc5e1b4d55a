#pragma once

#include "platform/Automation.h"

#include <string>

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

} // namespace tarv
