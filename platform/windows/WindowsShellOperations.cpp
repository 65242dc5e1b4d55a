#include "platform/windows/WindowsShellOperations.h"

#include "platform/windows/Handle.h"

// clang-format off
#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>
// clang-format on

namespace tarv {

namespace {

inline void closeItemList(ITEMIDLIST* list) {
    CoTaskMemFree(list);
}
using ItemList = Handle<ITEMIDLIST*, closeItemList>;

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
    const int code = SHFileOperationW(&operation);
    return {code, operation.fAnyOperationsAborted != FALSE};
}

Answer<std::wstring> WindowsShellOperations::browseForFolder(const FolderRequest& request) {
    BROWSEINFOW info{};
    info.hwndOwner = toSystem(request.owner);
    info.lpszTitle = request.title.c_str();
    info.ulFlags = request.flags;
    const ItemList chosen(SHBrowseForFolderW(&info));
    if (!chosen) {
        return Failure{SystemCode{ERROR_CANCELLED}};
    }
    wchar_t path[MAX_PATH] = L"";
    if (!SHGetPathFromIDListW(chosen.get(), path)) {
        return Failure{SystemCode{ERROR_BAD_PATHNAME}};
    }
    return std::wstring(path);
}

WindowHandle WindowsShellOperations::desktopWindow() {
    return toBorder(GetDesktopWindow());
}

} // namespace tarv
