"""The ground that all picture recipes draw on: a canvas that writes SVG, the palette, and shapes that several recipes share.

Only what Qt's SVG renderer draws is used: plain shapes, paths, groups, opacity and linear gradients. Coordinates are pixels of the
normal scale, y downward. Light comes from the upper left everywhere, so shadows fall to the lower right.
"""

import math

# The family's palette. Outlines are a grey that shows on white and on black alike.
PAPER = "#ffffff"
EDGE = "#5b6670"  # outlines of paper and machines
SOFT = "#b4bfca"  # outlines inside a shape, paper in the second row
INK = "#2b3640"  # what is darkest: staples, glass
TEXT = "#8ea6bf"  # lines of text
PAGE = "#e3edf7"  # a page's ground
SKY = "#8fb4dc"  # pictures on a page, second accent
BLUE = "#2f6fb0"  # accent: what a setting does
ORANGE = "#f28c1e"  # signal: lit parts, arrows
AMBER = "#ffd08a"  # the lit side of a part in the signal colour
RUST = "#a85a08"  # its outline
LIGHT = "#f4f6f8"  # machines: sides toward the light
MID = "#dbe1e7"
DARK = "#b3bec8"  # sides in the shade
SHADE = "#8794a0"

SYMBOL_LINE = 1.4  # outlines of symbols of 32 pixels and more
FINE_LINE = 1  # outlines of sheets and machines


def number(value):
    """The shortest form with at most two decimals."""
    text = f"{value:.2f}".rstrip("0").rstrip(".")
    return "0" if text in ("-0", "") else text


def points(corners):
    return " ".join(f"{number(x)},{number(y)}" for x, y in corners)


def style(fill=None, stroke=None, width=None, **more):
    """Attributes of a shape; names in `more` take hyphens for underscores."""
    parts = [("fill", fill or "none")]
    if stroke:
        parts += [("stroke", stroke), ("stroke-width", number(width or FINE_LINE))]
        parts += [("stroke-linejoin", "round")]
        if "stroke_linecap" not in more:
            parts += [("stroke-linecap", "round")]
    parts += [(name.replace("_", "-"), number(value) if isinstance(value, (int, float)) else value)
              for name, value in more.items()]
    return "".join(f' {name}="{value}"' for name, value in parts)


class Picture:
    """One picture of `width` x `height` pixels, empty at first."""

    def __init__(self, width, height):
        self.width, self.height = width, height
        self._parts, self._gradients = [], []

    def rect(self, x, y, width, height, fill=None, stroke=None, line=None, radius=0, **more):
        corner = f' rx="{number(radius)}"' if radius else ""
        self._parts.append(f'<rect x="{number(x)}" y="{number(y)}" width="{number(width)}" height="{number(height)}"'
                           f"{corner}{style(fill, stroke, line, **more)}/>")

    def path(self, data, fill=None, stroke=None, line=None, **more):
        self._parts.append(f'<path d="{data}"{style(fill, stroke, line, **more)}/>')

    def poly(self, corners, fill=None, stroke=None, line=None, **more):
        self._parts.append(f'<polygon points="{points(corners)}"{style(fill, stroke, line, **more)}/>')

    def line(self, corners, stroke, line=None, **more):
        self._parts.append(f'<polyline points="{points(corners)}"{style(None, stroke, line, **more)}/>')

    def circle(self, x, y, radius, fill=None, stroke=None, line=None, **more):
        self._parts.append(f'<circle cx="{number(x)}" cy="{number(y)}" r="{number(radius)}"'
                           f"{style(fill, stroke, line, **more)}/>")

    def ellipse(self, x, y, across, down, fill=None, stroke=None, line=None, **more):
        self._parts.append(f'<ellipse cx="{number(x)}" cy="{number(y)}" rx="{number(across)}" ry="{number(down)}"'
                           f"{style(fill, stroke, line, **more)}/>")

    def group(self, transform=None, **more):
        """Until the `with` ends, what is drawn is moved or faded: with picture.group("translate(3 4)"):"""
        return _Group(self, transform, more)

    def gradient(self, first, last, x1=0, y1=0, x2=0, y2=1):
        """A fill that runs over the shape's box, by default from its top to its bottom."""
        name = f"g{len(self._gradients)}"
        self._gradients.append(
            f'<linearGradient id="{name}" x1="{number(x1)}" y1="{number(y1)}" x2="{number(x2)}" y2="{number(y2)}">'
            f'<stop offset="0" stop-color="{first}"/><stop offset="1" stop-color="{last}"/></linearGradient>')
        return f"url(#{name})"

    def svg(self):
        defs = f"<defs>{''.join(self._gradients)}</defs>" if self._gradients else ""
        return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{self.width}" height="{self.height}" '
                f'viewBox="0 0 {self.width} {self.height}">{defs}{"".join(self._parts)}</svg>\n')


