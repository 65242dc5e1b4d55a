#include "shell/SupportActions.h"

#include "runtime/Funktionen32/Funktionen32.h"
#include "tests/support/World.h"

namespace tarv {
namespace {

using SupportActions = Scripted;

TEST_F(SupportActions, ServicesConsoleGoesThroughTheShellOnlyForElevation) {
    fake.facts.setVariable(L"SystemRoot", L"C:\\Windows");
    for (const SystemCode code : {SystemCode{0}, system_code::fileNotFound, system_code::elevationRequired}) {
        if (code != 0)
            fake.faults.fail("Processes.create", code);
        openServicesConsole(rt);
        const ProcessRequest& request = fake.processes.created.back();
        EXPECT_EQ(request.commandLine, L"mmc C:\\Windows\\system32\\services.msc /s");
        EXPECT_EQ(request.applicationName, L"C:\\Windows\\System32\\mmc.exe");
        EXPECT_EQ(request.showWindow, std::uint16_t{2});
    }
    const FakeProcesses::ShellStart elevated{L"C:\\Windows\\System32\\mmc.exe",
                                             L"C:\\Windows\\system32\\services.msc /s", 2};
    EXPECT_EQ(fake.processes.shellStarts, std::vector{elevated});
    fake.facts.system.clear();
    openServicesConsole(rt);
    EXPECT_EQ(fake.processes.created.size(), 3U) << "a bare name would be searched for";
    EXPECT_EQ(fake.desktop.pumps, 0) << "nobody waits";
}

TEST_F(SupportActions, RemoteMaintenanceStartsTheClientOfTheOwnFolder) {
    for (const std::wstring folder : {L"C:\\Program Files (x86)\\TARVENIK\\", L"D:\\"}) {
        fake.facts.program = folder + L"TarvService.exe";
        startRemoteMaintenance(rt);
        const std::wstring client = lowerCase(folder) + L"fastclient.exe";
        EXPECT_EQ(fake.processes.created.back().commandLine, client + L" PRG: DATA:");
        EXPECT_EQ(fake.processes.created.back().applicationName, client);
    }
}

} // namespace
} // namespace tarv
