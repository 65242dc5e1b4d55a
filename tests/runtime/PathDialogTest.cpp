#include "runtime/cls_PathDialog.h"

#include "runtime/Runtime.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

TEST(PathDialog, KeepsTheOutcomeOfTheLastDialog) {
    FakePlatform fake;
    Runtime rt{fake.border};
    cls_PathDialog dialog(rt);
    EXPECT_FALSE(dialog.bCancel());

    const std::pair<std::optional<std::wstring>, const wchar_t*> cases[]{
        {L"C:\\", L"C:\\"}, {L"C:\\Daten", L"C:\\Daten\\"}, {std::nullopt, L"\\"}, {L"D:\\ж", L"D:\\ж\\"}};
    for (const auto& [chosen, expected] : cases) {
        fake.shell.chosenFolder = chosen;
        dialog.StartPathDialog();
        EXPECT_EQ(dialog.bCancel(), !chosen);
        EXPECT_EQ(dialog.sDriveDir(), expected);
        EXPECT_EQ(dialog.sDriveDir(), expected);
    }
}

TEST(PathDialog, AsksTheShellForTheCallersWindow) {
    FakePlatform fake;
    Runtime rt{fake.border};
    cls_PathDialog dialog(rt);
    dialog.sTitel(L"Ordner wählen");
    for (const std::int32_t owner : {0, 0x20, -2}) {
        dialog.hHande(owner);
        dialog.StartPathDialog();
    }
    const auto& requests = fake.shell.folderRequests;
    ASSERT_EQ(requests.size(), 3u);
    EXPECT_EQ(requests[0].owner, fake.shell.desktop);
    EXPECT_EQ(requests[1].owner, WindowHandle{0x20});
    EXPECT_EQ(static_cast<std::intptr_t>(requests[2].owner), -2);
    EXPECT_EQ(requests[0].title, L"Ordner wählen");
    EXPECT_EQ(requests[0].flags, 1u);
}

} // namespace
} // namespace tarv
