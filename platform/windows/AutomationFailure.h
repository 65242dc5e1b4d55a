#pragma once

#include "platform/ErrorRecord.h"

#include <string_view>

#include <windows.h>

#include <oleauto.h>

namespace tarv {

/// Number of a call to a member that the object does not have.
inline constexpr std::int32_t noSuchMember = 438;

/// The error record for a failed call: the number that the suite's language has for it (noSuchMember
/// among them, the low word of a code of the "control" facility), else the whole code;
/// described by the system.
ErrorRecord failureOf(HRESULT code);

/// The same for a call that may have filled `info`, which is emptied.
ErrorRecord failureOf(HRESULT code, EXCEPINFO& info);

/// The record for an object that cannot be created; the description says why.
ErrorRecord cannotCreate(HRESULT code, std::wstring_view what);

} // namespace tarv
