#include "tools/driver/ProgramDriver.h"

#include <utility>

namespace tarv::program {
namespace {

struct Shot {
    BITMAPINFOHEADER header{};
    std::vector<std::uint8_t> pixels;
};

Shot shootScreen(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    const int width = rect.right - rect.left;
    const int height = rect.bottom - rect.top;
    Shot shot;
    // Without an alpha channel: readers of pictures would believe what the screen has in it.
    shot.header = {sizeof shot.header, width, height, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    const std::size_t row = (static_cast<std::size_t>(width) * 3 + 3) / 4 * 4;
    shot.pixels.resize(row * static_cast<std::size_t>(height));

    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    const HGDIOBJ former = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, screen, rect.left, rect.top, SRCCOPY);
    SelectObject(memory, former);
    GetDIBits(screen, bitmap, 0, static_cast<UINT>(height), shot.pixels.data(),
              reinterpret_cast<BITMAPINFO*>(&shot.header), DIB_RGB_COLORS);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return shot;
}

bool write(const Shot& shot, const std::wstring& file) {
    const auto pixelBytes = static_cast<DWORD>(shot.pixels.size());
    constexpr WORD signature = 0x4D42; // "BM"
    const DWORD start = sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER);
    const BITMAPFILEHEADER header{signature, start + pixelBytes, 0, 0, start};
    const HANDLE out = CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (out == INVALID_HANDLE_VALUE)
        return false;
    DWORD written = 0;
    const bool complete = WriteFile(out, &header, sizeof header, &written, nullptr) &&
                          WriteFile(out, &shot.header, sizeof shot.header, &written, nullptr) &&
                          WriteFile(out, shot.pixels.data(), pixelBytes, &written, nullptr);
    CloseHandle(out);
    return complete;
}

/// A blinking caret keeps a window from being steady: then the last of many shots.
Shot shootSteady(HWND window) {
    Shot shot = shootScreen(window);
    int unchanged = 0;
    waitUntil(
        [&] {
            Sleep(100);
            Shot later = shootScreen(window);
            unchanged = shot.pixels == later.pixels ? unchanged + 1 : 0;
            shot = std::move(later);
            return unchanged == 3;
        },
        5000);
    return shot;
}

} // namespace

std::vector<std::uint8_t> ProgramDriver::picture(HWND window) {
    return shootSteady(window).pixels;
}

bool ProgramDriver::savePicture(HWND window, const std::wstring& file) {
    return write(shootSteady(window), file);
}

} // namespace tarv::program
