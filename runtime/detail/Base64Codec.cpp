#include "runtime/detail/Base64Codec.h"

namespace tarv::base64 {

std::uint8_t* encode(const Alphabet& alphabet, std::span<const std::uint8_t> bytes, std::uint8_t* to) {
    const auto put = [&](int bits) { *to++ = alphabet[static_cast<std::size_t>(bits & 63)]; };
    const std::uint8_t* from = bytes.data();
    std::size_t left = bytes.size();
    for (; left >= 3; left -= 3, from += 3) {
        put(from[0] >> 2);
        put(from[0] << 4 | from[1] >> 4);
        put(from[1] << 2 | from[2] >> 6);
        put(from[2]);
    }
    if (left == 1) {
        put(from[0] >> 2);
        put(from[0] << 4);
        *to++ = '=';
        *to++ = '=';
    } else if (left == 2) {
        put(from[0] >> 2);
        put(from[0] << 4 | from[1] >> 4);
        put(from[1] << 2);
        *to++ = '=';
    }
    return to;
}

std::uint8_t* decode(const Values& values, std::span<const std::uint8_t> digits, std::uint8_t* to) {
    const auto put = [&](int bits) { *to++ = static_cast<std::uint8_t>(bits); };
    const std::uint8_t* from = digits.data();
    std::size_t left = digits.size();
    for (; left >= 4; left -= 4, from += 4) {
        put(values[from[0]] << 2 | values[from[1]] >> 4);
        put(values[from[1]] << 4 | values[from[2]] >> 2);
        put(values[from[2]] << 6 | values[from[3]]);
    }
    if (left >= 2)
        put(values[from[0]] << 2 | values[from[1]] >> 4);
    if (left == 3)
        put(values[from[1]] << 4 | values[from[2]] >> 2);
    return to;
}

} // namespace tarv::base64
