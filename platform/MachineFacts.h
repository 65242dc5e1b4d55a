#pragma once

#include "platform/Answer.h"

#include <cstdint>
#include <string>

namespace tarv {

/// What GetVersionExA reports (OSVERSIONINFOA).
struct VersionInfo {
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t build = 0;
    std::uint32_t platformId = 0;
    /// All 128 characters of the field, pre-filled with blanks before the call.
    std::wstring servicePack;
};

/// Facts about this computer, from the system functions in their ANSI form.
class MachineFacts {
public:
    virtual ~MachineFacts() = default;

    /// Zeros when the system refuses.
    virtual VersionInfo version() = 0;

    /// Buffer of 255 characters each; without the terminating NUL.
    virtual Answer<std::wstring> computerName() = 0;
    virtual Answer<std::wstring> userName() = 0;

    /// The Windows folder, without a trailing "\" unless it is a drive root; empty when the call fails or
    /// the folder does not fit into `size` characters.
    virtual std::wstring windowsDirectory(std::uint32_t size) = 0;

    /// The system folder (where mmc.exe lies), without a trailing "\".
    virtual std::wstring systemDirectory() = 0;

    /// First IPv4 address of the host's own name in dotted decimal form.
    virtual Answer<std::wstring> localAddress() = 0;
};

} // namespace tarv
