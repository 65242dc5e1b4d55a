#include "runtime/Funktionen32/ErrorReport.h"

#include "platform/Automation.h"
#include "platform/Desktop.h"
#include "platform/ErrorDisplay.h"
#include "platform/Platform.h"
#include "runtime/Funktionen32/Paths.h"
#include "runtime/Runtime.h"

#include <cmath>
#include <limits>

namespace tarv {
namespace {

/// The class registered on this machine (the suite's), else the one in the program's own folder.
Automated<ObjectRef> createDisplay(Runtime& rt) {
    Automation& automation = *rt.platform.automation;
    Automated<ObjectRef> display = automation.create(errorDisplayProgId);
    if (display)
        return display;
    return automation.createFromLibrary(AddBackslash(ProgramFolder(rt)).append(errorDisplayLibrary),
                                        errorDisplayClassId);
}

/// Calls one method of a fresh error display. What the component writes into the error object arrives in
/// `error`.
Value report(Runtime& rt, std::wstring_view method, ErrorRecord& error, std::wstring_view location,
             std::wstring_view extra, bool noVisibleNextMsg, std::int32_t errorNumber) {
    if (errorNumber != 0)
        error.number = errorNumber;
    const Automated<ObjectRef> display = createDisplay(rt);
    if (!display || !*display)
        return Empty{};
    if (noVisibleNextMsg)
        static_cast<void>((*display)->put(L"NoVisibleNextMsg", true));

    const auto record = std::make_shared<ErrorRecord>(error);
    const Automated<Value> answer =
        (*display)->call(method, {ObjectByRef{rt.platform.automation->errorObject(record)},
                                  std::wstring(location), std::wstring(extra)});
    error = *record;
    return answer.valueOr(Empty{});
}

std::int32_t answerCode(const Value& answer) {
    if (const auto* number = std::get_if<std::int32_t>(&answer))
        return *number;
    if (const auto* number = std::get_if<std::int16_t>(&answer))
        return *number;
    if (const auto* number = std::get_if<double>(&answer)) {
        using Limits = std::numeric_limits<std::int32_t>;
        const double whole = std::nearbyint(*number);
        if (whole >= Limits::min() && whole <= Limits::max())
            return static_cast<std::int32_t>(whole);
    }
    return 0;
}

} // namespace

void ShowErrorMsg(Runtime& rt, ErrorRecord& error, std::wstring_view location, std::wstring_view extra,
                  bool noVisibleNextMsg, std::int32_t errorNumber) {
    report(rt, L"ErrorMsg", error, location, extra, noVisibleNextMsg, errorNumber);
}

std::int32_t AskErrorMsg(Runtime& rt, ErrorRecord& error, std::wstring_view location, std::wstring_view extra,
                         bool noVisibleNextMsg, std::int32_t errorNumber) {
    if (!rt.suppressedLocation.empty() && location == rt.suppressedLocation)
        return message_box::answerCancel;
    const std::int32_t answer =
        answerCode(report(rt, L"EMW", error, location, extra, noVisibleNextMsg, errorNumber));
    rt.suppressedLocation = answer == message_box::answerCancel ? location : std::wstring_view();
    return answer;
}

} // namespace tarv
