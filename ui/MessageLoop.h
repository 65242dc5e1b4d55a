#pragma once

#include "ui/Window.h"

#include <vector>

namespace tarv::ui {

/// What every message loop asks first, also one that only pumps: keys that a window or its dialog-like
/// handling uses up. True when the message is done with.
bool filterMessage(MSG& message);

/// Runs until the program ends, then raises again what a message handler has left uncaught.
void runMessageLoop();

/// Destroys all windows and ends the message loops: the program is at its end.
void endProgram();

/// Disables the program's other windows while it lives; afterwards the youngest of them is active.
class ModalScope {
public:
    explicit ModalScope(Window& window);
    ~ModalScope();
    ModalScope(const ModalScope&) = delete;
    ModalScope& operator=(const ModalScope&) = delete;

private:
    std::vector<HWND> disabled_;
};

/// Shows the window and returns when it has been closed or the program ends. The window itself then still
/// exists: its owner lets it go once another one is active, so that no stranger comes to the front.
void runModal(Window& window);

} // namespace tarv::ui
