// Windows in this process: what the main window, over the scripted border, does in which order, and parts.

#include "app/resource.h"
#include "runtime/Funktionen32/Errors.h"
#include "shell/MainMenu.h"
#include "shell/frmMain.h"
#include "tests/support/World.h"
#include "ui/MessageLoop.h"
#include "ui/PixelScaling.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>

namespace tarv {
namespace {

class MainWindow : public testing::Test, protected World {
protected:
    MainWindow() {
        const auto skin = fake.automation.object();
        skin->runs(2, [this](auto) {
            onSkin();
            return Value();
        });
        fake.automation.provided[std::wstring(skinControlProgId)] = skin;
        window = std::make_unique<frmMain>(rt);
    }
    ~MainWindow() override {
        onSent = nullptr;
        UnhookWindowsHookEx(hook);
    }
    static LRESULT CALLBACK look(int code, WPARAM wParam, LPARAM lParam) {
        const CWPSTRUCT& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
        if (onSent)
            onSent(sent);
        const bool modal = GetDlgItem(sent.hwnd, ID_txtInfo) || GetDlgItem(sent.hwnd, ID_Label1);
        if (sent.message == WM_SHOWWINDOW && modal)
            PostMessageW(sent.hwnd, WM_CLOSE, 0, 0);
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }
    std::unique_ptr<frmMain> window;
    std::function<void()> onSkin = [] {};
    static inline std::function<void(const CWPSTRUCT&)> onSent; // to any window of this thread
    HHOOK hook = SetWindowsHookExW(WH_CALLWNDPROC, look, nullptr, GetCurrentThreadId());
};

TEST_F(MainWindow, LoadsSkinPicturePlaceAndVersionInThisOrder) {
    std::vector<std::string> steps;
    const auto step = [&](const char* name) {
        if (steps.empty() || steps.back() != name)
            steps.emplace_back(name);
    };
    onSkin = [&] { step("skin"); };
    onSent = [&](const CWPSTRUCT& sent) {
        if (sent.message == WM_WINDOWPOSCHANGING && sent.hwnd == window->control(ID_imgStartPic))
            step("picture");
        if (sent.message == WM_WINDOWPOSCHANGING && sent.hwnd == window->handle())
            step("place");
        if (sent.message == WM_SETTEXT && sent.hwnd == window->control(ID_lblVersion))
            step("version");
    };
    window->load();
    EXPECT_EQ(steps, (std::vector<std::string>{"skin", "picture", "place", "version"}));
}

TEST_F(MainWindow, IsCentredAlsoWhenTheWayToThePrimaryScreenChangesItsSize) {
    RECT rect{};
    onSent = [&](const CWPSTRUCT& sent) {
        if (sent.hwnd != window->handle() || sent.message != WM_MOVE || window->dpi() == 144)
            return;
        GetWindowRect(sent.hwnd, &rect);
        rect.right += (rect.right - rect.left) / 2;
        rect.bottom += (rect.bottom - rect.top) / 2;
        SendMessageW(sent.hwnd, WM_DPICHANGED, MAKEWPARAM(144, 144), reinterpret_cast<LPARAM>(&rect));
    };
    window->load();
    ASSERT_EQ(window->dpi(), 144);
    GetWindowRect(window->handle(), &rect);
    EXPECT_NEAR(rect.left, (GetSystemMetrics(SM_CXSCREEN) - (rect.right - rect.left)) / 2, 1);
    EXPECT_NEAR(rect.top, (GetSystemMetrics(SM_CYSCREEN) - (rect.bottom - rect.top)) / 2, 1);
}

TEST_F(MainWindow, SwitchesItsDrawingOffAndOnAgainWhateverHappensInBetween) {
    std::vector<WPARAM> sentToMain;
    onSent = [&](const CWPSTRUCT& sent) {
        if (sent.message == WM_SETREDRAW && sent.hwnd == window->handle())
            sentToMain.push_back(sent.wParam);
    };
    const std::vector<WPARAM> offAndOn{0, static_cast<WPARAM>(-1)};
    window->show(SW_SHOW);
    SendMessageW(window->handle(), WM_COMMAND, ID_mnuInfo, 0);
    EXPECT_EQ(sentToMain, offAndOn);
    EXPECT_TRUE(window->alive());

    sentToMain.clear();
    onSkin = [] { raise(error_number::overflow); };
    SendMessageW(window->handle(), WM_COMMAND, ID_mnuInfo, 0);
    EXPECT_EQ(sentToMain, offAndOn);
    EXPECT_THROW(ui::runMessageLoop(*window), RuntimeError);
}

TEST_F(MainWindow, TextsHaveTheirFonts) {
    std::map<int, std::wstring> faces;
    onSent = [&](const CWPSTRUCT& sent) {
        LOGFONTW font{};
        if (sent.message == WM_SETFONT &&
            GetObjectW(reinterpret_cast<HFONT>(sent.wParam), sizeof font, &font))
            faces[GetDlgCtrlID(sent.hwnd)] = font.lfFaceName;
    };
    window = std::make_unique<frmMain>(rt);
    window->show(SW_SHOW);
    for (const int entry : {ID_mnuInfo, ID_mnuSupportIPAdresse})
        SendMessageW(window->handle(), WM_COMMAND, static_cast<WPARAM>(entry), 0);
    EXPECT_EQ(faces[ID_lblVersion], L"Arial");
    EXPECT_EQ(faces[ID_txtInfo], L"Courier New");
    EXPECT_EQ(faces[ID_Label1], L"Microsoft Sans Serif");
}

TEST(WindowParts, MenuShowsNoHiddenEntries) {
    const Menu menu = createMainMenu();
    std::wstring shown;
    for (int at = 0; at < GetMenuItemCount(menu.get()); ++at)
        for (int index = 0; index < GetMenuItemCount(GetSubMenu(menu.get(), at)); ++index) {
            wchar_t caption[64] = L"-";
            GetMenuStringW(GetSubMenu(menu.get(), at), static_cast<UINT>(index), caption, 64, MF_BYPOSITION);
            shown += *caption ? std::wstring(caption) + L"|" : L"-|";
        }
    EXPECT_EQ(shown, L"Beenden|Infocenter|Computerdienste verwalten|-|Fernwartung|");
}

class FailingWindow : public ui::Window {
public:
    FailingWindow() { create({.className = L"FailingWindow", .caption = L"", .style = WS_OVERLAPPED}); }

private:
    void onCommand(int, int) override { raise(error_number::overflow); }
};

TEST(WindowParts, FailureOfAHandlerEndsTheLoopAndComesOutOfIt) {
    FailingWindow window;
    PostMessageW(window.handle(), WM_COMMAND, 1, 0);
    EXPECT_THROW(ui::runModal(window), RuntimeError);
    EXPECT_FALSE(window.alive());
}

TEST(WindowParts, ScaledPictureMixesWhatItCovers) {
    constexpr ui::Bgr black{0, 0, 0}, white{255, 255, 255};
    EXPECT_NEAR(ui::scaled({4, 1, {black, white, black, white}}, 1, 1).data.at(0).green, 128, 1);
    const ui::Pixels wide = ui::scaled({2, 1, {black, white}}, 8, 3);
    EXPECT_EQ(wide.data.size(), 24u);
    EXPECT_TRUE(wide.data.front() == black && wide.data.back() == white);
}

} // namespace
} // namespace tarv
