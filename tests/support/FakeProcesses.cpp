#include "tests/support/FakeProcesses.h"

#include <gtest/gtest.h>

namespace tarv {

Answer<ProcessInformation> FakeProcesses::create(const ProcessRequest& request) {
    created.push_back(request);
    if (const auto code = faults_.enter("Processes.create"))
        return Failure{*code};
    const ProcessInformation information{KernelHandle(lastHandle_ + 4), KernelHandle(lastHandle_ + 8),
                                         lastId_ + 4, lastId_ + 8};
    lastHandle_ += 8;
    lastId_ += 8;
    open.insert({information.process, information.thread});
    if (onCreate)
        onCreate(request);
    return information;
}

SystemCode FakeProcesses::startThroughShell(std::wstring_view file, std::wstring_view arguments,
                                            std::uint16_t showWindow) {
    shellStarts.push_back({std::wstring(file), std::wstring(arguments), showWindow});
    return faults_.enter("Processes.startThroughShell").value_or(0);
}

std::uint32_t FakeProcesses::waitForInputIdle(KernelHandle process, std::uint32_t) {
    return faults_.enter("Processes.waitForInputIdle") ? wait_result::failed : wait(process, idleWaits);
}

std::uint32_t FakeProcesses::waitForObject(KernelHandle handle, std::uint32_t) {
    return faults_.enter("Processes.waitForObject") ? wait_result::failed : wait(handle, waits);
}

std::uint32_t FakeProcesses::wait(KernelHandle handle, std::deque<std::uint32_t>& scripted) {
    if (!open.contains(handle))
        return wait_result::failed;
    if (scripted.empty())
        return wait_result::signaled;
    const std::uint32_t answer = scripted.front();
    scripted.pop_front();
    return answer;
}

void FakeProcesses::close(KernelHandle handle) {
    faults_.enter("Processes.close");
    if (open.erase(handle) == 0)
        ADD_FAILURE() << "closed a handle that is not open: " << static_cast<std::uintptr_t>(handle);
}

} // namespace tarv
