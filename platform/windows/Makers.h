#pragma once

#include "platform/Platform.h"

#include <memory>

struct tagMSG;

namespace tarv {

/// The implementations, one in the file of that name each.
std::unique_ptr<Automation> makeAutomation();
std::unique_ptr<Desktop> makeDesktop(bool (*filter)(tagMSG& message));
std::unique_ptr<FileStore> makeFileStore();
std::unique_ptr<Processes> makeProcesses();
std::unique_ptr<ProfileFiles> makeProfileFiles();
std::unique_ptr<ShellOperations> makeShellOperations();
std::unique_ptr<SystemFacts> makeSystemFacts();
std::unique_ptr<XmlParsers> makeXmlParsers();

} // namespace tarv
