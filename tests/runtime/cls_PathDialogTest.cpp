#include "runtime/cls_PathDialog.h"

#include "tests/support/World.h"

namespace tarv {
namespace {

TEST(cls_PathDialog, AsksForFoldersOfTheFileSystemUnderItsOwner) {
    World w;
    cls_PathDialog dialog(w.rt);
    dialog.StartPathDialog();
    dialog.hHande(-2);
    w.fake.shell.chosenFolder = L"C:\\";
    dialog.StartPathDialog();
    const std::vector<FolderRequest>& requests = w.fake.shell.folderRequests;
    EXPECT_EQ(requests.at(0).owner, w.fake.shell.desktop) << "no owner was given";
    EXPECT_EQ(static_cast<std::intptr_t>(requests.at(1).owner), -2) << "extended by its sign";
    EXPECT_EQ(requests.at(1).flags, 1u);
    EXPECT_EQ(dialog.sDriveDir(), L"C:\\");
}

} // namespace
} // namespace tarv
