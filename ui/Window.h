#pragma once

#include "platform/Desktop.h"
#include "ui/Units.h"
#include "win/Handle.h"

#include <windows.h>

#include <exception>
#include <string>
#include <vector>

namespace tarv::ui {

/// What a top-level window is made from. The size is that of the client area.
struct WindowDescription {
    const wchar_t* className;
    const wchar_t* caption;
    DWORD style;
    DWORD extendedStyle = 0;
    HWND owner = nullptr;
    TwipsSize client{};
    /// Zero: the window may become as small as Windows allows. Never more than the screen's work area.
    TwipsSize minimumClient{};
    Menu menu{};
    int iconResource = 0;
    /// Tab, Esc, Enter and mnemonics work as in a dialog.
    bool dialogKeys = false;
};

/// A top-level window with its controls. The object owns the system's window; the window may die earlier (the
/// user closes it, its owner goes), then alive() is false and every call is without effect.
///
/// A control is known by its id. Sizes are given in twips and hold for every DPI: layout() runs at creation,
/// at every change of size and of DPI.
class Window {
public:
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    virtual ~Window();

    HWND handle() const { return handle_; }
    WindowHandle platformHandle() const { return WindowHandle{reinterpret_cast<std::uintptr_t>(handle_)}; }
    bool alive() const { return handle_ != nullptr; }
    int dpi() const { return dpi_; }
    int pixels(Twips twips) const { return toPixels(twips, dpi_); }

    HWND control(int id) const { return GetDlgItem(handle_, id); }

    /// Takes the window away; a modal one ends its loop first.
    virtual void close();

    /// Gives a keyboard message to the window before its control gets it. True when it has been used up.
    virtual bool translateKey(const MSG&) { return false; }

    /// The object of a top-level window that this module made by this class; null for any other.
    static Window* of(HWND window);

protected:
    Window() = default;
    /// Takes away all windows that this module has in this thread. Their loops end.
    static void destroyAll();
    void create(WindowDescription description);

    HWND addControl(const wchar_t* controlClass, const wchar_t* text, DWORD style, DWORD extendedStyle,
                    int id);
    void place(int id, RECT rect);

    /// Outer size in twips.
    TwipsSize outerSizeInTwips() const;
    RECT clientRect() const;
    SIZE outerSizeFor(TwipsSize client) const;

    /// Puts the window (outer size unchanged) at a place on the screen, in pixels.
    void moveTo(POINT corner);
    /// Runs `move`, and again when it has taken the window to a screen with another DPI: its size then
    /// changes.
    template <class Move>
    void moveAcrossScreens(Move move) {
        const int former = dpi_;
        move();
        // cppcheck-suppress knownConditionTrueFalse ; moving changes it by a message
        if (dpi_ != former)
            move();
    }
    void centreOnWorkArea(HWND reference);
    /// The control that has the focus when the window appears; otherwise the first one that can have it.
    void focusFirst(int id) { lastFocus_ = control(id); }

    virtual void layout() {}
    /// Makes what depends on the DPI (fonts, pictures) anew and hands it to the controls.
    virtual void applyDpi() {}
    virtual void onCommand(int /*id*/, int /*notification*/) {}
    virtual LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam);

    /// The dialog font of this DPI, which every control has from its creation.
    HFONT font() const { return font_.get(); }

private:
    friend bool filterMessage(MSG& message);
    friend void runMessageLoop(Window& main);
    friend void runModal(Window& window);

    static LRESULT CALLBACK procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    void changeDpi(int dpi, const RECT& suggested);
    void renewFont();
    void restoreFocus();
    void raiseFailure();
    void showIcon(WPARAM kind, int metric, Icon& icon);
    void showSmallIcon();
    void showLargeIcon();

    HWND handle_ = nullptr;
    int dpi_ = standardDpi;
    Font font_;
    Icon bigIcon_;
    Icon smallIcon_;
    int iconResource_ = 0;
    TwipsSize minimumClient_;
    bool dialogKeys_ = false;
    bool modal_ = false;
    bool closing_ = false;
    HWND lastFocus_ = nullptr;
    /// What a message handler left uncaught: Windows cannot carry it through its own frames.
    std::exception_ptr failure_;
};

/// The whole text of a window or control of this process.
std::wstring textOf(HWND window);

/// The calling thread's top-level windows, the frontmost first.
std::vector<HWND> topLevelWindows();

/// Font of a given face and size in points for a DPI. `family` (FIXED_PITCH | FF_MODERN ...) decides what
/// stands in for a face that the system lacks.
Font makeFont(const wchar_t* face, int points, int dpi, DWORD family);

} // namespace tarv::ui
