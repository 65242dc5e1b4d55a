#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarv {

/// Whether the encoding that the declaration of an XML text names is known here: UTF-8 (also without a
/// declaration), UTF-16 (with its mark), ISO-8859-1, US-ASCII and Windows-1252.
bool knowsEncodingOf(std::wstring_view xml);

/// The bytes of an XML text in the encoding that its declaration names; plain ASCII is taken to be the same
/// in an unknown one. Nothing for a text with characters that the encoding lacks.
std::optional<std::string> encodedAsDeclared(std::wstring_view xml);

/// The same with character references for what the encoding lacks: for XML that a component put into text.
/// Nothing for an unknown encoding.
std::optional<std::string> encodedWithReferences(std::wstring_view xml);

/// The name after encoding= in the content of an XML declaration or at the start of an XML text, in small
/// letters. Empty without one.
std::wstring declaredEncoding(std::wstring_view xml);

} // namespace tarv
