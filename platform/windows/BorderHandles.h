#pragma once

#include "platform/Desktop.h"
#include "platform/Processes.h"

#include <windows.h>

namespace tarv {

/// The border's handle types are the system's under another name.
inline HWND toSystem(WindowHandle window) {
    return reinterpret_cast<HWND>(static_cast<std::uintptr_t>(window));
}
inline WindowHandle toBorder(HWND window) {
    return static_cast<WindowHandle>(reinterpret_cast<std::uintptr_t>(window));
}
inline HANDLE toSystem(KernelHandle handle) {
    return reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(handle));
}
inline KernelHandle toBorder(HANDLE handle) {
    return static_cast<KernelHandle>(reinterpret_cast<std::uintptr_t>(handle));
}

} // namespace tarv
