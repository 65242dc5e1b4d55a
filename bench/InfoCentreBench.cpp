// The info centre's load, split into its stages, for 10, 100 and 1,000 groups of ten entries. Runs over the real
// border; the times of the profile functions and of the trace file are taken at the border.
#include "bench/Stopwatch.h"
#include "bench/TimedBorder.h"
#include "infocenter/InfoReport.h"
#include "infocenter/IniTree.h"
#include "infocenter/SystemProbes.h"
#include "platform/windows/WindowsPlatform.h"
#include "runtime/Runtime.h"

#include <windows.h>

#include <objbase.h>

#include <array>
#include <cstdio>
#include <string>

namespace {

using namespace tarv;
using namespace tarv::bench;

struct Stages {
    double report = 0;
    double management = 0;
    double trace = 0;
    double profiles = 0;
    double tree = 0;
};

std::wstring temporaryFolder() {
    std::array<wchar_t, MAX_PATH> folder{};
    GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    return std::wstring(folder.data()) + L"tarvenik-bench";
}

void writeInstallation(const std::wstring& folder, int groups) {
    CreateDirectoryW(folder.c_str(), nullptr);
    CreateDirectoryW((folder + L"\\TARVENIK").c_str(), nullptr);
    std::string text;
    for (int group = 0; group < groups; ++group) {
        text += "[Gruppe" + std::to_string(group) + "]\r\n";
        for (int entry = 0; entry < 10; ++entry)
            text += "Eintrag" + std::to_string(entry) + "=N:\\TARVENIK\\Daten\\" + std::to_string(entry) + "\r\n";
    }
    const HANDLE file = CreateFileW((folder + L"\\TARVENIK\\Q_Machine.INI").c_str(), GENERIC_WRITE, 0, nullptr,
                                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    CloseHandle(file);
    DeleteFileW((folder + L"\\TARVENIK\\QV.ini").c_str());
}

Stages measureOnce(Platform& border) {
    Stages stages;
    TimedProfileFiles profiles(border.profiles, stages.profiles);
    TimedFileStore files(border.files, stages.trace);
    Platform timed{profiles,          files,          border.environment, border.program,
                   border.processes,   border.desktop, border.regional,    border.machine,
                   border.shell,       border.automation, border.codePage, border.xml};
    Runtime rt{timed};

    std::wstring name, version, extra;
    {
        const Lap lap(stages.management);
        GetOSFromWMI(rt, name, version);
    }
    double report = 0;
    {
        const Lap lap(report);
        BuildInfoReport(rt);
    }
    stages.report = std::max(0.0, report - stages.management);
    stages.profiles = stages.trace = 0;
    double tree = 0;
    {
        const Lap lap(tree);
        ReadIniTree(rt);
    }
    stages.tree = tree - stages.profiles - stages.trace;
    return stages;
}

Stages measure(Platform& border) {
    std::array<std::vector<double>, 5> all;
    for (int round = 0; round < 9; ++round) {
        const Stages once = measureOnce(border);
        const std::array<double, 5> values{once.report, once.management, once.trace, once.profiles, once.tree};
        for (std::size_t i = 0; i < values.size(); ++i)
            all[i].push_back(values[i]);
    }
    return {median(all[0]), median(all[1]), median(all[2]), median(all[3]), median(all[4])};
}

} // namespace

int main() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    {
        const std::wstring folder = temporaryFolder();
        SetEnvironmentVariableW(L"ProgramData", folder.c_str());
        WindowsPlatform windows;
        std::puts("info centre's load in ms, medians of 9 (ratio: per group against 10 groups)");
        std::puts("groups  report     WMI   trace  profiles  our tree     sum   ratio");
        double perGroup = 0;
        for (const int groups : {10, 100, 1000}) {
            writeInstallation(folder, groups);
            const Stages s = measure(windows.border());
            const double growing = s.trace + s.profiles + s.tree;
            if (perGroup == 0)
                perGroup = growing / groups;
            std::printf("%6d %7.2f %7.2f %7.2f %9.2f %9.2f %7.2f  %6.2f\n", groups, s.report / 1000,
                        s.management / 1000, s.trace / 1000, s.profiles / 1000, s.tree / 1000,
                        (growing + s.report + s.management) / 1000, growing / groups / perGroup);
        }
    }
    CoUninitialize();
    return 0;
}
