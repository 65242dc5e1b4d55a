#include "tests/support/FakeProfileFiles.h"

#include "runtime/Funktionen32/Texts.h"
#include "tests/support/FakeSystem.h"

#include <algorithm>

namespace tarv {
namespace {

/// One line of an INI file. A comment or an empty line is neither a group nor an entry.
struct Line {
    std::wstring text;
    std::optional<std::wstring> group;
    std::wstring name;
    std::optional<std::wstring> value;
};

/// The profile functions strip tabs as well as blanks.
std::wstring stripped(std::wstring_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(L" \t"), text.size()));
    return std::wstring(text.substr(0, text.find_last_not_of(L" \t") + 1));
}

/// As the ANSI functions hand a text on: what the code page lacks is "?".
std::wstring ansi(std::wstring_view text) {
    return FakeCodePage::decode(FakeCodePage::encode(text));
}

/// A name as it is compared.
std::wstring key(std::wstring_view name) {
    return upperCase(stripped(ansi(name)));
}

Line parsed(std::wstring_view text) {
    Line line{std::wstring(text), {}, {}, {}};
    const std::wstring content = stripped(text);
    const std::size_t bracket = content.rfind(L']');
    const std::size_t equals = content.find(L'=');
    if (content.starts_with(L'[') && bracket != content.npos) {
        line.group = stripped(content.substr(1, bracket - 1));
    } else if (!content.starts_with(L';')) {
        line.name = stripped(content.substr(0, equals));
        if (equals != content.npos)
            line.value = stripped(content.substr(equals + 1));
    }
    return line;
}

/// The lines of a file and, once asked for, one of its groups.
struct Lines : std::vector<Line> {
    explicit Lines(std::wstring_view text) {
        while (!text.empty()) {
            const std::size_t end = std::min(text.find_first_of(L"\r\n"), text.size());
            push_back(parsed(text.substr(0, end)));
            text.remove_prefix(std::min(end + (text.substr(end).starts_with(L"\r\n") ? 2 : 1), text.size()));
        }
    }
    /// Finds the lines of the first group of that name; an empty range at the end when it is missing.
    bool findGroup(std::wstring_view name) {
        const auto header = std::ranges::find_if(*this, [wanted = key(name)](auto& line) {
            return line.group && upperCase(*line.group) == wanted;
        });
        first = header == end() ? header : header + 1;
        last = std::find_if(first, end(), [](auto& line) { return line.group.has_value(); });
        return header != end();
    }
    iterator findEntry(std::wstring_view name) {
        return std::find_if(first, last, [wanted = key(name)](auto& line) {
            return line.value && upperCase(line.name) == wanted;
        });
    }

    iterator first, last;
};

std::wstring list(const std::vector<std::wstring>& items, std::uint32_t size) {
    std::wstring result;
    for (const std::wstring& item : items)
        result += item + L'\0';
    if (result.size() + 1 > size)
        result.resize(size < 2 ? 0 : size - 2);
    return result;
}

} // namespace

std::wstring FakeProfileFiles::located(std::wstring_view file) {
    const bool bare = file.find_first_of(L"\\/:") == file.npos;
    return (bare ? L"C:\\Windows\\" : L"") + std::wstring(file);
}

void FakeProfileFiles::fill(std::wstring_view file, std::wstring_view text) {
    disk_.addFile(located(file), FakeCodePage::encode(text));
}

std::wstring FakeProfileFiles::text(std::wstring_view file) {
    const FakeEntry* entry = disk_.find(located(file));
    return entry != nullptr ? FakeCodePage::decode(entry->bytes) : std::wstring();
}

std::wstring FakeProfileFiles::getString(std::wstring_view group, std::wstring_view entry,
                                         std::wstring_view fallback, std::uint32_t size,
                                         std::wstring_view file) {
    std::wstring value = ansi(fallback.substr(0, fallback.find_last_not_of(L' ') + 1));
    Lines lines(text(file));
    if (!faults_.enter("ProfileFiles.getString") && lines.findGroup(group))
        if (const auto line = lines.findEntry(entry); line != lines.last) {
            value = *line->value;
            if (value.size() > 1 && (value[0] == L'"' || value[0] == L'\'') && value.ends_with(value[0]))
                value = value.substr(1, value.size() - 2);
        }
    return value.substr(0, std::max(size, 1u) - 1);
}

bool FakeProfileFiles::writeString(std::wstring_view group, std::wstring_view entry, std::wstring_view value,
                                   std::wstring_view file) {
    const std::wstring path = located(file);
    const FakeEntry* present = disk_.find(path);
    const std::uint32_t attributes = present != nullptr ? present->attributes : attribute::archive;
    if (faults_.enter("ProfileFiles.writeString") || !disk_.hasParent(path) ||
        (attributes & (attribute::readOnly | attribute::directory)) != 0)
        return false;

    Lines lines(text(file));
    if (!lines.findGroup(group)) {
        lines.push_back(parsed(L"[" + stripped(ansi(group)) + L"]"));
        lines.first = lines.last = lines.end();
    }
    if (const auto line = lines.findEntry(entry); line != lines.last) {
        line->text = line->name + L"=" + ansi(value);
    } else {
        // Behind the group's last line that is not empty.
        auto place = lines.last;
        while (place != lines.first && stripped((place - 1)->text).empty())
            --place;
        lines.insert(place, parsed(stripped(ansi(entry)) + L"=" + ansi(value)));
    }
    std::wstring result;
    for (const Line& line : lines)
        result += line.text + L"\r\n";
    disk_.addFile(path, FakeCodePage::encode(result), attributes);
    return true;
}

std::wstring FakeProfileFiles::getSectionNames(std::uint32_t size, std::wstring_view file) {
    std::vector<std::wstring> names;
    if (!faults_.enter("ProfileFiles.getSectionNames"))
        for (const Line& line : Lines(text(file)))
            if (line.group)
                names.push_back(*line.group);
    return list(names, size);
}

std::wstring FakeProfileFiles::getSection(std::wstring_view group, std::uint32_t size,
                                          std::wstring_view file) {
    std::vector<std::wstring> entries;
    Lines lines(text(file));
    if (!faults_.enter("ProfileFiles.getSection") && lines.findGroup(group))
        for (auto line = lines.first; line != lines.last; ++line)
            if (line->value || !line->name.empty())
                entries.push_back(line->name + (line->value ? L"=" + *line->value : L""));
    return list(entries, size);
}

} // namespace tarv
