#pragma once

#include "infocenter/IniTree.h"

#include <optional>
#include <string>
#include <string_view>

namespace tarv {

struct Runtime;

/// A group and its entries as lines that end with CR LF, the entries indented.
std::wstring groupText(const IniGroupNode& group);

/// Report and tree as one text.
std::wstring wholeText(std::wstring_view report, const IniTree& tree);

/// What the file of such a text is called: "Infocenter_COMPUTER_2026-09-14.txt".
std::wstring wholeTextFileName(std::wstring_view computer, int year, int month, int day);

/// Writes the text as UTF-8 with its mark; whatever happens, nobody finds half a file. Answers what to tell
/// the user when it fails, else nothing.
std::optional<std::wstring> saveWholeText(Runtime& rt, const std::wstring& file, std::wstring_view text);

} // namespace tarv
