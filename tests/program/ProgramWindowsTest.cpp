// The windows as the user has them, in one running program.

#include "app/resource.h"
#include "tests/program/Installation.h"

#include <gtest/gtest.h>

namespace tarv::program {
namespace {

RECT rectOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect;
}
LONG widthOf(HWND window) {
    return rectOf(window).right - rectOf(window).left;
}
LONG heightOf(HWND window) {
    return rectOf(window).bottom - rectOf(window).top;
}

class ProgramWindows : public testing::Test {
protected:
    static void SetUpTestSuite() {
        installation = std::make_unique<Installation>();
        installation->write(versionFile, "[Info]\r\nProgVersion=2019.1.3\r\n");
        installation->write(machineFile,
                            "[Directories]\r\nProgrammDirectory=C:\\Programm\r\nDaten=N:\\Daten\r\n"
                            "[Drucker]\r\nStandard=B\xFCro\r\nStandard=Lager\r\n");
        installation->write(qvFile, "[Directories]\r\nDaten=X:\r\n[Ansicht]\r\nSpalten=3\r\n");
        program = installation->start();
        mainWindow = program->window(L"frmMain");
    }
    static void TearDownTestSuite() {
        program.reset();
        installation.reset();
    }
    void SetUp() override { ASSERT_TRUE(mainWindow); }

    void open(int command, const wchar_t* kind) {
        program->command(mainWindow, command);
        window = program->window(kind);
        ASSERT_TRUE(window);
        EXPECT_FALSE(IsWindowEnabled(mainWindow));
    }
    void expectClosed() {
        EXPECT_TRUE(program->gone(window));
        EXPECT_TRUE(waitUntil([&] {
            return IsWindowEnabled(mainWindow) && IsWindowVisible(mainWindow) &&
                   GetForegroundWindow() == mainWindow;
        }));
    }
    HWND control(int id) const { return GetDlgItem(window, id); }
    std::wstring textOf(int id) const { return ProgramDriver::text(control(id)); }

    static bool copied(const std::wstring& wanted) {
        return waitUntil([&] {
            std::wstring text;
            if (OpenClipboard(nullptr)) {
                if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
                    text = static_cast<const wchar_t*>(GlobalLock(data));
                    GlobalUnlock(data);
                }
                CloseClipboard();
            }
            return text == wanted;
        });
    }

    static inline std::unique_ptr<Installation> installation;
    static inline std::unique_ptr<ProgramDriver> program;
    static inline HWND mainWindow = nullptr;
    HWND window = nullptr;
};

TEST_F(ProgramWindows, MainWindowIsCentredAndFilledByItsPicture) {
    window = mainWindow;
    EXPECT_EQ(ProgramDriver::text(window), L"TARVENIK Serviceprogramm");
    EXPECT_EQ(textOf(ID_lblVersion), L"Version: 2019");
    EXPECT_NEAR(rectOf(window).left, (GetSystemMetrics(SM_CXSCREEN) - widthOf(window)) / 2, 1);
    EXPECT_NEAR(rectOf(window).top, (GetSystemMetrics(SM_CYSCREEN) - heightOf(window)) / 2, 1);
    int former = 96;
    for (const int dpi : {144, 192, 96}) {
        program->changeDpi(window, std::exchange(former, dpi), dpi);
        RECT client{};
        GetClientRect(window, &client);
        // 60 and 660 twips less than the window, and never more than there is.
        EXPECT_EQ(widthOf(control(ID_imgStartPic)),
                  std::min(client.right, widthOf(window) - 60 * dpi / 1440));
        EXPECT_EQ(heightOf(control(ID_imgStartPic)),
                  std::min(client.bottom, heightOf(window) - 660 * dpi / 1440));
    }
}

TEST_F(ProgramWindows, HiddenEntryShowsTheAddressBesideTheMainWindow) {
    for (const int key : {VK_ESCAPE, VK_RETURN}) {
        open(ID_mnuSupportIPAdresse, L"frmLokaleIP");
        EXPECT_EQ(ProgramDriver::text(window), L"IP-Adresse");
        EXPECT_EQ(textOf(ID_Frame1) + textOf(ID_cmdClose), L" IP-Adresse Schließen");
        const std::wstring address = textOf(ID_Label1);
        EXPECT_EQ(std::count(address.begin(), address.end(), L'.'), 3) << address;
        EXPECT_NEAR(rectOf(window).left - rectOf(mainWindow).left, 700 * 96 / 1440, 1);
        EXPECT_NEAR(rectOf(window).top - rectOf(mainWindow).top, 800 * 96 / 1440, 1);
        const LONG former = widthOf(control(ID_cmdClose));
        program->changeDpi(window, 96, 192);
        EXPECT_NEAR(widthOf(control(ID_cmdClose)), 2 * former, 1);
        EXPECT_TRUE(ProgramDriver::focusOn(window, ID_cmdClose));
        program->press(window, {key});
        expectClosed();
    }
}

