#include "platform/windows/ProcessHardening.h"
#include "platform/windows/WindowsPlatform.h"
#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"
#include "shell/frmMain.h"
#include "ui/MessageLoop.h"
#include "win/ComApartment.h"

#include <windows.h>

#include <string>

namespace tarv {
namespace {

/// The program's parts in the order in which they need each other; they go in the opposite one.
struct Program {
    ComApartment apartment;
    WindowsPlatform platform{ui::filterMessage};
    Runtime rt{platform};
    frmMain mainWindow{rt};
};

void run(int showCommand) {
    Program program;
    program.mainWindow.load();
    program.mainWindow.show(showCommand);
    ui::runMessageLoop(program.mainWindow);
}

void showFailure(const std::wstring& text) {
    // A message to quit that is still waiting would close the box at once.
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
    }
    MessageBoxW(nullptr, text.c_str(), TranslateText(L"TARVENIK Serviceprogramm").c_str(),
                MB_OK | MB_ICONERROR | MB_SETFOREGROUND);
}

int runGuarded(int showCommand) {
    try {
        run(showCommand);
        return 0;
    } catch (const RuntimeError& error) {
        const ErrorRecord& record = error.record();
        showFailure(TranslateText(L"Das Programm muss beendet werden.\r\n\r\nFehler ") +
                    std::to_wstring(record.number) + L": " + record.description);
    } catch (...) {
        showFailure(TranslateText(L"Das Programm muss beendet werden: Windows stellt nicht genügend Speicher "
                                  L"oder Fenster bereit."));
    }
    return 1;
}

} // namespace
} // namespace tarv

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int showCommand) {
    tarv::hardenProcess();
    return tarv::runGuarded(showCommand);
}
