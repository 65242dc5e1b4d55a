#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>

namespace tarv {

/// Takes a fuzz program's bytes apart. Texts take the rest: Latin-1, but 0x92 is U+2019 as in the code page.
struct FuzzInput {
    FuzzInput(const std::uint8_t* bytes, std::size_t size) : rest(bytes, size) {}

    std::uint8_t byte() {
        const auto first = rest.empty() ? std::uint8_t{0} : rest.front();
        rest = rest.subspan(rest.empty() ? 0 : 1);
        return first;
    }
    double number() {
        double value = 0;
        if (rest.size() >= sizeof value) {
            std::memcpy(&value, rest.data(), sizeof value);
            rest = rest.subspan(sizeof value);
        }
        return value;
    }
    std::wstring text() const {
        std::wstring result;
        for (const std::uint8_t each : rest)
            result += each == 0x92 ? L'\u2019' : static_cast<wchar_t>(each);
        return result;
    }

    std::span<const std::uint8_t> rest;
};

/// Ends the fuzz program, so that it keeps the input.
inline void require(bool condition) {
    if (!condition)
        std::abort();
}

} // namespace tarv
