#include "examples.h"

#include "runtime/modSkinOnly.h"

// The suite's look for a window: which style a colour key stands for.
void skins(tarv::Runtime& rt) {
    const std::wstring programs = L"C:\\Beispiel ohne Stile\\";
    for (const wchar_t* colour : {L"BLUE", L"WHITE"}) {
        const tarv::SkinStyle style = tarv::skinStyle(rt, programs, colour);
        print(L"skinStyle " + std::wstring(colour) + L": " + std::wstring(style.file) + L", " +
              std::wstring(style.scheme));
    }

    // A window with the skin control on it gets its look by one call, which never fails:
    // tarv::SkinControl control{object, window};
    // tarv::ApplySkin(rt, control, std::nullopt, true, false, false);
}
