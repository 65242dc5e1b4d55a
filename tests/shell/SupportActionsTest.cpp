#include "shell/SupportActions.h"

#include "tests/support/Table.h"

namespace tarv {
namespace {

using SupportActions = Scripted;

TEST_F(SupportActions, ServicesConsoleIsStartedWhereItBelongsAlsoWithElevation) {
    fake.faults.fail("Processes.create", system_code::elevationRequired);
    openServicesConsole(rt);
    const ProcessRequest& request = fake.processes.created.at(0);
    EXPECT_EQ(request.commandLine, L"mmc C:\\Windows\\system32\\services.msc /s");
    EXPECT_EQ(request.applicationName, L"C:\\Windows\\System32\\mmc.exe");
    EXPECT_EQ(request.showWindow, std::uint16_t{2});
    ASSERT_EQ(fake.processes.shellStarts.size(), 1u);
    const auto& [file, arguments, showWindow] = fake.processes.shellStarts[0];
    EXPECT_EQ(joined(file, arguments, std::to_wstring(showWindow)),
              L"C:\\Windows\\System32\\mmc.exe|C:\\Windows\\system32\\services.msc /s|2");
    fake.facts.system.clear();
    openServicesConsole(rt);
    EXPECT_EQ(fake.processes.created.size(), 1U) << "a bare name would be searched for";
    EXPECT_EQ(fake.desktop.pumps, 0) << "nobody waits";
}

TEST_F(SupportActions, RemoteMaintenanceStartsTheClientOfTheOwnFolder) {
    fake.facts.program = L"D:\\TarvService.exe";
    startRemoteMaintenance(rt);
    EXPECT_EQ(fake.processes.created.at(0).commandLine, L"d:\\fastclient.exe PRG: DATA:");
    EXPECT_EQ(fake.processes.created.at(0).applicationName, L"d:\\fastclient.exe");
}

} // namespace
} // namespace tarv
