#include "runtime/Funktionen32/SuitePrograms.h"

#include "runtime/Runtime.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

struct SuitePrograms : testing::Test {
    FakePlatform fake;
    Runtime rt{fake.border};

    SuitePrograms() {
        fake.profiles.fill(L"C:\\ProgramData\\TARVENIK\\Q_Machine.ini",
                           L"[Directories]\r\nPROGRAMM=P:\\\r\n");
    }
};

TEST_F(SuitePrograms, PathComesFromTheConfiguredFolder) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"D:\\old\\Kelvar.Net.exe", L"P:\\DotNet\\Kelvar.Net.exe"},
        {L"raumbuch.NET.EXE", L"P:\\DotNet\\raumbuch.NET.EXE"},
        {L"D:\\old\\Kelvar.exe", L"P:\\Kelvar.exe"},
        {L"a.exe", L"P:\\a.exe"},
        {L"x.com", L"x.com"},
        {L".exe", L".exe"}};
    for (const auto& [program, path] : cases)
        EXPECT_EQ(GetEXEmitPfad(rt, program), path) << program;
}

TEST_F(SuitePrograms, PrintProgramFollowsTheConfiguration) {
    constexpr const wchar_t* net = L"P:\\DotNet\\Kelvar.Net.exe";
    constexpr const wchar_t* vb6 = L"P:\\kelvar6.exe";
    const std::tuple<std::wstring, std::int32_t, const wchar_t*> cases[] = {
        {L"vb6", 0, vb6},    {L"NET", 0, net},    {L"Cobol", 0, net}, {L"", 0, net},
        {L"Choose", 6, net}, {L"CHOOSE", 7, vb6}, {L"CHOOSE", 0, net}};
    for (const auto& [entry, answer, path] : cases) {
        fake.profiles.fill(L"Pexoran.INI", L"[DRUCKOPT]\r\nPROGRAMM=" + entry);
        fake.desktop.answers = {answer};
        EXPECT_EQ(GetDruckEXE(rt), path) << entry << answer;
    }
    const ShownMessageBox question{
        L"GetDruckEXE: \r\nDer aktuelle INI-Eintrag ist: [DRUCKOPT] PROGRAMM=CHOOSE \r\n"
        L"Soll die DotNetDruckvariante gestartet werden press <yes>.\r\n"
        L"Für VB6-Druckvariante press <no>",
        L"Auswahl Druckvariante NET or VB6", 4132};
    EXPECT_EQ(fake.desktop.boxes, std::vector<ShownMessageBox>(3, question));
}

} // namespace
} // namespace tarv
