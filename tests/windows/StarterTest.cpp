// The starter against real child processes.

#include "runtime/Funktionen32/Starter.h"
#include "platform/MachineFacts.h"
#include "platform/OwnProgram.h"
#include "platform/windows/WindowsPlatform.h"
#include "runtime/Runtime.h"
#include "shell/SupportActions.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <vector>

#include <windows.h>

namespace tarv {
namespace {

/// A program in another folder than the one that runs the tests.
struct InstalledProgram : OwnProgram {
    std::wstring path() override { return folder + L"TarvService.exe"; }
    FileVersion version() override { return {}; }

    std::wstring folder = L"C:\\Program Files (x86)\\TARVENIK\\";
};

/// What runs while the starter pumps.
std::function<void()> onTick;
int ticks = 0;

void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD) {
    ++ticks;
    if (const auto action = std::exchange(onTick, nullptr))
        action();
}

class StarterProcesses : public testing::Test {
protected:
    StarterProcesses() {
        // A 32-bit system has no such folder of its own.
        CreateDirectoryW(L"C:\\Program Files (x86)", nullptr);
        CreateDirectoryW(program.folder.c_str(), nullptr);
        ticks = 0;
        onTick = nullptr;
        timer = SetTimer(nullptr, 0, 10, tick);
    }
    ~StarterProcesses() override {
        KillTimer(nullptr, timer);
        for (const std::wstring& file : installed) {
            DeleteFileW((file + L".txt").c_str());
            // An ended program keeps its file for a moment.
            for (int attempt = 0; attempt < 100 && !DeleteFileW(file.c_str()); ++attempt) {
                if (GetLastError() == ERROR_FILE_NOT_FOUND)
                    break;
                Sleep(20);
            }
        }
    }

    /// Copies one of the two test programs to `file`.
    const std::wstring& install(const std::wstring& file, const std::wstring& kind = L"console") {
        std::wstring source(MAX_PATH, L'\0');
        source.resize(GetModuleFileNameW(nullptr, source.data(), MAX_PATH));
        source.resize(source.rfind(L'\\') + 1);
        EXPECT_TRUE(CopyFileW((source + L"tarv_child_" + kind + L".exe").c_str(), file.c_str(), FALSE));
        return installed.emplace_back(file);
    }

    /// What a started program wrote down, line by line; nothing when it has not started in time.
    static std::vector<std::wstring> report(const std::wstring& file, int milliseconds = 10000) {
        std::wstring text(40000, L'\0');
        for (; milliseconds >= 0; milliseconds -= 20, Sleep(20)) {
            const HANDLE read =
                CreateFileW((file + L".txt").c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE,
                            nullptr, OPEN_EXISTING, 0, nullptr);
            if (read == INVALID_HANDLE_VALUE)
                continue;
            DWORD bytes = 0;
            ReadFile(read, text.data(), static_cast<DWORD>(text.size() * sizeof(wchar_t)), &bytes, nullptr);
            CloseHandle(read);
            DeleteFileW((file + L".txt").c_str());
            text.resize(bytes / sizeof(wchar_t));
            const auto first = text.find(L'\n');
            const auto second = text.find(L'\n', first + 1);
            return {text.substr(0, first), text.substr(first + 1, second - first - 1),
                    text.substr(second + 1)};
        }
        return {};
    }
    static bool started(const std::wstring& file) { return !report(file, 0).empty(); }

    std::intptr_t start(std::wstring_view path, std::wstring arguments, bool wait, bool direct) {
        std::wstring part;
        return StartExe(rt, path, 0, arguments, {}, wait, part, false, WindowHandle::none, direct);
    }

