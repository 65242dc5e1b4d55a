#include "platform/windows/WindowsShellOperations.h"

#include "platform/windows/Handle.h"
#include "win/LateEntry.h"

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

inline void closeItemList(PIDLIST_ABSOLUTE list) {
    CoTaskMemFree(list);
}
using ItemList = Handle<PIDLIST_ABSOLUTE, closeItemList>;

} // namespace

ShellFileResult WindowsShellOperations::fileOperation(const ShellFileRequest& request) {
    // The shell reads on until two NULs: a list that lacks them must not take it beyond the text.
    std::wstring source = request.source;
    std::wstring target = request.target;
    source.append(2, L'\0');
    target.append(2, L'\0');

    SHFILEOPSTRUCTW operation{};
    operation.wFunc = request.operation;
    operation.pFrom = source.c_str();
    operation.pTo = target.c_str();
    operation.fFlags = request.flags;
    const int code = late::SHFileOperationW(&operation);
    return {code, operation.fAnyOperationsAborted != FALSE};
}

Answer<std::wstring> WindowsShellOperations::browseForFolder(const FolderRequest& request) {
    BROWSEINFOW info{};
    info.hwndOwner = toSystem(request.owner);
    info.lpszTitle = request.title.c_str();
    info.ulFlags = request.flags;
    const ItemList chosen(late::SHBrowseForFolderW(&info));
    if (!chosen) {
        return Failure{SystemCode{ERROR_CANCELLED}};
    }
    wchar_t path[MAX_PATH] = L"";
    if (!late::SHGetPathFromIDListW(chosen.get(), path)) {
        return Failure{SystemCode{ERROR_BAD_PATHNAME}};
    }
    return std::wstring(path);
}

WindowHandle WindowsShellOperations::desktopWindow() {
    return toBorder(GetDesktopWindow());
}

} // namespace tarv
