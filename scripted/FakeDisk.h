#pragma once

#include "platform/FileStore.h"
#include "scripted/FaultPlan.h"

#include <map>
#include <string>
#include <vector>

namespace tarv {

/// A file or folder of the scripted disk.
struct FakeEntry {
    std::wstring name;
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
                       std::uint32_t attributes = attribute::archive);
    FakeEntry& addFolder(std::wstring_view path);
    /// A folder goes with all that it holds.
    void remove(std::wstring_view path) {
        std::erase_if(entries, [gone = key(path)](const auto& each) { return each.first.starts_with(gone); });
    }

    /// Without regard to case; null when missing.
    FakeEntry* find(std::wstring_view path);
    bool exists(std::wstring_view path) { return find(path) != nullptr; }
    /// The bytes of a file; a text that is no file's where there is none.
    std::string bytes(std::wstring_view path) { return exists(path) ? find(path)->bytes : "(no file)"; }
    /// 0 where the path is or could become a file that may be changed.
    SystemCode refusal(std::wstring_view path);
    /// Why there is no such file.
    SystemCode missing(std::wstring_view path);

    /// The absolute path in capital letters, ended by "\".
    std::wstring key(std::wstring_view path) const;

    std::wstring currentDirectory = L"C:\\Program Files\\TARVENIK";
    /// By key. A short name is an entry of its own, with the long name in it.
    std::map<std::wstring, FakeEntry> entries;
};

/// The file store over the scripted disk. A search is a snapshot taken when it begins.
class FakeFileStore : public FileStore, Planned {
public:
    FakeFileStore(FaultPlan& faults, FakeDisk& disk) : Planned(faults), disk_(disk) {}

    Answer<std::int64_t> length(std::wstring_view path) override {
        if (const auto code = failure("FileStore.length", path))
            return Failure{code};
        return static_cast<std::int64_t>(disk_.find(path)->bytes.size());
    }
    Answer<std::uint32_t> attributes(std::wstring_view path) override {
        if (const auto code = failure("FileStore.attributes", path))
            return Failure{code};
        return disk_.find(path)->attributes;
    }
    SystemCode refusesReading(std::wstring_view path) override {
        const auto code = failure("FileStore.refusesReading", path);
        return code == 0 && disk_.find(path)->isFolder() ? system_code::accessDenied : code;
    }
    std::unique_ptr<DirectorySearch> search(std::wstring_view pattern) override;
    /// A planned failure 112, the full disk, takes its effect in both: only half of the bytes arrive.
    SystemCode append(std::wstring_view path, std::string_view bytes) override {
        if (const auto code = disk_.missing(path))
            return faults_.enter("FileStore.append").value_or(code);
        return write("FileStore.append", path, disk_.bytes(path).append(bytes), bytes.size());
    }
    SystemCode overwrite(std::wstring_view path, std::string_view bytes) override {
        return write("FileStore.overwrite", path, std::string(bytes), bytes.size());
    }
    SystemCode remove(std::wstring_view path) override;
    /// Planned failures 1176 and 1177 take their effect: the old file is gone or has another name.
    SystemCode replace(std::wstring_view path, std::wstring_view by) override;
    SystemCode moveOver(std::wstring_view from, std::wstring_view to) override;
    std::wstring currentDirectory() override {
        return faults_.value("FileStore.currentDirectory", disk_.currentDirectory);
    }

private:
    SystemCode failure(const char* function, std::wstring_view path) {
        return faults_.enter(function).value_or(disk_.missing(path));
    }
    SystemCode write(const char* function, std::wstring_view path, std::string bytes, std::size_t added);
    SystemCode moveInto(std::wstring_view path, std::wstring_view by);

    FakeDisk& disk_;
};

} // namespace tarv
