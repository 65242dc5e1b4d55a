#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>

namespace tarv {

/// Takes a fuzz program's bytes apart. Texts take the rest: Latin-1, but 0x92 is U+2019 as in the code page.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t* bytes, std::size_t size) : bytes_(bytes, size) {}

    std::uint8_t byte() {
        if (bytes_.empty())
            return 0;
        const std::uint8_t first = bytes_.front();
        bytes_ = bytes_.subspan(1);
        return first;
    }

    double number() {
        double value = 0;
        if (bytes_.size() >= sizeof value) {
            std::memcpy(&value, bytes_.data(), sizeof value);
            bytes_ = bytes_.subspan(sizeof value);
        }
        return value;
    }

    std::wstring text() const {
        std::wstring result;
        for (const std::uint8_t byte : bytes_)
            result += byte == 0x92 ? L'\u2019' : static_cast<wchar_t>(byte);
        return result;
    }

    std::span<const std::uint8_t> rest() const { return bytes_; }

private:
    std::span<const std::uint8_t> bytes_;
};

/// Ends the fuzz program, so that it keeps the input.
inline void require(bool condition) {
    if (!condition)
        std::abort();
}

} // namespace tarv
