#pragma once

#include "win/Handle.h"

#include <span>

namespace tarv {

/// One entry of the main window's menu. A caption of null is a separator line.
struct MenuEntry {
    int id;
    const wchar_t* caption;
    bool visible = true;
};

struct MenuColumn {
    const wchar_t* caption;
    std::span<const MenuEntry> entries;
};

/// The menu as it is defined, hidden entries included.
std::span<const MenuColumn> mainMenuDefinition();

/// The menu as the user sees it: hidden entries are left out, their commands stay wired in the window.
Menu createMainMenu();

} // namespace tarv
