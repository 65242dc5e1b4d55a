#pragma once

#include "platform/Automation.h"
#include "runtime/Funktionen32/Pictures.h"

#include <string>

namespace tarv {

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
