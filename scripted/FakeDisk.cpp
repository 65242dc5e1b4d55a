#include "scripted/FakeDisk.h"

#include "scripted/Capitals.h"

#include <algorithm>

namespace tarv {
namespace {

constexpr SystemCode diskFull = 112;

std::wstring_view nameOf(std::wstring_view path) {
    return path.substr(path.rfind(L'\\') + 1);
}

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

class FakeSearch : public DirectorySearch, Planned {
public:
    using Planned::Planned;

    Answer<DirectoryEntry> next() override {
        if (const auto code = faults_.enter("DirectorySearch.next"))
            return Failure{*code};
        if (found.empty())
            return Failure{end};
        return nextOf(found, {});
    }

    std::deque<DirectoryEntry> found;
    SystemCode end = system_code::noMoreFiles;
};

} // namespace

FakeDisk::FakeDisk() {
    addFolder(L"C:\\Windows\\System32");
    addFolder(L"C:\\ProgramData");
    addFile(L"C:\\Program Files\\TARVENIK\\TarvService.exe", "MZ");
}

FakeEntry& FakeDisk::addFile(std::wstring_view path, std::string bytes, std::uint32_t attributes) {
    FakeEntry& entry = addFolder(path);
    entry = {entry.name, attributes, std::move(bytes)};
    return entry;
}

FakeEntry& FakeDisk::addFolder(std::wstring_view path) {
    for (auto end = path.find(L'\\'); end < path.size() - 1; end = path.find(L'\\', end + 1))
        entries.try_emplace(key(path.substr(0, end)),
                            FakeEntry{std::wstring(nameOf(path.substr(0, end))), attribute::directory, {}});
    FakeEntry& entry = entries[key(path)];
    entry.name = nameOf(path.substr(0, path.find_last_not_of(L'\\') + 1));
    entry.attributes = attribute::directory;
    return entry;
}

FakeEntry* FakeDisk::find(std::wstring_view path) {
    const auto found = entries.find(key(path));
    const bool asFolder = path.ends_with(L'\\');
    return path.empty() || found == entries.end() || (asFolder && !found->second.isFolder()) ? nullptr
                                                                                             : &found->second;
}

SystemCode FakeDisk::missing(std::wstring_view path) {
    const std::wstring wanted = key(path);
    const FakeEntry* parent = find(wanted.substr(0, wanted.rfind(L'\\', wanted.size() - 2) + 1));
    return exists(path) ? 0 : !path.empty() && parent ? system_code::fileNotFound : system_code::pathNotFound;
}

SystemCode FakeDisk::refusal(std::wstring_view path) {
    constexpr auto fixed = attribute::readOnly | attribute::directory;
    if (const FakeEntry* entry = find(path))
        return (entry->attributes & fixed) != 0 ? system_code::accessDenied : 0;
    return missing(path) == system_code::fileNotFound ? 0 : missing(path);
}

std::wstring FakeDisk::key(std::wstring_view path) const {
    std::wstring rest(path);
    if (rest.find(L':') != 1)
        rest.insert(0, rest.starts_with(L'\\') ? currentDirectory.substr(0, 2) : currentDirectory + L"\\");
    std::wstring key;
    for (const wchar_t letter : capitals(rest) + L'\\')
        if (letter != L'\\' || (!key.empty() && key.back() != letter))
            key += letter;
    return key;
}

std::unique_ptr<DirectorySearch> FakeFileStore::search(std::wstring_view pattern) {
    auto search = std::make_unique<FakeSearch>(faults_);
    const auto failure = faults_.enter("FileStore.search");
    const auto name = pattern.find_last_of(L"\\:") + 1;
    const std::wstring above = disk_.key(pattern.substr(0, name)), wanted = capitals(pattern.substr(name));
    if (failure || !disk_.exists(above)) {
        search->end = failure.value_or(system_code::pathNotFound);
        return search;
    }
    for (const wchar_t* dots : {L".", L".."})
        if (matches(dots, wanted))
            search->found.push_back({dots, attribute::directory});
    for (const auto& [key, entry] : disk_.entries)
        if (key.starts_with(above) && key.find(L'\\', above.size()) == key.size() - 1 &&
            matches(std::wstring_view(key).substr(above.size(), key.size() - 1 - above.size()), wanted))
            search->found.push_back({entry.name, entry.attributes});
    if (search->found.empty())
        search->end = system_code::fileNotFound;
    return search;
}

SystemCode FakeFileStore::write(const char* function, std::wstring_view path, std::string bytes,
                                std::size_t added) {
    const SystemCode code = faults_.enter(function).value_or(disk_.refusal(path));
    if (code == diskFull)
        bytes.resize(bytes.size() - added / 2);
    if (code == 0 || code == diskFull)
        disk_.addFile(path, std::move(bytes));
    return code;
}

SystemCode FakeFileStore::remove(std::wstring_view path) {
    SystemCode code = failure("FileStore.remove", path);
    if (code == 0 && (code = disk_.refusal(path)) == 0)
        disk_.remove(path);
    return code;
}

SystemCode FakeFileStore::replace(std::wstring_view path, std::wstring_view by) {
    const SystemCode planned = failure("FileStore.replace", by);
    const bool renamed = planned == system_code::unableToMoveReplacement2;
    const bool displaces = renamed || planned == system_code::unableToMoveReplacement;
    SystemCode code = planned != 0 && !displaces ? planned : disk_.missing(path);
    if (code == 0)
        code = disk_.refusal(path);
    if (code != 0)
        return code;
    if (renamed)
        disk_.addFile(std::wstring(path) + L"~RF.TMP", disk_.bytes(path));
    if (displaces)
        disk_.remove(path);
    return displaces ? planned : moveInto(path, by);
}

SystemCode FakeFileStore::moveOver(std::wstring_view from, std::wstring_view to) {
    SystemCode code = failure("FileStore.moveOver", from);
    if (code == 0)
        code = disk_.refusal(to);
    return code == 0 ? moveInto(to, from) : code;
}

SystemCode FakeFileStore::moveInto(std::wstring_view path, std::wstring_view by) {
    disk_.addFile(path, disk_.bytes(by));
    disk_.remove(by);
    return 0;
}

} // namespace tarv
