#pragma once

#include "platform/ShellOperations.h"

namespace tarv {

class WindowsShellOperations final : public ShellOperations {
public:
    ShellFileResult fileOperation(const ShellFileRequest& request) override;
    Answer<std::wstring> browseForFolder(const FolderRequest& request) override;
    WindowHandle desktopWindow() override;
};

} // namespace tarv
