#pragma once

#include <windows.h>

namespace tarv::ui {

/// Teaches a read-only multi-line edit control the manners of a report: Ctrl+A selects all, copying without a
/// selection copies all, and Tab, Enter and Esc belong to the window.
void makeReportBox(HWND edit);

} // namespace tarv::ui
