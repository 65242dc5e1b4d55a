#include "platform/windows/WindowsAutomationObject.h"

#include "platform/windows/AutomationFailure.h"
#include "platform/windows/Variant.h"

#include <array>

namespace tarv {

namespace {

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
            if (!store(slot, values[i])) {
                valid_ = false;
            } else if (std::holds_alternative<ObjectByRef>(values[i])) {
                refer(slot);
            }
        }
    }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;
    ~Arguments() {
        for (std::size_t i = 0; i < count_; ++i) {
            VariantClear(&first_[i]);
        }
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

} // namespace

IDispatch* dispatchOf(const ObjectRef& object) {
    const auto* const ours = dynamic_cast<const WindowsAutomationObject*>(object.get());
    return ours != nullptr ? ours->dispatch() : nullptr;
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
    if (SUCCEEDED(result)) {
        ids_.emplace_back(std::move(terminated), id);
    }
    return result;
}

Automated<Value> WindowsAutomationObject::invoke(const Member& member, WORD flags,
                                                 std::span<const Value> arguments) {
    DISPID id = DISPID_UNKNOWN;
    if (const HRESULT result = identify(member, id); FAILED(result)) {
        return Failure{failureOf(result)};
    }
    Arguments passed(arguments);
    if (!passed.valid()) {
        return mismatch();
    }
    DISPPARAMS parameters = passed.parameters();
    Variant answer;
    EXCEPINFO info{};
    UINT wrongArgument = 0;
    const HRESULT result = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                           &answer.raw(), &info, &wrongArgument);
    if (FAILED(result)) {
        return Failure{failureOf(result, info)};
    }
    Value value;
    if (!load(value, answer.raw())) {
        return mismatch();
    }
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
    if (const HRESULT result = identify(member, id); FAILED(result)) {
        return Failure{failureOf(result)};
    }
    Arguments passed(std::span<const Value>(&value, 1));
    if (!passed.valid()) {
        return mismatch();
    }
    DISPID valueName = DISPID_PROPERTYPUT;
    DISPPARAMS parameters = passed.parameters();
    parameters.cNamedArgs = 1;
    parameters.rgdispidNamedArgs = &valueName;
    const auto assign = [&](WORD flags) -> Automated<Empty> {
        EXCEPINFO info{};
        const HRESULT result =
            object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, nullptr, &info, nullptr);
        if (FAILED(result)) {
            return Failure{failureOf(result, info)};
        }
        return Empty{};
    };
    if (std::holds_alternative<ObjectRef>(value) || std::holds_alternative<ObjectByRef>(value)) {
        // An object is set by reference where the component has such a setter. A setter that ran and failed
        // is not asked a second time.
        if (auto done = assign(DISPATCH_PROPERTYPUTREF); done || done.error().number != noSuchMember) {
            return done;
        }
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
    if (FAILED(result)) {
        return Failure{failureOf(result, info)};
    }
    ComPtr<IEnumVARIANT> elements;
    const bool isObject = answer.type() == VT_UNKNOWN || answer.type() == VT_DISPATCH;
    if (!isObject || answer.raw().punkVal == nullptr ||
        FAILED(answer.raw().punkVal->QueryInterface(IID_IEnumVARIANT, elements.receiveAny()))) {
        return mismatch();
    }
    std::vector<ObjectRef> items;
    for (;;) {
        Variant element;
        result = elements->Next(1, &element.raw(), nullptr);
        if (result != S_OK) {
            break;
        }
        Value value;
        if (!load(value, element.raw()) || !std::holds_alternative<ObjectRef>(value)) {
            return mismatch();
        }
        items.push_back(std::get<ObjectRef>(std::move(value)));
    }
    if (FAILED(result)) {
        return Failure{failureOf(result)}; // a query may fail only when its results are fetched
    }
    return items;
}

} // namespace tarv
