#include "platform/MachineFacts.h"
#include "platform/OwnProgram.h"
#include "platform/Processes.h"
#include "platform/windows/ProcessHardening.h"
#include "platform/windows/WindowsPlatform.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace tarv {
namespace {

/// Every test of this program runs hardened, as the product does: so the components used elsewhere show that
/// they still load with their neighbours.
class Hardened : public testing::Environment {
public:
    void SetUp() override { hardenProcess(); }
};
const auto* const hardened = testing::AddGlobalTestEnvironment(new Hardened);

TEST(OwnProgramTest, VersionIsThatOfTheFileNotOfTheProduct) {
    WindowsPlatform windows;
    const FileVersion version = windows.border().program.version();
    EXPECT_EQ(version.major, 3);
    EXPECT_EQ(version.minor, 14);
    EXPECT_EQ(version.revision, 15);
}

TEST(ProcessHardeningTest, LibrariesWithoutPathComeFromTheSystemFolderOnly) {
    ASSERT_NE(hardened, nullptr);
    WindowsPlatform windows;
    const std::wstring system = windows.border().machine.systemDirectory();
    std::wstring program = windows.border().program.path();
    program.resize(program.rfind(L'\\') + 1);
    const wchar_t* const planted = L"tarv_planted.dll";
    for (const std::wstring& folder : {std::wstring(), program}) {
        const std::wstring file = folder + planted;
        ASSERT_TRUE(CopyFileW((system + L"\\oleacc.dll").c_str(), file.c_str(), FALSE));
        EXPECT_EQ(LoadLibraryW(planted), nullptr) << "beside the program or in the current folder";
        EXPECT_TRUE(DeleteFileW(file.c_str()));
    }
    const HMODULE known = LoadLibraryW(L"oleacc.dll");
    EXPECT_NE(known, nullptr);
    FreeLibrary(known);
}

} // namespace
} // namespace tarv
