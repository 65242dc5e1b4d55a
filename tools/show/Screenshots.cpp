// tarv_screenshots PROGRAM FOLDER: takes the pictures of the handbook. It drives the program through its
// windows and menus, shows the error display of the rk_Runtime.dll beside it, and ends. The last line is
// "screenshots complete" when all of it went well.

#include "app/resource.h"
#include "platform/Automation.h"
#include "platform/ErrorDisplay.h"
#include "platform/Platform.h"
#include "platform/windows/WindowsPlatform.h"
#include "tools/driver/ProgramDriver.h"

#include <commctrl.h>
#include <objbase.h>

#include <cstdio>
#include <string>
#include <thread>

namespace {

using tarv::program::ProgramDriver;
using tarv::program::waitUntil;

struct Screenshots {
    std::wstring folder;
    bool complete = true;

    void take(HWND window, const wchar_t* name) {
        const bool taken = IsWindow(window) && ProgramDriver::savePicture(window, folder + name + L".bmp");
        complete = complete && taken;
        std::printf("%ls%s\n", name, taken ? "" : ": NOT TAKEN");
    }
};

bool menuOpen(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) &&
           (info.flags & GUI_INMENUMODE);
}

void showProgram(const wchar_t* path, Screenshots& pictures) {
    ProgramDriver program(path);
    const HWND mainWindow = program.window(L"frmMain");
    pictures.take(mainWindow, L"frmMain");
    program.press(mainWindow, {VK_F10, VK_DOWN});
    pictures.take(mainWindow, L"frmMain-Datei");
    program.press(mainWindow, {VK_RIGHT});
    pictures.take(mainWindow, L"frmMain-Support");
    // One key too many would close the next window.
    while (menuOpen(mainWindow)) {
        program.press(mainWindow, {VK_ESCAPE});
        Sleep(200);
    }

    program.command(mainWindow, ID_mnuInfo);
    const HWND infoCentre = program.window(L"frmInfo4Prg");
    pictures.take(infoCentre, L"frmInfo4Prg-Info");
    SendMessageW(GetDlgItem(infoCentre, ID_SSTab1), TCM_SETCURFOCUS, 1, 0);
    const HWND tree = GetDlgItem(infoCentre, ID_treeView);
    // The first groups open, as a user would leave them.
    program.tree(tree, 1);
    SendMessageW(tree, TVM_ENSUREVISIBLE, 0, SendMessageW(tree, TVM_GETNEXTITEM, TVGN_ROOT, 0));
    pictures.take(infoCentre, L"frmInfo4Prg-INI-Datei");
    // Away from the caret, which blinks.
    program.press(infoCentre, {-'F', 'D', 'R', 'U', 'C', 'K', VK_RETURN, VK_TAB});
    program.press(infoCentre, {VK_F3});
    pictures.take(infoCentre, L"frmInfo4Prg-Suchen");
    program.command(infoCentre, ID_cmdEnd);
    pictures.complete = program.gone(infoCentre) && pictures.complete;

    // The entry is hidden, its command is not.
    program.command(mainWindow, ID_mnuSupportIPAdresse);
    const HWND address = program.window(L"frmLokaleIP");
    pictures.take(address, L"frmLokaleIP");
    program.command(address, ID_cmdClose);
    pictures.complete = program.gone(address) && pictures.complete;

    program.command(mainWindow, ID_mnuFileExit);
    pictures.complete = program.ended() && pictures.complete;
}

HWND ownDialog() {
    const HWND found = FindWindowW(L"rk_Fehler", nullptr);
    return IsWindowVisible(found) ? found : nullptr;
}

/// A window that the error display belongs to, as it does in a program of the suite: it gives its icon.
HWND ownerLike(const std::wstring& program) {
    const HWND owner = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 400, 300, 800, 600, nullptr,
                                       nullptr, nullptr, nullptr);
    const HMODULE file = LoadLibraryExW(program.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    for (const WPARAM kind : {WPARAM{ICON_BIG}, WPARAM{ICON_SMALL}}) {
        const int size = GetSystemMetrics(kind == ICON_BIG ? SM_CXICON : SM_CXSMICON);
        SendMessageW(owner, WM_SETICON, kind,
                     reinterpret_cast<LPARAM>(LoadImageW(file, MAKEINTRESOURCEW(IDI_PROGRAM), IMAGE_ICON,
                                                         size, size, LR_DEFAULTCOLOR)));
    }
    SetForegroundWindow(owner);
    return owner;
}

/// Shows one report of the error display on a thread of its own, as a program of the suite would, and answers
/// it.
void showReport(const std::wstring& library, const wchar_t* method, int button, const wchar_t* name,
                Screenshots& pictures) {
    std::thread user([&] {
        HWND dialog = nullptr;
        waitUntil([&] { return (dialog = ownDialog()) != nullptr; });
        pictures.take(dialog, name);
        PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
    });
    tarv::WindowsPlatform windows;
    tarv::Automation& automation = *windows.automation;
    const auto record = std::make_shared<tarv::ErrorRecord>(
        tarv::ErrorRecord{32, L"Datei-Operation fehlgeschlagen", L"Funktionen32"});
    if (const auto display = automation.createFromLibrary(library, tarv::errorDisplayClassId))
        static_cast<void>(
            (*display)->call(std::wstring_view(method),
                             {tarv::ObjectByRef{automation.errorObject(record)},
                              std::wstring(L"Quelle: N:\\TARVENIK\\Projekte\\Grundschule\\LV 01.x83\r\n"
                                           L"Ziel:     C:\\TARVENIK\\Austausch\\Ausgang\\LV 01.x83"),
                              std::wstring(L"Fehler beim Kopieren von Dateien...   Kelvar")}));
    user.join();
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 3)
        return 2;
    const std::wstring program = arguments[1];
    Screenshots pictures{std::wstring(arguments[2]) + L"\\"};
    showProgram(program.c_str(), pictures);

    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        return 1;
    const std::wstring library =
        program.substr(0, program.rfind(L'\\') + 1).append(tarv::errorDisplayLibrary);
    const HWND owner = ownerLike(program);
    showReport(library, L"ErrorMsg", IDOK, L"rk_Fehler", pictures);
    showReport(library, L"EMW", IDCANCEL, L"rk_Fehler-Frage", pictures);
    DestroyWindow(owner);
    CoUninitialize();
    std::printf("%s\n", pictures.complete ? "screenshots complete" : "screenshots INCOMPLETE");
    return pictures.complete ? 0 : 1;
}
