#include "ui/MessageLoop.h"

#include "ui/UiThread.h"

#include <utility>

namespace tarv::ui {

UiThread& uiThread() {
    static UiThread thread;
    return thread;
}

bool filterMessage(MSG& message) {
    const HWND root = GetAncestor(message.hwnd, GA_ROOT);
    for (Window* window : uiThread().windows) {
        if (window->handle_ != root) {
            continue;
        }
        const bool key = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
        if (key && window->translateKey(message)) {
            return true;
        }
        return window->dialogKeys_ && IsDialogMessageW(root, &message);
    }
    return false;
}

namespace {

/// False at WM_QUIT.
bool handleNextMessage(int& exitCode) {
    MSG message;
    const BOOL got = GetMessageW(&message, nullptr, 0, 0);
    if (got <= 0) {
        exitCode = got == 0 ? static_cast<int>(message.wParam) : 0;
        return false;
    }
    if (!filterMessage(message)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return true;
}

} // namespace

void runMessageLoop() {
    int exitCode = 0;
    while (handleNextMessage(exitCode)) {
    }
    if (const auto failure = std::exchange(uiThread().failure, nullptr)) {
        std::rethrow_exception(failure);
    }
}

void endProgram() {
    // The youngest first: a modal window before the one that waits for it.
    while (!uiThread().windows.empty()) {
        DestroyWindow(uiThread().windows.back()->handle_);
    }
    PostQuitMessage(0);
}

ModalScope::ModalScope(Window& window) {
    for (const Window* other : uiThread().windows) {
        if (other != &window && IsWindowEnabled(other->handle_)) {
            EnableWindow(other->handle_, FALSE);
            disabled_.push_back(other->handle_);
        }
    }
}

ModalScope::~ModalScope() {
    for (const HWND window : disabled_) {
        if (IsWindow(window)) {
            EnableWindow(window, TRUE);
            SetActiveWindow(window);
        }
    }
}

void runModal(Window& window) {
    if (!window.alive()) {
        return;
    }
    window.modal_ = true;
    window.closing_ = false;
    ShowWindow(window.handle_, SW_SHOW);
    UpdateWindow(window.handle_);
    int exitCode = 0;
    while (window.alive() && !window.closing_) {
        if (!handleNextMessage(exitCode)) {
            PostQuitMessage(exitCode);
            break;
        }
    }
    window.modal_ = false;
}

} // namespace tarv::ui
