#include "infocenter/IniTree.h"

#include "tests/support/FakePlatform.h"

namespace tarv {
namespace {

struct IniTreeTest : Scripted {
    void machine(std::wstring_view text) {
        fake.profiles.fill(L"C:\\ProgramData\\TARVENIK\\Q_Machine.INI", text);
    }
    void view(std::wstring_view text) { fake.profiles.fill(L"C:\\ProgramData\\TARVENIK\\QV.ini", text); }

    std::vector<std::wstring> groupTexts(const IniTree& tree) {
        std::vector<std::wstring> texts;
        for (const auto& group : tree.groups)
            texts.push_back(group.text);
        return texts;
    }

    std::wstring traceText() { return fake.profiles.text(L"C:\\Program Files\\TARVENIK\\rkZAL_Debug.txt"); }

    static std::wstring mark(int last) {
        return L"       >>>>>> Eintrag mehrfach Vorhanden <<<<<<" + std::wstring(30, L' ') +
               std::to_wstring(last);
    }
};

TEST_F(IniTreeTest, ShowsGroupsAndEntriesOfBothFiles) {
    machine(L"[Directories]\r\nPROGRAMM=D:\\P=Q\r\nPROGRAMM=again\r\nno equals\r\n[A]\r\n");
    view(L"[directories]\r\nx=1\r\n");
    const IniTree tree = ReadIniTree(rt);
    ASSERT_EQ(groupTexts(tree), (std::vector<std::wstring>{L"Q_Machine.INI  [Directories]",
                                                           L"Q_Machine.INI  [A]", L"QV.INI  [directories]"}));
    EXPECT_EQ(tree.groups[0].key, L"KDirectories");
    ASSERT_EQ(tree.groups[0].entries.size(), 2u);
    EXPECT_EQ(tree.groups[0].entries[0].key, L"KDirectories|PROGRAMM");
    EXPECT_EQ(tree.groups[0].entries[0].text, L"PROGRAMM=D:\\P=Q");
    EXPECT_EQ(tree.groups[0].entries[1].key, L"KDirectories|no equals");
    EXPECT_EQ(tree.groups[2].entries.size(), 1u);
    EXPECT_EQ(traceText(), L"1 - TarvService\tStart INI-Read\r\n2 - TarvService\t[Directories]\r\n"
                           L"3 - TarvService\t[A]\r\n4 - TarvService\t[directories]\r\n"
                           L"5 - TarvService\tEnd INI-Read\r\n");
}

TEST_F(IniTreeTest, MarksGroupsThatOccurAgain) {
    machine(L"[D]\r\nx=1\r\n[E]\r\n[D]\r\ny=2\r\n");
    view(L"[D]\r\nz=3\r\n");
    const IniTree tree = ReadIniTree(rt);
    // The number is the index of the first file's last group.
    EXPECT_EQ(groupTexts(tree), (std::vector<std::wstring>{L"Q_Machine.INI  [D]", L"Q_Machine.INI  [E]",
                                                           L"Q_Machine.INI  [D" + mark(2) + L"]",
                                                           L"QV.INI  [D" + mark(2) + mark(2) + L"]"}));
    EXPECT_EQ(tree.groups[2].key, L"KD" + mark(2));
    EXPECT_EQ(tree.groups[0].entries.size(), 1u);
    EXPECT_TRUE(tree.groups[2].entries.empty());
    EXPECT_EQ(tree.duplicates, 3);
    EXPECT_NE(traceText().find(L"4 - TarvService\t[D]\r\n5 - TarvService\t[D]\r\n"), std::wstring::npos);

    fake.disk.remove(L"C:\\ProgramData\\TARVENIK\\Q_Machine.INI");
    view(L"[D]\r\n[D]\r\n[A]\r\nb=1\r\n[A|b]\r\n");
    EXPECT_EQ(groupTexts(ReadIniTree(rt)),
              (std::vector<std::wstring>{L"QV.INI  [D]", L"QV.INI  [D" + mark(-1) + L"]", L"QV.INI  [A]",
                                         L"QV.INI  [A|b" + mark(-1) + L"]"}));
}

TEST_F(IniTreeTest, EndsWhenTheDuplicateCounterIsFull) {
    std::wstring text;
    for (int i = 0; i < 300; ++i)
        text += L"[G]\r\n";
    machine(text);
    view(L"[never reached]\r\n");
    const IniTree tree = ReadIniTree(rt);
    // The 256th occurrence is the 32,640th duplicate; the 257th would go beyond 32,767.
    EXPECT_EQ(tree.groups.size(), 256u);
    EXPECT_EQ(tree.duplicates, 32767);
    EXPECT_EQ(tree.groups.back().key.size(), 2 + 255 * mark(299).size());
    EXPECT_EQ(traceText().find(L"End INI-Read"), std::wstring::npos);
}

TEST_F(IniTreeTest, ListsAreCutAtTheBuffer) {
    // Names of 203 characters and a NUL: 80 fit into 16,382 characters, and the cut one behind them is left
    // out.
    const std::wstring name(200, L'n');
    std::wstring text;
    for (int i = 0; i < 90; ++i)
        text += L"[" + name + std::to_wstring(100 + i) + L"]\r\n";
    machine(text);
    const IniTree groups = ReadIniTree(rt);
    EXPECT_EQ(groups.groups.size(), 80u);
    // A line of the trace costs no read of the configuration, however many there are.
    EXPECT_LE(fake.faults.calls("ProfileFiles.getString"), 3);

    text = L"[One]\r\n";
    for (int i = 0; i < 90; ++i)
        text += name + std::to_wstring(10 + i) + L"=\r\n";
    machine(text);
    const IniTree entries = ReadIniTree(rt);
    ASSERT_EQ(entries.groups.size(), 1u);
    EXPECT_EQ(entries.groups[0].entries.size(), 80u);
}

TEST_F(IniTreeTest, MissingFilesContributeNothing) {
    fake.environment.list.clear();
    EXPECT_TRUE(ReadIniTree(rt).groups.empty());
    EXPECT_EQ(traceText(), L"1 - TarvService\tStart INI-Read\r\n2 - TarvService\tEnd INI-Read\r\n");

    fake.disk.addFile(L"C:\\TARVENIK\\QV.ini", "[From the current drive]");
    EXPECT_EQ(ReadIniTree(rt).groups.size(), 1u);
}

} // namespace
} // namespace tarv
