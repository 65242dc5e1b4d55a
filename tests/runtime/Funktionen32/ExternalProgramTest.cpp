#include "runtime/Funktionen32/ExternalProgram.h"

#include "runtime/Runtime.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

struct ExternalProgram : testing::Test {
    FakePlatform fake;
    Runtime rt{fake.border};

    void waitForChild() {
        ProcessInformation child = *fake.processes.create({});
        WaitForProcessEnd(rt, child);
        WaitForProcessEnd(rt, child); // closing a handle twice fails the test
        EXPECT_TRUE(fake.processes.open.empty());
        EXPECT_EQ(rt.runningChildId, 0U);
    }
};

TEST_F(ExternalProgram, MarkerKeepsTheNameOfARunningProgramOnly) {
    const std::tuple<bool, std::wstring, std::wstring> cases[] = {
        {true, L"C:\\P\\Tool.exe", L"Tool.exe"},
        {true, L"C:\\P\\g2kX.exe", L"GAEB (g2kX.exe)"},
        {false, L"C:\\P\\Tool.exe", L""}};
    for (auto [running, name, reported] : cases) {
        EXPECT_EQ(MarkExternalProgram(rt, running, true, name), running);
        bool flag = !running;
        EXPECT_EQ(MarkExternalProgram(rt, flag, false, name), running);
        EXPECT_EQ(flag, running);
        EXPECT_EQ(name, reported);
    }
}

TEST_F(ExternalProgram, ChildThatNeverBecomesIdleKeepsTheMessagesFlowing) {
    fake.processes.idleWaits.assign(1000, wait_result::timeout);
    fake.processes.waits.assign(40, wait_result::timeout);
    waitForChild();
    EXPECT_GE(fake.desktop.pumps, 40);
    EXPECT_EQ(fake.processes.idleWaits.size(), 1000U - 41) << "ends with the child, not with idleness";
}

TEST_F(ExternalProgram, DeadHandleEndsTheWaitAtOnce) {
    fake.faults.fail("Processes.waitForInputIdle", 6);
    fake.faults.fail("Processes.waitForObject", 6);
    waitForChild();
    EXPECT_TRUE(fake.desktop.sleeps.empty());
}

TEST_F(ExternalProgram, QuittingEndsBothWaits) {
    for (const std::size_t idleWaits : {0U, 1000U}) {
        fake.processes.idleWaits.assign(idleWaits, wait_result::timeout);
        fake.processes.waits.assign(1000, wait_result::timeout);
        fake.desktop.quit = false;
        fake.desktop.pumps = 0;
        fake.desktop.onPump = [&] { fake.desktop.quit = fake.desktop.pumps > 5; };
        waitForChild();
        EXPECT_LT(fake.desktop.pumps, 20);
    }
}

} // namespace
} // namespace tarv
