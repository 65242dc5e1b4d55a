"""The main window's start picture: a plan turning into a building, under a crane."""

import lettering
from svg import (AMBER, AMBER_DARK, LIGHT, MID, NAVY, PALE, PAPER, STEEL, circle, document, gradient, group,
                 line, polygon, rect)

WIDTH, HEIGHT = 1920, 1200
GROUND = 1072
HORIZON = 992
STOREY = 88
BAY = 122
LEFT = 960
BAYS = 5
STOREYS = 6
DEPTH = (168, -66)
SLAB = 15


def paper():
    """Sky and plan grid; the grid fades towards the lower left, where the version label stands."""
    parts = [rect(0, 0, WIDTH, HEIGHT, "url(#sky)"), rect(0, 0, WIDTH, HEIGHT, "url(#glow)")]
    grid = []
    for index, x in enumerate(range(0, WIDTH + 1, 40)):
        grid.append(line([(x, 0), (x, HEIGHT)], MID, 1.6 if index % 5 == 0 else 0.8,
                         stroke_opacity=0.30 if index % 5 == 0 else 0.16))
    for index, y in enumerate(range(32, HORIZON + 1, 40)):
        grid.append(line([(0, y), (WIDTH, y)], MID, 1.6 if index % 5 == 0 else 0.8,
                         stroke_opacity=0.30 if index % 5 == 0 else 0.16))
    parts.append(group(grid, mask="url(#gridMask)"))
    return parts


def skyline():
    far = [(0, 905), (90, 905), (90, 870), (190, 870), (190, 920), (300, 920), (300, 840), (372, 840), (372, 900),
           (470, 900), (470, 862), (600, 862), (600, 800), (676, 800), (676, 880), (800, 880), (800, 820),
           (900, 820), (900, 760), (1000, 760), (1000, 830), (1560, 830), (1560, 780), (1640, 780), (1640, 850),
           (1740, 850), (1740, 800), (1830, 800), (1830, 870), (1920, 870)]
    near = [(0, 985), (70, 985), (70, 960), (160, 960), (160, 1000), (262, 1000), (262, 948), (350, 948),
            (350, 985), (452, 985), (452, 930), (540, 930), (540, 972), (640, 972), (640, 945), (760, 945),
            (760, 985), (1600, 985), (1600, 940), (1700, 940), (1700, 905), (1790, 905), (1790, 960), (1920, 960)]
    base = [(WIDTH, HORIZON), (0, HORIZON)]
    return [polygon(far + base, "url(#far)"), polygon(near + base, "url(#near)")]


def ground():
    dx, dy = DEPTH
    right = LEFT + BAYS * BAY
    return [
        rect(0, HORIZON, WIDTH, HEIGHT - HORIZON, "url(#ground)"),
        polygon([(right - 10, GROUND), (right + dx, GROUND + dy), (WIDTH, GROUND + dy), (WIDTH, GROUND + 14)],
                "url(#shadow)"),
        rect(LEFT - 6, GROUND, right - LEFT + 6, 7, NAVY, fill_opacity=0.16),
    ]


def arrow_line(a, b):
    """A dimension line with the slanted end strokes of a building plan."""
    parts = [line([a, b], STEEL, 1.8)]
    for x, y in (a, b):
        parts.append(line([(x - 8, y + 8), (x + 8, y - 8)], STEEL, 2.6))
        parts.append(line([(x, y - 16), (x, y + 16)] if a[1] == b[1] else [(x - 16, y), (x + 16, y)], STEEL, 1.4))
    return parts


