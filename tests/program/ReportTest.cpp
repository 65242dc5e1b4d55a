// The console companion as administrators start it: without a window, a console, or anybody who reads.

#include "tests/program/Installation.h"
#include "tools/driver/Surroundings.h"
#include "win/Handle.h"

#include <gtest/gtest.h>

namespace tarv::program {
namespace {

class ReportProgram : public testing::Test {
protected:
    ReportProgram() {
        installation.write(machineFile, "[B\xFCro]\r\nL\xE4nge=1\r\n");
        installation.write(qvFile, "[A]\r\nb\r\n");
    }
    FileHandle newFile(const std::wstring& name) {
        return FileHandle(CreateFileW(installation.path(name).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                      &inherited, CREATE_ALWAYS, 0, nullptr));
    }
    /// The exit code; what it says about errors is in "errors.txt".
    DWORD run(const std::wstring& switches, HANDLE out, DWORD flags = DETACHED_PROCESS) {
        const FileHandle errors = newFile(L"errors.txt");
        std::wstring line = L"\"" + installation.path(reportFile) + L"\" " + switches;
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

    Installation installation;
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
};

TEST_F(ReportProgram, WritesInUtf8AndEndsWithItsCode) {
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
                 {L"/o:..\\fehlt\\neu.txt", file.get(), 3}};
    for (const auto& [switches, out, code] : cases)
        EXPECT_EQ(run(switches, out), code) << testing::PrintToString(switches) << out;
    {
        const FileHandle held(CreateFileW(installation.path(machineFile).c_str(), GENERIC_WRITE, 0, nullptr,
                                          OPEN_EXISTING, 0, nullptr));
        EXPECT_EQ(run(L"/json /o:..\\neu.json", nullptr), 1u);
        EXPECT_NE(installation.read(L"neu.json").find("\"vollstaendig\": false"), std::string::npos);
    }
    const std::string written = installation.read(L"out.txt");
    EXPECT_TRUE(written.starts_with("[Kundeninfo]\r\n")) << written;
    EXPECT_NE(written.find("[B\xC3\xBCro]\r\n    L\xC3\xA4nge=1\r\n"), written.npos) << written;
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
    EXPECT_NE(shown.find(L"    Länge=1 "), shown.npos);
    if (own)
        FreeConsole();
}

} // namespace
} // namespace tarv::program
