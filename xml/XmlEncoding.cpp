#include "xml/XmlEncoding.h"

#include "runtime/Funktionen32/Texts.h"
#include "runtime/detail/Unicode.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace tarv {
namespace {

constexpr std::wstring_view white = L" \t\r\n";

void add(std::string& bytes, char32_t value) {
    bytes += static_cast<char>(value & 0xFF);
}

bool addUtf16(std::string& bytes, char32_t code) {
    if (code >= 0x10000) {
        addUtf16(bytes, 0xD800 + ((code - 0x10000) >> 10));
        return addUtf16(bytes, 0xDC00 + (code & 0x3FF));
    }
    add(bytes, code);
    add(bytes, code >> 8);
    return true;
}

template <char32_t limit>
bool addByte(std::string& bytes, char32_t code) {
    add(bytes, code);
    return code < limit;
}

bool addWindows1252(std::string& bytes, char32_t code) {
    // 0x80 to 0x9F of the code page; 0 where it has no character.
    constexpr std::array<char16_t, 32> upper{0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                             0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                             0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                             0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};
    const auto found = std::ranges::find(upper, code);
    if (code != 0 && found != upper.end()) {
        add(bytes, static_cast<char32_t>(0x80 + (found - upper.begin())));
        return true;
    }
    add(bytes, code);
    return code < 0x80 || (code >= 0xA0 && code < 0x100);
}

struct Encoding {
    std::wstring_view name;
    std::string_view mark;
    bool (*add)(std::string& bytes, char32_t code);
};

constexpr std::array encodings{
    Encoding{L"utf-8", "", addUtf8},
    Encoding{L"utf-16", "\xFF\xFE", addUtf16},
    Encoding{L"iso-8859-1", "", addByte<0x100>},
    Encoding{L"us-ascii", "", addByte<0x80>},
    Encoding{L"windows-1252", "", addWindows1252},
};

/// Null for an encoding that is not known here.
const Encoding* encodingOf(std::wstring_view xml) {
    const std::wstring declared = declaredEncoding(xml);
    if (declared.empty())
        return &encodings.front();
    const auto found = std::ranges::find(encodings, declared, &Encoding::name);
    return found == encodings.end() ? nullptr : &*found;
}

std::optional<std::string> encoded(std::wstring_view xml, const Encoding& encoding, bool references) {
    std::string bytes(encoding.mark);
    bytes.reserve(xml.size() + xml.size() / 8);
    while (!xml.empty()) {
        const auto code = nextCharacter(xml);
        if (!code)
            return std::nullopt;
        const std::size_t before = bytes.size();
        if (encoding.add(bytes, *code))
            continue;
        if (!references)
            return std::nullopt;
        bytes.resize(before);
        bytes += "&#" + std::to_string(static_cast<std::uint32_t>(*code)) + ";";
    }
    return bytes;
}

} // namespace

std::wstring declaredEncoding(std::wstring_view xml) {
    if (!xml.starts_with(L"<?xml") && !xml.starts_with(L"version"))
        return {};
    std::wstring_view rest = xml.substr(0, xml.find(L"?>"));
    const auto skip = [&](std::size_t count) {
        rest.remove_prefix(std::min(count, rest.size()));
        rest.remove_prefix(std::min(rest.find_first_not_of(white), rest.size()));
    };
    constexpr std::wstring_view word = L"encoding";
    const auto found = rest.find(word);
    if (found == rest.npos)
        return {};
    skip(found + word.size());
    if (!rest.starts_with(L'='))
        return {};
    skip(1);
    if (rest.empty() || (rest.front() != L'"' && rest.front() != L'\''))
        return {};
    const auto end = rest.find(rest.front(), 1);
    return end == rest.npos ? std::wstring() : lowerCase(rest.substr(1, end - 1));
}

bool knowsEncodingOf(std::wstring_view xml) {
    return encodingOf(xml) != nullptr;
}

std::optional<std::string> encodedAsDeclared(std::wstring_view xml) {
    const Encoding* known = encodingOf(xml);
    return encoded(xml, known ? *known : Encoding{L"", "", addByte<0x80>}, false);
}

std::optional<std::string> encodedWithReferences(std::wstring_view xml) {
    const Encoding* known = encodingOf(xml);
    return known ? encoded(xml, *known, true) : std::nullopt;
}

} // namespace tarv
