#include "tests/program/Installation.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace tarv::program {
namespace {

/// The program's file as the loader would lay it out in memory, without running any of it.
class Image {
public:
    explicit Image(const std::wstring& file)
        : base_(reinterpret_cast<const char*>(
              LoadLibraryExW(file.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES))) {}

    const IMAGE_OPTIONAL_HEADER& header() const {
        const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base_);
        return reinterpret_cast<const IMAGE_NT_HEADERS*>(base_ + dos->e_lfanew)->OptionalHeader;
    }

    std::set<std::string> importedLibraries() const {
        std::set<std::string> names;
        const auto* import = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(
            base_ + header().DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
        for (; import->Name; ++import) {
            std::string name = base_ + import->Name;
            CharLowerA(name.data());
            names.insert(name);
        }
        return names;
    }

private:
    const char* base_;
};

TEST(ExecutableTest, NeedsNothingButWindowsOwnLibraries) {
    // Those that Windows takes from its own folder whatever lies beside the program.
    const std::set<std::string> allowed = {"advapi32.dll", "comctl32.dll", "comdlg32.dll", "gdi32.dll",
                                           "kernel32.dll", "msvcrt.dll",   "ole32.dll",    "oleaut32.dll",
                                           "shell32.dll",  "shlwapi.dll",  "user32.dll",   "ws2_32.dll"};
    const std::set<std::string> imported = Image(Installation::builtProgram()).importedLibraries();
    EXPECT_GT(imported.size(), 3u);
    for (const std::string& library : imported) {
        EXPECT_TRUE(allowed.count(library)) << library;
    }
}

TEST(ExecutableTest, IsSmallAndHardened) {
    EXPECT_LT(std::filesystem::file_size(Installation::builtProgram()), 700u * 1024);
    const WORD wanted = IMAGE_DLLCHARACTERISTICS_TERMINAL_SERVER_AWARE | IMAGE_DLLCHARACTERISTICS_NX_COMPAT |
                        IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE |
                        (sizeof(void*) == 8 ? 0x20 : 0); // high-entropy addresses
    const IMAGE_OPTIONAL_HEADER& header = Image(Installation::builtProgram()).header();
    EXPECT_EQ(header.DllCharacteristics & wanted, wanted);
    EXPECT_EQ(header.Subsystem, IMAGE_SUBSYSTEM_WINDOWS_GUI);
}

} // namespace
} // namespace tarv::program
