#pragma once

#include <windows.h>

namespace tarv {

/// True under Wine, whose prefix belongs to the tests alone. On a user's Windows they stay inside the
/// temporary folder and the user's own part of the registry.
inline bool underWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version") != nullptr;
}

/// Whether this program runs with the rights of an administrator.
inline bool elevated() {
    HANDLE token = nullptr;
    TOKEN_ELEVATION elevation{};
    DWORD size = sizeof elevation;
    OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token);
    GetTokenInformation(token, TokenElevation, &elevation, size, &size);
    CloseHandle(token);
    return elevation.TokenIsElevated != 0;
}

} // namespace tarv
