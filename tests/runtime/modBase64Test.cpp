#include "runtime/modBase64.h"

#include "runtime/Funktionen32/Errors.h"
#include "tests/support/Table.h"

#include <limits>

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
    }
    EXPECT_THROW(run(Base64EncodeBytes, {highest - 2, {1, 2, 3}}), RuntimeError);
    EXPECT_THROW(run(Base64DecodeBytes, {highest, {'T', 'Q'}}), RuntimeError);
    const ByteArray untouched{3, {1, 2, 3}};
    EXPECT_EQ(run(Base64EncodeBytes, {1, {}}, untouched), untouched);
    EXPECT_EQ(run(Base64DecodeBytes, {1, {}}, untouched), untouched);
}

TEST(modBase64, AnySizeComesBackAlsoInPlace) {
    World w;
    for (std::size_t size = 1; size <= 1000; ++size) {
        ByteArray bytes{0, std::vector<std::uint8_t>(size)};
        for (std::size_t i = 0; i < size; ++i)
            bytes.bytes[i] = static_cast<std::uint8_t>((i + size) * 2654435761u >> 7);
        ByteArray both = bytes;
        Base64DecodeBytes(w.rt, both, both); // any bytes, within the array
        both = bytes;
        Base64EncodeBytes(w.rt, both, both);
        EXPECT_EQ(both.bytes.size(), (size + 2) / 3 * 4);
        Base64DecodeBytes(w.rt, both, both);
        EXPECT_EQ(both, bytes);
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
