#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarv {

/// The bytes of an XML text in the encoding that its declaration names, UTF-8 without one. Knows UTF-8,
/// UTF-16 (with its mark), ISO-8859-1, US-ASCII and Windows-1252. Nothing for another encoding and for a text
/// with characters that the encoding lacks.
std::optional<std::string> encodedAsDeclared(std::wstring_view xml);

/// The same with character references for what the encoding lacks: for XML that a component put into text.
std::optional<std::string> encodedWithReferences(std::wstring_view xml);

/// The name after encoding= in the content of an XML declaration or at the start of an XML text, in small
/// letters. Empty without one.
std::wstring declaredEncoding(std::wstring_view xml);

} // namespace tarv
