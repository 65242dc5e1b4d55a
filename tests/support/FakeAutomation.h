#pragma once

#include "platform/Automation.h"
#include "runtime/Funktionen32/Texts.h"
#include "tests/support/FaultPlan.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tarv {

/// One use of a scripted object, in the order of all uses. `what` reads "call objekt.Member", "get ...", "put
/// ..." or "items objekt"; members by dispatch number read "#3".
struct Invocation {
    std::wstring what;
    std::vector<Value> arguments;
};

class FakeAutomation;

/// A late-bound object with scripted members. A member that is not scripted fails with number 438, as for a
/// component that does not have it. Names are looked up without regard to case.
class FakeObject : public AutomationObject {
public:
    using Routine = std::function<Automated<Value>(std::span<const Value>)>;

    FakeObject(FakeAutomation& automation, std::wstring name)
        : automation_(automation), name_(std::move(name)) {}

    /// A method or a readable property.
    FakeObject& answers(const Member& member, Value result);
    FakeObject& runs(const Member& member, Routine routine);
    /// A property that keeps what is put into it.
    FakeObject& property(const Member& member, Value value = {});
    FakeObject& property(const Member& member, std::function<Value()> read,
                         std::function<void(const Value&)> write);

    std::vector<ObjectRef> elements;

    Automated<Value> call(const Member& member, std::span<const Value> arguments) override {
        return read("AutomationObject.call", L"call ", member, arguments);
    }
    Automated<Value> get(const Member& member, std::span<const Value> arguments) override {
        return read("AutomationObject.get", L"get ", member, arguments);
    }
    Automated<Empty> put(const Member& member, const Value& value) override;
    Automated<std::vector<ObjectRef>> items() override;
    using AutomationObject::call;
    using AutomationObject::get;

private:
    Automated<Value> read(std::string_view function, std::wstring_view verb, const Member& member,
                          std::span<const Value> arguments);

    FakeAutomation& automation_;
    std::wstring name_;
    std::map<std::wstring, Routine> readers_;
    std::map<std::wstring, std::function<void(const Value&)>> writers_;
};

/// Creates only what a test registered; everything else fails with number 429.
class FakeAutomation : public Automation {
public:
    explicit FakeAutomation(FaultPlan& plan) : faults(plan) {}

    /// A scripted object that notes its uses in `log` under `name`.
    std::shared_ptr<FakeObject> object(std::wstring name);

    /// The key is a programmatic identifier, a moniker, or library path + class identifier; in any case.
    void provide(std::wstring_view key, ObjectRef made) { provided_[lowerCase(key)] = std::move(made); }
    void forget(std::wstring_view key) { provided_.erase(lowerCase(key)); }

    Automated<ObjectRef> create(std::wstring_view progId) override {
        return make("Automation.create", L"create ", std::wstring(progId));
    }
    Automated<ObjectRef> createFromLibrary(std::wstring_view libraryPath,
                                           std::wstring_view classId) override {
        return make("Automation.createFromLibrary", L"load ", std::wstring(libraryPath).append(classId));
    }
    Automated<ObjectRef> bind(std::wstring_view moniker) override {
        return make("Automation.bind", L"bind ", std::wstring(moniker));
    }
    ObjectRef errorObject(std::shared_ptr<ErrorRecord> record) override;

    /// The uses of all objects. Creations stand here too: "create rk_Runtime.rk_Fehler".
    std::vector<Invocation> log;
    /// Only the `what` of the log.
    std::vector<std::wstring> uses() const;

    FaultPlan& faults;

private:
    Automated<ObjectRef> make(std::string_view function, std::wstring_view verb, std::wstring key);

    std::map<std::wstring, ObjectRef> provided_;
};

} // namespace tarv
