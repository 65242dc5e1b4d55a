#pragma once

#include "platform/ErrorRecord.h"

#include <cstdint>
#include <exception>
#include <string_view>
#include <utility>

namespace tarv {

struct Runtime;

/// Run-time error numbers that callers of the suite know.
namespace error_number {
inline constexpr std::int32_t invalidCall = 5;
inline constexpr std::int32_t overflow = 6;
inline constexpr std::int32_t subscriptOutOfRange = 9;
inline constexpr std::int32_t typeMismatch = 13;
inline constexpr std::int32_t fileNotFound = 53;
inline constexpr std::int32_t objectNotSet = 91;
inline constexpr std::int32_t invalidUseOfNull = 94;
inline constexpr std::int32_t cannotCreateObject = 429;
} // namespace error_number

/// The only exception that the library throws. The comment of a routine says when.
class RuntimeError : public std::exception {
public:
    explicit RuntimeError(ErrorRecord record) : record_(std::move(record)) {}

    const ErrorRecord& record() const { return record_; }
    const char* what() const noexcept override { return "run-time error"; }

private:
    ErrorRecord record_;
};

/// The error record of a run-time error number, with its German description.
ErrorRecord runtimeErrorRecord(std::int32_t number);

/// Raises a run-time error by number.
[[noreturn]] void raise(std::int32_t number);

/// Shows an error through the suite's error-display component. `location` says what failed, `extra` is a
/// further text. A non-zero `errorNumber` replaces the record's number. Without the component the report is
/// skipped silently. Never fails.
void ShowErrorMsg(Runtime& rt, ErrorRecord& error, std::wstring_view location, std::wstring_view extra,
                  bool noVisibleNextMsg = false, std::int32_t errorNumber = 0);

/// Shows an error as a question and answers a message-box answer (2 Cancel, 4 Retry ...), 0 without the
/// component.
///
/// Once the user has answered Cancel, further errors with exactly the same non-empty `location` are answered
/// with Cancel without showing anything, until another one is answered otherwise.
std::int32_t AskErrorMsg(Runtime& rt, ErrorRecord& error, std::wstring_view location, std::wstring_view extra,
                         bool noVisibleNextMsg = false, std::int32_t errorNumber = 0);

/// True only inside the development environment; always false in a built program.
bool IsDesign(const Runtime& rt);

/// Developer mode of this machine: the switch "Entwicklung". Read once per process.
bool bIstEntwicklung(Runtime& rt);

/// Whether a switch of group "Debug" in "Pexoran.INI" is on: "-1", "1" or "TRUE" in any case, blanks around
/// it ignored. Only reads; a missing entry stays missing.
bool suiteSwitch(Runtime& rt, std::wstring_view entry);

} // namespace tarv
