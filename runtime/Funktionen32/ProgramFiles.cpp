#include "runtime/Funktionen32/Starter.h"

#include "platform/Desktop.h"
#include "platform/FileStore.h"
#include "platform/Platform.h"
#include "platform/Processes.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/ModRkIni.h"
#include "runtime/Runtime.h"

#include <algorithm>
#include <array>

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

/// Programs of the newer generation, installed in the sub-folder "DotNet\".
constexpr std::array<std::wstring_view, 8> dotNetKeys{
    L"KELVAR.NET",        L"ADRESSEN.NET", L"ANGEBOT.NET",  L"AUFMASS.NET",
    L"KOSTENPLANUNG.NET", L"RAUMBUCH.NET", L"RECHNUNG.NET", L"VERGABE.NET",
};

std::wstring askForVariant(Runtime& rt) {
    const std::wstring text = TranslateText(L"GetDruckEXE: \r\n"
                                            L"Der aktuelle INI-Eintrag ist: [DRUCKOPT] PROGRAMM=CHOOSE \r\n"
                                            L"Soll die DotNetDruckvariante gestartet werden press <yes>.\r\n"
                                            L"Für VB6-Druckvariante press <no>");
    const std::int32_t answer = rt.platform.desktop->messageBox(
        text, TranslateText(L"Auswahl Druckvariante NET or VB6"),
        message_box::yesNo + message_box::question + message_box::systemModal);
    return answer == message_box::answerNo ? L"VB6" : L"NET";
}

} // namespace

SystemCode startProgram(Runtime& rt, std::wstring_view file, std::wstring_view program,
                        std::wstring_view arguments, std::uint16_t windowStyle) {
    ProcessRequest request;
    request.applicationName = file;
    request.commandLine.append(program).append(L" ").append(arguments);
    request.commandLine = trim(request.commandLine);
    request.showWindow = windowStyle;

    Processes& processes = *rt.platform.processes;
    const Answer<ProcessInformation> started = processes.create(request);
    if (!started) {
        if (started.error() != system_code::elevationRequired)
            return started.error();
        program = trim(program);
        const std::size_t length = fileLength(program);
        const std::wstring rest = std::wstring(program.substr(length)).append(L" ").append(arguments);
        return processes.startThroughShell(file.empty() ? program.substr(0, length) : file, trim(rest),
                                           windowStyle);
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

std::wstring GetDruckEXE(Runtime& rt) {
    std::wstring variant = upperCase(suiteText(rt, L"DRUCKOPT", L"PROGRAMM", L"NET"));
    if (variant == L"CHOOSE")
        variant = askForVariant(rt);
    if (variant == L"VB6")
        return GetMachineDirectory(rt, L"PROGRAMM", false) + L"kelvar6.exe";
    return GetEXEmitPfad(rt, L"Kelvar.Net.exe");
}

std::wstring GetEXEmitPfad(Runtime& rt, std::wstring_view programFile) {
    if (programFile.size() <= 4 || !upperCase(programFile).ends_with(L".EXE"))
        return std::wstring(programFile);

    const std::wstring key = upperCase(GetFileNameFromPath(programFile, true));
    std::wstring path = GetMachineDirectory(rt, L"Programm", false);
    if (std::ranges::find(dotNetKeys, key) != dotNetKeys.end())
        path += GetDotNetFolderName();
    return path + GetFileNameFromPath(programFile, false);
}

} // namespace tarv
