#pragma once

#include "runtime/detail/TextBuffer.h"

namespace tarv {

/// How a number is to be written.
struct NumberPicture {
    /// Digits in front of the decimal separator that are shown in any case.
    int wholeDigits = 0;
    /// Whether there is a decimal separator.
    bool point = false;
    /// Decimal places shown in any case, and at most.
    int places = 0;
    int mostPlaces = 0;
};

/// Appends a number in a picture: 15 significant digits, rounded half away from zero from the exact value.
/// The sign stands in front; what rounds to zero has none. Raises overflow (6) for what is no finite number.
void appendFormatted(TextBuffer& text, double number, const NumberPicture& picture, wchar_t decimalSeparator);

} // namespace tarv
