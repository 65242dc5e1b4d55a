#pragma once

#include <windows.h>

namespace tarv::component {

/// The DLL itself, for its resources and its own path.
HINSTANCE moduleInstance();
void setModuleInstance(HINSTANCE instance);

/// Keeps the DLL in the process until the process ends. Every load costs the host a TLS slot and two handles,
/// which the static C++ run-time library does not give back, and hosts free idle libraries between reports.
void keepModuleLoaded();

} // namespace tarv::component
