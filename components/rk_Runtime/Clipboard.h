#pragma once

#include <windows.h>

#include <string_view>

namespace tarv::component {

/// Puts a text on the clipboard for `owner`. False when another program holds the clipboard.
bool copyToClipboard(HWND owner, std::wstring_view text);

} // namespace tarv::component
