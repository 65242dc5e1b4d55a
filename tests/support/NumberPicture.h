#pragma once

#include "runtime/detail/FormattedNumber.h"

#include <string_view>

namespace tarv {

/// A picture by its text: "#" stands for a digit where there is one, "0" for a digit in any case, "." for the
/// decimal separator. Other characters mean nothing.
inline NumberPicture numberPicture(std::wstring_view text) {
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

} // namespace tarv
