#include "runtime/modBase64.h"

#include "runtime/RuntimeError.h"
#include "tests/support/FakePlatform.h"

#include <random>

namespace tarv {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

Bytes randomBytes(std::size_t size, unsigned seed) {
    std::mt19937 generator(seed);
    Bytes bytes(size);
    for (auto& byte : bytes)
        byte = static_cast<std::uint8_t>(generator());
    return bytes;
}

struct Base64 : Scripted {
    ByteArray encoded(ByteArray in, ByteArray out = {}) {
        Base64EncodeBytes(rt, in, out);
        return out;
    }
    ByteArray decoded(ByteArray in, ByteArray out = {}) {
        Base64DecodeBytes(rt, in, out);
        return out;
    }
};

TEST_F(Base64, StandardVectors) {
    const std::pair<const char*, const char*> vectors[]{{"f", "Zg=="},
                                                        {"fo", "Zm8="},
                                                        {"foo", "Zm9v"},
                                                        {"foob", "Zm9vYg=="},
                                                        {"fooba", "Zm9vYmE="},
                                                        {"foobar", "Zm9vYmFy"},
                                                        {"\xFB\xEF\xBE\xFF", "++++/w=="}};
    for (const auto& [plain, digits] : vectors) {
        EXPECT_EQ(encoded({0, bytesOf(plain)}).bytes, bytesOf(digits));
        EXPECT_EQ(decoded({0, bytesOf(digits)}).bytes, bytesOf(plain));
    }
}

TEST_F(Base64, ArraysKeepTheirLowerBound) {
    for (const std::int32_t lowerBound : {1, -7, std::numeric_limits<std::int32_t>::min()}) {
        const ByteArray digits = encoded({lowerBound, bytesOf("Man")}, {5, {1, 2}});
        EXPECT_EQ(digits, (ByteArray{lowerBound, bytesOf("TWFu")}));
        EXPECT_EQ(decoded(digits), (ByteArray{lowerBound, bytesOf("Man")}));
    }
    const ByteArray untouched{3, {1, 2, 3}};
    EXPECT_EQ(encoded({1, {}}, untouched), untouched);
    EXPECT_EQ(decoded({1, {}}, untouched), untouched);

    ByteArray same{1, bytesOf("Man")};
    Base64EncodeBytes(rt, same, same);
    EXPECT_EQ(same.bytes, bytesOf("TWFu"));

    const auto highest = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(encoded({highest - 3, bytesOf("abc")}).bytes.size(), 4u);
    EXPECT_THROW(encoded({highest - 2, bytesOf("abc")}), RuntimeError);
    EXPECT_THROW(decoded({highest, bytesOf("TQ==")}), RuntimeError);
}

TEST_F(Base64, NothingIsCheckedAndNothingSkipped) {
    const std::pair<const char*, Bytes> cases[]{{"=", {0}},
                                                {"====", {0}},
                                                {"A", {0}},
                                                {"/", {0}},
                                                {"TWFuT", {'M', 'a', 'n', 0}},
                                                {"TW\r\n", {'M', 0x60, 0}},
                                                {"T=Q=", {0x4C, 4}},
                                                {"-_-_", {0, 0, 0}}};
    for (const auto& [digits, expected] : cases)
        EXPECT_EQ(decoded({0, bytesOf(digits)}).bytes, expected) << digits;
}

TEST_F(Base64, RoundTrips) {
    for (unsigned size = 1; size <= 300; ++size) {
        const ByteArray bytes{0, randomBytes(size, size)};
        EXPECT_EQ(encoded(bytes).bytes.size(), (size + 2) / 3 * 4);
        EXPECT_EQ(decoded(encoded(bytes)), bytes) << size;
    }
    const ByteArray large{0, Bytes(64u << 20, 0xA7)};
    EXPECT_TRUE(decoded(encoded(large)) == large);
}

TEST_F(Base64, TablesFollowTheCodePage) {
    BuildBase64Tables(rt);
    EXPECT_EQ(rt.base64->encode16[62], '+');
    EXPECT_EQ(rt.base64->decode16['9'], 61);
    EXPECT_EQ(rt.base64->characterOfByte[0x80], 0x20AC);
    EXPECT_EQ(rt.base64->byteOfCharacter[0x20AC], 0x80);
    EXPECT_EQ(rt.base64->byteOfCharacter[0xE4], 0xE4);
    fake.faults.fail("CodePage.fromAnsi", 1);
    BuildBase64Tables(rt);
    EXPECT_EQ(rt.base64->characterOfByte['A'], 0);
    EXPECT_EQ(rt.base64->encode[0], 'A');
}

} // namespace
} // namespace tarv
