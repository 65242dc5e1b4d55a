#pragma once

#include "infocenter/InfoReport.h"
#include "infocenter/IniTree.h"

#include <string>
#include <vector>

namespace tarv {

struct FoundFile {
    IniFile file;
    bool present = false;
    /// Present, but it cannot be opened.
    bool refused = false;
};

/// What report and tree say, for machines: one object (RFC 8259) in UTF-8 without a mark. Its fields are part
/// of the program's promise. They keep name, meaning and order as long as "format" keeps its number; new
/// fields may come. They bear the German names that the report gives the same facts, without umlauts, so that
/// every tool can write them.
///
/// Each field and each entry has a line of its own, so that any comparison of texts shows what differs.
/// `files` are in the order of iniFiles.
std::string jsonText(const InfoFacts& facts, const std::vector<FoundFile>& files, const IniTree& tree);

} // namespace tarv
