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

/// The bytes of a file with this text: UTF-8 with its mark.
std::string markedUtf8(std::wstring_view text);

/// Writes a file of these bytes; nobody finds half of it, unless the power fails before Windows has written
/// its cache. Answers what to tell the user when it fails, else nothing.
std::optional<std::wstring> saveWhole(Runtime& rt, const std::wstring& file, std::string_view bytes);

} // namespace tarv
