#include "platform/Automation.h"
#include "platform/windows/AutomationFailure.h"
#include "platform/windows/ErrorDispatch.h"
#include "platform/windows/LateBound.h"
#include "platform/windows/Makers.h"
#include "win/Handle.h"
#include "win/NoSystemBoxes.h"

#include <objbase.h>

namespace tarv {

namespace {

/// Only a full path names one certain file.
bool isFullPath(const std::wstring& path) {
    return path.starts_with(L"\\\\") || (path.size() > 2 && path[1] == L':' && path[2] == L'\\');
}

using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);

HRESULT createFrom(HMODULE library, REFCLSID classId, ComPtr<IDispatch>& object) {
    const auto getClassObject = reinterpret_cast<GetClassObject>(
        reinterpret_cast<void*>(GetProcAddress(library, "DllGetClassObject")));
    if (!getClassObject)
        return HRESULT_FROM_WIN32(GetLastError());
    ComPtr<IClassFactory> factory;
    const HRESULT result = getClassObject(classId, IID_IClassFactory, factory.receiveAny());
    return FAILED(result) ? result : factory->CreateInstance(nullptr, IID_IDispatch, object.receiveAny());
}

class WindowsAutomation final : public Automation {
public:
    Automated<ObjectRef> create(std::wstring_view progId) override {
        const NoSystemBoxes silence;
        CLSID classId;
        ComPtr<IDispatch> object;
        HRESULT result = CLSIDFromProgID(std::wstring(progId).c_str(), &classId);
        if (SUCCEEDED(result)) {
            result = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                                      IID_IDispatch, object.receiveAny());
        }
        if (FAILED(result))
            return Failure{cannotCreate(result, progId)};
        return wrapped(std::move(object));
    }

    Automated<ObjectRef> createFromLibrary(std::wstring_view libraryPath,
                                           std::wstring_view classId) override {
        const NoSystemBoxes silence;
        const std::wstring path(libraryPath);
        CLSID id;
        if (!isFullPath(path))
            return Failure{cannotCreate(E_INVALIDARG, libraryPath)};
        if (const HRESULT result = CLSIDFromString(std::wstring(classId).c_str(), &id); FAILED(result))
            return Failure{cannotCreate(result, libraryPath)};
        // What the library itself imports comes from the system folder, never from its neighbours.
        ModuleHandle library(LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32));
        if (!library && GetLastError() == ERROR_INVALID_PARAMETER) {
            library.reset(
                LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH)); // old Windows 7
        }
        if (!library)
            return Failure{cannotCreate(HRESULT_FROM_WIN32(GetLastError()), libraryPath)};
        ComPtr<IDispatch> object;
        if (const HRESULT result = createFrom(library.get(), id, object); FAILED(result))
            return Failure{cannotCreate(result, libraryPath)};
        library.release(); // its objects may live as long as the process, and so does the library
        return wrapped(std::move(object));
    }

    Automated<ObjectRef> bind(std::wstring_view moniker) override {
        const NoSystemBoxes silence;
        ComPtr<IDispatch> object;
        const HRESULT result =
            CoGetObject(std::wstring(moniker).c_str(), nullptr, IID_IDispatch, object.receiveAny());
        if (FAILED(result))
            return Failure{failureOf(result)};
        return wrapped(std::move(object));
    }

    ObjectRef errorObject(std::shared_ptr<ErrorRecord> record) override {
        return wrapped(makeErrorDispatch(std::move(record)));
    }
};

} // namespace

std::unique_ptr<Automation> makeAutomation() {
    return std::make_unique<WindowsAutomation>();
}

} // namespace tarv
