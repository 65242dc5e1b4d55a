#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace tarv::ui {

/// Asks for the name of a text file by Windows' own dialog, which asks before a file of that name is
/// replaced. `suggestion` without a folder means the user's documents folder. Nothing when the user cancels.
std::optional<std::wstring> askSaveName(HWND owner, const std::wstring& title, const std::wstring& kind,
                                        const std::wstring& suggestion);

} // namespace tarv::ui
