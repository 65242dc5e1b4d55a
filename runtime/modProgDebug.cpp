#include "runtime/modProgDebug.h"

#include "platform/FileStore.h"
#include "platform/Platform.h"
#include "platform/SystemFacts.h"
#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/Paths.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/ModRkIni.h"
#include "runtime/Runtime.h"

#include <limits>

namespace tarv {

bool ReadDebugSwitch(Runtime& rt) {
    return suiteSwitch(rt, L"DebugON");
}

bool DebugTraceEnabled(Runtime& rt) {
    if (!rt.trace.switchRead) {
        rt.trace.switchValue = ReadDebugSwitch(rt);
        rt.trace.switchRead = true;
    }
    // The support staff rely on a trace being there: whether the switch was read counts, not what it says.
    return rt.trace.switchRead;
}

std::wstring GetDebugFileName(Runtime& rt) {
    std::wstring name = suiteText(rt, L"Debug", L"SaveDebugIN", {});
    if (name.empty())
        name = programFolder(rt) + L"\\rkZAL_Debug.txt";

    const std::wstring suffix = suiteText(rt, L"Debug", L"DebugDateiZusatz", {});
    constexpr std::size_t extensionLength = 4;
    if (!suffix.empty() && upperCase(name).ends_with(L".TXT"))
        name.insert(name.size() - extensionLength, suffix);
    return name;
}

void DebugTrace(Runtime& rt, std::wstring_view text, bool startNewFile, bool keepFileName) {
    if (rt.trace.off || !DebugTraceEnabled(rt))
        return;
    TraceState& trace = rt.trace;
    std::wstring name =
        !keepFileName || startNewFile || trace.fileName.empty() ? GetDebugFileName(rt) : trace.fileName;

    if (trace.lineCounter < std::numeric_limits<std::int32_t>::max())
        ++trace.lineCounter;
    std::wstring line = std::to_wstring(trace.lineCounter) + L" - " + programName(rt) + L'\t';
    line.append(text).append(L"\r\n");

    FileStore& files = *rt.platform.files;
    const std::string bytes = rt.platform.facts->toAnsi(line);
    // A line that cannot be written is lost on purpose: the trace never disturbs the program. Whether there
    // is a file is asked only where nothing could be appended: the question costs an eighth of a line.
    if (startNewFile || (files.append(name, bytes) != 0 && !files.length(name)))
        static_cast<void>(files.overwrite(name, bytes));
    trace.fileName = std::move(name);
}

} // namespace tarv
