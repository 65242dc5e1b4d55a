#include "runtime/Funktionen32/ShellStart.h"

#include "platform/FileStore.h"
#include "platform/Platform.h"
#include "platform/Processes.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"

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
    const auto attributes = rt.platform.files.attributes(path);
    return attributes && (*attributes & attribute::directory) == 0;
}

} // namespace

SystemCode shellStart(Runtime& rt, std::wstring_view applicationName, std::wstring_view commandLine,
                      std::uint16_t windowStyle) {
    ProcessRequest request;
    request.applicationName = applicationName;
    request.commandLine = commandLine;
    request.showWindow = windowStyle;

    Processes& processes = rt.platform.processes;
    const Answer<ProcessInformation> started = processes.create(request);
    if (!started)
        return started.error();
    processes.close(started->thread);
    processes.close(started->process);
    return 0;
}

std::wstring programFile(Runtime& rt, std::wstring_view program) {
    std::wstring file(trim(program));
    if (!isFullPath(file))
        return {};
    const std::size_t name = file.find_last_of(L"\\/") + 1;
    const bool hasExtension = file.find(L'.', name) != file.npos;
    if (name < file.size() && !hasExtension && !isFile(rt, file))
        file += L".exe";
    return file;
}

} // namespace tarv
