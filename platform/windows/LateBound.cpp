#include "platform/windows/LateBound.h"

#include "platform/windows/AutomationFailure.h"
#include "win/Variant.h"

#include <array>
#include <utility>

namespace tarv {

namespace {

class WindowsAutomationObject final : public AutomationObject {
public:
    explicit WindowsAutomationObject(ComPtr<IDispatch> object) : object_(std::move(object)) {}

    Automated<Value> call(const Member& member, std::span<const Value> arguments) override;
    Automated<Value> get(const Member& member, std::span<const Value> arguments) override;
    Automated<Empty> put(const Member& member, const Value& value) override;
    Automated<std::vector<ObjectRef>> items() override;

    IDispatch* dispatch() const { return object_.get(); }

private:
    HRESULT identify(const Member& member, DISPID& id);
    Automated<Value> invoke(const Member& member, WORD flags, std::span<const Value> arguments);

    ComPtr<IDispatch> object_;
    /// Names asked for so far: few per object, and asking again costs as much as a simple call.
    std::vector<std::pair<std::wstring, DISPID>> ids_;
};

/// The object behind a reference, uncounted; null for none and for an object that is not of this kind.
IDispatch* dispatchOf(const ObjectRef& object) {
    const auto* const ours = dynamic_cast<const WindowsAutomationObject*>(object.get());
    return ours ? ours->dispatch() : nullptr;
}

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
        if (!text)
            return false;
        out.vt = VT_BSTR;
        out.bstrVal = text;
        return true;
    }
    bool operator()(const ObjectRef& value) const {
        IDispatch* const object = dispatchOf(value);
        if (!object && value)
            return false;
        out.vt = VT_DISPATCH;
        out.pdispVal = ComPtr<IDispatch>::share(object).detach();
        return true;
    }
    bool operator()(const ObjectByRef& value) const { return (*this)(value.object); }
};

/// Kinds that are not ours, by the system's own conversion.
bool loadConverted(Value& out, const VARIANT& value) {
    Variant plain;
    auto* const source = const_cast<VARIANT*>(&value); // read only, whatever the declarations say
    if ((value.vt & VT_BYREF) != 0) {
        return SUCCEEDED(VariantCopyInd(&plain.raw(), source)) && (plain.type() & VT_BYREF) == 0 &&
               load(out, plain.raw());
    }
    if ((value.vt & VT_ARRAY) != 0)
        return false;
    if (SUCCEEDED(VariantChangeType(&plain.raw(), source, 0, VT_R8))) {
        out = plain.raw().dblVal;
        return true;
    }
    return false;
}

/// The arguments of one call in the order the system wants them: the last first.
class Arguments {
public:
    explicit Arguments(std::span<const Value> values) : count_(values.size()) {
        if (count_ > few_.size()) {
            many_.resize(count_);
            first_ = many_.data();
        }
        for (std::size_t i = 0; i < count_; ++i) {
            VARIANT& slot = first_[count_ - 1 - i];
            VariantInit(&slot);
            if (!store(slot, values[i]))
                valid_ = false;
            else if (std::holds_alternative<ObjectByRef>(values[i]))
                refer(slot);
        }
    }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;
    ~Arguments() {
        for (std::size_t i = 0; i < count_; ++i)
            VariantClear(&first_[i]);
    }

    bool valid() const { return valid_; }
    DISPPARAMS parameters() { return {first_, nullptr, static_cast<UINT>(count_), 0}; }

private:
    /// Turns a plain object into one by reference. The place it stands in owns its reference, since the
    /// component may put another object there.
    void refer(VARIANT& slot) {
        referred_.reserve(count_); // the places must not move any more
        referred_.push_back(ComPtr<IDispatch>::take(slot.pdispVal));
        slot.vt = VT_BYREF | VT_DISPATCH;
        slot.ppdispVal = referred_.back().receive();
    }

    std::array<VARIANT, 4> few_;
    std::vector<VARIANT> many_;
    std::vector<ComPtr<IDispatch>> referred_;
    VARIANT* first_ = few_.data();
    std::size_t count_;
    bool valid_ = true;
};

Failure<ErrorRecord> mismatch() {
    return Failure{failureOf(DISP_E_TYPEMISMATCH)};
}

HRESULT WindowsAutomationObject::identify(const Member& member, DISPID& id) {
    if (const auto* const number = std::get_if<std::int32_t>(&member)) {
        id = *number;
        return S_OK;
    }
    const std::wstring_view name = std::get<std::wstring_view>(member);
    for (const auto& [known, knownId] : ids_) {
        if (known == name) {
            id = knownId;
            return S_OK;
        }
    }
    std::wstring terminated(name);
    LPOLESTR names = terminated.data();
    const HRESULT result = object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
    if (SUCCEEDED(result))
        ids_.emplace_back(std::move(terminated), id);
    return result;
}

