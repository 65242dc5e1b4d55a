#include "xml/XmlText.h"

#include <algorithm>
#include <cstdint>
#include <span>

namespace tarv {
namespace {

constexpr std::wstring_view bareDeclaration = L"<?xml version=\"1.0\"?>";
constexpr std::wstring_view fullDeclaration = L"<?xml version=\"1.0\" encoding=\"UTF-8\"?>";

wchar_t small(wchar_t letter) {
    return letter >= L'A' && letter <= L'Z' ? static_cast<wchar_t>(letter + (L'a' - L'A')) : letter;
}

bool equalInAnyCase(std::wstring_view a, std::wstring_view b) {
    return std::ranges::equal(a, b, {}, small, small);
}

std::size_t findBareDeclaration(std::wstring_view xml, std::size_t from) {
    for (auto at = xml.find(L"<?", from); at != xml.npos; at = xml.find(L"<?", at + 2))
        if (equalInAnyCase(xml.substr(at, bareDeclaration.size()), bareDeclaration))
            return at;
    return xml.npos;
}

bool isHighHalf(wchar_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool isLowHalf(wchar_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

// The name characters of XML 1.0. Those beyond 16 bits come as pairs, whose halves are let through here
// and checked by isXmlText.
constexpr Range nameStart[] = {{L':', L':'},     {L'A', L'Z'},     {L'_', L'_'},     {L'a', L'z'},
                               {0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},
                               {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F}, {0x2C00, 0x2FEF},
                               {0x3001, 0xDFFF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF}};
constexpr Range nameFurther[] = {{L'-', L'.'}, {L'0', L'9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

bool within(std::span<const Range> ranges, wchar_t unit) {
    const auto code = static_cast<std::uint32_t>(unit);
    return std::ranges::any_of(ranges,
                               [=](Range range) { return code >= range.first && code <= range.last; });
}

} // namespace

std::wstring withWindowsLineEnds(std::wstring text) {
    const auto lineFeeds = static_cast<std::size_t>(std::ranges::count(text, L'\n'));
    if (lineFeeds == 0)
        return text;
    std::wstring result;
    result.reserve(text.size() + lineFeeds);
    for (const wchar_t unit : text) {
        if (unit == L'\n')
            result += L'\r';
        result += unit;
    }
    return result;
}

std::wstring withCompleteDeclaration(std::wstring xml) {
    for (auto at = findBareDeclaration(xml, 0); at != xml.npos;
         at = findBareDeclaration(xml, at + fullDeclaration.size()))
        xml.replace(at, bareDeclaration.size(), fullDeclaration);
    return xml;
}

bool isXmlText(std::wstring_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t unit = text[i];
        const bool control = unit < 0x20 && unit != L'\t' && unit != L'\n' && unit != L'\r';
        if (control || unit == 0xFFFE || unit == 0xFFFF || isLowHalf(unit))
            return false;
        if (isHighHalf(unit) && (++i == text.size() || !isLowHalf(text[i])))
            return false;
    }
    return true;
}

bool isXmlName(std::wstring_view text) {
    return !text.empty() && within(nameStart, text.front()) && isXmlText(text) &&
           std::ranges::all_of(
               text, [](wchar_t unit) { return within(nameStart, unit) || within(nameFurther, unit); });
}

} // namespace tarv
