#pragma once

#include <windows.h>

namespace tarv::ui {

/// Class of child windows that their parent draws: it gets WM_DRAWITEM as from an owner-drawn static control.
/// Screen readers take it for one. A real one would load the common controls, a tenth of the start.
const wchar_t* drawnPartClass();

} // namespace tarv::ui
