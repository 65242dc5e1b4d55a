#pragma once

#include "infocenter/IniTree.h"

#include <string>
#include <string_view>

namespace tarv {

/// A group and its entries as lines that end with CR LF, the entries indented.
std::wstring groupText(const IniGroupNode& group);

/// Report and tree as one text.
std::wstring wholeText(std::wstring_view report, const IniTree& tree);

} // namespace tarv
