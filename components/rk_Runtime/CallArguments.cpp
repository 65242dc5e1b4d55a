#include "components/rk_Runtime/CallArguments.h"

#include "win/ComPtr.h"

namespace tarv::component {
namespace {

/// The plain value behind a reference. False when there is none.
bool resolve(Variant& plain, VARIANT* argument) {
    if (!argument || ((argument->vt & VT_BYREF) && !argument->byref))
        return false;
    return SUCCEEDED(VariantCopyInd(&plain.raw(), argument));
}

bool convert(Variant& converted, VARIANT& value, VARTYPE type) {
    return SUCCEEDED(VariantChangeTypeEx(&converted.raw(), &value, LOCALE_USER_DEFAULT, 0, type));
}

ComPtr<IDispatch> objectOf(VARIANT* argument) {
    ComPtr<IDispatch> object;
    Variant plain;
    if (!resolve(plain, argument))
        return object;
    VARIANT& value = plain.raw();
    if ((value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN) && value.punkVal)
        value.punkVal->QueryInterface(IID_IDispatch, object.receiveAny());
    return object;
}

/// The value of a property. False when the object does not have it or its reading fails.
bool property(IDispatch& object, const wchar_t* name, Variant& value) {
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    DISPID id = DISPID_UNKNOWN;
    DISPPARAMS none{};
    return SUCCEEDED(object.GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id)) &&
           SUCCEEDED(object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET | DISPATCH_METHOD,
                                   &none, &value.raw(), nullptr, nullptr));
}

std::wstring textProperty(IDispatch& object, const wchar_t* name) {
    Variant found;
    Variant text;
    if (!property(object, name, found) || !convert(text, found.raw(), VT_BSTR))
        return {};
    return std::wstring(view(text.raw().bstrVal));
}

/// System codes come as error values, too, and from hosts without signed numbers as numbers from 2147483648
/// up.
std::int32_t numberOf(VARIANT& value) {
    if (value.vt == VT_ERROR)
        return value.scode;
    Variant number;
    if (convert(number, value, VT_I4))
        return number.raw().lVal;
    return convert(number, value, VT_UI4) ? static_cast<std::int32_t>(number.raw().ulVal) : 0;
}

} // namespace

HRESULT CallArguments::check(unsigned most) const {
    if (parameters_.cArgs > most || parameters_.cNamedArgs > parameters_.cArgs)
        return DISP_E_BADPARAMCOUNT;
    for (UINT index = 0; index < parameters_.cNamedArgs; ++index) {
        const DISPID name = parameters_.rgdispidNamedArgs[index];
        if (name < 0 || static_cast<unsigned>(name) >= most)
            return DISP_E_PARAMNOTFOUND;
    }
    return S_OK;
}

VARIANT* CallArguments::at(unsigned position) const {
    // The last argument comes first, and the named ones before all others.
    VARIANT* found = nullptr;
    if (position < parameters_.cArgs - parameters_.cNamedArgs)
        found = &parameters_.rgvarg[parameters_.cArgs - 1 - position];
    for (UINT index = 0; index < parameters_.cNamedArgs; ++index)
        if (parameters_.rgdispidNamedArgs[index] == static_cast<DISPID>(position))
            found = &parameters_.rgvarg[index];
    const bool leftOut = found && found->vt == VT_ERROR && found->scode == DISP_E_PARAMNOTFOUND;
    return leftOut ? nullptr : found;
}

VARIANT* CallArguments::assigned() const {
    return parameters_.cArgs == 1 ? parameters_.rgvarg : nullptr;
}

std::wstring textOf(VARIANT* argument) {
    Variant plain;
    Variant text;
    if (!resolve(plain, argument) || !convert(text, plain.raw(), VT_BSTR))
        return {};
    return std::wstring(view(text.raw().bstrVal));
}

ErrorRecord errorRecordOf(VARIANT* argument) {
    ErrorRecord record;
    const ComPtr<IDispatch> object = objectOf(argument);
    if (!object)
        return record;
    Variant number;
    if (property(*object.get(), L"Number", number))
        record.number = numberOf(number.raw());
    record.description = textProperty(*object.get(), L"Description");
    record.source = textProperty(*object.get(), L"Source");
    return record;
}

} // namespace tarv::component
