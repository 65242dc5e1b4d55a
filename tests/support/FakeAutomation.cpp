#include "tests/support/FakeAutomation.h"

#include "runtime/Funktionen32/Texts.h"

namespace tarv {
namespace {

constexpr SystemCode unknownMember = 438;
constexpr SystemCode cannotCreate = 429;

std::wstring spelled(const Member& member) {
    if (const auto* name = std::get_if<std::wstring_view>(&member))
        return std::wstring(*name);
    return L"#" + std::to_wstring(std::get<std::int32_t>(member));
}

std::wstring keyOf(const Member& member) {
    return lowerCase(spelled(member));
}

Failure<ErrorRecord> failure(SystemCode number) {
    return Failure{ErrorRecord{static_cast<std::int32_t>(number), L"", L""}};
}

} // namespace

FakeObject& FakeObject::answers(const Member& member, Value result) {
    return runs(member, [result = std::move(result)](std::span<const Value>) { return result; });
}

FakeObject& FakeObject::runs(const Member& member, Routine routine) {
    readers_[keyOf(member)] = std::move(routine);
    return *this;
}

FakeObject& FakeObject::property(const Member& member, Value value) {
    const auto cell = std::make_shared<Value>(std::move(value));
    return property(
        member, [cell] { return *cell; }, [cell](const Value& put) { *cell = put; });
}

FakeObject& FakeObject::property(const Member& member, std::function<Value()> read,
                                 std::function<void(const Value&)> write) {
    writers_[keyOf(member)] = std::move(write);
    return runs(member, [read = std::move(read)](std::span<const Value>) { return read(); });
}

Automated<Value> FakeObject::read(std::string_view function, std::wstring_view verb, const Member& member,
                                  std::span<const Value> arguments) {
    automation_.log.push_back(
        {std::wstring(verb) + name_ + L"." + spelled(member), {arguments.begin(), arguments.end()}});
    if (const auto code = automation_.faults.enter(function))
        return failure(*code);
    const auto reader = readers_.find(keyOf(member));
    return reader != readers_.end() ? reader->second(arguments) : failure(unknownMember);
}

Automated<Empty> FakeObject::put(const Member& member, const Value& value) {
    automation_.log.push_back({L"put " + name_ + L"." + spelled(member), {value}});
    const auto writer = writers_.find(keyOf(member));
    if (const auto code = automation_.faults.enter("AutomationObject.put"); code || writer == writers_.end())
        return failure(code.value_or(unknownMember));
    writer->second(value);
    return Empty{};
}

Automated<std::vector<ObjectRef>> FakeObject::items() {
    automation_.log.push_back({L"items " + name_, {}});
    if (const auto code = automation_.faults.enter("AutomationObject.items"))
        return failure(*code);
    return elements;
}

std::shared_ptr<FakeObject> FakeAutomation::object(std::wstring name) {
    return std::make_shared<FakeObject>(*this, std::move(name));
}

Automated<ObjectRef> FakeAutomation::make(std::string_view function, std::wstring_view verb,
                                          std::wstring key) {
    log.push_back({std::wstring(verb) + key, {}});
    if (const auto code = faults.enter(function))
        return failure(*code);
    const auto made = provided_.find(lowerCase(key));
    if (made == provided_.end())
        return failure(cannotCreate);
    return made->second;
}

ObjectRef FakeAutomation::errorObject(std::shared_ptr<ErrorRecord> record) {
    faults.enter("Automation.errorObject");
    const auto made = object(L"error");
    const auto text = [&](std::wstring_view name, std::wstring ErrorRecord::*field) {
        made->property(
            name, [=] { return Value((*record).*field); },
            [=](const Value& put) { (*record).*field = std::get<std::wstring>(put); });
    };
    made->property(
        L"Number", [=] { return Value(record->number); },
        [=](const Value& put) { record->number = std::get<std::int32_t>(put); });
    text(L"Description", &ErrorRecord::description);
    text(L"Source", &ErrorRecord::source);
    return made;
}

std::vector<std::wstring> FakeAutomation::uses() const {
    std::vector<std::wstring> names;
    for (const Invocation& invocation : log)
        names.push_back(invocation.what);
    return names;
}

} // namespace tarv
