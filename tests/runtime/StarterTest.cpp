#include "platform/ErrorDisplay.h"
#include "runtime/Funktionen32/Funktionen32.h"
#include "tests/support/Table.h"

namespace tarv {
namespace {

struct StarterCase : World {
    StarterCase() {
        fake.profiles.fill(L"C:\\ProgramData\\TARVENIK\\Q_Machine.ini", L"[Directories]\r\nPROGRAMM=P:\\");
        fake.disk.addFile(L"C:\\exakt", "MZ");
        fake.disk.addFolder(L"C:\\Ordner");
    }
};

TEST(Tables, Starter) {
    checkTable<StarterCase>(
        "Starter.txt",
        {{L"programFile", [](auto& w, const Row& row) { return programFile(w.rt, row[0]); }},
         {L"GetEXEmitPfad", [](auto& w, const Row& row) { return GetEXEmitPfad(w.rt, row[0]); }},
         {L"GetDruckEXE",
          [](auto& w, const Row& row) {
              w.fake.profiles.fill(L"Pexoran.INI", L"[DRUCKOPT]\r\n" + row[0]);
              w.fake.desktop.answers = {row.number(1)};
              return GetDruckEXE(w.rt);
          }},
         {L"MarkExternalProgram",
          [](auto& w, const Row& row) {
              bool running = row.on(0);
              std::wstring name = row[1];
              EXPECT_EQ(MarkExternalProgram(w.rt, running, true, name), running);
              running = !running;
              EXPECT_EQ(MarkExternalProgram(w.rt, running, false, name), row.on(0));
              return std::to_wstring(running) + L" " + name;
          }},
         {L"StartExe with elevation",
          [](auto& w, const Row& row) {
              w.fake.faults.fail("Processes.create", system_code::elevationRequired);
              std::wstring arguments = L"x", part;
              StartExe(w.rt, row[0], 0, arguments, {}, false, part, false, {}, false);
              const auto& [file, passed, showWindow] = w.fake.processes.shellStarts.at(0);
              return joined(file, passed, std::to_wstring(showWindow));
          }},
         {L"StartExe", [](auto& w, const Row& row) {
              std::wstring arguments = row[1], part = L"-";
              EXPECT_EQ(StartExe(w.rt, row[0], 0, arguments, row[2], false, part, row.on(3), {}, false), -1);
              EXPECT_TRUE(w.fake.processes.open.empty());
              EXPECT_EQ(w.fake.desktop.pumps, 30);
              const ProcessRequest& request = w.fake.processes.created.at(0);
              EXPECT_TRUE(request.showWindow == 1 && !request.inheritHandles);
              return joined(request.commandLine, request.applicationName, arguments, part);
          }}});
}

constexpr WindowHandle caller{0x11};
constexpr WindowHandle form{0x22};

struct Starter : Scripted {
    std::wstring arguments, part;
    bool wait = false, direct = false;
    WindowHandle window = WindowHandle::none;

