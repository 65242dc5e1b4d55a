#include "app/resource.h"
#include "runtime/RuntimeError.h"
#include "shell/MainMenu.h"
#include "ui/MessageLoop.h"
#include "ui/PixelScaling.h"
#include "ui/Redraw.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

std::wstring shownEntries(HMENU menu) {
    std::wstring all;
    for (int index = 0; index < GetMenuItemCount(menu); ++index) {
        wchar_t caption[64] = L"-";
        GetMenuStringW(menu, static_cast<UINT>(index), caption, 64, MF_BYPOSITION);
        const bool separator = GetMenuState(menu, static_cast<UINT>(index), MF_BYPOSITION) & MF_SEPARATOR;
        all += std::wstring(separator ? L"-" : caption) + L"|";
    }
    return all;
}

TEST(MainMenuTest, UserSeesTheMenusWithoutTheirHiddenEntries) {
    const ui::Menu menu = createMainMenu();
    EXPECT_EQ(shownEntries(menu.get()), L"Datei|Support|");
    EXPECT_EQ(shownEntries(GetSubMenu(menu.get(), 0)), L"Beenden|");
    EXPECT_EQ(shownEntries(GetSubMenu(menu.get(), 1)),
              L"Infocenter|Computerdienste verwalten|-|Fernwartung|");
}

TEST(MainMenuTest, DefinitionKeepsTheHiddenEntriesInTheirPlaces) {
    std::wstring support;
    for (const MenuEntry& entry : mainMenuDefinition()[1].entries) {
        support +=
            std::wstring(entry.visible ? L"" : L"hidden ") + (entry.caption ? entry.caption : L"-") + L"|";
    }
    EXPECT_EQ(support, L"Infocenter|hidden -|hidden Lokale IP-Adresse anzeigen|hidden -|"
                       L"Computerdienste verwalten|-|Fernwartung|");
}

struct Recorded {
    WPARAM wParam = 7;
    LPARAM lParam = 7;
} recorded;

LRESULT CALLBACK recordRedraw(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SETREDRAW) {
        recorded = {wParam, lParam};
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

TEST(RedrawTest, FlagArrivesInverted) {
    const HWND window =
        CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(recordRedraw));
    ui::SetRedraw(window, ui::variantTrue);
    EXPECT_EQ(recorded.wParam, 0u);
    EXPECT_EQ(recorded.lParam, 0);
    try {
        const ui::RedrawLock lock(window);
        throw 1;
    } catch (int) {
    }
    EXPECT_EQ(recorded.wParam, static_cast<WPARAM>(-1));
    DestroyWindow(window);
}

class FailingWindow : public ui::Window {
public:
    FailingWindow() { create({.className = L"FailingWindow", .caption = L"", .style = WS_OVERLAPPED}); }

private:
    void onCommand(int, int) override { raise(error_number::overflow); }
};

TEST(MessageLoopTest, FailureOfAHandlerEndsTheLoopAndComesOutOfIt) {
    FailingWindow window;
    PostMessageW(window.handle(), WM_COMMAND, 1, 0);
    try {
        ui::runMessageLoop();
        FAIL() << "the failure was lost";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.record().number, error_number::overflow);
    }
    EXPECT_FALSE(window.alive());
}

TEST(PixelScalingTest, MixesWhatItCovers) {
    constexpr ui::Bgr black{0, 0, 0};
    constexpr ui::Bgr white{255, 255, 255};
    constexpr ui::Bgr blue{0x99, 0x66, 0x33};
    const ui::Pixels stripes{4, 1, {black, white, black, white}};
    EXPECT_NEAR(ui::scaled(stripes, 1, 1).data.at(0).green, 128, 1); // the mean, no stripe lost
    const ui::Pixels flat{3, 2, std::vector<ui::Bgr>(6, blue)};
    EXPECT_EQ(ui::scaled(flat, 7, 5).data, std::vector<ui::Bgr>(35, blue));
    const ui::Pixels wide = ui::scaled({2, 1, {black, white}}, 8, 3);
    EXPECT_EQ(wide.data.size(), 24u);
    EXPECT_EQ(wide.data.front(), black);
    EXPECT_EQ(wide.data.back(), white);
}

} // namespace
} // namespace tarv
