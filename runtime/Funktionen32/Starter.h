#pragma once

#include "platform/Answer.h"
#include "platform/Desktop.h"
#include "platform/Processes.h"

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
/// - Neither `wait` nor `direct`: started like startProgram, window normal with focus. A program named by a
/// full path
///   starts that very file; one that needs elevation starts through the shell once, so that Windows can ask.
/// - `direct`: the system takes the program from the command line, also where it is a full path with blanks.
///   Handles are inherited.
/// - `wait`: started like `direct`; messages run until the program has ended. A given `window` is drawn
///   anew once the program had time to show itself; the focus goes back to the active form, or to the window
///   that was active before. A refused start is not waited for.
///
/// The result is -1, or 0 with `direct`; with `direct` and without `wait` it is the process handle, and the
/// caller closes it (0 when the start is refused). It has the size of a pointer, since a handle does not fit
/// a 32-bit value by its type. Nothing is shown on failure, except inside the development environment.
std::intptr_t StartExe(Runtime& rt, std::wstring_view program, std::int32_t ignored, std::wstring& arguments,
                       std::wstring_view dataText, bool wait, std::wstring& programPart, bool compose,
                       WindowHandle window, bool direct);

/// The marker "an external program is running". With `set` it takes `running` and, where that is true,
/// `name`. Without `set` it reports both: `name` receives the file name, as "GAEB (...)" for a program whose
/// name begins with "G2K". The result is the marker's flag.
bool MarkExternalProgram(Runtime& rt, bool& running, bool set, std::wstring& name);

/// Waits for a child process and lets the program's messages run meanwhile: first until the child waits for
/// input, then until it ends. While the second wait lasts, `Runtime::runningChildId` holds its id. The wait
/// ends early when the program is asked to quit. Both handles are closed and become `none` in `child`; an
/// invalid process handle ends the wait at once.
void WaitForProcessEnd(Runtime& rt, ProcessInformation& child);

/// Full path of the suite's print program: the variant that "Pexoran.INI", group "DRUCKOPT", entry "PROGRAMM"
/// names ("NET" or "VB6", in any case; anything else counts as "NET"). "CHOOSE" asks the user.
std::wstring GetDruckEXE(Runtime& rt);

/// Full path of a program of the suite in the configured program folder, in its sub-folder "DotNet\" for the
/// newer programs. A folder in `programFile` is dropped. What does not end in ".exe" comes back unchanged.
std::wstring GetEXEmitPfad(Runtime& rt, std::wstring_view programFile);

/// Window styles of a started program; the same numbers as the system's show commands.
namespace window_style {
inline constexpr std::uint16_t normalFocus = 1;
inline constexpr std::uint16_t minimizedFocus = 2;
} // namespace window_style

/// Starts the command line `program` and `arguments`, joined by a blank, and neither waits for the program
/// nor watches it. A given `file` is the very file to start; without one the system takes the program from
/// the command line and searches for it. Where it needs elevation, the start is repeated through the Windows
/// shell, since only that can ask the user. Answers 0 or the system's error code.
SystemCode startProgram(Runtime& rt, std::wstring_view file, std::wstring_view program,
                        std::wstring_view arguments, std::uint16_t windowStyle);

/// The file that a program text means, where it begins with a full path (drive or network share): that file
/// and no other, whatever lies at a shorter path that ends at one of its blanks. Arguments begin behind the
/// first ".exe", unless the text ends in ".exe"; without any ".exe" behind ".com", ".bat" or ".cmd" and a
/// blank. As in the system's own search ".exe" is added to a name without extension, unless a file of exactly
/// that name exists. Empty for every other text, drive-relative paths too: those the system searches for.
std::wstring programFile(Runtime& rt, std::wstring_view program);

} // namespace tarv
