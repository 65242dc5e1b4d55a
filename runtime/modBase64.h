#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace tarv {

struct Runtime;

/// Leaves elements without a value as the memory is: no array is zeroed before a conversion fills it.
template <class T>
struct UnfilledAllocator : std::allocator<T> {
    using std::allocator<T>::allocator;
    template <class Other>
    struct rebind {
        using other = UnfilledAllocator<Other>;
    };
    template <class Element>
    void construct(Element* place) {
        ::new (static_cast<void*>(place)) Element;
    }
};
using Bytes = std::vector<std::uint8_t, UnfilledAllocator<std::uint8_t>>;

/// A byte array as the suite knows it: one-dimensional, with any lower bound.
struct ByteArray {
    std::int32_t lowerBound = 0;
    Bytes bytes;

    friend bool operator==(const ByteArray&, const ByteArray&) = default;
};

/// The module's tables, for callers that convert texts as well.
struct Base64Tables {
    std::array<std::uint8_t, 64> encode{};
    std::array<std::uint8_t, 256> decode{};
    std::array<std::int16_t, 64> encode16{};
    std::array<std::int16_t, 256> decode16{};

    /// Unicode code of each byte in the system's ANSI code page; 0 for a byte that is no character by itself.
    std::array<std::uint16_t, 256> characterOfByte{};
    /// The way back. A character beyond the table is left out.
    std::array<std::uint8_t, 16384> byteOfCharacter{};
};

/// Builds the tables of this process; the conversions do it on first use.
void BuildBase64Tables(Runtime& rt);

/// The bytes as Base64 digits with "=" padding, in an array with the same lower bound. An empty input leaves
/// `out` as it is. Raises overflow (6) where an index would exceed 32 bits.
void Base64EncodeBytes(Runtime& rt, const ByteArray& in, ByteArray& out);

/// The way back. At most two "=" at the end are padding; nothing is checked and nothing skipped: every other
/// character outside the alphabet, a blank or line break too, counts as digit 0. An empty input leaves `out`
/// as it is. Raises overflow (6) where an index would exceed 32 bits.
void Base64DecodeBytes(Runtime& rt, const ByteArray& in, ByteArray& out);

} // namespace tarv
