#pragma once

#include "components/rk_Runtime/CallArguments.h"
#include "components/rk_Runtime/ErrorDialog.h"
#include "win/CountedObject.h"

namespace tarv::component {

/// The suite's error display, for late-bound callers:
///
///   NoVisibleNextMsg              Boolean, at first False. While it is True, a report that says exactly what
///                                 the last one of this process said is not shown again: ErrorMsg returns at
///                                 once, EMW answers 2.
///   ErrorMsg(fehler, ort, zusatz) shows an error.
///   EMW(fehler, ort, zusatz)      shows it as a question and answers 4 (Wiederholen) or 2 (Abbrechen).
///
/// `fehler` is an object with Number, Description and Source; Number may be an error value or unsigned, too.
/// Every argument may be missing, come by reference or by name; what cannot be read counts as not given,
/// since the report matters more than its form.
class rk_Fehler final : public DispatchObject {
public:
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                     UINT* badArgument) override;

private:
    HRESULT invoke(DISPID member, WORD flags, const CallArguments& arguments, VARIANT* result);
    HRESULT setNoVisibleNextMsg(const CallArguments& arguments);
    HRESULT report(const CallArguments& arguments, Buttons buttons, int& answer) const;

    bool noVisibleNextMsg_ = false;
};

} // namespace tarv::component
