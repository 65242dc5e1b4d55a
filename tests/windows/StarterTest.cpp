// The starter against real child processes.

#include "runtime/Funktionen32/Starter.h"
#include "platform/MachineFacts.h"
#include "platform/OwnProgram.h"
#include "runtime/Runtime.h"
#include "shell/SupportActions.h"
#include "tests/support/ContractWorld.h"

#include <deque>
#include <filesystem>

#include <windows.h>

namespace tarv {
namespace {

namespace fs = std::filesystem;

/// A program in another folder than the one that runs the tests.
struct InstalledProgram : OwnProgram {
    std::wstring path() override { return folder + L"TarvService.exe"; }
    FileVersion version() override { return {}; }

    std::wstring folder = L"C:\\Program Files (x86)\\TARVENIK\\";
};

class StarterProcesses : public Contract {
protected:
    StarterProcesses() { fs::create_directories(program.folder); }
    ~StarterProcesses() override {
        for (const std::wstring& file : installed) {
            std::error_code busy; // an ended program keeps its file for a moment
            for (int attempt = 0; attempt < 100 && !fs::remove(file, busy) && busy; ++attempt)
                Sleep(20);
        }
    }

    /// Copies one of the two test programs to `file`.
    const std::wstring& install(const std::wstring& file, const std::wstring& kind = L"console") {
        const std::wstring own = border.program.path();
        fs::copy_file(own.substr(0, own.rfind(L'\\')) + L"\\tarv_child_" + kind + L".exe", file,
                      fs::copy_options::overwrite_existing);
        return installed.emplace_back(file);
    }
    /// What a started program wrote down: command line, folder, show command; empty when it does not start.
    std::vector<std::wstring> report(const std::wstring& file, int milliseconds = 10000) {
        for (; milliseconds >= 0; milliseconds -= 20, Sleep(20)) {
            const auto bytes = world->bytes(file + L".txt");
            if (!bytes)
                continue;
            fs::remove(file + L".txt");
            const std::wstring text(reinterpret_cast<const wchar_t*>(bytes->data()), bytes->size() / 2);
            const auto first = text.find(L'\n'), second = text.find(L'\n', first + 1);
            return {text.substr(0, first), text.substr(first + 1, second - first - 1),
                    text.substr(second + 1)};
        }
        return {};
    }
    std::intptr_t start(std::wstring_view path, std::wstring arguments, bool wait, bool direct) {
        std::wstring part;
        return StartExe(rt, path, 0, arguments, {}, wait, part, false, WindowHandle::none, direct);
    }

    InstalledProgram program;
    Platform mixed{border.profiles,  border.files,      border.environment, program,
                   border.processes, border.desktop,    border.regional,    border.machine,
                   border.shell,     border.automation, border.codePage,    border.xml};
    Runtime rt{mixed};
    std::deque<std::wstring> installed;
};

TEST_F(StarterProcesses, NoDecoyStartsInsteadOfTheClientOrTheConsole) {
    const std::wstring decoy = install(L"C:\\Program.exe");
    const std::wstring client = install(program.folder + L"FastClient.exe");
    startRemoteMaintenance(rt);
    const std::vector<std::wstring> seen = report(client);
    ASSERT_EQ(seen.size(), 3u);
    EXPECT_EQ(seen[0], L"c:\\program files (x86)\\tarvenik\\fastclient.exe PRG: DATA:");
    EXPECT_EQ(seen[2], L"1");
    fs::remove(client);
    startRemoteMaintenance(rt);
    EXPECT_TRUE(report(decoy, 300).empty()) << "not even where the client is missing";
    CloseHandle(reinterpret_cast<HANDLE>(start(client, L"", false, true)));
    EXPECT_FALSE(report(decoy).empty()) << "the direct start leaves the search to the system";

    const std::wstring console = border.machine.systemDirectory() + L"\\mmc.exe";
    ASSERT_FALSE(fs::exists(console)) << "would be replaced";
    install(console);
    const std::wstring beside = install(program.folder + L"mmc.exe");
    const fs::path before = fs::current_path();
    fs::current_path(program.folder);
    openServicesConsole(rt);
    fs::current_path(before);
    const std::vector<std::wstring> consoleSeen = report(console);
    ASSERT_EQ(consoleSeen.size(), 3u);
    EXPECT_EQ(_wcsicmp(consoleSeen[0].c_str(), L"mmc C:\\windows\\system32\\services.msc /s"), 0);
    EXPECT_EQ(consoleSeen[2], L"2");
    EXPECT_TRUE(report(beside, 300).empty());
}

TEST_F(StarterProcesses, CommandLineFolderAndHandlesArrive) {
    const std::wstring child = install(program.folder + L"Größe Ü.exe");
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    const HANDLE event = CreateEventW(&inheritable, TRUE, FALSE, nullptr);
    const std::wstring signal = L"set=" + std::to_wstring(reinterpret_cast<UINT_PTR>(event));
    for (const std::wstring& arguments : {std::wstring(32000, L'ä'), std::wstring(L"\"a b\" ж"), signal}) {
        EXPECT_EQ(start(child, arguments, false, false), -1);
        const std::vector<std::wstring> seen = report(child);
        ASSERT_EQ(seen.size(), 3u);
        EXPECT_EQ(seen[0], L"c:\\program files (x86)\\tarvenik\\größe ü.exe " + arguments);
        EXPECT_EQ(seen[1], fs::current_path());
    }
    EXPECT_EQ(WaitForSingleObject(event, 300), WAIT_TIMEOUT) << "only the direct start inherits handles";
    const auto process = reinterpret_cast<HANDLE>(start(child, signal, false, true));
    EXPECT_EQ(WaitForSingleObject(process, 10000), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_OBJECT_0);
    EXPECT_TRUE(CloseHandle(process) && CloseHandle(event));
    for (const std::wstring& wrong : {program.folder, program.folder + L"fehlt.exe"}) {
        EXPECT_EQ(start(wrong, L"", false, true), 0) << wrong;
        EXPECT_EQ(start(wrong, L"", true, false), -1) << wrong;
    }
}

int ticks = 0;

void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD) {
    ++ticks;
}

TEST_F(StarterProcesses, MessagesRunUntilTheChildHasEnded) {
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, tick);
    for (const auto& [kind, arguments] :
         {std::pair(L"console", L"sekunde"), {L"window", L"fenster"}, {L"window", L"sekunde (nie bereit)"}}) {
        const std::wstring child = install(program.folder + kind + L".exe", kind);
        ticks = 0;
        const DWORD begin = GetTickCount();
        EXPECT_EQ(start(child, arguments, true, false), -1);
        EXPECT_FALSE(report(child, 0).empty()) << kind << arguments;
        EXPECT_GE(GetTickCount() - begin, 1000u) << kind << arguments;
        EXPECT_GE(ticks, 20) << kind << arguments;
        EXPECT_FALSE(rt.externalProgram.running);
    }
    KillTimer(nullptr, timer);
}

} // namespace
} // namespace tarv
