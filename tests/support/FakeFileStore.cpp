#include "tests/support/FakeFileStore.h"

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

Answer<FakeEntry*> FakeFileStore::changeable(std::wstring_view path) const {
    auto entry = existing(path);
    if (entry && ((*entry)->attributes & (attribute::directory | attribute::readOnly)) != 0)
        return Failure{system_code::accessDenied};
    return entry;
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
    SystemCode failure = faults_.enter("FileStore.search").value_or(0);
    const std::size_t cut = pattern.find_last_of(L"\\/:") + 1;
    const std::wstring_view last = pattern.substr(cut);
    const FakeEntry* folder =
        pattern.empty() ? nullptr : disk_.find(cut == 0 ? L"." : pattern.substr(0, cut));
    std::vector<DirectoryEntry> found;
    if (failure == 0 && (folder == nullptr || !folder->isFolder()))
        failure = system_code::pathNotFound;
    if (failure == 0 && !last.empty()) {
        // A drive root holds neither "." nor "..".
        for (const std::wstring_view dots : {L".", L".."})
            if (!folder->name.ends_with(L':') && matchesPattern(dots, last))
                found.push_back({std::wstring(dots), attribute::directory});
        for (const auto& [key, entry] : folder->children)
            if (matchesPattern(entry->name, last) ||
                (!entry->shortName.empty() && matchesPattern(entry->shortName, last)))
                found.push_back({entry->name, entry->attributes});
    }
    if (failure == 0 && found.empty())
        failure = system_code::fileNotFound;
    return std::make_unique<FakeSearch>(faults_, openSearches, std::move(found), failure);
}

SystemCode FakeFileStore::append(std::wstring_view path, std::string_view bytes) {
    const auto planned = faults_.enter("FileStore.append");
    return planned ? *planned : write(path, bytes, true);
}

SystemCode FakeFileStore::overwrite(std::wstring_view path, std::string_view bytes) {
    const auto planned = faults_.enter("FileStore.overwrite");
    return planned ? *planned : write(path, bytes, false);
}

SystemCode FakeFileStore::write(std::wstring_view path, std::string_view bytes, bool keepContent) {
    const auto entry = changeable(path);
    if (!entry && entry.error() != system_code::fileNotFound)
        return entry.error();
    FakeEntry& file = entry ? **entry : disk_.addFile(path);
    file.bytes = (keepContent ? file.bytes : "") + std::string(bytes);
    return 0;
}

SystemCode FakeFileStore::remove(std::wstring_view path) {
    if (const auto code = faults_.enter("FileStore.remove"))
        return *code;
    const auto entry = changeable(path);
    if (entry)
        disk_.remove(path);
    return entry ? 0 : entry.error();
}

SystemCode FakeFileStore::replace(std::wstring_view path, std::wstring_view by) {
    if (const auto code = faults_.enter("FileStore.replace"))
        return *code;
    const auto source = existing(by);
    if (!source)
        return source.error();
    const std::string bytes = (*source)->bytes;
    if (const SystemCode code = write(path, bytes, false))
        return code;
    disk_.remove(by);
    return 0;
}

std::wstring FakeFileStore::currentDirectory() {
    return faults_.value("FileStore.currentDirectory", disk_.currentDirectory);
}

} // namespace tarv
