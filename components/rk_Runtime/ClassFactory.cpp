#include "components/rk_Runtime/ClassFactory.h"

#include "components/rk_Runtime/rk_Fehler.h"
#include "win/ComPtr.h"

#include <new>

namespace tarv::component {

HRESULT STDMETHODCALLTYPE ClassFactory::CreateInstance(IUnknown* outer, REFIID id, void** object) {
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (outer)
        return CLASS_E_NOAGGREGATION;
    const auto created = ComPtr<rk_Fehler>::take(new (std::nothrow) rk_Fehler);
    return created ? created->QueryInterface(id, object) : E_OUTOFMEMORY;
}

HRESULT STDMETHODCALLTYPE ClassFactory::LockServer(BOOL) {
    return S_OK; // the module stays anyway
}

} // namespace tarv::component
