#pragma once

#include "ui/Units.h"

namespace tarv {

/// Size of the start picture for a main window of this outer size: what frame, caption and menu bar leave.
inline ui::TwipsSize startPictureSize(ui::TwipsSize window) {
    return {window.width - 60, window.height - 660};
}

/// Left (or top) of a window centred on a screen; negative for a window that is larger.
inline ui::Twips centred(ui::Twips screen, ui::Twips window) {
    return (screen - window) / 2;
}

/// Where the address window appears, from the main window's corner.
inline constexpr ui::TwipsSize addressWindowOffset{700, 800};

} // namespace tarv
