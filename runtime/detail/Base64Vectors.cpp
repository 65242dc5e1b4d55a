// Base64 by vectors of 16 bytes, for processors with SSSE3.
#include "runtime/detail/Base64Codec.h"

#include <algorithm>

#include <tmmintrin.h>
#ifdef _MSC_VER
#include <intrin.h>
#endif

// The rest of the program runs on older processors, too.
#if defined(_MSC_VER) && !defined(__clang__)
#define TARV_SSSE3
#else
#define TARV_SSSE3 __attribute__((target("ssse3")))
#endif

namespace tarv::base64 {
namespace {

bool hasVectors() {
#ifdef _MSC_VER
    static const bool found = [] {
        int registers[4];
        __cpuid(registers, 1);
        return (registers[2] & 1 << 9) != 0;
    }();
    return found;
#else
    return __builtin_cpu_supports("ssse3");
#endif
}

TARV_SSSE3 __m128i load(const std::uint8_t* from) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

TARV_SSSE3 void store(std::uint8_t* to, __m128i vector) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), vector);
}

/// 16 digits for the first twelve bytes.
TARV_SSSE3 __m128i digitsOf(__m128i bytes) {
    // Each group of three becomes two numbers of 16 bits, in which lie two digits: first and second byte,
    // second and third. Multiplying moves each digit to a byte of its own.
    const __m128i groups =
        _mm_shuffle_epi8(bytes, _mm_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10));
    const __m128i even =
        _mm_mulhi_epu16(_mm_and_si128(groups, _mm_set1_epi32(0x0FC0FC00)), _mm_set1_epi32(0x04000040));
    const __m128i odd =
        _mm_mullo_epi16(_mm_and_si128(groups, _mm_set1_epi32(0x003F03F0)), _mm_set1_epi32(0x01000010));
    const __m128i values = _mm_or_si128(even, odd);
    // Place in the table: 0 for A to Z, 1 for a to z, 2 to 11 for the digits, then "+" and "/".
    const __m128i place =
        _mm_sub_epi8(_mm_subs_epu8(values, _mm_set1_epi8(51)), _mm_cmpgt_epi8(values, _mm_set1_epi8(25)));
    const __m128i distance =
        _mm_setr_epi8('A', 'a' - 26, -4, -4, -4, -4, -4, -4, -4, -4, -4, -4, '+' - 62, '/' - 63, 0, 0);
    return _mm_add_epi8(values, _mm_shuffle_epi8(distance, place));
}

/// Twelve bytes for 16 digits, then zeros.
TARV_SSSE3 __m128i bytesOf(__m128i digits) {
    const __m128i row = _mm_and_si128(_mm_srli_epi16(digits, 4), _mm_set1_epi8(15));
    // Each row of the character table is of a kind; a column tells by bits in which kinds it holds digits.
    // From 0x80 on a character finds neither.
    const __m128i kindOfRow = _mm_setr_epi8(0, 0, 1, 2, 4, 8, 4, 8, 0, 0, 0, 0, 0, 0, 0, 0);
    const __m128i kindsOfColumn = _mm_setr_epi8(10, 14, 14, 14, 14, 14, 14, 14, 14, 14, 12, 5, 4, 4, 4, 5);
    const __m128i foreign = _mm_cmpeq_epi8(
        _mm_and_si128(_mm_shuffle_epi8(kindOfRow, row), _mm_shuffle_epi8(kindsOfColumn, digits)),
        _mm_setzero_si128());
    // By row; "/" takes the place before that of "+".
    const __m128i distance = _mm_setr_epi8(0, 63 - '/', 62 - '+', 52 - '0', -'A', -'A', 26 - 'a', 26 - 'a', 0,
                                           0, 0, 0, 0, 0, 0, 0);
    const __m128i slash = _mm_cmpeq_epi8(digits, _mm_set1_epi8('/'));
    const __m128i values =
        _mm_andnot_si128(foreign, _mm_add_epi8(digits, _mm_shuffle_epi8(distance, _mm_add_epi8(row, slash))));
    // Pairs of 12 bits, groups of 24, and their three bytes from the highest on.
    const __m128i pairs = _mm_maddubs_epi16(values, _mm_set1_epi16(0x0140));
    const __m128i groups = _mm_madd_epi16(pairs, _mm_set1_epi32(0x00011000));
    return _mm_shuffle_epi8(groups, _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1));
}

TARV_SSSE3 std::uint8_t* encodeVectors(std::span<const std::uint8_t>& bytes, std::uint8_t* to) {
    const std::uint8_t* from = bytes.data();
    const std::uint8_t* const end = from + bytes.size();
    for (; end - from >= 16; from += 12, to += 16)
        store(to, digitsOf(load(from)));
    // Nothing is read behind the last byte.
    if (end - from >= 12 && from != bytes.data()) {
        store(to, digitsOf(_mm_srli_si128(load(from - 4), 4)));
        from += 12;
        to += 16;
    }
    bytes = {from, end};
    return to;
}

TARV_SSSE3 std::uint8_t* decodeVectors(std::span<const std::uint8_t>& digits, std::uint8_t* to) {
    const std::uint8_t* from = digits.data();
    const std::uint8_t* const end = from + digits.size();
    // The zeros are overwritten by what follows: 22 digits fill 16 bytes.
    for (; end - from >= 22; from += 16, to += 12)
        store(to, bytesOf(load(from)));
    if (end - from >= 16) {
        std::array<std::uint8_t, 16> last;
        store(last.data(), bytesOf(load(from)));
        to = std::copy_n(last.data(), 12, to);
        from += 16;
    }
    digits = {from, end};
    return to;
}

} // namespace

std::uint8_t* encodeByVectors(std::span<const std::uint8_t>& bytes, std::uint8_t* to) {
    return hasVectors() ? encodeVectors(bytes, to) : to;
}

std::uint8_t* decodeByVectors(std::span<const std::uint8_t>& digits, std::uint8_t* to) {
    return hasVectors() ? decodeVectors(digits, to) : to;
}

} // namespace tarv::base64
