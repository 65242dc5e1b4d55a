#pragma once

#include <string>

namespace tarv::component {

enum class Buttons {
    ok,          // OK
    retryCancel, // Wiederholen, Abbrechen
};

/// Shows a report over the active window of the calling thread, whose windows take no input meanwhile.
/// Answers the button as the message box numbers it: 1 OK, 2 Abbrechen (also Esc and the close box), 4
/// Wiederholen; 0 or less when the window cannot be shown.
int showErrorDialog(const std::wstring& text, Buttons buttons);

} // namespace tarv::component
