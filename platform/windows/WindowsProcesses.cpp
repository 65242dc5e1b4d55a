#include "platform/Processes.h"
#include "platform/windows/BorderHandles.h"
#include "platform/windows/Makers.h"
#include "win/LateEntry.h"
#include "win/NoSystemBoxes.h"
#include "win/SystemText.h"

#include <algorithm>

#include <shellapi.h>

namespace tarv {

namespace {

namespace late {
const LateEntry<decltype(&::ShellExecuteExW)> ShellExecuteExW{L"shell32.dll", "ShellExecuteExW"};
} // namespace late

bool isBatchFile(std::wstring_view file) {
    const std::wstring extension(file.substr(file.size() - std::min<std::size_t>(file.size(), 4)));
    return lstrcmpiW(extension.c_str(), L".bat") == 0 || lstrcmpiW(extension.c_str(), L".cmd") == 0;
}

bool isThere(const std::wstring& file) {
    const NoSystemBoxes silence;
    return GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES;
}

/// A batch file is not started by its name: the documented way is the command interpreter as application. The
/// system's own shortcut hands it the bare command line, whose first word it would run when the path has
/// blanks. With /s it takes off the outer quotes and nothing else, so it runs that very file.
ProcessRequest throughInterpreter(ProcessRequest request) {
    const std::wstring system =
        filledText([](wchar_t* buffer, DWORD size) { return GetSystemDirectoryW(buffer, size); });
    const std::wstring arguments = request.commandLine.substr(request.applicationName.size());
    request.commandLine = L"cmd.exe /s /c \"\"" + request.applicationName + L"\"" + arguments + L"\"";
    request.applicationName = system + L"\\cmd.exe";
    return request;
}

class WindowsProcesses final : public Processes {
public:
    Answer<ProcessInformation> create(const ProcessRequest& request) override {
        if (isBatchFile(request.applicationName) &&
            request.commandLine.starts_with(request.applicationName)) {
            // The interpreter would start and report a missing file in a window of its own.
            if (!isThere(request.applicationName))
                return Failure{SystemCode{GetLastError()}};
            return create(throughInterpreter(request));
        }
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        if (request.showWindow) {
            startup.dwFlags = STARTF_USESHOWWINDOW;
            startup.wShowWindow = *request.showWindow;
        }
        std::wstring commandLine = request.commandLine; // the call writes into its command line
        PROCESS_INFORMATION started{};
        if (!CreateProcessW(request.applicationName.empty() ? nullptr : request.applicationName.c_str(),
                            commandLine.data(), nullptr, nullptr, request.inheritHandles,
                            request.creationFlags, nullptr, nullptr, &startup, &started)) {
            return Failure{SystemCode{GetLastError()}};
        }
        return ProcessInformation{toBorder(started.hProcess), toBorder(started.hThread), started.dwProcessId,
                                  started.dwThreadId};
    }

    SystemCode startThroughShell(std::wstring_view file, std::wstring_view arguments,
                                 std::uint16_t showWindow) override {
        const std::wstring terminatedFile(file);
        const std::wstring terminatedArguments(arguments);
        SHELLEXECUTEINFOW request{};
        request.cbSize = sizeof request;
        // No error boxes; the elevation question is asked by another process and comes nevertheless. The
        // start is complete on return, so that its result is the real one.
        request.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
        // Without an owner the elevation question may wait unseen in the task bar.
        request.hwnd = GetActiveWindow();
        request.lpVerb = L"open";
        request.lpFile = terminatedFile.c_str();
        request.lpParameters = terminatedArguments.c_str();
        request.nShow = showWindow;
        return late::ShellExecuteExW(&request) ? ERROR_SUCCESS : GetLastError();
    }

    std::uint32_t waitForInputIdle(KernelHandle process, std::uint32_t milliseconds) override {
        return WaitForInputIdle(toSystem(process), milliseconds);
    }

    std::uint32_t waitForObject(KernelHandle handle, std::uint32_t milliseconds) override {
        return WaitForSingleObject(toSystem(handle), milliseconds);
    }

    void close(KernelHandle handle) override {
        if (handle != KernelHandle::none)
            CloseHandle(toSystem(handle));
    }
};

} // namespace

std::unique_ptr<Processes> makeProcesses() {
    return std::make_unique<WindowsProcesses>();
}

} // namespace tarv