class _Group:
    def __init__(self, picture, transform, more):
        self._picture = picture
        self._head = f' transform="{transform}"' if transform else ""
        self._head += "".join(f' {name.replace("_", "-")}="{value}"' for name, value in more.items())

    def __enter__(self):
        self._picture._parts.append(f"<g{self._head}>")

    def __exit__(self, *_):
        self._picture._parts.append("</g>")


# -- figures: no font is asked for, so a figure looks the same everywhere ----------------------------------------------------

_FIGURES = {  # strokes on a field of 4 x 6, the baseline at 6
    "0": "M2 0C.3 0 0 1.6 0 3s.3 3 2 3 2-1.6 2-3-.3-3-2-3z",
    "1": "M.6 1.4 2.2 0V6",
    "2": "M.1 1.5C.2-.4 3.9-.5 3.9 1.7 3.9 3.3.6 4.4 0 6H4",
    "3": "M.2.8C1-.3 3.8-.3 3.7 1.5 3.6 2.7 2.4 2.8 1.6 2.8 2.5 2.8 4 3 4 4.4 4 6.4.8 6.3 0 5.1",
    "4": "M3 6V0L0 4.2H4",
    "5": "M3.7 0H.7L.4 2.8C1.4 2 4 2.1 4 4 4 6.3 1 6.4 0 5.2",
    "6": "M3.4.3C1.2.3 0 2 0 4 0 6.6 4 6.6 4 4.1 4 1.8.8 1.8.1 3.6",
    "7": "M0 0H4L1.5 6",
    "8": "M2 0C-.4 0-.3 2.8 2 2.9 4.6 3 4.6 6 2 6S-.6 3 2 2.9C4.3 2.8 4.4 0 2 0z",
    "9": "M.6 5.7C2.8 5.7 4 4 4 2 4-.6 0-.6 0 1.9 0 4.2 3.2 4.2 3.9 2.4",
}


def figure(picture, value, x, y, height, color=BLUE, weight=0.16):
    """A number with its centre at (x, y); `weight` is the stroke's width as a part of the height."""
    text, scale = str(value), height / 6
    width = (5.4 * len(text) - 1.4) * scale
    for place, character in enumerate(text):
        left = x - width / 2 + place * 5.4 * scale
        with picture.group(f"translate({number(left)} {number(y - height / 2)}) scale({number(scale)})"):
            picture.path(_FIGURES[character], stroke=color, line=weight * 6)


