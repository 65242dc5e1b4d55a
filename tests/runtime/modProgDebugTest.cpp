#include "runtime/modProgDebug.h"

#include "runtime/Funktionen32/Developer.h"
#include "runtime/Runtime.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

struct ModProgDebug : testing::Test {
    FakePlatform fake;
    Runtime rt{fake.border};

    void debugGroup(const std::wstring& lines) { fake.profiles.fill(L"Pexoran.INI", L"[Debug]\r\n" + lines); }
};

TEST_F(ModProgDebug, LinesAreNumberedForTheWholeProcess) {
    const auto content = [&] { return fake.disk.bytes(L"C:\\Program Files\\TARVENIK\\rkZAL_Debug.txt"); };
    fake.faults.fail("FileStore.overwrite", system_code::sharingViolation, {1});
    DebugTrace(rt, L"verloren");
    DebugTrace(rt, L"Ölstand 5 €, ж");
    DebugTrace(rt, L"");
    EXPECT_EQ(content(), "2 - TarvService\t\xD6lstand 5 \x80, ?\r\n3 - TarvService\t\r\n");
    DebugTrace(rt, L"neu", true);
    EXPECT_EQ(content(), "4 - TarvService\tneu\r\n");
    EXPECT_TRUE(fake.desktop.boxes.empty());
}

TEST_F(ModProgDebug, FileNameIsKeptOnlyWhereAsked) {
    fake.disk.addFolder(L"C:\\Temp");
    debugGroup(L"SaveDebugIN=C:\\Temp\\a.log");
    DebugTrace(rt, L"eins", false, true);
    debugGroup(L"SaveDebugIN=C:\\Temp\\b.log");
    DebugTrace(rt, L"zwei", false, true);
    DebugTrace(rt, L"drei", true, true);
    EXPECT_EQ(fake.disk.bytes(L"C:\\Temp\\a.log"), "1 - TarvService\teins\r\n2 - TarvService\tzwei\r\n");
    EXPECT_EQ(fake.disk.bytes(L"C:\\Temp\\b.log"), "3 - TarvService\tdrei\r\n");
}

TEST_F(ModProgDebug, FileNameComesFromTheConfiguration) {
    fake.program.file = L"D:\\TarvService.exe";
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"", L"D:\\rkZAL_Debug.txt"},
        {L"DebugDateiZusatz=_PC12", L"D:\\rkZAL_Debug_PC12.txt"},
        {L"SaveDebugIN=D:\\x.Txt\r\nDebugDateiZusatz=_1", L"D:\\x_1.Txt"},
        {L"SaveDebugIN=D:\\x.log\r\nDebugDateiZusatz=_1", L"D:\\x.log"}};
    for (const auto& [lines, expected] : cases) {
        debugGroup(lines);
        EXPECT_EQ(GetDebugFileName(rt), expected) << lines;
    }
}

TEST_F(ModProgDebug, SwitchesAreReadOncePerProcessAndNeverWritten) {
    const std::pair<std::wstring, bool> cases[] = {{L"1", true},    {L"\" 1 \"", true}, {L"-1", true},
                                                   {L"True", true}, {L"", false},       {L"2", false},
                                                   {L"01", false}};
    for (const auto& [value, on] : cases) {
        const std::wstring lines = L"DebugON=" + value + L"\r\nEntwicklung=" + value + L"\r\n";
        debugGroup(lines);
        Runtime fresh{fake.border};
        EXPECT_EQ(bIstEntwicklung(fresh), on) << value;
        EXPECT_TRUE(DebugTraceEnabled(fresh)) << value;
        EXPECT_EQ(fresh.trace.switchValue, on) << value;
        EXPECT_EQ(fake.profiles.text(L"Pexoran.INI"), L"[Debug]\r\n" + lines);
        debugGroup(L"");
        EXPECT_EQ(bIstEntwicklung(fresh), on) << value;
    }
}

} // namespace
} // namespace tarv
