#pragma once

#include <windows.h>

#include <memory>

namespace tarv::ui {

template <auto Destroy>
struct Destroyer {
    template <class H>
    void operator()(H handle) const {
        Destroy(handle);
    }
};

/// Owns a Windows handle that is a pointer: one line per kind.
template <class H, auto Destroy>
using Owned = std::unique_ptr<std::remove_pointer_t<H>, Destroyer<Destroy>>;

using Font = Owned<HFONT, DeleteObject>;
using Bitmap = Owned<HBITMAP, DeleteObject>;
using MemoryDc = Owned<HDC, DeleteDC>;
using Menu = Owned<HMENU, DestroyMenu>;
using Icon = Owned<HICON, DestroyIcon>;

/// Puts an object into a device context and the former one back.
class Selected {
public:
    Selected(HDC dc, HGDIOBJ object) : dc_(dc), former_(SelectObject(dc, object)) {}
    ~Selected() { SelectObject(dc_, former_); }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

private:
    HDC dc_;
    HGDIOBJ former_;
};

} // namespace tarv::ui
