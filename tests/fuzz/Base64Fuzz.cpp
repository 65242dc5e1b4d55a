// Any bytes: they survive their digits, and taken for digits themselves they decode as by the plain codec.
#include "runtime/detail/Base64Codec.h"
#include "runtime/modBase64.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/support/World.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tarv;
    static World w;
    ByteArray in{0, {bytes, bytes + size}}, out;
    Base64EncodeBytes(w.rt, in, out);
    Bytes plain(out.bytes.size());
    if (size > 0)
        base64::encode(w.rt.base64->encode, in.bytes, plain.data());
    require(out.bytes == plain);
    Base64DecodeBytes(w.rt, out, out);
    require(out == in);

    in.bytes.push_back('A'); // never padding
    Base64DecodeBytes(w.rt, in, out);
    plain.assign(out.bytes.size(), 0);
    base64::decode(w.rt.base64->decode, in.bytes, plain.data());
    require(out.bytes == plain);
    return 0;
}