Automated<Value> WindowsAutomationObject::invoke(const Member& member, WORD flags,
                                                 std::span<const Value> arguments) {
    DISPID id = DISPID_UNKNOWN;
    if (const HRESULT result = identify(member, id); FAILED(result))
        return Failure{failureOf(result)};
    Arguments passed(arguments);
    if (!passed.valid())
        return mismatch();
    DISPPARAMS parameters = passed.parameters();
    Variant answer;
    EXCEPINFO info{};
    UINT wrongArgument = 0;
    const HRESULT result = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                           &answer.raw(), &info, &wrongArgument);
    if (FAILED(result))
        return Failure{failureOf(result, info)};
    Value value;
    if (!load(value, answer.raw()))
        return mismatch();
    return value;
}

Automated<Value> WindowsAutomationObject::call(const Member& member, std::span<const Value> arguments) {
    return invoke(member, DISPATCH_METHOD, arguments);
}

Automated<Value> WindowsAutomationObject::get(const Member& member, std::span<const Value> arguments) {
    // Some components know a property only when it may be a method as well, which is how script hosts ask.
    return invoke(member, DISPATCH_PROPERTYGET | DISPATCH_METHOD, arguments);
}

Automated<Empty> WindowsAutomationObject::put(const Member& member, const Value& value) {
    DISPID id = DISPID_UNKNOWN;
    if (const HRESULT result = identify(member, id); FAILED(result))
        return Failure{failureOf(result)};
    Arguments passed(std::span<const Value>(&value, 1));
    if (!passed.valid())
        return mismatch();
    DISPID valueName = DISPID_PROPERTYPUT;
    DISPPARAMS parameters = passed.parameters();
    parameters.cNamedArgs = 1;
    parameters.rgdispidNamedArgs = &valueName;
    const auto assign = [&](WORD flags) -> Automated<Empty> {
        EXCEPINFO info{};
        const HRESULT result =
            object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, nullptr, &info, nullptr);
        if (FAILED(result))
            return Failure{failureOf(result, info)};
        return Empty{};
    };
    if (std::holds_alternative<ObjectRef>(value) || std::holds_alternative<ObjectByRef>(value)) {
        // An object is set by reference where the component has such a setter. A setter that ran and failed
        // is not asked a second time.
        if (auto done = assign(DISPATCH_PROPERTYPUTREF); done || done.error().number != noSuchMember)
            return done;
    }
    return assign(DISPATCH_PROPERTYPUT);
}

Automated<std::vector<ObjectRef>> WindowsAutomationObject::items() {
    DISPPARAMS none{};
    Variant answer;
    EXCEPINFO info{};
    HRESULT result =
        object_->Invoke(DISPID_NEWENUM, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET | DISPATCH_METHOD,
                        &none, &answer.raw(), &info, nullptr);
    if (FAILED(result))
        return Failure{failureOf(result, info)};
    ComPtr<IEnumVARIANT> elements;
    const bool isObject = answer.type() == VT_UNKNOWN || answer.type() == VT_DISPATCH;
    if (!isObject || !answer.raw().punkVal ||
        FAILED(answer.raw().punkVal->QueryInterface(IID_IEnumVARIANT, elements.receiveAny()))) {
        return mismatch();
    }
    std::vector<ObjectRef> items;
    for (;;) {
        Variant element;
        result = elements->Next(1, &element.raw(), nullptr);
        if (result != S_OK)
            break;
        Value value;
        if (!load(value, element.raw()) || !std::holds_alternative<ObjectRef>(value))
            return mismatch();
        items.push_back(std::get<ObjectRef>(std::move(value)));
    }
    if (FAILED(result))
        return Failure{failureOf(result)}; // a query may fail only when its results are fetched
    return items;
}

} // namespace

ObjectRef wrapped(ComPtr<IDispatch> object) {
    return object ? std::make_shared<WindowsAutomationObject>(std::move(object)) : ObjectRef();
}

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
        if (value.scode == DISP_E_PARAMNOTFOUND)
            out = Missing{};
        else
            out = static_cast<std::int32_t>(value.scode);
        return true;
    case VT_DISPATCH:
        out = wrapped(ComPtr<IDispatch>::share(value.pdispVal));
        return true;
    case VT_UNKNOWN: {
        ComPtr<IDispatch> object;
        if (value.punkVal && FAILED(value.punkVal->QueryInterface(IID_IDispatch, object.receiveAny())))
            return false;
        out = wrapped(std::move(object));
        return true;
    }
    default:
        return loadConverted(out, value);
    }
}

} // namespace tarv
