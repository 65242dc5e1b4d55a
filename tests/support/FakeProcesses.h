#pragma once

#include "platform/Processes.h"
#include "tests/support/FaultPlan.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>

namespace tarv {

struct ShellStart {
    std::wstring file;
    std::wstring arguments;
    std::uint16_t showWindow = 0;

    friend bool operator==(const ShellStart&, const ShellStart&) = default;
};

/// Records what would be started. Every start that is not planned to fail succeeds and opens two handles;
/// closing a handle that is not open fails the running test.
class FakeProcesses : public Processes, Planned {
public:
    using Planned::Planned;

    Answer<ProcessInformation> create(const ProcessRequest& request) override {
        created.push_back(request);
        if (const auto code = faults_.enter("Processes.create"))
            return Failure{*code};
        lastNumber_ += 8;
        const ProcessInformation started{KernelHandle(lastNumber_), KernelHandle(lastNumber_ + 4),
                                         lastNumber_ + 1000, lastNumber_ + 1004};
        open.insert({started.process, started.thread});
        if (onCreate)
            onCreate(request);
        return started;
    }

    SystemCode startThroughShell(std::wstring_view file, std::wstring_view arguments,
                                 std::uint16_t showWindow) override {
        shellStarts.push_back({std::wstring(file), std::wstring(arguments), showWindow});
        return faults_.enter("Processes.startThroughShell").value_or(0);
    }

    std::uint32_t waitForInputIdle(KernelHandle process, std::uint32_t) override {
        return wait("Processes.waitForInputIdle", process, idleWaits);
    }

    std::uint32_t waitForObject(KernelHandle handle, std::uint32_t) override {
        return wait("Processes.waitForObject", handle, waits);
    }

    void close(KernelHandle handle) override {
        faults_.enter("Processes.close");
        if (handle != KernelHandle::none && open.erase(handle) == 0)
            ADD_FAILURE() << "closed a handle that is not open: " << static_cast<std::uintptr_t>(handle);
    }

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
    std::uint32_t wait(std::string_view function, KernelHandle handle, std::deque<std::uint32_t>& scripted) {
        if (faults_.enter(function) || !open.contains(handle))
            return wait_result::failed;
        return nextOf(scripted, wait_result::signaled);
    }

    std::uint32_t lastNumber_ = 0x100;
};

} // namespace tarv
