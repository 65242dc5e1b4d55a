// A program that the starter's tests start, once as a console and once as a windowed program. It writes down
// how it was started, in "<its own file>.txt": command line, current folder, show command, one line each.
// What it does then stands in its command line:
//   set=N      signals the inherited event with handle N
//   sekunde    lives for a second; a windowed program does not look at its messages meanwhile
//   fenster    shows a window and handles messages for that second

#include <filesystem>
#include <fstream>
#include <string>

#include <windows.h>

int main() {
    namespace fs = std::filesystem;
    const std::wstring commandLine = GetCommandLineW();
    STARTUPINFOW startup{};
    GetStartupInfoW(&startup);
    const bool shown = (startup.dwFlags & STARTF_USESHOWWINDOW) != 0;
    const std::wstring text = commandLine + L"\n" + fs::current_path().wstring() + L"\n" +
                              (shown ? std::to_wstring(startup.wShowWindow) : L"-");
    wchar_t own[MAX_PATH];
    GetModuleFileNameW(nullptr, own, MAX_PATH);
    const fs::path file = std::wstring(own) + L".txt", draft = std::wstring(own) + L".neu";
    std::ofstream(draft, std::ios::binary)
        .write(reinterpret_cast<const char*>(text.data()), static_cast<std::streamsize>(text.size() * 2));
    fs::rename(draft, file);

    if (const auto at = commandLine.find(L"set="); at != commandLine.npos)
        SetEvent(reinterpret_cast<HANDLE>(static_cast<UINT_PTR>(std::stoul(commandLine.substr(at + 4)))));
    if (commandLine.ends_with(L"sekunde"))
        Sleep(1000);
    if (commandLine.ends_with(L"fenster")) {
        CreateWindowW(L"STATIC", L"Kind", WS_VISIBLE, 0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr);
        SetTimer(nullptr, 0, 1000, nullptr);
        MSG message{};
        while (message.message != WM_TIMER && GetMessageW(&message, nullptr, 0, 0))
            DispatchMessageW(&message);
    }
}
