#pragma once

#include <string>

namespace tarv::component {

enum class Buttons {
    ok,          // OK
    retryCancel, // Wiederholen, Abbrechen
};

/// Controls of its window beside the buttons.
enum Control : int {
    IDC_HEADING = 101,
    IDC_REPORT,
    IDC_COPY
};

/// Shows a report over the active window of the calling thread, whose windows take no input meanwhile.
/// Answers the button as the message box numbers it: 1 OK, 2 Abbrechen (also Esc and the close box), 4
/// Wiederholen; 0 when the window went without an answer, as with its owner. Raises what keeps it from being
/// shown.
int showErrorDialog(const std::wstring& text, Buttons buttons);

} // namespace tarv::component
