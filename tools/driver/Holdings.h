#pragma once

#include <windows.h>

#include <cstddef>

namespace tarv::program {

/// What a running program holds: objects, handles, bytes of its own memory.
///
/// GetGuiResources, GetProcessHandleCount and PrivateUsage would be the usual questions; Wine answers 0 to
/// each, whatever the program holds.
struct Holdings {
    int user = 0; // of the whole session: windows, menus, icons, cursors
    int gdi = 0;
    int kernel = 0;
    std::size_t memory = 0;
};

Holdings holdingsOf(HANDLE process);

} // namespace tarv::program
