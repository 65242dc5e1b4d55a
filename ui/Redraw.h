#pragma once

#include <windows.h>

#include <cstdint>

namespace tarv::ui {

/// The suite's 16-bit Boolean.
using VariantBool = std::int16_t;
inline constexpr VariantBool variantTrue = -1;
inline constexpr VariantBool variantFalse = 0;

/// Switches a window's drawing off (flag true) and on (flag false): WM_SETREDRAW with the bitwise NOT of the
/// flag.
void SetRedraw(HWND window, VariantBool locked);

/// Keeps a window's drawing off while it lives, and switches it on again whatever happens in between.
class RedrawLock {
public:
    explicit RedrawLock(HWND window) : window_(window) { SetRedraw(window_, variantTrue); }
    ~RedrawLock() {
        if (IsWindow(window_))
            SetRedraw(window_, variantFalse);
    }
    RedrawLock(const RedrawLock&) = delete;
    RedrawLock& operator=(const RedrawLock&) = delete;

private:
    HWND window_;
};

} // namespace tarv::ui
