#include "infocenter/Search.h"
#include "infocenter/WholeText.h"
#include "tests/support/Table.h"

namespace tarv {
namespace {

SearchStep stepOf(const std::wstring& how) {
    return {how.find(L"back") != how.npos, how.find(L"on") != how.npos};
}

std::wstring shownPlace(const std::wstring& place, bool wrapped) {
    return (wrapped ? L"*" : L"") + place;
}

struct SearchCase : World {
    bool wrapped = false;

    std::wstring inText(const Row& row) {
        const auto at = findInText(row[0], row[1], std::stoul(row[2]), stepOf(row[3]), wrapped);
        return at ? shownPlace(std::to_wstring(*at), wrapped) : L"none";
    }
    std::wstring inTree(const Row& row) {
        const IniTree tree{{{L"[Büro]", {L"a=1", L"ÄB=2"}}, {L"[leer]", {}}, {L"[c]", {L"d=büro"}}}};
        const NodePlace from{row[1][0] - std::size_t{L'0'}, row[1][2] - std::size_t{L'0'}};
        const auto node = findInTree(tree, row[0], from, stepOf(row[2]), wrapped);
        if (!node)
            return L"none";
        return shownPlace(std::to_wstring(node->group) + L"." + std::to_wstring(node->entry), wrapped);
    }
};

TEST(Tables, Search) {
    checkTable<SearchCase>("Search.txt",
                           {{L"findInText", [](auto& c, const Row& row) { return c.inText(row); }},
                            {L"findInTree", [](auto& c, const Row& row) { return c.inTree(row); }}});
    bool wrapped = false;
    EXPECT_FALSE(findInTree({}, L"x", {}, {}, wrapped));
}

TEST(WholeTextTest, ReportComesBeforeEachGroupWithItsEntries) {
    EXPECT_EQ(wholeText(L"Bericht\r\n\r\n", {{{L"[A]", {L"x=1", L"y"}}, {L"[B]", {}}}}),
              L"Bericht\r\n\r\n[A]\r\n    x=1\r\n    y\r\n[B]\r\n");
}

TEST(WholeTextTest, FileIsNamedAfterComputerAndDay) {
    EXPECT_EQ(wholeTextFileName(L"BÜRO-7", 2026, 9, 4), L"Infocenter_BÜRO-7_2026-09-04.txt");
    EXPECT_EQ(wholeTextFileName(L"a\\b:*", 2026, 12, 31), L"Infocenter_a_b___2026-12-31.txt");
}

struct SaveTest : Scripted {
    const std::wstring file = L"C:\\Texte\\Bericht.txt", fresh = file + L".neu";
    std::wstring save() {
        const std::wstring text{L'B', L'\xFC', L'\xD83D', L'\xDE00', L'\xDC00'};
        return saveWholeText(rt, file, text).value_or(L"saved");
    }
};

TEST_F(SaveTest, WritesUtf8WithItsMark) {
    fake.disk.addFolder(L"C:\\Texte");
    for (int twice = 0; twice < 2; ++twice) {
        EXPECT_EQ(save(), L"saved");
        EXPECT_EQ(fake.disk.bytes(file), "\xEF\xBB\xBF"
                                         "B\xC3\xBC\xF0\x9F\x98\x80\xEF\xBF\xBD");
        EXPECT_FALSE(fake.disk.exists(fresh));
        fake.disk.addFile(file, "another text");
    }
}

TEST_F(SaveTest, FailureLeavesTheFormerFileAndSaysWhy) {
    const std::tuple<const char*, SystemCode, const wchar_t*> cases[]{
        {"FileStore.overwrite", 5, L"Hier darf nicht geschrieben werden"},
        {"FileStore.overwrite", 112, L"Der Datenträger ist voll."},
        {"FileStore.replace", 32, L"Ein anderes Programm hat die Datei geöffnet."},
        {"FileStore.replace", 1450, L"Windows meldet den Fehler 1450."}};
    fake.disk.addFile(file, "former");
    for (const auto& [call, code, reason] : cases) {
        fake.faults.fail(call, code);
        const std::wstring message = save();
        EXPECT_NE(message.find(reason), message.npos) << message;
        EXPECT_EQ(fake.disk.bytes(file), "former");
        EXPECT_FALSE(fake.disk.exists(fresh));
        fake.faults.fail(call, 0, 0, 0);
    }
    fake.faults.fail("FileStore.replace", 1176);
    fake.faults.fail("FileStore.moveOver", 5);
    EXPECT_TRUE(save().ends_with(L"Er liegt vollständig in " + fresh));
    EXPECT_TRUE(fake.disk.bytes(fresh).ends_with("\xEF\xBF\xBD"));
}

} // namespace
} // namespace tarv
