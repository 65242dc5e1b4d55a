#pragma once

#include "platform/Answer.h"

#include <string>
#include <string_view>

namespace tarv {

class FileStore;
struct Platform;

/// Files that are written beside their place and put there once they are complete.

/// A name beside `file` that is not taken.
std::wstring freeNameBeside(FileStore& files, std::wstring_view file);

/// Gives the file `fresh` the name `file`. Scanners and synchronisers open fresh files for moments, and a
/// file that somebody has open cannot be put in another's place: it is tried for half a second. After a
/// failure `file` is as it was, or there is none; then `fresh` is whole under its own name.
SystemCode putInPlace(const Platform& platform, std::wstring_view file, std::wstring_view fresh);

} // namespace tarv
