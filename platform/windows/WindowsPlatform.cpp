#include "platform/windows/WindowsPlatform.h"

#include "platform/Automation.h"
#include "platform/Desktop.h"
#include "platform/FileStore.h"
#include "platform/Processes.h"
#include "platform/ProfileFiles.h"
#include "platform/ShellOperations.h"
#include "platform/SystemFacts.h"
#include "platform/XmlDom.h"
#include "platform/windows/Makers.h"

namespace tarv {

WindowsPlatform::WindowsPlatform(MessageFilter filter) {
    const auto keep = [this](auto&& part) {
        const auto made = part.get();
        parts_.push_back(std::forward<decltype(part)>(part));
        return made;
    };
    profiles = keep(makeProfileFiles());
    files = keep(makeFileStore());
    facts = keep(makeSystemFacts());
    processes = keep(makeProcesses());
    desktop = keep(makeDesktop(filter));
    shell = keep(makeShellOperations());
    automation = keep(makeAutomation());
    xml = keep(makeXmlParsers());
}

} // namespace tarv
