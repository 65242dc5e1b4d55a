#include "tools/driver/ProgramDriver.h"

#include "tools/driver/RemoteBuffer.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdlib>
#include <cwchar>

namespace tarv::program {
namespace {

constexpr DWORD answerTime = 20000;
constexpr std::size_t longestNodeText = 20000;

/// A window that hangs must not hang its tester.
LRESULT ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, answerTime, &result);
    return static_cast<LRESULT>(result);
}

bool sameName(const std::wstring& left, const std::wstring& right) {
    return CompareStringOrdinal(left.c_str(), static_cast<int>(left.size()), right.c_str(),
                                static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

std::wstring environmentBlock(std::map<std::wstring, std::wstring> changes) {
    std::wstring block;
    wchar_t* const all = GetEnvironmentStringsW();
    for (const wchar_t* entry = all; *entry; entry += std::wcslen(entry) + 1) {
        const std::wstring line(entry);
        const std::wstring name = line.substr(0, line.find(L'=', 1));
        const bool changed = std::any_of(changes.begin(), changes.end(),
                                         [&](const auto& change) { return sameName(change.first, name); });
        if (!changed)
            block += line + L'\0';
    }
    FreeEnvironmentStringsW(all);
    for (const auto& [name, value] : changes)
        if (!value.empty())
            block += name + L'=' + value + L'\0';
    return block + L'\0';
}

std::wstring classOf(HWND window) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, 64);
    return name;
}

struct Search {
    DWORD process;
    const wchar_t* windowClass;
    HWND found = nullptr;
};

BOOL CALLBACK takeMatching(HWND window, LPARAM parameter) {
    Search& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == search.process && IsWindowVisible(window) && classOf(window) == search.windowClass) {
        search.found = window;
        return FALSE;
    }
    return TRUE;
}

} // namespace

bool waitUntil(const std::function<bool()>& condition, DWORD milliseconds) {
    const ULONGLONG deadline = GetTickCount64() + milliseconds;
    while (!condition()) {
        if (GetTickCount64() > deadline)
            return false;
        Sleep(20);
    }
    return true;
}

ProgramDriver::ProgramDriver(const std::wstring& program,
                             const std::map<std::wstring, std::wstring>& environment) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    std::wstring commandLine = L"\"" + program + L"\"";
    std::wstring block = environmentBlock(environment);
    CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, CREATE_UNICODE_ENVIRONMENT,
                   block.data(), nullptr, &startup, &process_);
}

ProgramDriver::~ProgramDriver() {
    if (!process_.hProcess)
        return;
    if (!ended(0)) {
        TerminateProcess(process_.hProcess, 99);
        WaitForSingleObject(process_.hProcess, answerTime);
    }
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
}

HWND ProgramDriver::findWindow(const wchar_t* windowClass) {
    Search search{process_.dwProcessId, windowClass};
    EnumWindows(takeMatching, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

void ProgramDriver::answerBoxes() {
    if (const HWND box = findWindow(L"#32770")) {
        constexpr int messageText = 0xFFFF;
        boxes_.push_back(text(box) + L": " + text(GetDlgItem(box, messageText)));
        PostMessageW(box, WM_COMMAND, IDOK, 0);
        // Below another box it goes later, but nobody sees it any more.
        waitUntil([&] { return !IsWindowVisible(box); });
    }
}

HWND ProgramDriver::window(const wchar_t* windowClass, DWORD milliseconds) {
    HWND found = nullptr;
    waitUntil(
        [&] {
            answerBoxes();
            found = findWindow(windowClass);
            return found || ended(0);
        },
        milliseconds);
    WaitForInputIdle(process_.hProcess, answerTime); // the first window is painted by then
    return found;
}

bool ProgramDriver::gone(HWND window, DWORD milliseconds) {
    return waitUntil(
        [&] {
            answerBoxes();
            return !IsWindow(window);
        },
        milliseconds);
}

bool ProgramDriver::ready(HWND window, DWORD milliseconds) {
    return waitUntil(
        [&] {
            answerBoxes();
            if (!IsWindowEnabled(window))
                return false;
            // Answered in the message loop, or in that of a box that disables the window.
            ask(window, WM_NULL, 0, 0);
            return IsWindowEnabled(window) != FALSE;
        },
        milliseconds);
}

bool ProgramDriver::answered(std::size_t boxes) {
    return waitUntil([&] {
        answerBoxes();
        return boxes_.size() >= boxes;
    });
}

bool ProgramDriver::ended(DWORD milliseconds) {
    return !process_.hProcess || WaitForSingleObject(process_.hProcess, milliseconds) == WAIT_OBJECT_0;
}

DWORD ProgramDriver::exitCode() const {
    DWORD code = STILL_ACTIVE;
    GetExitCodeProcess(process_.hProcess, &code);
    return code;
}

void ProgramDriver::command(HWND window, int id) {
    PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(id), 0);
}

void ProgramDriver::press(HWND window, std::initializer_list<int> keys) {
    // Answered in the message loop: by then a window that is just appearing has the front and the focus. To
    // bring it forward before that takes both away for a moment under Wine, and keys are lost meanwhile.
    ask(window, WM_NULL, 0, 0);
    if (GetForegroundWindow() != window) {
        SetForegroundWindow(window);
        ask(window, WM_NULL, 0, 0);
    }
    // A disabled window in front is about to pass the front on, and has no use for keys.
    const auto inFront = [&] {
        DWORD process = 0;
        const HWND front = GetForegroundWindow();
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        return GetGUIThreadInfo(GetWindowThreadProcessId(front, &process), &info) && info.hwndFocus &&
               process == process_.dwProcessId && IsWindowEnabled(front);
    };
    for (const int key : keys) {
        if (!waitUntil(inFront, 2000))
            return;
        std::vector<INPUT> inputs;
        const auto add = [&](int code, DWORD flags) {
            INPUT input{};
            input.type = INPUT_KEYBOARD;
            input.ki.wVk = static_cast<WORD>(code);
            input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(static_cast<UINT>(code), MAPVK_VK_TO_VSC));
            input.ki.dwFlags = flags;
            inputs.push_back(input);
        };
        const int pressed = std::abs(key);
        std::vector<int> held;
        if (key < 0)
            held.push_back(VK_CONTROL);
        if (pressed & shifted)
            held.push_back(VK_SHIFT);
        held.push_back(pressed & ~shifted);
        for (const int down : held)
            add(down, 0);
        for (auto up = held.rbegin(); up != held.rend(); ++up)
            add(*up, KEYEVENTF_KEYUP);
        SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
        // A thread paints when nothing else waits for it: by then it has handled the key.
        InvalidateRect(window, nullptr, FALSE);
        waitUntil([&] { return !GetUpdateRect(window, nullptr, FALSE); });
    }
}

