#pragma once

#include "ui/Handle.h"
#include "ui/PixelScaling.h"

namespace tarv::ui {

/// A JPEG picture of the program's resources, shown at any size.
class Picture {
public:
    /// Reads the resource (type RCDATA) through the system's picture decoder. Empty when there is none.
    explicit Picture(int resource);

    /// A bitmap of that size in pixels, kept for the next call. Null for an empty picture or size.
    HBITMAP bitmap(int width, int height);

    /// Fills an owner-drawn control with the picture.
    void draw(const DRAWITEMSTRUCT& control);

private:
    Pixels pixels_;
    Bitmap bitmap_;
    SIZE size_{};
};

} // namespace tarv::ui
