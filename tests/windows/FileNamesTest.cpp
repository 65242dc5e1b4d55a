#include "platform/FileStore.h"
#include "platform/ProfileFiles.h"
#include "platform/windows/SystemText.h"
#include "platform/windows/WindowsPlatform.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace tarv {
namespace {

/// A folder of its own, its name outside every single-byte code page beside an ordinary part.
class FileNamesTest : public testing::Test {
protected:
    FileNamesTest() {
        wchar_t temporary[MAX_PATH];
        GetTempPathW(MAX_PATH, temporary);
        folder = std::wstring(temporary) + L"tarv \u0436\u00e4" + std::to_wstring(GetCurrentProcessId());
        CreateDirectoryW(folder.c_str(), nullptr);
    }
    ~FileNamesTest() override { RemoveDirectoryW(folder.c_str()); }

    WindowsPlatform windows;
    FileStore& files = windows.border().files;
    std::wstring folder;
};

TEST_F(FileNamesTest, ProfileFilesAreReachedThroughSuchFolders) {
    const std::wstring ini = folder + L"\\\u0436.ini";
    ASSERT_EQ(files.overwrite(ini, "[Info]\r\nProgVersion=12.3\r\n"), 0u);
    ProfileFiles& profiles = windows.border().profiles;
    EXPECT_EQ(profiles.getString(L"Info", L"ProgVersion", L"none", 100, ini), L"12.3");
    EXPECT_TRUE(profiles.writeString(L"Info", L"Neu", L"1", ini));
    EXPECT_EQ(profiles.getString(L"Info", L"Neu", L"none", 100, ini), L"1");
    EXPECT_EQ(files.remove(ini), 0u);
}

TEST(LongFileNameTest, OnlyLongPathsGetThePrefix) {
    const std::wstring tail(300, L'x');
    wchar_t current[MAX_PATH];
    GetCurrentDirectoryW(MAX_PATH, current);
    const std::pair<std::wstring, std::wstring> cases[] = {
        {L"", L""},
        {L"C:\\a\\..\\b", L"C:\\a\\..\\b"},
        {L"C:\\a\\..\\b/" + tail, L"\\\\?\\C:\\b\\" + tail},
        {L"\\\\server\\share\\" + tail, L"\\\\?\\UNC\\server\\share\\" + tail},
        {L"\\\\?\\C:\\" + tail, L"\\\\?\\C:\\" + tail},
        {tail, std::wstring(L"\\\\?\\") + current + L"\\" + tail},
        {L"C:\\" + tail + L"\\*.txt", L"\\\\?\\C:\\" + tail + L"\\*.txt"}};
    for (const auto& [path, name] : cases)
        EXPECT_EQ(toFileName(path), name);
}

TEST_F(FileNamesTest, AppendersDoNotOverwriteEachOther) {
    const std::wstring file = folder + L"\\trace.txt";
    const HANDLE other = CreateFileW(file.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                     nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_HIDDEN, nullptr);
    DWORD written = 0;
    EXPECT_TRUE(WriteFile(other, "aa", 2, &written, nullptr));
    EXPECT_EQ(files.append(file, "bb"), 0u);
    EXPECT_TRUE(WriteFile(other, "cc", 2, &written, nullptr));
    EXPECT_EQ(files.length(file).valueOr(0), 6);
    EXPECT_EQ(files.overwrite(file, "d"), system_code::sharingViolation) << "it would cut the other's lines";
    CloseHandle(other);
    EXPECT_EQ(files.overwrite(file, "d"), 0u) << "a hidden file is no obstacle";
    EXPECT_EQ(files.length(file).valueOr(0), 1);
    EXPECT_EQ(files.attributes(file).valueOr(0) & attribute::hidden, attribute::hidden);
    EXPECT_EQ(files.remove(file), 0u);
}

} // namespace
} // namespace tarv
