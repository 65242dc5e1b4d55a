#include "platform/windows/AutomationFailure.h"

#include "win/SystemText.h"
#include "win/Variant.h"

namespace tarv {

namespace {

/// Numbers of the suite's language for what the dispatch itself refuses.
constexpr struct {
    HRESULT code;
    std::int32_t number;
} numbers[] = {{DISP_E_OVERFLOW, 6},
               {DISP_E_TYPEMISMATCH, 13},
               {DISP_E_UNKNOWNNAME, noSuchMember},
               {DISP_E_MEMBERNOTFOUND, noSuchMember},
               {DISP_E_PARAMNOTOPTIONAL, 449},
               {DISP_E_BADPARAMCOUNT, 450}};

constexpr std::int32_t creationFailed = 429;

std::int32_t numberOf(HRESULT code) {
    for (const auto& known : numbers)
        if (known.code == code)
            return known.number;
    return HRESULT_FACILITY(code) == FACILITY_CONTROL ? HRESULT_CODE(code) : static_cast<std::int32_t>(code);
}

std::wstring taken(BSTR& text) {
    std::wstring copy(view(text));
    SysFreeString(text);
    text = nullptr;
    return copy;
}

} // namespace

ErrorRecord failureOf(HRESULT code) {
    return {numberOf(code), systemMessage(static_cast<DWORD>(code)), L""};
}

ErrorRecord failureOf(HRESULT code, EXCEPINFO& info) {
    if (code == DISP_E_EXCEPTION && info.pfnDeferredFillIn)
        info.pfnDeferredFillIn(&info);
    ErrorRecord record{0, taken(info.bstrDescription), taken(info.bstrSource)};
    taken(info.bstrHelpFile);
    // A component gives its number either as a word of its own or as a result code.
    const HRESULT reason = code == DISP_E_EXCEPTION && FAILED(info.scode) ? info.scode : code;
    record.number = info.wCode != 0 ? info.wCode : numberOf(reason);
    if (record.description.empty())
        record.description = systemMessage(static_cast<DWORD>(reason));
    return record;
}

ErrorRecord cannotCreate(HRESULT code, std::wstring_view what) {
    return {creationFailed, systemMessage(static_cast<DWORD>(code)), std::wstring(what)};
}

} // namespace tarv
