#pragma once

#include <cstdint>
#include <vector>

namespace tarv {

/// A natural number without upper bound, for the few conversions that no machine word holds: the exact steps
/// between a double and its decimal digits. Least significant word first, no leading zero words.
class BigNatural {
public:
    explicit BigNatural(std::uint64_t value);

    void multiply(std::uint32_t factor, std::uint32_t addend = 0);
    void multiplyByPower(std::uint32_t base, int exponent);
    void shiftLeft(int bits);

    /// Divides and answers the remainder.
    std::uint32_t divide(std::uint32_t divisor);

    /// Divides by base^exponent; true when a remainder is lost.
    bool divideByPower(std::uint32_t base, int exponent);

    int bitLength() const;

    /// The number divided by 2^bits, its lowest 64 bits; `lost` is set when a one bit is cut off.
    std::uint64_t bitsFrom(int bits, bool& lost) const;

private:
    std::vector<std::uint32_t> words_;
};

} // namespace tarv
