#pragma once

#include <cstdint>

namespace tarv {

/// A double in decimal: `digits` * 10^`exponent`. Zero has no sign.
struct DecimalDigits {
    bool negative = false;
    std::uint64_t digits = 0;
    int exponent = 0;
};

inline constexpr int significantDigits = 15;

/// A number in 15 significant digits (zero: digits 0, exponent 0), rounded half away from zero from its exact
/// value. Raises overflow (6) for what is no finite number.
DecimalDigits decimalDigits(double number);

} // namespace tarv
