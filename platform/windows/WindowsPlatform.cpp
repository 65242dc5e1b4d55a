#include "platform/windows/WindowsPlatform.h"

#include "platform/windows/WindowsAutomation.h"
#include "platform/windows/WindowsCodePage.h"
#include "platform/windows/WindowsDesktop.h"
#include "platform/windows/WindowsEnvironment.h"
#include "platform/windows/WindowsFileStore.h"
#include "platform/windows/WindowsMachineFacts.h"
#include "platform/windows/WindowsOwnProgram.h"
#include "platform/windows/WindowsProcesses.h"
#include "platform/windows/WindowsProfileFiles.h"
#include "platform/windows/WindowsRegionalSettings.h"
#include "platform/windows/WindowsShellOperations.h"
#include "platform/windows/WindowsXmlDom.h"

namespace tarv {

struct WindowsPlatform::Implementation {
    WindowsProfileFiles profiles;
    WindowsFileStore files;
    WindowsEnvironment environment;
    WindowsOwnProgram program;
    WindowsProcesses processes;
    WindowsDesktop desktop;
    WindowsRegionalSettings regional;
    WindowsMachineFacts machine;
    WindowsShellOperations shell;
    WindowsAutomation automation;
    WindowsCodePage codePage;
    WindowsXmlParsers xml;
    Platform border{profiles, files,   environment, program,    processes, desktop,
                    regional, machine, shell,       automation, codePage,  xml};
};

WindowsPlatform::WindowsPlatform() : implementation_(std::make_unique<Implementation>()) {}

WindowsPlatform::~WindowsPlatform() = default;

Platform& WindowsPlatform::border() {
    return implementation_->border;
}

void WindowsPlatform::setMessageFilter(MessageFilter filter) {
    implementation_->desktop.setMessageFilter(filter);
}

} // namespace tarv
