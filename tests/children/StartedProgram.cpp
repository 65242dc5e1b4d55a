// A program that the starter's tests start, once as a console and once as a windowed program. It writes down
// how it was started, in "<its own file>.txt": command line, current folder, show command, one line each.
// What it does then stands in its command line:
//   set=N      signals the inherited event with handle N
//   sekunde    lives for a second; a windowed program does not look at its messages meanwhile
//   fenster    shows a window and handles messages for that second
//   bis=NAME   lives until the event of that name is signalled, for at most 30 seconds

#include <cwchar>
#include <string>

#include <windows.h>

namespace {

void report(const std::wstring& text) {
    std::wstring file(32768, L'\0');
    file.resize(GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size())));
    const std::wstring draft = file + L".neu";
    const HANDLE written = CreateFileW(draft.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD count = 0;
    WriteFile(written, text.data(), static_cast<DWORD>(text.size() * sizeof(wchar_t)), &count, nullptr);
    CloseHandle(written);
    MoveFileExW(draft.c_str(), (file + L".txt").c_str(), MOVEFILE_REPLACE_EXISTING);
}

const wchar_t* option(const std::wstring& commandLine, const wchar_t* name) {
    const auto found = commandLine.find(name);
    return found == commandLine.npos ? nullptr : commandLine.c_str() + found + std::wcslen(name);
}

void handleMessages(DWORD milliseconds) {
    CreateWindowExW(0, L"STATIC", L"Kind", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 100, 100, nullptr, nullptr,
                    nullptr, nullptr);
    const DWORD start = GetTickCount();
    for (DWORD gone = 0; gone < milliseconds; gone = GetTickCount() - start) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds - gone, QS_ALLINPUT);
    }
}

} // namespace

int main() {
    const std::wstring commandLine = GetCommandLineW();
    std::wstring folder(32768, L'\0');
    folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
    STARTUPINFOW startup{};
    GetStartupInfoW(&startup);
    const bool shown = (startup.dwFlags & STARTF_USESHOWWINDOW) != 0;
    report(commandLine + L"\n" + folder + L"\n" + (shown ? std::to_wstring(startup.wShowWindow) : L"-"));

    if (const wchar_t* handle = option(commandLine, L"set="))
        SetEvent(reinterpret_cast<HANDLE>(static_cast<UINT_PTR>(std::wcstoul(handle, nullptr, 10))));
    if (option(commandLine, L"fenster"))
        handleMessages(1000);
    else if (option(commandLine, L"sekunde"))
        Sleep(1000);
    if (const wchar_t* name = option(commandLine, L"bis=")) {
        const HANDLE event = OpenEventW(SYNCHRONIZE, FALSE, name);
        WaitForSingleObject(event, 30000);
        CloseHandle(event);
    }
    return 0;
}
