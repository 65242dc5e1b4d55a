#pragma once

#include "platform/FileStore.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarv {

/// A file or folder of the scripted disk.
struct FakeEntry {
    std::wstring name;
    std::wstring shortName;
    std::uint32_t attributes = attribute::directory;
    std::string bytes;
    /// Under their upper-cased names, which is also the order in which Windows delivers them.
    std::map<std::wstring, std::unique_ptr<FakeEntry>> children;

    bool isFolder() const { return (attributes & attribute::directory) != 0; }
    /// By long or short name, without regard to case; null when missing.
    FakeEntry* child(std::wstring_view wanted) const;
};

/// Files in memory under Windows paths, shared by all fakes that read or write files. Knows drives and
/// network shares, "." and "..", and paths relative to the current directory. A new disk holds the Windows
/// folder, the common application data and the running program.
class FakeDisk {
public:
    FakeDisk();

    /// Both make the missing folders on the way. An existing entry gets the new attributes, a file the new
    /// bytes.
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

    std::wstring currentDirectory = L"C:\\Program Files\\TARVENIK";

private:
    /// The components of the absolute path, beginning with the drive ("C:") or the server ("\\server").
    std::vector<std::wstring> walk(std::wstring_view path) const;
    FakeEntry* descend(std::wstring_view path, std::size_t leaveOut) const;
    FakeEntry& add(std::wstring_view path, std::uint32_t attributes, std::wstring shortName);

    std::unique_ptr<FakeEntry> root_ = std::make_unique<FakeEntry>();
};

/// Whether a name matches a search pattern with "*" and "?" as the Windows directory search does it.
bool matchesPattern(std::wstring_view name, std::wstring_view pattern);

} // namespace tarv
