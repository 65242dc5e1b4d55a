#include "runtime/modSkinOnly.h"

#include "runtime/Funktionen32/Existence.h"
#include "runtime/ModRkIni.h"
#include "runtime/Runtime.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tarv {
namespace {

/// Members of the skin-framework control, by their dispatch numbers.
namespace skin_member {
constexpr std::int32_t applyOptions = 1;
constexpr std::int32_t loadSkin = 2;
constexpr std::int32_t applyToWindow = 3;
constexpr std::int32_t option = 5;
} // namespace skin_member

constexpr std::int32_t allApplyOptions = 15;

constexpr std::wstring_view office2007 = L"Styles\\Office2007_neu.cjstyles";
constexpr std::wstring_view office2010 = L"Styles\\Office2010.cjstyles";
constexpr std::wstring_view windows8 = L"Styles\\Windows8.cjstyles";

using ColourStyle = std::pair<std::wstring_view, SkinStyle>;

constexpr std::array colourStyles{
    ColourStyle{L"BLUE", SkinStyle{office2007, L"LightBlue.ini"}},
    ColourStyle{L"SILVER", SkinStyle{office2007, L"NormalSilver.ini"}},
    ColourStyle{L"BLACK", SkinStyle{office2007, L"NormalBlack.ini"}},
    ColourStyle{L"WHITE", SkinStyle{windows8, L"NormalAero.ini"}},
};

/// No window sets another colour yet.
constexpr std::wstring_view windowColour = {};

/// Window handles are 32-bit values for the control, in the 64-bit program too.
std::int32_t automationHandle(WindowHandle window) {
    return static_cast<std::int32_t>(static_cast<std::uintptr_t>(window));
}

} // namespace

SkinStyle skinStyle(Runtime& rt, std::wstring_view programDirectory, std::wstring_view colourKey) {
    if (colourKey.empty())
        colourKey = L"WHITE";
    const auto known = std::ranges::find(colourStyles, colourKey, &ColourStyle::first);
    if (known != colourStyles.end())
        return known->second;
    const bool hasNewest = Uexist(rt, std::wstring(programDirectory).append(office2010));
    return {hasNewest ? office2010 : office2007, L"NormalAero.ini"};
}

void ApplySkin(Runtime& rt, SkinControl& control, std::optional<WindowHandle> target, bool /*ignored1*/,
               bool /*ignored2*/, bool option) {
    std::wstring directory = GetMachineDirectory(rt, L"ProgrammDirectory", false);
    if (!directory.ends_with(L'\\'))
        directory += L'\\';
    const SkinStyle style = skinStyle(rt, directory, windowColour);

    if (!control.object)
        return;
    AutomationObject& skin = *control.object;
    if (!skin.call(skin_member::loadSkin, {directory.append(style.file), std::wstring(style.scheme)}))
        return;
    const WindowHandle window = target.value_or(control.parent);
    if (window == WindowHandle::none || !skin.call(skin_member::applyToWindow, {automationHandle(window)}))
        return;
    if (!skin.put(skin_member::applyOptions, allApplyOptions))
        return;
    static_cast<void>(skin.put(skin_member::option, !option));
}

} // namespace tarv
