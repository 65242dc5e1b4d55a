#include "ui/SaveDialog.h"

#include "win/LateEntry.h"

#include <commdlg.h>
#include <shlobj.h>

namespace tarv::ui {
namespace {

namespace late {
const LateEntry<decltype(&::GetSaveFileNameW)> GetSaveFileNameW{L"comdlg32.dll", "GetSaveFileNameW"};
const LateEntry<decltype(&::SHGetFolderPathW)> SHGetFolderPathW{L"shell32.dll", "SHGetFolderPathW", E_FAIL};
} // namespace late

std::wstring documentsFolder() {
    wchar_t folder[MAX_PATH] = L"";
    late::SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, folder);
    return *folder ? std::wstring(folder) + L"\\" : std::wstring();
}

} // namespace

std::optional<std::wstring> askSaveName(HWND owner, const std::wstring& title, const std::wstring& kind,
                                        const std::wstring& suggestion) {
    constexpr std::size_t longestName = 32768;
    std::wstring file =
        suggestion.find(L'\\') == suggestion.npos ? documentsFolder() + suggestion : suggestion;
    file.resize(longestName);
    const std::wstring filter = kind + L'\0' + L"*.txt" + L'\0';
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = filter.c_str();
    dialog.lpstrFile = file.data();
    dialog.nMaxFile = longestName;
    dialog.lpstrTitle = title.c_str();
    dialog.lpstrDefExt = L"txt";
    dialog.Flags =
        OFN_EXPLORER | OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    if (!late::GetSaveFileNameW(&dialog))
        return std::nullopt;
    return file.substr(0, file.find(L'\0'));
}

} // namespace tarv::ui
