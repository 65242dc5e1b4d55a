#pragma once

#include <string>
#include <string_view>

namespace tarv {

struct Runtime;

/// The operating system's name, version ("10.0.19045") and build with service pack. Windows 2000 and XP and
/// older systems are named from the version call; all others by the management service, with `extra` empty.
/// What cannot be found out stays as the caller passed it in.
void GetOSNameAndVersion(Runtime& rt, std::wstring& name, std::wstring& version, std::wstring& extra);

/// Name and version from the management service (class Win32_OperatingSystem; the last object wins). Any
/// failure leaves both as they were.
void GetOSFromWMI(Runtime& rt, std::wstring& name, std::wstring& version);

/// The text before its first NUL, untrimmed; a text that begins with NUL or has none is returned trimmed, its
/// NULs made blanks.
std::wstring CutAtNul(std::wstring_view text);

} // namespace tarv
