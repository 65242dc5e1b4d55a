#include "platform/windows/WindowsRegionalSettings.h"

#include <iterator>

#include <windows.h>

namespace tarv {

namespace {

std::wstring localeText(LCTYPE type) {
    wchar_t buffer[16]; // the system keeps at most three characters and the NUL
    const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, type, buffer, static_cast<int>(std::size(buffer)));
    return length > 0 ? std::wstring(buffer) : std::wstring();
}

} // namespace

std::wstring WindowsRegionalSettings::decimalSeparator() {
    return localeText(LOCALE_SDECIMAL);
}

std::wstring WindowsRegionalSettings::thousandsSeparator() {
    return localeText(LOCALE_STHOUSAND);
}

} // namespace tarv
