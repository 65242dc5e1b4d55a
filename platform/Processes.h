#pragma once

#include "platform/Answer.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarv {

/// A handle of the kernel; `none` stands for no handle.
enum class KernelHandle : std::uintptr_t {
    none = 0
};

struct ProcessRequest {
    /// The very file to start. Empty: the system takes it from the command line and searches for it.
    std::wstring applicationName;
    std::wstring commandLine;
    bool inheritHandles = false;
    std::uint32_t creationFlags = 0;
    /// Window style of the first window (SW_...); left to the program when absent.
    std::optional<std::uint16_t> showWindow;
};

struct ProcessInformation {
    KernelHandle process = KernelHandle::none;
    KernelHandle thread = KernelHandle::none;
    std::uint32_t processId = 0;
    std::uint32_t threadId = 0;
};

namespace wait_result {
inline constexpr std::uint32_t signaled = 0;
inline constexpr std::uint32_t timeout = 258;
inline constexpr std::uint32_t failed = 0xFFFFFFFF;
} // namespace wait_result

/// Starting other programs and waiting for them.
class Processes {
public:
    virtual ~Processes() = default;

    /// CreateProcess. The caller closes both handles. A batch file as `applicationName` runs in the system's
    /// command interpreter when the command line begins with it.
    virtual Answer<ProcessInformation> create(const ProcessRequest& request) = 0;

    /// The same start through the shell (verb "open"), which asks for elevation where a program needs it.
    virtual SystemCode startThroughShell(std::wstring_view file, std::wstring_view arguments,
                                         std::uint16_t showWindow) = 0;

    /// Both answer a wait_result; `failed` also for a handle that is not one.
    virtual std::uint32_t waitForInputIdle(KernelHandle process, std::uint32_t milliseconds) = 0;
    virtual std::uint32_t waitForObject(KernelHandle handle, std::uint32_t milliseconds) = 0;

    virtual void close(KernelHandle handle) = 0;
};

} // namespace tarv
