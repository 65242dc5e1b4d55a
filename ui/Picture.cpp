#include "ui/Picture.h"

#include "ui/PixelScaling.h"
#include "win/ComPtr.h"

#include <objbase.h>
#include <wincodec.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace tarv::ui {
namespace {

BITMAPINFO topDown24(SIZE size) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, size.cx, -size.cy, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    return info;
}

/// Bytes from one row of a 24-bit bitmap to the next.
UINT strideOf(SIZE size) {
    return (static_cast<UINT>(size.cx) * 3 + 3) / 4 * 4;
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
        if (FAILED(CreateStreamOnHGlobal(memory, TRUE, stream.receive())))
            GlobalFree(memory);
    }
    return stream;
}

template <class T>
ComPtr<T> createImaging(const CLSID& classId, const IID& interfaceId) {
    ComPtr<T> object;
    CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, interfaceId, object.receiveAny());
    return object;
}

/// Windows' own decoder over a JPEG resource: rows of 24-bit pixels, on demand. Empty where there is none.
/// The parts are created by their class: the factory would look through all registered formats first, which
/// takes as long as the decoding.
ComPtr<IWICBitmapSource> decoderOf(int resource) {
    const auto stream = streamOf(resource);
    const auto decoder = createImaging<IWICBitmapDecoder>(CLSID_WICJpegDecoder, IID_IWICBitmapDecoder);
    ComPtr<IWICBitmapFrameDecode> frame;
    WICPixelFormatGUID format{};
    if (!stream || !decoder || FAILED(decoder->Initialize(stream.get(), WICDecodeMetadataCacheOnDemand)) ||
        FAILED(decoder->GetFrame(0, frame.receive())) || FAILED(frame->GetPixelFormat(&format))) {
        return {};
    }
    if (format == GUID_WICPixelFormat24bppBGR) // a converter would only read the registry
        return ComPtr<IWICBitmapSource>::share(frame.get());
    const auto converter =
        createImaging<IWICFormatConverter>(CLSID_WICDefaultFormatConverter, IID_IWICFormatConverter);
    if (!converter ||
        FAILED(converter->Initialize(frame.get(), GUID_WICPixelFormat24bppBGR, WICBitmapDitherTypeNone,
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

bool copyPixels(IWICBitmapSource& source, UINT stride, SIZE size, void* to) {
    return SUCCEEDED(
        source.CopyPixels(nullptr, stride, stride * static_cast<UINT>(size.cy), static_cast<BYTE*>(to)));
}

} // namespace

bool Picture::fill(std::uint8_t* rows, SIZE size) {
    const auto enough = std::find_if(variants_.begin(), std::prev(variants_.end()),
                                     [&](const PictureVariant& variant) { return variant.width >= size.cx; });
    if (kept_ != enough->resource) {
        pixels_ = {};
        kept_ = 0;
        const ComPtr<IWICBitmapSource> source = decoderOf(enough->resource);
        if (!source)
            return false;
        const SIZE own = sizeOf(*source.get());
        if (own.cx == size.cx && own.cy == size.cy)
            return copyPixels(*source.get(), strideOf(size), size, rows);
        pixels_ = {own.cx, own.cy, std::vector<Bgr>(static_cast<std::size_t>(own.cx * own.cy))};
        if (!copyPixels(*source.get(), static_cast<UINT>(own.cx) * sizeof(Bgr), own, pixels_.data.data()))
            return false;
        kept_ = enough->resource;
    }
    const Pixels shown = scaled(pixels_, size.cx, size.cy);
    for (auto row = shown.data.begin(); row != shown.data.end(); row += size.cx, rows += strideOf(size))
        std::memcpy(rows, &*row, static_cast<std::size_t>(size.cx) * sizeof(Bgr));
    return true;
}

HBITMAP Picture::bitmap(int width, int height) {
    if (width <= 0 || height <= 0 || variants_.empty())
        return nullptr;
    if (!bitmap_ || size_.cx != width || size_.cy != height) {
        size_ = {width, height};
        const BITMAPINFO info = topDown24(size_);
        void* rows = nullptr;
        bitmap_.reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &rows, nullptr, 0));
        if (bitmap_ && !fill(static_cast<std::uint8_t*>(rows), size_))
            bitmap_.reset();
    }
    return bitmap_.get();
}

} // namespace tarv::ui
