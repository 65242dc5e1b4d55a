#pragma once

#include "platform/Processes.h"

#include <string>

namespace tarv {

struct Runtime;

/// The marker "an external program is running". With `set` it takes `running` and, where that is true,
/// `name`. Without `set` it reports both: `name` receives the file name, as "GAEB (...)" for a program whose
/// name begins with "G2K". The result is the marker's flag.
bool MarkExternalProgram(Runtime& rt, bool& running, bool set, std::wstring& name);

/// Waits for a child process and lets the program's messages run meanwhile: first until the child waits for
/// input, then until it ends. While the second wait lasts, `Runtime::runningChildId` holds its id. The wait
/// ends early when the program is asked to quit. Both handles are closed and become `none` in `child`; an
/// invalid process handle ends the wait at once.
void WaitForProcessEnd(Runtime& rt, ProcessInformation& child);

} // namespace tarv
