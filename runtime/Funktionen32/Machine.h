#pragma once

#include <string>

namespace tarv {

struct Runtime;

/// Name of this computer; empty on failure.
std::wstring GetPCName(Runtime& rt);

/// First IPv4 address of this computer's own name, "127.0.0.1" when there is none.
std::wstring GetLocalIP(Runtime& rt);

/// Name of the logged-on user; empty on failure.
std::wstring GetLoginName(Runtime& rt);

/// The Windows folder without a trailing "\" (unlike GetWindowsFolder).
std::wstring GetWinDir(Runtime& rt);

} // namespace tarv
