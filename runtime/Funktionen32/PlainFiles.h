#pragma once

#include "platform/Answer.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tarv {

class DirectorySearch;
struct Runtime;

/// A directory search that yields names of plain files only: not hidden, not system, no folders. Each has its
/// own state, so searches may run inside each other.
class PlainFiles {
public:
    PlainFiles(Runtime& rt, std::wstring_view pattern);
    ~PlainFiles();
    PlainFiles(const PlainFiles&) = delete;
    PlainFiles& operator=(const PlainFiles&) = delete;

    /// The next name; none behind the last one, and none for good once the search has failed.
    std::optional<std::wstring> next();

    /// Why the search ended early; 0 when it did not, or when there simply was no (further) name.
    SystemCode failure() const { return failure_; }

private:
    std::unique_ptr<DirectorySearch> search_;
    SystemCode failure_ = 0;
};

} // namespace tarv
