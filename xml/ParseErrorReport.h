#pragma once

#include "platform/XmlDom.h"

#include <string_view>

namespace tarv {

struct Runtime;

/// Shows why a document could not be loaded. `file` is empty for a text.
void showParseError(Runtime& rt, const XmlParseError& error, std::wstring_view file);

} // namespace tarv
