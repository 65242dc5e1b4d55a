// The Base64 routines as a program of the suite calls them. Natively beside the block codec of OpenSSL, whose
// speeds go into a file; under Windows beside these, what Windows itself offers, and a copy. Only the 20 MB
// are written into fresh memory; for the others both sides write into memory that they wrote before.
#include "bench/Comparison.h"
#include "runtime/Runtime.h"
#include "runtime/modBase64.h"
#include "scripted/FakePlatform.h"

#ifdef _WIN32
#include <windows.h>

#include <wincrypt.h>
#else
#include <openssl/evp.h>
#endif

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace tarv;
using Theirs = void (*)(const Bytes& in, Bytes& out);

#ifdef _WIN32
constexpr const char* place = sizeof(void*) == 8 ? "x64" : "x86";

void encodeTheirs(const Bytes& in, Bytes& out) {
    DWORD size = static_cast<DWORD>(out.size());
    CryptBinaryToStringA(in.data(), static_cast<DWORD>(in.size()), CRYPT_STRING_BASE64 | CRYPT_STRING_NOCRLF,
                         reinterpret_cast<char*>(out.data()), &size);
}
void decodeTheirs(const Bytes& in, Bytes& out) {
    DWORD size = static_cast<DWORD>(out.size());
    CryptStringToBinaryA(reinterpret_cast<const char*>(in.data()), static_cast<DWORD>(in.size()),
                         CRYPT_STRING_BASE64, out.data(), &size, nullptr, nullptr);
}
/// Keeps the compiler from dropping the copy.
volatile std::uint8_t sink;

void copyIntoFreshMemory(const Bytes& in) {
    const std::unique_ptr<std::uint8_t[]> copy(new std::uint8_t[in.size()]);
    std::memcpy(copy.get(), in.data(), in.size());
    sink = copy[in.size() / 2];
}
#else
constexpr const char* place = "native";

void encodeTheirs(const Bytes& in, Bytes& out) {
    EVP_EncodeBlock(out.data(), in.data(), static_cast<int>(in.size()));
}
void decodeTheirs(const Bytes& in, Bytes& out) {
    EVP_DecodeBlock(out.data(), in.data(), static_cast<int>(in.size()));
}
#endif

void print(const char* direction, const char* size, const char* yardstick, bench::Pair speeds,
           const char* aim) {
    const std::string name = std::string("Base64 ") + direction + ", " + size + " (" + place + ")";
    bench::printRow(name.c_str(), yardstick, "GB/s", speeds, aim);
}

/// The best speeds of two works on so many bytes, which take turns.
template <class Own, class Yardstick>
bench::Pair bestSpeeds(int rounds, std::size_t bytes, Own own, Yardstick yardstick) {
    bench::Pair best;
    for (int round = 0; round < rounds; ++round) {
        const bench::Pair times = bench::byTurns(1, own, yardstick);
        best.own = std::max(best.own, static_cast<double>(bytes) / 1e3 / times.own);
        best.yardstick = std::max(best.yardstick, static_cast<double>(bytes) / 1e3 / times.yardstick);
    }
    return best;
}

struct Size {
    std::size_t bytes;
    const char* text;
    const char* aim;
};
constexpr Size sizes[]{
    {48, "48 bytes", ">= 1"}, {3000, "3,000 bytes", ">= 4"}, {49152, "49,152 bytes", ">= 4"}};
constexpr std::size_t large = 20 << 20;

} // namespace

/// The file for OpenSSL's speeds is the only argument.
int main(int, char** arguments) {
    std::fstream openSsl(arguments[1], std::string(place) == "native" ? std::ios::out : std::ios::in);
    FakePlatform fake;
    Runtime rt{fake.border};
    std::mt19937_64 generator(1);
    Bytes random(large);
    for (auto& byte : random)
        byte = static_cast<std::uint8_t>(generator());

    const auto measure = [&](const char* direction, auto own, Theirs theirs, const Size& size,
                             const ByteArray& in) {
        const std::size_t calls = 1 + 400'000 / in.bytes.size();
        const auto repeated = [&](auto call) {
            return [=] {
                for (std::size_t i = 0; i < calls; ++i)
                    call();
            };
        };
        ByteArray out;
        Bytes theirOut(2 * in.bytes.size());
        bench::Pair speeds = bestSpeeds(201, calls * in.bytes.size(), repeated([&] { own(rt, in, out); }),
                                        repeated([&] { theirs(in.bytes, theirOut); }));
        if (!std::equal(out.bytes.begin(), out.bytes.end(), theirOut.begin()))
            std::exit(EXIT_FAILURE);
        const bool middle = size.bytes == 3000;
#ifdef _WIN32
        if (middle)
            print(direction, size.text, "crypt32", speeds, "");
        openSsl >> speeds.yardstick;
        print(direction, size.text, "OpenSSL", speeds, size.aim);
#else
        openSsl << speeds.yardstick << '\n';
        if (middle)
            print(direction, size.text, "OpenSSL", speeds, size.aim);
#endif
    };
    for (const Size& size : sizes) {
        const ByteArray bytes{0, {random.begin(), random.begin() + static_cast<std::ptrdiff_t>(size.bytes)}};
        ByteArray digits;
        Base64EncodeBytes(rt, bytes, digits);
        measure("encode", Base64EncodeBytes, encodeTheirs, size, bytes);
        measure("decode", Base64DecodeBytes, decodeTheirs, size, digits);
    }

#ifdef _WIN32
    const auto measureLarge = [&](const char* direction, auto own, const ByteArray& in) {
        const auto fresh = [&] {
            ByteArray out;
            own(rt, in, out);
        };
        const auto speeds = bestSpeeds(21, in.bytes.size(), fresh, [&] { copyIntoFreshMemory(in.bytes); });
        print(direction, "20 MB", "memcpy into fresh memory", speeds, ">= 0.5");
    };
    const ByteArray bytes{0, random};
    ByteArray digits;
    Base64EncodeBytes(rt, bytes, digits);
    measureLarge("encode", Base64EncodeBytes, bytes);
    measureLarge("decode", Base64DecodeBytes, digits);
#endif
    return openSsl ? 0 : 1;
}
