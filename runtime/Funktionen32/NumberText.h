#pragma once

#include "platform/Automation.h"

#include <string>
#include <string_view>

namespace tarv {

/// Reads the number at the start of a text, whatever the regional settings: "." is the decimal point, blanks
/// are skipped anywhere, a sign and an exponent (E or e) are accepted; reading stops at the first character
/// that cannot belong to a number. Text that does not begin with a number gives 0, and so does sign after
/// sign. An exponent without digits is ignored. Raises overflow (6) where the number exceeds a double.
double readNumber(std::wstring_view text);

/// A number as text: 15 significant digits, half away from zero, never an exponent, never "-0". Raises
/// overflow (6) for what is no finite number.
std::wstring numberText(double number, std::wstring_view decimalSeparator);

/// A value as the configuration file holds it: numbers with ".", Booleans as -1 and 0, dates as their day
/// number, texts as they stand; empty for Empty, Null, Missing and objects.
std::wstring invariantText(const Value& value, std::wstring_view decimalSeparator = L".");

/// The value as text (see invariantText), `fallback` for Empty, Null and Missing.
std::wstring textOf(const Value& value, std::wstring_view fallback = {});

/// The value as a number: texts by readNumber, Booleans as -1 and 0, objects as 0; `fallback` for Empty,
/// Null and Missing. Raises overflow (6) where a text exceeds a double.
double numberOf(const Value& value, double fallback = 0);

} // namespace tarv
