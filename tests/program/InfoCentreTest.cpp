#include "app/resource.h"
#include "tests/program/Installation.h"

#include <gtest/gtest.h>

namespace tarv::program {
namespace {

constexpr char machineFile[] = "[Directories]\r\nProgrammDirectory=C:\\Programm\r\nDaten=N:\\Daten\r\n"
                               "[Drucker]\r\nStandard=B\xFCro\r\nStandard=Lager\r\n";
constexpr char qvFile[] = "[Directories]\r\nDaten=X:\r\n[Ansicht]\r\nSpalten=3\r\n";

class InfoCentreTest : public testing::Test {
protected:
    void SetUp() override {
        installation.machine(machineFile);
        installation.qv(qvFile);
        program = installation.start();
        mainWindow = program->window(L"frmMain");
        ASSERT_TRUE(mainWindow);
        open();
    }

    void open() {
        program->command(mainWindow, ID_mnuInfo);
        window = program->window(L"frmInfo4Prg");
        ASSERT_TRUE(window);
        report = GetDlgItem(window, ID_txtInfo);
        tree = GetDlgItem(window, ID_treeView);
    }

    static std::wstring clipboard() {
        std::wstring text;
        if (OpenClipboard(nullptr)) {
            if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
                text = static_cast<const wchar_t*>(GlobalLock(data));
                GlobalUnlock(data);
            }
            CloseClipboard();
        }
        return text;
    }

    static bool copied(const std::wstring& wanted) {
        return waitUntil([&] { return clipboard() == wanted; });
    }

    static SIZE sizeOf(HWND control) {
        RECT rect{};
        GetWindowRect(control, &rect);
        return {rect.right - rect.left, rect.bottom - rect.top};
    }

