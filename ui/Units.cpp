#include "ui/Units.h"

#include <cmath>

namespace tarv::ui {
namespace {

/// The functions per DPI came with Windows 10 1607; older systems have one DPI per session.
template <class Function>
Function* entryPoint(const char* name) {
    const FARPROC address = GetProcAddress(GetModuleHandleW(L"user32.dll"), name);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
}

struct PerDpi {
    UINT(WINAPI* windowDpi)(HWND) = entryPoint<UINT WINAPI(HWND)>("GetDpiForWindow");
    BOOL(WINAPI* adjustRect)
    (RECT*, DWORD, BOOL, DWORD,
     UINT) = entryPoint<BOOL WINAPI(RECT*, DWORD, BOOL, DWORD, UINT)>("AdjustWindowRectExForDpi");
    BOOL(WINAPI* parameters)
    (UINT, UINT, void*, UINT,
     UINT) = entryPoint<BOOL WINAPI(UINT, UINT, void*, UINT, UINT)>("SystemParametersInfoForDpi");
    int(WINAPI* metric)(int, UINT) = entryPoint<int WINAPI(int, UINT)>("GetSystemMetricsForDpi");
    BOOL(WINAPI* frameScaling)(HWND) = entryPoint<BOOL WINAPI(HWND)>("EnableNonClientDpiScaling");
};

const PerDpi& perDpi() {
    static const PerDpi functions;
    return functions;
}

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
    const UINT dpi = perDpi().windowDpi ? perDpi().windowDpi(window) : 0;
    return dpi ? static_cast<int>(dpi) : primaryScreenDpi();
}

SIZE outerSize(SIZE client, DWORD style, DWORD extendedStyle, bool menu, int dpi) {
    RECT rect{0, 0, client.cx, client.cy};
    if (!perDpi().adjustRect || !perDpi().adjustRect(&rect, style, menu, extendedStyle, unsignedDpi(dpi))) {
        AdjustWindowRectEx(&rect, style, menu, extendedStyle);
    }
    return {rect.right - rect.left, rect.bottom - rect.top};
}

LOGFONTW dialogFont(int dpi) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    if (perDpi().parameters &&
        perDpi().parameters(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, unsignedDpi(dpi))) {
        return metrics.lfMessageFont;
    }
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    metrics.lfMessageFont.lfHeight = MulDiv(metrics.lfMessageFont.lfHeight, dpi, primaryScreenDpi());
    return metrics.lfMessageFont;
}

int systemMetric(int index, int dpi) {
    return perDpi().metric ? perDpi().metric(index, unsignedDpi(dpi))
                           : MulDiv(GetSystemMetrics(index), dpi, primaryScreenDpi());
}

void enableFrameScaling(HWND window) {
    if (perDpi().frameScaling) {
        perDpi().frameScaling(window);
    }
}

} // namespace tarv::ui
