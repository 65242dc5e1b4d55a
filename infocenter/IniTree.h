#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarv {

struct Runtime;

struct IniEntryNode {
    std::wstring key;
    std::wstring text;
};

struct IniGroupNode {
    std::wstring key;
    std::wstring text;
    std::vector<IniEntryNode> entries;
};

/// The tree of the machine configuration files: a node per group of "Q_Machine.INI" and then of "QV.ini", a child
/// per entry. Keys are unique; a group that occurs again is marked in its text and has no children.
struct IniTree {
    std::vector<IniGroupNode> groups;
    std::int32_t duplicates = 0;
};

/// Reads both files and writes each group to the debug trace. A missing file contributes nothing.
IniTree ReadIniTree(Runtime& rt);

} // namespace tarv
