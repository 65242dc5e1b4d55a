#pragma once

#include "ui/PixelScaling.h"
#include "win/Handle.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace tarv::ui {

/// One size in which a picture is kept: a resource (type RCDATA, JPEG) and its width in pixels.
struct PictureVariant {
    int resource;
    int width;
};

/// A picture of the program's resources, shown at any size. The system's picture decoder reads the smallest
/// variant that is large enough, when a bitmap is first asked for.
class Picture {
public:
    /// The variants from the smallest to the largest. The picture is empty where a resource is none.
    explicit Picture(std::vector<PictureVariant> variants) : variants_(std::move(variants)) {}

    /// A bitmap of that size in pixels, kept for the next call. Null for an empty picture or size.
    HBITMAP bitmap(int width, int height);

private:
    /// Writes the rows of a 24-bit bitmap. False when the picture cannot be read.
    bool fill(std::uint8_t* rows, SIZE size);

    std::vector<PictureVariant> variants_;
    /// The resource whose pixels are kept, once they had to be scaled; 0 for none.
    int kept_ = 0;
    Pixels pixels_;
    Bitmap bitmap_;
    SIZE size_{};
};

} // namespace tarv::ui
