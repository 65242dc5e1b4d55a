#pragma once

#include "tests/support/FakeDisk.h"
#include "tests/support/FaultPlan.h"

namespace tarv {

/// The file store over the scripted disk. A search is a snapshot taken when it begins.
class FakeFileStore : public FileStore {
public:
    FakeFileStore(FaultPlan& faults, FakeDisk& disk) : faults_(faults), disk_(disk) {}

    Answer<std::int64_t> length(std::wstring_view path) override;
    Answer<std::uint32_t> attributes(std::wstring_view path) override;
    std::unique_ptr<DirectorySearch> search(std::wstring_view pattern) override;
    SystemCode append(std::wstring_view path, std::string_view bytes) override;
    SystemCode overwrite(std::wstring_view path, std::string_view bytes) override;
    SystemCode remove(std::wstring_view path) override;
    SystemCode replace(std::wstring_view path, std::wstring_view by) override;
    std::wstring currentDirectory() override;

    /// Searches that have not been ended; a leak shows here.
    int openSearches = 0;

private:
    Answer<FakeEntry*> existing(std::wstring_view path) const;
    Answer<FakeEntry*> changeable(std::wstring_view path) const;
    SystemCode write(std::wstring_view path, std::string_view bytes, bool keepContent);

    FaultPlan& faults_;
    FakeDisk& disk_;
};

} // namespace tarv
