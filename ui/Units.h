#pragma once

#include <windows.h>

#include <cstdint>

namespace tarv::ui {

/// Window coordinates of the suite: 1440 twips are one inch, whatever the screen. Sums and halves are taken
/// in single precision.
using Twips = float;

inline constexpr int twipsPerInch = 1440;
inline constexpr int standardDpi = 96;

struct TwipsSize {
    Twips width = 0;
    Twips height = 0;
};

/// The measures of all windows: 11 pixels to the edge, 7 between controls and 75 × 23 for a button at 96 dpi,
/// as Windows' own dialogs have them.
inline constexpr Twips windowMargin = 165;
inline constexpr Twips controlGap = 105;
inline constexpr TwipsSize buttonSize{1125, 345};

/// Half a pixel goes away from zero.
int toPixels(Twips twips, int dpi);
Twips toTwips(int pixels, int dpi);

SIZE sizeOf(const RECT& rect);

/// Work area of the screen that shows most of `window`, else of the primary one.
RECT workAreaOf(HWND window);

/// Dots per inch of the screen that shows most of `window`; where Windows knows only one value per session,
/// that one.
int dpiOf(HWND window);

/// Dots per inch of the primary screen.
int primaryScreenDpi();

/// Outer size of a window whose client area has this size in pixels.
SIZE outerSize(SIZE client, DWORD style, DWORD extendedStyle, bool menu, int dpi);

/// The font that the user chose for dialogs, in its size for `dpi`.
LOGFONTW dialogFont(int dpi);

/// SM_... metric for `dpi`.
int systemMetric(int index, int dpi);

/// A window whose class was not registered for per-monitor scaling asks for its frame to be scaled with it
/// (Windows 10 before 1703; later ones do it by themselves).
void enableFrameScaling(HWND window);

} // namespace tarv::ui
