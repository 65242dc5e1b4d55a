#pragma once

#include "platform/ErrorRecord.h"

#include <cstdint>
#include <string_view>

namespace tarv {

struct Runtime;

/// Shows an error through the suite's error-display component. `location` says what failed, `extra` is a
/// further text. A non-zero `errorNumber` replaces the record's number. Without the component the report is
/// skipped silently. Never fails.
void ShowErrorMsg(Runtime& rt, ErrorRecord& error, std::wstring_view location, std::wstring_view extra,
                  bool noVisibleNextMsg = false, std::int32_t errorNumber = 0);

/// Shows an error as a question and answers a message-box answer (2 Cancel, 4 Retry ...), 0 without the
/// component.
///
/// Once the user has answered Cancel, further errors with exactly the same non-empty `location` are answered
/// with Cancel without showing anything, until another one is answered otherwise.
std::int32_t AskErrorMsg(Runtime& rt, ErrorRecord& error, std::wstring_view location, std::wstring_view extra,
                         bool noVisibleNextMsg = false, std::int32_t errorNumber = 0);

} // namespace tarv
