#pragma once

#include <windows.h>

#include <string>

namespace tarv::component {

/// The id of the class rk_Fehler.
CLSID classId();

/// Enters the class for all users of the machine, else (without the right to) for this user. A programmatic
/// identifier that somebody else has entered, however incompletely, stays as it is: then S_FALSE.
HRESULT registerClass(const std::wstring& libraryPath);

/// Takes away what registerClass entered, for all users and for this one, and nothing of others. The
/// programmatic identifier stays while this library is registered in its other width (32 or 64 bits).
HRESULT unregisterClass();

} // namespace tarv::component
