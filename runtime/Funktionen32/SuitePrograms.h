#pragma once

#include <string>
#include <string_view>

namespace tarv {

struct Runtime;

/// Full path of the suite's print program: the variant that "Pexoran.INI", group "DRUCKOPT", entry "PROGRAMM"
/// names ("NET" or "VB6", in any case; anything else counts as "NET"). "CHOOSE" asks the user.
std::wstring GetDruckEXE(Runtime& rt);

/// Full path of a program of the suite in the configured program folder, in its sub-folder "DotNet\" for the
/// newer programs. A folder in `programFile` is dropped. What does not end in ".exe" comes back unchanged.
std::wstring GetEXEmitPfad(Runtime& rt, std::wstring_view programFile);

} // namespace tarv
