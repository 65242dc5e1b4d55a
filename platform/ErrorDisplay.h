#pragma once

#include <string_view>

namespace tarv {

/// The suite's error-display class; a new object is created for each report.
inline constexpr std::wstring_view errorDisplayProgId = L"rk_Runtime.rk_Fehler";

/// The same class in the rk_Runtime.dll beside the program, which need not be registered.
inline constexpr std::wstring_view errorDisplayClassId = L"{F309FD42-31AD-46F3-8893-E7A1CBE4AD00}";
inline constexpr std::wstring_view errorDisplayLibrary = L"rk_Runtime.dll";

} // namespace tarv
