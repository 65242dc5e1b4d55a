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
    std::wstring arguments, data;
    std::wstring part = L"unberührt";
    bool wait = false, compose = false, direct = false;
    WindowHandle window = WindowHandle::none;

    Starter() {
        fake.profiles.fill(L"C:\\ProgramData\\TARVENIK\\Q_Machine.ini",
                           L"[Directories]\r\nProgramm=P:\\Suite\r\n");
        fake.desktop.active = caller;
    }
    std::intptr_t start(std::wstring_view program) {
        return StartExe(rt, program, 0, arguments, data, wait, part, compose, window, direct);
    }
    const ProcessRequest& request() { return fake.processes.created.at(0); }
};

TEST_F(Starter, CommandLineIsMadeOfProgramArgumentsAndData) {
    const struct {
        const wchar_t *program, *arguments, *data;
        bool compose;
        const wchar_t *shellLine, *application, *argumentsAfter, *part;
    } cases[] = {
        {L"C:\\P\\Tool.EXE /X", L"", L"", false, L"c:\\p\\tool.exe /X", L"c:\\p\\tool.exe", L"/X",
         L"C:\\P\\Tool.EXE"},
        {L"C:\\P\\T.exe /x", L"-a ", L" D 1 ", false, L"c:\\p\\t.exe -a  /x D 1", L"c:\\p\\t.exe", L"-a  /x",
         L"C:\\P\\T.exe"},
        {L"C:\\Mein Ä\\T.exe", L" -a ", L"   ", false, L"c:\\mein ä\\t.exe -a", L"c:\\mein ä\\t.exe", L" -a ",
         nullptr},
        {L"T.EXE", L"abc ", L" Daten", true, L"t.exe PRG:ABC DATA:Daten", L"", L"abc ", nullptr},
        {L"D:\\FastClient.exe", L"", L"", true, L"d:\\fastclient.exe PRG: DATA:", L"d:\\fastclient.exe", L"",
         nullptr},
        {L"a.exe.d\\b.exe x", L"", L"", true, L"a.exe PRG:.D\\B.EXE X DATA:", L"", L".d\\b.exe x", L"a.exe"},
        {L" \\\\srv\\s\\tool ", L"", L"", false, L"\\\\srv\\s\\tool", L"\\\\srv\\s\\tool.exe", L"", nullptr},
        {L"d:tool.exe", L"1", L"", false, L"d:tool.exe 1", L"", L"1", nullptr},
    };
    for (const auto& c : cases) {
        fake.processes.created.clear();
        arguments = c.arguments, data = c.data, compose = c.compose, part = L"unberührt";
        EXPECT_EQ(start(c.program), -1) << c.program;
        EXPECT_EQ(request().commandLine, c.shellLine) << c.program;
        EXPECT_EQ(request().applicationName, c.application) << c.program;
        EXPECT_EQ(request().showWindow, std::uint16_t{1});
        EXPECT_FALSE(request().inheritHandles);
        EXPECT_EQ(arguments, c.argumentsAfter) << c.program;
        EXPECT_EQ(part, c.part ? c.part : L"unberührt") << c.program;
        EXPECT_TRUE(fake.processes.open.empty());
    }
    EXPECT_EQ(fake.desktop.sleeps, std::vector<std::uint32_t>(30 * std::size(cases), 1));
    EXPECT_EQ(fake.desktop.pumps, 30 * static_cast<int>(std::size(cases)));
}

