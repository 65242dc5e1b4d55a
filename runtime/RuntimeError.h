#pragma once

#include "platform/ErrorRecord.h"

#include <exception>
#include <utility>

namespace tarv {

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

/// The one exception of the suite: a routine that is to fail towards its caller raises it.
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

} // namespace tarv
