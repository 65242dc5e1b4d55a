#pragma once

#include <cstdint>
#include <vector>

namespace tarv::ui {

/// 32-bit pixels (blue, green, red, unused), rows from top to bottom.
struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> data;
};

/// The picture at another size: each new pixel is the mean of those around its place, weighted by their
/// distance (a tent as wide as one pixel of the coarser grid). The system's own stretching loses thin lines.
Pixels scaled(const Pixels& source, int width, int height);

} // namespace tarv::ui
