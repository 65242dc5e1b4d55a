#pragma once

#include <string>
#include <string_view>

namespace tarv {

constexpr bool isDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

/// Removes blanks (U+0020 and nothing else) on both sides.
std::wstring_view trim(std::wstring_view text);
std::wstring_view trimLeft(std::wstring_view text);

/// One character for one (ä becomes Ä, ß stays), whatever the regional settings.
std::wstring upperCase(std::wstring_view text);
std::wstring lowerCase(std::wstring_view text);

/// The text up to its first NUL.
std::wstring_view untilNul(std::wstring_view text);

/// 1-based positions as the suite counts them are for its documented interfaces; inside, text is cut with
/// this: the name behind the last "\" or, without one, behind the last ":".
std::wstring_view fileNamePart(std::wstring_view path);

} // namespace tarv
