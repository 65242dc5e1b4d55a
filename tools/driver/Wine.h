#pragma once

#include <windows.h>

namespace tarv {

/// True under Wine, whose prefix belongs to the tests alone. On a user's Windows they stay inside the
/// temporary folder and the user's own part of the registry.
inline bool underWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version") != nullptr;
}

} // namespace tarv
