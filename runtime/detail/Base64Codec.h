#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tarv::base64 {

/// The alphabet of RFC 4648: a digit's value is its place.
using Alphabet = std::array<std::uint8_t, 64>;
/// Value of each character as a digit; 0 for what is none.
using Values = std::array<std::uint8_t, 256>;

/// Writes four digits for every three bytes begun, the last ones "=" where bytes are missing. Returns the end
/// of what it has written, as all of these do.
std::uint8_t* encode(const Alphabet& alphabet, std::span<const std::uint8_t> bytes, std::uint8_t* to);

/// Writes the bytes that the digits fill, three for every four. Padding is none of the digits.
std::uint8_t* decode(const Values& values, std::span<const std::uint8_t> digits, std::uint8_t* to);

/// Encodes with the processor's vector instructions whole groups from the front, as many as these reach, and
/// takes them off `bytes`: none where the processor lacks the instructions.
std::uint8_t* encodeByVectors(std::span<const std::uint8_t>& bytes, std::uint8_t* to);

/// The same for decoding. A character outside the alphabet counts as digit 0.
std::uint8_t* decodeByVectors(std::span<const std::uint8_t>& digits, std::uint8_t* to);

} // namespace tarv::base64