bool ProgramDriver::focusOn(HWND window, int id) {
    return waitUntil([&] {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
        return info.hwndFocus && info.hwndFocus == GetDlgItem(window, id);
    });
}

std::wstring ProgramDriver::clipboard() {
    std::wstring text;
    if (OpenClipboard(nullptr)) {
        if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
            text = static_cast<const wchar_t*>(GlobalLock(data));
            GlobalUnlock(data);
        }
        CloseClipboard();
    }
    return text;
}

bool ProgramDriver::copied(const std::wstring& wanted) {
    return waitUntil([&] { return clipboard() == wanted; });
}

int ProgramDriver::dpi(HWND window) {
    // Since Windows 10; before it, all screens had that of the first.
    const auto ofWindow = reinterpret_cast<UINT(WINAPI*)(HWND)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32"), "GetDpiForWindow")));
    if (ofWindow)
        return static_cast<int>(ofWindow(window));
    const HDC screen = GetDC(nullptr);
    const int ofScreen = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return ofScreen;
}

void ProgramDriver::changeDpi(HWND window, int from, int to) {
    RECT rect{};
    GetWindowRect(window, &rect);
    rect.right = rect.left + MulDiv(rect.right - rect.left, to, from);
    rect.bottom = rect.top + MulDiv(rect.bottom - rect.top, to, from);
    const RemoteCopy<RECT> remote(process_.hProcess, rect);
    ask(window, WM_DPICHANGED, static_cast<WPARAM>(MAKELONG(to, to)), remote.address());
}

std::wstring ProgramDriver::text(HWND window) {
    std::wstring text(static_cast<std::size_t>(ask(window, WM_GETTEXTLENGTH, 0, 0)), L'\0');
    text.resize(static_cast<std::size_t>(
        ask(window, WM_GETTEXT, text.size() + 1, reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

std::wstring ProgramDriver::tabText(HWND tabs, int index) {
    const RemoteText buffer(process_.hProcess, 256);
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = buffer.address();
    item.cchTextMax = 256;
    const RemoteCopy<TCITEMW> remote(process_.hProcess, item);
    return ask(tabs, TCM_GETITEMW, static_cast<WPARAM>(index), remote.address()) ? buffer.read()
                                                                                 : std::wstring();
}

std::vector<TreeNode> ProgramDriver::tree(HWND treeView, std::size_t mostGroups) {
    const RemoteText buffer(process_.hProcess, longestNodeText);
    TVITEMW item{};
    item.mask = TVIF_TEXT;
    item.pszText = buffer.address();
    item.cchTextMax = longestNodeText;
    RemoteCopy<TVITEMW> remote(process_.hProcess, item);
    const auto text = [&](HTREEITEM node) {
        item.hItem = node;
        remote.write(item);
        return ask(treeView, TVM_GETITEMW, 0, remote.address()) ? buffer.read() : std::wstring();
    };
    const auto next = [&](WPARAM relation, HTREEITEM node) {
        return reinterpret_cast<HTREEITEM>(
            ask(treeView, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(node)));
    };
    std::vector<TreeNode> nodes;
    for (HTREEITEM group = next(TVGN_ROOT, nullptr); group && nodes.size() < mostGroups;
         group = next(TVGN_NEXT, group)) {
        ask(treeView, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(group));
        nodes.push_back({text(group), {}});
        for (HTREEITEM entry = next(TVGN_CHILD, group); entry; entry = next(TVGN_NEXT, entry))
            nodes.back().children.push_back(text(entry));
    }
    return nodes;
}

} // namespace tarv::program
