#include "tools/kit/Machine.h"

#include "tools/driver/Surroundings.h"

#include <windows.h>

namespace tarv::kit {
namespace {

template <class Function>
Function systemFunction(const wchar_t* library, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(library), name)));
}

/// An entry of this machine's registry, as 64-bit programs see it; empty where there is none.
std::wstring entry(const wchar_t* key, const wchar_t* name) {
    wchar_t text[256] = L"";
    DWORD number = 0, size = sizeof text, numberSize = sizeof number;
    constexpr DWORD wide = 0x00010000; // RRF_SUBKEY_WOW6464KEY
    if (RegGetValueW(HKEY_LOCAL_MACHINE, key, name, RRF_RT_REG_DWORD | wide, nullptr, &number, &numberSize) ==
        0)
        return std::to_wstring(number);
    RegGetValueW(HKEY_LOCAL_MACHINE, key, name, RRF_RT_REG_SZ | wide, nullptr, text, &size);
    return text;
}

std::wstring windowsVersion() {
    constexpr wchar_t key[] = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    // GetVersionEx answers what the manifest claims to know.
    systemFunction<LONG(WINAPI*)(OSVERSIONINFOW*)>(L"ntdll", "RtlGetVersion")(&version);
    std::wstring name = entry(key, L"ProductName");
    // Windows 11 still calls itself 10 here.
    if (version.dwBuildNumber >= 22000 && name.starts_with(L"Windows 10"))
        name.replace(8, 2, L"11");
    for (const std::wstring& part : {entry(key, L"DisplayVersion"), std::wstring(version.szCSDVersion)})
        if (!part.empty())
            name += L" " + part;
    const std::wstring update = entry(key, L"UBR");
    return name + L", Version " + std::to_wstring(version.dwMajorVersion) + L"." +
           std::to_wstring(version.dwMinorVersion) + L"." + std::to_wstring(version.dwBuildNumber) +
           (update.empty() ? L"" : L"." + update) + L", " +
           entry(L"SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Environment",
                 L"PROCESSOR_ARCHITECTURE");
}

std::wstring localeText(LCTYPE what) {
    wchar_t text[LOCALE_NAME_MAX_LENGTH] = L"";
    GetLocaleInfoW(LOCALE_USER_DEFAULT, what, text, LOCALE_NAME_MAX_LENGTH);
    return text;
}

std::wstring language() {
    wchar_t display[LOCALE_NAME_MAX_LENGTH] = L"";
    LCIDToLocaleName(MAKELCID(GetUserDefaultUILanguage(), SORT_DEFAULT), display, LOCALE_NAME_MAX_LENGTH, 0);
    return L"Anzeige " + std::wstring(display) + L", Zahlen " + localeText(LOCALE_SNAME) + L" (Dezimal \"" +
           localeText(LOCALE_SDECIMAL) + L"\", Tausender \"" + localeText(LOCALE_STHOUSAND) + L"\")";
}

BOOL CALLBACK noteScreen(HMONITOR screen, HDC, RECT*, LPARAM parameter) {
    std::wstring& all = *reinterpret_cast<std::wstring*>(parameter);
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoW(screen, &info);
    const HDC device = GetDC(nullptr);
    UINT x = static_cast<UINT>(GetDeviceCaps(device, LOGPIXELSX)), y = 0;
    ReleaseDC(nullptr, device);
    // Since Windows 8.1.
    if (const auto ofScreen =
            systemFunction<HRESULT(WINAPI*)(HMONITOR, int, UINT*, UINT*)>(L"shcore", "GetDpiForMonitor"))
        ofScreen(screen, 0, &x, &y);
    all += (all.empty() ? L"" : L"; ") + std::to_wstring(info.rcMonitor.right - info.rcMonitor.left) +
           L" x " + std::to_wstring(info.rcMonitor.bottom - info.rcMonitor.top) + L", " + std::to_wstring(x) +
           L" dpi (" + std::to_wstring(x * 100 / 96) + L" %)";
    return TRUE;
}

} // namespace

std::string toUtf8(const std::wstring& text) {
    const int length = static_cast<int>(text.size());
    std::string bytes(text.size() * 3, '\0');
    bytes.resize(static_cast<std::size_t>(WideCharToMultiByte(
        CP_UTF8, 0, text.data(), length, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr)));
    return bytes;
}

std::string describeMachine() {
    std::wstring screens;
    EnumDisplayMonitors(nullptr, nullptr, noteScreen, reinterpret_cast<LPARAM>(&screens));
    std::wstring text = L"Windows:        " + windowsVersion() + L"\n";
    if (underWine()) {
        const std::string wine = systemFunction<const char*(CDECL*)()>(L"ntdll", "wine_get_version")();
        text += L"                unter Wine " + std::wstring(wine.begin(), wine.end()) + L"\n";
    }
    text += L"Codepage:       ANSI " + std::to_wstring(GetACP()) + L", OEM " + std::to_wstring(GetOEMCP()) +
            L"\nSprache:        " + language() + L"\nBildschirme:    " + screens +
            (GetSystemMetrics(SM_REMOTESESSION) ? L", Fernsitzung" : L"") + L"\nRechte:         " +
            (elevated() ? L"als Administrator" : L"einfacher Benutzer") + L"\n";
    return toUtf8(text);
}

std::string obstacleForTheProgram() {
    wchar_t own[MAX_PATH];
    ExpandEnvironmentStringsW(L"%LOCALAPPDATA%\\VirtualStore\\Windows\\Pexoran.INI", own, MAX_PATH);
    for (const std::filesystem::path& file : {suiteSettings(), std::filesystem::path(own)})
        if (std::filesystem::exists(file))
            return toUtf8(L"die Programme sind auf diesem Rechner eingerichtet (" + file.wstring() + L")");
    return {};
}

std::filesystem::path suiteSettings() {
    wchar_t windows[MAX_PATH];
    GetWindowsDirectoryW(windows, MAX_PATH);
    return std::filesystem::path(windows) / L"Pexoran.INI";
}

} // namespace tarv::kit
