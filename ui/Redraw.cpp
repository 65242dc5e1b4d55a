#include "ui/Redraw.h"

namespace tarv::ui {

void SetRedraw(HWND window, VariantBool locked) {
    const auto inverted = static_cast<VariantBool>(~locked);
    SendMessageA(window, WM_SETREDRAW, static_cast<WPARAM>(static_cast<INT_PTR>(inverted)), 0);
}

} // namespace tarv::ui
