#include "runtime/modBase64.h"

#include "platform/Platform.h"
#include "platform/SystemFacts.h"
#include "runtime/Runtime.h"
#include "runtime/RuntimeError.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

namespace tarv {
namespace {

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

void BuildBase64Tables(Runtime& rt) {
    auto tables = std::make_shared<Base64Tables>();
    std::ranges::copy(base64Alphabet, tables->encode.begin());
    std::ranges::copy(base64Alphabet, tables->encode16.begin());
    tables->decode = base64DigitValues();
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
