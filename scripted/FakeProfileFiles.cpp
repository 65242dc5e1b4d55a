#include "scripted/FakeProfileFiles.h"

#include "scripted/Capitals.h"
#include "scripted/FakeSystemFacts.h"

#include <algorithm>

namespace tarv {
namespace {

/// The profile functions strip tabs as well as blanks.
std::wstring stripped(std::wstring_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(L" \t"), text.size()));
    return std::wstring(text.substr(0, text.find_last_not_of(L" \t") + 1));
}

/// As the ANSI functions hand a text on: what the code page lacks is "?".
std::wstring ansi(std::wstring_view text) {
    return FakeSystemFacts::decode(FakeSystemFacts::encode(text));
}

/// One line of an INI file: a group's header, an entry (without value where there is no "="), or neither.
struct Line {
    std::wstring text;
    std::wstring name;
    bool isGroup = false;
    std::optional<std::wstring> value;

    bool isNamed(const std::wstring& capitalName) const { return capitals(name) == capitalName; }
};
using Lines = std::vector<Line>;

Line parsed(std::wstring_view text) {
    const std::wstring content = stripped(text);
    const auto bracket = content.rfind(L']'), equals = content.find(L'=');
    if (content.starts_with(L'[') && bracket != content.npos)
        return {std::wstring(text), stripped(content.substr(1, bracket - 1)), true, {}};
    if (content.empty() || content.starts_with(L';'))
        return {std::wstring(text), {}, false, {}};
    Line line{std::wstring(text), stripped(content.substr(0, equals)), false, {}};
    if (equals != content.npos)
        line.value = stripped(content.substr(equals + 1));
    return line;
}

Lines linesOf(std::wstring_view text) {
    Lines lines;
    while (!text.empty()) {
        const auto end = std::min(text.find_first_of(L"\r\n"), text.size());
        lines.push_back(parsed(text.substr(0, end)));
        text.remove_prefix(std::min(end + (text.substr(end).starts_with(L"\r\n") ? 2 : 1), text.size()));
    }
    return lines;
}

/// The lines of the first group of that name, without its header; none at the end where it is missing.
struct Group {
    Group(Lines& lines, std::wstring_view name) {
        const std::wstring wanted = capitals(stripped(ansi(name)));
        first = std::ranges::find_if(lines, [&](auto& line) { return line.isGroup && line.isNamed(wanted); });
        missing = first == lines.end();
        first += missing ? 0 : 1;
        last = std::ranges::find(first, lines.end(), true, &Line::isGroup);
    }
    Lines::iterator entry(std::wstring_view name) const {
        const std::wstring wanted = capitals(stripped(ansi(name)));
        return std::find_if(first, last, [&](auto& line) { return line.value && line.isNamed(wanted); });
    }

    Lines::iterator first, last;
    bool missing;
};

std::wstring located(std::wstring_view file) {
    const bool bare = file.find_first_of(L"\\/:") == file.npos;
    return (bare ? L"C:\\Windows\\" : L"") + std::wstring(file);
}

std::wstring cut(std::wstring list, std::uint32_t size) {
    if (list.size() + 1 >= size) // an exact fit is cut, too
        list.resize(size - 2);
    return list;
}

} // namespace

void FakeProfileFiles::fill(std::wstring_view file, std::wstring_view text) {
    disk_.addFile(located(file), FakeSystemFacts::encode(text));
}

std::wstring FakeProfileFiles::text(std::wstring_view file) {
    const FakeEntry* entry = disk_.find(located(file));
    return entry ? FakeSystemFacts::decode(entry->bytes) : std::wstring();
}

std::wstring FakeProfileFiles::getString(std::wstring_view group, std::wstring_view entry,
                                         std::wstring_view fallback, std::uint32_t size,
                                         std::wstring_view file) {
    std::wstring value = ansi(fallback.substr(0, fallback.find_last_not_of(L' ') + 1));
    Lines lines = linesOf(text(file));
    const Group within(lines, group);
    const auto line = within.entry(entry);
    if (!faults_.enter("ProfileFiles.getString") && line != within.last) {
        value = *line->value;
        if (value.size() > 1 && (value[0] == L'"' || value[0] == L'\'') && value.ends_with(value[0]))
            value = value.substr(1, value.size() - 2);
    }
    return value.substr(0, size - 1);
}

bool FakeProfileFiles::writeString(std::wstring_view group, std::wstring_view entry, std::wstring_view value,
                                   std::wstring_view file) {
    if (faults_.enter("ProfileFiles.writeString") || disk_.refusal(located(file)) != 0)
        return false;
    Lines lines = linesOf(text(file));
    if (Group(lines, group).missing)
        lines.push_back(parsed(L"[" + stripped(ansi(group)) + L"]"));
    const Group within(lines, group);
    if (const auto line = within.entry(entry); line != within.last)
        line->text = line->name + L"=" + ansi(value);
    else
        lines.insert(within.last, parsed(stripped(ansi(entry)) + L"=" + ansi(value)));
    std::wstring result;
    for (const Line& line : lines)
        result += line.text + L"\r\n";
    fill(located(file), result);
    return true;
}

std::wstring FakeProfileFiles::getSectionNames(std::uint32_t size, std::wstring_view file) {
    std::wstring names;
    if (!faults_.enter("ProfileFiles.getSectionNames"))
        for (const Line& line : linesOf(text(file)))
            names += line.isGroup ? line.name + L'\0' : L"";
    return cut(names, size);
}

std::wstring FakeProfileFiles::getSection(std::wstring_view group, std::uint32_t size,
                                          std::wstring_view file) {
    std::wstring entries;
    Lines lines = linesOf(text(file));
    const Group within(lines, group);
    if (!faults_.enter("ProfileFiles.getSection"))
        for (auto line = within.first; line != within.last; ++line)
            if (line->value || !line->name.empty())
                entries += line->name + (line->value ? L"=" + *line->value : L"") + L'\0';
    return cut(entries, size);
}

} // namespace tarv