    WindowsPlatform windows;
    InstalledProgram program;
    Platform& real = windows.border();
    Platform border{real.profiles,  real.files,      real.environment, program,
                    real.processes, real.desktop,    real.regional,    real.machine,
                    real.shell,     real.automation, real.codePage,    real.xml};
    Runtime rt{border};
    std::deque<std::wstring> installed;
    UINT_PTR timer = 0;
};

TEST_F(StarterProcesses, RemoteMaintenanceIsTheOwnFoldersClientAndNoDecoy) {
    const std::wstring decoy = install(L"C:\\Program.exe");
    const std::wstring client = install(program.folder + L"FastClient.exe");
    startRemoteMaintenance(rt);
    const auto seen = report(client);
    ASSERT_EQ(seen.size(), 3U);
    EXPECT_EQ(seen[0], L"c:\\program files (x86)\\tarvenik\\fastclient.exe PRG: DATA:");
    EXPECT_EQ(seen[2], L"1");
    EXPECT_TRUE(report(decoy, 300).empty());
    DeleteFileW(client.c_str());
    startRemoteMaintenance(rt);
    EXPECT_TRUE(report(decoy, 300).empty()) << "not even where the client is missing";
    CloseHandle(reinterpret_cast<HANDLE>(start(client, L"", false, true)));
    EXPECT_EQ(report(decoy).size(), 3U) << "the direct start leaves the search to the system";
}

TEST_F(StarterProcesses, ServicesConsoleIsTheSystemFoldersOwn) {
    const std::wstring console = real.machine.systemDirectory() + L"\\mmc.exe";
    ASSERT_EQ(GetFileAttributesW(console.c_str()), INVALID_FILE_ATTRIBUTES) << "would be replaced";
    install(console);
    const std::wstring beside = install(program.folder + L"mmc.exe");
    wchar_t before[MAX_PATH];
    GetCurrentDirectoryW(MAX_PATH, before);
    SetCurrentDirectoryW(program.folder.c_str());
    openServicesConsole(rt);
    const auto seen = report(console);
    SetCurrentDirectoryW(before);
    ASSERT_EQ(seen.size(), 3U);
    EXPECT_EQ(_wcsicmp(seen[0].c_str(), L"mmc C:\\windows\\system32\\services.msc /s"), 0);
    EXPECT_EQ(seen[2], L"2");
    EXPECT_TRUE(report(beside, 300).empty());
}

TEST_F(StarterProcesses, LongArgumentsAndNamesWithUmlautsAndBlanksArrive) {
    const std::wstring child = install(program.folder + L"Größe Ü.exe");
    const std::wstring line = L"c:\\program files (x86)\\tarvenik\\größe ü.exe ";
    wchar_t folder[MAX_PATH];
    GetCurrentDirectoryW(MAX_PATH, folder);
    for (const std::wstring& arguments : {std::wstring(32000, L'ä'), std::wstring(L"\"a b\" ж")}) {
        EXPECT_EQ(start(child, arguments, false, false), -1);
        const auto seen = report(child);
        ASSERT_EQ(seen.size(), 3U);
        EXPECT_EQ(seen[0], line + arguments);
        EXPECT_EQ(seen[1], folder);
    }
}

TEST_F(StarterProcesses, OnlyTheDirectStartInheritsHandlesAndHandsTheProcessOver) {
    const std::wstring child = install(program.folder + L"kind.exe");
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    const HANDLE event = CreateEventW(&inheritable, TRUE, FALSE, nullptr);
    const std::wstring signal = L"set=" + std::to_wstring(reinterpret_cast<UINT_PTR>(event));

    start(child, signal, false, false);
    EXPECT_EQ(report(child).size(), 3U);
    EXPECT_EQ(WaitForSingleObject(event, 300), WAIT_TIMEOUT);

    const auto process = reinterpret_cast<HANDLE>(start(child, signal, false, true));
    EXPECT_EQ(WaitForSingleObject(process, 10000), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_OBJECT_0);
    EXPECT_TRUE(CloseHandle(process));
    CloseHandle(event);
}

TEST_F(StarterProcesses, MessagesRunUntilTheChildHasEnded) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {{L"console", L"sekunde"},
                                                               {L"window", L"fenster"},
                                                               {L"window", L"sekunde (nie bereit)"},
                                                               {L"window", L""}};
    for (const auto& [kind, arguments] : cases) {
        const std::wstring child = install(program.folder + kind + L".exe", kind);
        ticks = 0;
        const DWORD begin = GetTickCount();
        EXPECT_EQ(start(child, arguments, true, false), -1);
        EXPECT_TRUE(started(child)) << kind << arguments;
        if (*arguments) {
            EXPECT_GE(GetTickCount() - begin, 1000U) << kind << arguments;
            EXPECT_GE(ticks, 20) << kind << arguments;
        }
        EXPECT_FALSE(rt.externalProgram.running);
    }
}

TEST_F(StarterProcesses, WhatArrivesDuringTheWaitIsCarriedOut) {
    const std::wstring child = install(program.folder + L"kind.exe");
    const std::wstring client = install(program.folder + L"FastClient.exe");
    onTick = [&] {
        startRemoteMaintenance(rt);
        onTick = [&] { start(client, L"innen", true, false); };
    };
    start(child, L"sekunde", true, false);
    EXPECT_TRUE(report(client).at(0).ends_with(L" innen")) << "the menu's start, then one that waits";
    EXPECT_FALSE(rt.externalProgram.running);
    EXPECT_EQ(rt.runningChildId, 0U);
}

TEST_F(StarterProcesses, QuittingEndsTheWaitBeforeTheChild) {
    const HANDLE release = CreateEventW(nullptr, TRUE, FALSE, L"tarv_starter_test");
    for (const wchar_t* kind : {L"console", L"window"}) {
        onTick = [] { PostQuitMessage(3); };
        const DWORD begin = GetTickCount();
        start(install(program.folder + kind + L".exe", kind), L"bis=tarv_starter_test", true, false);
        EXPECT_LT(GetTickCount() - begin, 20000U) << kind;
        MSG message;
        EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) << kind;
    }
    SetEvent(release);
    CloseHandle(release);
}

TEST_F(StarterProcesses, WhatIsNoProgramIsRefusedSilently) {
    const std::wstring folder = program.folder + L"Ordner.exe";
    const std::wstring text = program.folder + L"Text.exe";
    CreateDirectoryW(folder.c_str(), nullptr);
    CloseHandle(CreateFileW(text.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    for (const std::wstring& path :
         {folder, text, program.folder + L"fehlt.exe", std::wstring(), std::wstring(L"C:\\")}) {
        EXPECT_EQ(start(path, L"", false, false), -1) << path;
        EXPECT_EQ(start(path, L"", false, true), 0) << path;
        EXPECT_EQ(start(path, L"", true, false), -1) << path;
    }
    EXPECT_TRUE(RemoveDirectoryW(folder.c_str()));
    EXPECT_TRUE(DeleteFileW(text.c_str()));
}

} // namespace
} // namespace tarv
