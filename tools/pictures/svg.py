"""A drawing is a list of SVG elements; these helpers keep the picture scripts short and exact."""

NAVY = "#16324a"
STEEL = "#2f5573"
MID = "#5b82a0"
LIGHT = "#9db8cb"
PALE = "#d6e3ec"
PAPER = "#f5f9fb"
AMBER = "#e58a2b"
AMBER_DARK = "#b9661a"


def number(value):
    return f"{value:.2f}".rstrip("0").rstrip(".")


def points(pairs):
    return " ".join(f"{number(x)},{number(y)}" for x, y in pairs)


def attributes(values):
    return "".join(f' {name.rstrip("_").replace("_", "-")}="{value}"' for name, value in values.items())


def rect(x, y, width, height, fill, **more):
    return (
        f'<rect x="{number(x)}" y="{number(y)}" width="{number(width)}" height="{number(height)}"'
        f' fill="{fill}"{attributes(more)}/>'
    )


def polygon(pairs, fill, **more):
    return f'<polygon points="{points(pairs)}" fill="{fill}"{attributes(more)}/>'


def line(pairs, stroke, width, **more):
    return (
        f'<polyline points="{points(pairs)}" fill="none" stroke="{stroke}"'
        f' stroke-width="{number(width)}"{attributes(more)}/>'
    )


def circle(x, y, radius, fill, **more):
    return f'<circle cx="{number(x)}" cy="{number(y)}" r="{number(radius)}" fill="{fill}"{attributes(more)}/>'


def group(elements, **more):
    return f"<g{attributes(more)}>" + "".join(elements) + "</g>"


def gradient(name, stops, x1=0, y1=0, x2=0, y2=1, units="objectBoundingBox"):
    body = "".join(
        f'<stop offset="{offset}" stop-color="{colour}" stop-opacity="{opacity}"/>'
        for offset, colour, opacity in stops
    )
    return (
        f'<linearGradient id="{name}" gradientUnits="{units}"'
        f' x1="{x1}" y1="{y1}" x2="{x2}" y2="{y2}">{body}</linearGradient>'
    )


def document(width, height, elements, defs=()):
    return (
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}"'
        f' viewBox="0 0 {width} {height}"><defs>{"".join(defs)}</defs>{"".join(elements)}</svg>'
    )
