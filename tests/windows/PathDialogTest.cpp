#include "runtime/cls_PathDialog.h"

#include "platform/windows/WindowsPlatform.h"
#include "runtime/Runtime.h"
#include "tests/windows/DialogAnswer.h"

#include <gtest/gtest.h>

#include <objbase.h>
#include <shlobj.h>

namespace tarv {
namespace {

class RealPathDialog : public testing::Test {
protected:
    RealPathDialog() {
        OleInitialize(nullptr);
        owner = CreateWindowExW(0, L"STATIC", L"Owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                                nullptr, nullptr, nullptr, nullptr);
        dialog.sTitel(L"Ordner wählen");
        dialog.hHande(static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(owner)));
    }
    ~RealPathDialog() override {
        DestroyWindow(owner);
        OleUninitialize();
    }

    /// Lets the user select something and press a button.
    void show(WORD button, std::function<void(HWND)> select = {}) {
        DialogAnswer user(button, [&](HWND window) {
            ownerEnabled = IsWindowEnabled(owner) != FALSE;
            if (select)
                select(window);
        });
        dialog.StartPathDialog();
        user.join();
        EXPECT_TRUE(user.showed(L"Ordner wählen"));
        EXPECT_EQ(user.owner, owner);
        EXPECT_FALSE(ownerEnabled);
        EXPECT_TRUE(IsWindowEnabled(owner));
    }

    WindowsPlatform windows;
    Runtime rt{windows.border()};
    cls_PathDialog dialog{rt};
    HWND owner = nullptr;
    bool ownerEnabled = true;
};

TEST_F(RealPathDialog, ChosenFolderEndsInABackslash) {
    const std::wstring chosen = L"C:\\Gewählt ä";
    CreateDirectoryW(chosen.c_str(), nullptr);
    const auto select = [](std::wstring path) {
        return [path](HWND window) {
            SendMessageW(window, BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(path.c_str()));
        };
    };
    show(IDOK, select(chosen));
    EXPECT_FALSE(dialog.bCancel());
    EXPECT_EQ(dialog.sDriveDir(), chosen + L"\\");
    show(IDOK, select(L"C:\\"));
    EXPECT_EQ(dialog.sDriveDir(), L"C:\\");
    RemoveDirectoryW(chosen.c_str());
}

TEST_F(RealPathDialog, CancelAndAVirtualFolderAreTheSame) {
    ITEMIDLIST* computer = nullptr;
    ASSERT_EQ(SHGetSpecialFolderLocation(nullptr, CSIDL_DRIVES, &computer), S_OK);
    const auto selectComputer = [&](HWND window) {
        SendMessageW(window, BFFM_SETSELECTIONW, FALSE, reinterpret_cast<LPARAM>(computer));
        // What is no folder of the file system cannot be confirmed; a user of the keyboard may try.
        SendMessageW(window, BFFM_ENABLEOK, 0, TRUE);
    };
    show(IDOK, selectComputer);
    EXPECT_TRUE(dialog.bCancel());
    EXPECT_EQ(dialog.sDriveDir(), L"\\");
    CoTaskMemFree(computer);

    show(IDCANCEL);
    EXPECT_TRUE(dialog.bCancel());
    EXPECT_EQ(dialog.sDriveDir(), L"\\");
}

} // namespace
} // namespace tarv
