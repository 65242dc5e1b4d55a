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

std::int32_t wholeNumber(const Value& value) {
    if (const auto* small = std::get_if<std::int16_t>(&value))
        return *small;
    if (const auto* real = std::get_if<double>(&value))
        return static_cast<std::int32_t>(*real);
    const auto* number = std::get_if<std::int32_t>(&value);
    return number != nullptr ? *number : 0;
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
    writes(member, [cell](const Value& put) { *cell = put; });
    return runs(member, [cell](std::span<const Value>) { return *cell; });
}

FakeObject& FakeObject::writes(const Member& member, std::function<void(const Value&)> assign) {
    writers_[keyOf(member)] = std::move(assign);
    return *this;
}

Automated<Value> FakeObject::call(const Member& member, std::span<const Value> arguments) {
    return invoke("AutomationObject.call", L"call ", member, arguments);
}

Automated<Value> FakeObject::get(const Member& member, std::span<const Value> arguments) {
    return invoke("AutomationObject.get", L"get ", member, arguments);
}

Automated<Value> FakeObject::invoke(std::string_view function, std::wstring_view verb, const Member& member,
                                    std::span<const Value> arguments) {
    automation_.log.push_back({std::wstring(verb) + name_ + L"." + spelled(member),
                               std::vector<Value>(arguments.begin(), arguments.end())});
    if (const auto code = automation_.faults.enter(function))
        return failure(*code);
    const auto reader = readers_.find(keyOf(member));
    if (reader == readers_.end())
        return failure(unknownMember);
    return reader->second(arguments);
}

Automated<Empty> FakeObject::put(const Member& member, const Value& value) {
    automation_.log.push_back({L"put " + name_ + L"." + spelled(member), {value}});
    if (const auto code = automation_.faults.enter("AutomationObject.put"))
        return failure(*code);
    const auto writer = writers_.find(keyOf(member));
    if (writer == writers_.end())
        return failure(unknownMember);
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

void FakeAutomation::provide(std::wstring_view key, ObjectRef made) {
    provide(key, [made = std::move(made)] { return Automated<ObjectRef>(made); });
}

void FakeAutomation::provide(std::wstring_view key, Factory factory) {
    factories_[lowerCase(key)] = std::move(factory);
}

void FakeAutomation::forget(std::wstring_view key) {
    factories_.erase(lowerCase(key));
}

Automated<ObjectRef> FakeAutomation::create(std::wstring_view progId) {
    return make("Automation.create", L"create ", std::wstring(progId));
}

Automated<ObjectRef> FakeAutomation::createFromLibrary(std::wstring_view libraryPath,
                                                       std::wstring_view classId) {
    return make("Automation.createFromLibrary", L"load ", std::wstring(libraryPath) + std::wstring(classId));
}

Automated<ObjectRef> FakeAutomation::bind(std::wstring_view moniker) {
    return make("Automation.bind", L"bind ", std::wstring(moniker));
}

Automated<ObjectRef> FakeAutomation::make(std::string_view function, std::wstring_view verb,
                                          std::wstring key) {
    log.push_back({std::wstring(verb) + key, {}});
    if (const auto code = faults.enter(function))
        return failure(*code);
    const auto factory = factories_.find(lowerCase(key));
    if (factory == factories_.end())
        return failure(cannotCreate);
    return factory->second();
}

ObjectRef FakeAutomation::errorObject(std::shared_ptr<ErrorRecord> record) {
    faults.enter("Automation.errorObject");
    const auto made = object(L"error");
    const auto text = [&](std::wstring_view name, std::wstring ErrorRecord::*field) {
        made->runs(name, [=](std::span<const Value>) { return Value((*record).*field); });
        made->writes(name, [=](const Value& put) {
            const auto* given = std::get_if<std::wstring>(&put);
            (*record).*field = given != nullptr ? *given : std::wstring();
        });
    };
    made->runs(L"Number", [=](std::span<const Value>) { return Value(record->number); });
    made->writes(L"Number", [=](const Value& put) { record->number = wholeNumber(put); });
    text(L"Description", &ErrorRecord::description);
    text(L"Source", &ErrorRecord::source);
    made->runs(L"Clear", [=](std::span<const Value>) {
        *record = {};
        return Value();
    });
    return made;
}

std::vector<std::wstring> FakeAutomation::uses() const {
    std::vector<std::wstring> names;
    for (const Invocation& invocation : log)
        names.push_back(invocation.what);
    return names;
}

} // namespace tarv
