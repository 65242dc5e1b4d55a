#pragma once

#include <windows.h>

#include <string_view>

namespace tarv::ui {

/// Puts a text on the clipboard. False when another program keeps holding the clipboard (half a second).
bool copyToClipboard(HWND owner, std::wstring_view text);

} // namespace tarv::ui
