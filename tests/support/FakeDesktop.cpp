#include "tests/support/FakeDesktop.h"

namespace tarv {

std::int32_t FakeDesktop::messageBox(std::wstring_view text, std::wstring_view title, std::uint32_t style) {
    if (faults_.enter("Desktop.messageBox"))
        return 0;
    boxes.push_back({std::wstring(text), std::wstring(title), style});
    if (!answers.empty()) {
        const std::int32_t answer = answers.front();
        answers.pop_front();
        return answer;
    }
    switch (style & 15) {
    case message_box::ok:
        return message_box::answerOk;
    case message_box::yesNo:
        return message_box::answerYes;
    default:
        return message_box::answerCancel;
    }
}

void FakeDesktop::pumpMessages() {
    faults_.enter("Desktop.pumpMessages");
    ++pumps;
    if (onPump)
        onPump();
}

void FakeDesktop::sleep(std::uint32_t milliseconds) {
    faults_.enter("Desktop.sleep");
    sleeps.push_back(milliseconds);
    if (onSleep)
        onSleep(milliseconds);
}

WindowHandle FakeDesktop::activeWindow() {
    return faults_.enter("Desktop.activeWindow") ? WindowHandle::none : active;
}

WindowHandle FakeDesktop::activeForm() {
    return faults_.enter("Desktop.activeForm") ? WindowHandle::none : form;
}

bool FakeDesktop::isWindow(WindowHandle window) {
    if (faults_.enter("Desktop.isWindow") || window == WindowHandle::none)
        return false;
    return window == active || window == form || windows.contains(window);
}

void FakeDesktop::setFocus(WindowHandle window) {
    if (!faults_.enter("Desktop.setFocus"))
        focused.push_back(window);
}

} // namespace tarv
