#include "runtime/Funktionen32/Errors.h"

#include "platform/Automation.h"
#include "platform/Desktop.h"
#include "platform/ErrorDisplay.h"
#include "platform/Platform.h"
#include "platform/ProfileFiles.h"
#include "platform/SystemFacts.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string_view>

namespace tarv {
namespace {

using Description = std::pair<std::int32_t, std::wstring_view>;

constexpr std::array descriptions{
    Description{error_number::invalidCall, L"Ungültiger Prozeduraufruf oder ungültiges Argument"},
    Description{error_number::overflow, L"Überlauf"},
    Description{error_number::subscriptOutOfRange, L"Index außerhalb des gültigen Bereichs"},
    Description{error_number::typeMismatch, L"Typen unverträglich"},
    Description{error_number::fileNotFound, L"Datei nicht gefunden"},
    Description{error_number::objectNotSet, L"Objektvariable nicht festgelegt"},
    Description{error_number::invalidUseOfNull, L"Unzulässige Verwendung von Null"},
    Description{error_number::cannotCreateObject, L"Objekterstellung durch Komponente nicht möglich"},
};

/// The class registered on this machine (the suite's), else the one in the program's own folder.
Automated<ObjectRef> createDisplay(Runtime& rt) {
    Automation& automation = *rt.platform.automation;
    if (Automated<ObjectRef> registered = automation.create(errorDisplayProgId))
        return registered;
    std::wstring library = rt.platform.facts->programPath();
    library.resize(library.rfind(L'\\') + 1);
    return automation.createFromLibrary(library.append(errorDisplayLibrary), errorDisplayClassId);
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

ErrorRecord runtimeErrorRecord(std::int32_t number) {
    const auto found = std::ranges::find(descriptions, number, &Description::first);
    return {number, std::wstring(found != descriptions.end() ? found->second : L"Laufzeitfehler"), {}};
}

void raise(std::int32_t number) {
    throw RuntimeError(runtimeErrorRecord(number));
}

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

bool IsDesign(const Runtime& rt) {
    return rt.developmentEnvironment;
}

bool bIstEntwicklung(Runtime& rt) {
    if (!rt.developerMode)
        rt.developerMode = suiteSwitch(rt, L"Entwicklung");
    return *rt.developerMode;
}

bool suiteSwitch(Runtime& rt, std::wstring_view entry) {
    const std::wstring read = rt.platform.profiles->getString(L"Debug", entry, {}, 2000, suiteIniName);
    const std::wstring_view value = trim(read);
    return value == L"-1" || value == L"1" || upperCase(value) == L"TRUE";
}

} // namespace tarv
