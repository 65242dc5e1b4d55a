// A library as an attacker would plant it under a name that Windows is to find elsewhere: whoever loads it
// leaves "<its own file>.loaded" behind.

#include <string>

#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH) {
        std::wstring file(32768, L'\0');
        file.resize(GetModuleFileNameW(library, file.data(), static_cast<DWORD>(file.size())));
        CloseHandle(
            CreateFileW((file + L".loaded").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    }
    return TRUE;
}
