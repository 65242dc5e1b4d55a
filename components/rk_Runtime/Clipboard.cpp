#include "components/rk_Runtime/Clipboard.h"

#include <cstring>

namespace tarv::component {

bool copyToClipboard(HWND owner, std::wstring_view text) {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    if (!memory)
        return false;
    auto* characters = static_cast<wchar_t*>(GlobalLock(memory));
    std::memcpy(characters, text.data(), text.size() * sizeof(wchar_t));
    characters[text.size()] = L'\0';
    GlobalUnlock(memory);

    bool copied = false;
    if (OpenClipboard(owner)) {
        EmptyClipboard();
        copied = SetClipboardData(CF_UNICODETEXT, memory) != nullptr; // Windows then owns the memory
        CloseClipboard();
    }
    if (!copied)
        GlobalFree(memory);
    return copied;
}

} // namespace tarv::component
