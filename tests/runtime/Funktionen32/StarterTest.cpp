#include "runtime/Funktionen32/Starter.h"

#include "runtime/Funktionen32/ShellStart.h"
#include "runtime/Runtime.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

constexpr WindowHandle caller{0x11};
constexpr WindowHandle form{0x22};

struct Starter : testing::Test {
    FakePlatform fake;
    Runtime rt{fake.border};
    std::wstring arguments, data, part = L"-";
    bool wait = false, compose = false, direct = false;
    WindowHandle window = WindowHandle::none;

    Starter() { fake.desktop.active = caller; }
    std::intptr_t start(std::wstring_view program) {
        fake.processes.created.clear();
        return StartExe(rt, program, 0, arguments, data, wait, part, compose, window, direct);
    }
    const ProcessRequest& request() { return fake.processes.created.at(0); }
};

TEST_F(Starter, CommandLineIsMadeOfProgramArgumentsAndData) {
    const struct {
        const wchar_t *program, *arguments, *data;
        bool compose;
        const wchar_t *line, *file, *argumentsAfter, *part;
    } cases[] = {
        {L"C:\\T.EXE /X", L"", L"", false, L"c:\\t.exe /X", L"c:\\t.exe", L"/X", L"C:\\T.EXE"},
        {L"C:\\T.exe /x", L"-a ", L" D 1 ", false, L"c:\\t.exe -a  /x D 1", L"c:\\t.exe", L"-a  /x",
         L"C:\\T.exe"},
        {L"C:\\Ä B.exe", L" -a ", L"   ", false, L"c:\\ä b.exe -a", L"c:\\ä b.exe", L" -a ", L"-"},
        {L"T.EXE", L"abc ", L" Daten", true, L"t.exe PRG:ABC DATA:Daten", L"", L"abc ", L"-"},
        {L"D:\\T.exe", L"", L"", true, L"d:\\t.exe PRG: DATA:", L"d:\\t.exe", L"", L"-"},
        {L"a.exe.d\\b.exe x", L"", L"", true, L"a.exe PRG:.D\\B.EXE X DATA:", L"", L".d\\b.exe x", L"a.exe"},
        {L" \\\\s\\f\\tool ", L"", L"", false, L"\\\\s\\f\\tool", L"\\\\s\\f\\tool.exe", L"", L"-"},
    };
    for (const auto& c : cases) {
        arguments = c.arguments, data = c.data, compose = c.compose, part = L"-";
        EXPECT_EQ(start(c.program), -1) << c.program;
        EXPECT_EQ(request().commandLine, c.line) << c.program;
        EXPECT_EQ(request().applicationName, c.file) << c.program;
        EXPECT_EQ(arguments, c.argumentsAfter) << c.program;
        EXPECT_EQ(part, c.part) << c.program;
        EXPECT_TRUE(fake.processes.open.empty());
    }
    EXPECT_EQ(request().showWindow, std::uint16_t{1});
    EXPECT_FALSE(request().inheritHandles);
    EXPECT_EQ(fake.desktop.sleeps, std::vector<std::uint32_t>(30 * std::size(cases), 1));
    EXPECT_EQ(fake.desktop.pumps, 30 * static_cast<int>(std::size(cases)));
}

TEST_F(Starter, FullPathMeansThatVeryFile) {
    fake.disk.addFile(L"C:\\exakt", "MZ");
    fake.disk.addFolder(L"C:\\Ordner");
    for (const wchar_t* path : {L"C:\\exakt", L"C:\\a.com", L"C:\\"})
        EXPECT_EQ(programFile(rt, path), path);
    for (const std::wstring path : {L"C:\\Ordner", L"c:/p.x/a", L"\\\\s\\f\\a"})
        EXPECT_EQ(programFile(rt, path), path + L".exe");
    for (const wchar_t* path : {L"C:", L"C:a.exe", L"\\a.exe", L"P\\a.exe", L"\"C:\\a.exe\"", L"a.exe", L""})
        EXPECT_EQ(programFile(rt, path), L"") << path;
}

TEST_F(Starter, DirectStartHandsTheProcessToTheCaller) {
    direct = true;
    const auto process = static_cast<KernelHandle>(start(L" C:\\P\\Tool.exe"));
    EXPECT_EQ(fake.processes.open, std::set<KernelHandle>{process});
    EXPECT_EQ(request().commandLine, L"c:\\p\\tool.exe ") << "a line without arguments ends in a blank";
    EXPECT_EQ(request().applicationName, L"");
    EXPECT_TRUE(request().inheritHandles);
    EXPECT_EQ(request().creationFlags, 32U);
    EXPECT_FALSE(request().showWindow);
    EXPECT_EQ(fake.desktop.pumps, 0);
}

