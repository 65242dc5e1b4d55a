#include "ui/Picture.h"

#include "platform/windows/ComPtr.h"
#include "ui/PixelScaling.h"

#include <objbase.h>
#include <wincodec.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace tarv::ui {
namespace {

BITMAPINFO topDown32(int width, int height) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    return info;
}

/// A resource as a stream; empty where there is none.
ComPtr<IStream> streamOf(int resource) {
    const HRSRC found = FindResourceW(nullptr, MAKEINTRESOURCEW(resource), RT_RCDATA);
    const HGLOBAL loaded = found ? LoadResource(nullptr, found) : nullptr;
    const HGLOBAL memory = loaded ? GlobalAlloc(GMEM_MOVEABLE, SizeofResource(nullptr, found)) : nullptr;
    ComPtr<IStream> stream;
    if (memory) {
        std::memcpy(GlobalLock(memory), LockResource(loaded), SizeofResource(nullptr, found));
        GlobalUnlock(memory);
        if (FAILED(CreateStreamOnHGlobal(memory, TRUE, stream.receive()))) {
            GlobalFree(memory);
        }
    }
    return stream;
}

template <class T>
ComPtr<T> createImaging(const CLSID& classId, const IID& interfaceId) {
    ComPtr<T> object;
    CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, interfaceId, object.receiveAny());
    return object;
}

/// Windows' own decoder over a JPEG resource: rows of 32-bit pixels, on demand. Empty where there is none.
/// The parts are created by their class: the factory would look through all registered formats first, which
/// takes as long as the decoding.
ComPtr<IWICBitmapSource> decoderOf(int resource) {
    const auto stream = streamOf(resource);
    const auto decoder = createImaging<IWICBitmapDecoder>(CLSID_WICJpegDecoder, IID_IWICBitmapDecoder);
    const auto converter =
        createImaging<IWICFormatConverter>(CLSID_WICDefaultFormatConverter, IID_IWICFormatConverter);
    ComPtr<IWICBitmapFrameDecode> frame;
    if (!stream || !decoder || !converter ||
        FAILED(decoder->Initialize(stream.get(), WICDecodeMetadataCacheOnDemand)) ||
        FAILED(decoder->GetFrame(0, frame.receive())) ||
        FAILED(converter->Initialize(frame.get(), GUID_WICPixelFormat32bppBGR, WICBitmapDitherTypeNone,
                                     nullptr, 0, WICBitmapPaletteTypeCustom))) {
        return {};
    }
    return ComPtr<IWICBitmapSource>::share(converter.get());
}

SIZE sizeOf(IWICBitmapSource& source) {
    UINT width = 0;
    UINT height = 0;
    source.GetSize(&width, &height);
    return {static_cast<LONG>(width), static_cast<LONG>(height)};
}

bool copyPixels(IWICBitmapSource& source, std::span<std::uint32_t> to, SIZE size) {
    return SUCCEEDED(source.CopyPixels(nullptr, static_cast<UINT>(size.cx) * 4,
                                       static_cast<UINT>(to.size_bytes()),
                                       reinterpret_cast<BYTE*>(to.data())));
}

} // namespace

bool Picture::fill(std::span<std::uint32_t> pixels, SIZE size) {
    const auto enough = std::find_if(variants_.begin(), std::prev(variants_.end()),
                                     [&](const PictureVariant& variant) { return variant.width >= size.cx; });
    if (loaded_ != enough->resource) {
        pixels_ = {};
        loaded_ = 0;
        const ComPtr<IWICBitmapSource> source = decoderOf(enough->resource);
        if (!source) {
            return false;
        }
        const SIZE own = sizeOf(*source.get());
        // The usual case needs no pixels but those of the bitmap.
        if (own.cx == size.cx && own.cy == size.cy) {
            return copyPixels(*source.get(), pixels, own);
        }
        pixels_ = {own.cx, own.cy, std::vector<std::uint32_t>(static_cast<std::size_t>(own.cx * own.cy))};
        if (!copyPixels(*source.get(), pixels_.data, own)) {
            pixels_ = {};
            return false;
        }
        loaded_ = enough->resource;
    }
    std::ranges::copy(scaled(pixels_, size.cx, size.cy).data, pixels.begin());
    return true;
}

HBITMAP Picture::bitmap(int width, int height) {
    if (width <= 0 || height <= 0 || variants_.empty()) {
        return nullptr;
    }
    if (!bitmap_ || size_.cx != width || size_.cy != height) {
        size_ = {width, height};
        const BITMAPINFO info = topDown32(width, height);
        void* bits = nullptr;
        bitmap_.reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        const std::span pixels(static_cast<std::uint32_t*>(bits), static_cast<std::size_t>(width * height));
        if (bitmap_ && !fill(pixels, size_)) {
            bitmap_.reset();
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
