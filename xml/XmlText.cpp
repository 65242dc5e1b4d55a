#include "xml/XmlText.h"

#include "runtime/Funktionen32/NumberText.h"
#include "runtime/Funktionen32/Texts.h"
#include "xml/XmlFailure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>

namespace tarv {
namespace {

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

constexpr std::wstring_view separator = L", ";

/// The first three parts; those behind them do not count.
std::array<std::wstring_view, 3> threeParts(std::wstring_view text) {
    std::array<std::wstring_view, 3> parts;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const auto end = text.find(separator);
        if (end == text.npos && i + 1 < parts.size())
            raiseXmlError(error_number::subscriptOutOfRange);
        parts[i] = text.substr(0, end);
        text.remove_prefix(end == text.npos ? text.size() : end + separator.size());
    }
    return parts;
}

} // namespace

std::wstring withWindowsLineEnds(std::wstring text) {
    ReplaceAll(text, L"\n", L"\r\n", CompareMode::binary);
    return text;
}

std::wstring withCompleteDeclaration(std::wstring xml) {
    ReplaceAll(xml, LR"(<?xml version="1.0"?>)", LR"(<?xml version="1.0" encoding="UTF-8"?>)",
               CompareMode::text);
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

std::wstring colorText(std::int16_t red, std::int16_t green, std::int16_t blue) {
    return L"(" + std::to_wstring(red) + std::wstring(separator) + std::to_wstring(green) +
           std::wstring(separator) + std::to_wstring(blue) + L")";
}

std::int32_t colorValue(std::wstring_view text) {
    auto [red, green, blue] = threeParts(text);
    red.remove_prefix(red.empty() ? 0 : 1);
    blue.remove_suffix(blue.empty() ? 0 : 1);
    // The default rounding of the processor: half to even.
    const double sum = std::nearbyint(readNumber(red) + 256 * readNumber(green) + 65536 * readNumber(blue));
    using Limits = std::numeric_limits<std::int32_t>;
    if (!(sum >= Limits::min() && sum <= Limits::max()))
        raiseXmlError(error_number::overflow);
    return static_cast<std::int32_t>(sum);
}

} // namespace tarv
