#pragma once

#include "platform/Automation.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tarv {

struct Runtime;

/// Reads a number text whatever the regional settings were when it was written (1.234,5 as well as 1,234.5,
/// and 1,5E3). Reading ends at the first character that belongs to no number, or at `stop` (one character, or
/// empty for none). 0 for a text without a number, and where the number exceeds a double.
///
/// Other programs rely on how it tells the conventions apart: under German settings a lone point is a decimal
/// point (1.234 is 1.234), of several points the first is dropped (1.2.3 is 12.3); under English
/// ones 1.234,56 is 1234. In developer mode a message asks why a text is in the other convention.
double ToVal(Runtime& rt, std::wstring_view text, std::wstring_view stop = {});

/// Rounds commercially to `decimals` places: from 0.499 of the last place on upwards, symmetric about zero. A
/// text is read by the regional settings. Negative `decimals` give `value` unchanged; zero without decimals
/// is the integer 0.
///
/// With two decimals and `thirdDecimalFlag`, a value with a significant third decimal has its result moved by
/// 0.01 where it ends in ,99 (up) or ,01 (down); a value without one clears the flag.
///
/// Never fails: what cannot be rounded is given back unchanged; an empty or Null `value` becomes 0. The error
/// is shown in the development environment only.
Value RoundValue(Runtime& rt, Value& value, std::int16_t decimals, bool& thirdDecimalFlag);

/// How often `find` occurs in the text of `text`, not overlapping; 0 for an empty `find`.
std::int32_t CountOccurrences(Runtime& rt, const Value& text, std::wstring_view find);

/// Whether the text is not empty and has only characters of " +-*/,.()0123456789".
bool IsFormulaText(std::wstring_view text);

/// The text of `value` brought to `width` characters: filled on the left with the pad text, or cut to its
/// last `width` characters. Without a pad text nothing is filled or cut; with `noPad` nothing is filled.
/// Empty for a width below 1.
std::wstring PadLeft(Runtime& rt, const Value& value, std::int32_t width, std::wstring_view pad, bool noPad);

} // namespace tarv