TEST_F(Starter, FullPathMeansThatVeryFile) {
    fake.disk.addFile(L"C:\\P\\exakt", "MZ");
    fake.disk.addFolder(L"C:\\P\\Ordner");
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"C:\\P\\exakt", L"C:\\P\\exakt"},
        {L"C:\\P\\Ordner", L"C:\\P\\Ordner.exe"},
        {L"C:\\P\\a.com", L"C:\\P\\a.com"},
        {L"c:/p/a", L"c:/p/a.exe"},
        {L"C:\\", L"C:\\"},
        {L"C:", L""},
        {L"\\P\\a.exe", L""},
        {L"P\\a.exe", L""},
        {L"\"C:\\P\\a.exe\"", L""},
        {L"", L""},
    };
    for (const auto& [program, file] : cases)
        EXPECT_EQ(programFile(rt, program), file) << program;
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
    std::vector<bool> marked;
    std::set<std::uint32_t> ids;
    fake.processes.onCreate = [&](const ProcessRequest&) { marked.push_back(rt.externalProgram.running); };
    fake.desktop.onSleep = [&](std::uint32_t) {
        ids.insert(rt.runningChildId);
        EXPECT_EQ(rt.externalProgram.name, L"c:\\p\\tool.exe");
    };
    EXPECT_EQ(start(L"C:\\P\\Tool.exe"), -1);
    EXPECT_EQ(marked, std::vector{true});
    EXPECT_EQ(ids, (std::set<std::uint32_t>{0, 1264}));
    EXPECT_EQ(fake.desktop.redrawn, std::vector{form});
    EXPECT_EQ(fake.desktop.sleeps.size(), 50U + 2 * 4);
    EXPECT_EQ(fake.desktop.pumps, 50 + 1 + 1 + (1 + 2 + 6 + 3) + (1 + 6 + 3));
    EXPECT_TRUE(fake.processes.open.empty());
    EXPECT_FALSE(rt.externalProgram.running);
    EXPECT_EQ(rt.runningChildId, 0U);
    EXPECT_EQ(fake.desktop.focused, std::vector{caller});

    fake.desktop.form = form, window = WindowHandle::none, direct = true;
    EXPECT_EQ(start(L"C:\\P\\Tool.exe"), 0);
    fake.desktop.onPump = [&] {
        fake.desktop.form = fake.desktop.active = WindowHandle::none, fake.desktop.windows = {};
    };
    EXPECT_EQ(start(L"C:\\P\\Tool.exe"), 0);
    EXPECT_EQ(fake.desktop.focused, (std::vector{caller, form})) << "a closed window gets no focus";
}

TEST_F(Starter, RefusedStartIsSilentAndNotWaitedFor) {
    const struct {
        const wchar_t* program;
        bool wait, direct;
        std::intptr_t result;
        int creations;
    } cases[] = {{L"x.exe", false, false, -1, 1}, {L"x.exe", false, true, 0, 1},
                 {L"x.exe", true, false, -1, 1},  {L"x.exe", true, true, 0, 1},
                 {L"", false, false, -1, 0},      {L"  ", true, false, -1, 0},
                 {L"", false, true, 0, 0}};
    arguments = L"notepad.exe";
    for (const auto& c : cases) {
        for (const SystemCode code : {system_code::accessDenied, system_code::elevationRequired}) {
            fake.faults.fail("Processes.create", code);
            fake.processes.created.clear();
            wait = c.wait, direct = c.direct;
            EXPECT_EQ(start(c.program), c.result) << c.program << c.wait << c.direct;
            EXPECT_EQ(fake.processes.created.size(), static_cast<std::size_t>(c.creations)) << c.program;
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
    const std::pair<SystemCode, std::int32_t> cases[] = {{system_code::fileNotFound, 53},
                                                         {system_code::accessDenied, 5}};
    for (const auto& [code, number] : cases) {
        fake.faults.fail("Processes.create", code);
        display->runs(L"EMW", [&, expected = number](std::span<const Value> given) {
            EXPECT_EQ(std::get<std::int32_t>(*std::get<ObjectByRef>(given[0]).object->get(L"Number")),
                      expected);
            EXPECT_EQ(given[1], Value(std::wstring(L"Fehler beim Start Externes Programm\nc:\\p\\x.exe")));
            EXPECT_EQ(given[2], Value(std::wstring(L"Start Exe")));
            return Value(std::int32_t{4});
        });
        EXPECT_EQ(
            StartExe(development, L"C:\\P\\X.exe", 0, arguments, data, false, part, false, window, false),
            -1);
    }
    EXPECT_EQ(fake.automation.uses().size(), 2U * 3) << "created, called, number read";
}

TEST_F(Starter, PrintProgramIsReplacedWhateverFolderIsGiven) {
    direct = true;
    for (const wchar_t* program : {L"kelvar.exe", L"X:\\Alt\\KELVAR.EXE", L"X:\\kelvar.exe /druck"}) {
        fake.processes.created.clear();
        arguments.clear();
        start(program);
        EXPECT_TRUE(request().commandLine.starts_with(L"P:\\Suite\\DotNet\\Kelvar.Net.exe ")) << program;
    }
}

} // namespace
} // namespace tarv
