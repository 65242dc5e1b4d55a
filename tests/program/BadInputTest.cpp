#include "app/resource.h"
#include "tests/program/Installation.h"

#include <gtest/gtest.h>

#include <utility>

namespace tarv::program {
namespace {

using namespace std::string_literals;

/// Opens the info centre and closes it; tells how many groups and, of the first one, entries it has shown.
std::pair<LRESULT, std::size_t> shown(ProgramDriver& program) {
    const HWND mainWindow = program.window(L"frmMain", 60000);
    program.command(mainWindow, ID_mnuInfo);
    const HWND window = program.window(L"frmInfo4Prg", 60000);
    const std::wstring report = ProgramDriver::text(GetDlgItem(window, ID_txtInfo));
    EXPECT_TRUE(report.starts_with(L"[Kundeninfo]\r\n") &&
                report.find(L"[Programm]\r\n  Ordner: ") != report.npos);
    const HWND tree = GetDlgItem(window, ID_treeView);
    const LRESULT groups = SendMessageW(tree, TVM_GETCOUNT, 0, 0); // closed ones: entries do not count yet
    const std::vector<TreeNode> first = program.tree(tree, 1);
    PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(program.gone(window));
    EXPECT_TRUE(program.ready(mainWindow));
    return {groups, first.empty() ? 0 : first[0].children.size()};
}

TEST(BadInput, WindowOpensAndReportIsProducedWhateverTheFilesHold) {
    std::string huge = "[A]\r\n", groups, entries = "[A]\r\n", same;
    for (int i = 0; i < 5000; ++i) {
        huge += "B=" + std::string(4096, 'x') + "\r\n";
        groups += "[G" + std::to_string(i) + "]\r\nA=1\r\n";
        entries += "E" + std::to_string(i) + "=1\r\n";
        same += i < 300 ? "[A]\r\nB=1\r\n" : "";
    }
    const struct {
        std::string content;
        LRESULT leastGroups, mostGroups;
        std::size_t leastEntries; // of the first group
    } rows[] = {{"", 0, 0, 0},
                {huge, 1, 1, 0},
                {groups, 1000, 5000, 1},
                {entries, 1, 1, 1000},
                {same, 256, 256, 1}, // then the counter of duplicates is full
                {"[A]\r\nnur Text\r\nnoch einer\r\n", 1, 1, 1},
                {"[A]\r\nB=1\0\0C=2\r\n[D\0]\r\n\0\0"s, 0, 3, 0},
                {"\xFF\xFE[\0A\0]\0\r\0\n\0B\0=\0x\0\r\0\n\0"s, 0, 2, 0}};
    Installation installation;
    const auto program = installation.start();
    EXPECT_EQ(ProgramDriver::text(GetDlgItem(program->window(L"frmMain"), ID_lblVersion)), L"Version: 2023");
    EXPECT_EQ(shown(*program).first, 0) << "no files at all";
    for (const auto& row : rows) {
        SCOPED_TRACE(row.content.substr(0, 20));
        installation.write(machineFile, row.content);
        const auto [groupsShown, entriesShown] = shown(*program);
        EXPECT_TRUE(groupsShown >= row.leastGroups && groupsShown <= row.mostGroups) << groupsShown;
        EXPECT_GE(entriesShown, row.leastEntries);
        EXPECT_EQ(installation.read(machineFile), row.content) << "nothing is written";
    }
    program->command(program->window(L"frmMain"), ID_mnuFileExit);
    EXPECT_TRUE(program->ended());
    EXPECT_EQ(program->exitCode(), 0u);
    // At the start, in each info centre and behind it, the skin asks for an entry that no file here has.
    EXPECT_EQ(program->boxes().size(), 1 + 2 * (1 + std::size(rows)));
}

} // namespace
} // namespace tarv::program
