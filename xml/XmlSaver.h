#pragma once

#include "platform/FileStore.h"
#include "platform/XmlDom.h"

#include <string_view>

namespace tarv {

/// Saves a document beside `file` and puts it in its place once it is complete: saving directly, the
/// component empties the old file before it writes. Raises what fails; then the old file is as it was.
void saveInPlace(XmlDocument& document, FileStore& files, std::wstring_view file);

} // namespace tarv
