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
    for (const bool backwards : {false, true}) { // from the only node round to itself
        wrapped = false;
        EXPECT_TRUE(findInTree({{{L"[x]", {}}}}, L"x", {}, {backwards, true}, wrapped) && wrapped);
    }
}

TEST(WholeTextTest, FileIsNamedAfterComputerAndDay) {
    EXPECT_EQ(wholeTextFileName(L"BÜRO-7", 2026, 9, 4), L"Infocenter_BÜRO-7_2026-09-04.txt");
    EXPECT_EQ(wholeTextFileName(L"a\\b:*", 2026, 12, 31), L"Infocenter_a_b___2026-12-31.txt");
}

TEST(Tables, WholeText) {
    checkTable<World>("WholeText.txt",
                      {{L"saveWhole", [](auto& w, const Row& row) {
                            FakePlatform& fake = w.fake;
                            const std::wstring file = L"C:\\Texte\\Bericht.txt";
                            const std::string function(row[0].begin(), row[0].end());
                            fake.disk.addFile(file, "former");
                            fake.faults.fail(function, static_cast<SystemCode>(row.number(1)));
                            fake.faults.fail("FileStore.moveOver", 5);
                            const std::wstring text{L'B', L'\xFC', L'\xD83D', L'\xDE00', L'\xDC00'};
                            const auto failure = saveWhole(w.rt, file, markedUtf8(text));
                            return joined(failure.value_or(L"saved"), fake.profiles.text(file),
                                          fake.profiles.text(file + L".neu"));
                        }}});
}

TEST(WholeText, LeavesTheFileThatSomebodyElseIsWriting) {
    World w;
    w.fake.disk.addFile(L"C:\\B.txt.neu", "theirs");
    w.fake.faults.fail("FileStore.attributes", system_code::fileNotFound, 1, 1); // it came after the look
    w.fake.faults.fail("FileStore.overwrite", system_code::sharingViolation);
    EXPECT_TRUE(saveWhole(w.rt, L"C:\\B.txt", "ours"));
    EXPECT_EQ(w.fake.disk.bytes(L"C:\\B.txt.neu"), "theirs");
}

} // namespace
} // namespace tarv
