#pragma once

#include <cstdint>
#include <vector>

namespace tarv::ui {

/// A pixel as decoders and bitmaps of 24 bits hold it.
struct Bgr {
    std::uint8_t blue;
    std::uint8_t green;
    std::uint8_t red;

    friend bool operator==(const Bgr&, const Bgr&) = default;
};

/// Rows from top to bottom, without gaps.
struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<Bgr> data;
};

/// The picture at another size: each new pixel is the mean of those around its place, weighted by their
/// distance (a tent as wide as one pixel of the coarser grid). The system's own stretching loses thin lines.
Pixels scaled(const Pixels& source, int width, int height);

} // namespace tarv::ui
