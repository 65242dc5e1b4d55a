#pragma once

#include <windows.h>

#include <string>

namespace tarv::component {

/// The id of the class rk_Fehler.
CLSID classId();

/// Enters the class for all users of the machine, else (without the right to) for this user. A programmatic
/// identifier that belongs to another class, the suite's own, stays with it: then S_FALSE.
HRESULT registerClass(const std::wstring& libraryPath);

/// Takes away what registerClass entered, for all users and for this one, and nothing of another class.
HRESULT unregisterClass();

} // namespace tarv::component
