#include "platform/windows/ErrorDispatch.h"

#include "win/CountedObject.h"
#include "win/Variant.h"

#include <algorithm>
#include <iterator>
#include <new>

namespace tarv {

namespace {

enum Id : DISPID {
    number = DISPID_VALUE,
    description = 1,
    source = 2,
    clear = 3
};

struct Name {
    const wchar_t* text;
    Id id;
};
constexpr Name names[] = {{L"Number", Id::number},
                          {L"Description", Id::description},
                          {L"Source", Id::source},
                          {L"Clear", Id::clear}};

class ErrorDispatch final : public DispatchObject {
public:
    explicit ErrorDispatch(std::shared_ptr<ErrorRecord> record) : record_(std::move(record)) {}

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* asked, UINT count, LCID, DISPID* ids) override {
        if (!asked || !ids || count == 0)
            return E_INVALIDARG;
        // Further names would be names of arguments; there are none.
        std::fill_n(ids, count, DISPID_UNKNOWN);
        for (const Name& name : names) {
            if (CompareStringOrdinal(asked[0], -1, name.text, -1, TRUE) == CSTR_EQUAL) {
                ids[0] = name.id;
                return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
            }
        }
        return DISP_E_UNKNOWNNAME;
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO*, UINT*) override {
        const UINT count = parameters ? parameters->cArgs : 0;
        if (id == Id::clear) {
            if ((flags & DISPATCH_METHOD) == 0)
                return DISP_E_MEMBERNOTFOUND;
            *record_ = {};
            return S_OK;
        }
        if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0)
            return count == 1 ? write(id, parameters->rgvarg[0]) : DISP_E_BADPARAMCOUNT;
        if (count != 0)
            return DISP_E_BADPARAMCOUNT;
        return read(id, result);
    }

private:
    std::wstring* text(DISPID id) {
        return id == Id::description ? &record_->description : id == Id::source ? &record_->source : nullptr;
    }

    HRESULT read(DISPID id, VARIANT* result) {
        const std::wstring* const value = text(id);
        if (id != Id::number && !value)
            return DISP_E_MEMBERNOTFOUND;
        if (!result)
            return S_OK;
        VariantInit(result);
        if (!value) {
            result->vt = VT_I4;
            result->lVal = record_->number;
            return S_OK;
        }
        result->vt = VT_BSTR;
        result->bstrVal = Bstr(*value).detach();
        return result->bstrVal ? S_OK : E_OUTOFMEMORY;
    }

    HRESULT write(DISPID id, VARIANT& value) {
        std::wstring* const target = text(id);
        if (id != Id::number && !target)
            return DISP_E_MEMBERNOTFOUND;
        Variant converted;
        const HRESULT done =
            VariantChangeType(&converted.raw(), &value, 0, static_cast<VARTYPE>(target ? VT_BSTR : VT_I4));
        if (FAILED(done))
            return done;
        if (target)
            target->assign(view(converted.raw().bstrVal));
        else
            record_->number = converted.raw().lVal;
        return S_OK;
    }

    std::shared_ptr<ErrorRecord> record_;
};

} // namespace

ComPtr<IDispatch> makeErrorDispatch(std::shared_ptr<ErrorRecord> record) {
    return ComPtr<IDispatch>::take(new ErrorDispatch(std::move(record)));
}

} // namespace tarv
