#include "infocenter/Search.h"

#include "runtime/Funktionen32/Texts.h"

#include <string>

namespace tarv {
namespace {

/// The next node, the first behind the last.
NodePlace following(const IniTree& tree, NodePlace node) {
    if (node.entry < tree.groups[node.group].entries.size())
        return {node.group, node.entry + 1};
    return {(node.group + 1) % tree.groups.size(), 0};
}

NodePlace preceding(const IniTree& tree, NodePlace node) {
    if (node.entry > 0)
        return {node.group, node.entry - 1};
    const std::size_t group = (node.group == 0 ? tree.groups.size() : node.group) - 1;
    return {group, tree.groups[group].entries.size()};
}

} // namespace

std::optional<std::size_t> findInText(std::wstring_view text, std::wstring_view wanted, std::size_t from,
                                      SearchStep step, bool& wrapped) {
    constexpr auto none = std::wstring::npos;
    const std::wstring within = lowerCase(text), sought = lowerCase(wanted);
    std::size_t at = none;
    if (!step.backwards)
        at = within.find(sought, from + (step.further ? 1 : 0));
    else if (!step.further || from > 0)
        at = within.rfind(sought, from - (step.further ? 1 : 0));
    if (at == none) {
        wrapped = true;
        at = step.backwards ? within.rfind(sought) : within.find(sought);
    }
    return at == none ? std::nullopt : std::optional(at);
}

std::optional<NodePlace> findInTree(const IniTree& tree, std::wstring_view wanted, NodePlace from,
                                    SearchStep step, bool& wrapped) {
    if (tree.groups.empty())
        return std::nullopt;
    const std::wstring sought = lowerCase(wanted);
    const auto next = [&](NodePlace node) {
        const NodePlace then = step.backwards ? preceding(tree, node) : following(tree, node);
        wrapped = wrapped || (step.backwards ? then >= node : then <= node);
        return then;
    };
    const NodePlace first = step.further ? next(from) : from;
    NodePlace node = first;
    do {
        if (lowerCase(tree.text(node)).find(sought) != std::wstring::npos)
            return node;
        node = next(node);
    } while (node != first);
    return std::nullopt;
}

} // namespace tarv
