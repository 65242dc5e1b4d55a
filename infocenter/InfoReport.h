#pragma once

#include <string>

namespace tarv {

struct Runtime;

/// The report on computer and installation: fixed-pitch text, lines ended by CR LF. Always produced; a probe
/// that fails shows its fallback.
std::wstring BuildInfoReport(Runtime& rt);

} // namespace tarv
