#include "tests/support/FakeDisk.h"

#include "runtime/Funktionen32/Texts.h"

#include <stdexcept>

namespace tarv {
namespace {

constexpr SystemCode invalidName = 123;

bool matches(std::wstring_view name, std::wstring_view pattern) {
    if (pattern.empty())
        return name.empty();
    const std::wstring_view rest = pattern.substr(1);
    if (pattern.front() == L'*')
        return matches(name, rest) || (!name.empty() && matches(name.substr(1), pattern));
    // "name.*" also finds "name".
    if (name.empty())
        return pattern == L".*";
    return (pattern.front() == L'?' || name.front() == pattern.front()) && matches(name.substr(1), rest);
}

class FakeSearch : public DirectorySearch {
public:
    FakeSearch(FaultPlan& faults, int& open, std::vector<DirectoryEntry> found, SystemCode failure)
        : faults_(faults), open_(open), found_(std::move(found)), failure_(failure) {
        ++open_;
    }
    ~FakeSearch() override { --open_; }

    Answer<DirectoryEntry> next() override {
        return faults_.answer("DirectorySearch.next", [this]() -> Answer<DirectoryEntry> {
            if (failure_ != 0 || position_ == found_.size())
                return Failure{failure_ != 0 ? failure_ : system_code::noMoreFiles};
            return found_[position_++];
        });
    }

private:
    FaultPlan& faults_;
    int& open_;
    std::vector<DirectoryEntry> found_;
    SystemCode failure_;
    std::size_t position_ = 0;
};

} // namespace

FakeDisk::FakeDisk() {
    addFolder(L"C:\\Windows\\System32");
    addFolder(L"C:\\ProgramData");
    addFile(L"C:\\Program Files\\TARVENIK\\TarvService.exe", "MZ");
}

FakeEntry& FakeDisk::addFile(std::wstring_view path, std::string bytes, std::uint32_t attributes,
                             std::wstring shortName) {
    FakeEntry& entry = addFolder(path, 0, std::move(shortName));
    entry.attributes = attributes;
    entry.bytes = std::move(bytes);
    return entry;
}

FakeEntry& FakeDisk::addFolder(std::wstring_view path, std::uint32_t attributes, std::wstring shortName) {
    std::wstring key, parent;
    for (const std::wstring& part : parts(path)) {
        parent = key;
        key = step(key, part);
        if (entries_[key].name.empty())
            entries_[key].name = part;
    }
    FakeEntry& entry = entries_[key];
    entry.attributes = attributes | attribute::directory;
    if (!shortName.empty())
        shortNames_[parent + upperCase(shortName) + L"\\"] = key;
    entry.shortName = std::move(shortName);
    return entry;
}

void FakeDisk::remove(std::wstring_view path) {
    std::erase_if(entries_, [gone = keyOf(path)](const auto& each) { return each.first.starts_with(gone); });
}

FakeEntry* FakeDisk::find(std::wstring_view path) {
    const auto found = entries_.find(keyOf(path));
    const bool missing =
        path.empty() || found == entries_.end() || (path.ends_with(L'\\') && !found->second.isFolder());
    return missing ? nullptr : &found->second;
}

const std::string& FakeDisk::bytes(std::wstring_view path) {
    const FakeEntry* entry = find(path);
    if (entry == nullptr || entry->isFolder())
        throw std::out_of_range("no such file on the scripted disk");
    return entry->bytes;
}

bool FakeDisk::hasParent(std::wstring_view path) {
    const std::wstring key = keyOf(path);
    const auto parent = entries_.find(key.substr(0, key.rfind(L'\\', key.size() - 2) + 1));
    return !path.empty() && parent != entries_.end() && parent->second.isFolder();
}

std::vector<FakeEntry> FakeDisk::children(std::wstring_view folder) {
    const std::wstring above = keyOf(folder);
    std::vector<FakeEntry> found;
    for (const auto& [key, entry] : entries_)
        if (key.starts_with(above) && key.find(L'\\', above.size()) == key.size() - 1)
            found.push_back(entry);
    return found;
}

std::vector<std::wstring> FakeDisk::parts(std::wstring_view path) const {
    std::wstring full(path);
    std::ranges::replace(full, L'/', L'\\');
    if (full.find(L':') != 1)
        full.insert(0, full.starts_with(L'\\') ? currentDirectory.substr(0, 2) : currentDirectory + L"\\");
    std::vector<std::wstring> parts;
    for (std::size_t start = 0; start < full.size();) {
        const std::size_t end = std::min(full.find(L'\\', start), full.size());
        std::wstring part = full.substr(start, end - start);
        start = end + 1;
        if (part == L".." && parts.size() > 1)
            parts.pop_back();
        // Windows drops dots and blanks at the end of a name.
        part.erase(part.find_last_not_of(L" .") + 1);
        if (!part.empty())
            parts.push_back(std::move(part));
    }
    return parts;
}

std::wstring FakeDisk::step(const std::wstring& key, std::wstring_view part) const {
    std::wstring below = key + upperCase(part) + L"\\";
    const auto longName = shortNames_.find(below);
    return longName != shortNames_.end() ? longName->second : below;
}

std::wstring FakeDisk::keyOf(std::wstring_view path) const {
    std::wstring key;
    for (const std::wstring& part : parts(path))
        key = step(key, part);
    return key;
}

Answer<FakeEntry*> FakeFileStore::existing(std::wstring_view path) {
    if (path.find_first_of(L"*?<>|\"") != path.npos)
        return Failure{invalidName};
    if (FakeEntry* entry = disk_.find(path))
        return entry;
    return Failure{disk_.hasParent(path) ? system_code::fileNotFound : system_code::pathNotFound};
}

Answer<std::int64_t> FakeFileStore::length(std::wstring_view path) {
    return faults_.answer("FileStore.length", [&]() -> Answer<std::int64_t> {
        const auto entry = existing(path);
        if (!entry)
            return Failure{entry.error()};
        return static_cast<std::int64_t>((*entry)->bytes.size());
    });
}

Answer<std::uint32_t> FakeFileStore::attributes(std::wstring_view path) {
    return faults_.answer("FileStore.attributes", [&]() -> Answer<std::uint32_t> {
        const auto entry = existing(path);
        if (!entry)
            return Failure{entry.error()};
        // The system never answers 0: a file without any bit is "normal".
        return (*entry)->attributes != 0 ? (*entry)->attributes : attribute::normal;
    });
}

std::unique_ptr<DirectorySearch> FakeFileStore::search(std::wstring_view pattern) {
    SystemCode failure = faults_.enter("FileStore.search").value_or(0);
    const std::size_t cut = pattern.find_last_of(L"\\/:") + 1;
    const std::wstring_view path = cut == 0 ? L"." : pattern.substr(0, cut);
    const std::wstring wanted = upperCase(pattern.substr(cut));
    std::vector<DirectoryEntry> found;
    if (failure == 0 && !disk_.exists(path))
        failure = system_code::pathNotFound;
    if (failure == 0 && !wanted.empty()) {
        for (const wchar_t* dots : {L".", L".."})
            if (matches(dots, wanted))
                found.push_back({dots, attribute::directory});
        for (const FakeEntry& entry : disk_.children(path))
            if (matches(upperCase(entry.name), wanted) || matches(upperCase(entry.shortName), wanted))
                found.push_back({entry.name, entry.attributes});
    }
    if (failure == 0 && found.empty())
        failure = system_code::fileNotFound;
    return std::make_unique<FakeSearch>(faults_, openSearches, std::move(found), failure);
}

SystemCode FakeFileStore::refusal(std::wstring_view path) {
    const auto entry = existing(path);
    if (entry)
        return (*entry)->isFolder() || ((*entry)->attributes & attribute::readOnly) != 0
                   ? system_code::accessDenied
                   : 0;
    return entry.error() == system_code::fileNotFound ? 0 : entry.error();
}

SystemCode FakeFileStore::write(std::wstring_view path, std::string bytes) {
    const SystemCode code = refusal(path);
    if (code == 0)
        (disk_.exists(path) ? *disk_.find(path) : disk_.addFile(path)).bytes = std::move(bytes);
    return code;
}

SystemCode FakeFileStore::append(std::wstring_view path, std::string_view bytes) {
    const auto code = faults_.enter("FileStore.append");
    const FakeEntry* present = disk_.find(path);
    return code ? *code : write(path, (present ? present->bytes : "") + std::string(bytes));
}

SystemCode FakeFileStore::overwrite(std::wstring_view path, std::string_view bytes) {
    const auto code = faults_.enter("FileStore.overwrite");
    return code ? *code : write(path, std::string(bytes));
}

SystemCode FakeFileStore::remove(std::wstring_view path) {
    if (const auto code = faults_.enter("FileStore.remove"))
        return *code;
    const auto entry = existing(path);
    const SystemCode code = entry ? refusal(path) : entry.error();
    if (code == 0)
        disk_.remove(path);
    return code;
}

SystemCode FakeFileStore::replace(std::wstring_view path, std::wstring_view by) {
    if (const auto code = faults_.enter("FileStore.replace"))
        return *code;
    const auto source = existing(by);
    const SystemCode code = source ? write(path, std::string((*source)->bytes)) : source.error();
    if (code == 0)
        disk_.remove(by);
    return code;
}

} // namespace tarv
