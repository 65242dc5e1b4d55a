// Decoding takes any bytes and fills exactly what its size rule says; encoding is its inverse.
#include "runtime/modBase64.h"
#include "tests/fuzz/FuzzInput.h"

#include <algorithm>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tarv;
    static const Base64Codec codec;
    const std::span<const std::uint8_t> input(bytes, size);
    // Vectors, so that a step beyond either end is seen.
    std::vector<std::uint8_t> decoded(Base64Codec::decodedSize(size));
    codec.decode(input, decoded);

    std::vector<std::uint8_t> encoded(Base64Codec::encodedSize(size));
    codec.encode(input, encoded);
    while (!encoded.empty() && encoded.back() == '=')
        encoded.pop_back();
    std::vector<std::uint8_t> again(Base64Codec::decodedSize(encoded.size()));
    codec.decode(encoded, again);
    require(size == 0 || std::ranges::equal(again, input));
    return 0;
}
