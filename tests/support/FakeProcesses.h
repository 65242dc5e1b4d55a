#pragma once

#include "platform/Processes.h"
#include "tests/support/FaultPlan.h"

#include <deque>
#include <functional>
#include <set>
#include <vector>

namespace tarv {

struct ShellStart {
    std::wstring file;
    std::wstring arguments;
    std::uint16_t showWindow = 0;

    friend bool operator==(const ShellStart&, const ShellStart&) = default;
};

/// Records what would be started. Every start that is not planned to fail succeeds and opens two handles;
/// closing a handle that is not open fails the running test.
class FakeProcesses : public Processes {
public:
    explicit FakeProcesses(FaultPlan& faults) : faults_(faults) {}

    Answer<ProcessInformation> create(const ProcessRequest& request) override;
    SystemCode startThroughShell(std::wstring_view file, std::wstring_view arguments,
                                 std::uint16_t showWindow) override;
    std::uint32_t waitForInputIdle(KernelHandle process, std::uint32_t milliseconds) override;
    std::uint32_t waitForObject(KernelHandle handle, std::uint32_t milliseconds) override;
    void close(KernelHandle handle) override;

    std::vector<ProcessRequest> created;
    std::vector<ShellStart> shellStarts;
    /// Handles opened by create and not closed yet.
    std::set<KernelHandle> open;

    /// Answers of waitForObject, used up in order; then the process has ended.
    std::deque<std::uint32_t> waits;
    /// Answers of waitForInputIdle, used up in order; then the process is idle.
    std::deque<std::uint32_t> idleWaits;
    std::function<void(const ProcessRequest&)> onCreate;

private:
    std::uint32_t wait(KernelHandle handle, std::deque<std::uint32_t>& scripted);

    FaultPlan& faults_;
    std::uintptr_t lastHandle_ = 0x100;
    std::uint32_t lastId_ = 1000;
};

} // namespace tarv
