#pragma once

#include "platform/Desktop.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tarv {

struct Runtime;

/// Starts a program of the suite or an outside tool, and waits for its end where asked.
///
/// Command arguments are `arguments` and `dataText` trimmed and joined by a blank, or with `compose` the key
/// "PRG:... DATA:..." made of them. What `program` carries behind its first ".exe" is moved to the end of
/// `arguments`, and `programPart` receives the rest; otherwise both stay as they are. The program text is
/// used in lower case, as it stands; "kelvar.exe" in any folder stands for the print program that is
/// configured.
///
/// - Neither `wait` nor `direct`: the shell start, window normal with focus. A program named by a full path
///   starts that very file; one that needs elevation starts through the shell once, so that Windows can ask.
/// - `direct`: the system takes the program from the command line, also where it is a full path with blanks.
///   Handles are inherited.
/// - `wait`: started like `direct`; messages run until the program has ended. A given `window` is drawn anew
/// once
///   the program had time to show itself; the focus goes back to the active form, or to the window that was
///   active before. A refused start is not waited for.
///
/// The result is -1, or 0 with `direct`; with `direct` and without `wait` it is the process handle, and the
/// caller closes it (0 when the start is refused). It has the size of a pointer, since a handle does not fit
/// a 32-bit value by its type. Nothing is shown on failure, except inside the development environment.
std::intptr_t StartExe(Runtime& rt, std::wstring_view program, std::int32_t ignored, std::wstring& arguments,
                       std::wstring_view dataText, bool wait, std::wstring& programPart, bool compose,
                       WindowHandle window, bool direct);

} // namespace tarv
