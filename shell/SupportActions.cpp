#include "shell/SupportActions.h"

#include "platform/Platform.h"
#include "platform/SystemFacts.h"
#include "runtime/Funktionen32/Paths.h"
#include "runtime/Funktionen32/Starter.h"
#include "runtime/Runtime.h"

namespace tarv {

void openServicesConsole(Runtime& rt) {
    const std::wstring systemFolder = rt.platform.facts->systemDirectory();
    // A bare "mmc.exe" would be looked for in the current folder.
    if (systemFolder.empty())
        return;
    const std::wstring console = AddBackslash(systemFolder) + L"mmc.exe";
    const std::wstring arguments =
        rt.platform.facts->variable(L"SystemRoot") + L"\\system32\\services.msc /s";

    startProgram(rt, console, L"mmc", arguments, window_style::minimizedFocus);
}

void startRemoteMaintenance(Runtime& rt) {
    const std::wstring client = AddBackslash(programFolder(rt)) + L"FastClient.exe";
    std::wstring arguments;
    // The starter only ever writes this one; the name in it is never started.
    std::wstring programPart = L"NetviewerK.exe";
    StartExe(rt, client, 0, arguments, {}, false, programPart, true, WindowHandle::none, false);
}

} // namespace tarv
