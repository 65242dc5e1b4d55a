#include "platform/Desktop.h"
#include "platform/windows/Handle.h"
#include "platform/windows/WindowsPlatform.h"
#include "tests/windows/DialogAnswer.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace tarv {
namespace {

constexpr UINT counted = WM_APP + 1;
constexpr UINT reposted = WM_APP + 2;

/// What arrived at the window and at the filter.
int arrived = 0;
int filtered = 0;

LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == counted) {
        ++arrived;
        return 0;
    }
    if (message == reposted) {
        PostMessageW(window, reposted, 0, 0);
        return 0;
    }
    return DefWindowProcW(window, message, first, second);
}

bool swallowCounted(MSG& message) {
    filtered += message.message == counted;
    return message.message == counted;
}

class DesktopTest : public testing::Test {
protected:
    DesktopTest() {
        WNDCLASSW description{};
        description.lpfnWndProc = windowProcedure;
        description.hInstance = GetModuleHandleW(nullptr);
        description.lpszClassName = L"tarvDesktopTest";
        RegisterClassW(&description);
        window = CreateWindowW(L"tarvDesktopTest", L"Test", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100,
                               nullptr, nullptr, description.hInstance, nullptr);
        SetActiveWindow(window);
        desktop.pumpMessages();
        arrived = 0;
        filtered = 0;
    }
    ~DesktopTest() override {
        DestroyWindow(window);
        UnregisterClassW(L"tarvDesktopTest", GetModuleHandleW(nullptr));
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        }
    }

    WindowsPlatform windows;
    Desktop& desktop = windows.border().desktop;
    HWND window = nullptr;
};

TEST_F(DesktopTest, QuitStopsThePumpAndIsPostedAgain) {
    PostMessageW(window, counted, 0, 0);
    EXPECT_FALSE(desktop.quitPending());
    PostQuitMessage(7);
    for (int again = 0; again < 3; ++again) {
        desktop.pumpMessages();
        EXPECT_EQ(arrived, 1);
        EXPECT_TRUE(desktop.quitPending());
    }
    MSG message;
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 7u) << "the exit code survives";
}

TEST_F(DesktopTest, FilterTakesMessagesFromTheWindow) {
    windows.setMessageFilter(swallowCounted);
    PostMessageW(window, counted, 0, 0);
    desktop.pumpMessages();
    EXPECT_EQ(filtered, 1);
    EXPECT_EQ(arrived, 0);
}

TEST_F(DesktopTest, MessagesThatPostMessagesDoNotKeepThePump) {
    PostMessageW(window, reposted, 0, 0);
    PostMessageW(window, counted, 0, 0);
    const ULONGLONG start = GetTickCount64();
    desktop.pumpMessages();
    EXPECT_LT(GetTickCount64() - start, 5000u);
    EXPECT_EQ(arrived, 1) << "what waited at the start is handled";
}

TEST_F(DesktopTest, MessageBoxBelongsToTheActiveFormAndGivesTheButton) {
    EXPECT_EQ(desktop.activeWindow(), toBorder(window));
    EXPECT_EQ(desktop.activeForm(), toBorder(window));
    DialogAnswer user(IDNO);
    const std::int32_t answer =
        desktop.messageBox(L"Text \u0436", L"Frage \u0436",
                           message_box::yesNo | message_box::question | message_box::systemModal);
    user.join();
    EXPECT_EQ(answer, message_box::answerNo);
    EXPECT_EQ(user.owner, window);
    EXPECT_TRUE(user.showed(L"Frage \u0436"));
    EXPECT_TRUE(user.showed(L"Text \u0436"));
}

} // namespace
} // namespace tarv
