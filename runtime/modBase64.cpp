#include "runtime/modBase64.h"

#include "platform/Platform.h"
#include "platform/SystemFacts.h"
#include "runtime/Funktionen32/Errors.h"
#include "runtime/Runtime.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <memory>
#include <string_view>
#include <utility>

namespace tarv {
namespace {

/// The standard alphabet of RFC 4648: a digit's value is its place.
constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t padding = '=';
constexpr std::size_t pairs = 65536;

/// Value of each character as a digit; 0 for what is none.
std::array<std::uint8_t, 256> digitValues() {
    std::array<std::uint8_t, 256> values{};
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        values[static_cast<std::uint8_t>(alphabet[i])] = static_cast<std::uint8_t>(i);
    return values;
}

static_assert(std::endian::native == std::endian::little);

/// A number and its bytes in memory, the highest first. Compilers make one instruction of it.
std::uint64_t bigEndian(std::uint64_t number) {
    number = (number & 0x00FF00FF00FF00FF) << 8 | (number >> 8 & 0x00FF00FF00FF00FF);
    number = (number & 0x0000FFFF0000FFFF) << 16 | (number >> 16 & 0x0000FFFF0000FFFF);
    return number << 32 | number >> 32;
}

/// Raises overflow when the last index of an array of that size exceeds 32 bits.
void checkBounds(std::int32_t lowerBound, std::uint64_t size) {
    const auto highest = std::uint64_t{std::numeric_limits<std::int32_t>::max()};
    if (size > highest ||
        lowerBound + static_cast<std::int64_t>(size) - 1 > static_cast<std::int64_t>(highest))
        raise(error_number::overflow);
}

const Base64Codec& codec(Runtime& rt) {
    if (!rt.base64)
        BuildBase64Tables(rt);
    return rt.base64->codec;
}

std::span<const std::uint8_t> withoutPadding(std::span<const std::uint8_t> digits) {
    for (int i = 0; i < 2 && !digits.empty() && digits.back() == '='; ++i)
        digits = digits.first(digits.size() - 1);
    return digits;
}

} // namespace

Base64Codec::Base64Codec() : pairOf_(pairs) {
    for (std::size_t bits = 0; bits < encodings; ++bits) {
        charactersOf_[4 * bits + 2] = static_cast<std::uint8_t>(alphabet[bits >> 6]);
        charactersOf_[4 * bits + 3] = static_cast<std::uint8_t>(alphabet[bits & 63]);
    }

    const auto values = digitValues();
    for (std::size_t first = 0; first < values.size(); ++first)
        for (std::size_t second = 0; second < values.size(); ++second)
            pairOf_[second << 8 | first] = static_cast<std::uint16_t>(values[first] << 6 | values[second]);
}

std::size_t Base64Codec::decodedSize(std::size_t digits) {
    constexpr std::size_t ofRest[]{0, 1, 1, 2};
    return digits == 0 ? 1 : digits / 4 * 3 + ofRest[digits % 4];
}

inline void Base64Codec::encodeFour(std::uint64_t first, std::uint64_t second, std::uint8_t* to) const {
    std::uint32_t front, back;
    std::memcpy(&front, charactersOf_.data() + 4 * (first & 4095) + 2, sizeof front);
    std::memcpy(&back, charactersOf_.data() + 4 * (second & 4095), sizeof back);
    front |= back;
    std::memcpy(to, &front, sizeof front);
}

inline void Base64Codec::encodeSixBytes(const std::uint8_t* from, std::uint8_t* to) const {
    std::uint64_t word;
    std::memcpy(&word, from, sizeof word);
    word = bigEndian(word);
    encodeFour(word >> 52, word >> 40, to);
    encodeFour(word >> 28, word >> 16, to + 4);
}

void Base64Codec::encode(std::span<const std::uint8_t> bytes, std::span<std::uint8_t> out) const {
    const std::uint8_t* from = bytes.data();
    std::uint8_t* to = out.data();
    std::size_t left = bytes.size();

    for (; left >= 26; left -= 24, from += 24, to += 32)
        for (std::ptrdiff_t i = 0; i < 4; ++i)
            encodeSixBytes(from + 6 * i, to + 8 * i);
    for (; left >= 8; left -= 6, from += 6, to += 8)
        encodeSixBytes(from, to);
    for (; left >= 3; left -= 3, from += 3, to += 4) {
        const auto bits = static_cast<std::uint32_t>(from[0] << 16 | from[1] << 8 | from[2]);
        encodeFour(bits >> 12, bits, to);
    }
    if (left > 0) {
        const auto bits = static_cast<std::uint32_t>(from[0] << 16 | (left == 2 ? from[1] << 8 : 0));
        encodeFour(bits >> 12, bits, to);
        std::fill(to + left + 1, to + 4, padding);
    }
}

unsigned Base64Codec::pairAt(const std::uint8_t* characters) const {
    std::uint16_t index;
    std::memcpy(&index, characters, sizeof index);
    return pairOf_.data()[index];
}

void Base64Codec::decode(std::span<const std::uint8_t> digits, std::span<std::uint8_t> out) const {
    const std::uint8_t* from = digits.data();
    std::uint8_t* to = out.data();
    std::size_t left = digits.size();

    // Six bytes at a time; the two more that are written are overwritten by what follows.
    for (; left >= 12; left -= 8, from += 8, to += 6) {
        const std::uint64_t word =
            bigEndian(std::uint64_t{pairAt(from)} << 52 | std::uint64_t{pairAt(from + 2)} << 40 |
                      std::uint64_t{pairAt(from + 4)} << 28 | std::uint64_t{pairAt(from + 6)} << 16);
        std::memcpy(to, &word, sizeof word);
    }
    for (; left >= 4; left -= 4, from += 4) {
        const unsigned bits = pairAt(from) << 12 | pairAt(from + 2);
        *to++ = static_cast<std::uint8_t>(bits >> 16);
        *to++ = static_cast<std::uint8_t>(bits >> 8);
        *to++ = static_cast<std::uint8_t>(bits);
    }
    if (left >= 2) {
        // "A" is digit 0.
        const std::uint8_t third[]{left == 3 ? from[2] : std::uint8_t{'A'}, 'A'};
        const unsigned bits = pairAt(from) << 12 | pairAt(third);
        *to++ = static_cast<std::uint8_t>(bits >> 16);
        if (left == 3)
            *to++ = static_cast<std::uint8_t>(bits >> 8);
    }
    std::fill(to, out.data() + out.size(), std::uint8_t{0});
}

void BuildBase64Tables(Runtime& rt) {
    auto tables = std::make_shared<Base64Tables>();
    std::ranges::copy(alphabet, tables->encode.begin());
    std::ranges::copy(alphabet, tables->encode16.begin());
    tables->decode = digitValues();
    std::ranges::copy(tables->decode, tables->decode16.begin());

    for (std::size_t byte = 0; byte < tables->characterOfByte.size(); ++byte) {
        const char code = static_cast<char>(byte);
        const std::wstring character = rt.platform.facts->fromAnsi({&code, 1});
        if (character.size() != 1)
            continue;
        tables->characterOfByte[byte] = static_cast<std::uint16_t>(character[0]);
        if (const auto place = tables->characterOfByte[byte]; place < tables->byteOfCharacter.size())
            tables->byteOfCharacter[place] = static_cast<std::uint8_t>(byte);
    }
    rt.base64 = std::move(tables);
}

void Base64EncodeBytes(Runtime& rt, const ByteArray& in, ByteArray& out) {
    if (in.bytes.empty())
        return;
    const std::size_t size = Base64Codec::encodedSize(in.bytes.size());
    checkBounds(in.lowerBound, size);
    std::vector<std::uint8_t> digits(size);
    codec(rt).encode(in.bytes, digits);
    out = {in.lowerBound, std::move(digits)};
}

void Base64DecodeBytes(Runtime& rt, const ByteArray& in, ByteArray& out) {
    if (in.bytes.empty())
        return;
    checkBounds(in.lowerBound, in.bytes.size());
    const auto digits = withoutPadding(in.bytes);
    std::vector<std::uint8_t> bytes(Base64Codec::decodedSize(digits.size()));
    codec(rt).decode(digits, bytes);
    out = {in.lowerBound, std::move(bytes)};
}

} // namespace tarv
