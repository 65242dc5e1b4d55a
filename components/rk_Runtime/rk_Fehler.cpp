#include "components/rk_Runtime/rk_Fehler.h"

#include "components/rk_Runtime/ErrorText.h"
#include "components/rk_Runtime/LastReport.h"
#include "win/ComPtr.h"

#include <new>

namespace tarv::component {
namespace {

enum Member : DISPID {
    memberNoVisibleNextMsg = 1,
    memberErrorMsg = 2,
    memberEMW = 3
};
enum Argument : unsigned {
    argumentError,
    argumentLocation,
    argumentExtra,
    argumentCount
};

struct Name {
    const wchar_t* text;
    DISPID id;
};
constexpr Name members[] = {
    {L"NoVisibleNextMsg", memberNoVisibleNextMsg},
    {L"ErrorMsg", memberErrorMsg},
    {L"EMW", memberEMW},
};
constexpr Name methodArguments[] = {
    {L"fehler", argumentError},
    {L"ort", argumentLocation},
    {L"zusatz", argumentExtra},
};

template <std::size_t count>
DISPID find(const Name (&names)[count], const wchar_t* text) {
    for (const Name& name : names)
        if (CompareStringOrdinal(name.text, -1, text, -1, TRUE) == CSTR_EQUAL)
            return name.id;
    return DISPID_UNKNOWN;
}

bool isMethod(DISPID member) {
    return member == memberErrorMsg || member == memberEMW;
}

} // namespace

HRESULT STDMETHODCALLTYPE rk_Fehler::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID,
                                                   DISPID* ids) {
    if (!IsEqualIID(reserved, IID_NULL))
        return DISP_E_UNKNOWNINTERFACE;
    if (!names || !ids || count == 0)
        return E_INVALIDARG;
    ids[0] = find(members, names[0]);
    bool allKnown = ids[0] != DISPID_UNKNOWN;
    for (UINT index = 1; index < count; ++index) {
        ids[index] = isMethod(ids[0]) ? find(methodArguments, names[index]) : DISPID_UNKNOWN;
        allKnown = allKnown && ids[index] != DISPID_UNKNOWN;
    }
    return allKnown ? S_OK : DISP_E_UNKNOWNNAME;
}

HRESULT STDMETHODCALLTYPE rk_Fehler::Invoke(DISPID member, REFIID reserved, LCID, WORD flags,
                                            DISPPARAMS* parameters, VARIANT* result, EXCEPINFO*, UINT*) {
    if (!IsEqualIID(reserved, IID_NULL))
        return DISP_E_UNKNOWNINTERFACE;
    if (!parameters)
        return E_INVALIDARG;
    if (result)
        VariantInit(result);
    // What the host runs meanwhile, the error's properties and its handlers, may release the last reference.
    const auto self = ComPtr<rk_Fehler>::share(this);
    try {
        return invoke(member, flags, CallArguments(*parameters), result);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_FAIL;
    }
}

HRESULT rk_Fehler::invoke(DISPID member, WORD flags, const CallArguments& arguments, VARIANT* result) {
    if (member == memberNoVisibleNextMsg) {
        if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF))
            return setNoVisibleNextMsg(arguments);
        if (const HRESULT wrong = arguments.check(0); FAILED(wrong))
            return wrong;
        if (result) {
            result->vt = VT_BOOL;
            result->boolVal = noVisibleNextMsg_ ? VARIANT_TRUE : VARIANT_FALSE;
        }
        return S_OK;
    }
    if (!isMethod(member) || !(flags & DISPATCH_METHOD))
        return DISP_E_MEMBERNOTFOUND;
    if (const HRESULT wrong = arguments.check(argumentCount); FAILED(wrong))
        return wrong;
    const bool asks = member == memberEMW;
    int answer = 0;
    const HRESULT shown = report(arguments, asks ? Buttons::retryCancel : Buttons::ok, answer);
    if (SUCCEEDED(shown) && asks && result) {
        result->vt = VT_I4;
        result->lVal = answer;
    }
    return shown;
}

HRESULT rk_Fehler::setNoVisibleNextMsg(const CallArguments& arguments) {
    VARIANT* value = arguments.assigned();
    if (!value)
        return DISP_E_BADPARAMCOUNT;
    Variant converted;
    if (FAILED(VariantChangeType(&converted.raw(), value, 0, VT_BOOL)))
        return DISP_E_TYPEMISMATCH;
    noVisibleNextMsg_ = converted.raw().boolVal != VARIANT_FALSE;
    return S_OK;
}

HRESULT rk_Fehler::report(const CallArguments& arguments, Buttons buttons, int& answer) const {
    const std::wstring text =
        errorText(errorRecordOf(arguments.at(argumentError)), textOf(arguments.at(argumentLocation)),
                  textOf(arguments.at(argumentExtra)));
    const bool repeated = rememberReport(text);
    if (repeated && noVisibleNextMsg_) {
        answer = IDCANCEL;
        return S_OK;
    }
    answer = showErrorDialog(text, buttons);
    return answer > 0 ? S_OK : E_FAIL;
}

} // namespace tarv::component
