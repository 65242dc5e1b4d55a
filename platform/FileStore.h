#pragma once

#include "platform/Answer.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tarv {

/// Windows file attribute bits.
namespace attribute {
inline constexpr std::uint32_t readOnly = 1;
inline constexpr std::uint32_t hidden = 2;
inline constexpr std::uint32_t system = 4;
inline constexpr std::uint32_t directory = 16;
inline constexpr std::uint32_t archive = 32;
inline constexpr std::uint32_t normal = 128;
} // namespace attribute

struct DirectoryEntry {
    std::wstring name;
    std::uint32_t attributes = 0;
};

/// One directory search in progress, with its own state; ending it closes the search.
class DirectorySearch {
public:
    DirectorySearch() = default;
    DirectorySearch(const DirectorySearch&) = delete;
    DirectorySearch& operator=(const DirectorySearch&) = delete;
    virtual ~DirectorySearch() = default;

    /// The next entry, folders, hidden ones, "." and ".." included. Fails with fileNotFound when nothing
    /// matches at all and with noMoreFiles behind the last entry.
    virtual Answer<DirectoryEntry> next() = 0;
};

/// Files by name. Names cross the border in wide characters: a "?" made of a character outside the code
/// page would be taken as a wildcard.
class FileStore {
public:
    virtual ~FileStore() = default;

    /// Length in bytes; 0 for a folder.
    virtual Answer<std::int64_t> length(std::wstring_view path) = 0;
    virtual Answer<std::uint32_t> attributes(std::wstring_view path) = 0;
    /// 0 when the file can be opened for reading while others read and write it, else the system's error
    /// code.
    virtual SystemCode refusesReading(std::wstring_view path) = 0;

    /// Never null; a failure shows at the first next(). `pattern` may contain "*" and "?".
    virtual std::unique_ptr<DirectorySearch> search(std::wstring_view pattern) = 0;

    /// Both open, write and close in one call and answer 0 or the system's error code. While the file is
    /// open, others may read it. append() takes only a file that is there already.
    virtual SystemCode append(std::wstring_view path, std::string_view bytes) = 0;
    virtual SystemCode overwrite(std::wstring_view path, std::string_view bytes) = 0;

    virtual SystemCode remove(std::wstring_view path) = 0;

    /// Puts the file `by` in the place of the file `path`: nobody ever finds half a file there. `path` hands
    /// on its attributes and access rights; a read-only one is refused. After a failure both are as they
    /// were, but after 1176 and 1177 nothing lies under `path` (ReplaceFile without a backup name: after 1176
    /// the old file is gone, after 1177 it has some other name); `by` is then whole under its own name.
    virtual SystemCode replace(std::wstring_view path, std::wstring_view by) = 0;

    /// Gives the file `from` the name `to` on the same volume. A file of that name goes, unless it is
    /// read-only, and hands on nothing.
    virtual SystemCode moveOver(std::wstring_view from, std::wstring_view to) = 0;

    /// Without a trailing "\" unless it is a drive root.
    virtual std::wstring currentDirectory() = 0;
};

} // namespace tarv