def planned_wing():
    """What is still a drawing: the wing left of the shell, in plan lines."""
    parts = []
    bays, storeys = 3, 4
    left = LEFT - bays * BAY
    top = GROUND - storeys * STOREY
    for storey in range(storeys + 1):
        y = GROUND - storey * STOREY
        parts.append(line([(left, y), (LEFT, y)], STEEL, 2.4))
        if storey:
            parts.append(line([(left, y + SLAB), (LEFT, y + SLAB)], STEEL, 1.2))
    for bay in range(bays + 1):
        x = left + bay * BAY
        parts.append(line([(x, top), (x, GROUND)], STEEL, 2.2))
        if bay < bays:
            for storey in range(storeys):
                y = GROUND - (storey + 1) * STOREY + SLAB
                parts.append(rect(x + 22, y + 13, BAY - 44, STOREY - SLAB - 22, "none", stroke=STEEL,
                                  stroke_width=1.3, stroke_dasharray="7 5"))
        # Axis with its circle, above the wing.
        if bay < bays:
            parts.append(line([(x, top - 66), (x, top)], STEEL, 1.2, stroke_dasharray="16 5 3 5"))
            parts.append(circle(x, top - 83, 17, "none", stroke=STEEL, stroke_width=1.8))
    for bay in range(bays - 1):
        parts += arrow_line((left + bay * BAY, top - 34), (left + (bay + 1) * BAY, top - 34))
    for storey in range(storeys):
        parts += arrow_line((left - 46, GROUND - storey * STOREY), (left - 46, GROUND - (storey + 1) * STOREY))
    return [group(parts, mask="url(#planMask)")]


def glazing(x, y, width, height, tone):
    middle = x + width / 2
    return [
        rect(x, y, width, height, f"url(#glass{tone})"),
        polygon([(x + width * 0.12, y + height), (x + width * 0.42, y), (x + width * 0.58, y),
                 (x + width * 0.28, y + height)], "#ffffff", fill_opacity=0.13),
        line([(middle, y), (middle, y + height)], "#e6eff5", 3),
        line([(x, y + height * 0.68), (x + width, y + height * 0.68)], "#e6eff5", 2),
    ]


def glazed(storey, bay):
    """The facade grows from below: the lower storeys are closed, the next ones just begun."""
    return storey < 2 or (storey == 2 and bay < 3) or (storey == 3 and bay == 0)


def shell():
    dx, dy = DEPTH
    right = LEFT + BAYS * BAY
    top = GROUND - STOREYS * STOREY
    parts = []
    # Side face: open storeys with two columns, closed ones with glass.
    for storey in range(STOREYS):
        bottom = GROUND - storey * STOREY
        upper = bottom - STOREY
        closed = storey < 2
        parts.append(polygon([(right, bottom), (right + dx, bottom + dy), (right + dx, upper + dy), (right, upper)],
                             "url(#sideGlass)" if closed else "#223f57"))
        for share in (0.0, 0.5, 0.94):
            x = right + dx * share
            y = dy * share
            parts.append(polygon([(x, bottom + y), (x + 10, bottom + y + dy * 10 / dx), (x + 10, upper + y + dy * 10 / dx),
                                  (x, upper + y)], "#6d8ba1"))
        parts.append(polygon([(right, upper + SLAB), (right + dx, upper + dy + SLAB), (right + dx, upper + dy),
                              (right, upper)], "#7f9bb0"))
    # Front: interiors, columns, glass, slab edges.
    for storey in range(STOREYS):
        bottom = GROUND - storey * STOREY
        upper = bottom - STOREY
        parts.append(rect(LEFT, upper, BAYS * BAY, STOREY, "url(#inside)"))
        # The slab overhead, seen from below, keeps the open storeys from looking flat.
        parts.append(polygon([(LEFT, upper + SLAB), (right, upper + SLAB), (right - 34, upper + SLAB + 15),
                              (LEFT + 34, upper + SLAB + 15)], "#1d3a53"))
        for bay in range(BAYS):
            x = LEFT + bay * BAY
            if glazed(storey, bay):
                parts += glazing(x + 7, upper + SLAB, BAY - 14, STOREY - SLAB, (storey + bay * 2) % 3)
            else:
                parts.append(rect(x + 44, upper + SLAB + 15, 9, STOREY - SLAB - 15, "#476983"))
                if storey:
                    parts.append(line([(x, bottom - 26), (x + BAY, bottom - 26)], AMBER, 2, stroke_opacity=0.85))
                    parts.append(line([(x, bottom - 14), (x + BAY, bottom - 14)], AMBER, 2, stroke_opacity=0.85))
        for bay in range(BAYS + 1):
            x = LEFT + bay * BAY - (0 if bay == 0 else 14 if bay == BAYS else 7)
            parts.append(rect(x, upper + SLAB, 14, STOREY - SLAB, "url(#column)"))
        parts.append(rect(LEFT - 6, upper, BAYS * BAY + 6, SLAB, "url(#slab)"))
    # Roof slab, stair core, column stubs with their reinforcement.
    parts.append(polygon([(LEFT - 6, top), (right, top), (right + dx, top + dy), (LEFT - 6 + dx, top + dy)], "#dfe8ee"))
    core_x, core_y = LEFT + 3.05 * BAY, top - 24
    parts.append(polygon([(core_x + 118, core_y), (core_x + 162, core_y - 17), (core_x + 162, core_y - 105),
                          (core_x + 118, core_y - 88)], "#7793a8"))
    parts.append(polygon([(core_x, core_y - 88), (core_x + 118, core_y - 88), (core_x + 162, core_y - 105),
                          (core_x + 44, core_y - 105)], "#e7eef3"))
    parts.append(rect(core_x, core_y - 88, 118, 88, "url(#slab)"))
    parts.append(rect(core_x + 40, core_y - 58, 34, 58, "#2b4a63"))
    for bay in range(BAYS + 1):
        for share in (0.04, 0.9):
            x = LEFT + bay * BAY + dx * share - (0 if bay == 0 else 12 if bay == BAYS else 6)
            y = top + dy * share
            if share < 0.5 or bay < 2:
                for bar in (2, 6, 10):
                    parts.append(line([(x + bar, y - 26), (x + bar, y - 48)], AMBER_DARK, 1.6))
                parts.append(rect(x, y - 28, 12, 28, "url(#column)"))
    return parts


