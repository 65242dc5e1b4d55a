#pragma once

#include "platform/Answer.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tarv {

struct Runtime;

/// Window styles of a started program; the same numbers as the system's show commands.
namespace window_style {
inline constexpr std::uint16_t normalFocus = 1;
inline constexpr std::uint16_t minimizedFocus = 2;
} // namespace window_style

/// The run time's shell start: starts the command line `program` and `arguments`, joined by a blank, and
/// neither waits for the program nor watches it. A given `file` is the very file to start; without one the
/// system takes the program from the command line and searches for it. Where it needs elevation the same goes
/// through the shell once, since only that can ask the user. Answers 0 or the system's error code.
SystemCode shellStart(Runtime& rt, std::wstring_view file, std::wstring_view program,
                      std::wstring_view arguments, std::uint16_t windowStyle);

/// The file that a program text means, where it is a full path (drive or network share): that file and no
/// other, whatever lies at a shorter path that ends at one of its blanks. What stands behind the first ".exe"
/// of a text that does not end so, or else behind ".com", ".bat" or ".cmd" and a blank, are arguments. As in
/// the system's own search ".exe" is added to a name without extension, unless a file of exactly that name
/// exists. Empty for every other program text, drive-relative ones included: those the system searches for.
std::wstring programFile(Runtime& rt, std::wstring_view program);

} // namespace tarv
