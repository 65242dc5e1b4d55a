#pragma once

#include "platform/ErrorRecord.h"

#include <string>
#include <string_view>

namespace tarv::component {

inline constexpr wchar_t errorTitle[] = L"Fehlermeldung...";

/// The report as the user reads and copies it, lines ending with CR LF: what failed, the description, the
/// error's source as module, the first line of `extra` as routine, the number, and the rest of `extra`.
std::wstring errorText(const ErrorRecord& error, std::wstring_view location, std::wstring_view extra);

} // namespace tarv::component
