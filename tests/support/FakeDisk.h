#pragma once

#include "platform/FileStore.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarv {

/// A file or folder of the scripted disk. Entries of a folder stand in the order of their upper-cased names,
/// as the Windows file system delivers them.
struct FakeEntry {
    std::wstring name;
    std::wstring shortName;
    std::uint32_t attributes = 0;
    std::string bytes;
    std::vector<std::unique_ptr<FakeEntry>> children;

    bool isFolder() const { return (attributes & attribute::directory) != 0; }
    /// By long or short name, without regard to case; null when missing.
    FakeEntry* child(std::wstring_view wanted) const;
};

/// Files in memory under Windows paths, shared by all fakes that read or write files. Knows drives and
/// network shares, "." and "..", and paths relative to the current directory. A new disk holds C:\Windows and
/// little else.
class FakeDisk {
public:
    FakeDisk();

    /// Both create missing folders on the way and replace what an existing entry holds.
    FakeEntry& addFile(std::wstring_view path, std::string bytes = {},
                       std::uint32_t attributes = attribute::archive, std::wstring shortName = {});
    FakeEntry& addFolder(std::wstring_view path, std::uint32_t attributes = attribute::directory,
                         std::wstring shortName = {});
    void remove(std::wstring_view path);

    FakeEntry* find(std::wstring_view path) const;
    bool exists(std::wstring_view path) const { return find(path) != nullptr; }
    /// The bytes of a file; throws when there is none, so that a wrong path shows in the test.
    const std::string& bytes(std::wstring_view path) const;

    /// The folder that holds or would hold the path's last component; null when it is missing.
    FakeEntry* parent(std::wstring_view path) const;

    /// Full path without "." and ".."; keeps a trailing "\".
    std::wstring absolute(std::wstring_view path) const;

    std::wstring currentDirectory = L"C:\\Program Files\\TARVENIK";

private:
    FakeEntry& add(std::wstring_view path, std::uint32_t attributes, std::wstring shortName);

    FakeEntry root_;
};

/// Whether a name matches a search pattern with "*" and "?" as the Windows directory search does it.
bool matchesPattern(std::wstring_view name, std::wstring_view pattern);

} // namespace tarv
