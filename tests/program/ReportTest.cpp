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

/// Where the companion's output goes.
enum class Out {
    file,
    nowhere,
    closedHandle,
    brokenPipe
};

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
    /// Inherited by the companion.
    FileHandle newFile(const std::wstring& name) const {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        return FileHandle(CreateFileW(installation.path(name).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                      &inherited, CREATE_ALWAYS, 0, nullptr));
    }
    /// The exit code.
    DWORD run(const std::wstring& switches, HANDLE out, DWORD flags = DETACHED_PROCESS) {
        const FileHandle errorFile = newFile(L"errors.txt");
        std::wstring line = L"\"" + program + L"\" " + switches;
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = out;
        startup.hStdError = errorFile.get();
        PROCESS_INFORMATION process{};
        SetEnvironmentVariableW(L"ProgramData", installation.path(L"Daten").c_str());
        if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, flags, nullptr,
                            installation.path(L"Programm").c_str(), &startup, &process))
            return GetLastError() + 1000;
        const FileHandle running(process.hProcess), thread(process.hThread);
        DWORD code = 2000;
        if (WaitForSingleObject(running.get(), 60000) != WAIT_OBJECT_0)
            TerminateProcess(running.get(), code);
        GetExitCodeProcess(running.get(), &code);
        return code;
    }
    DWORD run(const std::wstring& switches, Out kind = Out::file) {
        FileHandle out = newFile(L"out.txt"), reader;
        if (kind == Out::brokenPipe) {
            SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
            HANDLE readEnd = nullptr, writeEnd = nullptr;
            CreatePipe(&readEnd, &writeEnd, &inherited, 0);
            CloseHandle(readEnd);
            out.reset(writeEnd);
        }
        const HANDLE closed = reinterpret_cast<HANDLE>(UINT_PTR{0x7654});
        return run(switches, kind == Out::nowhere ? nullptr : kind == Out::closedHandle ? closed : out.get());
    }
    std::set<std::wstring> files() const {
        std::set<std::wstring> all;
        for (const auto& each : fs::recursive_directory_iterator(installation.path(L"")))
            all.insert(each.path());
        return all;
    }

    Installation installation;
    const std::wstring program = installation.path(L"Programm\\TarvReport.exe");
};

TEST_F(ReportProgram, EndsWithItsCodeAndLeavesNothingElse) {
    installation.write(L"fest.txt", "former");
    SetFileAttributesW(installation.path(L"fest.txt").c_str(), FILE_ATTRIBUTE_READONLY);
    const struct {
        const wchar_t* switches;
        Out out;
        DWORD code;
        const char* errors; // a part of them; null for none
    } cases[] = {{L"", Out::file, 0, nullptr},
                 {L"-?", Out::file, 0, nullptr},
                 {L"/yml", Out::file, 2, "/yml"},
                 {L"", Out::nowhere, 3, ""},
                 {L"/json", Out::closedHandle, 3, ""},
                 {L"/json", Out::brokenPipe, 3, ""},
                 {L"/json /o:..\\neu.json", Out::nowhere, 0, nullptr},
                 {L"/o:..\\neu.json", Out::closedHandle, 0, nullptr},
                 {L"/o:..\\fest.txt", Out::file, 3, "fest.txt"},
                 {L"/o:..\\fehlt\\neu.txt", Out::file, 3, "fehlt"}};
    auto expected = files();
    expected.insert(
        {installation.path(L"neu.json"), installation.path(L"out.txt"), installation.path(L"errors.txt")});
    for (const auto& each : cases) {
        SCOPED_TRACE(testing::PrintToString(each.switches) + std::to_string(static_cast<int>(each.out)));
        EXPECT_EQ(run(each.switches, each.out), each.code);
        const std::string errors = installation.read(L"errors.txt");
        EXPECT_EQ(errors.empty(), !each.errors) << errors;
        EXPECT_NE(errors.find(each.errors ? each.errors : ""), errors.npos) << errors;
    }
    EXPECT_EQ(files(), expected);
    EXPECT_EQ(installation.read(L"fest.txt"), "former");
    SetFileAttributesW(installation.path(L"fest.txt").c_str(), FILE_ATTRIBUTE_NORMAL);
    fs::remove(installation.path(qvFile));
    EXPECT_EQ(run(L"/json"), 1u);
    EXPECT_NE(installation.read(L"errors.txt").find("QV.ini"), std::string::npos);
}

TEST_F(ReportProgram, SaysWhatTheInfoCentreSays) {
    const auto service = installation.start();
    const HWND mainWindow = service->window(L"frmMain");
    service->command(mainWindow, ID_mnuInfo);
    const HWND window = service->window(L"frmInfo4Prg");
    service->press(window, {-(ProgramDriver::shifted + 'C')});
    ASSERT_TRUE(waitUntil([] { return ProgramDriver::clipboard().starts_with(L"[Kundeninfo]"); }));
    ASSERT_EQ(run(L""), 0u);
    EXPECT_EQ(fs::path(reinterpret_cast<const char8_t*>(installation.read(L"out.txt").c_str())).wstring(),
              ProgramDriver::clipboard());
}

TEST_F(ReportProgram, ConsoleShowsUmlauts) {
    if (underWine())
        FreeConsole(); // the host's terminal, which has no screen to read from
    const bool own = AllocConsole() != FALSE;
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    const FileHandle screen(CreateConsoleScreenBuffer(GENERIC_READ | GENERIC_WRITE,
                                                      FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                                      CONSOLE_TEXTMODE_BUFFER, nullptr));
    ASSERT_TRUE(screen) << own << GetLastError();
    SetConsoleScreenBufferSize(screen.get(), {100, 300});
    EXPECT_EQ(run(L"", screen.get(), 0), 0u);
    std::wstring shown(100 * 100, L' ');
    DWORD length = 0;
    ReadConsoleOutputCharacterW(screen.get(), shown.data(), static_cast<DWORD>(shown.size()), {0, 0},
                                &length);
    EXPECT_NE(shown.find(L"Q_Machine.INI  [B\xFCro]"), shown.npos) << shown;
    EXPECT_NE(shown.find(L"    Stra\xDF"
                         L"e=1 "),
              shown.npos);
    if (own)
        FreeConsole();
}

} // namespace
} // namespace tarv::program
