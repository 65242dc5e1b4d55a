#pragma once

#include "win/CountedObject.h"

namespace tarv::component {

/// Makes objects of the class rk_Fehler.
class ClassFactory final : public CountedObject<IClassFactory, IID_IClassFactory> {
public:
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;
};

} // namespace tarv::component
