#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tarv::program {

/// Asks again and again until `condition` holds; false when it still does not after the time.
bool waitUntil(const std::function<bool()>& condition, DWORD milliseconds = 20000);

struct TreeNode {
    std::wstring text;
    std::vector<std::wstring> children;
};

/// The running program as its user has it: windows found by class, controls by id, everything else through
/// messages and keys. Ends the program when it goes.
class ProgramDriver {
public:
    /// Variables with an empty value are taken out of the environment.
    explicit ProgramDriver(const std::wstring& program,
                           const std::map<std::wstring, std::wstring>& environment = {});
    ~ProgramDriver();
    ProgramDriver(const ProgramDriver&) = delete;
    ProgramDriver& operator=(const ProgramDriver&) = delete;

    /// The visible window of that class; null when none appears in time. Message boxes that come up meanwhile
    /// are answered with OK and their texts kept.
    HWND window(const wchar_t* windowClass, DWORD milliseconds = 30000);
    bool gone(HWND window, DWORD milliseconds = 20000);
    bool ended(DWORD milliseconds = 20000);
    /// Waits until the window takes commands: it is enabled, and what its last one did behind a modal window
    /// is done.
    bool ready(HWND window, DWORD milliseconds = 20000);
    DWORD exitCode() const;
    HANDLE process() const { return process_.hProcess; }

    /// Waits until so many boxes have come up, answering them.
    bool answered(std::size_t boxes);
    /// A box has come up that is still to be answered.
    bool boxOpen() { return findWindow(L"#32770") != nullptr; }
    /// "title: text" of every box answered so far.
    const std::vector<std::wstring>& boxes() const { return boxes_; }

    void command(HWND window, int id);
    /// Presses keys one after the other as the user's keyboard would; a negative one is held down with Ctrl,
    /// one plus `shifted` (or, negative, minus it) with Shift.
    /// They go to the window in front: when that is another program's, none is pressed.
    static constexpr int shifted = 0x100;
    void press(HWND window, std::initializer_list<int> keys);
    /// Waits until the control with this id of the window has the focus.
    static bool focusOn(HWND window, int id);
    static int dpi(HWND window);
    /// Changes the window's DPI as moving it to another screen does; size and place go with it.
    void changeDpi(HWND window, int from, int to);

    /// The text on the clipboard; empty when there is none.
    static std::wstring clipboard();
    /// Waits until the clipboard holds this text.
    static bool copied(const std::wstring& wanted);

    static std::wstring text(HWND window);
    std::wstring tabText(HWND tabs, int index);
    /// The nodes of the first groups (of all by default); each is opened first, as a user would.
    std::vector<TreeNode> tree(HWND treeView, std::size_t mostGroups = SIZE_MAX);

    /// Waits until the window's picture on the screen no longer changes: its pixels.
    static std::vector<std::uint8_t> picture(HWND window);
    /// The same, saved as a bitmap file.
    static bool savePicture(HWND window, const std::wstring& file);

private:
    HWND findWindow(const wchar_t* windowClass);
    void answerBoxes();

    PROCESS_INFORMATION process_{};
    std::vector<std::wstring> boxes_;
};

} // namespace tarv::program
