"""The program's icon: a T that is a tower crane, its load in the warm accent colour."""

from svg import AMBER, document, gradient, line, rect

# Coordinates of the parts for the small sizes, pixel by pixel: (left, top, right, bottom), and the corner radius.
TUNED = {
    16: dict(corner=3, jib=(2, 4, 14, 6), mast=(9, 2, 11, 14), foot=None, weight=(12, 6, 14, 8),
             rope=(4, 6, 5, 8), load=(3, 8, 6, 11)),
    20: dict(corner=4, jib=(2, 5, 18, 7), mast=(11, 3, 13, 17), foot=(9, 16, 15, 17), weight=(15, 7, 18, 10),
             rope=(5, 7, 6, 10), load=(3, 10, 8, 14)),
    24: dict(corner=5, jib=(3, 6, 21, 8), mast=(13, 3, 16, 20), foot=(11, 19, 18, 20), weight=(18, 8, 21, 11),
             rope=(6, 8, 7, 12), load=(4, 12, 9, 17)),
    32: dict(corner=6, jib=(4, 8, 28, 11), mast=(18, 4, 21, 27), foot=(15, 25, 24, 27), weight=(24, 11, 28, 15),
             rope=(8, 11, 9, 16), load=(5, 16, 12, 22)),
}
MASTER = dict(corner=46, jib=(34, 70, 224, 92), mast=(142, 34, 168, 214), foot=(118, 200, 192, 216),
              weight=(190, 92, 224, 124), rope=(66, 92, 73, 134), load=(42, 134, 97, 184))
WHITE = "#ffffff"


def parts_of(size):
    if size in TUNED:
        return TUNED[size]
    scale = size / 256

    def snapped(box):
        left, top, right, bottom = (round(edge * scale) for edge in box)
        return (left, top, max(right, left + 1), max(bottom, top + 1))

    return {name: round(box * scale) if name == "corner" else snapped(box) for name, box in MASTER.items()}


def picture(size):
    part = parts_of(size)

    def box(name, fill, **more):
        left, top, right, bottom = part[name]
        return rect(left, top, right - left, bottom - top, fill, **more)

    elements = [
        rect(0, 0, size, size, "url(#tile)", rx=part["corner"]),
        rect(0, 0, size, size / 2, "url(#shine)", rx=part["corner"]),
    ]
    jib, mast = part["jib"], part["mast"]
    if size >= 24:
        # The tie bars from the tower head; finer than a pixel they would only blur the T.
        width = max(1.0, size / 64)
        middle = (mast[0] + mast[2]) / 2
        head = mast[1] + width / 2
        half = width / 2
        elements.append(line([(jib[0] + size * 0.10, jib[1] + half), (middle, head), (jib[2] - half, jib[1] + half)],
                             "#b9d5e8", width, stroke_linejoin="round"))
    if size >= 128:
        elements += lattice(size, jib, mast)
    else:
        elements += [box("mast", WHITE), box("jib", WHITE)]
    if part["foot"]:
        elements.append(box("foot", WHITE))
    elements += [box("weight", "#b9d5e8"), box("rope", "#dbe8f1"), box("load", "url(#load)")]
    if size >= 48:
        left, top, right, bottom = part["load"]
        edge = max(1, round(size / 85))
        elements.append(rect(left, top, right - left, edge, "#ffc37c"))
        elements.append(rect(left, bottom - edge, right - left, edge, "#c46f19"))
    defs = [
        gradient("tile", [(0, "#3f80ad", 1), (0.55, "#27587f", 1), (1, "#163550", 1)]),
        gradient("shine", [(0, "#fff", 0.14), (1, "#fff", 0)]),
        gradient("load", [(0, "#f6a347", 1), (1, AMBER, 1)]),
    ]
    return document(size, size, elements, defs)


def lattice(size, jib, mast):
    """In the large sizes the jib and the mast show their bracing."""
    parts = []
    thick = round(size / 42)
    for left, top, right, bottom in (jib, mast):
        wide = right - left > bottom - top
        length, depth = (right - left, bottom - top) if wide else (bottom - top, right - left)
        fields = round(length / depth / 0.95)
        zigzag = []
        for index in range(2 * fields + 1):
            along = thick / 2 + (length - thick) * index / (2 * fields)
            across = thick / 2 if index % 2 else depth - thick / 2
            zigzag.append((left + along, top + across) if wide else (left + across, top + along))
        parts.append(line(zigzag, WHITE, thick * 0.62, stroke_linejoin="round"))
        if wide:
            parts += [rect(left, top, length, thick, WHITE), rect(left, bottom - thick, length, thick, WHITE),
                      rect(left, top, thick, depth, WHITE), rect(right - thick, top, thick, depth, WHITE)]
        else:
            parts += [rect(left, top, thick, length, WHITE), rect(right - thick, top, thick, length, WHITE),
                      rect(left, top, depth, thick, WHITE)]
    return parts
