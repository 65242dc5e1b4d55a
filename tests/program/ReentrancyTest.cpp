// Whatever arrives while the program waits or handles messages somewhere deep inside: it goes on, or it ends
// at once and cleanly.

#include "app/resource.h"
#include "tests/program/Installation.h"
#include "tools/driver/Surroundings.h"

#include <gtest/gtest.h>

namespace tarv::program {
namespace {

struct Arriving {
    const char* name;
    UINT message;
    WPARAM parameter;

    void post(HWND window) const { PostMessageW(window, message, parameter, 0); }
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
constexpr char configured[] = "[Directories]\r\nProgrammDirectory=C:\\Programm\r\n";

struct Situation {
    const char* name;
    bool configured; // without its entry a message box comes up at each skin call
    bool pumping;    // the components that the program calls handle messages
    bool atStart;
    int open;    // the menu entry of a window to open before
    int trigger; // the command that leads into the situation
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
    /// Brings the program to where `trigger` and what is to arrive can be posted.
    void enter(const Situation& situation) {
        if (situation.atStart)
            waitUntil([&] {
                mainWindow = FindWindowW(L"frmMain", nullptr);
                return IsWindowVisible(mainWindow) ||
                       (mainWindow && (situation.configured || program->boxOpen()));
            });
        else
            mainWindow = program->window(L"frmMain");
        modal = mainWindow;
        if (situation.open) // again and again: the command is without effect while the last window still ends
            waitUntil([&] {
                program->command(mainWindow, situation.open);
                modal = program->window(situation.open == ID_mnuInfo ? L"frmInfo4Prg" : L"frmLokaleIP", 1000);
                return modal != nullptr;
            });
        ASSERT_TRUE(modal);
    }
    /// Closes what is open, as a user would, until the main window is ready again.
    bool ready() {
        return waitUntil([&] {
            for (const wchar_t* kind : {L"frmInfo4Prg", L"frmLokaleIP"})
                if (const HWND window = program->window(kind, 0))
                    PostMessageW(window, WM_CLOSE, 0, 0);
            return program->window(L"frmMain", 0) == mainWindow && program->ready(mainWindow, 500);
        });
    }

    Installation installation;
    std::unique_ptr<ProgramDriver> program;
    HWND mainWindow = nullptr, modal = nullptr;
};

TEST_F(Reentrancy, TheProgramEndsAtOnceOrGoesOn) {
    for (const Situation& situation : situations) {
        if (situation.pumping && !Installation::canRegisterStandIn())
            continue;
        SCOPED_TRACE(situation.name);
        installation.write(machineFile, situation.configured ? configured : "");
        installation.forgetStandIn();
        if (situation.pumping)
            installation.registerStandIn(true);
        for (const Arriving& ending : endings)
            for (const bool toModal : {false, true}) {
                // Closing a modal window is no end, and one that goes by itself gets no more messages.
                if (toModal && (!situation.open || situation.trigger || ending.message != WM_ENDSESSION))
                    continue;
                SCOPED_TRACE(ending.name);
                program = installation.start();
                enter(situation);
                program->command(modal, situation.trigger);
                ending.post(toModal ? modal : mainWindow);
                EXPECT_TRUE(program->ended());
                EXPECT_EQ(program->exitCode(), 0u);
                EXPECT_TRUE(program->boxes().empty() || situation.trigger) << "nobody answered one";
            }
        program = installation.start();
        for (std::size_t first = 0; first < std::size(others); ++first) {
            SCOPED_TRACE(others[first].name);
            enter(situation);
            program->command(modal, situation.trigger);
            for (std::size_t i = 0; i < std::size(others); ++i) {
                const Arriving& other = others[(first + i) % std::size(others)];
                // On a user's Windows the services console would come up, or the question for an
                // administrator.
                if (underWine() || other.parameter != ID_mnuSupportDienst)
                    other.post(mainWindow);
            }
            Sleep(100);
            ASSERT_TRUE(ready());
        }
        program->command(mainWindow, ID_mnuFileExit);
        EXPECT_TRUE(program->ended());
        EXPECT_EQ(program->exitCode(), 0u);
    }
}

} // namespace
} // namespace tarv::program
