// The real shell.

#include "runtime/Funktionen32/FileOperation.h"
#include "runtime/Runtime.h"
#include "runtime/cls_PathDialog.h"
#include "tests/windows/ContractWorld.h"
#include "tests/windows/User.h"
#include "tools/driver/Surroundings.h"

#include <filesystem>
#include <set>

#include <shlobj.h>

namespace tarv {
namespace {

using namespace std::string_literals;
namespace fs = std::filesystem;
using Tree = std::set<std::wstring>;

/// The real shell on real files: each test starts in a current folder with "in" (files and a folder) and an
/// empty "out".
class RealFileOperation : public OnWindows {
protected:
    RealFileOperation() {
        fs::current_path(path(L""));
        for (const wchar_t* folder : {L"in", L"in\\sub", L"in\\sub\\tief", L"out"})
            putFolder(folder);
        for (const std::wstring& name : original)
            border.files->overwrite(L"in\\" + name, "");
    }
    ~RealFileOperation() override { fs::current_path(before); }

    /// The files of a folder, deep.
    static Tree tree(const std::wstring& folder) {
        Tree found;
        for (const auto& entry : fs::recursive_directory_iterator(folder))
            if (entry.is_regular_file())
                found.insert(entry.path().lexically_relative(folder).wstring());
        return found;
    }
    bool run(std::int32_t operation, std::wstring_view sources, std::wstring_view targets = {}) {
        return FileOperation(rt, operation, sources, targets, false, true, 0, true, error);
    }

    const fs::path before = fs::current_path();
    const Tree original{L"ж.txt", L"a.txt", L"b.txt", L"Straße äö.dat", L"sub\\tief\\c.txt"};
    Runtime rt{border};
    ErrorRecord error;
};

TEST_F(RealFileOperation, FilesArriveWhereTheyBelongAndNothingElseIsTouched) {
    const std::wstring longName(250 - path(L"out\\").size(), L'x');
    using namespace file_operation;
    const struct {
        std::int32_t operation;
        std::wstring sources, targets, seen;
        Tree there;
    } steps[] = {
        {copy, L"in\\ж.txt", L"out", L"out", {L"ж.txt"}},
        {rename, L"out\\ж.txt", L"out\\щ.txt", L"out", {L"щ.txt"}},
        {move, L"out\\щ.txt", L"in\\щ.txt", L"out", {}},
        {remove, L"in\\щ.txt", L"", L"in", original},
        {copy, L"in\\*.txt", L"out\\1", L"out\\1", {L"ж.txt", L"a.txt", L"b.txt"}},
        {copy, L"in", L"out\\1", L"out\\1\\in", original},
        {copy, L"in", L"out\\new name", L"out\\new name", original},
        {copy, L"in\\a.txt\0in\\sub"s, L"out\\2", L"out\\2", {L"a.txt", L"sub\\tief\\c.txt"}},
        {copy,
         L"in\\a.txt\0in\\b.txt"s,
         L"out\\2\\a.txt\0out\\2\\sub\\b"s,
         L"out\\2\\sub",
         {L"b", L"tief\\c.txt"}},
        {move, L"out\\2\\sub", L"out\\3", L"out\\3", {L"b", L"tief\\c.txt"}},
        {remove, L"out\\1\0out\\new name\0out\\2\0out\\3"s, L"", L"out", {}},
        {copy, L"in\\a.txt", L"out\\" + longName, L"out", {longName}},
    };
    for (const auto& [operation, sources, targets, seen, there] : steps) {
        EXPECT_TRUE(run(operation, sources, targets)) << sources << L" -> " << targets;
        EXPECT_EQ(tree(seen), there) << sources << L" -> " << targets;
    }
    EXPECT_EQ(tree(L"in"), original);
}

TEST_F(RealFileOperation, WhateverFailsNoSourceIsLost) {
    const HANDLE locked = CreateFileW(L"in\\b.txt", GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_FALSE(run(file_operation::copy, L"in\\a.txt\0in\\b.txt"s, L"out"));
    EXPECT_EQ(error.description, L"Datei-Operation fehlgeschlagen");
    EXPECT_FALSE(run(file_operation::remove, L"in\\b.txt"));
    // What becomes of a move is the shell's word alone, and not every shell tells the truth.
    run(file_operation::move, L"in\\b.txt", L"out\\b.txt");
    CloseHandle(locked);
    EXPECT_EQ(tree(L"in"), original);
}

using RealPathDialog = OnWindows;

TEST_F(RealPathDialog, GivesTheChosenFolderElseNothing) {
    Runtime rt{border};
    cls_PathDialog dialog(rt);
    const HWND owner = makeOwner();
    dialog.sTitel(L"Ordner wählen");
    dialog.hHande(static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(owner)));
    // Wine's tree does not always find its way further down.
    const std::wstring chosen = underWine() ? L"C:\\Gewählt ж" : path(L"Gewählt ж");
    putFolder(chosen);
    PIDLIST_ABSOLUTE computer = nullptr;
    SHGetSpecialFolderLocation(nullptr, CSIDL_DRIVES, &computer);
    const struct {
        const wchar_t* folder; // else the computer, which is no folder of the file system
        int button;
        std::wstring result;
    } cases[] = {{chosen.c_str(), IDOK, chosen + L"\\"}, {L"C:\\", IDCANCEL, L"\\"}, {nullptr, IDOK, L"\\"}};
    for (const auto& [folder, button, result] : cases) {
        User user([&](HWND window) {
            EXPECT_FALSE(IsWindowEnabled(owner));
            SendMessageW(window, BFFM_SETSELECTIONW, folder != nullptr,
                         folder ? reinterpret_cast<LPARAM>(folder) : reinterpret_cast<LPARAM>(computer));
            SendMessageW(window, BFFM_ENABLEOK, 0, TRUE); // a user of the keyboard may try
            User::press(window, button);
        });
        dialog.StartPathDialog();
        EXPECT_NE(user.texts.find(L"|Ordner wählen|"), std::wstring::npos);
        EXPECT_TRUE(user.owner == owner && IsWindowEnabled(owner));
        EXPECT_EQ(dialog.sDriveDir(), result);
        EXPECT_EQ(dialog.bCancel(), result == L"\\");
    }
    CoTaskMemFree(computer);
    RemoveDirectoryW(chosen.c_str());
    DestroyWindow(owner);
}

} // namespace
} // namespace tarv
