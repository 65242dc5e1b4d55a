#include "runtime/Funktionen32/ExternalProgram.h"

#include "runtime/Runtime.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

struct ExternalProgram : testing::Test {
    FakePlatform fake;
    Runtime rt{fake.border};

    ProcessInformation child() { return *fake.processes.create({}); }
};

TEST_F(ExternalProgram, MarkerKeepsTheNameOfARunningProgramOnly) {
    const struct {
        bool running;
        std::wstring name, reported;
    } cases[] = {{true, L"C:\\P\\Tool.exe", L"Tool.exe"},
                 {true, L"C:\\P\\g2kX.exe", L"GAEB (g2kX.exe)"},
                 {true, L"C:\\G2K\\x.exe", L"x.exe"},
                 {false, L"C:\\P\\Tool.exe", L""}};
    for (auto [running, name, reported] : cases) {
        EXPECT_EQ(MarkExternalProgram(rt, running, true, name), running);
        bool flag = !running;
        std::wstring answer = L"alt";
        EXPECT_EQ(MarkExternalProgram(rt, flag, false, answer), running);
        EXPECT_EQ(flag, running);
        EXPECT_EQ(answer, reported);
    }
}

TEST_F(ExternalProgram, ChildThatNeverBecomesIdleKeepsTheMessagesFlowing) {
    fake.processes.idleWaits.assign(1000, wait_result::timeout);
    fake.processes.waits.assign(40, wait_result::timeout);
    ProcessInformation information = child();
    WaitForProcessEnd(rt, information);
    EXPECT_GE(fake.desktop.pumps, 40);
    EXPECT_EQ(fake.processes.idleWaits.size(), 1000U - 41) << "ends with the child, not with idleness";
    EXPECT_TRUE(fake.processes.open.empty());
}

TEST_F(ExternalProgram, DeadHandleEndsTheWaitAtOnce) {
    fake.faults.fail("Processes.waitForInputIdle", 6);
    fake.faults.fail("Processes.waitForObject", 6);
    ProcessInformation information = child();
    WaitForProcessEnd(rt, information);
    EXPECT_EQ(information.process, KernelHandle::none);
    WaitForProcessEnd(rt, information); // nothing left to close: closing twice would fail the test
    EXPECT_TRUE(fake.desktop.sleeps.empty());
    EXPECT_TRUE(fake.processes.open.empty());
}

TEST_F(ExternalProgram, QuittingEndsBothWaits) {
    for (const bool idle : {false, true}) {
        fake.processes.idleWaits.assign(idle ? 0 : 1000, wait_result::timeout);
        fake.processes.waits.assign(1000, wait_result::timeout);
        fake.desktop.quit = false;
        fake.desktop.pumps = 0;
        fake.desktop.onPump = [&] { fake.desktop.quit = fake.desktop.pumps > 5; };
        ProcessInformation information = child();
        WaitForProcessEnd(rt, information);
        EXPECT_LT(fake.desktop.pumps, 20);
        EXPECT_TRUE(fake.processes.open.empty());
        EXPECT_EQ(rt.runningChildId, 0U);
    }
}

} // namespace
} // namespace tarv
