#pragma once

#include "platform/Desktop.h"
#include "scripted/FaultPlan.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace tarv {

struct ShownMessageBox {
    std::wstring text;
    std::wstring title;
    std::uint32_t style = 0;
};

/// Records what the user would see and answers for him. A callback lets the world change in the middle of a
/// waiting loop.
struct FakeDesktop : Desktop, Planned {
    using Planned::Planned;

    std::int32_t messageBox(std::wstring_view text, std::wstring_view title, std::uint32_t style) override {
        if (faults_.enter("Desktop.messageBox"))
            return 0;
        boxes.push_back({std::wstring(text), std::wstring(title), style});
        return nextOf(answers, message_box::answerOk);
    }
    void pumpMessages() override {
        faults_.step();
        ++pumps;
        if (onPump)
            onPump();
    }
    /// Its failure: the program is asked to quit.
    bool quitPending() override { return quit = quit || faults_.enter("Desktop.quitPending"); }
    void sleep(std::uint32_t milliseconds) override {
        faults_.step();
        sleeps.push_back(milliseconds);
    }
    WindowHandle activeWindow() override { return faults_.value("Desktop.activeWindow", active); }
    WindowHandle activeForm() override { return faults_.value("Desktop.activeForm", form); }
    bool isWindow(WindowHandle window) override {
        return faults_.value("Desktop.isWindow", windows.contains(window));
    }
    void setFocus(WindowHandle window) override { focused.push_back(window); }
    void redraw(WindowHandle window) override { redrawn.push_back(window); }

    std::vector<ShownMessageBox> boxes;
    /// Used up in order; then the user answers OK.
    std::deque<std::int32_t> answers;

    int pumps = 0;
    std::vector<std::uint32_t> sleeps;
    std::vector<WindowHandle> focused;
    std::vector<WindowHandle> redrawn;
    bool quit = false;

    WindowHandle active = WindowHandle::none;
    WindowHandle form = WindowHandle::none;
    /// The living ones.
    std::set<WindowHandle> windows;

    std::function<void()> onPump;
};

} // namespace tarv
