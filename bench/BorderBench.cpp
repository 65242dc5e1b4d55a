// Existence checks and program starts against the one system call that each stands on.
//
// bench_border CHILD: a console program that ends at once.
#include "bench/Comparison.h"
#include "platform/windows/WindowsPlatform.h"
#include "runtime/Funktionen32/Existence.h"
#include "runtime/Funktionen32/Starter.h"
#include "runtime/Runtime.h"

#include <string>

#include <windows.h>

namespace {

using namespace tarv;
using namespace tarv::bench;

void endOf(HANDLE process) {
    WaitForSingleObject(process, INFINITE);
    CloseHandle(process);
}

void startBare(std::wstring commandLine) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION child{};
    if (CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, NORMAL_PRIORITY_CLASS, nullptr,
                       nullptr, &startup, &child)) {
        CloseHandle(child.hThread);
        endOf(child.hProcess);
    }
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 2)
        return 2;
    const std::wstring child = arguments[1];
    WindowsPlatform windows;
    Runtime rt{windows};

    constexpr int calls = 100;
    bool present = true;
    const Pair checks = byTurns(
        301,
        [&] {
            for (int i = 0; i < calls; ++i)
                present = Uexist(rt, child) && present;
        },
        [&] {
            for (int i = 0; i < calls; ++i)
                present = GetFileAttributesW(child.c_str()) != INVALID_FILE_ATTRIBUTES && present;
        });
    if (!present)
        return 1;
    printRow("`Uexist` of a present file", "GetFileAttributes", "us", perCall(checks, calls), "<= 2");

    const Pair starts = byTurns(
        31,
        [&] {
            std::wstring programArguments, part;
            const std::intptr_t process =
                StartExe(rt, child, 0, programArguments, L"", false, part, false, WindowHandle::none, true);
            endOf(reinterpret_cast<HANDLE>(process));
        },
        [&] { startBare(child); });
    printRow("`StartExe` direct, to the child's end", "CreateProcess", "us", starts, "<= 1.05");
    return 0;
}
