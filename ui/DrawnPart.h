#pragma once

#include <windows.h>

namespace tarv::ui {

/// Class of child windows that their parent draws: it gets WM_DRAWITEM as from an owner-drawn static control.
/// Without that control the main window needs no common controls, whose library would take a tenth of the
/// start.
const wchar_t* drawnPartClass();

} // namespace tarv::ui