def lattice(a, b, c, d, fields, colour, width):
    """Two chords a-b and c-d with a zigzag between them."""
    def between(p, q, share):
        return (p[0] + (q[0] - p[0]) * share, p[1] + (q[1] - p[1]) * share)

    zigzag = []
    for index in range(fields + 1):
        zigzag.append(between(a, b, index / fields))
        if index < fields:
            zigzag.append(between(c, d, (index + 0.5) / fields))
    return [line(zigzag, colour, width * 0.5, stroke_linejoin="round"), line([a, b], colour, width),
            line([c, d], colour, width)]


def crane():
    parts = []
    mast_left, mast_right, turn = 1690, 1734, 236
    jib, base = 204, 985
    parts += lattice((mast_left, base), (mast_left, turn), (mast_right, base), (mast_right, turn), 17, AMBER, 6)
    # Slewing ring, cabin, tower head.
    parts.append(rect(mast_left - 10, turn - 12, mast_right - mast_left + 20, 16, AMBER_DARK))
    parts.append(polygon([(1640, 214), (1682, 214), (1682, 262), (1650, 262), (1640, 244)], STEEL))
    parts.append(polygon([(1645, 220), (1664, 220), (1664, 250), (1653, 250), (1645, 240)], "#bcd6e6"))
    parts.append(line([(mast_left, turn - 12), (1712, 96), (mast_right, turn - 12)], AMBER, 7, stroke_linejoin="round"))
    parts.append(line([(1700, 168), (1724, 168)], AMBER, 4))
    # Jib, counter-jib, tie bars.
    parts += lattice((1690, jib + 20), (1010, jib + 20), (1690, jib - 14), (1030, jib - 10), 20, AMBER, 5)
    parts.append(line([(1010, jib + 20), (1030, jib - 10)], AMBER, 5))
    parts += lattice((1734, jib + 20), (1872, jib + 20), (1734, jib), (1872, jib), 5, AMBER, 4.5)
    parts.append(rect(1816, jib + 22, 60, 52, STEEL))
    parts.append(line([(1836, jib + 22), (1836, jib + 74)], MID, 2))
    parts.append(line([(1856, jib + 22), (1856, jib + 74)], MID, 2))
    parts.append(line([(1712, 98), (1250, jib - 12)], AMBER_DARK, 2.4))
    parts.append(line([(1712, 98), (1500, jib - 13)], AMBER_DARK, 2.4))
    parts.append(line([(1712, 98), (1850, jib)], AMBER_DARK, 2.4))
    # Trolley, rope, hook, and the precast panel on its way.
    trolley, hook = 1120, 286
    parts.append(rect(trolley - 22, jib + 22, 44, 9, NAVY))
    parts.append(circle(trolley - 13, jib + 31, 5, NAVY))
    parts.append(circle(trolley + 13, jib + 31, 5, NAVY))
    for side in (-7, 7):
        parts.append(line([(trolley + side, jib + 30), (trolley + side, hook)], NAVY, 1.8))
    parts.append(rect(trolley - 12, hook - 4, 24, 18, AMBER_DARK, rx=4))
    parts.append(line([(trolley - 74, hook + 46), (trolley, hook + 12), (trolley + 74, hook + 46)], NAVY, 2))
    parts.append(rect(trolley - 92, hook + 46, 184, 44, "url(#slab)"))
    parts.append(polygon([(trolley - 92, hook + 46), (trolley - 80, hook + 40), (trolley + 104, hook + 40),
                          (trolley + 92, hook + 46)], "#eef3f6"))
    parts.append(polygon([(trolley + 92, hook + 46), (trolley + 104, hook + 40), (trolley + 104, hook + 84),
                          (trolley + 92, hook + 90)], "#7f9bb0"))
    return parts


