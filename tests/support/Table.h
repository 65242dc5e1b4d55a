#pragma once

#include "tests/support/World.h"

#include <concepts>
#include <functional>
#include <istream>
#include <map>
#include <string>
#include <vector>

namespace tarv {

/// The cells of a row; the last one is what the routine is to answer.
struct Row : std::vector<std::wstring> {
    const std::wstring& operator[](std::size_t cell) const { return at(cell); }
    bool on(std::size_t cell) const { return at(cell) == L"1"; }
    int number(std::size_t cell) const { return std::stoi(at(cell)); }
};

/// What each routine of a table makes of a row.
using Answers = std::map<std::wstring, std::function<std::wstring(const Row&)>>;

/// Compares every row of tests/data/`name` with its answer; a run-time error is the answer "raises" and its
/// number.
///
/// The file is UTF-8, cells are parted by tabs. A block per routine: its first line names the routine and,
/// behind ": ", the columns; rows follow; an empty line ends it. "#" begins a comment. An empty cell is
/// written U+2205, characters up to the blank as their pictures (U+2400 to U+2420) where they would not be
/// seen or stand at the end of a line, U+00A0 as U+237D. Whatever else a table holds is a failure that names
/// the line, as is a routine without a row.
void checkTable(const std::string& name, const Answers& answers);
void checkTable(const std::string& name, std::istream& lines, const Answers& answers);

/// The message boxes so far, each after a blank: text, title and style between "|".
std::wstring shownBoxes(const World& world);

/// The same with a new Case for each row; the message boxes of a World are part of the answer.
template <class Case>
void checkTable(const std::string& name,
                const std::map<std::wstring, std::wstring (*)(Case&, const Row&)>& routines) {
    Answers answers;
    for (const auto& [routine, answer] : routines)
        answers[routine] = [call = answer](const Row& row) {
            Case fresh;
            std::wstring given = call(fresh, row);
            if constexpr (std::derived_from<Case, World>)
                given += shownBoxes(fresh);
            return given;
        };
    checkTable(name, answers);
}

/// A value in a cell: a text in quotes, Empty, Null, Missing, True, False, "7 Integer", "7 Long", "7 Date",
/// or a double.
Value valueOf(const std::wstring& cell);
std::wstring shown(const Value& value);

/// The texts between "|".
template <class... Texts>
std::wstring joined(const std::wstring& first, const Texts&... others) {
    return (first + ... + (L"|" + std::wstring(others)));
}

} // namespace tarv
