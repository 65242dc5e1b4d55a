#pragma once

#include <cstdint>
#include <utility>

#include <windows.h>

namespace tarv {

/// Owner of one handle: one line per kind. The value that means "no handle" is part of the type, since it is
/// not the same for all; releasing keeps the calling thread's last error, so that a failure can still be read
/// behind the clean-up.
template <class T, auto& close, std::intptr_t invalid = 0>
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
        if (old == none())
            return;
        const DWORD lastError = GetLastError();
        close(old);
        SetLastError(lastError);
    }

private:
    static T none() { return (T)invalid; } // a pointer or a number: only the old cast takes both

    T handle_ = none();
};

using FileHandle = Handle<HANDLE, CloseHandle, -1>;
using SearchHandle = Handle<HANDLE, FindClose, -1>;
using ModuleHandle = Handle<HMODULE, FreeLibrary>;
using EnvironmentBlock = Handle<wchar_t*, FreeEnvironmentStringsW>;
using RegistryKey = Handle<HKEY, RegCloseKey>;

using Font = Handle<HFONT, DeleteObject>;
using Bitmap = Handle<HBITMAP, DeleteObject>;
using MemoryDc = Handle<HDC, DeleteDC>;
using Menu = Handle<HMENU, DestroyMenu>;
using Icon = Handle<HICON, DestroyIcon>;

/// Puts an object into a device context and the former one back.
class Selected {
public:
    Selected(HDC dc, HGDIOBJ object) : dc_(dc), former_(SelectObject(dc, object)) {}
    ~Selected() { SelectObject(dc_, former_); }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

private:
    HDC dc_;
    HGDIOBJ former_;
};

} // namespace tarv
