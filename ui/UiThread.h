#pragma once

#include <exception>
#include <vector>

namespace tarv::ui {

class Window;

/// What the windows of the user-interface thread share.
struct UiThread {
    /// The living top-level windows, oldest first.
    std::vector<Window*> windows;
    /// What a message handler left uncaught: Windows cannot carry it through its own frames.
    std::exception_ptr failure;
};

UiThread& uiThread();

} // namespace tarv::ui
