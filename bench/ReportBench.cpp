// bench_report BARE REPORT: time from the start of each program to its end, by turns.
#include "bench/Comparison.h"

#include <windows.h>

#include <string>

namespace {

bool run(const wchar_t* program, HANDLE out) {
    std::wstring line = L"\"" + std::wstring(program) + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = out;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &process))
        return false;
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 1;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code == 0;
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    using namespace tarv::bench;
    if (count != 3)
        return 2;
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    const HANDLE out = CreateFileW(L"NUL", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                   OPEN_EXISTING, 0, nullptr);
    bool ran = true;
    const auto bare = [&] { ran = run(arguments[1], out) && ran; };
    const auto report = [&] { ran = run(arguments[2], out) && ran; };
    byTurns(1, report, bare); // the first start reads the files from disk
    const Pair measured = byTurns(31, report, bare);
    CloseHandle(out);
    if (!ran) {
        std::puts("a program failed");
        return 1;
    }
    printRow("TarvReport from start to end", "console program with the same queries", "ms",
             perCall(measured, 1000), "<= 1.3");
    return 0;
}
