#include "win/LateEntry.h"

#include <string>

namespace tarv {

HMODULE systemLibrary(const wchar_t* name) {
    // By its bare name: a manifest redirects no full path, and is asked before any folder is searched.
    const HMODULE library = LoadLibraryExW(name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    return library || GetLastError() != ERROR_INVALID_PARAMETER ? library : systemLibraryOnOldWindows7(name);
}

HMODULE systemLibraryOnOldWindows7(const wchar_t* name) {
    if (lstrcmpiW(name, L"comctl32.dll") == 0)
        return LoadLibraryW(name); // the program's manifest says where it is
    wchar_t folder[MAX_PATH] = L"";
    GetSystemDirectoryW(folder, MAX_PATH);
    const std::wstring path = std::wstring(folder) + L"\\" + name;
    return LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

FARPROC lateAddress(const wchar_t* library, const char* function) {
    const DWORD lastError = GetLastError();
    const HMODULE loaded = systemLibrary(library);
    const FARPROC address = loaded ? GetProcAddress(loaded, function) : nullptr;
    if (address)
        SetLastError(lastError); // WSAGetLastError, for one, is about what happened before
    return address;
}

} // namespace tarv
