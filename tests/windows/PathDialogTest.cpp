#include "runtime/cls_PathDialog.h"

#include "runtime/Runtime.h"
#include "tests/support/ContractWorld.h"
#include "tests/windows/User.h"
#include "tools/driver/Surroundings.h"

#include <shlobj.h>

namespace tarv {
namespace {

using RealPathDialog = Contract;

TEST_F(RealPathDialog, GivesTheChosenFolderElseNothing) {
    Runtime rt{border};
    cls_PathDialog dialog(rt);
    const HWND owner = makeOwner();
    dialog.sTitel(L"Ordner wählen");
    dialog.hHande(static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(owner)));
    // Wine's tree does not always find its way further down.
    const std::wstring chosen = underWine() ? L"C:\\Gewählt ж" : path(L"Gewählt ж");
    world->putFolder(chosen);
    PIDLIST_ABSOLUTE computer = nullptr;
    SHGetSpecialFolderLocation(nullptr, CSIDL_DRIVES, &computer);
    const struct {
        const wchar_t* folder; // else the computer, which is no folder of the file system
        int button;
        std::wstring result;
    } cases[] = {{chosen.c_str(), IDOK, chosen + L"\\"},
                 {L"C:\\", IDOK, L"C:\\"},
                 {L"C:\\", IDCANCEL, L"\\"},
                 {nullptr, IDOK, L"\\"}};
    for (const auto& [folder, button, result] : cases) {
        bool ownerEnabled = true;
        User user([&](HWND window) {
            ownerEnabled = IsWindowEnabled(owner);
            SendMessageW(window, BFFM_SETSELECTIONW, folder != nullptr,
                         folder ? reinterpret_cast<LPARAM>(folder) : reinterpret_cast<LPARAM>(computer));
            SendMessageW(window, BFFM_ENABLEOK, 0, TRUE); // a user of the keyboard may try
            User::press(window, button);
        });
        dialog.StartPathDialog();
        EXPECT_NE(user.texts.find(L"|Ordner wählen|"), std::wstring::npos);
        EXPECT_TRUE(user.owner == owner && !ownerEnabled && IsWindowEnabled(owner));
        EXPECT_EQ(dialog.sDriveDir(), result);
        EXPECT_EQ(dialog.bCancel(), result == L"\\");
    }
    CoTaskMemFree(computer);
    RemoveDirectoryW(chosen.c_str());
    DestroyWindow(owner);
}

} // namespace
} // namespace tarv
