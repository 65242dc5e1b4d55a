#include "tests/support/FakeProfileFiles.h"

#include "runtime/Funktionen32/Texts.h"
#include "tests/support/FakeSystem.h"

#include <optional>

namespace tarv {
namespace {

/// The profile functions skip tabs as well as blanks.
std::wstring_view stripped(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(L" \t");
    return first == std::wstring_view::npos ? std::wstring_view()
                                            : text.substr(first, text.find_last_not_of(L" \t") - first + 1);
}

bool same(std::wstring_view a, std::wstring_view b) {
    return a.size() == b.size() && upperCase(a) == upperCase(b);
}

/// As the ANSI functions hand a text on: what the code page lacks is "?".
std::wstring ansi(std::wstring_view text) {
    return FakeCodePage::decode(FakeCodePage::encode(text));
}

std::optional<std::wstring_view> groupName(std::wstring_view line) {
    line = stripped(line);
    if (!line.starts_with(L'['))
        return std::nullopt;
    const std::size_t end = line.find(L']');
    if (end == std::wstring_view::npos)
        return std::nullopt;
    return stripped(line.substr(1, end - 1));
}

bool isComment(std::wstring_view line) {
    return stripped(line).starts_with(L';');
}

struct Entry {
    std::wstring_view name;
    std::optional<std::wstring_view> value;
};

Entry entryOf(std::wstring_view line) {
    const std::size_t equals = line.find(L'=');
    if (equals == std::wstring_view::npos)
        return {stripped(line), std::nullopt};
    return {stripped(line.substr(0, equals)), stripped(line.substr(equals + 1))};
}

std::wstring_view unquoted(std::wstring_view value) {
    if (value.size() > 1 && (value.front() == L'"' || value.front() == L'\'') &&
        value.back() == value.front())
        return value.substr(1, value.size() - 2);
    return value;
}

std::vector<std::wstring> linesOf(std::wstring_view text) {
    std::vector<std::wstring> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(L"\r\n"), text.size());
        lines.emplace_back(text.substr(0, end));
        const std::size_t length = text.substr(end).starts_with(L"\r\n") ? 2 : 1;
        text.remove_prefix(std::min(end + length, text.size()));
    }
    return lines;
}

/// Line numbers of a group: its header and the first line behind it.
struct Range {
    std::size_t header;
    std::size_t end;
};

std::optional<Range> findGroup(const std::vector<std::wstring>& lines, std::wstring_view group) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto name = groupName(lines[i]);
        if (!name || !same(*name, group))
            continue;
        std::size_t end = i + 1;
        while (end < lines.size() && !groupName(lines[end]))
            ++end;
        return Range{i, end};
    }
    return std::nullopt;
}

std::wstring list(const std::vector<std::wstring>& items, std::uint32_t size) {
    std::wstring result;
    for (const std::wstring& item : items)
        result += item + L'\0';
    if (result.size() + 1 > size)
        result.resize(size < 2 ? 0 : size - 2);
    return result;
}

constexpr std::string_view mark = "\xFF\xFE";

std::wstring decoded(const std::string& bytes) {
    if (!bytes.starts_with(mark))
        return FakeCodePage::decode(bytes);
    std::wstring text;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2)
        text += static_cast<wchar_t>(static_cast<unsigned char>(bytes[i]) |
                                     static_cast<unsigned char>(bytes[i + 1]) << 8);
    return text;
}

std::string encoded(const std::wstring& text, bool wide) {
    if (!wide)
        return FakeCodePage::encode(text);
    std::string bytes(mark);
    for (const wchar_t character : text) {
        bytes += static_cast<char>(character & 0xFF);
        bytes += static_cast<char>(character >> 8 & 0xFF);
    }
    return bytes;
}

} // namespace

std::wstring FakeProfileFiles::located(std::wstring_view file) const {
    return file.find_first_of(L"\\/:") == std::wstring_view::npos ? windowsFolder + L"\\" + std::wstring(file)
                                                                  : std::wstring(file);
}

