#include "tests/support/FakeDisk.h"

#include "runtime/Funktionen32/Texts.h"

#include <algorithm>
#include <stdexcept>

namespace tarv {
namespace {

bool matchesFrom(std::wstring_view name, std::wstring_view pattern) {
    if (pattern.empty())
        return name.empty();
    const std::wstring_view rest = pattern.substr(1);
    if (pattern.front() == L'*')
        return matchesFrom(name, rest) || (!name.empty() && matchesFrom(name.substr(1), pattern));
    // At the end of the name and in front of a "." a "?" may stand for nothing.
    if (pattern.front() == L'?' && (name.empty() || name.front() == L'.'))
        return matchesFrom(name, rest);
    // "name.*" also finds "name".
    if (pattern.front() == L'.' && name.empty())
        return rest.find_first_not_of(L"*?") == std::wstring_view::npos;
    return !name.empty() && (pattern.front() == L'?' || name.front() == pattern.front()) &&
           matchesFrom(name.substr(1), rest);
}

} // namespace

bool matchesPattern(std::wstring_view name, std::wstring_view pattern) {
    return matchesFrom(upperCase(name), upperCase(pattern));
}

FakeEntry* FakeEntry::child(std::wstring_view wanted) const {
    const std::wstring key = upperCase(wanted);
    if (const auto found = children.find(key); found != children.end())
        return found->second.get();
    for (const auto& [longName, entry] : children)
        if (upperCase(entry->shortName) == key)
            return entry.get();
    return nullptr;
}

FakeDisk::FakeDisk() {
    addFolder(L"C:\\Windows\\System32");
    addFolder(L"C:\\ProgramData");
    addFile(L"C:\\Program Files\\TARVENIK\\TarvService.exe", "MZ");
}

FakeEntry& FakeDisk::addFile(std::wstring_view path, std::string bytes, std::uint32_t attributes,
                             std::wstring shortName) {
    FakeEntry& entry = add(path, attributes, std::move(shortName));
    entry.bytes = std::move(bytes);
    return entry;
}

FakeEntry& FakeDisk::addFolder(std::wstring_view path, std::uint32_t attributes, std::wstring shortName) {
    return add(path, attributes | attribute::directory, std::move(shortName));
}

FakeEntry& FakeDisk::add(std::wstring_view path, std::uint32_t attributes, std::wstring shortName) {
    FakeEntry* at = root_.get();
    for (const std::wstring& part : walk(path)) {
        FakeEntry* next = at->child(part);
        if (next == nullptr) {
            next = (at->children[upperCase(part)] = std::make_unique<FakeEntry>()).get();
            next->name = part;
        }
        at = next;
    }
    at->attributes = attributes;
    at->shortName = std::move(shortName);
    return *at;
}

void FakeDisk::remove(std::wstring_view path) {
    const FakeEntry* gone = find(path);
    if (gone != nullptr)
        parent(path)->children.erase(upperCase(gone->name));
}

FakeEntry* FakeDisk::find(std::wstring_view path) const {
    FakeEntry* found = descend(path, 0);
    return found != nullptr && path.ends_with(L'\\') && !found->isFolder() ? nullptr : found;
}

FakeEntry* FakeDisk::parent(std::wstring_view path) const {
    FakeEntry* found = descend(path, 1);
    return found != nullptr && found->isFolder() ? found : nullptr;
}

const std::string& FakeDisk::bytes(std::wstring_view path) const {
    const FakeEntry* entry = find(path);
    if (entry == nullptr || entry->isFolder())
        throw std::out_of_range("no such file on the scripted disk");
    return entry->bytes;
}

FakeEntry* FakeDisk::descend(std::wstring_view path, std::size_t leaveOut) const {
    FakeEntry* at = path.empty() ? nullptr : root_.get();
    const auto parts = walk(path);
    for (std::size_t i = 0; at != nullptr && i + leaveOut < parts.size(); ++i)
        at = at->child(parts[i]);
    return at;
}

std::vector<std::wstring> FakeDisk::walk(std::wstring_view path) const {
    std::wstring full(path);
    std::ranges::replace(full, L'/', L'\\');
    const std::wstring drive = currentDirectory.substr(0, 2);
    if (full.starts_with(L"\\\\?\\")) {
        full.erase(0, 4);
    } else if (full.size() > 1 && full[1] == L':') {
        // Every drive has its own current directory: here the process's one, on other drives the root.
        if (full.size() == 2 || full[2] != L'\\')
            full.insert(
                2, (upperCase(full.substr(0, 2)) == upperCase(drive) ? currentDirectory.substr(2) : L"") +
                       L"\\");
    } else if (!full.starts_with(L"\\\\")) {
        full.insert(0, full.starts_with(L'\\') ? drive : currentDirectory + L"\\");
    }
    std::vector<std::wstring> parts;
    for (std::size_t start = 0; start < full.size();) {
        const std::size_t end = std::min(full.find(L'\\', std::max<std::size_t>(start, 2)), full.size());
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

} // namespace tarv
