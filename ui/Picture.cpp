#include "ui/Picture.h"

#include "ui/PixelScaling.h"

#include <ocidl.h>
#include <olectl.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace tarv::ui {
namespace {

struct Releaser {
    void operator()(IUnknown* object) const { object->Release(); }
};

struct ScreenDc {
    HDC dc = GetDC(nullptr);
    ~ScreenDc() { ReleaseDC(nullptr, dc); }
};

BITMAPINFO topDown32(int width, int height) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    return info;
}

std::unique_ptr<IPicture, Releaser> loadPicture(int resource) {
    const HRSRC found = FindResourceW(nullptr, MAKEINTRESOURCEW(resource), RT_RCDATA);
    const DWORD size = SizeofResource(nullptr, found);
    const HGLOBAL memory = found ? GlobalAlloc(GMEM_MOVEABLE, size) : nullptr;
    if (!memory) {
        return nullptr;
    }
    std::memcpy(GlobalLock(memory), LockResource(LoadResource(nullptr, found)), size);
    GlobalUnlock(memory);
    IStream* stream = nullptr;
    if (FAILED(CreateStreamOnHGlobal(memory, TRUE, &stream))) {
        GlobalFree(memory);
        return nullptr;
    }
    const std::unique_ptr<IStream, Releaser> streamOwner(stream);
    void* picture = nullptr;
    if (FAILED(OleLoadPicture(stream, static_cast<LONG>(size), FALSE, IID_IPicture, &picture))) {
        return nullptr;
    }
    return std::unique_ptr<IPicture, Releaser>(static_cast<IPicture*>(picture));
}

Pixels pixelsOf(IPicture& picture) {
    OLE_HANDLE handle = 0;
    BITMAP description{};
    if (FAILED(picture.get_Handle(&handle))) {
        return {};
    }
    // The interface narrows the handle to 32 bits, which is what handles of graphic objects have.
    const auto bitmap = reinterpret_cast<HBITMAP>(static_cast<ULONG_PTR>(handle));
    if (!GetObjectW(bitmap, sizeof description, &description)) {
        return {};
    }
    Pixels pixels{description.bmWidth, description.bmHeight, {}};
    pixels.data.resize(static_cast<std::size_t>(pixels.width) * static_cast<std::size_t>(pixels.height));
    BITMAPINFO info = topDown32(pixels.width, pixels.height);
    const ScreenDc screen;
    if (!GetDIBits(screen.dc, bitmap, 0, static_cast<UINT>(pixels.height), pixels.data.data(), &info,
                   DIB_RGB_COLORS)) {
        return {};
    }
    return pixels;
}

} // namespace

const Pixels& Picture::pixelsFor(int width) {
    const auto enough = std::find_if(variants_.begin(), std::prev(variants_.end()),
                                     [&](const PictureVariant& variant) { return variant.width >= width; });
    if (loaded_ != enough->resource) {
        loaded_ = enough->resource;
        const auto picture = loadPicture(loaded_);
        pixels_ = picture ? pixelsOf(*picture) : Pixels{};
    }
    return pixels_;
}

HBITMAP Picture::bitmap(int width, int height) {
    if (width <= 0 || height <= 0) {
        return nullptr;
    }
    if (!bitmap_ || size_.cx != width || size_.cy != height) {
        const Pixels& source = pixelsFor(width);
        if (source.data.empty()) {
            return nullptr;
        }
        const BITMAPINFO info = topDown32(width, height);
        const ScreenDc screen;
        void* bits = nullptr;
        bitmap_.reset(CreateDIBSection(screen.dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        size_ = {width, height};
        if (bitmap_) {
            const Pixels target = scaled(source, width, height);
            std::memcpy(bits, target.data.data(), target.data.size() * sizeof(std::uint32_t));
        }
    }
    return bitmap_.get();
}

void Picture::draw(const DRAWITEMSTRUCT& control) {
    const RECT& rect = control.rcItem;
    const HBITMAP shown = bitmap(rect.right, rect.bottom);
    if (!shown) {
        FillRect(control.hDC, &rect, GetSysColorBrush(COLOR_BTNFACE));
        return;
    }
    const MemoryDc memory(CreateCompatibleDC(control.hDC));
    const Selected selected(memory.get(), shown);
    BitBlt(control.hDC, 0, 0, rect.right, rect.bottom, memory.get(), 0, 0, SRCCOPY);
}

} // namespace tarv::ui
