#pragma once

#include "platform/Desktop.h"
#include "tests/support/FaultPlan.h"

#include <functional>
#include <set>

namespace tarv {

struct ShownMessageBox {
    std::wstring text;
    std::wstring title;
    std::uint32_t style = 0;

    friend bool operator==(const ShownMessageBox&, const ShownMessageBox&) = default;
};

/// Records what the user would see and answers for him. The callbacks let the world change in the middle of a
/// waiting loop.
class FakeDesktop : public Desktop, Planned {
public:
    using Planned::Planned;

    std::int32_t messageBox(std::wstring_view text, std::wstring_view title, std::uint32_t style) override {
        if (faults_.enter("Desktop.messageBox"))
            return 0;
        boxes.push_back({std::wstring(text), std::wstring(title), style});
        const std::uint32_t buttons = style & 15;
        return nextOf(answers, buttons == message_box::ok      ? message_box::answerOk
                               : buttons == message_box::yesNo ? message_box::answerYes
                                                               : message_box::answerCancel);
    }

    void pumpMessages() override {
        faults_.enter("Desktop.pumpMessages");
        ++pumps;
        if (onPump)
            onPump();
    }

    bool quitPending() override { return !faults_.enter("Desktop.quitPending") && quit; }

    void sleep(std::uint32_t milliseconds) override {
        faults_.enter("Desktop.sleep");
        sleeps.push_back(milliseconds);
        if (onSleep)
            onSleep(milliseconds);
    }

    WindowHandle activeWindow() override { return faults_.value("Desktop.activeWindow", active); }

    WindowHandle activeForm() override { return faults_.value("Desktop.activeForm", form); }

    bool isWindow(WindowHandle window) override {
        const bool living = window == active || window == form || windows.contains(window);
        return faults_.value("Desktop.isWindow", living && window != WindowHandle::none);
    }

    void setFocus(WindowHandle window) override {
        if (!faults_.enter("Desktop.setFocus"))
            focused.push_back(window);
    }

    void redraw(WindowHandle window) override {
        if (!faults_.enter("Desktop.redraw"))
            redrawn.push_back(window);
    }

    std::vector<ShownMessageBox> boxes;
    /// Used up in order; without one the user answers OK, Yes or Cancel, whichever the box offers.
    std::deque<std::int32_t> answers;

    int pumps = 0;
    std::vector<std::uint32_t> sleeps;
    std::vector<WindowHandle> focused;
    std::vector<WindowHandle> redrawn;
    bool quit = false;

    WindowHandle active = WindowHandle::none;
    WindowHandle form = WindowHandle::none;
    /// Living windows besides `active` and `form`.
    std::set<WindowHandle> windows;

    std::function<void()> onPump;
    std::function<void(std::uint32_t)> onSleep;
};

} // namespace tarv
