#pragma once

#include "platform/ShellOperations.h"
#include "tests/support/FaultPlan.h"

#include <deque>
#include <functional>
#include <optional>
#include <vector>

namespace tarv {

/// Records what the shell is asked for. It moves no files: a test that needs the outcome on the disk makes it
/// in `onFileOperation`.
class FakeShellOperations : public ShellOperations {
public:
    explicit FakeShellOperations(FaultPlan& faults) : faults_(faults) {}

    ShellFileResult fileOperation(const ShellFileRequest& request) override {
        requests.push_back(request);
        if (const auto code = faults_.enter("ShellOperations.fileOperation"))
            return {static_cast<std::int32_t>(*code), false};
        if (onFileOperation)
            onFileOperation(request);
        if (results.empty())
            return {};
        const ShellFileResult result = results.front();
        results.pop_front();
        return result;
    }

    Answer<std::wstring> browseForFolder(const FolderRequest& request) override {
        folderRequests.push_back(request);
        if (const auto code = faults_.enter("ShellOperations.browseForFolder"))
            return Failure{*code};
        if (!chosenFolder)
            return Failure{cancelled};
        return *chosenFolder;
    }

    WindowHandle desktopWindow() override { return faults_.value("ShellOperations.desktopWindow", desktop); }

    static constexpr SystemCode cancelled = 1223;

    std::vector<ShellFileRequest> requests;
    /// Used up in order; then every operation succeeds.
    std::deque<ShellFileResult> results;
    std::function<void(const ShellFileRequest&)> onFileOperation;

    std::vector<FolderRequest> folderRequests;
    /// What the user chooses; he cancels while there is none.
    std::optional<std::wstring> chosenFolder;
    WindowHandle desktop{0x10010};

private:
    FaultPlan& faults_;
};

} // namespace tarv
