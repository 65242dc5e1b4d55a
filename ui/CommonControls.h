#pragma once

#include "win/Handle.h"
#include "win/LateEntry.h"

#include <windows.h>

#include <commctrl.h>
#include <uxtheme.h>

namespace tarv::ui {

/// What we call of the common controls, of the version that the program's manifest asks for, and of their
/// themes.
namespace late {
inline constexpr wchar_t comctl32[] = L"comctl32.dll";
inline const LateEntry<decltype(&::InitCommonControlsEx)> InitCommonControlsEx{comctl32,
                                                                               "InitCommonControlsEx"};
inline const LateEntry<decltype(&::ImageList_Create)> ImageList_Create{comctl32, "ImageList_Create"};
inline const LateEntry<decltype(&::ImageList_Destroy)> ImageList_Destroy{comctl32, "ImageList_Destroy"};
inline const LateEntry<decltype(&::ImageList_ReplaceIcon)> ImageList_ReplaceIcon{comctl32,
                                                                                 "ImageList_ReplaceIcon", -1};
inline constexpr wchar_t uxtheme[] = L"uxtheme.dll";
inline const LateEntry<decltype(&::CloseThemeData)> CloseThemeData{uxtheme, "CloseThemeData", E_FAIL};
inline const LateEntry<decltype(&::IsThemePartDefined)> IsThemePartDefined{uxtheme, "IsThemePartDefined"};
inline const LateEntry<decltype(&::OpenThemeData)> OpenThemeData{uxtheme, "OpenThemeData"};
inline const LateEntry<decltype(&::SetWindowTheme)> SetWindowTheme{uxtheme, "SetWindowTheme", E_FAIL};
} // namespace late

using ImageList = Handle<HIMAGELIST, late::ImageList_Destroy>;

} // namespace tarv::ui
