#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarv {

/// Takes one character off the text, which is not empty; nothing at half a pair, which is taken off, too.
std::optional<char32_t> nextCharacter(std::wstring_view& text);

/// Appends the character in UTF-8 (RFC 3629), which has every one: always true.
bool addUtf8(std::string& bytes, char32_t code);

/// The text in UTF-8; half a pair becomes the sign for what cannot be shown.
std::string utf8(std::wstring_view text);

} // namespace tarv
