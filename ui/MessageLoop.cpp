#include "ui/MessageLoop.h"

#include <algorithm>
#include <utility>

namespace tarv::ui {

bool filterMessage(MSG& message) {
    const HWND root = GetAncestor(message.hwnd, GA_ROOT);
    Window* window = Window::of(root);
    if (!window)
        return false;
    const bool key = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    if (key && window->translateKey(message))
        return true;
    return window->dialogKeys_ && IsDialogMessageW(root, &message);
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

void runMessageLoop(Window& main) {
    int exitCode = 0;
    while (handleNextMessage(exitCode)) {
    }
    main.raiseFailure();
}

ModalScope::ModalScope(const Window& window) : active_(GetActiveWindow()), disabled_(topLevelWindows()) {
    std::erase_if(disabled_, [&](HWND other) { return other == window.handle() || !IsWindowEnabled(other); });
    for (const HWND other : disabled_)
        EnableWindow(other, FALSE);
    if (!active_) { // the thread is in the background: what a user would see of it first
        const auto visible = std::ranges::find_if(disabled_, IsWindowVisible);
        active_ = visible == disabled_.end() ? nullptr : *visible;
    }
}

ModalScope::~ModalScope() {
    for (const HWND window : disabled_)
        EnableWindow(window, TRUE);
    if (IsWindowVisible(active_))
        SetActiveWindow(active_);
}

void runModal(Window& window) {
    if (window.alive()) {
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
    window.raiseFailure();
}

} // namespace tarv::ui
