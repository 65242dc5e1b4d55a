#pragma once

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

} // namespace tarv
