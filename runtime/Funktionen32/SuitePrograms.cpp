#include "runtime/Funktionen32/SuitePrograms.h"

#include "platform/Desktop.h"
#include "platform/Platform.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/ModRkIni.h"
#include "runtime/Runtime.h"

#include <algorithm>
#include <array>

namespace tarv {
namespace {

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
