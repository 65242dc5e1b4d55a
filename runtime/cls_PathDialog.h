#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarv {

struct Runtime;

/// The shell's dialog for choosing a folder of the file system.
class cls_PathDialog {
public:
    explicit cls_PathDialog(Runtime& rt) : rt_(rt) {}

    /// Owner window, disabled while the dialog is open; 0 is the desktop.
    void hHande(std::int32_t window) { owner_ = window; }

    /// The text above the folders.
    void sTitel(std::wstring_view title) { title_ = title; }

    /// Shows the dialog until the user has chosen or cancelled. Never fails: what goes wrong counts as
    /// cancelled.
    void StartPathDialog();

    /// The chosen folder, always with "\" at its end: "\" after a cancel, so ask bCancel first.
    const std::wstring& sDriveDir();

    /// Whether the last dialog ended without a folder of the file system.
    bool bCancel() const { return cancelled_; }

private:
    Runtime& rt_;
    std::wstring title_;
    std::wstring chosen_;
    bool cancelled_ = false;
    std::int32_t owner_ = 0;
};

} // namespace tarv
