#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace tarv {

/// The standard alphabet of RFC 4648: a digit's value is its place.
inline constexpr std::string_view base64Alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

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

    /// Four bytes for each 12 bits: two zeros, then the two characters. Read from the third byte on, an entry
    /// has its characters in front and the zeros of the next behind, so that two entries need only an "or".
    std::array<std::uint8_t, 4 * encodings + 2> charactersOf_{};
    std::vector<std::uint16_t> pairOf_;
};

/// Value of each character as a digit; 0 for what is none.
std::array<std::uint8_t, 256> base64DigitValues();

} // namespace tarv
