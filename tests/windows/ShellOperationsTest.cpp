#include "platform/ShellOperations.h"
#include "platform/FileStore.h"
#include "platform/windows/WindowsPlatform.h"
#include "tests/windows/DialogAnswer.h"

#include <gtest/gtest.h>

#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>

namespace tarv {
namespace {

/// Paths as the shell takes them: each ended by a NUL, the list by one more.
std::wstring list(std::initializer_list<std::wstring> paths) {
    std::wstring joined;
    for (const std::wstring& path : paths) {
        joined.append(path).push_back(L'\0');
    }
    joined.push_back(L'\0');
    return joined;
}

class ShellOperationsTest : public testing::Test {
protected:
    ShellOperationsTest() { OleInitialize(nullptr); }
    ~ShellOperationsTest() override { OleUninitialize(); }

    WindowsPlatform windows;
    ShellOperations& shell = windows.border().shell;
    FileStore& files = windows.border().files;
};

TEST_F(ShellOperationsTest, ListsOfWideNamesAreTakenToTheLetter) {
    wchar_t temporary[MAX_PATH];
    GetTempPathW(MAX_PATH, temporary);
    const std::wstring folder = std::wstring(temporary) + L"tarvshell\\";
    const std::wstring target = folder + L"neu ä";
    CreateDirectoryW(folder.c_str(), nullptr);
    ASSERT_EQ(files.overwrite(folder + L"ж.txt", "1"), 0u);
    ASSERT_EQ(files.overwrite(folder + L"a.txt", "22"), 0u);
    constexpr std::uint16_t quiet = FOF_SILENT | FOF_NOCONFIRMATION | FOF_NOERRORUI | FOF_NOCONFIRMMKDIR;

    const auto copied =
        shell.fileOperation({FO_COPY, list({folder + L"ж.txt", folder + L"a.txt"}), list({target}), quiet});
    EXPECT_EQ(copied.code, 0);
    EXPECT_FALSE(copied.aborted);
    EXPECT_EQ(files.length(target + L"\\ж.txt").valueOr(0), 1);
    EXPECT_EQ(files.length(target + L"\\a.txt").valueOr(0), 2);

    EXPECT_EQ(shell.fileOperation({FO_DELETE, list({folder + L"ж.txt"}), list({}), quiet}).code, 0);
    EXPECT_FALSE(files.length(folder + L"ж.txt"));
    EXPECT_EQ(files.length(folder + L"a.txt").valueOr(0), 2) << "no pattern came of the name";
    EXPECT_NE(shell.fileOperation({FO_COPY, list({folder + L"none"}), list({target}), quiet}).code, 0);

    EXPECT_EQ(shell.fileOperation({FO_DELETE, folder.substr(0, folder.size() - 1), L"", quiet}).code, 0)
        << "a list without its end is ended";
    EXPECT_FALSE(files.attributes(folder));
}

TEST_F(ShellOperationsTest, CancelledFolderChoiceFails) {
    const std::wstring title = L"Ordner wählen ж";
    DialogAnswer user(IDCANCEL);
    const auto chosen = shell.browseForFolder({shell.desktopWindow(), title, BIF_RETURNONLYFSDIRS});
    user.join();
    EXPECT_TRUE(user.showed(title));
    ASSERT_FALSE(chosen);
    EXPECT_EQ(chosen.error(), static_cast<SystemCode>(ERROR_CANCELLED));
}

} // namespace
} // namespace tarv
