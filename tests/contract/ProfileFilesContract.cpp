#include "platform/FileStore.h"
#include "platform/ProfileFiles.h"
#include "platform/SystemFacts.h"

#include "tests/support/ContractWorld.h"
#include "tests/support/Table.h"

namespace tarv {
namespace {

struct ProfileFilesContract : Contract {
    ProfileFiles& profiles = *border.profiles;
};

TEST_F(ProfileFilesContract, ReadsCutsListsAndWritesAsTheTableSays) {
    checkTable("ProfileFiles.txt", [&, files = 0](const Row& row) mutable {
        // A new name for every content: the system remembers files by name.
        const std::wstring file = path(L"t" + std::to_wstring(++files) + L".ini");
        world->putFile(file, FakeSystemFacts::encode(row[1]));
        const auto size = [&](std::size_t cell) { return static_cast<std::uint32_t>(std::stoi(row[cell])); };
        if (row[0] == L"get")
            return profiles.getString(row[2], row[3], L"missing", 100, file);
        if (row[0] == L"cut")
            return profiles.getString(L"A", row[2], row[3], size(4), file);
        if (row[0] == L"groups")
            return profiles.getSectionNames(size(2), file);
        if (row[0] == L"section")
            return profiles.getSection(row[2], size(3), file);
        EXPECT_TRUE(profiles.writeString(row[2], row[3], row[4], file));
        return FakeSystemFacts::decode(world->bytes(file).value_or("no file"));
    });
}

// A read-only file refuses on Windows only: to root, as tests in containers
// run, Wine cannot refuse it.
TEST_F(ProfileFilesContract, MissingFilesAreEmptyAndMadeWhereThatIsPossible) {
    const std::wstring none = path(L"none.ini");
    EXPECT_EQ(profiles.getString(L"A", L"x", L"fallback", 100, path(L"none\\none.ini")), L"fallback");
    EXPECT_EQ(profiles.getSectionNames(100, none) + profiles.getSection(L"A", 100, none), L"");
    EXPECT_TRUE(profiles.writeString(L"A", L"x", L" 1 ", none));
    EXPECT_EQ(profiles.getString(L"A", L"x", L"", 100, none), L"1");
    EXPECT_FALSE(profiles.writeString(L"A", L"x", L"1", path(L"none\\x.ini")));
    world->putFolder(path(L"folder.ini"));
    EXPECT_FALSE(profiles.writeString(L"A", L"x", L"1", path(L"folder.ini")));
}

TEST_F(ProfileFilesContract, LooksForABareNameInTheWindowsFolder) {
    if (!world->ownsWindowsFolder())
        GTEST_SKIP() << "writes into the Windows folder";
    const std::wstring full = border.facts->windowsDirectory(260) + L"\\TarvContract.ini";
    EXPECT_TRUE(profiles.writeString(L"A", L"x", L"1", L"TarvContract.ini"));
    EXPECT_EQ(world->bytes(full), "[A]\r\nx=1\r\n");
    EXPECT_EQ(profiles.getString(L"A", L"x", L"", 100, L"TarvContract.ini"), L"1");
    EXPECT_EQ(border.files->remove(full), 0u);
}

} // namespace
} // namespace tarv
