#include "ui/Units.h"

#include "win/LateEntry.h"

#include <cmath>

namespace tarv::ui {
namespace {

// Since Windows 10 1607; 0 on older systems, which have one DPI per session.
namespace late {
constexpr wchar_t user32[] = L"user32.dll";
const LateEntry<UINT(WINAPI*)(HWND)> GetDpiForWindow{user32, "GetDpiForWindow"};
const LateEntry<BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT)> AdjustWindowRectExForDpi{
    user32, "AdjustWindowRectExForDpi"};
const LateEntry<BOOL(WINAPI*)(UINT, UINT, void*, UINT, UINT)> SystemParametersInfoForDpi{
    user32, "SystemParametersInfoForDpi"};
const LateEntry<int(WINAPI*)(int, UINT)> GetSystemMetricsForDpi{user32, "GetSystemMetricsForDpi"};
const LateEntry<BOOL(WINAPI*)(HWND)> EnableNonClientDpiScaling{user32, "EnableNonClientDpiScaling"};
} // namespace late

UINT unsignedDpi(int dpi) {
    return static_cast<UINT>(dpi);
}

} // namespace

int toPixels(Twips twips, int dpi) {
    return static_cast<int>(std::lround(twips * static_cast<float>(dpi) / twipsPerInch));
}

Twips toTwips(int pixels, int dpi) {
    return static_cast<float>(pixels) * twipsPerInch / static_cast<float>(dpi);
}

SIZE sizeOf(const RECT& rect) {
    return {rect.right - rect.left, rect.bottom - rect.top};
}

RECT workAreaOf(HWND window) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor);
    return monitor.rcWork;
}

int primaryScreenDpi() {
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dpi > 0 ? dpi : standardDpi;
}

int dpiOf(HWND window) {
    const UINT dpi = late::GetDpiForWindow(window);
    return dpi ? static_cast<int>(dpi) : primaryScreenDpi();
}

SIZE outerSize(SIZE client, DWORD style, DWORD extendedStyle, bool menu, int dpi) {
    RECT rect{0, 0, client.cx, client.cy};
    if (!late::AdjustWindowRectExForDpi(&rect, style, menu, extendedStyle, unsignedDpi(dpi)))
        AdjustWindowRectEx(&rect, style, menu, extendedStyle);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

LOGFONTW dialogFont(int dpi) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    if (late::SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0,
                                         unsignedDpi(dpi))) {
        return metrics.lfMessageFont;
    }
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    metrics.lfMessageFont.lfHeight = MulDiv(metrics.lfMessageFont.lfHeight, dpi, primaryScreenDpi());
    return metrics.lfMessageFont;
}

int systemMetric(int index, int dpi) {
    const int metric = late::GetSystemMetricsForDpi(index, unsignedDpi(dpi));
    return metric ? metric : MulDiv(GetSystemMetrics(index), dpi, primaryScreenDpi());
}

void enableFrameScaling(HWND window) {
    late::EnableNonClientDpiScaling(window);
}

} // namespace tarv::ui
