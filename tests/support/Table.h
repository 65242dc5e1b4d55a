#pragma once

#include "tests/support/Scripted.h"

#include <functional>
#include <string>
#include <vector>

namespace tarv {

/// One row of a table: the name of a routine, its arguments, and last what it answers.
using Row = std::vector<std::wstring>;

/// Compares every row of tests/data/`name` with what `answer` makes of it; a run-time error is the answer
/// "raises" and its number.
///
/// The file is UTF-8, a row per line, its cells between tabs; "#" begins a comment. Characters up to the
/// blank are written as their pictures (U+2400 to U+2420) where they would not be seen, U+00A0 as U+237D.
void checkTable(const char* name, const std::function<std::wstring(const Row&)>& answer);

/// The same with a new Calls for each row.
template <class Calls>
void checkTable(const char* name) {
    checkTable(name, [](const Row& row) { return Calls().answer(row); });
}

/// A value in a cell: a text in quotes, Empty, Null, Missing, True, False, "7 Integer", "7 Long", "7 Date",
/// or a double.
Value valueOf(const std::wstring& cell);
std::wstring shown(const Value& value);

/// The message boxes so far, each after a blank: text, title and style between "|".
std::wstring shownBoxes(const World& world);

/// The texts between "|".
template <class... Texts>
std::wstring joined(const std::wstring& first, const Texts&... others) {
    return (first + ... + (L"|" + std::wstring(others)));
}

} // namespace tarv
