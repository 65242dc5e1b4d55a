#include "tests/support/FakeProfileFiles.h"

#include "runtime/Funktionen32/Texts.h"
#include "tests/support/FakeSystem.h"

#include <algorithm>
#include <optional>

namespace tarv {
namespace {

/// One line of an INI file. A comment or an empty line is neither a group nor an entry.
struct Line {
    std::wstring text;
    std::optional<std::wstring> group;
    std::wstring name;
    std::optional<std::wstring> value;

    bool isEntry() const { return !name.empty() || value; }
};

using Lines = std::vector<Line>;

/// The profile functions strip tabs as well as blanks.
std::wstring stripped(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(L" \t");
    return std::wstring(first == text.npos ? text.substr(0, 0)
                                           : text.substr(first, text.find_last_not_of(L" \t") + 1 - first));
}

bool same(std::wstring_view a, std::wstring_view b) {
    return a.size() == b.size() && upperCase(a) == upperCase(b);
}

/// As the ANSI functions hand a text on: what the code page lacks is "?".
std::wstring ansi(std::wstring_view text) {
    return FakeCodePage::decode(FakeCodePage::encode(text));
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

Lines linesOf(std::wstring_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(L"\r\n"), text.size());
        lines.push_back(parsed(text.substr(0, end)));
        text.remove_prefix(std::min(end + (text.substr(end).starts_with(L"\r\n") ? 2 : 1), text.size()));
    }
    return lines;
}

/// Where a group's entries begin and end; none when it is missing.
struct Range {
    std::ptrdiff_t begin;
    std::ptrdiff_t end;
};

std::optional<Range> findGroup(const Lines& lines, std::wstring_view group) {
    const std::wstring wanted = stripped(ansi(group));
    const auto header =
        std::ranges::find_if(lines, [&](const Line& l) { return l.group && same(*l.group, wanted); });
    if (header == lines.end())
        return std::nullopt;
    const auto end = std::find_if(header + 1, lines.end(), [](const Line& l) { return l.group.has_value(); });
    return Range{header + 1 - lines.begin(), end - lines.begin()};
}

std::wstring list(const std::vector<std::wstring>& items, std::uint32_t size) {
    std::wstring result;
    for (const std::wstring& item : items)
        result += ansi(item) + L'\0';
    if (result.size() + 1 > size)
        result.resize(size < 2 ? 0 : size - 2);
    return result;
}

constexpr std::string_view byteOrderMark = "\xFF\xFE";

std::wstring decoded(const std::string& bytes) {
    if (!bytes.starts_with(byteOrderMark))
        return FakeCodePage::decode(bytes);
    std::wstring text;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2)
        text += static_cast<wchar_t>((bytes[i] & 0xFF) | (bytes[i + 1] & 0xFF) << 8);
    return text;
}

std::string encoded(const std::wstring& text, bool wide) {
    if (!wide)
        return FakeCodePage::encode(text);
    std::string bytes(byteOrderMark);
    for (const wchar_t character : text) {
        bytes += static_cast<char>(character & 0xFF);
        bytes += static_cast<char>(character >> 8 & 0xFF);
    }
    return bytes;
}

} // namespace

std::wstring FakeProfileFiles::located(std::wstring_view file) const {
    const bool bare = file.find_first_of(L"\\/:") == file.npos;
    return (bare ? windowsFolder + L"\\" : std::wstring()) + std::wstring(file);
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
        const Lines lines = linesOf(text(file));
        const Range range = findGroup(lines, group).value_or(Range{0, 0});
        const auto end = lines.begin() + range.end;
        const auto found = std::find_if(lines.begin() + range.begin, end, [&](const Line& line) {
            return line.value && same(line.name, stripped(ansi(entry)));
        });
        if (found != end) {
            value = *found->value;
            const bool quoted =
                value.size() > 1 && (value[0] == L'"' || value[0] == L'\'') && value.ends_with(value[0]);
            if (quoted)
                value = value.substr(1, value.size() - 2);
        }
    }
    return ansi(value).substr(0, std::max(size, 1u) - 1);
}

bool FakeProfileFiles::writeString(std::wstring_view group, std::wstring_view entry, std::wstring_view value,
                                   std::wstring_view file) {
    const std::wstring path = located(file);
    const FakeEntry* existing = disk_.find(path);
    const std::uint32_t attributes = existing != nullptr ? existing->attributes : attribute::archive;
    if (faults_.enter("ProfileFiles.writeString") || disk_.parent(path) == nullptr ||
        (attributes & (attribute::readOnly | attribute::directory)) != 0)
        return false;

    Lines lines = linesOf(text(file));
    const std::wstring name = stripped(ansi(entry));
    const Line written = parsed(name + L"=" + ansi(value));
    if (const auto range = findGroup(lines, group)) {
        const auto begin = lines.begin() + range->begin;
        auto place = lines.begin() + range->end;
        const auto present =
            std::find_if(begin, place, [&](const Line& line) { return line.value && same(line.name, name); });
        if (present != place) {
            *present = parsed(present->name + L"=" + ansi(value));
        } else {
            // Behind the group's last line that is not empty.
            while (place != begin && stripped((place - 1)->text).empty())
                --place;
            lines.insert(place, written);
        }
    } else {
        lines.push_back(parsed(L"[" + stripped(ansi(group)) + L"]"));
        lines.push_back(written);
    }
    std::wstring result;
    for (const Line& line : lines)
        result += line.text + L"\r\n";
    const bool wide = existing != nullptr && existing->bytes.starts_with(byteOrderMark);
    disk_.addFile(path, encoded(result, wide), attributes);
    return true;
}

std::wstring FakeProfileFiles::getSectionNames(std::uint32_t size, std::wstring_view file) {
    std::vector<std::wstring> names;
    if (!faults_.enter("ProfileFiles.getSectionNames"))
        for (const Line& line : linesOf(text(file)))
            if (line.group && !line.group->empty())
                names.push_back(*line.group);
    return list(names, size);
}

std::wstring FakeProfileFiles::getSection(std::wstring_view group, std::uint32_t size,
                                          std::wstring_view file) {
    std::vector<std::wstring> entries;
    if (!faults_.enter("ProfileFiles.getSection")) {
        const Lines lines = linesOf(text(file));
        const Range range = findGroup(lines, group).value_or(Range{0, 0});
        for (const Line& line : std::span(lines).subspan(range.begin, range.end - range.begin))
            if (line.isEntry())
                entries.push_back(line.name + (line.value ? L"=" + *line.value : L""));
    }
    return list(entries, size);
}

} // namespace tarv
