#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

TEST(FaultPlan, FailsTheChosenCallsOnly) {
    FakePlatform fake;
    fake.disk.addFile(L"C:\\a.txt", "abc");
    (void)fake.files.length(L"C:\\a.txt");
    fake.faults.fail("FileStore.length", system_code::accessDenied, {1, 3});
    EXPECT_EQ(fake.files.length(L"C:\\a.txt").error(), system_code::accessDenied);
    EXPECT_EQ(fake.files.length(L"C:\\a.txt").valueOr(-1), 3);
    EXPECT_FALSE(fake.files.length(L"C:\\a.txt"));
    EXPECT_EQ(fake.faults.calls("FileStore.length"), 4);

    fake.faults.fail("FileStore.length", system_code::sharingViolation);
    EXPECT_EQ(fake.files.length(L"C:\\a.txt").error(), system_code::sharingViolation);
    fake.faults.heal();
    EXPECT_TRUE(fake.files.length(L"C:\\a.txt"));
    EXPECT_THROW(fake.faults.fail("FileStore.size", 5), std::invalid_argument);
}

} // namespace
} // namespace tarv
