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

TEST(MainWindowTest, LabelShowsTheFirstFourCharactersOfTheVersion) {
    const struct {
        const char* file;
        const wchar_t* label;
    } rows[] = {
        {"[Info]\r\nProgVersion=2019.1.3\r\n", L"Version: 2019"},
        {"[Info]\r\nProgVersion=7\r\n", L"Version: 7"},
        {"[Info]\r\nProgVersion=\r\n", L"Version: 2023"},
        {nullptr, L"Version: 2023"},
    };
    Installation installation;
    for (const auto& row : rows) {
        if (row.file) {
            installation.version(row.file);
        } else {
            DeleteFileW((installation.programFolder() + L"\\Version.INI").c_str());
        }
        const auto program = installation.start();
        const HWND window = program->window(L"frmMain");
        ASSERT_TRUE(window);
        EXPECT_EQ(ProgramDriver::text(GetDlgItem(window, ID_lblVersion)), row.label);
    }
}

TEST(MainWindowTest, IsCentredAndFilledByItsPicture) {
    Installation installation;
    const auto program = installation.start();
    const HWND window = program->window(L"frmMain");
    ASSERT_TRUE(window);
    EXPECT_EQ(ProgramDriver::text(window), L"TARVENIK Serviceprogramm");

    const RECT outer = rectOf(window);
    EXPECT_NEAR(outer.left, (GetSystemMetrics(SM_CXSCREEN) - (outer.right - outer.left)) / 2, 1);
    EXPECT_NEAR(outer.top, (GetSystemMetrics(SM_CYSCREEN) - (outer.bottom - outer.top)) / 2, 1);

    for (const int dpi : {96, 144, 192}) {
        if (dpi != 96) {
            program->changeDpi(window, 96, dpi);
        }
        RECT client{};
        GetClientRect(window, &client);
        const RECT picture = rectOf(GetDlgItem(window, ID_imgStartPic));
        const RECT whole = rectOf(window);
        // 60 and 660 twips less than the window, and never more than there is.
        EXPECT_EQ(picture.right - picture.left,
                  std::min<LONG>(client.right, whole.right - whole.left - 60 * dpi / 1440));
        EXPECT_EQ(picture.bottom - picture.top,
                  std::min<LONG>(client.bottom, whole.bottom - whole.top - 660 * dpi / 1440));
        if (dpi != 96) {
            program->changeDpi(window, dpi, 96);
        }
    }
}

TEST(MainWindowTest, HiddenEntryShowsTheAddressBesideTheMainWindow) {
    Installation installation;
    const auto program = installation.start();
    const HWND window = program->window(L"frmMain");
    ASSERT_TRUE(window);
    for (int opening = 0; opening < 2; ++opening) {
        program->command(window, ID_mnuSupportIPAdresse);
        const HWND address = program->window(L"frmLokaleIP");
        ASSERT_TRUE(address);
        EXPECT_EQ(ProgramDriver::text(address), L"IP-Adresse");
        EXPECT_EQ(ProgramDriver::text(GetDlgItem(address, ID_Frame1)), L" IP-Adresse ");
        EXPECT_EQ(ProgramDriver::text(GetDlgItem(address, ID_cmdClose)), L"Schließen");
        const std::wstring shown = ProgramDriver::text(GetDlgItem(address, ID_Label1));
        EXPECT_EQ(std::count(shown.begin(), shown.end(), L'.'), 3) << opening;
        EXPECT_NEAR(rectOf(address).left - rectOf(window).left, 700 * 96 / 1440, 1);
        EXPECT_NEAR(rectOf(address).top - rectOf(window).top, 800 * 96 / 1440, 1);
        EXPECT_FALSE(IsWindowEnabled(window));

        const LONG former =
            rectOf(GetDlgItem(address, ID_cmdClose)).right - rectOf(GetDlgItem(address, ID_cmdClose)).left;
        program->changeDpi(address, 96, 192);
        const RECT button = rectOf(GetDlgItem(address, ID_cmdClose));
        EXPECT_NEAR(button.right - button.left, 2 * former, 1);

        EXPECT_TRUE(ProgramDriver::focusOn(address, ID_cmdClose));
        program->press(address, {opening == 0 ? VK_ESCAPE : VK_RETURN});
        EXPECT_TRUE(program->gone(address));
        EXPECT_TRUE(waitUntil([&] { return IsWindowEnabled(window); }));
    }
}

TEST(MainWindowTest, ProgramEndsFromEveryStateAtOnce) {
    const struct {
        const char* name;
        bool infoCentreOpen;
        UINT message;
        WPARAM wParam;
    } rows[] = {
        {"Beenden", false, WM_COMMAND, ID_mnuFileExit},
        {"Beenden with the info centre open", true, WM_COMMAND, ID_mnuFileExit},
        {"close box", false, WM_CLOSE, 0},
        {"session ends with the info centre open", true, WM_ENDSESSION, TRUE},
    };
    Installation installation;
    for (const auto& row : rows) {
        const auto program = installation.start();
        const HWND window = program->window(L"frmMain");
        ASSERT_TRUE(window) << row.name;
        if (row.infoCentreOpen) {
            program->command(window, ID_mnuInfo);
            ASSERT_TRUE(program->window(L"frmInfo4Prg")) << row.name;
        }
        PostMessageW(window, row.message, row.wParam, 0);
        EXPECT_TRUE(program->ended()) << row.name;
        EXPECT_EQ(program->exitCode(), 0u) << row.name;
    }
}

} // namespace
} // namespace tarv::program
