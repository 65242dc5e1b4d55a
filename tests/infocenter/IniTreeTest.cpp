#include "infocenter/IniTree.h"

#include "runtime/Funktionen32/Funktionen32.h"
#include "tests/support/Table.h"

namespace tarv {
namespace {

struct Tree : World {
    std::wstring trace() { return fake.profiles.text(L"C:\\Program Files\\TARVENIK\\rkZAL_Debug.txt"); }

    IniTree read(std::wstring_view machine, std::wstring_view view) {
        fake.profiles.fill(L"C:\\ProgramData\\TARVENIK\\Q_Machine.INI", machine);
        fake.profiles.fill(L"C:\\ProgramData\\TARVENIK\\QV.ini", view);
        return ReadIniTree(rt);
    }
};

/// Each node's text; entries in brackets behind their group. A mark is written as "#".
std::wstring shownTree(const IniTree& tree) {
    std::wstring all = std::to_wstring(tree.duplicates);
    for (const IniGroupNode& group : tree.groups) {
        all += L"; " + group.text;
        for (const std::wstring& entry : group.entries)
            all += L" (" + entry + L")";
    }
    const std::wstring mark = L"       >>>>>> Eintrag mehrfach Vorhanden <<<<<<" + std::wstring(30, L' ');
    ReplaceAll(all, mark, L"#", CompareMode::binary);
    return all;
}

TEST(Tables, IniTree) {
    checkTable<Tree>("IniTree.txt", {{L"ReadIniTree", [](auto& w, const Row& row) {
                                          return shownTree(w.read(row[0], row[1]));
                                      }}});
}

struct IniTreeTest : testing::Test, Tree {};

TEST_F(IniTreeTest, TracesEachGroup) {
    read(L"[D]\r\n[D]\r\n", L"[e]\r\n");
    EXPECT_EQ(trace(), L"1 - TarvService\tStart INI-Read\r\n2 - TarvService\t[D]\r\n3 - "
                       L"TarvService\t[D]\r\n"
                       L"4 - TarvService\t[e]\r\n5 - TarvService\tEnd INI-Read\r\n");
    fake.facts.variables.clear();
    EXPECT_TRUE(ReadIniTree(rt).groups.empty());
    fake.disk.addFile(L"C:\\TARVENIK\\QV.ini", "[From the current drive]");
    EXPECT_EQ(ReadIniTree(rt).groups.size(), 1u);
}

TEST_F(IniTreeTest, EndsWhenTheDuplicateCounterIsFull) {
    std::wstring text;
    for (int i = 0; i < 300; ++i)
        text += L"[G]\r\n";
    const IniTree tree = read(text, L"[never reached]\r\n");
    // The 256th occurrence is the 32,640th duplicate; the 257th would go beyond 32,767.
    EXPECT_EQ(tree.groups.size(), 256u);
    EXPECT_EQ(tree.duplicates, 32767);
    EXPECT_EQ(trace().find(L"End INI-Read"), std::wstring::npos);
    EXPECT_LE(fake.faults.calls("ProfileFiles.getString"), 3) << "a line of the trace costs no read";
}

} // namespace
} // namespace tarv
