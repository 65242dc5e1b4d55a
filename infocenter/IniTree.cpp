#include "infocenter/IniTree.h"

#include "platform/Platform.h"
#include "platform/ProfileFiles.h"
#include "platform/SystemFacts.h"
#include "runtime/Runtime.h"
#include "runtime/modProgDebug.h"

#include <algorithm>
#include <forward_list>
#include <functional>
#include <unordered_map>
#include <utility>

namespace tarv {
namespace {

/// Buffer of every read, in characters: what does not fit is cut by the profile functions.
constexpr std::uint32_t bufferSize = 16384;

/// The duplicate counter is a 16-bit number; when it is full, the tree ends where it stands.
constexpr std::int32_t mostDuplicates = 32767;

/// Whether a read may have been cut: the profile functions then leave two bytes of the buffer, and most often
/// half an element, which in code pages of several bytes is all that shows it.
bool isCut(std::wstring_view list) {
    return list.size() == bufferSize - 2 || (!list.empty() && list.back() != L'\0');
}

/// The elements of a list whose elements each end with a NUL. One that a full buffer has cut has lost its NUL
/// and is left out.
std::vector<std::wstring_view> elements(std::wstring_view list) {
    std::vector<std::wstring_view> result;
    for (auto end = list.find(L'\0'); end != list.npos; end = list.find(L'\0')) {
        result.push_back(list.substr(0, end));
        list.remove_prefix(end + 1);
    }
    return result;
}

/// Texts that are kept elsewhere, in a flat table with linear probing. A std::unordered_set allocates for
/// each key, which alone takes as long as all the rest of a large tree.
class KeySet {
public:
    bool contains(std::wstring_view key) const { return places_[placeOf(key)].data() != nullptr; }

    /// False when it is there already.
    bool insert(std::wstring_view key) {
        if (contains(key))
            return false;
        if (2 * ++count_ > places_.size()) {
            const auto former = std::exchange(places_, std::vector<std::wstring_view>(4 * places_.size()));
            for (const std::wstring_view one : former)
                if (one.data())
                    places_[placeOf(one)] = one;
        }
        places_[placeOf(key)] = key;
        return true;
    }

private:
    /// Where the key is, else the free place for it.
    std::size_t placeOf(std::wstring_view key) const {
        const std::size_t last = places_.size() - 1;
        std::size_t place = std::hash<std::wstring_view>()(key) & last;
        while (places_[place].data() && places_[place] != key)
            place = (place + 1) & last;
        return place;
    }

    std::size_t count_ = 0;
    /// A power of two of them, at most half of them taken.
    std::vector<std::wstring_view> places_ = std::vector<std::wstring_view>(8);
};

class TreeReader {
public:
    explicit TreeReader(Runtime& rt) : rt_(rt) {}

    IniTree read() {
        trace(L"Start INI-Read");
        const std::wstring names = groupNames(0);
        markEnd_ = std::wstring(30, L' ') + std::to_wstring(static_cast<int>(elements(names).size()) - 1);

        // A full duplicate counter ends the reading on the spot, without the closing line.
        if (addFile(0, names) && addFile(1, groupNames(1)))
            trace(L"End INI-Read");
        return std::move(tree_);
    }

private:
    std::wstring groupNames(std::size_t file) {
        return rt_.platform.profiles->getSectionNames(bufferSize, files_[file].path);
    }

    bool addFile(std::size_t file, std::wstring_view names) {
        tree_.cut[file] = isCut(names);
        for (const std::wstring_view name : elements(names)) {
            trace(L"[" + std::wstring(name) + L"]");
            if (!addGroup(name, file)) {
                std::fill(tree_.cut.begin() + static_cast<std::ptrdiff_t>(file), tree_.cut.end(), true);
                return false;
            }
        }
        return true;
    }

    /// False when the duplicate counter is full.
    bool addGroup(std::wstring_view name, std::size_t file) {
        std::int32_t& marks = marks_[std::wstring(name)];
        // One mark after the other would meet every earlier occurrence again. So this goes straight to the
        // first text that may be free, and counts as if each had been tried.
        if (!count(marks))
            return false;
        std::wstring shown(name);
        for (std::int32_t i = 0; i < marks; ++i)
            appendMark(shown);
        while (keys_.contains(shown)) {
            if (!count(1))
                return false;
            appendMark(shown);
            ++marks;
        }
        ++marks;
        keys_.insert(keyTexts_.emplace_front(shown));
        const std::wstring section = rt_.platform.profiles->getSection(shown, bufferSize, files_[file].path);
        tree_.groups.push_back({.text = std::wstring(files_[file].label) + L"  [" + shown + L"]",
                                .entries = entries(shown, section),
                                .file = file,
                                .name = std::wstring(name),
                                .duplicate = shown.size() > name.size(),
                                .cut = isCut(section)});
        return true;
    }

    std::vector<std::wstring> entries(std::wstring_view group, std::wstring_view section) {
        const auto lines = elements(section);
        std::vector<std::wstring> result;
        result.reserve(lines.size());
        // The keys of the group share one text that is large enough. A text for each key would cost a quarter
        // of the time.
        std::wstring& keys = keyTexts_.emplace_front();
        keys.reserve(section.size() + lines.size() * (group.size() + 1));
        for (const std::wstring_view line : lines) {
            const auto start = keys.size();
            keys.append(group).append(L"|").append(line.substr(0, line.find(L'=')));
            // The first entry of a name stays; a later one is not shown.
            if (keys_.insert(std::wstring_view(keys).substr(start)))
                result.emplace_back(line);
        }
        return result;
    }

    void appendMark(std::wstring& name) const {
        name.append(L"       >>>>>> Eintrag mehrfach Vorhanden <<<<<<").append(markEnd_);
    }

    bool count(std::int32_t duplicates) {
        tree_.duplicates = std::min(tree_.duplicates + duplicates, mostDuplicates);
        return tree_.duplicates < mostDuplicates;
    }

    /// Keeps the trace file's name, so that no line costs a read of the configuration.
    void trace(std::wstring_view text) { DebugTrace(rt_, text, false, true); }

    Runtime& rt_;
    const std::array<IniFile, 2> files_ = iniFiles(rt_);
    IniTree tree_;
    std::wstring markEnd_;
    /// The keys of all nodes: a group's name; for an entry "|" and its name behind.
    KeySet keys_;
    /// What the keys refer to.
    std::forward_list<std::wstring> keyTexts_;
    /// For each group name met so far: how many marks its next occurrence needs at least.
    std::unordered_map<std::wstring, std::int32_t> marks_;
};

} // namespace

std::array<IniFile, 2> iniFiles(Runtime& rt) {
    const std::wstring folder = rt.platform.facts->variable(L"ProgramData") + L"\\TARVENIK\\";
    return {{{L"Q_Machine.INI", folder + L"Q_Machine.INI"}, {L"QV.INI", folder + L"QV.ini"}}};
}

IniTree ReadIniTree(Runtime& rt) {
    return TreeReader(rt).read();
}

} // namespace tarv
