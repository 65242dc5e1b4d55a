#pragma once

#include <atomic>

#include <oaidl.h>

namespace tarv {

/// A COM object of one interface; its last reference destroys it.
template <class Interface, const IID& interfaceId>
class CountedObject : public Interface {
public:
    CountedObject() = default;
    CountedObject(const CountedObject&) = delete;
    CountedObject& operator=(const CountedObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (!object)
            return E_POINTER;
        *object = nullptr;
        if (!IsEqualIID(id, IID_IUnknown) && !IsEqualIID(id, interfaceId))
            return E_NOINTERFACE;
        AddRef();
        *object = static_cast<Interface*>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

protected:
    virtual ~CountedObject() = default;

private:
    std::atomic<ULONG> references_{1};
};

/// An object for late-bound callers, without a type library.
class DispatchObject : public CountedObject<IDispatch, IID_IDispatch> {
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (!count)
            return E_POINTER;
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        if (info)
            *info = nullptr;
        return DISP_E_BADINDEX;
    }
};

} // namespace tarv
