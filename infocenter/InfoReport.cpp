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

InfoFacts readInfoFacts(Runtime& rt) {
    InfoFacts facts;
    GetOSNameAndVersion(rt, facts.system, facts.systemVersion, facts.systemExtra);
    facts.computer = GetPCName(rt);
    facts.user = GetLoginName(rt);
    facts.localAddress = GetLocalIP(rt);
    facts.windowsFolder = GetWinDir(rt);
    facts.programFolder = programFolder(rt);
    facts.programVersion = programVersion(rt);
    return facts;
}

std::wstring reportText(const InfoFacts& facts) {
    std::wstring report;
    const auto line = [&](std::wstring_view label, std::wstring_view value = {}) {
        report.append(TranslateText(label)).append(value).append(lineEnd);
    };
    // The values of the first block stand in column 22.
    line(L"[Kundeninfo]");
    line({});
    line(L"  Computername:      ", facts.computer);
    line(L"  Betriebssystem:    ", facts.system + L"  " + facts.systemExtra);
    line(L"     Version:        ", facts.systemVersion);
    line({});
    line(L"  Benutzername:      ", facts.user);
    line(L"  Lokale IP-Adresse: ", facts.localAddress);
    line(L"  Windows Ordner:    ", facts.windowsFolder);
    line({});
    line(L"[Programm]");
    line(L"  Ordner: ", facts.programFolder);
    line(L"  Version: ", facts.programVersion);
    line({});
    return report;
}

std::wstring BuildInfoReport(Runtime& rt) {
    return reportText(readInfoFacts(rt));
}

} // namespace tarv
