#include "runtime/Funktionen32/Paths.h"

#include "tests/support/FakePlatform.h"

#include <array>

namespace tarv {
namespace {

using Paths = Scripted;

TEST_F(Paths, NamesAndBackslashes) {
    EXPECT_EQ(AddBackslash(L""), L"");
    EXPECT_EQ(AddBackslash(L"C:"), L"C:\\");
    EXPECT_EQ(AddBackslash(L"C:\\"), L"C:\\");
    EXPECT_EQ(GetFileName(L"C:\\a\\b.c.d", true), L"b.c");
    EXPECT_EQ(GetFileName(L"C:\\a.b\\c", true), L"c");
    EXPECT_EQ(GetFileName(L"X:file.txt", false), L"file.txt");
    EXPECT_EQ(GetFileName(L".ini", true), L"");
    EXPECT_EQ(MakeProgramDataKey(L" Kalkä ", L"  D:\\Daten "), L"PRG:KALKÄ DATA:D:\\Daten");
    EXPECT_EQ(StripRibbonSuffix(L"Kalk-Ribbon__2"), L"Kalk-Ribbon");
    EXPECT_EQ(StripRibbonSuffix(L"Kalk-Ribbon-RIBBON"), L"Kalk");
    EXPECT_EQ(StripRibbonSuffix(L"Kalk_Ribbon"), L"Kalk_Ribbon");
}

TEST_F(Paths, OwnProgram) {
    EXPECT_EQ(ProgramFolder(rt), L"C:\\Program Files\\TARVENIK");
    EXPECT_EQ(ProgramName(rt), L"TarvService");
    fake.program.file = L"D:\\x.y.exe";
    EXPECT_EQ(ProgramFolder(rt), L"D:");
    EXPECT_EQ(ProgramName(rt), L"x.y");
}

TEST_F(Paths, SplitPath) {
    const wchar_t* const untouched = L"untouched";
    const std::array<std::wstring, 5> cases[]{
        {L"D:\\Arbeit", L"C:\\A\\B\\x.txt", L"C:", L"\\A\\B", L"x.txt"},
        {L"D:\\Arbeit", L"C:\\x.txt", L"C:", L"\\", L"x.txt"},
        {L"D:\\Arbeit", L"C:\\A\\", L"C:", L"\\A", L""},
        {L"D:\\Arbeit", L"\\\\srv\\share\\x.txt", untouched, L"\\\\srv\\share", L"x.txt"},
        {L"D:\\Arbeit", L"\\A\\x.txt", L"D:", L"\\A", L"x.txt"},
        {L"\\\\srv\\share", L"\\A\\x.txt", L"", L"\\A", L"x.txt"},
        {L"D:\\Arbeit", L"x.txt", L"D:", L"\\Arbeit", L"x.txt"},
        {L"D:\\", L"x.txt", L"D:", L"\\", L"x.txt"},
        {L"\\\\srv\\share", L"x.txt", untouched, L"\\\\srv\\share", L"x.txt"},
        {L"D:\\Arbeit", L"", L"D:", L"\\Arbeit", L""},
        {L"D:\\Arbeit", L"C:x.txt", L"D:", L"\\Arbeit", L"C:x.txt"},
        {L"D:\\Arbeit", L"a\\b:c", L"a\\b:", L"", L"c"},
    };
    for (const auto& c : cases) {
        fake.disk.currentDirectory = c[0];
        std::array<std::wstring, 5> split{c[0], c[1], untouched, untouched, untouched};
        SplitPath(rt, c[1], split[2], split[3], split[4]);
        EXPECT_EQ(split, c);
    }
}

TEST_F(Paths, LongPath) {
    fake.disk.addFolder(L"C:\\Program Files", attribute::directory, L"PROGRA~1");
    fake.disk.addFile(L"C:\\Program Files\\Lange Datei.txt", "", attribute::hidden, L"LANGED~1.TXT");
    const std::pair<const wchar_t*, const wchar_t*> cases[]{
        {L"", L""},
        {L"C:\\no short\\name.txt", L"C:\\no short\\name.txt"},
        {L"C:\\PROGRA~1", L"C:\\Program Files"},
        {L"C:\\PROGRA~1\\", L"C:\\Program Files\\"},
        {L"C:\\PROGRA~1\\LANGED~1.TXT", L"C:\\Program Files\\Lange Datei.txt"},
        {L"C:\\PROGRA~1\\MISSING.TXT", L"C:\\Program Files\\"},
        {L"C:\\PROGRA~1\\MISSING\\x.txt", L"C:\\PROGRA~1\\MISSING\\x.txt"},
        {L"\\\\srv\\share\\PROGRA~1", L"\\\\srv\\share\\PROGRA~1"},
    };
    for (const auto& [path, expected] : cases)
        EXPECT_EQ(File_getLongPath(rt, path), expected) << path;
    EXPECT_TRUE(fake.desktop.boxes.empty());
    EXPECT_EQ(fake.files.openSearches, 0);

    rt.developerMode = true;
    EXPECT_EQ(File_getLongPath(rt, L"C:\\X~1\\y"), L"C:\\X~1\\y");
    const ShownMessageBox box{L"Fehler: 53 Datei nicht gefunden\nin File_getLongPath", L"bIstEntwicklung",
                              4096};
    EXPECT_EQ(fake.desktop.boxes, std::vector{box});
}

TEST_F(Paths, EnvironmentValue) {
    fake.environment.list = {L"=C:=C:\\x", L"PATH EXT= with blank ",
                             L"Empty=",    L"EMPTY= second = value ",
                             L"PATHS=no",  L"Path=p",
                             L"",          L"Behind=end"};
    EXPECT_EQ(GetEnvValue(rt, L"empty"), L"second = value");
    EXPECT_EQ(GetEnvValue(rt, L"path"), L"with blank");
    EXPECT_EQ(GetEnvValue(rt, L"=c:"), L"C:=C:\\x");
    EXPECT_EQ(GetEnvValue(rt, L"Behind"), L"");
    EXPECT_EQ(GetEnvValue(rt, L""), L"");
}

TEST_F(Paths, TempFolder) {
    const std::pair<std::vector<std::wstring>, const wchar_t*> cases[]{
        {{L"TMP=C:\\b", L"TEMP=C:\\a"}, L"C:\\b\\"},
        {{L"TMP=", L"temp= C:\\Ä\\ "}, L"C:\\Ä\\"},
        {{L"TMPDIR=C:\\no", L"MY TEMP=C:\\no", L"X=TEMP", L" TEMP=C:\\no", L"TMP X=C:\\yes"}, L"C:\\yes\\"},
        {{L"A=1", L"", L"TEMP=C:\\behind the end"}, L"\\"},
        {{}, L"\\"},
    };
    for (const auto& [environment, expected] : cases) {
        fake.environment.list = environment;
        EXPECT_EQ(GetTempFolder(rt, false), expected);
    }
    fake.disk.addFolder(L"C:\\Lange Namen", attribute::directory, L"LANGEN~1");
    fake.environment.list = {L"TEMP=C:\\LANGEN~1"};
    EXPECT_EQ(GetTempFolder(rt, false), L"C:\\LANGEN~1\\");
    EXPECT_EQ(GetTempFolder(rt, true), L"C:\\Lange Namen\\");
}

} // namespace
} // namespace tarv
