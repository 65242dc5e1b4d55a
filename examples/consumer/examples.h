#pragma once

#include "runtime/Runtime.h"

#include <string>
#include <string_view>

/// Prints a line in UTF-8.
void print(std::wstring_view line);

/// "ja" or "nein".
std::wstring yesNo(bool value);

// One example per module; each prints what the routines answer. `folder` is theirs to write in and ends in
// "\".
void base64(tarv::Runtime& rt);
void configuration(tarv::Runtime& rt);
void errors(tarv::Runtime& rt);
void existence(tarv::Runtime& rt, const std::wstring& folder);
void fileOperation(tarv::Runtime& rt, const std::wstring& folder);
void folderDialog(tarv::Runtime& rt);
void numbers(tarv::Runtime& rt);
void paths(tarv::Runtime& rt);
void scripted();
void skins(tarv::Runtime& rt);
void starter(tarv::Runtime& rt);
void trace(tarv::Runtime& rt, const std::wstring& folder);
void xml(tarv::Runtime& rt, const std::wstring& folder);
