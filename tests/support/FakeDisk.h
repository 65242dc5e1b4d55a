#pragma once

#include "platform/FileStore.h"
#include "tests/support/FaultPlan.h"

#include <map>
#include <string>

namespace tarv {

/// A file or folder of the scripted disk.
struct FakeEntry {
    std::wstring name;
    std::wstring shortName;
    std::uint32_t attributes = attribute::directory;
    std::string bytes;

    bool isFolder() const { return (attributes & attribute::directory) != 0; }
};

/// Files in memory under Windows paths, shared by all fakes that read or write files; a path without drive
/// begins in the current directory. A new disk holds the Windows folder, the common application data and the
/// running program.
class FakeDisk {
public:
    FakeDisk();

    /// Both make the missing folders on the way. An existing entry gets the new attributes, a file the new
    /// bytes.
    FakeEntry& addFile(std::wstring_view path, std::string bytes = {},
                       std::uint32_t attributes = attribute::archive, std::wstring shortName = {});
    FakeEntry& addFolder(std::wstring_view path, std::uint32_t attributes = attribute::directory,
                         std::wstring shortName = {});
    /// A folder goes with all that it holds.
    void remove(std::wstring_view path);

    /// By long or short names, without regard to case; null when missing.
    FakeEntry* find(std::wstring_view path);
    bool exists(std::wstring_view path) { return find(path) != nullptr; }
    /// The bytes of a file; throws when there is none, so that a wrong path shows in the test.
    const std::string& bytes(std::wstring_view path);
    /// Whether the path's last component stands or would stand in a folder.
    bool hasParent(std::wstring_view path);
    /// In the order in which Windows delivers them.
    std::vector<FakeEntry> children(std::wstring_view folder);

    std::wstring currentDirectory = L"C:\\Program Files\\TARVENIK";

private:
    std::vector<std::wstring> parts(std::wstring_view path) const;
    std::wstring step(const std::wstring& key, std::wstring_view part) const;
    std::wstring keyOf(std::wstring_view path) const;

    /// By upper-cased absolute path of long names, and such paths with a short name at the end to their keys.
    std::map<std::wstring, FakeEntry> entries_;
    std::map<std::wstring, std::wstring> shortNames_;
};

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
    std::wstring currentDirectory() override {
        return faults_.value("FileStore.currentDirectory", disk_.currentDirectory);
    }

    /// Searches that have not been ended; a leak shows here.
    int openSearches = 0;

private:
    Answer<FakeEntry*> existing(std::wstring_view path);
    /// 0 where the path is or could become a file that may be changed.
    SystemCode refusal(std::wstring_view path);
    SystemCode write(std::wstring_view path, std::string bytes);

    FaultPlan& faults_;
    FakeDisk& disk_;
};

} // namespace tarv
