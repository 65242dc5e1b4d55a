#include "app/resource.h"
#include "runtime/Funktionen32/Errors.h"
#include "shell/MainMenu.h"
#include "ui/MessageLoop.h"
#include "ui/PixelScaling.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

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
