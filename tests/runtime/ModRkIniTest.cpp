#include "runtime/ModRkIni.h"

#include "runtime/Konstanten.h"
#include "runtime/Runtime.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

constexpr const wchar_t* versionFile = L"C:\\Program Files\\TARVENIK\\Version.INI";
constexpr const wchar_t* machineIni = L"C:\\ProgramData\\TARVENIK\\Q_Machine.ini";

struct ModRkIni : testing::Test {
    FakePlatform fake;
    Runtime rt{fake.border};

    void suiteIni(std::wstring_view lines) { fake.profiles.fill(L"Pexoran.INI", lines); }
};

TEST_F(ModRkIni, ProgramVersionIsTheWholeBufferOrTheFallback) {
    const std::pair<const wchar_t*, std::wstring> cases[] = {
        {L"[Info]\r\nProgVersion=12.3", L"12.3" + std::wstring(96, L'\0')},
        {L"[INFO]\r\nprogversion = Entry Not Found!", L"Entry Not Found!" + std::wstring(84, L'\0')},
        {L"[Info]\r\nProgVersion=", L"2023"},
        {L"[Info]\r\nProgVersion=Entry Not Found", L"2023"},
        {L"", L"2023"},
    };
    EXPECT_EQ(GetProgVersion(rt), L"2023") << "no file";
    for (const auto& [lines, expected] : cases) {
        fake.profiles.fill(versionFile, lines);
        EXPECT_EQ(GetProgVersion(rt), expected) << lines;
    }
    fake.profiles.fill(versionFile, L"[Info]\r\nProgVersion=" + std::wstring(150, L'7'));
    EXPECT_EQ(GetProgVersion(rt), std::wstring(99, L'7') + L'\0');
    fake.disk.find(versionFile)->attributes |= attribute::hidden;
    EXPECT_EQ(GetProgVersion(rt), L"2023") << "a plain listing does not show a hidden file";
}

TEST_F(ModRkIni, EntryIsTypedAfterItsDefault) {
    const struct {
        const wchar_t* value;
        Value fallback;
        Value expected;
    } cases[] = {
        {L"15,7", 1.0, 15.0},
        {L"15,7", std::wstring(L"x"), std::wstring(L"15,7")},
        {L"15,7", std::wstring(), std::wstring(L"15,7")},
        {L" -2.5e1 EUR", std::int16_t{1}, -25.0},
        {L"ja", true, 0.0},
        {L"1", Date{2.0}, 1.0},
        {L"7", Empty{}, 7.0},
        {L"Entry Not Found ?", std::wstring(), std::wstring(L"Entry Not Found ?")},
    };
    for (const auto& c : cases) {
        suiteIni(L"[SYS]\r\nEintrag=" + std::wstring(c.value) + L"\r\n");
        EXPECT_EQ(Tarvwin_Eintrag(rt, L"sys", L"EINTRAG", c.fallback), c.expected) << c.value;
    }
    suiteIni(L"[SYS]\r\nLang=" + std::wstring(3000, L'x'));
    EXPECT_EQ(suiteText(rt, L"SYS", L"Lang", {}), std::wstring(1999, L'x'));
}

TEST_F(ModRkIni, MissingOrEmptyEntryGivesTheDefaultAndReceivesIt) {
    const struct {
        Value fallback;
        Value expected;
        const wchar_t* written;
    } cases[] = {
        {std::int32_t{1}, std::int32_t{1}, L"1"},
        {0.5, 0.5, L"0.5"},
        {true, true, L"-1"},
        {Date{45000.25}, Date{45000.25}, L"45000.25"},
        {std::wstring(L"NET"), std::wstring(L"NET"), L"NET"},
        {std::wstring(), std::wstring(), L""},
        {Empty{}, std::wstring(), L""},
    };
    for (const auto& c : cases) {
        for (const wchar_t* before :
             {L"[SYS]\r\nEintrag=\r\n", L"[SYS]\r\nEintrag=Entry Not Found\r\n", L""}) {
            suiteIni(before);
            const std::wstring untouched = fake.profiles.text(L"Pexoran.INI");
            EXPECT_EQ(Tarvwin_Eintrag(rt, L"SYS", L"Eintrag", c.fallback), c.expected) << c.written;
            if (*c.written)
                EXPECT_EQ(fake.profiles.getString(L"SYS", L"Eintrag", L"-", 99, L"Pexoran.INI"), c.written);
            else
                EXPECT_EQ(fake.profiles.text(L"Pexoran.INI"), untouched);
        }
    }
    fake.faults.fail("ProfileFiles.writeString", system_code::accessDenied);
    EXPECT_EQ(Tarvwin_Eintrag(rt, L"SYS", L"Neu", 3.0), Value(3.0));
    EXPECT_EQ(Tarvwin_EintragSchreiben(rt, L"SYS", L"Neu", 3.0), -1);
}

