#include "runtime/cls_PathDialog.h"

#include "platform/Platform.h"
#include "platform/ShellOperations.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"

namespace tarv {
namespace {

/// BIF_RETURNONLYFSDIRS
constexpr std::uint32_t fileSystemFoldersOnly = 1;

} // namespace

void cls_PathDialog::StartPathDialog() {
    ShellOperations& shell = *rt_.platform.shell;
    // Handles have 32 significant bits; the system extends them by their sign.
    const auto given = static_cast<WindowHandle>(std::intptr_t{owner_});
    const WindowHandle owner = given != WindowHandle::none ? given : shell.desktopWindow();
    const auto folder = shell.browseForFolder({owner, title_, fileSystemFoldersOnly});
    cancelled_ = !folder;
    chosen_ = folder ? std::wstring(untilNul(*folder)) : std::wstring();
}

const std::wstring& cls_PathDialog::sDriveDir() {
    if (!chosen_.ends_with(L'\\'))
        chosen_ += L'\\';
    return chosen_;
}

} // namespace tarv
