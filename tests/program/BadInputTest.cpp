#include "app/resource.h"
#include "tests/program/Installation.h"

#include <gtest/gtest.h>

#include <functional>

namespace tarv::program {
namespace {

using namespace std::string_literals;

std::string repeated(int count, const std::function<std::string(int)>& part) {
    std::string all;
    for (int index = 0; index < count; ++index)
        all += part(index);
    return all;
}

class BadInput : public testing::Test {
protected:
    void start() {
        program = installation.start();
        mainWindow = program->window(L"frmMain", 60000);
        ASSERT_TRUE(mainWindow);
    }
    /// Opens the info centre and closes it; tells how many groups and, of the first one, entries it has
    /// shown.
    std::pair<LRESULT, std::size_t> shown() {
        program->command(mainWindow, ID_mnuInfo);
        const HWND window = program->window(L"frmInfo4Prg", 60000);
        const std::wstring report = ProgramDriver::text(GetDlgItem(window, ID_txtInfo));
        EXPECT_TRUE(report.starts_with(L"[Kundeninfo]\r\n") &&
                    report.find(L"[Programm]\r\n  Ordner: ") != report.npos);
        const HWND tree = GetDlgItem(window, ID_treeView);
        const LRESULT groups =
            SendMessageW(tree, TVM_GETCOUNT, 0, 0); // closed ones: entries do not count yet
        const std::vector<TreeNode> first = program->tree(tree, 1);
        EXPECT_EQ(first.empty(), groups == 0);
        PostMessageW(window, WM_CLOSE, 0, 0);
        EXPECT_TRUE(program->gone(window));
        EXPECT_TRUE(waitUntil([&] { return program->window(L"frmMain", 0) && IsWindowEnabled(mainWindow); }));
        return {groups, first.empty() ? 0 : first[0].children.size()};
    }
    void end(std::size_t boxes) {
        program->command(mainWindow, ID_mnuFileExit);
        EXPECT_TRUE(program->ended());
        EXPECT_EQ(program->exitCode(), 0u);
        // At the start, in each info centre and behind it, the skin asks for an entry that no file here has.
        EXPECT_EQ(program->boxes().size(), boxes);
        for (const std::wstring& box : program->boxes())
            EXPECT_TRUE(box.starts_with(L"INSTALLATIONS-FEHLER: Eintrag 'ProgrammDirectory'=.. oder Gruppe "
                                        L"[Directories] oder Datei '"))
                << box;
    }

    Installation installation;
    std::unique_ptr<ProgramDriver> program;
    HWND mainWindow = nullptr;
};

TEST_F(BadInput, WindowOpensAndReportIsProducedWhateverTheFilesHold) {
    const struct {
        const char* name;
        std::string content;
        LRESULT leastGroups, mostGroups;
        std::size_t leastEntries; // of the first group
    } rows[] = {
        {"empty", "", 0, 0, 0},
        {"20 MB", "[A]\r\n" + repeated(20, [](int) { return "B=" + std::string(1 << 20, 'x') + "\r\n"; }), 1,
         1, 0},
        {"5000 groups", repeated(5000, [](int n) { return "[G" + std::to_string(n) + "]\r\nA=1\r\n"; }), 1000,
         5000, 1},
        {"5000 entries", "[A]\r\n" + repeated(5000, [](int n) { return "E" + std::to_string(n) + "=1\r\n"; }),
         1, 1, 1000},
        // Then the counter of duplicates is full.
        {"one group 300 times", repeated(300, [](int) { return "[A]\r\nB=1\r\n"s; }), 256, 256, 1},
        {"no equals sign", "[A]\r\nnur Text\r\nnoch einer\r\n", 1, 1, 1},
        {"NUL bytes", "[A]\r\nB=1\0\0C=2\r\n[D\0]\r\n\0\0"s, 0, 3, 0},
        {"UTF-16", "\xFF\xFE[\0A\0]\0\r\0\n\0B\0=\0x\0\r\0\n\0"s, 0, 2, 0},
    };
    start();
    EXPECT_EQ(ProgramDriver::text(GetDlgItem(mainWindow, ID_lblVersion)), L"Version: 2023")
        << "no version file";
    EXPECT_EQ(shown().first, 0) << "no files at all";
    installation.write(qvFile, "");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        installation.write(machineFile, row.content);
        const auto [groups, entries] = shown();
        EXPECT_TRUE(groups >= row.leastGroups && groups <= row.mostGroups) << groups;
        EXPECT_GE(entries, row.leastEntries);
        EXPECT_EQ(installation.read(machineFile), row.content) << "nothing is written";
    }
    end(1 + 2 * (1 + std::size(rows)));
}

TEST_F(BadInput, TraceThatCannotBeWrittenAndMissingDataFolderDisturbNobody) {
    installation.write(machineFile, "[A]\r\nB=1\r\n");
    installation.write(traceFile, "alt");
    const std::wstring trace = installation.path(traceFile);
    start();
    const HANDLE lock = CreateFileW(trace.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(shown(), std::pair(LRESULT{1}, std::size_t{1})) << "locked by another program";
    CloseHandle(lock);
    EXPECT_EQ(installation.read(traceFile), "alt");
    SetFileAttributesW(trace.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(shown().first, 1) << "read-only";
    SetFileAttributesW(trace.c_str(), FILE_ATTRIBUTE_NORMAL);
    DeleteFileW(trace.c_str());
    CreateDirectoryW(trace.c_str(), nullptr);
    EXPECT_EQ(shown().first, 1) << "name taken by a folder";
    RemoveDirectoryW(trace.c_str());
    EXPECT_EQ(shown().first, 1);
    EXPECT_NE(installation.read(traceFile).find("End INI-Read"), std::string::npos);
    end(9);

    installation.environment[L"ProgramData"] = L"";
    start();
    EXPECT_EQ(shown().first, 0);
    end(3);
}

} // namespace
} // namespace tarv::program
