#pragma once

#include <string>

namespace tarv {

struct Runtime;

/// The program version from "Version.INI" in the program folder (group "Info", entry "ProgVersion").
///
/// The result is the whole 100-character buffer: the value, then NULs. Callers that compare or join it cut at
/// the first NUL themselves. "2023" when the file or the entry is missing, or the entry is empty.
std::wstring GetProgVersion(Runtime& rt);

} // namespace tarv
