#pragma once

#include "platform/Answer.h"

#include <algorithm>
#include <deque>
#include <initializer_list>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

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

/// Counts the calls over the scripted border and makes chosen ones fail, so that a test can break any single
/// function. Functions are named "Interface.function".
class FaultPlan {
public:
    /// Makes every further call fail as the function documents it: with `code` where it answers a code or an
    /// error record (as its number), else with its empty answer. Functions that cannot fail are only counted.
    void fail(std::string_view function, SystemCode code) {
        plans_[function].code = code;
        plans_[function].always = true;
    }

    /// Makes only the named calls fail; the call after this instruction is number 1.
    void fail(std::string_view function, SystemCode code, std::initializer_list<int> callNumbers) {
        Plan& plan = plans_[function];
        plan.code = code;
        for (const int number : callNumbers)
            plan.numbers.push_back(plan.calls + number);
    }

    /// Ends all failures; the counts stay.
    void heal() {
        for (auto& [name, plan] : plans_)
            plan = {plan.calls, 0, false, {}};
    }

    int calls(std::string_view function) { return plans_[function].calls; }

    /// Asked by every scripted function at its entry.
    std::optional<SystemCode> enter(std::string_view function) {
        Plan& plan = plans_[function];
        const bool fails = std::ranges::count(plan.numbers, ++plan.calls) != 0 || plan.always;
        return fails ? std::optional(plan.code) : std::nullopt;
    }

    /// The same for a function that answers `value`, or nothing when it fails.
    template <class T>
    T value(std::string_view function, T value) {
        return enter(function) ? T() : value;
    }

    /// The same for a function that answers what `action` does, or the planned code.
    template <class Action>
    auto answer(std::string_view function, Action action) -> decltype(action()) {
        if (const auto code = enter(function))
            return Failure{*code};
        return action();
    }

private:
    struct Plan {
        int calls = 0;
        SystemCode code = 0;
        bool always = false;
        std::vector<int> numbers;
    };
    std::map<std::string_view, Plan> plans_;
};

/// A scripted interface.
struct Planned {
    explicit Planned(FaultPlan& plan) : faults_(plan) {}
    FaultPlan& faults_;
};

} // namespace tarv
