#pragma once

#include "platform/ShellOperations.h"
#include "tests/support/FaultPlan.h"

#include <functional>

namespace tarv {

/// Records what the shell is asked for. It moves no files: a test that needs the outcome on the disk makes it
/// in `onFileOperation`.
class FakeShellOperations : public ShellOperations, Planned {
public:
    using Planned::Planned;

    ShellFileResult fileOperation(const ShellFileRequest& request) override {
        requests.push_back(request);
        if (const auto code = faults_.enter("ShellOperations.fileOperation"))
            return {static_cast<std::int32_t>(*code), false};
        if (onFileOperation)
            onFileOperation(request);
        return nextOf(results, ShellFileResult{});
    }

    Answer<std::wstring> browseForFolder(const FolderRequest& request) override {
        folderRequests.push_back(request);
        return faults_.answer("ShellOperations.browseForFolder", [this]() -> Answer<std::wstring> {
            constexpr SystemCode cancelled = 1223;
            return chosenFolder ? Answer(*chosenFolder) : Failure{cancelled};
        });
    }

    WindowHandle desktopWindow() override { return faults_.value("ShellOperations.desktopWindow", desktop); }

    std::vector<ShellFileRequest> requests;
    /// Used up in order; then every operation succeeds.
    std::deque<ShellFileResult> results;
    std::function<void(const ShellFileRequest&)> onFileOperation;

    std::vector<FolderRequest> folderRequests;
    /// What the user chooses; he cancels while there is none.
    std::optional<std::wstring> chosenFolder;
    WindowHandle desktop{0x10010};
};

} // namespace tarv
