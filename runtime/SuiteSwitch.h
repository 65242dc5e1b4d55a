#pragma once

#include <string_view>

namespace tarv {

struct Runtime;

/// Whether a switch of group "Debug" in "Pexoran.INI" is on: "-1", "1" or "TRUE" in any case, blanks around
/// it ignored. Only reads; a missing entry stays missing.
bool suiteSwitch(Runtime& rt, std::wstring_view entry);

} // namespace tarv
