#pragma once

#include <string>
#include <string_view>

namespace tarv {

struct Runtime;

/// Appends one line to the trace file: running number, " - ", program name, tab, text, CR LF, in the system
/// code page. The file is opened and closed for each line, so it is complete even if the program dies right
/// after.
///
/// `startNewFile` empties the file first; `keepFileName` uses the name of the last call without reading the
/// configuration again. The line is written whatever the configured switch says. A line that cannot be
/// written is lost silently, but still counts.
void DebugTrace(Runtime& rt, std::wstring_view text, bool startNewFile = false, bool keepFileName = false);

/// Always true; the first call reads the configured switch.
bool DebugTraceEnabled(Runtime& rt);

/// The switch as configured: "Pexoran.INI", group "Debug", entry "DebugON" is "-1", "1" or "TRUE" in any
/// case.
bool ReadDebugSwitch(Runtime& rt);

/// Full path of the trace file: "rkZAL_Debug.txt" in the program folder, or "SaveDebugIN" of group "Debug"; a
/// name ending in ".txt" gets the suffix "DebugDateiZusatz" in front of its extension.
std::wstring GetDebugFileName(Runtime& rt);

} // namespace tarv
