#pragma once

#include <windows.h>

#include <cstddef>

namespace tarv::program {

/// What a running program holds: objects, handles, bytes of its own memory.
///
/// GetGuiResources, GetProcessHandleCount and PrivateUsage are the usual questions. Wine answers 0 to each,
/// whatever the program holds, so there the system's tables are counted.
struct Holdings {
    int user = 0; // windows, menus, icons, cursors; under Wine those of the whole session
    int gdi = 0;
    int kernel = 0;
    std::size_t memory = 0;
};

Holdings holdingsOf(HANDLE process);

} // namespace tarv::program
