#include "platform/windows/Variant.h"

#include "platform/windows/WindowsAutomationObject.h"

namespace tarv {

namespace {

/// One overload per kind of Value; the union's members are written directly, as every call passes here.
struct Store {
    VARIANT& out;

    bool operator()(Empty) const { return true; }
    bool operator()(Null) const {
        out.vt = VT_NULL;
        return true;
    }
    bool operator()(Missing) const {
        out.vt = VT_ERROR;
        out.scode = DISP_E_PARAMNOTFOUND;
        return true;
    }
    bool operator()(bool value) const {
        out.vt = VT_BOOL;
        out.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
        return true;
    }
    bool operator()(std::int16_t value) const {
        out.vt = VT_I2;
        out.iVal = value;
        return true;
    }
    bool operator()(std::int32_t value) const {
        out.vt = VT_I4;
        out.lVal = value;
        return true;
    }
    bool operator()(double value) const {
        out.vt = VT_R8;
        out.dblVal = value;
        return true;
    }
    bool operator()(Date value) const {
        out.vt = VT_DATE;
        out.date = value.days;
        return true;
    }
    bool operator()(const std::wstring& value) const {
        const BSTR text = SysAllocStringLen(value.data(), static_cast<UINT>(value.size()));
        if (text == nullptr) {
            return false;
        }
        out.vt = VT_BSTR;
        out.bstrVal = text;
        return true;
    }
    bool operator()(const ObjectRef& value) const {
        IDispatch* const object = dispatchOf(value);
        if (object == nullptr && value) {
            return false;
        }
        out.vt = VT_DISPATCH;
        out.pdispVal = ComPtr<IDispatch>::share(object).detach();
        return true;
    }
    bool operator()(const ObjectByRef& value) const { return (*this)(value.object); }
};

ObjectRef wrapped(ComPtr<IDispatch> object) {
    return object ? std::make_shared<WindowsAutomationObject>(std::move(object)) : ObjectRef();
}

/// Kinds that are not ours, by the system's own conversion.
bool loadConverted(Value& out, const VARIANT& value) {
    Variant plain;
    auto* const source = const_cast<VARIANT*>(&value); // read only, whatever the declarations say
    if ((value.vt & VT_BYREF) != 0) {
        return SUCCEEDED(VariantCopyInd(&plain.raw(), source)) && (plain.type() & VT_BYREF) == 0 &&
               load(out, plain.raw());
    }
    if ((value.vt & VT_ARRAY) != 0) {
        return false;
    }
    if (SUCCEEDED(VariantChangeType(&plain.raw(), source, 0, VT_R8))) {
        out = plain.raw().dblVal;
        return true;
    }
    return false;
}

} // namespace

bool store(VARIANT& out, const Value& value) {
    return std::visit(Store{out}, value);
}

bool load(Value& out, const VARIANT& value) {
    switch (value.vt) {
    case VT_EMPTY:
        out = Empty{};
        return true;
    case VT_NULL:
        out = Null{};
        return true;
    case VT_BOOL:
        out = value.boolVal != VARIANT_FALSE;
        return true;
    case VT_I1:
        out = std::int32_t{value.cVal};
        return true;
    case VT_UI1:
        out = std::int32_t{value.bVal};
        return true;
    case VT_I2:
        out = std::int16_t{value.iVal};
        return true;
    case VT_UI2:
        out = std::int32_t{value.uiVal};
        return true;
    case VT_I4:
    case VT_INT:
        out = static_cast<std::int32_t>(value.lVal);
        return true;
    case VT_R8:
        out = value.dblVal;
        return true;
    case VT_DATE:
        out = Date{value.date};
        return true;
    case VT_BSTR:
        out.emplace<std::wstring>(view(value.bstrVal));
        return true;
    case VT_ERROR:
        if (value.scode == DISP_E_PARAMNOTFOUND) {
            out = Missing{};
        } else {
            out = static_cast<std::int32_t>(value.scode);
        }
        return true;
    case VT_DISPATCH:
        out = wrapped(ComPtr<IDispatch>::share(value.pdispVal));
        return true;
    case VT_UNKNOWN: {
        ComPtr<IDispatch> object;
        if (value.punkVal != nullptr &&
            FAILED(value.punkVal->QueryInterface(IID_IDispatch, object.receiveAny()))) {
            return false;
        }
        out = wrapped(std::move(object));
        return true;
    }
    default:
        return loadConverted(out, value);
    }
}

} // namespace tarv
