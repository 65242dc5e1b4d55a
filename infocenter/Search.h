#pragma once

#include "infocenter/IniTree.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace tarv {

/// How a search goes on from a place.
struct SearchStep {
    bool backwards = false;
    /// What begins at the place itself has been found already: it comes last.
    bool further = false;
};

/// Both look for `wanted` (not empty) in any part of a text, capital or small, and go on at the other end
/// when they get to one: then `wrapped` becomes true. Nothing when it occurs nowhere.

/// The position in `text`, looked for from `from`.
std::optional<std::size_t> findInText(std::wstring_view text, std::wstring_view wanted, std::size_t from,
                                      SearchStep step, bool& wrapped);

/// The node of `tree`, looked for from `from`, which is a node of it.
std::optional<NodePlace> findInTree(const IniTree& tree, std::wstring_view wanted, NodePlace from,
                                    SearchStep step, bool& wrapped);

} // namespace tarv
