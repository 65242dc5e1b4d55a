#pragma once

#include <cstdint>
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

enum class CompareMode : std::int16_t {
    binary = 0,
    /// Capital and small letters are the same.
    text = 1,
};

/// Replaces every `find` in one pass. An empty `find` changes nothing, nor does a failure.
void ReplaceAll(std::wstring& text, std::wstring_view find, std::wstring_view replacement, CompareMode mode);

/// The hook through which every user-visible text passes: the one place where a translation would go in.
/// Returns the text unchanged and ignores everything behind it.
template <class... Ignored>
std::wstring TranslateText(std::wstring_view text, const Ignored&...) {
    return std::wstring(text);
}

} // namespace tarv
