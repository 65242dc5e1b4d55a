#pragma once

#include "platform/Automation.h"
#include "scripted/Capitals.h"
#include "scripted/FaultPlan.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tarv {

/// One use of a scripted object's member: its name, or "#3" for dispatch number 3, with "=" behind it where
/// it was written.
struct Invocation {
    std::wstring member;
    std::vector<Value> arguments;
};

/// A late-bound object with scripted members. A member that is not scripted fails with number 438, as for a
/// component that does not have it. Names are looked up without regard to case.
class FakeObject : public AutomationObject, Planned {
public:
    using Routine = std::function<Automated<Value>(std::span<const Value>)>;

    FakeObject(FaultPlan& plan, std::vector<Invocation>& log) : Planned(plan), log_(log) {}

    /// A method or a readable property, or with "=" behind its name what writing the property does.
    void runs(const Member& member, Routine routine) {
        routines_[capitals(spelled(member))] = std::move(routine);
    }
    void answers(const Member& member, Value result) {
        runs(member, [result](auto) { return result; });
    }
    std::vector<ObjectRef> elements;

    Automated<Value> call(const Member& member, std::span<const Value> arguments) override {
        return run("AutomationObject.call", spelled(member), arguments);
    }
    Automated<Value> get(const Member& member, std::span<const Value> arguments) override {
        return run("AutomationObject.get", spelled(member), arguments);
    }
    Automated<Empty> put(const Member& member, const Value& value) override {
        const auto done = run("AutomationObject.put", spelled(member) + L"=", {&value, 1});
        return done ? Automated<Empty>(Empty{}) : Failure{done.error()};
    }
    Automated<std::vector<ObjectRef>> items() override {
        const auto code = faults_.enter("AutomationObject.items");
        return code ? Automated<std::vector<ObjectRef>>(refused(*code)) : elements;
    }
    using AutomationObject::call;
    using AutomationObject::get;

private:
    static std::wstring spelled(const Member& member) {
        const auto* name = std::get_if<std::wstring_view>(&member);
        return name ? std::wstring(*name) : L"#" + std::to_wstring(std::get<std::int32_t>(member));
    }
    Automated<Value> run(const char* function, const std::wstring& member, std::span<const Value> arguments) {
        log_.push_back({member, {arguments.begin(), arguments.end()}});
        const auto code = faults_.enter(function);
        const auto routine = routines_.find(capitals(member));
        return code || routine == routines_.end() ? refused(code.value_or(438)) : routine->second(arguments);
    }

    std::vector<Invocation>& log_;
    std::map<std::wstring, Routine> routines_;
};

/// Creates only what a test registered; everything else fails with number 429.
class FakeAutomation : public Automation, Planned {
public:
    using Planned::Planned;

    /// A scripted object with members that answer the same always.
    std::shared_ptr<FakeObject> object(std::initializer_list<std::pair<Member, Value>> answers = {}) {
        const auto made = std::make_shared<FakeObject>(faults_, log);
        for (const auto& [member, result] : answers)
            made->answers(member, result);
        return made;
    }
    Automated<ObjectRef> create(std::wstring_view progId) override {
        return make("Automation.create", progId);
    }
    Automated<ObjectRef> createFromLibrary(std::wstring_view library, std::wstring_view classId) override {
        return make("Automation.createFromLibrary", std::wstring(library).append(classId));
    }
    Automated<ObjectRef> bind(std::wstring_view moniker) override { return make("Automation.bind", moniker); }
    ObjectRef errorObject(std::shared_ptr<ErrorRecord> record) override {
        const auto made = object();
        made->runs(L"Number", [=](auto) { return Value(record->number); });
        made->runs(L"Number=",
                   [=](auto put) { return Value(record->number = std::get<std::int32_t>(put[0])); });
        made->runs(L"Source", [=](auto) { return Value(record->source); });
        made->runs(L"Description", [=](auto) { return Value(record->description); });
        made->runs(L"Description=",
                   [=](auto put) { return Value(record->description = std::get<std::wstring>(put[0])); });
        return made;
    }

    /// The uses of all objects in order, also those that failed.
    std::vector<Invocation> log;
    /// By programmatic identifier, moniker, or library path + class identifier.
    std::map<std::wstring, ObjectRef, std::less<>> provided;

private:
    Automated<ObjectRef> make(const char* function, std::wstring_view key) {
        const auto code = faults_.enter(function);
        const auto made = provided.find(key);
        return code || made == provided.end() ? refused(code.value_or(429))
                                              : Automated<ObjectRef>(made->second);
    }
};

} // namespace tarv
