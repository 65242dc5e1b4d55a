#pragma once

#include "platform/Processes.h"
#include "scripted/FaultPlan.h"

#include <set>
#include <stdexcept>
#include <tuple>
#include <vector>

namespace tarv {

/// Records what would be started. Every start that is not planned to fail succeeds and opens two handles;
/// closing a handle that is not open throws a logic_error.
struct FakeProcesses : Processes, Planned {
    using Planned::Planned;

    Answer<ProcessInformation> create(const ProcessRequest& request) override {
        created.push_back(request);
        if (const auto code = faults_.enter("Processes.create"))
            return Failure{*code};
        lastNumber_ += 8;
        const ProcessInformation started{KernelHandle(lastNumber_), KernelHandle(lastNumber_ + 4),
                                         lastNumber_ + 1000, lastNumber_ + 1004};
        open.insert({started.process, started.thread});
        return started;
    }
    SystemCode startThroughShell(std::wstring_view file, std::wstring_view arguments,
                                 std::uint16_t showWindow) override {
        shellStarts.emplace_back(file, arguments, showWindow);
        return faults_.enter("Processes.startThroughShell").value_or(0);
    }
    std::uint32_t waitForInputIdle(KernelHandle process, std::uint32_t) override {
        const bool fails = faults_.enter("Processes.waitForInputIdle") || !open.contains(process);
        return fails ? wait_result::failed : nextOf(idleWaits, wait_result::signaled);
    }
    std::uint32_t waitForObject(KernelHandle handle, std::uint32_t) override {
        const bool fails = faults_.enter("Processes.waitForObject") || !open.contains(handle);
        return fails ? wait_result::failed : nextOf(waits, wait_result::signaled);
    }
    void close(KernelHandle handle) override {
        if (open.erase(handle) == 0)
            throw std::logic_error("closes a handle that is not open");
    }

    std::vector<ProcessRequest> created;
    /// File, arguments, how the window is to be shown.
    std::vector<std::tuple<std::wstring, std::wstring, std::uint16_t>> shellStarts;
    /// Handles opened by create and not closed yet.
    std::set<KernelHandle> open;
    /// Answers of the waits, used up in order; then the process has ended, or is idle.
    std::deque<std::uint32_t> waits;
    std::deque<std::uint32_t> idleWaits;

private:
    std::uint32_t lastNumber_ = 0x100;
};

} // namespace tarv
