#pragma once

#include "platform/XmlDom.h"

#include <cstdint>
#include <string_view>

namespace tarv {

struct Runtime;

/// Whether a document of this parser version can be created; tried silently. Versions are 6 and 1.
bool canCreateParser(Runtime& rt, std::int16_t version);

/// The newest parser version that can be created; 0 for none.
std::int16_t ChooseParser(Runtime& rt);

/// A new document of a parser version; null for none. A class that cannot be created (429) is shown to the
/// user.
XmlDocumentRef InvokeParser(Runtime& rt, std::int16_t version);

enum class XmlSource {
    file,
    string
};

/// Creates a document and loads it from the file or the text `source`; null when that fails. The user always
/// sees that no document can be created; with `showErrors` also what the parser says against the source.
XmlDocumentRef OpenXML(Runtime& rt, std::int16_t version, XmlSource kind, std::wstring_view source,
                       bool showErrors);

} // namespace tarv
