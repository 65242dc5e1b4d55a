#pragma once

#include "platform/ShellOperations.h"
#include "scripted/FaultPlan.h"

#include <functional>
#include <vector>

namespace tarv {

/// Records what the shell is asked for. It moves no files: a test that needs the outcome on the disk makes it
/// in `onFileOperation`.
struct FakeShellOperations : ShellOperations, Planned {
    using Planned::Planned;

    /// A failure with code 0 is an abort by the user.
    ShellFileResult fileOperation(const ShellFileRequest& request) override {
        requests.push_back(request);
        if (const auto code = faults_.enter("ShellOperations.fileOperation")) {
            if (onStopped)
                onStopped();
            return {static_cast<std::int32_t>(*code), *code == 0};
        }
        if (onFileOperation)
            onFileOperation();
        return nextOf(results, ShellFileResult{});
    }
    Answer<std::wstring> browseForFolder(const FolderRequest& request) override {
        folderRequests.push_back(request);
        constexpr SystemCode cancelled = 1223;
        const auto code = faults_.enter("ShellOperations.browseForFolder");
        return chosenFolder && !code ? Answer(*chosenFolder) : Failure{code.value_or(cancelled)};
    }
    WindowHandle desktopWindow() override { return faults_.value("ShellOperations.desktopWindow", desktop); }

    std::vector<ShellFileRequest> requests;
    /// Used up in order; then every operation succeeds.
    std::deque<ShellFileResult> results;
    std::function<void()> onFileOperation;
    /// What an operation that fails by plan has done before it stopped.
    std::function<void()> onStopped;

    std::vector<FolderRequest> folderRequests;
    /// What the user chooses; he cancels while there is none.
    std::optional<std::wstring> chosenFolder;
    WindowHandle desktop{0x10010};
};

} // namespace tarv
