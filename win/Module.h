#pragma once

#include <windows.h>

extern "C" IMAGE_DOS_HEADER __ImageBase; // NOLINT: the linker's name for the beginning of a module

namespace tarv {

/// The program or library that the caller is part of, for its resources, window classes and path.
inline HINSTANCE thisModule() {
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

} // namespace tarv