TEST_F(ProgramWindows, InfoCentreShowsReportAndTreeAndFollowsItsSize) {
    open(ID_mnuInfo, L"frmInfo4Prg");
    EXPECT_EQ(ProgramDriver::text(window) + textOf(ID_cmdEnd), L"InfocenterB&eenden");
    EXPECT_EQ(program->tabText(control(ID_SSTab1), 0) + program->tabText(control(ID_SSTab1), 1),
              L"InfoINI-Datei");
    const std::wstring report = textOf(ID_txtInfo);
    EXPECT_TRUE(report.starts_with(L"[Kundeninfo]\r\n\r\n  Computername:      "));
    EXPECT_NE(report.find(L"  Betriebssystem:    Microsoft Windows"), report.npos) << report;
    EXPECT_NE(report.find(L"\r\n  Ordner: " + installation->path(L"Programm") + L"\r\n  Version: 1.0.0\r\n"),
              report.npos);
    const std::vector<TreeNode> nodes = program->tree(control(ID_treeView));
    ASSERT_EQ(nodes.size(), 4u);
    const std::wstring marker =
        L"       >>>>>> Eintrag mehrfach Vorhanden <<<<<<" + std::wstring(30, L' ') + L"1]";
    const std::pair<std::wstring, std::vector<std::wstring>> expected[] = {
        {L"Q_Machine.INI  [Directories]", {L"ProgrammDirectory=C:\\Programm", L"Daten=N:\\Daten"}},
        {L"Q_Machine.INI  [Drucker]", {L"Standard=Büro"}},
        {L"QV.INI  [Directories" + marker, {}},
        {L"QV.INI  [Ansicht]", {L"Spalten=3"}}};
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        EXPECT_EQ(nodes[i].text, expected[i].first);
        EXPECT_EQ(nodes[i].children, expected[i].second);
    }

    const LONG button = widthOf(control(ID_cmdEnd));
    const LRESULT row = SendMessageW(control(ID_treeView), TVM_GETITEMHEIGHT, 0, 0);
    int dpi = 96;
    for (const int next : {144, 192, 96}) {
        program->changeDpi(window, std::exchange(dpi, next), next);
        EXPECT_NEAR(widthOf(control(ID_cmdEnd)), MulDiv(button, dpi, 96), 1);
        EXPECT_NEAR(static_cast<double>(SendMessageW(control(ID_treeView), TVM_GETITEMHEIGHT, 0, 0)),
                    MulDiv(static_cast<int>(row), dpi, 96), 2);
    }
    const auto resize = [&](LONG width, LONG height) {
        SetWindowPos(window, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    };
    const LONG width = widthOf(window), reportWidth = widthOf(control(ID_txtInfo)),
               reportHeight = heightOf(control(ID_txtInfo)), treeWidth = widthOf(control(ID_treeView));
    resize(width + 120, heightOf(window) + 80);
    EXPECT_TRUE(waitUntil([&] { return widthOf(control(ID_txtInfo)) == reportWidth + 120; }));
    EXPECT_EQ(heightOf(control(ID_txtInfo)), reportHeight + 80);
    EXPECT_EQ(widthOf(control(ID_treeView)), treeWidth + 120);
    resize(50, 50);
    EXPECT_TRUE(waitUntil([&] { return widthOf(window) < width; }));
    EXPECT_GT(heightOf(control(ID_txtInfo)), 100) << "there is a least size";
    program->command(window, ID_cmdEnd);
    expectClosed();
}

TEST_F(ProgramWindows, InfoCentreWorksByKeyboardAlone) {
    program->press(mainWindow,
                   {VK_F10, VK_RIGHT, VK_DOWN, VK_RETURN}); // to the menu Support, its first entry
    window = program->window(L"frmInfo4Prg");
    ASSERT_TRUE(ProgramDriver::focusOn(window, ID_txtInfo));
    const std::wstring report = textOf(ID_txtInfo);
    program->press(window, {-'C'});
    EXPECT_TRUE(copied(report)) << "nothing selected: the whole report";
    SendMessageW(control(ID_txtInfo), EM_SETSEL, 0, 12);
    program->press(window, {-'C'});
    EXPECT_TRUE(copied(L"[Kundeninfo]"));
    program->press(window, {-'A', -'C'});
    EXPECT_TRUE(copied(report));

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

    for (const auto& [key, id] :
         {std::pair(VK_TAB, ID_cmdEnd), {VK_TAB, ID_SSTab1}, {VK_LEFT, ID_SSTab1}, {VK_TAB, ID_txtInfo}}) {
        program->press(window, {key});
        EXPECT_TRUE(ProgramDriver::focusOn(window, id)) << id;
    }
    program->press(window, {VK_ESCAPE});
    expectClosed();
}

} // namespace
} // namespace tarv::program