def title():
    return [
        lettering.name(112, 232, 98, NAVY),
        rect(112, 364, 92, 8, AMBER),
        f'<text x="111" y="428" font-family="Liberation Sans" font-size="40" letter-spacing="1.6"'
        f' fill="{STEEL}">Serviceprogramm</text>',
    ]


def picture():
    defs = [
        gradient("sky", [(0, "#e3edf4", 1), (0.55, "#f1f6f9", 1), (1, PAPER, 1)]),
        '<radialGradient id="glow" cx="0.72" cy="0.42" r="0.5"><stop offset="0" stop-color="#fff" stop-opacity="0.85"/>'
        '<stop offset="1" stop-color="#fff" stop-opacity="0"/></radialGradient>',
        gradient("far", [(0, "#cfdee8", 0.9), (1, "#e4edf3", 0.6)]),
        gradient("near", [(0, "#b9cedc", 0.9), (1, "#dae6ee", 0.7)]),
        gradient("ground", [(0, "#d3e0e9", 1), (0.35, "#e6eef3", 1), (1, PAPER, 1)]),
        gradient("shadow", [(0, NAVY, 0.20), (1, NAVY, 0)], x2=1, y2=0),
        gradient("inside", [(0, "#2a4a64", 1), (1, "#3c607c", 1)]),
        gradient("column", [(0, "#dbe5ec", 1), (0.55, "#c3d2dd", 1), (1, "#93abbc", 1)], x2=1, y2=0),
        gradient("slab", [(0, "#e3ebf0", 1), (1, "#b4c6d3", 1)]),
        gradient("glass0", [(0, "#8fbcd6", 1), (1, "#5a92b6", 1)]),
        gradient("glass1", [(0, "#7fb0cd", 1), (1, "#4a82a8", 1)]),
        gradient("glass2", [(0, "#a2c9de", 1), (1, "#699fc0", 1)]),
        gradient("sideGlass", [(0, "#467595", 1), (1, "#35607f", 1)]),
        gradient("fade", [(0, "#fff", 0.15), (0.45, "#fff", 0.55), (1, "#fff", 1)], x2=1, y2=0),
        gradient("rise", [(0, "#fff", 0), (0.5, "#fff", 0.8), (1, "#fff", 1)], x1=500, y1=0, x2=940, y2=0,
                 units="userSpaceOnUse"),
        f'<mask id="gridMask"><rect width="{WIDTH}" height="{HEIGHT}" fill="url(#fade)"/></mask>',
        f'<mask id="planMask"><rect width="{WIDTH}" height="{HEIGHT}" fill="url(#rise)"/></mask>',
    ]
    elements = paper() + skyline() + ground() + planned_wing() + crane() + shell() + title()
    return document(WIDTH, HEIGHT, elements, defs)


