// Stands in for the vendor's skin-framework control: a late-bound in-process server that writes down every
// call. Each goes as one line to the file named by TARV_SKIN_LOG: kind, dispatch number, arguments from left
// to right.

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

std::wstring shown(VARIANT& value) {
    VARIANT text;
    VariantInit(&text);
    if (FAILED(VariantChangeTypeEx(&text, &value, LOCALE_INVARIANT, 0, VT_BSTR))) {
        return L"?";
    }
    std::wstring result = std::to_wstring(value.vt) + L":" + text.bstrVal;
    VariantClear(&text);
    return result;
}

/// Class factory and object in one, alive as long as the process.
class Skin final : public IDispatch, public IClassFactory {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
        if (id == IID_IDispatch) {
            *out = static_cast<IDispatch*>(this);
        } else if (id == IID_IUnknown || id == IID_IClassFactory) {
            *out = static_cast<IClassFactory*>(this);
        } else {
            *out = nullptr;
            return E_NOINTERFACE;
        }
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** out) override {
        return QueryInterface(id == IID_IUnknown ? IID_IDispatch : id, out);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID*) override {
        record(std::wstring(L"name ") + names[0]);
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT*, EXCEPINFO*, UINT*) override {
        std::wstring line = (flags & DISPATCH_PROPERTYPUT ? L"put " : L"call ") + std::to_wstring(member);
        for (UINT index = parameters->cArgs; index-- > 0;) {
            line += L" " + shown(parameters->rgvarg[index]);
        }
        record(line);
        return S_OK;
    }
};

Skin skin;

} // namespace

extern "C" HRESULT WINAPI DllGetClassObject(REFCLSID, REFIID id, void** out) {
    return skin.QueryInterface(id, out);
}
