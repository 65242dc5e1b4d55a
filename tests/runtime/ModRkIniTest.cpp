#include "runtime/ModRkIni.h"

#include "runtime/Konstanten.h"
#include "runtime/Runtime.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

using Pair = std::pair<std::wstring, std::wstring>;

struct ModRkIni : testing::Test {
    FakePlatform fake;
    Runtime rt{fake.border};

    Value read(const std::wstring& lines, const Value& fallback) {
        fake.profiles.fill(L"Pexoran.INI", lines);
        return Tarvwin_Eintrag(rt, L"sys", L"EINTRAG", fallback);
    }
};

TEST_F(ModRkIni, ProgramVersionIsTheWholeBufferOrTheFallback) {
    constexpr const wchar_t* file = L"C:\\Program Files\\TARVENIK\\Version.INI";
    const Pair cases[] = {{L"ProgVersion=12.3", L"12.3" + std::wstring(96, L'\0')},
                          {L"progversion = Entry Not Found!", L"Entry Not Found!" + std::wstring(84, L'\0')},
                          {L"ProgVersion=" + std::wstring(150, L'7'), std::wstring(99, L'7') + L'\0'},
                          {L"ProgVersion=", L"2023"},
                          {L"ProgVersion=Entry Not Found", L"2023"}};
    EXPECT_EQ(GetProgVersion(rt), L"2023") << "no file";
    for (const auto& [line, expected] : cases) {
        fake.profiles.fill(file, L"[INFO]\r\n" + line);
        EXPECT_EQ(GetProgVersion(rt), expected) << line;
    }
    fake.profiles.fill(file, L"[Info]\r\nProgVersion=1");
    fake.disk.find(file)->attributes |= attribute::hidden;
    EXPECT_EQ(GetProgVersion(rt), L"2023") << "a plain listing does not show a hidden file";
}

TEST_F(ModRkIni, EntryIsTypedAfterItsDefault) {
    const std::tuple<std::wstring, Value, Value> cases[] = {
        {L"15,7", 1.0, 15.0},
        {L"15,7", std::wstring(), std::wstring(L"15,7")},
        {L"ja", true, 0.0},
        {L" -2.5e1 EUR", std::int16_t{1}, -25.0},
        {L"1", Date{2.0}, 1.0},
        {L"Entry Not Found ?", std::wstring(L"x"), std::wstring(L"Entry Not Found ?")},
        {L"7", Empty{}, 7.0},
        {std::wstring(3000, L'x'), std::wstring(), std::wstring(1999, L'x')},
        {L"1e999", 1.0, Value(Empty{})}};
    for (const auto& [value, fallback, expected] : cases)
        EXPECT_EQ(read(L"[SYS]\r\nEintrag=" + value, fallback), expected) << value;
    EXPECT_EQ(fake.automation.log.size(), 2U) << "the overflow went to the error display, in both places";
}

TEST_F(ModRkIni, MissingOrEmptyEntryGivesTheDefaultAndReceivesIt) {
    const std::tuple<Value, Value, std::wstring> cases[] = {
        {std::int32_t{1}, std::int32_t{1}, L"1"},
        {0.5, 0.5, L"0.5"},
        {Date{45000.25}, Date{45000.25}, L"45000.25"},
        {true, true, L"-1"},
        {std::wstring(L"NET"), std::wstring(L"NET"), L"NET"},
        {std::wstring(), std::wstring(), L""},
        {Empty{}, std::wstring(), L""},
        {Null{}, Empty{}, L""}};
    for (const auto& [fallback, expected, written] : cases) {
        for (const std::wstring before : {L"[SYS]\r\nEintrag=", L"[SYS]\r\nEintrag=Entry Not Found", L""}) {
            EXPECT_EQ(read(before, fallback), expected) << written;
            if (written.empty())
                EXPECT_EQ(fake.profiles.text(L"Pexoran.INI"), before);
            else
                EXPECT_EQ(fake.profiles.getString(L"SYS", L"Eintrag", L"-", 99, L"Pexoran.INI"), written);
        }
    }
    fake.faults.fail("ProfileFiles.writeString", system_code::accessDenied);
    EXPECT_EQ(read(L"", 3.0), Value(3.0));
    EXPECT_EQ(Tarvwin_EintragSchreiben(rt, L"SYS", L"Neu", 3.0), -1);
}

TEST_F(ModRkIni, MachineDirectoryEndsInASeparator) {
    fake.profiles.fill(L"C:\\ProgramData\\TARVENIK\\Q_Machine.ini",
                       L"[Directories]\r\nProgramm=D:\\Data\r\nLaufwerk=D:\r\nWurzel=D:\\\r\nLeer=\r\n");
    const Pair cases[] = {{L"  PROGRAMM ", L"D:\\Data\\"},
                          {L"Laufwerk", L"D:"},
                          {L"Wurzel", L"D:\\"},
                          {L"Leer", L"\\"},
                          {L"Fehlt", L""}};
    for (const auto& [key, expected] : cases)
        EXPECT_EQ(GetMachineDirectoryQuiet(rt, key), expected) << key;
    EXPECT_TRUE(fake.desktop.boxes.empty());
}

TEST_F(ModRkIni, MissingMachineDirectoryIsAnInstallationError) {
    const Pair cases[] = {
        {L"E:\\Daten\\", L"E:\\Daten"}, {L"E:\\Daten", L"E:\\Daten"}, {L"", L"C:\\Programdata"}};
    for (const auto& [programData, folder] : cases) {
        fake.environment.set(L"PROGRAMDATA", programData);
        fake.desktop.boxes.clear();
        EXPECT_EQ(GetMachineDirectory(rt, L" Programm ", false), L"");
        const std::wstring text = L"Eintrag 'Programm'=.. oder Gruppe [Directories] oder Datei '" + folder +
                                  L"\\TARVENIK\\Q_Machine.ini' Nicht gefunden !";
        EXPECT_EQ(fake.desktop.boxes, (std::vector<ShownMessageBox>{{text, L"INSTALLATIONS-FEHLER", 4112}}));
    }
}

TEST_F(ModRkIni, WindowsFolderAlwaysGetsABackslash) {
    fake.machine.windows = L"D:\\";
    EXPECT_EQ(GetWindowsFolder(rt), L"D:\\\\");
}

} // namespace
} // namespace tarv
