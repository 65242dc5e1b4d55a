#include "runtime/modProgDebug.h"

#include "runtime/Funktionen32/Funktionen32.h"
#include "tests/support/Table.h"

namespace tarv {
namespace {

TEST(Tables, modProgDebug) {
    checkTable<World>("modProgDebug.txt",
                      {{L"GetDebugFileName",
                        [](auto& w, const Row& row) {
                            w.fake.facts.program = L"D:\\TarvService.exe";
                            w.fake.profiles.fill(L"Pexoran.INI", L"[Debug]\r\n" + row[0]);
                            return GetDebugFileName(w.rt);
                        }},
                       {L"Switches", [](auto& w, const Row& row) {
                            const std::wstring text =
                                L"[Debug]\r\nDebugON=" + row[0] + L"\r\nEntwicklung=" + row[0];
                            w.fake.profiles.fill(L"Pexoran.INI", text);
                            EXPECT_TRUE(DebugTraceEnabled(w.rt));
                            std::wstring states = std::to_wstring(bIstEntwicklung(w.rt));
                            const bool written = w.fake.profiles.text(L"Pexoran.INI") != text;
                            w.fake.profiles.fill(L"Pexoran.INI", L"");
                            for (const bool state : {bIstEntwicklung(w.rt), w.rt.trace.switchValue, written})
                                states += L" " + std::to_wstring(state);
                            return states;
                        }}});
}

TEST(modProgDebug, LinesAreNumberedForTheWholeProcess) {
    World w;
    FakePlatform& fake = w.fake;
    const auto content = [&] { return fake.disk.bytes(L"C:\\Program Files\\TARVENIK\\rkZAL_Debug.txt"); };
    fake.faults.fail("FileStore.overwrite", system_code::sharingViolation, 1, 1);
    DebugTrace(w.rt, L"verloren");
    DebugTrace(w.rt, L"Ölstand 5 €, ж");
    fake.faults.fail("FileStore.append", system_code::sharingViolation, 1, 1);
    DebugTrace(w.rt, L"auch verloren");
    DebugTrace(w.rt, L"");
    EXPECT_EQ(content(), "2 - TarvService\t\xD6lstand 5 \x80, ?\r\n4 - TarvService\t\r\n");
    DebugTrace(w.rt, L"neu", true);
    EXPECT_EQ(content(), "5 - TarvService\tneu\r\n");
    // The file's name is kept only where asked.
    fake.profiles.fill(L"Pexoran.INI", L"[Debug]\r\nSaveDebugIN=C:\\a");
    DebugTrace(w.rt, L"", true, true);
    fake.profiles.fill(L"Pexoran.INI", L"[Debug]\r\nSaveDebugIN=C:\\b");
    DebugTrace(w.rt, L"", false, true);
    DebugTrace(w.rt, L"");
    EXPECT_EQ(fake.disk.bytes(L"C:\\a"), "6 - TarvService\t\r\n7 - TarvService\t\r\n");
    EXPECT_EQ(fake.disk.bytes(L"C:\\b"), "8 - TarvService\t\r\n");
}

} // namespace
} // namespace tarv
