#include "infocenter/InfoReport.h"

#include "infocenter/SystemProbes.h"
#include "platform/Platform.h"
#include "platform/SystemFacts.h"
#include "runtime/Funktionen32/Paths.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"

namespace tarv {
namespace {

constexpr std::wstring_view lineEnd = L"\r\n";

std::wstring programVersion(Runtime& rt) {
    const FileVersion version = rt.platform.facts->programVersion();
    return std::to_wstring(version.major) + L"." + std::to_wstring(version.minor) + L"." +
           std::to_wstring(version.revision);
}

} // namespace

std::wstring BuildInfoReport(Runtime& rt) {
    std::wstring name;
    std::wstring version;
    std::wstring extra;
    GetOSNameAndVersion(rt, name, version, extra);

    std::wstring report;
    const auto line = [&](std::wstring_view label, std::wstring_view value = {}) {
        report.append(TranslateText(label)).append(value).append(lineEnd);
    };
    // The values of the first block stand in column 22.
    line(L"[Kundeninfo]");
    line({});
    line(L"  Computername:      ", GetPCName(rt));
    line(L"  Betriebssystem:    ", name + L"  " + extra);
    line(L"     Version:        ", version);
    line({});
    line(L"  Benutzername:      ", GetLoginName(rt));
    line(L"  Lokale IP-Adresse: ", GetLocalIP(rt));
    line(L"  Windows Ordner:    ", GetWinDir(rt));
    line({});
    line(L"[Programm]");
    line(L"  Ordner: ", programFolder(rt));
    line(L"  Version: ", programVersion(rt));
    line({});
    return report;
}

} // namespace tarv