    Installation installation;
    std::unique_ptr<ProgramDriver> program;
    HWND mainWindow = nullptr;
    HWND window = nullptr;
    HWND report = nullptr;
    HWND tree = nullptr;
};

TEST_F(InfoCentreTest, ShowsReportAndTree) {
    EXPECT_EQ(ProgramDriver::text(window), L"Infocenter");
    EXPECT_EQ(ProgramDriver::text(GetDlgItem(window, ID_cmdEnd)), L"B&eenden");
    EXPECT_EQ(program->tabText(GetDlgItem(window, ID_SSTab1), 0), L"Info");
    EXPECT_EQ(program->tabText(GetDlgItem(window, ID_SSTab1), 1), L"INI-Datei");

    const std::wstring text = ProgramDriver::text(report);
    EXPECT_EQ(text.rfind(L"[Kundeninfo]\r\n\r\n  Computername:      ", 0), 0u);
    EXPECT_NE(text.find(L"\r\n  Ordner: " + installation.programFolder() + L"\r\n  Version: 1.0.0\r\n"),
              std::wstring::npos);

    const auto nodes = program->tree(tree);
    ASSERT_EQ(nodes.size(), 4u);
    EXPECT_EQ(nodes[0].text, L"Q_Machine.INI  [Directories]");
    EXPECT_EQ(nodes[0].children,
              (std::vector<std::wstring>{L"ProgrammDirectory=C:\\Programm", L"Daten=N:\\Daten"}));
    EXPECT_EQ(nodes[1].children, (std::vector<std::wstring>{L"Standard=Büro"}));
    EXPECT_EQ(nodes[2].text, L"QV.INI  [Directories       >>>>>> Eintrag mehrfach Vorhanden <<<<<<" +
                                 std::wstring(30, L' ') + L"1]");
    EXPECT_TRUE(nodes[2].children.empty());
    EXPECT_EQ(nodes[3].children, (std::vector<std::wstring>{L"Spalten=3"}));
}

TEST_F(InfoCentreTest, ReadsAnewAtEachOpeningAndGivesTheMainWindowBack) {
    EXPECT_FALSE(IsWindowEnabled(mainWindow));
    EXPECT_FALSE(IsWindowVisible(mainWindow)); // drawing is off
    program->command(window, ID_cmdEnd);
    ASSERT_TRUE(program->gone(window));
    EXPECT_TRUE(waitUntil([&] { return IsWindowEnabled(mainWindow) && IsWindowVisible(mainWindow); }));
    EXPECT_TRUE(waitUntil([&] { return GetForegroundWindow() == mainWindow; }));

    installation.machine("[Neu]\r\nA=1\r\n");
    open();
    EXPECT_EQ(program->tree(tree).front().text, L"Q_Machine.INI  [Neu]");
}

TEST_F(InfoCentreTest, WorksByKeyboardAlone) {
    ASSERT_TRUE(ProgramDriver::focusOn(window, ID_txtInfo));
    program->press(window, {-'C'});
    EXPECT_TRUE(copied(ProgramDriver::text(report))); // nothing selected: the whole report
    SendMessageW(report, EM_SETSEL, 0, 12);
    program->press(window, {-'C'});
    EXPECT_TRUE(copied(L"[Kundeninfo]"));
    program->press(window, {-'A', -'C'});
    EXPECT_TRUE(copied(ProgramDriver::text(report)));

    program->press(window, {-VK_TAB});
    ASSERT_TRUE(ProgramDriver::focusOn(window, ID_treeView));
    program->press(window, {VK_HOME, -'C'});
    EXPECT_TRUE(copied(L"Q_Machine.INI  [Directories]"));
    program->press(window, {VK_RIGHT, VK_RIGHT, -'C'});
    EXPECT_TRUE(copied(L"ProgrammDirectory=C:\\Programm"));
    program->press(window, {'Q', -'C'}); // type-ahead goes on to the next group
    EXPECT_TRUE(copied(L"Q_Machine.INI  [Drucker]"));
    program->press(window, {VK_RETURN, VK_DOWN, -'C'});
    EXPECT_TRUE(copied(L"Standard=Büro"));

    program->press(window, {VK_TAB});
    EXPECT_TRUE(ProgramDriver::focusOn(window, ID_cmdEnd));
    program->press(window, {VK_TAB});
    EXPECT_TRUE(ProgramDriver::focusOn(window, ID_SSTab1));
    program->press(window, {VK_LEFT, VK_TAB});
    EXPECT_TRUE(ProgramDriver::focusOn(window, ID_txtInfo));
    program->press(window, {VK_ESCAPE});
    ASSERT_TRUE(program->gone(window));

    // F10, to the menu Support, its first entry.
    program->press(mainWindow, {VK_F10, VK_RIGHT, VK_DOWN, VK_RETURN});
    const HWND again = program->window(L"frmInfo4Prg");
    ASSERT_TRUE(again);
    program->press(again, {VK_TAB, VK_RETURN});
    EXPECT_TRUE(program->gone(again));
}

TEST_F(InfoCentreTest, PagesGrowWithTheWindowDownToALeastSize) {
    const SIZE outer = sizeOf(window);
    const SIZE formerReport = sizeOf(report);
    const SIZE formerTree = sizeOf(tree);
    SetWindowPos(window, nullptr, 0, 0, outer.cx + 120, outer.cy + 80,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_TRUE(waitUntil([&] { return sizeOf(report).cx == formerReport.cx + 120; }));
    EXPECT_EQ(sizeOf(report).cy, formerReport.cy + 80);
    EXPECT_EQ(sizeOf(tree).cx, formerTree.cx + 120);
    SetWindowPos(window, nullptr, 0, 0, 50, 50, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_TRUE(waitUntil([&] { return sizeOf(window).cx < outer.cx; }));
    EXPECT_GT(sizeOf(report).cy, 100);
}

TEST_F(InfoCentreTest, FollowsTheScreen) {
    const SIZE button = sizeOf(GetDlgItem(window, ID_cmdEnd));
    const LRESULT row = SendMessageW(tree, TVM_GETITEMHEIGHT, 0, 0);
    int former = 96;
    for (const int dpi : {144, 192, 96}) {
        program->changeDpi(window, former, dpi);
        former = dpi;
        EXPECT_NEAR(sizeOf(GetDlgItem(window, ID_cmdEnd)).cx, MulDiv(button.cx, dpi, 96), 1);
        EXPECT_NEAR(static_cast<double>(SendMessageW(tree, TVM_GETITEMHEIGHT, 0, 0)),
                    MulDiv(static_cast<int>(row), dpi, 96), 2);
    }
}

} // namespace
} // namespace tarv::program
