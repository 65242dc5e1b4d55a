#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tarv {

struct Runtime;

/// Base64 over memory of the caller. Works on pairs of digits, whose tables (144 KB) are built by the
/// constructor.
class Base64Codec {
public:
    Base64Codec();

    /// Number of digits, padding included, for that many bytes.
    static std::size_t encodedSize(std::size_t bytes) { return (bytes + 2) / 3 * 4; }

    /// Number of bytes for that many digits without padding. One digit too many counts as a byte, and so does
    /// no digit at all: an array cannot be declared shorter.
    static std::size_t decodedSize(std::size_t digits);

    /// `out` holds encodedSize(bytes.size()) characters. No line breaks, whatever the length.
    void encode(std::span<const std::uint8_t> bytes, std::span<std::uint8_t> out) const;

    /// `out` holds decodedSize(digits.size()) bytes. Nothing is checked: a character outside the alphabet
    /// counts as digit 0. A byte that the digits do not fill becomes 0.
    void decode(std::span<const std::uint8_t> digits, std::span<std::uint8_t> out) const;

private:
    /// The 12 bits of two digits, by the two characters as they lie in memory.
    unsigned pairAt(const std::uint8_t* characters) const;

    /// Writes the four digits of twice 12 bits; higher bits of the numbers count for nothing.
    void encodeFour(std::uint64_t first, std::uint64_t second, std::uint8_t* to) const;

    /// Writes eight digits; reads two bytes more than it converts.
    void encodeSixBytes(const std::uint8_t* from, std::uint8_t* to) const;

    static constexpr std::size_t encodings = 4096;

    /// Four bytes for each 12 bits: two zeros, then the two characters. Four bytes read from the third on are
    /// these characters and the zeros of the next entry. So two entries are put together by an "or".
    std::array<std::uint8_t, 4 * encodings + 2> charactersOf_{};
    std::vector<std::uint16_t> pairOf_;
};

/// A byte array as the suite knows it: one-dimensional, with any lower bound.
struct ByteArray {
    std::int32_t lowerBound = 0;
    std::vector<std::uint8_t> bytes;

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

    Base64Codec codec;
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
