#include "ui/Clipboard.h"

#include <cstring>

namespace tarv::ui {
namespace {

/// Tries for half a second: other programs keep the clipboard open for moments, above all after a change.
bool openPatiently(HWND owner) {
    constexpr int attempts = 25;
    constexpr DWORD pause = 20; // milliseconds
    for (int attempt = 1; !OpenClipboard(owner); ++attempt) {
        if (attempt == attempts)
            return false;
        Sleep(pause);
    }
    return true;
}

} // namespace

bool copyToClipboard(HWND owner, std::wstring_view text) {
    const std::size_t bytes = text.size() * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes + sizeof(wchar_t));
    if (!memory)
        return false;
    std::memcpy(GlobalLock(memory), text.data(), bytes);
    GlobalUnlock(memory);
    bool taken = false;
    if (openPatiently(owner)) {
        EmptyClipboard();
        taken = SetClipboardData(CF_UNICODETEXT, memory) != nullptr;
        CloseClipboard();
    }
    if (!taken)
        GlobalFree(memory); // once on the clipboard, it belongs to the system
    return taken;
}

} // namespace tarv::ui
