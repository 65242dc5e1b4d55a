#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarv {

struct Runtime;

struct IniGroupNode {
    std::wstring text;
    std::vector<std::wstring> entries;
};

/// The tree of the machine configuration files, as the texts of its nodes: a node per group of
/// "Q_Machine.INI" and then of "QV.ini", a child per entry. A group that occurs again is marked in its text
/// and has no children; an entry that occurs again within its group is left out.
struct IniTree {
    std::vector<IniGroupNode> groups;
    std::int32_t duplicates = 0;
};

/// Reads both files and writes each group to the debug trace. A missing file contributes nothing.
IniTree ReadIniTree(Runtime& rt);

} // namespace tarv
