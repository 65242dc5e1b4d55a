#pragma once

#include "platform/ErrorRecord.h"

#include <cstdint>
#include <string_view>

namespace tarv {

struct Runtime;

/// Operation codes; the shell's own.
namespace file_operation {
inline constexpr std::int32_t move = 1;
inline constexpr std::int32_t copy = 2;
inline constexpr std::int32_t remove = 3;
inline constexpr std::int32_t rename = 4;
} // namespace file_operation

/// Copies, moves, deletes or renames files and folders through the Windows shell, with its progress window
/// and questions. `source` and `target` hold one path or several, separated by NUL (empty ones are dropped);
/// `source` may contain "*" and "?". True when it is done; after a copy without wildcards also: everything
/// has arrived.
///
/// `confirm` lets the shell ask before it overwrites or deletes, `silent` hides its progress window. `quiet`
/// suppresses its error messages and the question of this routine, whose answer Retry starts the operation
/// again. `flags` are further shell flags (64 for the recycle bin).
///
/// Never fails towards the caller: after false, `error` holds number and description. The number is -1 when
/// the user aborted ("Abbruch durch den Benutzer"), a file has not arrived, or the source or a needed target
/// is empty, 9 when the targets are too few for the sources, otherwise the shell's result.
bool FileOperation(Runtime& rt, std::int32_t operation, std::wstring_view source, std::wstring_view target,
                   bool confirm, bool quiet, std::int32_t flags, bool silent, ErrorRecord& error);

} // namespace tarv
