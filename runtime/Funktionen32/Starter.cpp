#include "runtime/Funktionen32/Starter.h"

#include "platform/Desktop.h"
#include "platform/Platform.h"
#include "platform/Processes.h"
#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/Paths.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"

#include <utility>

namespace tarv {
namespace {

constexpr std::uint32_t normalPriorityClass = 32;
constexpr int roundsForAFirstWindow = 30;
constexpr int roundsBeforeRepainting = 50;

void splitBehindExe(std::wstring& program, std::wstring& arguments, std::wstring& programPart) {
    constexpr std::wstring_view extension = L".EXE";
    const std::wstring capital = upperCase(program);
    const auto found = capital.find(extension);
    if (found == capital.npos || capital.ends_with(extension))
        return;
    const auto end = found + extension.size();
    arguments = trimLeft(arguments + program.substr(end));
    program.resize(end);
    programPart = program;
}

/// What StartExe has made of its arguments.
struct Start {
    std::wstring program;
    std::wstring arguments;
    /// The window to be drawn anew, and the one that had the focus.
    WindowHandle window;
    WindowHandle activeBefore;
};

std::wstring joinedArguments(std::wstring_view arguments, std::wstring_view dataText) {
    std::wstring joined(trim(arguments));
    const std::wstring_view data = trim(dataText);
    if (!data.empty())
        joined.append(L" ").append(data);
    return joined;
}

void runMessages(Runtime& rt, int rounds) {
    for (int i = 0; i < rounds && !rt.platform.desktop->quitPending(); ++i) {
        PumpMessages(rt);
        rt.platform.desktop->sleep(1);
    }
}

Answer<ProcessInformation> startDirect(Runtime& rt, const Start& start) {
    const std::wstring_view program = trim(start.program);
    // Otherwise the first word of the arguments would be taken for the program.
    if (program.empty())
        return Failure{system_code::fileNotFound};
    ProcessRequest request;
    request.commandLine.append(program).append(L" ").append(start.arguments);
    request.inheritHandles = true;
    request.creationFlags = normalPriorityClass;
    return rt.platform.processes->create(request);
}

void reportRefusedStart(Runtime& rt, std::wstring_view program, SystemCode code) {
    const bool missing = code == system_code::fileNotFound || code == system_code::pathNotFound;
    ErrorRecord error = runtimeErrorRecord(missing ? error_number::fileNotFound : error_number::invalidCall);
    const std::wstring text = L"Fehler beim Start Externes Programm\n" + std::wstring(program);
    AskErrorMsg(rt, error, TranslateText(text), TranslateText(L"Start Exe"));
}

void startAndForget(Runtime& rt, const Start& start) {
    SystemCode code = system_code::fileNotFound;
    if (!trim(start.program).empty())
        code = startProgram(rt, programFile(rt, start.program), start.program, start.arguments,
                            window_style::normalFocus);
    if (code != 0 && IsDesign(rt))
        reportRefusedStart(rt, start.program, code);
    else
        runMessages(rt, roundsForAFirstWindow);
}

void giveFocusBack(Runtime& rt, WindowHandle activeBefore) {
    Desktop& desktop = *rt.platform.desktop;
    for (const WindowHandle window : {desktop.activeForm(), activeBefore}) {
        if (!desktop.isWindow(window))
            continue;
        desktop.setFocus(window);
        return;
    }
}

void startAndWait(Runtime& rt, const Start& start) {
    rt.externalProgram = {true, start.program};
    Answer<ProcessInformation> child = startDirect(rt, start);
    if (start.window != WindowHandle::none) {
        runMessages(rt, roundsBeforeRepainting);
        // The window may have been closed meanwhile.
        if (rt.platform.desktop->isWindow(start.window))
            rt.platform.desktop->redraw(start.window);
        PumpMessages(rt);
    }
    if (child)
        WaitForProcessEnd(rt, *child);
    rt.externalProgram = {};
    giveFocusBack(rt, start.activeBefore);
}

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

std::intptr_t StartExe(Runtime& rt, std::wstring_view program, std::int32_t /*ignored*/,
                       std::wstring& arguments, std::wstring_view dataText, bool wait,
                       std::wstring& programPart, bool compose, WindowHandle window, bool direct) {
    std::wstring path(program);
    splitBehindExe(path, arguments, programPart);
    Start start{lowerCase(path),
                compose ? MakeProgramDataKey(arguments, dataText) : joinedArguments(arguments, dataText),
                window, rt.platform.desktop->activeWindow()};
    if (upperCase(GetFileName(start.program, false)) == L"KELVAR.EXE")
        start.program = GetDruckEXE(rt);

    if (wait) {
        startAndWait(rt, start);
    } else if (direct) {
        const Answer<ProcessInformation> child = startDirect(rt, start);
        if (!child)
            return 0;
        rt.platform.processes->close(child->thread);
        return static_cast<std::intptr_t>(child->process);
    } else {
        startAndForget(rt, start);
    }
    return direct ? 0 : -1;
}

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
