#include "runtime/modBase64.h"

#include "runtime/Funktionen32/Errors.h"
#include "runtime/detail/Base64Codec.h"
#include "tests/support/Table.h"

#include <limits>
#include <random>

namespace tarv {
namespace {

template <auto convert>
std::wstring converted(World& w, const Row& row) {
    ByteArray in{0, {}}, out;
    for (const wchar_t byte : row[0])
        in.bytes.push_back(static_cast<std::uint8_t>(byte));
    convert(w.rt, in, out);
    return {out.bytes.begin(), out.bytes.end()};
}

TEST(Tables, modBase64) {
    checkTable<World>("modBase64.txt", {{L"Base64EncodeBytes", converted<Base64EncodeBytes>},
                                        {L"Base64DecodeBytes", converted<Base64DecodeBytes>}});
}

TEST(modBase64, ArraysKeepTheirLowerBound) {
    World w;
    const auto run = [&](auto convert, ByteArray in, ByteArray out = {}) {
        convert(w.rt, in, out);
        return out;
    };
    const auto highest = std::numeric_limits<std::int32_t>::max();
    for (const std::int32_t bound : {1, -7, std::numeric_limits<std::int32_t>::min(), highest - 3}) {
        const ByteArray digits = run(Base64EncodeBytes, {bound, {'M', 'a', 'n'}}, {5, {1, 2}});
        EXPECT_EQ(digits, (ByteArray{bound, {'T', 'W', 'F', 'u'}}));
        EXPECT_EQ(run(Base64DecodeBytes, digits), (ByteArray{bound, {'M', 'a', 'n'}}));
        ByteArray both = digits;
        Base64DecodeBytes(w.rt, both, both);
        EXPECT_EQ(both, (ByteArray{bound, {'M', 'a', 'n'}}));
        Base64EncodeBytes(w.rt, both, both);
        EXPECT_EQ(both, digits);
    }
    EXPECT_THROW(run(Base64EncodeBytes, {highest - 2, {1, 2, 3}}), RuntimeError);
    EXPECT_THROW(run(Base64DecodeBytes, {highest, {'T', 'Q'}}), RuntimeError);
    const ByteArray untouched{3, {1, 2, 3}};
    EXPECT_EQ(run(Base64EncodeBytes, {1, {}}, untouched), untouched);
    EXPECT_EQ(run(Base64DecodeBytes, {1, {}}, untouched), untouched);
}

TEST(modBase64, VectorsAgreeWithThePlainCodecWithinTheArrays) {
    World w;
    BuildBase64Tables(w.rt);
    std::mt19937 generator(1);
    std::vector<std::uint8_t> garbage(20000), plain(20000);
    for (auto& byte : garbage)
        byte = static_cast<std::uint8_t>(generator());
    std::ranges::replace(garbage, '=', '-'); // no padding
    ByteArray digits, back;
    for (std::ptrdiff_t size = 1; size <= 10000; size += size < 1000 ? 1 : 17) {
        const ByteArray bytes{0, {garbage.begin() + size, garbage.begin() + 2 * size}};
        Base64EncodeBytes(w.rt, bytes, digits);
        const auto* end = base64::encode(w.rt.base64->encode, bytes.bytes, plain.data());
        ASSERT_TRUE(std::ranges::equal(digits.bytes, std::span<const std::uint8_t>(plain.data(), end)))
            << size;
        Base64DecodeBytes(w.rt, digits, back);
        ASSERT_EQ(back, bytes);
        Base64DecodeBytes(w.rt, bytes, back);
        *base64::decode(w.rt.base64->decode, bytes.bytes, plain.data()) = 0;
        ASSERT_TRUE(std::ranges::equal(back.bytes, std::span(plain).first(back.bytes.size()))) << size;
    }
}

TEST(modBase64, TablesFollowTheCodePage) {
    World w;
    BuildBase64Tables(w.rt);
    EXPECT_EQ(w.rt.base64->encode16[62], '+');
    EXPECT_EQ(w.rt.base64->decode16['9'], 61);
    EXPECT_EQ(w.rt.base64->characterOfByte[0x80], 0x20AC);
    EXPECT_EQ(w.rt.base64->byteOfCharacter[0x20AC], 0x80);
    EXPECT_EQ(w.rt.base64->byteOfCharacter[0xE4], 0xE4);
    EXPECT_EQ(w.rt.base64->byteOfCharacter.size(), 16384u) << "others index it, too";
}

} // namespace
} // namespace tarv
