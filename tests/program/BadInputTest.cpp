#include "app/resource.h"
#include "tests/program/Installation.h"

#include <gtest/gtest.h>

namespace tarv::program {
namespace {

using namespace std::string_literals;

/// Opens the info centre and closes it; tells how many groups it has shown.
LRESULT groupsShown(ProgramDriver& program) {
    const HWND mainWindow = program.window(L"frmMain", 60000);
    program.command(mainWindow, ID_mnuInfo);
    const HWND window = program.window(L"frmInfo4Prg", 60000);
    EXPECT_TRUE(ProgramDriver::text(GetDlgItem(window, ID_txtInfo)).starts_with(L"[Kundeninfo]\r\n"));
    const HWND tree = GetDlgItem(window, ID_treeView);
    const LRESULT groups = SendMessageW(tree, TVM_GETCOUNT, 0, 0); // closed ones: entries do not count yet
    PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(program.gone(window));
    EXPECT_TRUE(program.ready(mainWindow));
    return groups;
}

TEST(BadInput, WindowOpensAndReportIsProducedWhateverTheFilesHold) {
    std::string huge = "[A]\r\n", groups;
    for (int i = 0; i < 5000; ++i) {
        huge += "B=" + std::string(4096, 'x') + "\r\n";
        groups += "[G" + std::to_string(i) + "]\r\nA=1\r\n";
    }
    const struct {
        std::string content;
        LRESULT least;
    } rows[] = {{"", 0},
                {huge, 1},
                {groups, 1000},
                {"[A]\r\nB=1\0\0C=2\r\n[D\0]\r\n\0\0"s, 0},
                {"\xFF\xFE[\0A\0]\0\r\0\n\0B\0=\0x\0\r\0\n\0"s, 0}};
    Installation installation;
    const auto program = installation.start();
    EXPECT_EQ(ProgramDriver::text(GetDlgItem(program->window(L"frmMain"), ID_lblVersion)), L"Version: 2023");
    EXPECT_EQ(groupsShown(*program), 0) << "no files at all";
    for (const auto& [content, least] : rows) {
        SCOPED_TRACE(content.substr(0, 20));
        installation.write(machineFile, content);
        EXPECT_GE(groupsShown(*program), least);
        EXPECT_EQ(installation.read(machineFile), content) << "nothing is written";
    }
    // At the start, in each info centre and behind it, the skin asks for an entry that no file here has.
    EXPECT_EQ(program->boxes().size(), 1 + 2 * (1 + std::size(rows)));
}

} // namespace
} // namespace tarv::program