void FakeProfileFiles::fill(std::wstring_view file, std::wstring_view text) {
    disk_.addFile(located(file), FakeCodePage::encode(text));
}

std::wstring FakeProfileFiles::text(std::wstring_view file) const {
    const FakeEntry* entry = disk_.find(located(file));
    return entry != nullptr ? decoded(entry->bytes) : std::wstring();
}

std::wstring FakeProfileFiles::getString(std::wstring_view group, std::wstring_view entry,
                                         std::wstring_view fallback, std::uint32_t size,
                                         std::wstring_view file) {
    std::wstring value(fallback.substr(0, fallback.find_last_not_of(L' ') + 1));
    if (!faults_.enter("ProfileFiles.getString")) {
        const auto lines = linesOf(text(file));
        const auto range = findGroup(lines, ansi(group));
        for (std::size_t i = range ? range->header + 1 : 0; range && i < range->end; ++i) {
            const Entry found = entryOf(lines[i]);
            if (isComment(lines[i]) || !same(found.name, ansi(entry)))
                continue;
            value = unquoted(found.value.value_or(std::wstring_view()));
            break;
        }
    }
    return ansi(value).substr(0, size == 0 ? 0 : size - 1);
}

bool FakeProfileFiles::writeString(std::wstring_view group, std::wstring_view entry, std::wstring_view value,
                                   std::wstring_view file) {
    if (faults_.enter("ProfileFiles.writeString"))
        return false;
    const std::wstring path = located(file);
    const FakeEntry* existing = disk_.find(path);
    const FakeEntry* folder = disk_.parent(path);
    if (folder == nullptr ||
        (existing != nullptr && (existing->attributes & (attribute::readOnly | attribute::directory)) != 0))
        return false;

    auto lines = linesOf(text(file));
    const std::wstring line = ansi(entry) + L"=" + ansi(value);
    const auto range = findGroup(lines, ansi(group));
    if (!range) {
        lines.push_back(L"[" + ansi(group) + L"]");
        lines.push_back(line);
    } else {
        std::size_t place = range->header + 1;
        while (place < range->end &&
               (isComment(lines[place]) || !same(entryOf(lines[place]).name, ansi(entry))))
            ++place;
        if (place < range->end) {
            lines[place] = line;
        } else {
            while (place > range->header + 1 && stripped(lines[place - 1]).empty())
                --place;
            lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(place), line);
        }
    }
    std::wstring result;
    for (const std::wstring& written : lines)
        result += written + L"\r\n";
    const bool wide = existing != nullptr && existing->bytes.starts_with(mark);
    disk_.addFile(path, encoded(result, wide),
                  existing != nullptr ? existing->attributes : attribute::archive);
    return true;
}

std::wstring FakeProfileFiles::getSectionNames(std::uint32_t size, std::wstring_view file) {
    if (faults_.enter("ProfileFiles.getSectionNames"))
        return {};
    std::vector<std::wstring> names;
    for (const std::wstring& line : linesOf(text(file)))
        if (const auto name = groupName(line))
            names.push_back(ansi(*name));
    return list(names, size);
}

std::wstring FakeProfileFiles::getSection(std::wstring_view group, std::uint32_t size,
                                          std::wstring_view file) {
    if (faults_.enter("ProfileFiles.getSection"))
        return {};
    const auto lines = linesOf(text(file));
    const auto range = findGroup(lines, ansi(group));
    std::vector<std::wstring> entries;
    for (std::size_t i = range ? range->header + 1 : 0; range && i < range->end; ++i) {
        const Entry entry = entryOf(lines[i]);
        if (isComment(lines[i]) || (entry.name.empty() && !entry.value))
            continue;
        std::wstring joined(entry.name);
        if (entry.value)
            joined += L"=" + std::wstring(*entry.value);
        entries.push_back(ansi(joined));
    }
    return list(entries, size);
}

} // namespace tarv
