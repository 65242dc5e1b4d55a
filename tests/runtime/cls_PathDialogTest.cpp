#include "runtime/cls_PathDialog.h"

#include "tests/support/World.h"

namespace tarv {
namespace {

TEST(cls_PathDialog, KeepsTheOutcomeOfTheLastDialog) {
    World w;
    FakeShellOperations& shell = w.fake.shell;
    cls_PathDialog dialog(w.rt);
    dialog.StartPathDialog();
    EXPECT_EQ(shell.folderRequests.back().owner, shell.desktop) << "no owner was given";
    dialog.sTitel(L"Ordner wählen");
    const std::tuple<std::int32_t, std::intptr_t, std::optional<std::wstring>, const wchar_t*> cases[]{
        {0, 0x10010, L"C:\\", L"C:\\"},
        {0x20, 0x20, L"C:\\Daten", L"C:\\Daten\\"},
        {-2, -2, std::nullopt, L"\\"}};
    for (const auto& [owner, window, chosen, expected] : cases) {
        shell.chosenFolder = chosen;
        dialog.hHande(owner);
        dialog.StartPathDialog();
        EXPECT_EQ(dialog.bCancel(), !chosen);
        EXPECT_EQ(dialog.sDriveDir(), expected);
        const FolderRequest& request = shell.folderRequests.back();
        EXPECT_EQ(static_cast<std::intptr_t>(request.owner), window);
        EXPECT_EQ(request.title, L"Ordner wählen");
        EXPECT_EQ(request.flags, 1u);
    }
}

} // namespace
} // namespace tarv
