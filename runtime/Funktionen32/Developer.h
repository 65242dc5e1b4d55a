#pragma once

namespace tarv {

struct Runtime;

/// True only inside the development environment; always false in a built program.
bool IsDesign(const Runtime& rt);

/// Developer mode of this machine: "Pexoran.INI", group "Debug", entry "Entwicklung" is "-1", "1" or "TRUE"
/// in any case. Read once per process, and never written back.
bool bIstEntwicklung(Runtime& rt);

/// Handles the waiting window messages, unless the runtime's suppression flag is set.
void PumpMessages(Runtime& rt);

} // namespace tarv
