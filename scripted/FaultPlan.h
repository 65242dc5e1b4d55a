#pragma once

#include "platform/Answer.h"
#include "platform/ErrorRecord.h"

#include <deque>
#include <limits>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>

namespace tarv {

/// Answers that a test laid out, used up in order; then always `otherwise`.
template <class T>
T nextOf(std::deque<T>& answers, T otherwise) {
    if (answers.empty())
        return otherwise;
    T answer = answers.front();
    answers.pop_front();
    return answer;
}

/// Counts the calls over the scripted border and makes chosen ones fail. Functions are named
/// "Interface.function".
class FaultPlan {
public:
    struct Plan {
        int calls = 0;
        SystemCode code = 0;
        int first = 0;
        int last = 0;
    };

    /// Lets calls fail as the function documents it: with `code` where it answers a code or an error record
    /// (as its number), else with its empty answer. The call after this instruction is number 1.
    void fail(const std::string& function, SystemCode code, int first = 1, int last = 1'000'000) {
        const int calls = plans[function].calls;
        plans[function] = {calls, code, calls + first, calls + last};
    }
    int calls(const std::string& function) { return plans[function].calls; }

    /// Asked by every scripted function that can fail, at its entry.
    std::optional<SystemCode> enter(const char* function) {
        step();
        Plan& plan = plans[function];
        ++plan.calls;
        return plan.calls >= plan.first && plan.calls <= plan.last ? std::optional(plan.code) : std::nullopt;
    }
    /// The same for a function that answers `value`, or nothing when it fails.
    template <class T>
    T value(const char* function, T value) {
        return enter(function) ? T() : value;
    }
    /// Counts one call over the border; too many mean that a routine never ends.
    void step() {
        if (--stepsLeft < 0)
            throw std::logic_error("more calls over the border than any routine needs");
    }

    /// The functions that can fail and have been called.
    std::map<std::string, Plan> plans;
    std::int64_t stepsLeft = std::numeric_limits<std::int64_t>::max();
};

/// How a scripted component fails.
inline Failure<ErrorRecord> refused(SystemCode number) {
    return {ErrorRecord{static_cast<std::int32_t>(number), L"Verweigert", L"Komponente"}};
}

/// A scripted interface.
struct Planned {
    explicit Planned(FaultPlan& plan) : faults_(plan) {}
    FaultPlan& faults_;
};

} // namespace tarv
