#include "tests/support/FakeDisk.h"

#include "runtime/Funktionen32/Texts.h"

#include <algorithm>
#include <stdexcept>

namespace tarv {
namespace {

/// The components of an absolute path; the first is the drive ("C:") or the share ("\\server\share").
std::vector<std::wstring> components(std::wstring_view absolute) {
    std::vector<std::wstring> parts;
    std::size_t start = 0;
    if (absolute.starts_with(L"\\\\")) {
        const std::size_t share = absolute.find(L'\\', 2);
        const std::size_t end = share == std::wstring_view::npos
                                    ? absolute.size()
                                    : std::min(absolute.find(L'\\', share + 1), absolute.size());
        parts.emplace_back(absolute.substr(0, end));
        start = end;
    }
    while (start < absolute.size()) {
        const std::size_t end = std::min(absolute.find(L'\\', start), absolute.size());
        if (end > start)
            parts.emplace_back(absolute.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

bool matchesFrom(std::wstring_view name, std::wstring_view pattern) {
    if (pattern.empty())
        return name.empty();
    switch (pattern.front()) {
    case L'*':
        // "name.*" also finds "name": a "." with nothing but stars behind it may match the end of the name.
        return matchesFrom(name, pattern.substr(1)) ||
               (!name.empty() && matchesFrom(name.substr(1), pattern));
    case L'?':
        // At the end of the name and in front of a "." a "?" may stand for nothing.
        if (!name.empty() && name.front() != L'.' && matchesFrom(name.substr(1), pattern.substr(1)))
            return true;
        return (name.empty() || name.front() == L'.') && matchesFrom(name, pattern.substr(1));
    case L'.':
        if (name.empty())
            return pattern.find_first_not_of(L"*?", 1) == std::wstring_view::npos;
        [[fallthrough]];
    default:
        return !name.empty() && name.front() == pattern.front() &&
               matchesFrom(name.substr(1), pattern.substr(1));
    }
}

} // namespace

bool matchesPattern(std::wstring_view name, std::wstring_view pattern) {
    if (pattern == L"*.*")
        return true;
    return matchesFrom(upperCase(name), upperCase(pattern));
}

FakeEntry* FakeEntry::child(std::wstring_view wanted) const {
    const std::wstring key = upperCase(wanted);
    for (const auto& entry : children)
        if (upperCase(entry->name) == key ||
            (!entry->shortName.empty() && upperCase(entry->shortName) == key))
            return entry.get();
    return nullptr;
}

FakeDisk::FakeDisk() {
    root_.attributes = attribute::directory;
    addFolder(L"C:\\Windows\\System32");
    addFolder(L"C:\\ProgramData");
    addFolder(L"C:\\Program Files\\TARVENIK");
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
    FakeEntry* at = &root_;
    for (const std::wstring& part : components(absolute(path))) {
        FakeEntry* next = at->child(part);
        if (next == nullptr) {
            auto made = std::make_unique<FakeEntry>();
            made->name = part;
            made->attributes = attribute::directory;
            next = made.get();
            at->children.push_back(std::move(made));
            std::ranges::sort(at->children, {}, [](const auto& entry) { return upperCase(entry->name); });
        }
        at = next;
    }
    at->attributes = attributes;
    at->shortName = std::move(shortName);
    return *at;
}

void FakeDisk::remove(std::wstring_view path) {
    const FakeEntry* gone = find(path);
    FakeEntry* folder = parent(path);
    if (gone != nullptr && folder != nullptr)
        std::erase_if(folder->children, [&](const auto& entry) { return entry.get() == gone; });
}

FakeEntry* FakeDisk::find(std::wstring_view path) const {
    if (path.empty())
        return nullptr;
    const FakeEntry* at = &root_;
    for (const std::wstring& part : components(absolute(path))) {
        at = at->child(part);
        if (at == nullptr)
            return nullptr;
    }
    return const_cast<FakeEntry*>(at);
}

const std::string& FakeDisk::bytes(std::wstring_view path) const {
    const FakeEntry* entry = find(path);
    if (entry == nullptr || entry->isFolder())
        throw std::out_of_range("no such file on the scripted disk");
    return entry->bytes;
}

FakeEntry* FakeDisk::parent(std::wstring_view path) const {
    if (path.empty())
        return nullptr;
    auto parts = components(absolute(path));
    const FakeEntry* at = &root_;
    for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
        at = at->child(parts[i]);
        if (at == nullptr || !at->isFolder())
            return nullptr;
    }
    return const_cast<FakeEntry*>(at);
}

std::wstring FakeDisk::absolute(std::wstring_view path) const {
    std::wstring full(path);
    std::ranges::replace(full, L'/', L'\\');
    const bool onDrive = full.size() >= 2 && full[1] == L':';
    if (full.starts_with(L"\\\\?\\")) {
        full.erase(0, 4);
    } else if (onDrive && (full.size() == 2 || full[2] != L'\\')) {
        // Relative to the drive's own current directory: the process's on its drive, the root elsewhere.
        const bool here = upperCase(full.substr(0, 2)) == upperCase(currentDirectory.substr(0, 2));
        full = (here ? currentDirectory : full.substr(0, 2)) + L"\\" + full.substr(2);
    } else if (!onDrive && !full.starts_with(L"\\\\")) {
        full =
            full.starts_with(L"\\") ? currentDirectory.substr(0, 2) + full : currentDirectory + L"\\" + full;
    }
    std::vector<std::wstring> walked;
    for (std::wstring& part : components(full)) {
        if (part == L".." && walked.size() > 1)
            walked.pop_back();
        else if (part != L"." && part != L"..")
            walked.push_back(std::move(part));
    }
    std::wstring result;
    for (const std::wstring& part : walked)
        result += (result.empty() ? L"" : L"\\") + part;
    if (full.ends_with(L'\\') || walked.size() == 1)
        result += L'\\';
    return result;
}

} // namespace tarv
