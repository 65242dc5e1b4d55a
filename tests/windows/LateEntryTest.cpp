#include "win/LateEntry.h"

#include <gtest/gtest.h>

#include <winsock2.h>

#include <shellapi.h>

#include <cwchar>
#include <string>

namespace tarv {
namespace {

std::wstring fileOf(HMODULE library) {
    wchar_t file[MAX_PATH] = L"";
    GetModuleFileNameW(library, file, MAX_PATH);
    return _wcslwr(file);
}

TEST(LateEntry, AnswersTheFunctionsFailureWhereItIsMissing) {
    using Function = decltype(&::SHFileOperationW);
    SHFILEOPSTRUCTW nothing{};
    EXPECT_EQ((LateEntry<Function>{L"tarv_missing.dll", "SHFileOperationW", 126}(&nothing)), 126);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_MOD_NOT_FOUND});
    EXPECT_EQ((LateEntry<Function>{L"shell32.dll", "TarvMissing", 127}(&nothing)), 127);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PROC_NOT_FOUND});
    LateEntry<decltype(&::SetLastError)>{L"kernel32.dll", "TarvMissing"}(0);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PROC_NOT_FOUND}) << "nothing to answer, nothing done";
}

TEST(LateEntry, LookingAFunctionUpKeepsTheLastErrorForIt) {
    SetLastError(WSANO_DATA);
    EXPECT_EQ((LateEntry<decltype(&::WSAGetLastError)>{L"ws2_32.dll", "WSAGetLastError"}()), WSANO_DATA);
}

TEST(LateEntry, LibrariesComeFromTheSystemFolderAlone) {
    wchar_t folder[MAX_PATH] = L"";
    GetSystemDirectoryW(folder, MAX_PATH);
    const std::wstring own = fileOf(nullptr),
                       planted = own.substr(0, own.rfind(L'\\')) + L"\\tarv_planted.dll";
    ASSERT_TRUE(CopyFileW((std::wstring(folder) + L"\\oleacc.dll").c_str(), planted.c_str(), FALSE));
    // As in a program that has not narrowed the search.
    const LateEntry<BOOL(WINAPI*)(DWORD)> setDirectories{L"kernel32.dll", "SetDefaultDllDirectories"};
    ASSERT_TRUE(setDirectories(LOAD_LIBRARY_SEARCH_DEFAULT_DIRS));
    for (const auto load : {systemLibrary, systemLibraryOnOldWindows7}) {
        EXPECT_FALSE(load(L"tarv_planted.dll")) << "from the program folder";
        EXPECT_TRUE(fileOf(load(L"shell32.dll")).ends_with(L"\\shell32.dll"));
    }
    const HMODULE found = LoadLibraryW(L"tarv_planted.dll");
    EXPECT_TRUE(found) << "it could have been taken";
    FreeLibrary(found);
    setDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    DeleteFileW(planted.c_str());
}

} // namespace
} // namespace tarv
