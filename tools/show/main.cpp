// tarv_show PROGRAM FOLDER: starts the program, opens all its windows, prints report and tree, saves pictures
// of the chief ones into FOLDER, and ends the program. The last line is "show complete" when all of it went
// well.

#include "app/resource.h"
#include "tools/driver/ProgramDriver.h"

#include <commctrl.h>

#include <string>

namespace {

void print(const std::wstring& text) {
    const int length = static_cast<int>(text.size());
    std::string bytes(static_cast<std::size_t>(length) * 3, '\0');
    bytes.resize(static_cast<std::size_t>(WideCharToMultiByte(
        CP_UTF8, 0, text.data(), length, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr)));
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
              nullptr);
}

std::wstring withoutCarriageReturns(std::wstring text) {
    std::erase(text, L'\r');
    return text;
}

int fail(const wchar_t* what) {
    print(std::wstring(L"tarv_show: ") + what + L"\n");
    return 1;
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    using tarv::program::ProgramDriver;
    if (count != 3)
        return fail(L"two arguments are needed: program and folder");
    const std::wstring folder = std::wstring(arguments[2]) + L"\\";
    ProgramDriver program(arguments[1]);
    const HWND mainWindow = program.window(L"frmMain");
    if (!mainWindow)
        return fail(L"the main window does not appear");
    print(ProgramDriver::text(mainWindow) + L", " +
          ProgramDriver::text(GetDlgItem(mainWindow, ID_lblVersion)) + L"\n\n");
    if (!ProgramDriver::savePicture(mainWindow, folder + L"frmMain.bmp"))
        return fail(L"the picture of the main window cannot be written");

    // The entry is hidden, its command is not.
    program.command(mainWindow, ID_mnuSupportIPAdresse);
    const HWND address = program.window(L"frmLokaleIP");
    program.command(address, ID_cmdClose);
    if (!address || !program.gone(address))
        return fail(L"the address window does not open and close");

    program.command(mainWindow, ID_mnuInfo);
    const HWND infoCentre = program.window(L"frmInfo4Prg");
    if (!infoCentre)
        return fail(L"the info centre does not appear");
    print(withoutCarriageReturns(ProgramDriver::text(GetDlgItem(infoCentre, ID_txtInfo))));
    if (!ProgramDriver::savePicture(infoCentre, folder + L"frmInfo4Prg-Info.bmp"))
        return fail(L"the picture of the report cannot be written");

    const HWND tabs = GetDlgItem(infoCentre, ID_SSTab1);
    SendMessageW(tabs, TCM_SETCURFOCUS, 1, 0);
    const HWND tree = GetDlgItem(infoCentre, ID_treeView);
    const auto nodes = program.tree(tree);
    for (const auto& node : nodes) {
        print(node.text + L"\n");
        for (const std::wstring& entry : node.children)
            print(L"    " + entry + L"\n");
    }
    SendMessageW(tree, TVM_ENSUREVISIBLE, 0, SendMessageW(tree, TVM_GETNEXTITEM, TVGN_ROOT, 0));
    if (!ProgramDriver::savePicture(infoCentre, folder + L"frmInfo4Prg-INI-Datei.bmp"))
        return fail(L"the picture of the tree cannot be written");
    for (const std::wstring& box : program.boxes())
        print(L"Message: " + box + L"\n");

    program.command(infoCentre, ID_cmdEnd);
    if (!program.gone(infoCentre))
        return fail(L"the info centre does not close");
    program.command(mainWindow, ID_mnuFileExit);
    if (!program.ended())
        return fail(L"the program does not end");
    print(L"show complete\n");
    return 0;
}
