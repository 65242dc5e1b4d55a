#pragma once

#include <string_view>

namespace tarv {

/// Reads the number at the start of a text, whatever the regional settings: "." is the decimal point, blanks
/// are skipped anywhere, a sign and an exponent (E or e) are accepted; reading stops at the first character
/// that cannot belong to a number. Text that does not begin with a number gives 0, and so does sign after
/// sign. An exponent without digits is ignored. Raises overflow (6) where the number exceeds a double.
double readNumber(std::wstring_view text);

} // namespace tarv
