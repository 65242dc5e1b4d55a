#include "xml/XmlColor.h"

#include "runtime/Funktionen32/NumberText.h"
#include "xml/XmlFailure.h"

#include <array>
#include <cmath>
#include <limits>

namespace tarv {
namespace {

constexpr std::wstring_view separator = L", ";

/// The first three parts; those behind them do not count.
std::array<std::wstring_view, 3> threeParts(std::wstring_view text) {
    std::array<std::wstring_view, 3> parts;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const auto end = text.find(separator);
        if (end == text.npos && i + 1 < parts.size())
            raiseXmlError(error_number::subscriptOutOfRange);
        parts[i] = text.substr(0, end);
        text.remove_prefix(end == text.npos ? text.size() : end + separator.size());
    }
    return parts;
}

} // namespace

std::wstring colorText(std::int16_t red, std::int16_t green, std::int16_t blue) {
    return L"(" + std::to_wstring(red) + std::wstring(separator) + std::to_wstring(green) +
           std::wstring(separator) + std::to_wstring(blue) + L")";
}

std::int32_t colorValue(std::wstring_view text) {
    auto [red, green, blue] = threeParts(text);
    red.remove_prefix(red.empty() ? 0 : 1);
    blue.remove_suffix(blue.empty() ? 0 : 1);
    // The default rounding of the processor: half to even.
    const double sum = std::nearbyint(readNumber(red) + 256 * readNumber(green) + 65536 * readNumber(blue));
    using Limits = std::numeric_limits<std::int32_t>;
    if (!(sum >= Limits::min() && sum <= Limits::max()))
        raiseXmlError(error_number::overflow);
    return static_cast<std::int32_t>(sum);
}

} // namespace tarv
