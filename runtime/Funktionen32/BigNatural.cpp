#include "runtime/Funktionen32/BigNatural.h"

#include <bit>

namespace tarv {
namespace {

/// The highest power of `base` up to base^exponent that a word holds; takes its exponent off.
std::uint32_t wordPower(std::uint32_t base, int& exponent) {
    std::uint32_t power = 1;
    for (; exponent > 0 && power <= UINT32_MAX / base; --exponent)
        power *= base;
    return power;
}

} // namespace

BigNatural::BigNatural(std::uint64_t value) {
    for (; value != 0; value >>= 32)
        words_.push_back(static_cast<std::uint32_t>(value));
}

void BigNatural::multiply(std::uint32_t factor, std::uint32_t addend) {
    std::uint64_t carry = addend;
    for (std::uint32_t& word : words_) {
        carry += std::uint64_t{word} * factor;
        word = static_cast<std::uint32_t>(carry);
        carry >>= 32;
    }
    if (carry != 0)
        words_.push_back(static_cast<std::uint32_t>(carry));
}

void BigNatural::multiplyByPower(std::uint32_t base, int exponent) {
    while (exponent > 0)
        multiply(wordPower(base, exponent));
}

void BigNatural::shiftLeft(int bits) {
    multiply(std::uint32_t{1} << (bits % 32));
    if (!words_.empty())
        words_.insert(words_.begin(), static_cast<std::size_t>(bits / 32), 0);
}

std::uint32_t BigNatural::divide(std::uint32_t divisor) {
    std::uint64_t rest = 0;
    for (auto word = words_.rbegin(); word != words_.rend(); ++word) {
        rest = rest << 32 | *word;
        *word = static_cast<std::uint32_t>(rest / divisor);
        rest %= divisor;
    }
    while (!words_.empty() && words_.back() == 0)
        words_.pop_back();
    return static_cast<std::uint32_t>(rest);
}

bool BigNatural::divideByPower(std::uint32_t base, int exponent) {
    bool lost = false;
    while (exponent > 0)
        lost |= divide(wordPower(base, exponent)) != 0;
    return lost;
}

int BigNatural::bitLength() const {
    return words_.empty() ? 0 : static_cast<int>(words_.size() * 32) - std::countl_zero(words_.back());
}

std::uint64_t BigNatural::bitsFrom(int bits, bool& lost) const {
    const auto skipped = static_cast<std::size_t>(bits / 32);
    const int rest = bits % 32;
    const auto word = [this](std::size_t index) { return index < words_.size() ? words_[index] : 0; };
    for (std::size_t index = 0; index < skipped; ++index)
        lost |= word(index) != 0;
    lost |= (word(skipped) & ((std::uint64_t{1} << rest) - 1)) != 0;
    const std::uint64_t low = word(skipped) | std::uint64_t{word(skipped + 1)} << 32;
    return rest == 0 ? low : low >> rest | std::uint64_t{word(skipped + 2)} << (64 - rest);
}

} // namespace tarv
