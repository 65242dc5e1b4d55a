#pragma once

#include "platform/Answer.h"
#include "platform/Desktop.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tarv {

/// SHFILEOPSTRUCT without the fields the suite leaves empty.
struct ShellFileRequest {
    std::uint32_t operation = 0;
    /// Paths separated by NUL and ended by two NULs.
    std::wstring source;
    std::wstring target;
    std::uint16_t flags = 0;
};

struct ShellFileResult {
    std::int32_t code = 0;
    bool aborted = false;
};

struct FolderRequest {
    WindowHandle owner = WindowHandle::none;
    std::wstring title;
    std::uint32_t flags = 0;
};

/// File operations and folder choice of the Windows shell, with its own windows.
class ShellOperations {
public:
    virtual ~ShellOperations() = default;

    virtual ShellFileResult fileOperation(const ShellFileRequest& request) = 0;

    /// The chosen folder's path. Fails when the user cancels and for a folder outside the file system.
    virtual Answer<std::wstring> browseForFolder(const FolderRequest& request) = 0;

    virtual WindowHandle desktopWindow() = 0;
};

} // namespace tarv
