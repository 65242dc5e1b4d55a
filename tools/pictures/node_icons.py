"""The pictures of the configuration tree: a closed folder for a group, a sheet for an entry."""

from svg import document, gradient, polygon, rect


def grid(size):
    """Places on a 16-unit grid, snapped to whole pixels, and the thickness of an outline."""
    return (lambda value: round(value * size / 16)), max(1, round(size / 20))


def bevelled(left, top, right, bottom, cut):
    return [(left + cut, top), (right - cut, top), (right, top + cut), (right, bottom - cut), (right - cut, bottom),
            (left + cut, bottom), (left, bottom - cut), (left, top + cut)]


def closed_folder(size):
    at, pen = grid(size)
    left, right, bottom = at(1), size - at(1), at(14)
    tab_right, tab_top, body_top, front_top = at(7), at(2), at(4), at(6)
    edge = "#8f6420"
    elements = [
        # Back with its tab, then the front leaf; each first in the outline's colour, then inset.
        polygon(bevelled(left, tab_top, tab_right, bottom, pen), edge),
        polygon(bevelled(left, body_top, right, bottom, pen), edge),
        rect(left + pen, tab_top + pen, tab_right - left - 2 * pen, body_top, "#d9a441"),
        rect(left + pen, body_top + pen, right - left - 2 * pen, bottom - body_top - 2 * pen, "#d9a441"),
        rect(left + pen, front_top, right - left - 2 * pen, bottom - front_top - pen, "url(#leaf)"),
        rect(left + pen, front_top, right - left - 2 * pen, pen, "#fbe3ab"),
    ]
    return document(size, size, elements, [gradient("leaf", [(0, "#f6cf7c", 1), (1, "#e6b04c", 1)])])


def sheet(size):
    at, pen = grid(size)
    left, top, right, bottom = at(3), at(1), size - at(3), size - at(1)
    fold = at(3.4)
    edge = "#4d6a82"
    outline = [(left, top), (right - fold, top), (right, top + fold), (right, bottom), (left, bottom)]
    inner = [(left + pen, top + pen), (right - fold - pen * 0.4, top + pen), (right - pen, top + fold + pen * 0.4),
             (right - pen, bottom - pen), (left + pen, bottom - pen)]
    elements = [
        polygon(outline, edge),
        polygon(inner, "#ffffff"),
        polygon([(right - fold - pen, top), (right - fold, top), (right, top + fold), (right, top + fold + pen),
                 (right - fold - pen, top + fold + pen)], edge),
        polygon([(right - fold, top + pen * 1.5), (right - pen * 1.5, top + fold), (right - fold, top + fold)], "#c9d9e5"),
    ]
    step = round(size * 2.2 / 16)
    for row, share in enumerate((0.45, 1, 1, 0.7)):
        length = round((right - left - 4 * pen) * share)
        elements.append(rect(left + 2 * pen, at(5) + row * step, length, pen, "#9db8cb" if row else "#5b82a0"))
    return document(size, size, elements)
