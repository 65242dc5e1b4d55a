#pragma once

#include <windows.h>

namespace tarv::ui {

/// Teaches a read-only multi-line edit control the manners of a report: Ctrl+A selects all, copying without a
/// selection copies all, and Tab, Enter and Esc belong to the window. The window's answer to WM_CONTEXTMENU
/// says whether it has shown a menu; 0 brings the control's own.
void makeReportBox(HWND edit);

/// The answer to WM_CTLCOLORSTATIC: read-only, but meant to be read, so the colours of a text and not those
/// of a disabled field.
LRESULT reportBoxColours(HDC dc);

/// Leaves `inset` pixels around the text, and shows each scroll bar only where the text does not fit. To be
/// called after every change of text, font or size.
void fitReportBox(HWND edit, int inset);

} // namespace tarv::ui
