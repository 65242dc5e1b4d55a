#pragma once

#include <string>

namespace tarv {

struct Runtime;

/// Name of this computer; empty on failure.
std::wstring GetPCName(Runtime& rt);

/// Name of the logged-on user; empty on failure.
std::wstring GetLoginName(Runtime& rt);

/// The Windows folder without a trailing "\" (unlike GetWindowsFolder).
std::wstring GetWinDir(Runtime& rt);

} // namespace tarv
