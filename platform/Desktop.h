#pragma once

#include <cstdint>
#include <string_view>

namespace tarv {

/// A window of the system; `none` stands for no window.
enum class WindowHandle : std::uintptr_t {
    none = 0
};

/// Style values and answers of the Windows message box.
namespace message_box {
inline constexpr std::uint32_t ok = 0;
inline constexpr std::uint32_t yesNo = 4;
inline constexpr std::uint32_t retryCancel = 5;
inline constexpr std::uint32_t critical = 16;
inline constexpr std::uint32_t question = 32;
inline constexpr std::uint32_t exclamation = 48;
inline constexpr std::uint32_t systemModal = 4096;

inline constexpr std::int32_t answerOk = 1;
inline constexpr std::int32_t answerCancel = 2;
inline constexpr std::int32_t answerRetry = 4;
inline constexpr std::int32_t answerYes = 6;
inline constexpr std::int32_t answerNo = 7;
} // namespace message_box

/// The user's desktop: message boxes, the message queue of this thread, focus.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// Shows a message box owned by the program's active window and answers the button pressed; 0 when it
    /// could not be shown.
    virtual std::int32_t messageBox(std::wstring_view text, std::wstring_view title, std::uint32_t style) = 0;

    /// Handles the messages that wait now. Stops at WM_QUIT and posts it again for the outer loop; a queue
    /// that never becomes empty does not keep it for ever.
    virtual void pumpMessages() = 0;

    /// Whether WM_QUIT waits: loops that pump have to come to their end.
    virtual bool quitPending() = 0;

    virtual void sleep(std::uint32_t milliseconds) = 0;

    /// The active window of this thread.
    virtual WindowHandle activeWindow() = 0;

    /// The window of the program's active form (one of its own windows); none when there is none.
    virtual WindowHandle activeForm() = 0;
    virtual bool isWindow(WindowHandle window) = 0;
    virtual void setFocus(WindowHandle window) = 0;

    /// Draws what is invalid in a window and its children, before this call returns.
    virtual void redraw(WindowHandle window) = 0;
};

} // namespace tarv
