#pragma once

#include "platform/ErrorRecord.h"

#include <string_view>

#include <windows.h>

#include <oleauto.h>

namespace tarv {

namespace automation_error {
inline constexpr std::int32_t typeMismatch = 13;
inline constexpr std::int32_t cannotCreate = 429;
} // namespace automation_error

/// The error record for a failed call: the low word of a code of the "control" facility (these are the
/// numbers of the suite's language), else the whole code; described by the system.
ErrorRecord failureOf(HRESULT code);

/// The same for a call that may have filled `info`, which is emptied.
ErrorRecord failureOf(HRESULT code, EXCEPINFO& info);

/// The record for an object that cannot be created; the description says why.
ErrorRecord cannotCreate(HRESULT code, std::wstring_view what);

} // namespace tarv
