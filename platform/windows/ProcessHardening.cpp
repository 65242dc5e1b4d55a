#include "platform/windows/ProcessHardening.h"

#include <windows.h>

namespace tarv {

void hardenProcess() {
    HeapSetInformation(nullptr, HeapEnableTerminationOnCorruption, nullptr, 0);

    // Components that are registered with their full path still find what they import in their own folder:
    // COM loads them with the altered search order, which is not touched by this. What a component loads
    // later by a bare name comes from the system folder alone: it does not find its neighbours so.
    using SetDirectories = BOOL(WINAPI*)(DWORD);
    const HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
    const auto setDirectories = reinterpret_cast<SetDirectories>(
        reinterpret_cast<void*>(GetProcAddress(kernel, "SetDefaultDllDirectories")));
    if (setDirectories) {
        setDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    } else {
        // Windows 7 has that function only since an update of 2011. This one takes just the current folder
        // out of the search, and started programs inherit it.
        SetDllDirectoryW(L"");
    }
}

} // namespace tarv
