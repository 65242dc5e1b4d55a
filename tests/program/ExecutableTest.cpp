#include "tests/program/Installation.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace tarv::program {
namespace {

TEST(ExecutableTest, IsSmallHardenedAndNeedsNothingButWindowsOwnLibraries) {
    const auto file = std::filesystem::path(Installation::testFolder()).parent_path() / programFile;
    EXPECT_LT(std::filesystem::file_size(file), 700u * 1024);
    // As the loader would lay it out in memory, without running any of it.
    const auto base =
        reinterpret_cast<const char*>(LoadLibraryExW(file.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES));
    const auto& header = reinterpret_cast<const IMAGE_NT_HEADERS*>(
                             base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew)
                             ->OptionalHeader;
    const WORD wanted = IMAGE_DLLCHARACTERISTICS_TERMINAL_SERVER_AWARE | IMAGE_DLLCHARACTERISTICS_NX_COMPAT |
                        IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE |
                        (sizeof(void*) == 8 ? 0x20 : 0); // high-entropy addresses
    EXPECT_EQ(header.DllCharacteristics & wanted, wanted);
    EXPECT_EQ(header.Subsystem, IMAGE_SUBSYSTEM_WINDOWS_GUI);
    // Those that Windows takes from its own folder whatever lies beside the program.
    const std::set<std::string> allowed = {"advapi32.dll", "comctl32.dll", "comdlg32.dll", "gdi32.dll",
                                           "kernel32.dll", "msvcrt.dll",   "ole32.dll",    "oleaut32.dll",
                                           "shell32.dll",  "shlwapi.dll",  "user32.dll",   "ws2_32.dll"};
    const auto* import = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(
        base + header.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
    ASSERT_TRUE(import->Name);
    for (; import->Name; ++import) {
        std::string name = base + import->Name;
        EXPECT_TRUE(allowed.count(CharLowerA(name.data()))) << name;
    }
}

} // namespace
} // namespace tarv::program
