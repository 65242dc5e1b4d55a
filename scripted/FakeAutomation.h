#pragma once

#include "platform/Automation.h"
#include "scripted/Capitals.h"
#include "scripted/FaultPlan.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tarv {

/// One use of a scripted object. `what` reads "call objekt.Member", "get ...", "put ..." or "items objekt";
/// members by dispatch number read "#3".
struct Invocation {
    std::wstring what;
    std::vector<Value> arguments;
};

/// What all scripted objects share: the plan, the log of their uses and how many there are.
struct AutomationLog {
    FaultPlan& faults;
    std::vector<Invocation> uses{};
    int objects = 0;

    /// Notes a use; its error number where it is to fail.
    std::optional<SystemCode> enter(const char* function, std::wstring what,
                                    std::span<const Value> arguments = {}) {
        uses.push_back({std::move(what), {arguments.begin(), arguments.end()}});
        return faults.enter(function);
    }
    static Failure<ErrorRecord> failure(SystemCode number) {
        return {ErrorRecord{static_cast<std::int32_t>(number), L"", L""}};
    }
};

/// A late-bound object with scripted members. A member that is not scripted fails with number 438, as for a
/// component that does not have it. Names are looked up without regard to case.
class FakeObject : public AutomationObject {
public:
    using Routine = std::function<Automated<Value>(std::span<const Value>)>;

    FakeObject(AutomationLog& log, std::wstring name) : log_(log), name_(std::move(name)) { ++log_.objects; }
    ~FakeObject() override { --log_.objects; }

    /// A method or a readable property, or with "=" behind its name what writing the property does.
    FakeObject& runs(const Member& member, Routine routine) {
        routines_[capitals(spelled(member))] = std::move(routine);
        return *this;
    }
    FakeObject& answers(const Member& member, Value result) {
        return runs(member, [result](auto) { return result; });
    }
    std::vector<ObjectRef> elements;

    Automated<Value> call(const Member& member, std::span<const Value> arguments) override {
        return run("AutomationObject.call", L"call ", spelled(member), arguments);
    }
    Automated<Value> get(const Member& member, std::span<const Value> arguments) override {
        return run("AutomationObject.get", L"get ", spelled(member), arguments);
    }
    Automated<Empty> put(const Member& member, const Value& value) override {
        const auto done = run("AutomationObject.put", L"put ", spelled(member) + L"=", {&value, 1});
        return done ? Automated<Empty>(Empty{}) : Failure{done.error()};
    }
    Automated<std::vector<ObjectRef>> items() override {
        if (const auto code = log_.enter("AutomationObject.items", L"items " + name_))
            return AutomationLog::failure(*code);
        return elements;
    }
    using AutomationObject::call;
    using AutomationObject::get;

private:
    static std::wstring spelled(const Member& member) {
        const auto* name = std::get_if<std::wstring_view>(&member);
        return name ? std::wstring(*name) : L"#" + std::to_wstring(std::get<std::int32_t>(member));
    }
    Automated<Value> run(const char* function, std::wstring verb, const std::wstring& member,
                         std::span<const Value> arguments) {
        if (const auto code = log_.enter(function, verb + name_ + L"." + member, arguments))
            return AutomationLog::failure(*code);
        const auto routine = routines_.find(capitals(member));
        return routine != routines_.end() ? routine->second(arguments) : AutomationLog::failure(438);
    }

    AutomationLog& log_;
    std::wstring name_;
    std::map<std::wstring, Routine> routines_;
};

/// Creates only what a test registered; everything else fails with number 429. Creations stand in the log,
/// too: "create rk_Runtime.rk_Fehler".
class FakeAutomation : public Automation {
public:
    explicit FakeAutomation(FaultPlan& plan) : state{plan} {}

    /// A scripted object that notes its uses under `name`, with members that answer the same always.
    std::shared_ptr<FakeObject> object(std::wstring name,
                                       std::initializer_list<std::pair<Member, Value>> answers = {}) {
        const auto made = std::make_shared<FakeObject>(state, std::move(name));
        for (const auto& [member, result] : answers)
            made->answers(member, result);
        return made;
    }
    Automated<ObjectRef> create(std::wstring_view progId) override {
        return make("Automation.create", L"create ", std::wstring(progId));
    }
    Automated<ObjectRef> createFromLibrary(std::wstring_view library, std::wstring_view classId) override {
        return make("Automation.createFromLibrary", L"load ", std::wstring(library).append(classId));
    }
    Automated<ObjectRef> bind(std::wstring_view moniker) override {
        return make("Automation.bind", L"bind ", std::wstring(moniker));
    }
    ObjectRef errorObject(std::shared_ptr<ErrorRecord> record) override {
        const auto made = object(L"error");
        made->runs(L"Number", [=](auto) { return Value(record->number); });
        made->runs(L"Number=",
                   [=](auto put) { return Value(record->number = std::get<std::int32_t>(put[0])); });
        made->runs(L"Source", [=](auto) { return Value(record->source); });
        made->runs(L"Description", [=](auto) { return Value(record->description); });
        made->runs(L"Description=",
                   [=](auto put) { return Value(record->description = std::get<std::wstring>(put[0])); });
        return made;
    }

    AutomationLog state;
    std::vector<Invocation>& log = state.uses;
    /// By programmatic identifier, moniker, or library path + class identifier.
    std::map<std::wstring, ObjectRef, std::less<>> provided;

private:
    Automated<ObjectRef> make(const char* function, std::wstring verb, const std::wstring& key) {
        const auto code = state.enter(function, verb + key);
        const auto made = provided.find(key);
        if (code || made == provided.end())
            return AutomationLog::failure(code.value_or(429));
        return made->second;
    }
};

} // namespace tarv
