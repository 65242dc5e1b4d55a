#include "runtime/modBase64.h"

#include "platform/Platform.h"
#include "platform/SystemFacts.h"
#include "runtime/Funktionen32/Errors.h"
#include "runtime/Runtime.h"
#include "runtime/detail/Base64Codec.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <string_view>
#include <utility>

namespace tarv {
namespace {

/// The standard alphabet of RFC 4648: a digit's value is its place.
constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Raises overflow when the last index of an array of that size exceeds 32 bits.
void checkBounds(std::int32_t lowerBound, std::uint64_t size) {
    const auto highest = std::uint64_t{std::numeric_limits<std::int32_t>::max()};
    if (size > highest ||
        lowerBound + static_cast<std::int64_t>(size) - 1 > static_cast<std::int64_t>(highest))
        raise(error_number::overflow);
}

const Base64Tables& tables(Runtime& rt) {
    if (!rt.base64)
        BuildBase64Tables(rt);
    return *rt.base64;
}

std::span<const std::uint8_t> withoutPadding(std::span<const std::uint8_t> digits) {
    for (int i = 0; i < 2 && !digits.empty() && digits.back() == '='; ++i)
        digits = digits.first(digits.size() - 1);
    return digits;
}

/// An array for the result: in the memory of `out`, unless the input lies there.
Bytes arrayFor(std::size_t size, ByteArray& out, const ByteArray& in) {
    Bytes result;
    if (&out != &in)
        result.swap(out.bytes);
    result.clear();
    result.resize(size);
    return result;
}

} // namespace

void BuildBase64Tables(Runtime& rt) {
    auto tables = std::make_shared<Base64Tables>();
    std::ranges::copy(alphabet, tables->encode.begin());
    std::ranges::copy(alphabet, tables->encode16.begin());
    for (std::size_t i = 0; i < tables->encode.size(); ++i)
        tables->decode[tables->encode[i]] = static_cast<std::uint8_t>(i);
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
    const std::size_t size = (in.bytes.size() + 2) / 3 * 4;
    checkBounds(in.lowerBound, size);
    Bytes digits = arrayFor(size, out, in);
    std::span<const std::uint8_t> rest = in.bytes;
    std::uint8_t* to = base64::encodeByVectors(rest, digits.data());
    base64::encode(tables(rt).encode, rest, to);
    out.lowerBound = in.lowerBound;
    out.bytes.swap(digits);
}

void Base64DecodeBytes(Runtime& rt, const ByteArray& in, ByteArray& out) {
    if (in.bytes.empty())
        return;
    checkBounds(in.lowerBound, in.bytes.size());
    auto rest = withoutPadding(in.bytes);
    // The division rounds towards zero: no digit at all counts as a byte, too, and so does one digit too
    // many.
    const auto last = static_cast<std::int64_t>(rest.size()) - 1;
    Bytes bytes = arrayFor(static_cast<std::size_t>(last * 3 / 4 + 1), out, in);
    std::uint8_t* to = base64::decodeByVectors(rest, bytes.data());
    to = base64::decode(tables(rt).decode, rest, to);
    std::fill(to, bytes.data() + bytes.size(), std::uint8_t{0});
    out.lowerBound = in.lowerBound;
    out.bytes.swap(bytes);
}

} // namespace tarv
