// Stands in for the vendor's skin-framework control and for the management service: an in-process server that
// writes every call as one line to the file named by TARV_SKIN_LOG (kind, dispatch number, arguments from
// left to right). With TARV_SKIN_PUMPS it handles messages in each call, as a component does that waits for
// another process. It never answers as management service.

#include "win/Variant.h"

#include <windows.h>

#include <oaidl.h>

#include <string>

namespace {

void record(const std::wstring& line) {
    wchar_t file[MAX_PATH] = L"";
    GetEnvironmentVariableW(L"TARV_SKIN_LOG", file, MAX_PATH);
    const HANDLE log = CreateFileW(file, FILE_APPEND_DATA, FILE_SHARE_READ, nullptr, OPEN_ALWAYS, 0, nullptr);
    const std::wstring text = line + L"\n";
    DWORD written = 0;
    WriteFile(log, text.data(), static_cast<DWORD>(text.size() * sizeof(wchar_t)), &written, nullptr);
    CloseHandle(log);
}

void pumpIfAsked() {
    if (!GetEnvironmentVariableW(L"TARV_SKIN_PUMPS", nullptr, 0))
        return;
    MSG message;
    for (int i = 0; i < 5; ++i, Sleep(10))
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT)
                return PostQuitMessage(static_cast<int>(message.wParam));
            DispatchMessageW(&message);
        }
}

std::wstring shown(VARIANT& value) {
    tarv::Variant text;
    if (FAILED(VariantChangeTypeEx(&text.raw(), &value, LOCALE_INVARIANT, 0, VT_BSTR)))
        return L"?";
    return std::to_wstring(value.vt) + L":" + text.raw().bstrVal;
}

/// Class factory and objects in one, alive as long as the process.
class StandIn final : public IDispatch, public IClassFactory, public IParseDisplayName {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
        *out = nullptr;
        if (id == IID_IDispatch)
            *out = static_cast<IDispatch*>(this);
        else if (id == IID_IParseDisplayName)
            *out = static_cast<IParseDisplayName*>(this);
        else if (id == IID_IUnknown || id == IID_IClassFactory)
            *out = static_cast<IClassFactory*>(this);
        return *out ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** out) override {
        return QueryInterface(id == IID_IUnknown ? IID_IDispatch : id, out);
    }
    HRESULT STDMETHODCALLTYPE ParseDisplayName(IBindCtx*, LPOLESTR, ULONG*, IMoniker**) override {
        pumpIfAsked();
        return MK_E_UNAVAILABLE;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT*, EXCEPINFO*, UINT*) override {
        std::wstring line = (flags & DISPATCH_PROPERTYPUT ? L"put " : L"call ") + std::to_wstring(member);
        for (UINT index = parameters->cArgs; index-- > 0;)
            line += L" " + shown(parameters->rgvarg[index]);
        record(line);
        pumpIfAsked();
        return S_OK;
    }
};

StandIn standIn;

} // namespace

extern "C" HRESULT WINAPI DllGetClassObject(REFCLSID, REFIID id, void** out) {
    return standIn.QueryInterface(id, out);
}
