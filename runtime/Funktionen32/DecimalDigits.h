#pragma once

#include <cstdint>
#include <string_view>

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

/// The double nearest to `digits` * 10^`exponent` (decimal digits only), half to even; infinity where a
/// double is exceeded. For numbers beyond 1e310 or with more than some thousand digits the caller decides
/// beforehand.
double nearestDouble(std::string_view digits, int exponent);

} // namespace tarv
