#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarv {

struct Runtime;

/// Whether a file or, with `directory`, a folder exists. Tolerates slow network drives: retries, and lets
/// waiting window messages run in between. `quick` allows an early answer; access mode 3 and above clears it,
/// in the caller's variable too. A "*" or "?" in the path asks for any plain file that matches. Never raises.
bool Uexist(Runtime& rt, std::wstring_view path, bool directory, bool& quick);
bool Uexist(Runtime& rt, std::wstring_view path, bool directory = false);

/// Loads the access mode from "Pexoran.INI", group "SYS", entry "Zugriff_Slow" (1 to 32767, default 1).
void LoadAccessMode(Runtime& rt);

/// Appends the names of the plain files that match `pattern` (not hidden, not system, no folders) to `names`
/// and answers their number. Of the names already there, every second one is removed first, beginning with
/// the first: the collection is emptied by ascending index, and each removal shifts the rest.
int ListFiles(Runtime& rt, std::wstring_view pattern, std::vector<std::wstring>& names);

} // namespace tarv
