#include "shell/SupportActions.h"

#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

struct SupportActions : testing::Test {
    FakePlatform fake;
    Runtime rt{fake.border};
};

TEST_F(SupportActions, ServicesConsoleGoesThroughTheShellOnlyForElevation) {
    openServicesConsole(rt);
    EXPECT_EQ(fake.processes.created.back().commandLine, L"mmc \\system32\\services.msc /s");
    fake.environment.set(L"SystemRoot", L"C:\\Windows");
    for (const SystemCode code : {system_code::fileNotFound, system_code::elevationRequired}) {
        fake.faults.fail("Processes.create", code);
        openServicesConsole(rt);
        EXPECT_EQ(fake.processes.created.back().commandLine, L"mmc C:\\Windows\\system32\\services.msc /s");
        EXPECT_EQ(fake.processes.created.back().applicationName, L"C:\\Windows\\System32\\mmc.exe");
        EXPECT_EQ(fake.processes.created.back().showWindow, std::uint16_t{2});
    }
    EXPECT_EQ(fake.processes.shellStarts,
              (std::vector<ShellStart>{
                  {L"C:\\Windows\\System32\\mmc.exe", L"C:\\Windows\\system32\\services.msc /s", 2}}));
    fake.machine.system.clear();
    openServicesConsole(rt);
    EXPECT_EQ(fake.processes.created.size(), 3U) << "a bare name would be searched for";
    EXPECT_EQ(fake.desktop.pumps, 0) << "nobody waits";
}

TEST_F(SupportActions, RemoteMaintenanceStartsTheClientOfTheOwnFolder) {
    for (const std::wstring folder : {L"C:\\Program Files (x86)\\TARVENIK\\", L"D:\\"}) {
        fake.program.file = folder + L"TarvService.exe";
        startRemoteMaintenance(rt);
        const std::wstring client = lowerCase(folder) + L"fastclient.exe";
        EXPECT_EQ(fake.processes.created.back().commandLine, client + L" PRG: DATA:");
        EXPECT_EQ(fake.processes.created.back().applicationName, client);
    }
    fake.faults.fail("Processes.create", system_code::elevationRequired);
    startRemoteMaintenance(rt);
    EXPECT_TRUE(fake.processes.shellStarts.empty());
    EXPECT_TRUE(fake.desktop.boxes.empty());
    EXPECT_TRUE(fake.processes.open.empty());
}

} // namespace
} // namespace tarv
