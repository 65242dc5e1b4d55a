#include "examples.h"

#include "runtime/modBase64.h"

// Bytes for text files, and back.
void base64(tarv::Runtime& rt) {
    const tarv::ByteArray text{1, {'B', 'a', 'u'}};
    tarv::ByteArray digits;
    tarv::Base64EncodeBytes(rt, text, digits);
    print(L"Base64EncodeBytes: " + std::wstring(digits.bytes.begin(), digits.bytes.end()));

    tarv::ByteArray back;
    tarv::Base64DecodeBytes(rt, digits, back);
    print(L"Base64DecodeBytes: " + std::wstring(back.bytes.begin(), back.bytes.end()));
    print(L"Lower bound kept: " + yesNo(back.lowerBound == 1));
}
