#pragma once

#include "platform/Answer.h"

#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace tarv {

/// Counts the calls over the scripted border and makes chosen ones fail, so that a test can break any single
/// function. Functions are named "Interface.function"; an unknown name is a mistake in the test and throws.
class FaultPlan {
public:
    /// Every function of the border by name.
    static std::span<const std::string_view> functions();

    /// Makes every further call fail as the function documents it: with `code` where it answers a code or an
    /// error record (as its number), else with its empty answer. Functions that cannot fail are only counted.
    void fail(std::string_view function, SystemCode code);

    /// Makes only the named calls fail; the call after this instruction is number 1.
    void fail(std::string_view function, SystemCode code, std::initializer_list<int> callNumbers);

    /// Ends all failures; the counts stay.
    void heal();

    int calls(std::string_view function) { return plan(function).calls; }

    /// Asked by every scripted function at its entry.
    std::optional<SystemCode> enter(std::string_view function);

    /// The same for a function that answers `value`, or nothing when it fails.
    template <class T>
    T value(std::string_view function, T value) {
        return enter(function) ? T() : value;
    }

private:
    struct Plan {
        int calls = 0;
        SystemCode code = 0;
        bool always = false;
        std::vector<int> numbers;
    };
    Plan& plan(std::string_view function);

    std::map<std::string_view, Plan> plans_;
};

} // namespace tarv
