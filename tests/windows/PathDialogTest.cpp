#include "runtime/cls_PathDialog.h"

#include "runtime/Runtime.h"
#include "tests/support/ContractWorld.h"
#include "tests/windows/User.h"

#include <shlobj.h>

namespace tarv {
namespace {

using RealPathDialog = Contract;

TEST_F(RealPathDialog, GivesTheChosenFolderElseNothing) {
    Runtime rt{border};
    cls_PathDialog dialog(rt);
    const HWND owner =
        CreateWindowW(L"STATIC", L"Owner", WS_VISIBLE, 0, 0, 300, 200, nullptr, nullptr, nullptr, nullptr);
    dialog.sTitel(L"Ordner wählen");
    dialog.hHande(static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(owner)));
    const std::wstring chosen = L"C:\\Gewählt ж";
    CreateDirectoryW(chosen.c_str(), nullptr);
    ITEMIDLIST* computer = nullptr;
    SHGetSpecialFolderLocation(nullptr, CSIDL_DRIVES, &computer);
    const auto folder = [](const wchar_t* name) { return reinterpret_cast<LPARAM>(name); };
    const struct {
        WPARAM byName;
        LPARAM selected;
        int button;
        std::wstring result;
    } cases[] = {{TRUE, folder(chosen.c_str()), IDOK, chosen + L"\\"},
                 {TRUE, folder(L"C:\\"), IDOK, L"C:\\"},
                 {TRUE, folder(L"C:\\"), IDCANCEL, L"\\"},
                 {FALSE, reinterpret_cast<LPARAM>(computer), IDOK, L"\\"}};
    for (const auto& [byName, selected, button, result] : cases) {
        bool ownerEnabled = true;
        User user([&](HWND window) {
            ownerEnabled = IsWindowEnabled(owner);
            SendMessageW(window, BFFM_SETSELECTIONW, byName, selected);
            // What is no folder of the file system cannot be confirmed; a user of the keyboard may try.
            SendMessageW(window, BFFM_ENABLEOK, 0, TRUE);
            User::press(window, button);
        });
        dialog.StartPathDialog();
        EXPECT_NE(user.texts.find(L"|Ordner wählen|"), std::wstring::npos);
        EXPECT_EQ(user.owner, owner);
        EXPECT_TRUE(!ownerEnabled && IsWindowEnabled(owner));
        EXPECT_EQ(dialog.sDriveDir(), result);
        EXPECT_EQ(dialog.bCancel(), result == L"\\");
    }
    CoTaskMemFree(computer);
    DestroyWindow(owner);
    RemoveDirectoryW(chosen.c_str());
}

} // namespace
} // namespace tarv
