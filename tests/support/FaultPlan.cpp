#include "tests/support/FaultPlan.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>

namespace tarv {
namespace {

using namespace std::string_view_literals;

constexpr std::array names{
    "Automation.bind"sv,
    "Automation.create"sv,
    "Automation.createFromLibrary"sv,
    "Automation.errorObject"sv,
    "AutomationObject.call"sv,
    "AutomationObject.get"sv,
    "AutomationObject.items"sv,
    "AutomationObject.put"sv,
    "CodePage.fromAnsi"sv,
    "CodePage.toAnsi"sv,
    "Desktop.activeForm"sv,
    "Desktop.activeWindow"sv,
    "Desktop.isWindow"sv,
    "Desktop.messageBox"sv,
    "Desktop.pumpMessages"sv,
    "Desktop.setFocus"sv,
    "Desktop.sleep"sv,
    "DirectorySearch.next"sv,
    "Environment.entries"sv,
    "Environment.value"sv,
    "FileStore.append"sv,
    "FileStore.attributes"sv,
    "FileStore.currentDirectory"sv,
    "FileStore.length"sv,
    "FileStore.overwrite"sv,
    "FileStore.remove"sv,
    "FileStore.search"sv,
    "MachineFacts.computerName"sv,
    "MachineFacts.localAddress"sv,
    "MachineFacts.systemDirectory"sv,
    "MachineFacts.userName"sv,
    "MachineFacts.version"sv,
    "MachineFacts.windowsDirectory"sv,
    "OwnProgram.path"sv,
    "OwnProgram.version"sv,
    "Processes.close"sv,
    "Processes.create"sv,
    "Processes.startThroughShell"sv,
    "Processes.waitForInputIdle"sv,
    "Processes.waitForObject"sv,
    "ProfileFiles.getSection"sv,
    "ProfileFiles.getSectionNames"sv,
    "ProfileFiles.getString"sv,
    "ProfileFiles.writeString"sv,
    "RegionalSettings.decimalSeparator"sv,
    "RegionalSettings.thousandsSeparator"sv,
    "ShellOperations.browseForFolder"sv,
    "ShellOperations.desktopWindow"sv,
    "ShellOperations.fileOperation"sv,
};

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

int FaultPlan::calls(std::string_view function) const {
    return const_cast<FaultPlan*>(this)->plan(function).calls;
}

std::optional<SystemCode> FaultPlan::enter(std::string_view function) {
    Plan& called = plan(function);
    ++called.calls;
    if (called.always || std::ranges::find(called.numbers, called.calls) != called.numbers.end())
        return called.code;
    return std::nullopt;
}

FaultPlan::Plan& FaultPlan::plan(std::string_view function) {
    const auto* known = std::ranges::find(names, function);
    if (known == names.end())
        throw std::invalid_argument("no such border function: " + std::string(function));
    return plans_[*known];
}

} // namespace tarv
