#pragma once

#include <string>

namespace tarv::component {

/// Remembers `text` as what this process reported last; whether it was that already.
bool rememberReport(const std::wstring& text);

} // namespace tarv::component
