#pragma once

#include <string>
#include <string_view>

namespace tarv {

struct Runtime;

/// Appends "\" unless the path is empty or ends in one.
std::wstring AddBackslash(std::wstring_view path);

/// The part behind the last "\" (or, without one, behind the last ":"); with `stripExtension` cut before its
/// last ".".
std::wstring GetFileName(std::wstring_view path, bool stripExtension);

/// Splits a path into drive ("C:"), folder (without trailing "\" unless it is the root) and file. A path
/// without "\" is taken from the current directory. A UNC path leaves `drive` untouched.
void SplitPath(Runtime& rt, std::wstring_view path, std::wstring& drive, std::wstring& folder,
               std::wstring& file);

/// The path with every 8.3 component replaced by its long name. A missing last component is dropped: the
/// result is the long folder and "\". Any other failure returns the path unchanged.
std::wstring File_getLongPath(Runtime& rt, std::wstring_view path);

/// The trimmed value of an environment variable; empty when missing.
std::wstring GetEnvValue(Runtime& rt, std::wstring_view name);

/// The temporary folder (first of TEMP and TMP in environment order) with a trailing "\"; "\" without either.
std::wstring GetTempFolder(Runtime& rt, bool longPath);

/// "PRG:" + upper case of the trimmed program + " DATA:" + the trimmed data path.
std::wstring MakeProgramDataKey(std::wstring_view program, std::wstring_view dataPath);

/// The name cut before its first "__", or else before its first "-RIBBON" in any case.
std::wstring StripRibbonSuffix(std::wstring_view name);

/// Folder of the running executable, without a trailing "\" (a drive root is "D:").
std::wstring programFolder(Runtime& rt);

/// Name of the running executable, without folder and extension.
std::wstring programName(Runtime& rt);

/// Name of this computer; empty on failure.
std::wstring GetPCName(Runtime& rt);

/// First IPv4 address of this computer's own name, "127.0.0.1" when there is none.
std::wstring GetLocalIP(Runtime& rt);

/// Name of the logged-on user; empty on failure.
std::wstring GetLoginName(Runtime& rt);

/// The Windows folder without a trailing "\" (unlike GetWindowsFolder).
std::wstring GetWinDir(Runtime& rt);

} // namespace tarv
