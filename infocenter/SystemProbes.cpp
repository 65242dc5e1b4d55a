#include "infocenter/SystemProbes.h"

#include "platform/Automation.h"
#include "platform/Platform.h"
#include "platform/SystemFacts.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"

#include <algorithm>
#include <optional>

namespace tarv {
namespace {

constexpr std::wstring_view operatingSystemQuery = L"SELECT * FROM Win32_OperatingSystem";

/// The name of a system that the version call itself tells. Empty text: this version has no name here.
/// Nothing: the management service has to be asked, as newer systems report an old version to older programs.
std::optional<std::wstring_view> nameByVersion(std::uint32_t major, std::uint32_t minor) {
    switch (major) {
    case 3:
        return L"Windows NT 3/3.51";
    case 4:
        return L"Windows NT 4.0";
    case 5:
        return minor == 0 ? L"Windows 2000" : minor == 1 ? L"Windows XP" : L"";
    default:
        return std::nullopt;
    }
}

/// Overwrites `text` with a text property of the object; leaves it when there is none.
void takeProperty(AutomationObject& object, std::wstring_view property, std::wstring& text) {
    const auto value = object.get(property);
    if (!value)
        return;
    if (const auto* found = std::get_if<std::wstring>(&*value))
        text = *found;
}

ObjectRef queryOperatingSystems(Automation& automation) {
    const auto service = automation.bind(L"winmgmts:");
    if (!service || !*service)
        return nullptr;
    const auto result = (*service)->call(L"ExecQuery", {std::wstring(operatingSystemQuery)});
    if (!result)
        return nullptr;
    const auto* systems = std::get_if<ObjectRef>(&*result);
    return systems ? *systems : nullptr;
}

} // namespace

void GetOSNameAndVersion(Runtime& rt, std::wstring& name, std::wstring& version, std::wstring& extra) {
    const VersionInfo info = rt.platform.facts->windowsVersion();
    version = std::to_wstring(info.major) + L"." + std::to_wstring(info.minor);
    extra = L"Build " + std::to_wstring(info.build) + L"  " + CutAtNul(info.servicePack);

    const auto knownName = nameByVersion(info.major, info.minor);
    if (!knownName) {
        GetOSFromWMI(rt, name, version);
        extra.clear();
    } else if (!knownName->empty()) {
        name = *knownName;
    }
}

void GetOSFromWMI(Runtime& rt, std::wstring& name, std::wstring& version) {
    const ObjectRef systems = queryOperatingSystems(*rt.platform.automation);
    if (!systems)
        return;
    const auto items = systems->items();
    if (!items)
        return;
    for (const ObjectRef& system : *items) {
        if (!system)
            continue;
        takeProperty(*system, L"Caption", name);
        takeProperty(*system, L"Version", version);
    }
}

std::wstring CutAtNul(std::wstring_view text) {
    const auto nul = text.find(L'\0');
    if (nul != text.npos && nul > 0)
        return std::wstring(text.substr(0, nul));
    std::wstring blanks(text);
    std::ranges::replace(blanks, L'\0', L' ');
    return std::wstring(trim(blanks));
}

} // namespace tarv
