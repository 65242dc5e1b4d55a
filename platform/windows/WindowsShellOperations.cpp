#include "platform/ShellOperations.h"
#include "platform/windows/BorderHandles.h"
#include "platform/windows/Makers.h"
#include "win/Handle.h"
#include "win/LateEntry.h"
#include "win/NoSystemBoxes.h"
#include "win/SystemText.h"

#include <cwchar>

// clang-format off
#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>
// clang-format on

namespace tarv {

namespace {

namespace late {
constexpr wchar_t shell32[] = L"shell32.dll";
const LateEntry<decltype(&::SHFileOperationW)> SHFileOperationW{shell32, "SHFileOperationW",
                                                                ERROR_MOD_NOT_FOUND};
const LateEntry<decltype(&::SHBrowseForFolderW)> SHBrowseForFolderW{shell32, "SHBrowseForFolderW"};
const LateEntry<decltype(&::SHGetPathFromIDListW)> SHGetPathFromIDListW{shell32, "SHGetPathFromIDListW"};
} // namespace late

using ItemList = Handle<PIDLIST_ABSOLUTE, CoTaskMemFree>;

/// DE_PATHTOODEEP of the shell, which no header has.
constexpr int pathTooDeep = 0x79;

/// A list with full names, ended by two NULs: for others the shell ignores FOF_ALLOWUNDO and deletes for
/// good. Empty when a name is longer than the shell takes; not every one of them finds that out by itself.
std::wstring toShellNames(std::wstring list) {
    list += L'\0'; // a list that lacks its end must not lead beyond the text
    std::wstring names;
    for (const wchar_t* name = list.c_str(); *name != L'\0'; name += std::wcslen(name) + 1) {
        const std::wstring full = toShellName(name);
        if (full.size() >= MAX_PATH)
            return {};
        names.append(full).append(1, L'\0');
    }
    return names.append(1, L'\0');
}

class WindowsShellOperations final : public ShellOperations {
public:
    ShellFileResult fileOperation(const ShellFileRequest& request) override {
        const std::wstring source = toShellNames(request.source);
        const std::wstring target = toShellNames(request.target);
        if (source.empty() || target.empty())
            return {pathTooDeep, false};
        SHFILEOPSTRUCTW operation{};
        operation.wFunc = request.operation;
        operation.pFrom = source.c_str();
        operation.pTo = target.c_str();
        operation.fFlags = request.flags;
        const NoSystemBoxes silence;
        const int code = late::SHFileOperationW(&operation);
        return {code, operation.fAnyOperationsAborted != FALSE};
    }

    Answer<std::wstring> browseForFolder(const FolderRequest& request) override {
        BROWSEINFOW info{};
        info.hwndOwner = toSystem(request.owner);
        info.lpszTitle = request.title.c_str();
        info.ulFlags = request.flags;
        const ItemList chosen(late::SHBrowseForFolderW(&info));
        if (!chosen)
            return Failure{SystemCode{ERROR_CANCELLED}};
        wchar_t path[MAX_PATH] = L"";
        if (!late::SHGetPathFromIDListW(chosen.get(), path))
            return Failure{SystemCode{ERROR_BAD_PATHNAME}};
        return std::wstring(path);
    }

    WindowHandle desktopWindow() override { return toBorder(GetDesktopWindow()); }
};

} // namespace

std::unique_ptr<ShellOperations> makeShellOperations() {
    return std::make_unique<WindowsShellOperations>();
}

} // namespace tarv
