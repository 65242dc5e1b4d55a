#include "platform/FileStore.h"
#include "platform/ProfileFiles.h"
#include "platform/SystemFacts.h"

#include "ContractWorld.h"
#include "tests/support/Table.h"

namespace tarv {
namespace {

struct ProfileFilesCase : ContractWorld {
    ProfileFiles& with(const std::wstring& text) {
        border.files->overwrite(file, FakeSystemFacts::encode(text));
        return profiles;
    }

    ProfileFiles& profiles = *border.profiles;
    const std::wstring file = path(L"a.ini");
};

TEST(Tables, ProfileFiles) {
    checkTable<ProfileFilesCase>(
        "ProfileFiles.txt",
        {{L"getString",
          [](auto& w, const Row& row) {
              return w.with(row[0]).getString(row[1], row[2], L"missing", 100, w.file);
          }},
         {L"getString with size",
          [](auto& w, const Row& row) {
              return w.with(row[0]).getString(L"A", row[1], row[2], static_cast<unsigned>(row.number(3)),
                                              w.file);
          }},
         {L"getSectionNames",
          [](auto& w, const Row& row) {
              return w.with(row[0]).getSectionNames(static_cast<unsigned>(row.number(1)), w.file);
          }},
         {L"getSection",
          [](auto& w, const Row& row) {
              return w.with(row[0]).getSection(row[1], static_cast<unsigned>(row.number(2)), w.file);
          }},
         {L"writeString", [](auto& w, const Row& row) {
              EXPECT_TRUE(w.with(row[0]).writeString(row[1], row[2], row[3], w.file));
              return FakeSystemFacts::decode(w.bytes(w.file).value_or("no file"));
          }}});
}

struct ProfileFilesContract : testing::Test, ProfileFilesCase {};

// A read-only file refuses on Windows only: to root, as tests in containers
// run, Wine cannot refuse it.
TEST_F(ProfileFilesContract, MissingFilesAreEmptyAndMadeWhereThatIsPossible) {
    const std::wstring none = path(L"none.ini");
    EXPECT_EQ(profiles.getString(L"A", L"x", L"fallback", 100, path(L"none\\none.ini")), L"fallback");
    EXPECT_EQ(profiles.getSectionNames(100, none) + profiles.getSection(L"A", 100, none), L"");
    EXPECT_TRUE(profiles.writeString(L"A", L"x", L" 1 ", none));
    EXPECT_EQ(profiles.getString(L"A", L"x", L"", 100, none), L"1");
    EXPECT_FALSE(profiles.writeString(L"A", L"x", L"1", path(L"none\\x.ini")));
    putFolder(path(L"folder.ini"));
    EXPECT_FALSE(profiles.writeString(L"A", L"x", L"1", path(L"folder.ini")));
}

TEST_F(ProfileFilesContract, LooksForABareNameInTheWindowsFolder) {
    if (!ownsWindowsFolder)
        GTEST_SKIP() << "writes into the Windows folder";
    const std::wstring full = border.facts->windowsDirectory(260) + L"\\TarvContract.ini";
    EXPECT_TRUE(profiles.writeString(L"A", L"x", L"1", L"TarvContract.ini"));
    EXPECT_EQ(bytes(full), "[A]\r\nx=1\r\n");
    EXPECT_EQ(profiles.getString(L"A", L"x", L"", 100, L"TarvContract.ini"), L"1");
    EXPECT_EQ(border.files->remove(full), 0u);
}

} // namespace
} // namespace tarv
