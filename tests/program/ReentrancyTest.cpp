// Whatever arrives while the program waits or handles messages somewhere deep inside: it goes on, or it ends
// at once and cleanly.

#include "app/resource.h"
#include "platform/windows/WindowsPlatform.h"
#include "runtime/Funktionen32/Existence.h"
#include "runtime/Funktionen32/Starter.h"
#include "runtime/Runtime.h"
#include "shell/frmMain.h"
#include "tests/program/Installation.h"
#include "ui/MessageLoop.h"

#include <gtest/gtest.h>

namespace tarv::program {
namespace {

constexpr char configured[] = "[Directories]\r\nProgrammDirectory=C:\\Programm\r\n";

struct Arriving {
    const char* name;
    UINT message;
    WPARAM parameter;
};
constexpr Arriving endings[] = {{"Beenden", WM_COMMAND, ID_mnuFileExit},
                                {"close", WM_CLOSE, 0},
                                {"end of the session", WM_ENDSESSION, TRUE}};
constexpr Arriving others[] = {{"Infocenter", WM_COMMAND, ID_mnuInfo},
                               {"IP-Adresse", WM_COMMAND, ID_mnuSupportIPAdresse},
                               {"Computerdienste", WM_COMMAND, ID_mnuSupportDienst},
                               {"Fernwartung", WM_COMMAND, ID_mnuSupportView},
                               {"question for the end", WM_QUERYENDSESSION, 0},
                               {"no end after all", WM_ENDSESSION, FALSE}};

void post(HWND window, const Arriving& arriving) {
    PostMessageW(window, arriving.message, arriving.parameter, 0);
}

void postOthers(HWND window, std::size_t first) {
    for (std::size_t i = 0; i < std::size(others); ++i)
        post(window, others[(first + i) % std::size(others)]);
}

struct Situation {
    const char* name;
    bool hasConfiguration; // without it a message box comes up at each skin call
    bool pumping;          // the components that the program calls handle messages
    bool atStart;
    UINT open;    // a window to open before
    UINT trigger; // the command that leads into the situation
};
constexpr Situation situations[] = {
    {"message box at the start", false, false, true, 0, 0},
    {"pumping component at the start", true, true, true, 0, 0},
    {"main window", true, false, false, 0, 0},
    {"info centre", true, false, false, ID_mnuInfo, 0},
    {"address window", true, false, false, ID_mnuSupportIPAdresse, 0},
    {"message box while the info centre loads", false, false, false, 0, ID_mnuInfo},
    {"pumping components while the info centre loads", true, true, false, 0, ID_mnuInfo},
    {"pumping component behind the info centre", true, true, false, ID_mnuInfo, IDCANCEL},
    {"starter", true, false, false, 0, ID_mnuSupportView},
};

class Reentrancy : public testing::Test {
protected:
    /// Starts the program and brings it into the situation, up to what has to be posted to `trigger`.
    void enter(const Situation& situation) {
        program = installation.start();
        if (situation.atStart)
            waitUntil([&] {
                mainWindow = FindWindowW(L"frmMain", nullptr);
                return mainWindow && (situation.hasConfiguration || FindWindowW(L"#32770", nullptr));
            });
        else
            again(situation);
        ASSERT_TRUE(mainWindow);
    }
    void again(const Situation& situation) {
        mainWindow = modal = program->window(L"frmMain");
        if (situation.open) {
            program->command(mainWindow, static_cast<int>(situation.open));
            modal = program->window(situation.open == ID_mnuInfo ? L"frmInfo4Prg" : L"frmLokaleIP");
        }
    }
    void trigger(const Situation& situation) {
        if (situation.trigger)
            program->command(modal, static_cast<int>(situation.trigger));
    }
    /// Closes what is open, as a user would, until the main window is ready again.
    bool ready() {
        return waitUntil([&] {
            bool open = false;
            for (const wchar_t* kind : {L"frmInfo4Prg", L"frmLokaleIP"})
                if (const HWND window = program->window(kind, 0)) {
                    PostMessageW(window, WM_CLOSE, 0, 0);
                    open = true;
                }
            return !open && program->window(L"frmMain", 0) == mainWindow && IsWindowEnabled(mainWindow);
        });
    }