TEST_F(Starter, WaitingMarksPumpsClosesAndGivesTheFocusBack) {
    wait = true, window = form;
    fake.desktop.windows = {form};
    fake.processes.waits = {wait_result::timeout, wait_result::timeout};
    std::set<std::uint32_t> ids;
    fake.processes.onCreate = [&](const ProcessRequest&) { EXPECT_TRUE(rt.externalProgram.running); };
    fake.desktop.onSleep = [&](std::uint32_t) {
        ids.insert(rt.runningChildId);
        EXPECT_EQ(rt.externalProgram.name, L"c:\\p\\tool.exe");
    };
    EXPECT_EQ(start(L"C:\\P\\Tool.exe"), -1);
    EXPECT_EQ(ids, (std::set<std::uint32_t>{0, 1264}));
    EXPECT_EQ(fake.desktop.redrawn, std::vector{form});
    EXPECT_EQ(fake.desktop.sleeps.size(), 50U + 2 * 4);
    EXPECT_EQ(fake.desktop.pumps, 50 + 1 + 1 + (1 + 2 + 6 + 3) + (1 + 6 + 3));
    EXPECT_TRUE(fake.processes.open.empty());
    EXPECT_FALSE(rt.externalProgram.running);
    EXPECT_EQ(rt.runningChildId, 0U);

    fake.desktop.form = form, window = WindowHandle::none, direct = true;
    EXPECT_EQ(start(L"C:\\P\\Tool.exe"), 0);
    fake.desktop.onPump = [&] {
        fake.desktop.form = fake.desktop.active = window, fake.desktop.windows = {};
    };
    start(L"C:\\P\\Tool.exe");
    EXPECT_EQ(fake.desktop.focused, (std::vector{caller, form})) << "a closed window gets no focus";
}

TEST_F(Starter, RefusedStartIsSilentAndNotWaitedFor) {
    arguments = L"notepad.exe";
    for (const wchar_t* program : {L"x.exe", L"", L"  "}) {
        for (const int mode : {0, 1, 2, 3}) {
            fake.faults.fail("Processes.create",
                             mode < 2 ? system_code::accessDenied : system_code::elevationRequired);
            wait = mode % 2 == 1, direct = mode / 2 == 1;
            EXPECT_EQ(start(program), direct ? 0 : -1) << program << mode;
            EXPECT_EQ(fake.processes.created.size(), *program == L'x' ? 1U : 0U) << program << mode;
            EXPECT_FALSE(rt.externalProgram.running);
        }
    }
    EXPECT_EQ(fake.faults.calls("Processes.waitForObject"), 0);
    EXPECT_TRUE(fake.processes.shellStarts.empty());
    EXPECT_TRUE(fake.automation.log.empty());
}

TEST_F(Starter, DevelopmentEnvironmentReportsARefusedShellStart) {
    Runtime development{fake.border, true};
    auto display = fake.automation.object(L"display");
    fake.automation.provide(L"rk_Runtime.rk_Fehler", display);
    fake.faults.fail("Processes.create", system_code::fileNotFound);
    StartExe(development, L"C:\\X.exe", 0, arguments, data, false, part, false, window, false);
    ASSERT_EQ(fake.automation.uses().back(), L"call display.EMW");
    const std::vector<Value>& given = fake.automation.log.back().arguments;
    EXPECT_EQ(given[1], Value(std::wstring(L"Fehler beim Start Externes Programm\nc:\\x.exe")));
    EXPECT_EQ(given[2], Value(std::wstring(L"Start Exe")));
    EXPECT_EQ(*std::get<ObjectByRef>(given[0]).object->get(L"Number"), Value(std::int32_t{53}));
}

TEST_F(Starter, PrintProgramIsReplacedWhateverFolderIsGiven) {
    direct = true;
    fake.profiles.fill(L"C:\\ProgramData\\TARVENIK\\Q_Machine.ini", L"[Directories]\r\nProgramm=P:\\\r\n");
    for (const wchar_t* program : {L"kelvar.exe", L"X:\\Alt\\KELVAR.EXE", L"X:\\kelvar.exe /druck"}) {
        start(program);
        EXPECT_TRUE(request().commandLine.starts_with(L"P:\\DotNet\\Kelvar.Net.exe ")) << program;
    }
}

} // namespace
} // namespace tarv
