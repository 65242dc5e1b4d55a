#include "tests/support/FaultPlan.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace tarv {
namespace {

// clang-format off
constexpr std::string_view names[] = {
    "Automation.bind", "Automation.create", "Automation.createFromLibrary", "Automation.errorObject",
    "AutomationObject.call", "AutomationObject.get", "AutomationObject.items", "AutomationObject.put",
    "CodePage.fromAnsi", "CodePage.toAnsi",
    "Desktop.activeForm", "Desktop.activeWindow", "Desktop.isWindow", "Desktop.messageBox",
    "Desktop.pumpMessages", "Desktop.quitPending", "Desktop.redraw", "Desktop.setFocus", "Desktop.sleep",
    "DirectorySearch.next",
    "Environment.entries", "Environment.value",
    "FileStore.append", "FileStore.attributes", "FileStore.currentDirectory", "FileStore.length",
    "FileStore.overwrite", "FileStore.remove", "FileStore.replace", "FileStore.search",
    "MachineFacts.computerName", "MachineFacts.localAddress", "MachineFacts.systemDirectory",
    "MachineFacts.userName", "MachineFacts.version", "MachineFacts.windowsDirectory",
    "OwnProgram.path", "OwnProgram.version",
    "Processes.close", "Processes.create", "Processes.startThroughShell", "Processes.waitForInputIdle",
    "Processes.waitForObject",
    "ProfileFiles.getSection", "ProfileFiles.getSectionNames", "ProfileFiles.getString",
    "ProfileFiles.writeString",
    "RegionalSettings.decimalSeparator", "RegionalSettings.thousandsSeparator",
    "ShellOperations.browseForFolder", "ShellOperations.desktopWindow", "ShellOperations.fileOperation",
    "XmlDocument.createElement", "XmlDocument.declaration", "XmlDocument.documentElement",
    "XmlDocument.load", "XmlDocument.loadXml",
    "XmlDocument.parseError", "XmlDocument.putAsync", "XmlDocument.putResolveExternals",
    "XmlDocument.putValidateOnParse", "XmlDocument.save", "XmlDocument.xml",
    "XmlNode.appendChild", "XmlNode.countNodes", "XmlNode.getAttribute", "XmlNode.nodeName",
    "XmlNode.parentNode", "XmlNode.putText", "XmlNode.removeAttribute", "XmlNode.removeChild",
    "XmlNode.selectSingleNode", "XmlNode.setAttribute", "XmlNode.text", "XmlNode.xml",
    "XmlParsers.create",
};
// clang-format on

} // namespace

std::span<const std::string_view> FaultPlan::functions() {
    return names;
}

void FaultPlan::fail(std::string_view function, SystemCode code) {
    Plan& chosen = plan(function);
    chosen.code = code;
    chosen.always = true;
}

void FaultPlan::fail(std::string_view function, SystemCode code, std::initializer_list<int> callNumbers) {
    Plan& chosen = plan(function);
    chosen.code = code;
    for (const int number : callNumbers)
        chosen.numbers.push_back(chosen.calls + number);
}

void FaultPlan::heal() {
    for (auto& [name, planned] : plans_) {
        planned.always = false;
        planned.numbers.clear();
    }
}

std::optional<SystemCode> FaultPlan::enter(std::string_view function) {
    Plan& called = plan(function);
    ++called.calls;
    if (called.always || std::ranges::count(called.numbers, called.calls) != 0)
        return called.code;
    return std::nullopt;
}

FaultPlan::Plan& FaultPlan::plan(std::string_view function) {
    const auto* known = std::ranges::find(names, function);
    if (known == std::end(names))
        throw std::invalid_argument("no such border function: " + std::string(function));
    return plans_[*known];
}

} // namespace tarv
