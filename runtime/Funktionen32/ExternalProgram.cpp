#include "runtime/Funktionen32/ExternalProgram.h"

#include "platform/Desktop.h"
#include "platform/Platform.h"
#include "runtime/Funktionen32/Developer.h"
#include "runtime/Funktionen32/Paths.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"

#include <utility>

namespace tarv {
namespace {

/// Milliseconds for which the program's windows may stand still at a time.
constexpr std::uint32_t longestPause = 10;

void pump(Runtime& rt, int times) {
    for (int i = 0; i < times; ++i)
        PumpMessages(rt);
}

bool isRunning(Runtime& rt, KernelHandle process) {
    return rt.platform.processes->waitForObject(process, 0) == wait_result::timeout;
}

/// A console program, a dead handle and an ended process are no windowed program: no wait. One that never
/// becomes idle is waited for until it ends.
void waitForInputIdle(Runtime& rt, KernelHandle process) {
    while (!rt.platform.desktop->quitPending() &&
           rt.platform.processes->waitForInputIdle(process, longestPause) == wait_result::timeout &&
           isRunning(rt, process))
        PumpMessages(rt);
}

void closeOnce(Runtime& rt, KernelHandle& handle) {
    const KernelHandle closed = std::exchange(handle, KernelHandle::none);
    if (closed != KernelHandle::none)
        rt.platform.processes->close(closed);
}

} // namespace

bool MarkExternalProgram(Runtime& rt, bool& running, bool set, std::wstring& name) {
    ExternalProgramMarker& marker = rt.externalProgram;
    if (set) {
        marker.running = running;
        marker.name = running ? name : std::wstring();
    } else {
        running = marker.running;
        name = GetFileName(marker.name, false);
        if (upperCase(name).starts_with(L"G2K"))
            name = L"GAEB (" + name + L")";
    }
    return marker.running;
}

void WaitForProcessEnd(Runtime& rt, ProcessInformation& child) {
    Desktop& desktop = *rt.platform.desktop;
    waitForInputIdle(rt, child.process);
    closeOnce(rt, child.thread);
    rt.runningChildId = 0;
    PumpMessages(rt);

    while (!desktop.quitPending() && isRunning(rt, child.process)) {
        PumpMessages(rt);
        desktop.sleep(1);
        if (rt.runningChildId == 0) {
            pump(rt, 2);
            rt.runningChildId = child.processId;
        }
        for (int i = 0; i < 3; ++i) {
            pump(rt, 2);
            desktop.sleep(longestPause);
        }
        pump(rt, 3);
    }
    closeOnce(rt, child.process);
    rt.runningChildId = 0;
}

} // namespace tarv