    Installation installation;
    std::unique_ptr<ProgramDriver> program;
    HWND mainWindow = nullptr;
    HWND modal = nullptr;
};

TEST_F(Reentrancy, TheProgramEndsAtOnceOrGoesOn) {
    for (const Situation& situation : situations) {
        SCOPED_TRACE(situation.name);
        installation.write(machineFile, situation.hasConfiguration ? configured : "");
        installation.forgetStandIn();
        if (situation.pumping)
            installation.registerStandIn(true);
        for (const Arriving& ending : endings)
            for (const bool toModal : {false, true}) {
                // Closing a modal window is no end, and one that is gone gets no message.
                if (toModal && (!situation.open || situation.trigger || ending.message != WM_ENDSESSION))
                    continue;
                SCOPED_TRACE(ending.name);
                enter(situation);
                trigger(situation);
                post(toModal ? modal : mainWindow, ending);
                EXPECT_TRUE(program->ended());
                EXPECT_EQ(program->exitCode(), 0u);
                EXPECT_TRUE(program->boxes().empty() || situation.trigger) << "nobody answered one";
            }
        enter(situation);
        for (std::size_t first = 0; first < std::size(others); ++first) {
            SCOPED_TRACE(others[first].name);
            if (first > 0)
                again(situation);
            trigger(situation);
            postOthers(mainWindow, first);
            Sleep(100);
            ASSERT_TRUE(ready());
        }
        program->command(mainWindow, ID_mnuFileExit);
        EXPECT_TRUE(program->ended());
        EXPECT_EQ(program->exitCode(), 0u);
    }
}

BOOL CALLBACK closeModal(HWND window, LPARAM) {
    wchar_t kind[16] = L"";
    GetClassNameW(window, kind, 16);
    if (kind == std::wstring(L"frmInfo4Prg") || kind == std::wstring(L"frmLokaleIP"))
        PostMessageW(window, WM_CLOSE, 0, 0);
    return TRUE;
}

void CALLBACK closeModals(HWND, UINT, UINT_PTR, DWORD) {
    EnumThreadWindows(GetCurrentThreadId(), closeModal, 0);
}

// The runtime's waits that no menu entry leads to, under the real main window in this process.
TEST_F(Reentrancy, SoDoTheRuntimesOwnWaits) {
    installation.write(machineFile, configured);
    SetEnvironmentVariableW(L"ProgramData", installation.path(L"Daten").c_str());
    const std::wstring child = Installation::testFolder() + L"\\tarv_child_console.exe";
    const UINT_PTR timer = SetTimer(nullptr, 0, 50, closeModals);
    const std::pair<const char*, std::function<void(Runtime&)>> waits[] = {
        {"file that is not there",
         [&](Runtime& rt) { EXPECT_FALSE(Uexist(rt, installation.path(L"none.txt"))); }},
        {"folder that is not there", [&](Runtime& rt) { EXPECT_FALSE(Uexist(rt, L"N:\\none\\", true)); }},
        {"child", [&](Runtime& rt) {
             std::wstring arguments = L"sekunde", part;
             StartExe(rt, child, 0, arguments, {}, true, part, false, WindowHandle::none, false);
             EXPECT_FALSE(rt.externalProgram.running);
         }}};
    for (const auto& [name, wait] : waits)
        for (const Arriving* ending :
             {&endings[0], &endings[1], &endings[2], static_cast<const Arriving*>(nullptr)}) {
            SCOPED_TRACE(name);
            WindowsPlatform windows;
            windows.setMessageFilter(ui::filterMessage);
            Runtime rt{windows.border()};
            frmMain window(rt);
            window.show(SW_SHOW);
            if (ending)
                post(window.handle(), *ending);
            else
                postOthers(window.handle(), 0);
            wait(rt);
            EXPECT_EQ(window.alive(), !ending);
            window.close();
            ui::runMessageLoop();
            EXPECT_FALSE(window.alive());
        }
    KillTimer(nullptr, timer);
}

} // namespace
} // namespace tarv::program
