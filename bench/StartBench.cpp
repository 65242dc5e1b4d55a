// bench_start BARE PROGRAM STAGES: time from CreateProcess to the first complete paint of the window, both
// programs by turns, and the largest working set each had by then. Then both starts stage by stage; all but
// the first stage STAGES prints itself.
#include "bench/Comparison.h"

#include <windows.h>

#include <psapi.h>

#include <cstdio>
#include <cwchar>
#include <string>

namespace {

using namespace tarv::bench;

struct Start {
    double microseconds = 0;
    double peakKilobytes = 0;
};

/// Painted: shown, nothing left to draw, and its message loop answers.
bool isPainted(HWND window) {
    DWORD_PTR ignored = 0;
    return window && IsWindowVisible(window) && !GetUpdateRect(window, nullptr, FALSE) &&
           SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, 5000, &ignored);
}

/// Zero time when the window does not appear within ten seconds.
Start startOnce(const wchar_t* program, const wchar_t* windowClass) {
    std::wstring line = L"\"" + std::wstring(program) + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    const double begun = microseconds();
    if (!CreateProcessW(program, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process))
        return {};
    Start result;
    HWND window = nullptr;
    while (result.microseconds == 0 && microseconds() - begun < 10e6) {
        window = FindWindowW(windowClass, nullptr);
        if (isPainted(window))
            result.microseconds = microseconds() - begun;
        else
            Sleep(1); // to ask all the time would take the processor from who is being timed
    }
    PROCESS_MEMORY_COUNTERS memory{};
    if (GetProcessMemoryInfo(process.hProcess, &memory, sizeof memory))
        result.peakKilobytes = static_cast<double>(memory.PeakWorkingSetSize) / 1024;
    if (window)
        PostMessageW(window, WM_CLOSE, 0, 0);
    if (WaitForSingleObject(process.hProcess, 5000) != WAIT_OBJECT_0)
        TerminateProcess(process.hProcess, 1);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return result;
}

/// Runs a program to its end; what it prints goes where ours goes.
void runToEnd(const wchar_t* program, const wchar_t* argument) {
    std::wstring line = L"\"" + std::wstring(program) + L"\" " + argument;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &process))
        return;
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

/// Both starts once, stage by stage.
void printStages(const wchar_t* bare, const wchar_t* stages) {
    double own = 0, yardstick = 0;
    {
        const Lap lap(own);
        runToEnd(stages, L"nothing");
    }
    {
        const Lap lap(yardstick);
        runToEnd(bare, L"nothing");
    }
    std::printf("stage\town\tprocess and libraries\t%.1f\n", own);
    std::printf("stage\tbare\tprocess and libraries\t%.1f\n", yardstick);
    std::fflush(stdout);
    runToEnd(stages, L"own");
    runToEnd(stages, L"bare");
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 4)
        return 2;
    constexpr int rounds = 31;
    std::vector<double> bareTimes, ourTimes, bareMemory, ourMemory;
    for (int round = 0; round <= rounds; ++round) {
        const Start bare = startOnce(arguments[1], L"BareWindow");
        const Start ours = startOnce(arguments[2], L"frmMain");
        if (bare.microseconds == 0 || ours.microseconds == 0) {
            std::puts("a window did not appear");
            return 1;
        }
        if (round == 0)
            continue; // the first start reads the files from disk
        bareTimes.push_back(bare.microseconds);
        ourTimes.push_back(ours.microseconds);
        bareMemory.push_back(bare.peakKilobytes);
        ourMemory.push_back(ours.peakKilobytes);
    }
    printRow("Start to first paint", "bare window, same manifest", "ms",
             perCall({median(ourTimes), median(bareTimes)}, 1000), "<= 1.15");
    printRow("Peak memory at first paint", "bare window, same manifest", "KB",
             {median(ourMemory), median(bareMemory)}, "<= 1.5");
    for (int round = 0; round < rounds; ++round)
        printStages(arguments[1], arguments[3]);
    return 0;
}
