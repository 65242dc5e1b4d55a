// The main window in this process, over the scripted border: what it does in which order.

#include "app/resource.h"
#include "runtime/Funktionen32/Errors.h"
#include "shell/frmMain.h"
#include "tests/support/World.h"
#include "ui/MessageLoop.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>

namespace tarv {
namespace {

class MainWindow : public testing::Test, protected World {
protected:
    MainWindow() {
        const auto skin = fake.automation.object(L"skin");
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
        if (onSent)
            onSent(*reinterpret_cast<const CWPSTRUCT*>(lParam));
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }
    /// Changes the DPI of the window as soon as it has moved, as its way to another screen does.
    void becomeLargerOnTheWay(const CWPSTRUCT& sent) {
        if (sent.hwnd != window->handle() || sent.message != WM_MOVE || window->dpi() == 144)
            return;
        RECT rect{};
        GetWindowRect(sent.hwnd, &rect);
        rect.right += (rect.right - rect.left) / 2;
        rect.bottom += (rect.bottom - rect.top) / 2;
        SendMessageW(sent.hwnd, WM_DPICHANGED, MAKEWPARAM(144, 144), reinterpret_cast<LPARAM>(&rect));
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
    onSent = [this](const CWPSTRUCT& sent) { becomeLargerOnTheWay(sent); };
    window->load();
    ASSERT_EQ(window->dpi(), 144);
    RECT rect{};
    GetWindowRect(window->handle(), &rect);
    EXPECT_NEAR(rect.left, (GetSystemMetrics(SM_CXSCREEN) - (rect.right - rect.left)) / 2, 1);
    EXPECT_NEAR(rect.top, (GetSystemMetrics(SM_CYSCREEN) - (rect.bottom - rect.top)) / 2, 1);
}

TEST_F(MainWindow, SwitchesItsDrawingOffAndOnAgainWhateverHappensInBetween) {
    std::vector<WPARAM> sentToMain;
    onSent = [&](const CWPSTRUCT& sent) {
        if (sent.message == WM_SETREDRAW && sent.hwnd == window->handle())
            sentToMain.push_back(sent.wParam);
        wchar_t kind[16] = L"";
        GetClassNameW(sent.hwnd, kind, 16);
        if (sent.message == WM_SHOWWINDOW && kind == std::wstring(L"frmInfo4Prg"))
            PostMessageW(sent.hwnd, WM_CLOSE, 0, 0);
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
        const bool modal = GetDlgItem(sent.hwnd, ID_txtInfo) || GetDlgItem(sent.hwnd, ID_Label1);
        if (sent.message == WM_SHOWWINDOW && modal)
            PostMessageW(sent.hwnd, WM_CLOSE, 0, 0);
    };
    window = std::make_unique<frmMain>(rt);
    window->show(SW_SHOW);
    for (const int entry : {ID_mnuInfo, ID_mnuSupportIPAdresse})
        SendMessageW(window->handle(), WM_COMMAND, static_cast<WPARAM>(entry), 0);
    EXPECT_EQ(faces[ID_lblVersion], L"Arial");
    EXPECT_EQ(faces[ID_txtInfo], L"Courier New");
    EXPECT_EQ(faces[ID_Label1], L"Microsoft Sans Serif");
}

} // namespace
} // namespace tarv
