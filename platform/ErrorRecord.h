#pragma once

#include <cstdint>
#include <string>

namespace tarv {

/// The suite's error record: what a trapped error consists of. Number 0 means "no error".
struct ErrorRecord {
    std::int32_t number = 0;
    std::wstring description;
    std::wstring source;

    friend bool operator==(const ErrorRecord&, const ErrorRecord&) = default;
};

} // namespace tarv
