#include "tests/support/FakeFileStore.h"

#include "runtime/Funktionen32/Texts.h"

namespace tarv {
namespace {

constexpr SystemCode invalidName = 123;

class FakeSearch : public DirectorySearch {
public:
    FakeSearch(FaultPlan& faults, int& open, std::vector<DirectoryEntry> found, SystemCode failure)
        : faults_(faults), open_(open), found_(std::move(found)), failure_(failure) {
        ++open_;
    }
    ~FakeSearch() override { --open_; }

    Answer<DirectoryEntry> next() override {
        if (const auto code = faults_.enter("DirectorySearch.next"))
            return Failure{*code};
        if (failure_ != 0)
            return Failure{failure_};
        if (position_ == found_.size())
            return Failure{system_code::noMoreFiles};
        return found_[position_++];
    }

private:
    FaultPlan& faults_;
    int& open_;
    std::vector<DirectoryEntry> found_;
    SystemCode failure_;
    std::size_t position_ = 0;
};

} // namespace

Answer<FakeEntry*> FakeFileStore::existing(std::wstring_view path) const {
    if (path.find_first_of(L"*?<>|\"") != std::wstring_view::npos)
        return Failure{invalidName};
    if (FakeEntry* entry = disk_.find(path))
        return entry;
    return Failure{disk_.parent(path) != nullptr ? system_code::fileNotFound : system_code::pathNotFound};
}

Answer<std::int64_t> FakeFileStore::length(std::wstring_view path) {
    if (const auto code = faults_.enter("FileStore.length"))
        return Failure{*code};
    const auto entry = existing(path);
    if (!entry)
        return Failure{entry.error()};
    return static_cast<std::int64_t>((*entry)->bytes.size());
}

Answer<std::uint32_t> FakeFileStore::attributes(std::wstring_view path) {
    if (const auto code = faults_.enter("FileStore.attributes"))
        return Failure{*code};
    const auto entry = existing(path);
    if (!entry)
        return Failure{entry.error()};
    // The system never answers 0: a file without any bit is "normal".
    return (*entry)->attributes != 0 ? (*entry)->attributes : attribute::normal;
}

std::unique_ptr<DirectorySearch> FakeFileStore::search(std::wstring_view pattern) {
    const auto planned = faults_.enter("FileStore.search");
    std::vector<DirectoryEntry> found;
    SystemCode failure = planned.value_or(0);
    const FakeEntry* folder = disk_.parent(pattern);
    if (failure == 0 && (folder == nullptr || !folder->isFolder()))
        failure = system_code::pathNotFound;
    if (failure == 0) {
        const std::wstring full = disk_.absolute(pattern);
        const std::wstring_view last = std::wstring_view(full).substr(full.rfind(L'\\') + 1);
        const bool inDriveRoot = full.find(L'\\') == full.rfind(L'\\');
        if (!last.empty() && !inDriveRoot)
            for (const std::wstring_view dots : {L".", L".."})
                if (matchesPattern(dots, last))
                    found.push_back({std::wstring(dots), attribute::directory});
        if (!last.empty())
            for (const auto& entry : folder->children)
                if (matchesPattern(entry->name, last) ||
                    (!entry->shortName.empty() && matchesPattern(entry->shortName, last)))
                    found.push_back({entry->name, entry->attributes});
        if (found.empty())
            failure = system_code::fileNotFound;
    }
    return std::make_unique<FakeSearch>(faults_, openSearches, std::move(found), failure);
}

SystemCode FakeFileStore::append(std::wstring_view path, std::string_view bytes) {
    if (const auto code = faults_.enter("FileStore.append"))
        return *code;
    return write(path, bytes, true);
}

SystemCode FakeFileStore::overwrite(std::wstring_view path, std::string_view bytes) {
    if (const auto code = faults_.enter("FileStore.overwrite"))
        return *code;
    return write(path, bytes, false);
}

SystemCode FakeFileStore::write(std::wstring_view path, std::string_view bytes, bool keepContent) {
    const auto entry = existing(path);
    if (!entry && entry.error() != system_code::fileNotFound)
        return entry.error();
    if (!entry) {
        disk_.addFile(path, std::string(bytes));
        return 0;
    }
    if (((*entry)->attributes & (attribute::directory | attribute::readOnly)) != 0)
        return system_code::accessDenied;
    if (!keepContent)
        (*entry)->bytes.clear();
    (*entry)->bytes += bytes;
    return 0;
}

SystemCode FakeFileStore::remove(std::wstring_view path) {
    if (const auto code = faults_.enter("FileStore.remove"))
        return *code;
    const auto entry = existing(path);
    if (!entry)
        return entry.error();
    if (((*entry)->attributes & (attribute::directory | attribute::readOnly)) != 0)
        return system_code::accessDenied;
    disk_.remove(path);
    return 0;
}

std::wstring FakeFileStore::currentDirectory() {
    return faults_.enter("FileStore.currentDirectory") ? std::wstring() : disk_.currentDirectory;
}

} // namespace tarv
