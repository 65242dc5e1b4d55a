#pragma once

#include <functional>
#include <span>
#include <string_view>

namespace tarv {

struct Runtime;

/// Takes a text in UTF-8; false when not all of it could be written.
using Output = std::function<bool(std::string_view utf8)>;

namespace exit_code {
inline constexpr int done = 0;
/// Done, but a configuration file is missing or cannot be read.
inline constexpr int fileMissing = 1;
inline constexpr int wrongCall = 2;
inline constexpr int notWritable = 3;
} // namespace exit_code

/// The whole program: reads the arguments (without the program's name), writes report and tree, answers the
/// exit code. Beside the file that an argument names it leaves nothing on the disk, and it asks nobody.
int runReport(Runtime& rt, std::span<const wchar_t* const> arguments, const Output& out,
              const Output& errors);

} // namespace tarv
