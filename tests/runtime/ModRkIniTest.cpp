#include "runtime/ModRkIni.h"

#include "runtime/Funktionen32/Funktionen32.h"
#include "tests/support/Table.h"

namespace tarv {
namespace {

TEST(Tables, ModRkIni) {
    checkTable<World>("ModRkIni.txt",
                      {{L"GetProgVersion",
                        [](auto& w, const Row& row) {
                            constexpr const wchar_t* file = L"C:\\Program Files\\TARVENIK\\Version.INI";
                            EXPECT_EQ(GetProgVersion(w.rt), L"2023") << "no file";
                            w.fake.profiles.fill(file, row[0]);
                            w.fake.disk.find(file)->attributes = static_cast<std::uint32_t>(row.number(1));
                            const std::wstring version = GetProgVersion(w.rt);
                            return std::wstring(version.c_str()) + L" " + std::to_wstring(version.size());
                        }},
                       {L"Tarvwin_Eintrag",
                        [](auto& w, const Row& row) {
                            w.fake.profiles.fill(L"Pexoran.INI", row[0]);
                            const Value value = Tarvwin_Eintrag(w.rt, L"sys", L"EINTRAG", valueOf(row[1]));
                            return joined(
                                shown(value),
                                w.fake.profiles.getString(L"SYS", L"Eintrag", L"-", 99, L"Pexoran.INI"),
                                std::to_wstring(w.fake.faults.calls("Automation.create")));
                        }},
                       {L"GetWindowsFolder",
                        [](auto& w, const Row& row) {
                            w.fake.facts.windows = row[0];
                            return GetWindowsFolder(w.rt);
                        }},
                       {L"GetMachineDirectory", [](auto& w, const Row& row) {
                            w.fake.facts.setVariable(L"ProgramData", row[1]);
                            w.fake.profiles.fill(L"C:\\ProgramData\\TARVENIK\\Q_Machine.ini", row[2]);
                            EXPECT_EQ(GetMachineDirectoryQuiet(w.rt, L"none") + shownBoxes(w), L"");
                            return GetMachineDirectory(w.rt, row[0], false);
                        }}});
}

TEST(ModRkIni, FoldersAndTextsAreCutAtTheirBuffers) {
    World w;
    w.fake.profiles.fill(L"C:\\ProgramData\\TARVENIK\\Q_Machine.ini",
                         L"[Directories]\r\nX=" + std::wstring(300, L'x'));
    EXPECT_EQ(GetMachineDirectoryQuiet(w.rt, L"X"), std::wstring(254, L'x') + L"\\");
    w.fake.profiles.fill(L"Pexoran.INI", L"[SYS]\r\nX=" + std::wstring(3000, L'x'));
    EXPECT_EQ(suiteText(w.rt, L"SYS", L"X", L""), std::wstring(1999, L'x'));
    // Windows writes nothing of a folder that does not fit.
    w.fake.facts.windows = std::wstring(254, L'w');
    EXPECT_EQ(GetWindowsFolder(w.rt), w.fake.facts.windows + L"\\");
    w.fake.facts.windows += L'w';
    EXPECT_EQ(GetWindowsFolder(w.rt), L"\\");
    EXPECT_EQ(GetWinDir(w.rt), w.fake.facts.windows);
    w.fake.facts.windows += L'w';
    EXPECT_EQ(GetWinDir(w.rt), L"");
}

} // namespace
} // namespace tarv
