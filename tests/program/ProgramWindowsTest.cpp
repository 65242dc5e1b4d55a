// The windows as the user has them, in one running program.

#include "app/resource.h"
#include "tests/program/Installation.h"
#include "ui/Clipboard.h"
#include "ui/Units.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace tarv::program {
namespace {

using namespace std::string_literals;

RECT rectOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect;
}
SIZE sizeOf(HWND window) {
    return ui::sizeOf(rectOf(window));
}

class ProgramWindows : public testing::Test {
protected:
    static void SetUpTestSuite() {
        installation = std::make_unique<Installation>();
        installation->write(versionFile, "[Info]\r\nProgVersion=2019.1.3\r\n");
        installation->write(machineFile, machineText);
        installation->write(qvFile, "[Directories]\r\nDaten=X:\r\n[Ansicht]\r\nSpalten=3\r\n");
        program = installation->start();
        mainWindow = program->window(L"frmMain");
    }
    static void TearDownTestSuite() {
        program.reset();
        installation.reset();
    }
    void expectOpen(const wchar_t* kind) {
        window = program->window(kind);
        ASSERT_TRUE(window);
        EXPECT_FALSE(IsWindowEnabled(mainWindow));
    }
    void expectClosed() {
        EXPECT_TRUE(program->gone(window));
        EXPECT_TRUE(
            waitUntil([&] { return IsWindowEnabled(mainWindow) && GetForegroundWindow() == mainWindow; }));
    }
    /// Changes the DPI of the window there and back, and checks a length that goes with it.
    void expectScaled(const std::function<LONG()>& length) {
        const LONG original = length();
        const int own = ProgramDriver::dpi(window);
        for (const auto& [from, to] : {std::pair(own, 144), {144, 192}, {192, own}}) {
            program->changeDpi(window, from, to);
            EXPECT_NEAR(length(), MulDiv(original, to, own), 2) << to;
        }
    }
    /// Makes the window larger, or smaller.
    void grow(LONG x, LONG y) {
        SetWindowPos(window, nullptr, 0, 0, sizeOf(window).cx + x, sizeOf(window).cy + y,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    /// Compares the picture with the one after everything has been drawn anew.
    void expectDrawnWhole(const char* after) {
        const auto shown = ProgramDriver::picture(window);
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
        EXPECT_TRUE(shown == ProgramDriver::picture(window)) << after;
    }
    HWND control(int id) const { return GetDlgItem(window, id); }
    std::wstring textOf(int id) const { return ProgramDriver::text(control(id)); }

    static constexpr const char* machineText =
        "[Directories]\r\nProgrammDirectory=C:\\Programm\r\nDaten=N:\\Daten\r\n"
        "[Drucker]\r\nStandard=B\xFCro\r\nStandard=Lager\r\n";
    static inline std::unique_ptr<Installation> installation;
    static inline std::unique_ptr<ProgramDriver> program;
    static inline HWND mainWindow = nullptr;
    HWND window = mainWindow;
};

TEST_F(ProgramWindows, MainWindowIsFilledByItsPicture) {
    EXPECT_EQ(ProgramDriver::text(window) + textOf(ID_lblVersion), L"TARVENIK ServiceprogrammVersion: 2019");
    constexpr LRESULT staticControl = 65536 + 3; // what screen readers ask for
    EXPECT_EQ(SendMessageW(control(ID_lblVersion), WM_GETOBJECT, 0, OBJID_QUERYCLASSNAMEIDX), staticControl);
    const int own = ProgramDriver::dpi(window);
    for (const auto& [from, dpi] : {std::pair(own, 144), {144, 192}, {192, own}}) {
        program->changeDpi(window, from, dpi);
        RECT client{};
        GetClientRect(window, &client);
        // 60 and 660 twips less than the window, and never more than there is.
        EXPECT_EQ(sizeOf(control(ID_imgStartPic)).cx,
                  std::min(client.right, sizeOf(window).cx - 60 * dpi / 1440));
        EXPECT_EQ(sizeOf(control(ID_imgStartPic)).cy,
                  std::min(client.bottom, sizeOf(window).cy - 660 * dpi / 1440));
    }
}

TEST_F(ProgramWindows, HiddenEntryShowsTheAddressBesideTheMainWindow) {
    for (const int key : {VK_ESCAPE, VK_RETURN}) {
        program->command(mainWindow, ID_mnuSupportIPAdresse);
        expectOpen(L"frmLokaleIP");
        EXPECT_EQ(ProgramDriver::text(window) + textOf(ID_Frame1) + textOf(ID_cmdClose),
                  L"IP-Adresse IP-Adresse Schließen");
        const std::wstring address = textOf(ID_Label1);
        EXPECT_EQ(std::count(address.begin(), address.end(), L'.'), 3) << address;
        EXPECT_NEAR(rectOf(window).left - rectOf(mainWindow).left,
                    MulDiv(700, ProgramDriver::dpi(window), 1440), 1);
        EXPECT_NEAR(rectOf(window).top - rectOf(mainWindow).top,
                    MulDiv(800, ProgramDriver::dpi(window), 1440), 1);
        expectScaled([&] { return sizeOf(control(ID_cmdClose)).cx; });
        EXPECT_TRUE(ProgramDriver::focusOn(window, ID_cmdClose));
        program->press(window, {key});
        expectClosed();
    }
}

TEST_F(ProgramWindows, InfoCentreShowsReportAndTreeAndFollowsItsSize) {
    program->command(mainWindow, ID_mnuInfo);
    expectOpen(L"frmInfo4Prg");
    const HWND tabs = control(ID_SSTab1), report = control(ID_txtInfo), tree = control(ID_treeView);
    EXPECT_EQ(ProgramDriver::text(window) + textOf(ID_cmdEnd), L"InfocenterB&eenden");
    EXPECT_EQ(program->tabText(tabs, 0) + program->tabText(tabs, 1), L"InfoINI-Datei");
    const std::wstring text = textOf(ID_txtInfo);
    EXPECT_TRUE(text.starts_with(L"[Kundeninfo]\r\n\r\n  Computername:      ")) << text;
    EXPECT_NE(text.find(L"  Betriebssystem:    Microsoft Windows"), text.npos) << text;

    expectScaled([&] { return sizeOf(control(ID_cmdEnd)).cx; });
    expectScaled([&] { return static_cast<LONG>(SendMessageW(tree, TVM_GETITEMHEIGHT, 0, 0)); });
    const LONG width = sizeOf(window).cx, reportWidth = sizeOf(report).cx, treeHeight = sizeOf(tree).cy;
    grow(120, 80);
    EXPECT_TRUE(waitUntil([&] { return sizeOf(report).cx == reportWidth + 120; }));
    EXPECT_EQ(sizeOf(tree).cy, treeHeight + 80);
    grow(-sizeOf(window).cx, -sizeOf(window).cy);
    EXPECT_TRUE(waitUntil([&] { return sizeOf(window).cx < width; }));
    EXPECT_GT(sizeOf(report).cy, 100) << "there is a least size";
    program->command(window, ID_cmdEnd);
    expectClosed();
}

TEST_F(ProgramWindows, InfoCentreWorksByKeyboardAlone) {
    program->press(mainWindow,
                   {VK_F10, VK_RIGHT, VK_DOWN, VK_RETURN}); // to the menu Support, its first entry
    expectOpen(L"frmInfo4Prg");
    ASSERT_TRUE(ProgramDriver::focusOn(window, ID_txtInfo));
    constexpr int shifted = ProgramDriver::shifted;
    const std::wstring report = textOf(ID_txtInfo);
    const struct {
        std::initializer_list<int> keys;
        int focus;
        std::wstring copied, found = L"";
    } steps[] = {
        {{-'C'}, ID_txtInfo, report}, // nothing selected: the whole report
        {{VK_END | shifted, -'C'}, ID_txtInfo, L"[Kundeninfo]"},
        {{-'A', -'C'}, ID_txtInfo, report},
        {{-VK_TAB, VK_HOME, -'C'}, ID_treeView, L"Q_Machine.INI  [Directories]"},
        {{VK_RIGHT, VK_RIGHT, -'C'}, ID_treeView, L"ProgrammDirectory=C:\\Programm"},
        {{'Q', -'C'}, ID_treeView, L"Q_Machine.INI  [Drucker]"}, // type-ahead goes on to the next group
        {{VK_RETURN, VK_DOWN, -'C'}, ID_treeView, L"Standard=Büro"},
        {{VK_TAB}, ID_cmdEnd, L"Standard=Büro"},
        {{VK_TAB}, ID_SSTab1, L"Standard=Büro"},
        {{VK_LEFT, VK_TAB, -'C'}, ID_txtInfo, report},
        {{-'F', 'N', 'U', 'T', VK_RETURN, VK_ESCAPE, -'C'}, ID_txtInfo, L"nut"},
        {{-VK_TAB, VK_HOME, -'F', 'A', 'N', VK_RETURN, VK_ESCAPE, -'C'}, ID_treeView, L"Standard=Büro"},
        {{VK_F3, VK_F3, -'C'}, ID_treeView, L"QV.INI  [Ansicht]"},
        {{VK_F3, -'C'}, ID_treeView, L"Standard=Büro", L"Von vorn weiter"},
        {{VK_F3 | shifted, -'C'}, ID_treeView, L"QV.INI  [Ansicht]", L"Von hinten weiter"},
        {{-'F', 'X', VK_RETURN, VK_TAB, VK_TAB, -'C'}, ID_treeView, L"QV.INI  [Ansicht]", L"Nicht gefunden"},
        {{VK_ESCAPE, VK_APPS, 'G'}, ID_treeView, L"QV.INI  [Ansicht]\r\n    Spalten=3\r\n"},
        {{VK_HOME, VK_F10 | shifted, 'K'}, ID_treeView, L"Q_Machine.INI  [Directories]"}};
    for (const auto& [keys, focus, copied, found] : steps) {
        program->press(window, keys);
        EXPECT_TRUE(ProgramDriver::focusOn(window, focus)) << focus << copied;
        EXPECT_TRUE(ProgramDriver::copied(copied)) << copied;
        EXPECT_EQ(IsWindowVisible(control(ID_lblFound)) ? textOf(ID_lblFound) : L"", found) << copied;
    }
    EXPECT_FALSE(IsWindowVisible(control(ID_txtFind)));

    program->press(window, {-('C' | shifted)});
    const std::wstring lines = L"Q_Machine.INI  [Drucker]\r\n    Standard=Büro\r\nQV.INI  [Directories ";
    EXPECT_TRUE(waitUntil([&] { return ProgramDriver::clipboard().find(lines) != lines.npos; }));
    EXPECT_TRUE(ProgramDriver::clipboard().starts_with(report + L"Q_Machine.INI  [Directories]\r\n    Pro"));

    ui::copyToClipboard(nullptr, installation->path(L"Bericht.txt"));
    program->press(window, {-'S'});
    HWND dialog = nullptr;
    ASSERT_TRUE(
        waitUntil([&] { return (dialog = FindWindowW(L"#32770", L"Bericht speichern")) != nullptr; }));
    program->press(dialog, {-'V', VK_RETURN});
    EXPECT_TRUE(waitUntil([&] { return !IsWindow(dialog); }) && program->ready(window));
    const std::string saved = installation->read(L"Bericht.txt");
    EXPECT_TRUE(saved.starts_with("\xEF\xBB\xBF[Kundeninfo]\r\n")) << saved;
    EXPECT_NE(saved.find("\r\n    Standard=B\xC3\xBCro\r\n"), saved.npos);

    program->press(window, {VK_HOME, VK_RIGHT, VK_RIGHT, VK_DOWN}); // to "Daten=N:\Daten"
    installation->write(machineFile, "[Neu]\r\n[Directories]\r\nDaten=O:\r\n");
    program->press(window, {VK_F5, -'C'});
    EXPECT_TRUE(ProgramDriver::copied(L"Daten=O:")) << "the same entry is selected";
    installation->write(machineFile, machineText);
    program->press(window, {VK_ESCAPE});
    expectClosed();
}

TEST_F(ProgramWindows, InfoCentreOpensWhateverTheFilesHold) {
    std::string content = "[A]\r\nB=1\0\0C=2\r\n[D\0]\r\n\0\0E="s + std::string(20'000'000, 'x') + "\r\n";
    for (int i = 0; i < 5000; ++i)
        content += "[G" + std::to_string(i) + "]\r\nA=1\r\n";
    installation->write(machineFile, content);
    program->command(mainWindow, ID_mnuInfo);
    window = program->window(L"frmInfo4Prg", 60000); // skins ask for a missing entry: boxes come up
    ASSERT_TRUE(window);
    EXPECT_TRUE(textOf(ID_txtInfo).starts_with(L"[Kundeninfo]\r\n"));
    EXPECT_EQ(installation->read(machineFile), content) << "nothing is written";
    PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(program->gone(window) && program->ready(mainWindow));
    installation->write(machineFile, machineText);
}

// Remote support and assistive tools send: no posted message follows that would wake the window's loop.
TEST_F(ProgramWindows, ModalWindowsGoWhenTheirEndIsSent) {
    const struct {
        const wchar_t* kind;
        int entry, button;
    } windows[] = {{L"frmInfo4Prg", ID_mnuInfo, ID_cmdEnd},
                   {L"frmLokaleIP", ID_mnuSupportIPAdresse, ID_cmdClose}};
    for (const auto& [kind, entry, button] : windows)
        for (const auto& [message, parameter] :
             {std::pair<UINT, int>(WM_CLOSE, 0), {WM_SYSCOMMAND, SC_CLOSE}, {WM_COMMAND, button}}) {
            SCOPED_TRACE(message);
            program->command(mainWindow, entry);
            expectOpen(kind);
            if (entry == ID_mnuInfo)
                program->press(window, {VK_TAB}); // away from the caret: its blinking wakes the loop, too
            EXPECT_TRUE(ProgramDriver::focusOn(window, button));
            SendMessageW(window, message, static_cast<WPARAM>(parameter), 0);
            expectClosed();
        }
}

TEST_F(ProgramWindows, PictureAfterEachChangeOfSizeIsWhole) {
    SetCursorPos(0, 0); // what lies under the pointer looks different
    const auto changeAll = [&] {
        grow(90, 60);
        expectDrawnWhole("growing");
        grow(-150, -110);
        expectDrawnWhole("shrinking");
        ShowWindow(window, SW_MAXIMIZE);
        expectDrawnWhole("maximising");
        ShowWindow(window, SW_RESTORE);
        expectDrawnWhole("restoring");
        grow(60, 50);
    };
    changeAll();
    program->command(mainWindow, ID_mnuInfo);
    expectOpen(L"frmInfo4Prg");
    program->press(window, {VK_TAB}); // away from the caret
    EXPECT_TRUE(ProgramDriver::focusOn(window, ID_cmdEnd));
    changeAll();
    program->press(window, {-'F', VK_TAB});
    EXPECT_TRUE(ProgramDriver::focusOn(window, ID_cmdFind));
    SendMessageW(control(ID_SSTab1), TCM_SETCURFOCUS, 1, 0);
    changeAll();
    program->command(window, ID_cmdEnd);
    expectClosed();
}

TEST_F(ProgramWindows, MainWindowIsOnlyUndrawnBehindTheInfoCentreAndBringsItToTheFront) {
    const auto screenPixel = [](POINT at) {
        const HDC screen = GetDC(nullptr);
        const COLORREF colour = GetPixel(screen, at.x, at.y);
        ReleaseDC(nullptr, screen);
        return colour;
    };
    const auto drawn = ProgramDriver::picture(mainWindow);
    const RECT main = rectOf(mainWindow);
    const POINT beside{main.left + 20, (main.top + main.bottom) / 2};
    const POINT below{(main.left + main.right) / 2 + 100, main.bottom - 120};
    const COLORREF picture = screenPixel(beside), background = GetSysColor(COLOR_BTNFACE);
    ASSERT_TRUE(picture != background && screenPixel(below) != background);

    program->command(mainWindow, ID_mnuInfo);
    expectOpen(L"frmInfo4Prg");
    SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    // Where the windows have no surface of their own, this is what the move uncovers.
    RECT uncovered{below.x, below.y, below.x + 9, below.y + 9};
    MapWindowPoints(nullptr, mainWindow, reinterpret_cast<POINT*>(&uncovered), 2);
    RedrawWindow(mainWindow, &uncovered, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    EXPECT_TRUE(waitUntil([&] { return screenPixel(below) == background; }));
    EXPECT_EQ(screenPixel(beside), picture);

    // Hidden, as that of an icon beside the clock: the display hears nothing of it, and cannot bring it back
    // late.
    const HWND stranger =
        CreateWindowW(L"EDIT", L"", WS_POPUP, 0, 0, 99, 99, nullptr, nullptr, nullptr, nullptr);
    SetForegroundWindow(stranger);
    ASSERT_TRUE(waitUntil([&] { return GetForegroundWindow() == stranger; }));
    SetForegroundWindow(mainWindow); // as the taskbar and Alt+Tab do
    EXPECT_TRUE(waitUntil([&] { return GetForegroundWindow() == window; }));
    DestroyWindow(stranger);
    program->press(window, {VK_ESCAPE});
    expectClosed();
    EXPECT_TRUE(ProgramDriver::picture(mainWindow) == drawn);
}

} // namespace
} // namespace tarv::program
