#include "app/resource.h"
#include "tests/program/Installation.h"

#include <gtest/gtest.h>

#include <functional>

namespace tarv::program {
namespace {

using namespace std::string_literals;

std::string repeated(int count, const std::function<std::string(int)>& part) {
    std::string all;
    for (int index = 0; index < count; ++index) {
        all += part(index);
    }
    return all;
}

struct Row {
    const char* name;
    std::function<void(Installation&)> prepare;
    LRESULT leastGroups;
    LRESULT mostGroups;
    std::size_t leastEntries; // of the first group
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

class BadInputTest : public testing::TestWithParam<Row> {};

TEST_P(BadInputTest, WindowOpensAndReportIsProduced) {
    const Row& row = GetParam();
    Installation installation;
    row.prepare(installation);
    const std::string machineBefore = Installation::read(installation.dataFolder() + L"\\Q_Machine.INI");
    const std::wstring filesBefore = Installation::list(installation.programFolder());

    const auto program = installation.start();
    const HWND mainWindow = program->window(L"frmMain", 60000);
    ASSERT_TRUE(mainWindow);
    program->command(mainWindow, ID_mnuInfo);
    const HWND window = program->window(L"frmInfo4Prg", 60000);
    ASSERT_TRUE(window);
    const std::wstring report = ProgramDriver::text(GetDlgItem(window, ID_txtInfo));
    EXPECT_EQ(report.rfind(L"[Kundeninfo]\r\n", 0), 0u);
    EXPECT_NE(report.find(L"[Programm]\r\n  Ordner: "), std::wstring::npos);

    const HWND tree = GetDlgItem(window, ID_treeView);
    const auto groups = SendMessageW(tree, TVM_GETCOUNT, 0, 0); // closed ones: entries do not count yet
    EXPECT_GE(groups, row.leastGroups);
    EXPECT_LE(groups, row.mostGroups);
    const auto first = program->tree(tree, 1);
    ASSERT_EQ(first.empty(), groups == 0);
    EXPECT_GE(first.empty() ? 0 : first.front().children.size(), row.leastEntries);
    program->command(window, ID_cmdEnd);
    ASSERT_TRUE(program->gone(window));
    // At the start, in the info centre and after it, the skin asks for an entry that none of these files has.
    EXPECT_TRUE(program->answered(3));
    program->command(mainWindow, ID_mnuFileExit);
    EXPECT_TRUE(program->ended());
    EXPECT_EQ(program->exitCode(), 0u);
    EXPECT_EQ(program->boxes().size(), 3u);
    for (const std::wstring& box : program->boxes()) {
        EXPECT_EQ(box.rfind(L"INSTALLATIONS-FEHLER: Eintrag 'ProgrammDirectory'=.. oder Gruppe [Directories] "
                            L"oder Datei '",
                            0),
                  0u)
            << box.c_str();
    }

    // Nothing is written but the trace.
    EXPECT_EQ(Installation::read(installation.dataFolder() + L"\\Q_Machine.INI"), machineBefore);
    std::wstring files = Installation::list(installation.programFolder());
    if (files != filesBefore) {
        EXPECT_EQ(files, L"rkzal_debug.txt " + filesBefore);
    }
}

const Row rows[] = {
    {"NoFiles", [](Installation&) {}, 0, 0, 0},
    {"EmptyFiles", [](Installation& to) { to.machine(""), to.qv(""), to.version(""); }, 0, 0, 0},
    {"TwentyMegabytes",
     [](Installation& to) {
         to.machine("[A]\r\n" + repeated(20, [](int) { return "B=" + std::string(1 << 20, 'x') + "\r\n"; }));
     },
     1, 1, 0},
    {"FiveThousandGroups",
     [](Installation& to) {
         to.machine(repeated(5000, [](int n) { return "[G" + std::to_string(n) + "]\r\nA=1\r\n"; }));
     },
     1000, 5000, 1},
    {"FiveThousandEntries",
     [](Installation& to) {
         to.machine("[A]\r\n" + repeated(5000, [](int n) { return "E" + std::to_string(n) + "=1\r\n"; }));
     },
     1, 1, 1000},
    {"SameGroupThreeHundredTimes",
     [](Installation& to) { to.machine(repeated(300, [](int) { return "[A]\r\nB=1\r\n"; })); }, 256, 256,
     1}, // then the counter of duplicates is full
    {"LinesWithoutEqualsSign", [](Installation& to) { to.machine("[A]\r\nnur Text\r\nnoch einer\r\n"); }, 1,
     1, 1},
    {"NulBytes", [](Installation& to) { to.machine("[A]\r\nB=1\0\0C=2\r\n[D\0]\r\n\0\0"s); }, 0, 3, 0},
    {"Utf16WithMark", [](Installation& to) { to.machine("\xFF\xFE[\0A\0]\0\r\0\n\0B\0=\0x\0\r\0\n\0"s); }, 0,
     2, 0},
    {"ProgramDataUnset",
     [](Installation& to) { to.machine("[A]\r\n"), to.environment[L"ProgramData"] = L""; }, 0, 0, 0},
    {"TraceNameTakenByAFolder",
     [](Installation& to) {
         to.machine("[A]\r\nB=1\r\n");
         CreateDirectoryW((to.programFolder() + L"\\rkZAL_Debug.txt").c_str(), nullptr);
     },
     1, 1, 1},
    {"ReadOnlyProgramFolder",
     [](Installation& to) {
         to.machine("[A]\r\nB=1\r\n");
         Installation::write(to.programFolder() + L"\\rkZAL_Debug.txt", "alt\r\n");
         SetFileAttributesW((to.programFolder() + L"\\rkZAL_Debug.txt").c_str(), FILE_ATTRIBUTE_READONLY);
         SetFileAttributesW(to.programFolder().c_str(), FILE_ATTRIBUTE_READONLY);
     },
     1, 1, 1},
};

INSTANTIATE_TEST_SUITE_P(Files, BadInputTest, testing::ValuesIn(rows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(TraceTest, FileLockedByAnotherProgramIsLeftAlone) {
    Installation installation;
    installation.machine("[A]\r\nB=1\r\n");
    const std::wstring trace = installation.programFolder() + L"\\rkZAL_Debug.txt";
    Installation::write(trace, "alt");
    const HANDLE lock = CreateFileW(trace.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    const auto program = installation.start();
    const HWND mainWindow = program->window(L"frmMain");
    program->command(mainWindow, ID_mnuInfo);
    const HWND window = program->window(L"frmInfo4Prg");
    EXPECT_EQ(program->tree(GetDlgItem(window, ID_treeView)).size(), 1u);
    program->command(mainWindow, ID_mnuFileExit);
    EXPECT_TRUE(program->ended());
    CloseHandle(lock);
    EXPECT_EQ(Installation::read(trace), "alt");
}

} // namespace
} // namespace tarv::program
