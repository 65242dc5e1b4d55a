#include "platform/FileStore.h"
#include "platform/MachineFacts.h"
#include "platform/ProfileFiles.h"
#include "tests/support/ContractWorld.h"

namespace tarv {
namespace {

using namespace std::string_literals;

class ProfileFilesContract : public Contract {
protected:
    /// A new name for every content: the system remembers files by name.
    std::wstring put(std::string_view bytes) {
        const std::wstring file = path(L"t" + std::to_wstring(++files_) + L".ini");
        world->putFile(file, bytes);
        return file;
    }

    ProfileFiles& profiles = border.profiles;

private:
    int files_ = 0;
};

TEST_F(ProfileFilesContract, ReadsEntries) {
    const struct {
        const char *rule, *ini;
        const wchar_t *group, *entry, *value;
    } cases[] = {
        {"names in any case", "[Gruppe]\r\nName=Wert\r\n", L"GRUPPE", L"nAME", L"Wert"},
        {"blanks around", "  [ A B ] rest\r\n  x y =  1 2  \r\n", L"A B", L"x y", L"1 2"},
        {"tabs around", "[A]\r\n\tx\t=\t1\t2\t\r\n", L"A", L"x", L"1\t2"},
        {"a comment is no entry", "[A]\r\n;x=1\r\n  ; x=2\r\n", L"A", L"x", L"missing"},
        {"a semicolon inside belongs to the value", "[A]\r\nx=1 ; rest\r\n", L"A", L"x", L"1 ; rest"},
        {"a hash is an ordinary character", "[A]\r\n#x=1\r\n", L"A", L"#x", L"1"},
        {"double quotes", "[A]\r\nx=\" 1 \"\r\n", L"A", L"x", L" 1 "},
        {"single quotes", "[A]\r\nx='1'\r\n", L"A", L"x", L"1"},
        {"one pair of quotes only", "[A]\r\nx=\"\"1\"\"\r\n", L"A", L"x", L"\"1\""},
        {"open quotes stay", "[A]\r\nx=\"1\r\n", L"A", L"x", L"\"1"},
        {"mixed quotes stay", "[A]\r\nx='1\"\r\n", L"A", L"x", L"'1\""},
        {"an empty value is there", "[A]\r\nx=\r\n", L"A", L"x", L""},
        {"a line without = is no entry", "[A]\r\nx\r\n", L"A", L"x", L"missing"},
        {"the first = separates", "[A]\r\nx==1\r\n", L"A", L"x", L"=1"},
        {"the first entry wins", "[A]\r\nx=1\r\nx=2\r\n", L"A", L"x", L"1"},
        {"the first group wins", "[A]\r\nx=1\r\n[B]\r\n[a]\r\nx=2\r\n", L"A", L"x", L"1"},
        {"a second group of the name is never read", "[A]\r\nx=1\r\n[a]\r\ny=2\r\n", L"A", L"y", L"missing"},
        {"empty lines", "\r\n[A]\r\n\r\n  \r\nx=1\r\n", L"A", L"x", L"1"},
        {"line feeds and no end", "[A]\nx=1\ny=2", L"A", L"y", L"2"},
        // Named as in the file: Windows folds umlauts too, Wine A to Z only.
        {"8-bit text is the code page's", "[Gr\xFC\xDF]\r\n\xC4=\x80 \xE4\r\n", L"Grüß", L"Ä", L"€ ä"},
        {"a name outside the code page", "[A]\r\n?=1\r\n", L"A", L"ж", L"1"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.rule);
        EXPECT_EQ(profiles.getString(c.group, c.entry, L"missing", 100, put(c.ini)), c.value);
    }
}

TEST_F(ProfileFilesContract, AnswersTheFallbackWithoutTrailingBlanks) {
    const std::wstring file = put("[A]\r\nx=\r\n");
    EXPECT_EQ(profiles.getString(L"A", L"y", L"  zu Hause  ", 100, file), L"  zu Hause");
    EXPECT_EQ(profiles.getString(L"A", L"x", L"fallback", 100, file), L"");
    EXPECT_EQ(profiles.getString(L"A", L"x", L"fallback", 100, path(L"none\\none.ini")), L"fallback");
}

TEST_F(ProfileFilesContract, CutsAtTheBuffer) {
    const std::wstring file = put("[A]\r\nx=123456789\r\n[BB]\r\n");
    EXPECT_EQ(profiles.getString(L"A", L"x", L"", 10, file), L"123456789");
    EXPECT_EQ(profiles.getString(L"A", L"x", L"", 9, file), L"12345678");
    EXPECT_EQ(profiles.getString(L"A", L"y", L"fallback", 5, file), L"fall");
    // Lists: Windows and Wine differ where a list fits to the last character, so that size is left out.
    EXPECT_EQ(profiles.getSection(L"A", 14, file), L"x=123456789\0"s);
    EXPECT_EQ(profiles.getSection(L"A", 12, file), L"x=12345678");
    EXPECT_EQ(profiles.getSectionNames(7, file), L"A\0BB\0"s);
    EXPECT_EQ(profiles.getSectionNames(5, file), L"A\0B"s);
}

TEST_F(ProfileFilesContract, ListsGroupsAndTheirLines) {
    const std::wstring file =
        put("; Kopf\r\n[ A ]\r\n x y = \"1\" \r\n;c=1\r\n\r\nleer=\r\n[B]\r\n;[C]\r\n[a]\r\nz=\xE4\r\n");
    EXPECT_EQ(profiles.getSectionNames(100, file), L"A\0B\0a\0"s);
    EXPECT_EQ(profiles.getSection(L"a", 100, file), L"x y=\"1\"\0leer=\0"s);
    EXPECT_EQ(profiles.getSection(L"B", 100, file), L"");
    EXPECT_EQ(profiles.getSectionNames(100, path(L"none.ini")), L"");
    EXPECT_EQ(profiles.getSection(L"A", 100, path(L"none.ini")), L"");
}

TEST_F(ProfileFilesContract, WritesEntries) {
    // No empty lines here: Windows keeps them, Wine drops them.
    const struct {
        const char *rule, *before;
        const wchar_t *group, *entry, *value;
        const char* after;
    } cases[] = {
        {"in place", "; Kopf\r\n[A]\r\n; c\r\nx=1\r\ny=2\r\n[B]\r\n", L"a", L"X", L"neu",
         "; Kopf\r\n[A]\r\n; c\r\nx=neu\r\ny=2\r\n[B]\r\n"},
        {"behind the group's last line", "[A]\r\nx=1\r\n[B]\r\ny=2\r\n", L"A", L"z", L"3",
         "[A]\r\nx=1\r\nz=3\r\n[B]\r\ny=2\r\n"},
        {"a new group at the end", "[A]\r\nx=1\r\n", L"B", L"y", L"2", "[A]\r\nx=1\r\n[B]\r\ny=2\r\n"},
        {"behind a line without end", "[A]\r\nx=1", L"A", L"y", L"2", "[A]\r\nx=1\r\ny=2\r\n"},
        {"the first of two", "[A]\r\nx=1\r\nx=2\r\n[A]\r\nx=3\r\n", L"A", L"x", L"5",
         "[A]\r\nx=5\r\nx=2\r\n[A]\r\nx=3\r\n"},
        {"an empty value", "[A]\r\nx=1\r\n", L"A", L"x", L"", "[A]\r\nx=\r\n"},
        {"quotes as they stand", "[A]\r\n", L"A", L"x", L"\"1\"", "[A]\r\nx=\"1\"\r\n"},
        {"in the code page", "[A]\r\n", L"A", L"Länge", L"5 € ж", "[A]\r\nL\xE4nge=5 \x80 ?\r\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.rule);
        const std::wstring file = put(c.before);
        EXPECT_TRUE(profiles.writeString(c.group, c.entry, c.value, file));
        EXPECT_EQ(world->bytes(file), c.after);
    }
    EXPECT_TRUE(profiles.writeString(L"A", L"x", L" 1 ", path(L"new.ini")));
    EXPECT_EQ(profiles.getString(L"A", L"x", L"", 100, path(L"new.ini")), L"1");
}

// A read-only file refuses on Windows only: to root, as tests in containers run, Wine cannot refuse it.
TEST_F(ProfileFilesContract, RefusesWhereNoFileCanBeWritten) {
    EXPECT_FALSE(profiles.writeString(L"A", L"x", L"1", path(L"none\\x.ini")));
    world->putFolder(path(L"folder.ini"));
    EXPECT_FALSE(profiles.writeString(L"A", L"x", L"1", path(L"folder.ini")));
}

TEST_F(ProfileFilesContract, LooksForABareNameInTheWindowsFolder) {
    const std::wstring bare = L"TarvContract.ini";
    const std::wstring full = border.machine.windowsDirectory(260) + L"\\" + bare;
    EXPECT_TRUE(profiles.writeString(L"A", L"x", L"1", bare));
    EXPECT_EQ(world->bytes(full), "[A]\r\nx=1\r\n");
    EXPECT_EQ(profiles.getString(L"A", L"x", L"", 100, bare), L"1");
    EXPECT_EQ(border.files.remove(full), 0u);
}

} // namespace
} // namespace tarv
