#include "platform/windows/WindowsProcesses.h"

#include "platform/windows/Handle.h"
#include "win/LateEntry.h"

#include <shellapi.h>

namespace tarv {

namespace late {
const LateEntry<decltype(&::ShellExecuteExW)> ShellExecuteExW{L"shell32.dll", "ShellExecuteExW"};
} // namespace late

Answer<ProcessInformation> WindowsProcesses::create(const ProcessRequest& request) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    if (request.showWindow) {
        startup.dwFlags = STARTF_USESHOWWINDOW;
        startup.wShowWindow = *request.showWindow;
    }
    std::wstring commandLine = request.commandLine; // the call writes into its command line
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(request.applicationName.empty() ? nullptr : request.applicationName.c_str(),
                        commandLine.data(), nullptr, nullptr, request.inheritHandles, request.creationFlags,
                        nullptr, nullptr, &startup, &started)) {
        return Failure{SystemCode{GetLastError()}};
    }
    return ProcessInformation{toBorder(started.hProcess), toBorder(started.hThread), started.dwProcessId,
                              started.dwThreadId};
}

SystemCode WindowsProcesses::startThroughShell(std::wstring_view file, std::wstring_view arguments,
                                               std::uint16_t showWindow) {
    const std::wstring terminatedFile(file);
    const std::wstring terminatedArguments(arguments);
    SHELLEXECUTEINFOW request{};
    request.cbSize = sizeof request;
    // No error boxes; the elevation question is asked by another process and comes nevertheless. The start
    // is complete on return, so that its result is the real one.
    request.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
    // Without an owner the elevation question may wait unseen in the task bar.
    request.hwnd = GetActiveWindow();
    request.lpVerb = L"open";
    request.lpFile = terminatedFile.c_str();
    request.lpParameters = terminatedArguments.c_str();
    request.nShow = showWindow;
    return late::ShellExecuteExW(&request) ? ERROR_SUCCESS : GetLastError();
}

std::uint32_t WindowsProcesses::waitForInputIdle(KernelHandle process, std::uint32_t milliseconds) {
    return WaitForInputIdle(toSystem(process), milliseconds);
}

std::uint32_t WindowsProcesses::waitForObject(KernelHandle handle, std::uint32_t milliseconds) {
    return WaitForSingleObject(toSystem(handle), milliseconds);
}

void WindowsProcesses::close(KernelHandle handle) {
    if (handle != KernelHandle::none) {
        CloseHandle(toSystem(handle));
    }
}

} // namespace tarv
