#include "components/rk_Runtime/ClassFactory.h"
#include "components/rk_Runtime/Registration.h"
#include "win/ComPtr.h"
#include "win/Module.h"
#include "win/SystemText.h"

#include <new>

using namespace tarv;
using namespace tarv::component;

namespace {

/// Full path of this DLL, however long; empty when Windows does not tell it.
std::wstring libraryPath() {
    return filledText(
        [](wchar_t* buffer, DWORD size) { return GetModuleFileNameW(thisModule(), buffer, size); });
}

/// Keeps the DLL in the process until the process ends: CoUninitialize and hosts that load by themselves free
/// a library without asking it, and each load costs the host a TLS slot and two handles, which the static C++
/// run-time library does not give back.
void keepModuleLoaded() {
    HMODULE pinned = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(thisModule()), &pinned);
}

} // namespace

extern "C" {

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH)
        DisableThreadLibraryCalls(instance);
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID id, REFIID interfaceId, void** object) {
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (!IsEqualCLSID(id, classId()))
        return CLASS_E_CLASSNOTAVAILABLE;
    keepModuleLoaded();
    const auto factory = ComPtr<ClassFactory>::take(new (std::nothrow) ClassFactory);
    return factory ? factory->QueryInterface(interfaceId, object) : E_OUTOFMEMORY;
}

STDAPI DllCanUnloadNow() {
    return S_FALSE; // see keepModuleLoaded
}

STDAPI DllRegisterServer() {
    try {
        const std::wstring path = libraryPath();
        return path.empty() ? HRESULT_FROM_WIN32(GetLastError()) : registerClass(path);
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

STDAPI DllUnregisterServer() {
    try {
        return unregisterClass();
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

} // extern "C"
