#pragma once

#include "platform/Desktop.h"
#include "platform/Processes.h"

#include <cstdint>
#include <utility>

#include <windows.h>

namespace tarv {

/// Owner of one system handle. The value that means "no handle" is part of the type, since it is not the
/// same for all; releasing keeps the calling thread's last error, so that a failure can still be read
/// behind the clean-up.
template <class T, void (*close)(T), std::intptr_t invalid = 0>
class Handle {
public:
    Handle() = default;
    explicit Handle(T handle) : handle_(handle) {}
    Handle(Handle&& other) noexcept : handle_(other.release()) {}
    Handle& operator=(Handle&& other) noexcept {
        reset(other.release());
        return *this;
    }
    ~Handle() { reset(); }

    explicit operator bool() const { return handle_ != none(); }
    T get() const { return handle_; }
    T release() { return std::exchange(handle_, none()); }

    void reset(T handle = none()) {
        const T old = std::exchange(handle_, handle);
        if (old == none()) {
            return;
        }
        const DWORD lastError = GetLastError();
        close(old);
        SetLastError(lastError);
    }

private:
    static T none() { return (T)invalid; } // a pointer or a number: only the old cast takes both

    T handle_ = none();
};

inline void closeKernelHandle(HANDLE handle) {
    CloseHandle(handle);
}
inline void closeSearch(HANDLE handle) {
    FindClose(handle);
}
inline void closeModule(HMODULE handle) {
    FreeLibrary(handle);
}
inline void closeEnvironment(wchar_t* block) {
    FreeEnvironmentStringsW(block);
}

using FileHandle = Handle<HANDLE, closeKernelHandle, -1>;
using SearchHandle = Handle<HANDLE, closeSearch, -1>;
using ModuleHandle = Handle<HMODULE, closeModule>;
using EnvironmentBlock = Handle<wchar_t*, closeEnvironment>;

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
