"""The picture of the address window: a workstation in its network."""

from svg import AMBER, circle, document, gradient, line, polygon, rect

SIZE = 192


def picture():
    elements = [rect(0, 0, SIZE, SIZE, "url(#ground)")]
    for place in range(0, SIZE + 1, 16):
        elements.append(line([(place, 0), (place, SIZE)], "#ffffff", 0.8, stroke_opacity=0.10))
        elements.append(line([(0, place), (SIZE, place)], "#ffffff", 0.8, stroke_opacity=0.10))
    # The network above, its own station in the accent colour.
    hub = (96, 40)
    others = [(36, 30), (156, 30), (30, 74), (162, 74)]
    for node in others:
        elements.append(line([hub, node], "#a9cbe2", 4))
    elements.append(line([hub, (96, 92)], AMBER, 5))
    for x, y in others:
        elements.append(circle(x, y, 10, "#dcebf5"))
        elements.append(circle(x, y, 4.5, "#3a7099"))
    elements.append(circle(*hub, 16, "#ffffff"))
    elements.append(circle(*hub, 9, AMBER))
    # Screen, stand, keyboard line.
    elements += [
        rect(44, 86, 104, 70, "#f4f8fb", rx=6),
        rect(51, 93, 90, 56, "url(#screen)", rx=2),
        polygon([(51, 149), (51, 93), (104, 93), (78, 149)], "#ffffff", fill_opacity=0.10),
        polygon([(86, 156), (106, 156), (110, 170), (82, 170)], "#c4d6e2"),
        rect(66, 169, 60, 8, "#f4f8fb", rx=3),
    ]
    for index, length in enumerate((26, 44, 34)):
        elements.append(rect(62, 106 + index * 13, 6, 6, AMBER if index == 1 else "#dcebf5", rx=1))
        elements.append(rect(76, 106 + index * 13, length, 6, "#dcebf5", rx=1))
    defs = [
        gradient("ground", [(0, "#3f80ad", 1), (0.55, "#27587f", 1), (1, "#163550", 1)]),
        gradient("screen", [(0, "#2d5f86", 1), (1, "#1b3f5c", 1)]),
    ]
    return document(SIZE, SIZE, elements, defs)
