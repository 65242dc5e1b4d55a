#pragma once

#include "platform/Automation.h"
#include "platform/Desktop.h"

#include <optional>
#include <string_view>

namespace tarv {

struct Runtime;

/// A window's skin-framework control together with the window that carries it.
struct SkinControl {
    ObjectRef object;
    WindowHandle parent = WindowHandle::none;
};

/// Programmatic identifier of the skin-framework control.
inline constexpr std::wstring_view skinControlProgId = L"XtremeSkinFramework.SkinFramework";

/// A style file under the program directory, and the scheme in it.
struct SkinStyle {
    std::wstring_view file;
    std::wstring_view scheme;
};

/// The style for a colour key ("BLUE", "SILVER", "BLACK", "WHITE", compared exactly; empty counts as
/// "WHITE"). Any other key gets the newest style file that is installed in `programDirectory` (ends in "\").
SkinStyle skinStyle(Runtime& rt, std::wstring_view programDirectory, std::wstring_view colourKey);

/// Loads the suite's skin into `control` and applies it to `target`, or to the window that carries the
/// control. Two arguments are not read; callers pass true and false. The negation of `option` goes into the
/// control's Boolean property 5. Any failure ends the routine silently: the window keeps its unskinned look.
void ApplySkin(Runtime& rt, SkinControl& control, std::optional<WindowHandle> target, bool ignored1,
               bool ignored2, bool option);

} // namespace tarv
