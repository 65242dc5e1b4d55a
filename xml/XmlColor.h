#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarv {

/// A colour as readable text: "(255, 128, 0)".
std::wstring colorText(std::int16_t red, std::int16_t green, std::int16_t blue);

/// red + 256 × green + 65536 × blue of a colour text, the sum rounded half to even; text that is no number
/// counts as 0. Raises 9 when there are no three parts separated by ", ", 6 when the sum exceeds 32 bits.
std::int32_t colorValue(std::wstring_view text);

} // namespace tarv
