#pragma once

#include "platform/Answer.h"
#include "platform/ErrorRecord.h"

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tarv {

class AutomationObject;
using ObjectRef = std::shared_ptr<AutomationObject>;

struct Empty {
    friend bool operator==(Empty, Empty) = default;
};
struct Null {
    friend bool operator==(Null, Null) = default;
};
/// An optional argument that the caller leaves out.
struct Missing {
    friend bool operator==(Missing, Missing) = default;
};
/// Days since 30 December 1899, the fraction being the time of day (the automation date).
struct Date {
    double days = 0;
    friend bool operator==(Date, Date) = default;
};
/// An object handed over by reference, as a component expects it that reads the caller's error record.
struct ObjectByRef {
    ObjectRef object;
    friend bool operator==(const ObjectByRef&, const ObjectByRef&) = default;
};

/// The suite's variant: what configuration defaults, numbers and late-bound calls carry.
using Value = std::variant<Empty, Null, Missing, bool, std::int16_t, std::int32_t, double, Date, std::wstring,
                           ObjectRef, ObjectByRef>;

/// What a late-bound call answers: a value, or the component's own error record.
template <class T>
using Automated = Answer<T, ErrorRecord>;

/// A member of a late-bound object, by its name or by its dispatch number.
using Member = std::variant<std::wstring_view, std::int32_t>;

/// One late-bound COM object (IDispatch). The last reference releases it.
class AutomationObject {
public:
    AutomationObject() = default;
    AutomationObject(const AutomationObject&) = delete;
    AutomationObject& operator=(const AutomationObject&) = delete;
    virtual ~AutomationObject() = default;

    virtual Automated<Value> call(const Member& member, std::span<const Value> arguments) = 0;
    virtual Automated<Value> get(const Member& member, std::span<const Value> arguments) = 0;
    virtual Automated<Empty> put(const Member& member, const Value& value) = 0;

    /// The elements of a collection in the order delivered (its enumerator, dispatch number -4).
    virtual Automated<std::vector<ObjectRef>> items() = 0;

    Automated<Value> call(const Member& member, std::initializer_list<Value> arguments) {
        return call(member, std::span<const Value>(arguments.begin(), arguments.size()));
    }
    Automated<Value> get(const Member& member) { return get(member, std::span<const Value>()); }
};

/// Creation of late-bound COM objects.
class Automation {
public:
    virtual ~Automation() = default;

    /// Creates an object by its programmatic identifier. Fails with number 429 when the class is not
    /// registered or cannot be created.
    virtual Automated<ObjectRef> create(std::wstring_view progId) = 0;

    /// Creates an object of class `classId` ("{...}") from a DLL that need not be registered.
    virtual Automated<ObjectRef> createFromLibrary(std::wstring_view libraryPath,
                                                   std::wstring_view classId) = 0;

    /// Binds to a running service by moniker, for instance "winmgmts:".
    virtual Automated<ObjectRef> bind(std::wstring_view moniker) = 0;

    /// An object with the properties Number, Description and Source over `record`. What a component writes
    /// into them arrives in the record; the object may outlive everybody's interest in it.
    virtual ObjectRef errorObject(std::shared_ptr<ErrorRecord> record) = 0;
};

} // namespace tarv
