#include "win/LateEntry.h"

#include <gtest/gtest.h>

#include <winsock2.h>

#include <shellapi.h>

namespace tarv {
namespace {

TEST(LateEntry, AnswersTheFunctionsFailureWhereItIsMissing) {
    using Function = decltype(&::SHFileOperationW);
    SHFILEOPSTRUCTW nothing{};
    EXPECT_EQ((LateEntry<Function>{L"tarv_missing.dll", "SHFileOperationW", 126}(&nothing)), 126);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_MOD_NOT_FOUND});
    EXPECT_EQ((LateEntry<Function>{L"shell32.dll", "TarvMissing", 127}(&nothing)), 127);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PROC_NOT_FOUND});
    LateEntry<decltype(&::SetLastError)>{L"kernel32.dll", "TarvMissing"}(0);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PROC_NOT_FOUND}) << "nothing to answer, nothing done";
}

TEST(LateEntry, LookingAFunctionUpKeepsTheLastErrorForIt) {
    SetLastError(WSANO_DATA);
    EXPECT_EQ((LateEntry<decltype(&::WSAGetLastError)>{L"ws2_32.dll", "WSAGetLastError"}()), WSANO_DATA);
}

} // namespace
} // namespace tarv
