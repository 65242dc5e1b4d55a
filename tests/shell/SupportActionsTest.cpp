#include "shell/SupportActions.h"

#include "runtime/Runtime.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

struct SupportActions : testing::Test {
    FakePlatform fake;
    Runtime rt{fake.border};
};

TEST_F(SupportActions, ServicesConsoleIsTheSystemFoldersOwn) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"C:\\Windows", L"mmc C:\\Windows\\system32\\services.msc /s"},
        {L"", L"mmc \\system32\\services.msc /s"}};
    for (const auto& [systemRoot, line] : cases) {
        fake.environment.set(L"SystemRoot", systemRoot);
        openServicesConsole(rt);
        EXPECT_EQ(fake.processes.created.back().commandLine, line);
        EXPECT_EQ(fake.processes.created.back().applicationName, L"C:\\Windows\\System32\\mmc.exe");
        EXPECT_EQ(fake.processes.created.back().showWindow, std::uint16_t{2});
    }
    EXPECT_TRUE(fake.processes.open.empty());
    EXPECT_EQ(fake.desktop.pumps, 0) << "nobody waits";
    fake.machine.system.clear();
    openServicesConsole(rt);
    EXPECT_EQ(fake.processes.created.size(), std::size(cases));
}

TEST_F(SupportActions, ServicesConsoleGoesThroughTheShellOnlyForElevation) {
    fake.environment.set(L"SystemRoot", L"C:\\Windows");
    fake.faults.fail("Processes.startThroughShell", system_code::accessDenied);
    fake.faults.fail("Processes.create", system_code::fileNotFound);
    openServicesConsole(rt);
    EXPECT_TRUE(fake.processes.shellStarts.empty());
    fake.faults.fail("Processes.create", system_code::elevationRequired);
    openServicesConsole(rt);
    EXPECT_EQ(fake.processes.shellStarts,
              (std::vector<ShellStart>{
                  {L"C:\\Windows\\System32\\mmc.exe", L"C:\\Windows\\system32\\services.msc /s", 2}}));
    EXPECT_TRUE(fake.desktop.boxes.empty());
}

TEST_F(SupportActions, RemoteMaintenanceStartsTheClientOfTheOwnFolder) {
    const std::pair<const wchar_t*, std::wstring> cases[] = {
        {L"C:\\Program Files (x86)\\TARVENIK\\TarvService.exe",
         L"c:\\program files (x86)\\tarvenik\\fastclient.exe"},
        {L"D:\\TarvService.exe", L"d:\\fastclient.exe"}};
    for (const auto& [program, client] : cases) {
        fake.program.file = program;
        startRemoteMaintenance(rt);
        EXPECT_EQ(fake.processes.created.back().commandLine, client + L" PRG: DATA:");
        EXPECT_EQ(fake.processes.created.back().applicationName, client);
        EXPECT_EQ(fake.processes.created.back().showWindow, std::uint16_t{1});
    }
    fake.faults.fail("Processes.create", system_code::elevationRequired);
    startRemoteMaintenance(rt);
    EXPECT_TRUE(fake.processes.shellStarts.empty());
    EXPECT_TRUE(fake.desktop.boxes.empty());
    EXPECT_TRUE(fake.processes.open.empty());
}

} // namespace
} // namespace tarv
