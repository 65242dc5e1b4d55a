#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarv {

/// Every LF becomes CR LF, whatever stands before it.
std::wstring withWindowsLineEnds(std::wstring text);

/// Every <?xml version="1.0"?>, in any case, gets encoding="UTF-8".
std::wstring withCompleteDeclaration(std::wstring xml);

/// Whether XML can hold the text at all: no control characters but tab, LF and CR, no halves of pairs.
bool isXmlText(std::wstring_view text);

/// Whether the text is the name of an element or attribute, with or without a namespace prefix.
bool isXmlName(std::wstring_view text);

/// A colour as readable text: "(255, 128, 0)".
std::wstring colorText(std::int16_t red, std::int16_t green, std::int16_t blue);

/// red + 256 × green + 65536 × blue of a colour text, the sum rounded half to even; text that is no number
/// counts as 0. Raises 9 when there are no three parts separated by ", ", 6 when the sum exceeds 32 bits.
std::int32_t colorValue(std::wstring_view text);

} // namespace tarv
