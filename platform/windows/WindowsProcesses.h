#pragma once

#include "platform/Processes.h"

namespace tarv {

class WindowsProcesses final : public Processes {
public:
    Answer<ProcessInformation> create(const ProcessRequest& request) override;
    SystemCode startThroughShell(std::wstring_view file, std::wstring_view arguments,
                                 std::uint16_t showWindow) override;
    std::uint32_t waitForInputIdle(KernelHandle process, std::uint32_t milliseconds) override;
    std::uint32_t waitForObject(KernelHandle handle, std::uint32_t milliseconds) override;
    void close(KernelHandle handle) override;
};

} // namespace tarv
