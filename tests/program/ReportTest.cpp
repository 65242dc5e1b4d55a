// The console companion as administrators start it: without a window, a console, or anybody who reads.

#include "infocenter/ids.h"
#include "shell/ids.h"
#include "tests/program/Installation.h"
#include "tools/driver/Surroundings.h"
#include "win/Handle.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace tarv::program {
namespace {

namespace fs = std::filesystem;

class ReportProgram : public testing::Test {
protected:
    ReportProgram() {
        wchar_t own[MAX_PATH];
        GetModuleFileNameW(nullptr, own, MAX_PATH);
        fs::copy_file(fs::path(own).parent_path().parent_path() / L"Programm\\TarvReport.exe", program);
        installation.write(machineFile, "[B\xFCro]\r\nStra\xDF"
                                        "e=1\r\n");
        installation.write(qvFile, "[A]\r\nb\r\n");
    }
    FileHandle newFile(const std::wstring& name) {
        return FileHandle(CreateFileW(installation.path(name).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                      &inherited, CREATE_ALWAYS, 0, nullptr));
    }
    /// The exit code; what it says about errors is in "errors.txt".
    DWORD run(const std::wstring& switches, HANDLE out, DWORD flags = DETACHED_PROCESS) {
        const FileHandle errors = newFile(L"errors.txt");
        std::wstring line = L"\"" + program + L"\" " + switches;
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = out;
        startup.hStdError = errors.get();
        PROCESS_INFORMATION process{};
        SetEnvironmentVariableW(L"ProgramData", installation.path(L"Daten").c_str());
        if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, flags, nullptr,
                            installation.path(L"Programm").c_str(), &startup, &process))
            return GetLastError() + 1000;
        const FileHandle running(process.hProcess), thread(process.hThread);
        DWORD code = 0;
        if (WaitForSingleObject(running.get(), 60000) != WAIT_OBJECT_0)
            TerminateProcess(running.get(), 2000);
        GetExitCodeProcess(running.get(), &code);
        return code;
    }
    std::set<std::wstring> files() const {
        std::set<std::wstring> all;
        for (const auto& each : fs::recursive_directory_iterator(installation.path(L"")))
            all.insert(each.path().filename());
        return all;
    }

    Installation installation;
    const std::wstring program = installation.path(L"Programm\\TarvReport.exe");
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
};

TEST_F(ReportProgram, EndsWithItsCodeAndLeavesNothingElse) {
    installation.write(L"fest.txt", "former");
    SetFileAttributesW(installation.path(L"fest.txt").c_str(), FILE_ATTRIBUTE_READONLY);
    auto expected = files();
    expected.insert({L"neu.json", L"out.txt", L"errors.txt"});

    HANDLE readEnd = nullptr, writeEnd = nullptr;
    CreatePipe(&readEnd, &writeEnd, &inherited, 0);
    CloseHandle(readEnd);
    const FileHandle file = newFile(L"out.txt"), brokenPipe(writeEnd);
    const HANDLE closed = reinterpret_cast<HANDLE>(UINT_PTR{0x7654});
    const struct {
        const wchar_t* switches;
        HANDLE out;
        DWORD code;
    } cases[] = {{L"", file.get(), 0},
                 {L"-?", file.get(), 0},
                 {L"/yml", file.get(), 2},
                 {L"", nullptr, 3},
                 {L"/json", closed, 3},
                 {L"/json", brokenPipe.get(), 3},
                 {L"/json /o:..\\neu.json", nullptr, 0},
                 {L"/o:..\\neu.json", closed, 0},
                 {L"/o:..\\fest.txt", file.get(), 3},
                 {L"/o:..\\fehlt\\neu.txt", file.get(), 3}};
    for (const auto& [switches, out, code] : cases)
        EXPECT_EQ(run(switches, out), code) << testing::PrintToString(switches) << out;
    EXPECT_EQ(files(), expected);
    EXPECT_EQ(installation.read(L"fest.txt"), "former");
    SetFileAttributesW(installation.path(L"fest.txt").c_str(), FILE_ATTRIBUTE_NORMAL);

    fs::remove(installation.path(qvFile));
    EXPECT_EQ(run(L"/json", file.get()), 1u);
    EXPECT_NE(installation.read(L"errors.txt").find("QV.ini"), std::string::npos);
}

TEST_F(ReportProgram, SaysWhatTheInfoCentreSays) {
    const auto service = installation.start();
    service->command(service->window(L"frmMain"), ID_mnuInfo);
    service->press(service->window(L"frmInfo4Prg"), {-(ProgramDriver::shifted + 'C')});
    ASSERT_TRUE(waitUntil([] { return ProgramDriver::clipboard().starts_with(L"[Kundeninfo]"); }));
    ASSERT_EQ(run(L"", newFile(L"out.txt").get()), 0u);
    EXPECT_EQ(fs::path(reinterpret_cast<const char8_t*>(installation.read(L"out.txt").c_str())).wstring(),
              ProgramDriver::clipboard());
}

TEST_F(ReportProgram, ConsoleShowsUmlauts) {
    if (underWine())
        FreeConsole(); // the host's terminal, which has no screen to read from
    const bool own = AllocConsole() != FALSE;
    const FileHandle screen(CreateConsoleScreenBuffer(GENERIC_READ | GENERIC_WRITE,
                                                      FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                                      CONSOLE_TEXTMODE_BUFFER, nullptr));
    SetConsoleScreenBufferSize(screen.get(), {100, 300});
    EXPECT_EQ(run(L"", screen.get(), 0), 0u);
    std::wstring shown(100 * 100, L' ');
    DWORD length = 0;
    ReadConsoleOutputCharacterW(screen.get(), shown.data(), static_cast<DWORD>(shown.size()), {0, 0},
                                &length);
    EXPECT_NE(shown.find(L"Q_Machine.INI  [Büro]"), shown.npos);
    EXPECT_NE(shown.find(L"    Straße=1 "), shown.npos);
    if (own)
        FreeConsole();
}

} // namespace
} // namespace tarv::program