    std::intptr_t start(std::wstring_view program) {
        fake.processes.created.clear();
        return StartExe(rt, program, 0, arguments, {}, wait, part, false, window, direct);
    }
};

TEST_F(Starter, MissingEntriesAreToldOrSetDown) {
    EXPECT_EQ(GetEXEmitPfad(rt, L"a.exe"), L"a.exe");
    EXPECT_EQ(fake.desktop.boxes.size(), 1u);
    EXPECT_EQ(GetDruckEXE(rt), L"DotNet\\Kelvar.Net.exe");
    EXPECT_EQ(fake.profiles.text(L"Pexoran.INI"), L"[DRUCKOPT]\r\nPROGRAMM=NET\r\n");
}

TEST_F(Starter, DirectStartHandsTheProcessToTheCaller) {
    direct = true;
    const auto process = static_cast<KernelHandle>(start(L" C:\\P\\Tool.exe"));
    EXPECT_EQ(fake.processes.open, std::set<KernelHandle>{process});
    const ProcessRequest& request = fake.processes.created.at(0);
    EXPECT_EQ(request.commandLine, L"c:\\p\\tool.exe ") << "a line without arguments ends in a blank";
    EXPECT_EQ(request.applicationName, L"");
    EXPECT_TRUE(request.inheritHandles && request.creationFlags == 32 && !request.showWindow);
    EXPECT_EQ(fake.desktop.pumps, 0);
}

TEST_F(Starter, WaitingMarksPumpsClosesAndGivesTheFocusBack) {
    wait = true, window = form;
    fake.desktop.active = caller;
    fake.desktop.windows = {caller, form};
    fake.processes.waits = {wait_result::timeout, wait_result::timeout};
    std::set<std::uint32_t> ids;
    fake.desktop.onPump = [&] {
        ids.insert(rt.runningChildId);
        EXPECT_EQ(rt.externalProgram.running ? rt.externalProgram.name : L"", L"c:\\p\\tool.exe");
    };
    EXPECT_EQ(start(L"C:\\P\\Tool.exe"), -1);
    EXPECT_EQ(ids, (std::set<std::uint32_t>{0, 1264}));
    EXPECT_EQ(fake.desktop.redrawn, std::vector{form});
    EXPECT_TRUE(fake.processes.open.empty());
    EXPECT_FALSE(rt.externalProgram.running);
    EXPECT_EQ(rt.runningChildId, 0U);

    fake.desktop.form = form, window = WindowHandle::none, direct = true;
    EXPECT_EQ(start(L"C:\\P\\Tool.exe"), 0);
    EXPECT_EQ(fake.desktop.focused, (std::vector{caller, form})) << "the active form comes first";
    window = form;
    fake.desktop.onPump = [&] { fake.desktop.windows.clear(); };
    start(L"C:\\P\\Tool.exe");
    EXPECT_EQ(fake.desktop.redrawn.size() + fake.desktop.focused.size(), 3u) << "nothing for closed windows";
}

TEST_F(Starter, WithoutAProgramNothingStarts) {
    arguments = L"notepad.exe";
    for (const int mode : {0, 1, 2, 3}) {
        wait = mode % 2 == 1, direct = mode / 2 == 1;
        for (const wchar_t* none : {L"", L"  "})
            EXPECT_EQ(start(none), direct ? 0 : -1) << mode;
    }
    EXPECT_EQ(fake.faults.calls("Processes.create"), 0);
}

TEST_F(Starter, ElevationIsAskedForOnceThroughTheShell) {
    EXPECT_EQ(startProgram(rt, L"", L"a.exe", L"", 1), 0u);
    fake.faults.fail("Processes.create", system_code::elevationRequired);
    fake.faults.fail("Processes.startThroughShell", system_code::elevationRequired);
    EXPECT_EQ(start(L"a.exe"), -1);
    EXPECT_EQ(fake.processes.shellStarts.size(), 1u);
    EXPECT_EQ(fake.faults.calls("Automation.create"), 0) << "a refused start is not reported";
}

TEST_F(Starter, DevelopmentEnvironmentReportsARefusedShellStart) {
    Runtime development{fake.border, true};
    fake.automation.provided.emplace(errorDisplayProgId, fake.automation.object());
    for (const auto& [code, number] :
         {std::pair{system_code::pathNotFound, 53}, {system_code::accessDenied, 5}}) {
        fake.faults.fail("Processes.create", code);
        StartExe(development, L"C:\\X.exe", 0, arguments, {}, false, part, false, window, false);
        const auto [method, given] = fake.automation.log.back();
        EXPECT_EQ(method, L"EMW");
        EXPECT_EQ(given[1], Value(std::wstring(L"Fehler beim Start Externes Programm\nc:\\x.exe")));
        EXPECT_EQ(given[2], Value(std::wstring(L"Start Exe")));
        EXPECT_EQ(*std::get<ObjectByRef>(given[0]).object->get(L"Number"), Value(std::int32_t{number}));
    }
}

TEST_F(Starter, WaitEndsWithTheChildOrWhenTheProgramIsToQuit) {
    const struct {
        std::size_t idleWaits, waits;
        int quitAfter, leastPumps, mostPumps;
    } cases[] = {{1000, 40, 10'000, 40, 60}, {1000, 1000, 5, 6, 20}, {0, 1000, 5, 6, 20}};
    for (const auto& c : cases) {
        fake.processes.idleWaits.assign(c.idleWaits, wait_result::timeout);
        fake.processes.waits.assign(c.waits, wait_result::timeout);
        fake.desktop.pumps = 0, fake.desktop.quit = false;
        fake.desktop.onPump = [&] { fake.desktop.quit = fake.desktop.pumps > c.quitAfter; };
        ProcessInformation child = *fake.processes.create({});
        WaitForProcessEnd(rt, child);
        WaitForProcessEnd(rt, child); // closing a handle twice fails the test
        EXPECT_TRUE(fake.processes.open.empty() && rt.runningChildId == 0);
        EXPECT_GE(fake.desktop.pumps, c.leastPumps);
        EXPECT_LE(fake.desktop.pumps, c.mostPumps);
    }
}

} // namespace
} // namespace tarv
