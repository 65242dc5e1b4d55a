"""The name TARVENIK, drawn for this program: capitals 100 high, strokes 15 thick."""

from svg import number

# Each letter: its width and its outline (holes by the even-odd rule), y downwards.
LETTERS = {
    "T": (78, "M0 0H78V15H46.5V100H31.5V15H0Z"),
    "A": (90, "M0 100L37 0H53L90 100H73L64.1 76H25.9L17 100ZM31.1 62L45 24.3L58.9 62Z"),
    "R": (71, "M0 0H38A30.5 30.5 0 0 1 48.5 59.1L71 100H53L32.5 61H15V100H0ZM15 14.5V46.5H38A16 16 0 0 0 38 14.5Z"),
    "V": (90, "M0 0H17L45 75.7L73 0H90L53 100H37Z"),
    "E": (60, "M0 0H60V14.5H15V42.5H54V57H15V85.5H60V100H0Z"),
    "N": (79, "M0 100V0H16L64 73V0H79V100H63L15 27V100Z"),
    "I": (15, "M0 0H15V100H0Z"),
    "K": (78, "M0 0H15V43L54.5 0H74L34.5 43.5L78 100H59L24 54.5L15 64.4V100H0Z"),
}
GAP = 21
# Pairs that would stand too far apart.
CLOSER = {"TA": -24, "AR": -7, "RV": -13, "VE": -9, "EN": -1}


def name(x, y, height, colour, text="TARVENIK"):
    """The lettering with its upper left corner at (x, y)."""
    scale = height / 100
    left = 0
    parts = []
    for index, letter in enumerate(text):
        width, outline = LETTERS[letter]
        parts.append(f'<path transform="translate({number(left)} 0)" d="{outline}" fill="{colour}" fill-rule="evenodd"/>')
        left += width + GAP + CLOSER.get(text[index : index + 2], 0)
    return f'<g transform="translate({number(x)} {number(y)}) scale({number(scale)})">{"".join(parts)}</g>'
