#pragma once

#include "platform/Answer.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

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

struct FileVersion {
    std::uint16_t major = 0;
    std::uint16_t minor = 0;
    std::uint16_t revision = 0;
};

/// Facts about this computer, its user's settings and the running program, read anew at every call.
class SystemFacts {
public:
    virtual ~SystemFacts() = default;

    /// All entries "NAME=value" of the environment in the system's order, hidden ones ("=C:=C:\x") included.
    virtual std::vector<std::wstring> environment() = 0;

    /// The value of an environment variable as it stands; the name is looked up without regard to case. Empty
    /// when missing.
    virtual std::wstring variable(std::wstring_view name) = 0;

    /// Full path of the running executable.
    virtual std::wstring programPath() = 0;

    /// First three numbers of its version resource; zeros when it has none.
    virtual FileVersion programVersion() = 0;

    /// Zeros when the system refuses.
    virtual VersionInfo windowsVersion() = 0;

    /// By the ANSI functions, with a buffer of 255 characters each; without the terminating NUL.
    virtual Answer<std::wstring> computerName() = 0;
    virtual Answer<std::wstring> userName() = 0;

    /// The Windows folder by the ANSI function, without a trailing "\" unless it is a drive root; empty when
    /// the call fails or the folder does not fit into `size` characters.
    virtual std::wstring windowsDirectory(std::uint32_t size) = 0;

    /// The system folder (where mmc.exe lies), without a trailing "\".
    virtual std::wstring systemDirectory() = 0;

    /// First IPv4 address of the host's own name in dotted decimal form.
    virtual Answer<std::wstring> localAddress() = 0;

    /// As the system stores them: usually one character, empty or longer where a user made it so.
    virtual std::wstring decimalSeparator() = 0;
    virtual std::wstring thousandsSeparator() = 0;

    /// Between the suite's wide texts and the system's ANSI code page. A character outside the code page
    /// becomes the system's replacement, usually "?".
    virtual std::string toAnsi(std::wstring_view text) = 0;
    virtual std::wstring fromAnsi(std::string_view bytes) = 0;
};

} // namespace tarv
