#include "ui/PixelScaling.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tarv::ui {
namespace {

constexpr int weightBits = 14;

/// The source pixels that one target pixel is made from; the weights add up to 1 << weightBits.
struct Taps {
    int first = 0;
    std::vector<std::int32_t> weights;
};

std::vector<Taps> tapsFor(int sourceLength, int targetLength) {
    const double step = static_cast<double>(sourceLength) / targetLength;
    const double reach = std::max(step, 1.0);
    std::vector<Taps> all(static_cast<std::size_t>(targetLength));
    for (int target = 0; target < targetLength; ++target) {
        const double centre = (target + 0.5) * step - 0.5;
        Taps& taps = all[static_cast<std::size_t>(target)];
        taps.first = std::max(0, static_cast<int>(std::ceil(centre - reach)));
        const int last = std::min(sourceLength - 1, static_cast<int>(std::floor(centre + reach)));
        std::vector<double> tent;
        double sum = 0;
        for (int source = taps.first; source <= last; ++source) {
            tent.push_back(std::max(0.0, 1 - std::abs(source - centre) / reach));
            sum += tent.back();
        }
        std::int32_t rest = 1 << weightBits;
        for (const double weight : tent) {
            taps.weights.push_back(static_cast<std::int32_t>(std::lround(weight / sum * (1 << weightBits))));
            rest -= taps.weights.back();
        }
        taps.weights[taps.weights.size() / 2] += rest;
    }
    return all;
}

/// The weighted sum of pixels that lie `stride` apart.
Bgr mixed(const Bgr* pixel, std::size_t stride, const std::vector<std::int32_t>& weights) {
    std::int32_t blue = 1 << (weightBits - 1);
    std::int32_t green = blue;
    std::int32_t red = blue;
    for (const std::int32_t weight : weights) {
        blue += weight * pixel->blue;
        green += weight * pixel->green;
        red += weight * pixel->red;
        pixel += stride;
    }
    const auto component = [](std::int32_t sum) { return static_cast<std::uint8_t>(sum >> weightBits); };
    return {component(blue), component(green), component(red)};
}

} // namespace

Pixels scaled(const Pixels& source, int width, int height) {
    if (width == source.width && height == source.height)
        return source;
    const auto columns = static_cast<std::size_t>(width);
    const auto sourceColumns = static_cast<std::size_t>(source.width);

    // Rows first: the second pass then runs along memory.
    const std::vector<Taps> vertical = tapsFor(source.height, height);
    std::vector<Bgr> rows(sourceColumns * vertical.size());
    Bgr* out = rows.data();
    for (const Taps& taps : vertical) {
        const Bgr* in = source.data.data() + static_cast<std::size_t>(taps.first) * sourceColumns;
        for (std::size_t column = 0; column < sourceColumns; ++column)
            *out++ = mixed(in + column, sourceColumns, taps.weights);
    }

    const std::vector<Taps> horizontal = tapsFor(source.width, width);
    Pixels target{width, height, std::vector<Bgr>(columns * vertical.size())};
    out = target.data.data();
    for (std::size_t row = 0; row < vertical.size(); ++row) {
        const Bgr* in = rows.data() + row * sourceColumns;
        for (const Taps& taps : horizontal)
            *out++ = mixed(in + taps.first, 1, taps.weights);
    }
    return target;
}

} // namespace tarv::ui
