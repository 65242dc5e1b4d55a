#include "runtime/detail/Unicode.h"

#include <array>
#include <cstddef>

namespace tarv {

std::optional<char32_t> nextCharacter(std::wstring_view& text) {
    const auto unit = static_cast<char32_t>(*text.data());
    text.remove_prefix(1);
    if (unit < 0xD800 || unit > 0xDFFF)
        return unit;
    if (unit > 0xDBFF || text.empty() || text.front() < 0xDC00 || text.front() > 0xDFFF)
        return std::nullopt;
    const auto low = static_cast<char32_t>(text.front());
    text.remove_prefix(1);
    return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
}

bool addUtf8(std::string& bytes, char32_t code) {
    const std::size_t further = code < 0x80 ? 0 : code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    constexpr std::array<char32_t, 4> marks{0, 0xC0, 0xE0, 0xF0};
    bytes += static_cast<char>(marks[further] | code >> (6 * further));
    for (std::size_t left = further; left-- > 0;)
        bytes += static_cast<char>(0x80 | (code >> (6 * left) & 0x3F));
    return true;
}

std::string utf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size() + text.size() / 8);
    while (!text.empty())
        addUtf8(bytes, nextCharacter(text).value_or(0xFFFD));
    return bytes;
}

} // namespace tarv
