#pragma once

#include "ui/Window.h"

#include <vector>

namespace tarv::ui {

/// What every message loop asks first, also one that only pumps: keys that a window or its dialog-like
/// handling uses up. True when the message is done with.
bool filterMessage(MSG& message);

/// Runs until WM_QUIT, then raises again what a message handler of the main window has left uncaught.
void runMessageLoop(Window& main);

/// Disables the thread's other top-level windows while it lives, those of a host too; afterwards the window
/// that was active before is active again.
class ModalScope {
public:
    explicit ModalScope(const Window& window);
    ~ModalScope();
    ModalScope(const ModalScope&) = delete;
    ModalScope& operator=(const ModalScope&) = delete;

private:
    HWND active_;
    std::vector<HWND> disabled_;
};

/// Shows the window and returns when it has been closed or WM_QUIT comes, which stays in the queue. Raises
/// again what a message handler of the window has left uncaught. A closed window still exists: its owner lets
/// it go once another one is active, so that no stranger comes to the front.
void runModal(Window& window);

} // namespace tarv::ui
