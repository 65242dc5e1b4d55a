#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarv {

struct Runtime;

/// A machine configuration file: as the nodes call it, and where it lies.
struct IniFile {
    std::wstring_view label;
    std::wstring path;
};

/// "Q_Machine.INI" and "QV.ini", in the order of the tree; they need not exist.
std::array<IniFile, 2> iniFiles(Runtime& rt);

struct IniGroupNode {
    std::wstring text;
    std::vector<std::wstring> entries;
    /// Which of the iniFiles, its name there, and whether it is marked as occurring again.
    std::size_t file = 0;
    std::wstring name = {};
    bool duplicate = false;
    /// It may have more entries than one read takes.
    bool cut = false;
};

/// A node of the tree: a group (entry 0), or one of its entries, counted from 1.
struct NodePlace {
    std::size_t group = 0;
    std::size_t entry = 0;

    // NOLINTNEXTLINE(modernize-use-nullptr): the check means a 0 that the compiler writes
    friend auto operator<=>(const NodePlace&, const NodePlace&) = default;
};

/// The tree of the machine configuration files, as the texts of its nodes: a node per group of
/// its files, a child per entry. A group that occurs again is marked in its text
/// and has no children; an entry that occurs again within its group is left out.
struct IniTree {
    std::vector<IniGroupNode> groups;
    std::int32_t duplicates = 0;
    /// For each of the iniFiles whether it may have more groups.
    std::array<bool, 2> cut{};

    const std::wstring& text(NodePlace node) const {
        const IniGroupNode& group = groups[node.group];
        return node.entry == 0 ? group.text : group.entries[node.entry - 1];
    }
};

/// Reads both files and writes each group to the debug trace. A missing file contributes nothing.
IniTree ReadIniTree(Runtime& rt);

} // namespace tarv
