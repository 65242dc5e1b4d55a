#pragma once

#include "platform/ShellOperations.h"
#include "scripted/FaultPlan.h"

#include <functional>
#include <vector>

namespace tarv {

/// Records what the shell is asked for. It moves no files: a test that needs the outcome on the disk makes it
/// in `onFileOperation`, also what an operation has done before it failed.
struct FakeShellOperations : ShellOperations, Planned {
    using Planned::Planned;

    /// A failure with code 0 is an abort by the user.
    ShellFileResult fileOperation(const ShellFileRequest& request) override {
        requests.push_back(request);
        const auto code = faults_.enter("ShellOperations.fileOperation");
        const ShellFileResult result = code ? ShellFileResult{static_cast<std::int32_t>(*code), *code == 0}
                                            : nextOf(results, ShellFileResult{});
        if (onFileOperation)
            onFileOperation(result);
        return result;
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
    std::function<void(const ShellFileResult& result)> onFileOperation;

    std::vector<FolderRequest> folderRequests;
    /// What the user chooses; he cancels while there is none.
    std::optional<std::wstring> chosenFolder;
    WindowHandle desktop{0x10010};
};

} // namespace tarv