_LETTERS = {  # strokes on the same field
    "A": "M0 6 2 0 4 6M.7 4H3.3",
    "B": "M.3 6V0H2C4 0 4 2.8 2 2.8H.3M2 2.8C4.5 2.8 4.5 6 2 6H.3",
    "C": "M3.8 1C2.6-.6 0-.2 0 3S2.6 6.6 3.8 5",
    "D": "M.3 6V0H1.6C4.6 0 4.6 6 1.6 6z",
    "E": "M3.6 0H.2V6H3.6M.2 2.9H3",
    "F": "M3.6 0H.2V6M.2 2.9H3",
    "G": "M3.7.9C2.5-.6 0-.2 0 3S2.6 6.6 3.8 5V3.2H2.2",
    "H": "M.2 0V6M3.8 0V6M.2 2.9H3.8",
    "I": "M2 0V6",
    "L": "M.2 0V6H3.6",
    "M": "M0 6V0L2 3.6 4 0V6",
    "N": "M.2 6V0L3.8 6V0",
    "O": "M2 0C-.7 0-.7 6 2 6S4.7 0 2 0z",
    "P": "M.3 6V0H2C4.4 0 4.4 3.2 2 3.2H.3",
    "R": "M.3 6V0H2C4.4 0 4.4 3 2 3H.3M2 3 3.9 6",
    "S": "M3.7.8C2.8-.4.2-.2.2 1.5.2 3.5 3.9 2.5 3.9 4.5 3.9 6.3 1 6.5.1 5",
    "T": "M0 0H4M2 0V6",
    "U": "M.2 0V4C.2 6.7 3.8 6.7 3.8 4V0",
    "Y": "M0 0 2 3 4 0M2 3V6",
}


def word(picture, text, x, y, height, color=BLUE, line=1.0, pitch=5.4):
    """Capitals with their middle at (x, y); `line` is in pixels, `pitch` the letters' distance in sixths of the height."""
    scale = height / 6
    width = (pitch * (len(text) - 1) + 4) * scale
    for place, character in enumerate(text):
        if character == " ":
            continue
        left = x - width / 2 + place * pitch * scale
        with picture.group(f"translate({number(left)} {number(y - height / 2)}) scale({number(scale)})"):
            picture.path(_LETTERS[character], stroke=color, line=line / scale)


def letter_a(picture, x, y, height, color=BLUE, line=2.2):
    """A capital A with its centre at (x, y)."""
    word(picture, "A", x, y, height, color, line)


# -- paper -------------------------------------------------------------------------------------------------------------------


def text_lines(picture, x, y, width, height, pitch, color=TEXT, line=None, last=0.6):
    """Lines of text that fill a box; the last one is shorter, as at a paragraph's end."""
    count = max(1, int(height / pitch + 0.01))
    for row in range(count):
        length = width * (last if row == count - 1 and count > 1 else 1)
        picture.rect(x, y + row * pitch, length, line or pitch * 0.4, color)


def sheet(picture, x, y, width, height, fill=PAPER, stroke=EDGE, line=SYMBOL_LINE, shadow=0, **more):
    """A sheet of paper seen from above."""
    if shadow:
        picture.rect(x + shadow, y + shadow, width, height, INK, fill_opacity=0.22)
    picture.rect(x, y, width, height, fill, stroke, line, **more)


def dog_ear(picture, x, y, width, height, ear, fill=PAPER, stroke=EDGE, line=SYMBOL_LINE):
    """A sheet whose upper right corner is folded over: a document."""
    picture.poly([(x, y), (x + width - ear, y), (x + width, y + ear), (x + width, y + height), (x, y + height)],
                 fill, stroke, line)
    picture.poly([(x + width - ear, y), (x + width - ear, y + ear), (x + width, y + ear)], MID, stroke, line)


def arrow(picture, start, end, color=BLUE, line=2, head=4):
    """A straight arrow with an open head."""
    angle = math.atan2(end[1] - start[1], end[0] - start[0])
    wings = [(end[0] - head * math.cos(angle + turn), end[1] - head * math.sin(angle + turn)) for turn in (0.7, -0.7)]
    picture.line([start, end], color, line)
    picture.line([wings[0], end, wings[1]], color, line)


def solid_arrow(picture, start, end, color=ORANGE, width=4, head=8, stroke=None, line=1):
    """A filled arrow: a shaft of `width` and a head of length `head`."""
    length = math.hypot(end[0] - start[0], end[1] - start[1])
    ux, uy = (end[0] - start[0]) / length, (end[1] - start[1]) / length
    outline = [(0, -width / 2), (length - head, -width / 2), (length - head, -head * 0.8), (length, 0),
               (length - head, head * 0.8), (length - head, width / 2), (0, width / 2)]
    picture.poly([(start[0] + a * ux - b * uy, start[1] + a * uy + b * ux) for a, b in outline], color, stroke, line)
