#pragma once

#include "platform/Automation.h"

#include <string>
#include <string_view>

namespace tarv {

struct Runtime;

/// An entry of the suite configuration file "Pexoran.INI" in the Windows folder, typed after `fallback`: its
/// text when `fallback` is text, otherwise its leading decimal number as a double (0 when it has none).
///
/// A missing or empty entry gives `fallback` unchanged and, unless `fallback` is the empty text, writes it
/// back into the file. An error (a number too large, a fallback without a text form) goes to the error
/// display; the result is then Empty.
Value Tarvwin_Eintrag(Runtime& rt, std::wstring_view group, std::wstring_view entry, const Value& fallback);

/// Tarvwin_Eintrag for texts.
std::wstring suiteText(Runtime& rt, std::wstring_view group, std::wstring_view entry,
                       std::wstring_view fallback);

/// Writes an entry of "Pexoran.INI": texts as they stand, numbers with ".", Booleans as -1 and 0, dates as
/// their day number. Answers 0, or -1 when the file cannot be written.
std::int16_t Tarvwin_EintragSchreiben(Runtime& rt, std::wstring_view group, std::wstring_view entry,
                                      const Value& value);

/// A folder of the installation from "Q_Machine.ini", group "Directories", with a trailing "\" unless the
/// value ends in ":"; an existing empty entry gives "\". A missing entry gives the empty text and, unless
/// `quiet`, a message box "INSTALLATIONS-FEHLER".
std::wstring GetMachineDirectory(Runtime& rt, std::wstring_view key, bool quiet);

/// The same without ever showing a message.
std::wstring GetMachineDirectoryQuiet(Runtime& rt, std::wstring_view key);

/// The Windows folder with a trailing "\" (always appended).
std::wstring GetWindowsFolder(Runtime& rt);

/// GetFileName under its other name.
std::wstring GetFileNameFromPath(std::wstring_view path, bool stripExtension);

/// "DotNet\": the sub-folder of the program folder for the suite's newer programs.
std::wstring GetDotNetFolderName();

/// The program version from "Version.INI" in the program folder (group "Info", entry "ProgVersion").
///
/// The result is the whole 100-character buffer: the value, then NULs. Callers that compare or join it cut at
/// the first NUL themselves. "2023" when the file or the entry is missing, or the entry is empty.
std::wstring GetProgVersion(Runtime& rt);

} // namespace tarv
