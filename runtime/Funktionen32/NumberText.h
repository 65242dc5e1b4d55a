#pragma once

#include "platform/Automation.h"

#include <string>
#include <string_view>

namespace tarv {

/// A number as text: 15 significant digits, half away from zero, never an exponent, never "-0", with the
/// given decimal separator.
std::wstring numberText(double number, std::wstring_view decimalSeparator);

/// The numeric value of a text under "." as decimal separator is NumberReader's job; this is the way back: a
/// value as the configuration file holds it (numbers with ".", Booleans as -1 and 0, dates as their day
/// number, texts as they stand; empty for Empty, Null, Missing and objects).
std::wstring invariantText(const Value& value);

} // namespace tarv
