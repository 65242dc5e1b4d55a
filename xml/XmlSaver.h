#pragma once

#include "platform/XmlDom.h"

#include <string_view>

namespace tarv {

struct Platform;

/// Saves a document beside `file` and puts it in its place once it is complete. (Saving directly, the
/// component empties the old file before it writes.) Raises what fails. Then the old file is as it was, or
/// the error names the file in which the whole document lies.
void saveInPlace(XmlDocument& document, const Platform& platform, std::wstring_view file);

} // namespace tarv
