#pragma once

#include "platform/Automation.h"
#include "win/ComPtr.h"

#include <string>
#include <utility>
#include <vector>

#include <windows.h>

#include <oleauto.h>

namespace tarv {

/// A late-bound object of another component. Used in the apartment that created it only.
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
IDispatch* dispatchOf(const ObjectRef& object);

} // namespace tarv
