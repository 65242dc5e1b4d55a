#pragma once

#include "platform/Desktop.h"
#include "tests/support/FaultPlan.h"

#include <deque>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace tarv {

struct ShownMessageBox {
    std::wstring text;
    std::wstring title;
    std::uint32_t style = 0;

    friend bool operator==(const ShownMessageBox&, const ShownMessageBox&) = default;
};

/// Records what the user would see and answers for him. The callbacks let the world change in the middle of a
/// waiting loop.
class FakeDesktop : public Desktop {
public:
    explicit FakeDesktop(FaultPlan& faults) : faults_(faults) {}

    std::int32_t messageBox(std::wstring_view text, std::wstring_view title, std::uint32_t style) override;
    void pumpMessages() override;
    void sleep(std::uint32_t milliseconds) override;
    WindowHandle activeWindow() override;
    WindowHandle activeForm() override;
    bool isWindow(WindowHandle window) override;
    void setFocus(WindowHandle window) override;

    std::vector<ShownMessageBox> boxes;
    /// Used up in order; without one the user answers OK, Yes or Cancel, whichever the box offers.
    std::deque<std::int32_t> answers;

    int pumps = 0;
    std::vector<std::uint32_t> sleeps;
    std::vector<WindowHandle> focused;

    WindowHandle active = WindowHandle::none;
    WindowHandle form = WindowHandle::none;
    /// Living windows besides `active` and `form`.
    std::set<WindowHandle> windows;

    std::function<void()> onPump;
    std::function<void(std::uint32_t)> onSleep;

private:
    FaultPlan& faults_;
};

} // namespace tarv
