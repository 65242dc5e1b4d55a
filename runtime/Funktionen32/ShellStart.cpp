#include "runtime/Funktionen32/ShellStart.h"

#include "platform/FileStore.h"
#include "platform/Platform.h"
#include "platform/Processes.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"

#include <algorithm>

namespace tarv {
namespace {

bool isSeparator(wchar_t character) {
    return character == L'\\' || character == L'/';
}

bool isFullPath(std::wstring_view path) {
    if (path.size() < 3)
        return false;
    const wchar_t drive = upperCase(path.substr(0, 1)).front();
    const bool fromDriveRoot = drive >= L'A' && drive <= L'Z' && path[1] == L':' && isSeparator(path[2]);
    return fromDriveRoot || (isSeparator(path[0]) && isSeparator(path[1]));
}

bool isFile(Runtime& rt, std::wstring_view path) {
    const auto attributes = rt.platform.files->attributes(path);
    return attributes && (*attributes & attribute::directory) == 0;
}

/// How much of a program text names the file; the rest are arguments.
std::size_t fileLength(std::wstring_view program) {
    constexpr std::size_t extensionLength = 4;
    const std::wstring capital = upperCase(program);
    if (capital.ends_with(L".EXE"))
        return program.size();
    std::size_t dot = capital.find(L".EXE");
    if (dot == capital.npos)
        for (const wchar_t* extension : {L".COM ", L".BAT ", L".CMD "})
            dot = std::min(dot, capital.find(extension));
    return dot == capital.npos ? program.size() : dot + extensionLength;
}

SystemCode startElevated(Runtime& rt, std::wstring_view file, std::wstring_view program,
                         std::wstring_view arguments, std::uint16_t windowStyle) {
    program = trim(program);
    const std::size_t length = fileLength(program);
    std::wstring all(program.substr(length));
    all.append(L" ").append(arguments);
    return rt.platform.processes->startThroughShell(file.empty() ? program.substr(0, length) : file,
                                                    trim(all), windowStyle);
}

} // namespace

SystemCode shellStart(Runtime& rt, std::wstring_view file, std::wstring_view program,
                      std::wstring_view arguments, std::uint16_t windowStyle) {
    ProcessRequest request;
    request.applicationName = file;
    request.commandLine.append(program).append(L" ").append(arguments);
    request.commandLine = trim(request.commandLine);
    request.showWindow = windowStyle;

    Processes& processes = *rt.platform.processes;
    const Answer<ProcessInformation> started = processes.create(request);
    if (!started) {
        return started.error() == system_code::elevationRequired
                   ? startElevated(rt, file, program, arguments, windowStyle)
                   : started.error();
    }
    processes.close(started->thread);
    processes.close(started->process);
    return 0;
}

std::wstring programFile(Runtime& rt, std::wstring_view program) {
    program = trim(program);
    std::wstring file(program.substr(0, fileLength(program)));
    if (!isFullPath(file))
        return {};
    const std::size_t name = file.find_last_of(L"\\/") + 1;
    const bool hasExtension = file.find(L'.', name) != file.npos;
    if (name < file.size() && !hasExtension && !isFile(rt, file))
        file += L".exe";
    return file;
}

} // namespace tarv
