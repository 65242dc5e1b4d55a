#include "platform/windows/ProcessHardening.h"

#include <windows.h>

namespace tarv {

void hardenProcess() {
    HeapSetInformation(nullptr, HeapEnableTerminationOnCorruption, nullptr, 0);

    // Components that are registered with their full path still find the neighbours in their own folder: COM
    // loads them with the altered search order, which is not touched by this.
    SetDllDirectoryW(L"");
    // Windows 7 has the function only since an update of 2011.
    using SetDirectories = BOOL(WINAPI*)(DWORD);
    const HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
    const auto setDirectories = reinterpret_cast<SetDirectories>(
        reinterpret_cast<void*>(GetProcAddress(kernel, "SetDefaultDllDirectories")));
    if (setDirectories != nullptr) {
        setDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    }
}

} // namespace tarv