TEST_F(ModRkIni, ErrorsGoToTheErrorDisplay) {
    auto display = fake.automation.object(L"display");
    fake.automation.provide(L"rk_Runtime.rk_Fehler", display);
    suiteIni(L"[SYS]\r\nGross=1e999\r\n");
    EXPECT_EQ(Tarvwin_Eintrag(rt, L"SYS", L"Gross", 1.0), Value(Empty{}));
    EXPECT_EQ(Tarvwin_Eintrag(rt, L"SYS", L"Fehlt", Null{}), Value(Empty{}));
    ASSERT_EQ(fake.automation.log.size(), 4U);
    for (const std::size_t call : {1U, 3U})
        EXPECT_EQ(fake.automation.log[call].arguments[1], Value(std::wstring(L"beim Tarvwin_Eintrag")));
    EXPECT_EQ(fake.profiles.text(L"Pexoran.INI"), L"[SYS]\r\nGross=1e999\r\n");
}

TEST_F(ModRkIni, MachineDirectoryEndsInASeparator) {
    fake.profiles.fill(machineIni,
                       L"[Directories]\r\nProgramm=D:\\Data\r\nLaufwerk=D:\r\nWurzel=D:\\\r\nLeer=\r\n");
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"Programm", L"D:\\Data\\"},
        {L"  PROGRAMM ", L"D:\\Data\\"},
        {L"Laufwerk", L"D:"},
        {L"Wurzel", L"D:\\"},
        {L"Leer", L"\\"},
        {L"Fehlt", L""},
    };
    for (const auto& [key, expected] : cases)
        EXPECT_EQ(GetMachineDirectoryQuiet(rt, key), expected) << key;
    EXPECT_TRUE(fake.desktop.boxes.empty());
}

TEST_F(ModRkIni, MissingMachineDirectoryIsAnInstallationError) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"E:\\Daten\\", L"E:\\Daten"}, {L"E:\\Daten", L"E:\\Daten"}, {L"", L"C:\\Programdata"}};
    for (const auto& [programData, folder] : cases) {
        fake.environment.set(L"PROGRAMDATA", programData);
        fake.desktop.boxes.clear();
        EXPECT_EQ(GetMachineDirectory(rt, L" Programm ", false), L"");
        const std::wstring text = L"Eintrag 'Programm'=.. oder Gruppe [Directories] oder Datei '" +
                                  std::wstring(folder) + L"\\TARVENIK\\Q_Machine.ini' Nicht gefunden !";
        EXPECT_EQ(fake.desktop.boxes, (std::vector<ShownMessageBox>{{text, L"INSTALLATIONS-FEHLER", 4112}}));
    }
}

TEST_F(ModRkIni, FoldersAndNames) {
    EXPECT_EQ(GetWindowsFolder(rt), L"C:\\Windows\\");
    fake.machine.windows = L"D:\\";
    EXPECT_EQ(GetWindowsFolder(rt), L"D:\\\\") << "the backslash is always appended";
    EXPECT_EQ(GetFileNameFromPath(L"C:\\a\\b.c.d", true), L"b.c");
    EXPECT_EQ(GetFileNameFromPath(L"X:file.txt", false), L"file.txt");
    EXPECT_EQ(GetFileNameFromPath(L"C:\\a\\.ini", true), L"");
    EXPECT_EQ(TranslateText(L"Datei", 4, L"ohne Bedeutung"), L"Datei");
}

} // namespace
} // namespace tarv
