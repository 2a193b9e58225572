"""The sheet of the paper view: one frame that all of its parts share, and the sheets, booklets and blocks in it.

The surface is 100 x 100. README.md lists where every other picture of the paper view lies on it.
"""

from svg import BLUE, DARK, EDGE, FINE_LINE, INK, LIGHT, MID, PAPER, SHADE, SOFT, Picture

PORTRAIT, LANDSCAPE = 0, 1
LEFT, RIGHT, TOP, BOTTOM = 1, 2, 3, 4

SURFACE = 100
SHORT, LONG = 68, 90  # sides of the sheet
SHEET = {PORTRAIT: (16, 2, SHORT, LONG), LANDSCAPE: (2, 16, LONG, SHORT)}  # left, top, width, height
SPINE = 7  # distance of a block's upper sheet from the edge with the adhesive: left and top
SPINE_RIGHT = 3  # and from the left edge, when the adhesive is on the right


def _surface():
    return Picture(SURFACE, SURFACE)


def _turned(x, y, width, height, orientation):
    """The frame's box for a portrait sheet, or mirrored at the diagonal for a landscape one."""
    return (x, y, width, height) if orientation == PORTRAIT else (y, x, height, width)


def _shadow(picture, x, y, width, height):
    for depth, strength in ((4, 0.10), (2.5, 0.16)):
        picture.rect(x + depth, y + depth, width, height, INK, radius=1, fill_opacity=strength)


def under_sheet(orientation):
    """What lies behind the upper sheet: the shadow and one more sheet, of which an edge is seen."""
    picture = _surface()
    x, y, width, height = SHEET[orientation]
    _shadow(picture, x, y, width, height)
    picture.rect(x + 1.5, y + 1.5, width - 1, height - 1, MID, EDGE, FINE_LINE)
    return picture


def upper_sheet(orientation):
    picture = _surface()
    x, y, width, height = SHEET[orientation]
    picture.rect(x + 0.5, y + 0.5, width - 1, height - 1, picture.gradient(PAPER, "#f6f8fa", 0, 0, 1, 1), EDGE, FINE_LINE)
    return picture


# -- booklets ----------------------------------------------------------------------------------------------------------------


def _leaf(orientation, edge, out, drop):
    """A leaf behind the cover that is turned by the fold: its free edge is `out` further and `drop` lower."""
    x, y, width, height = _turned(*SHEET[orientation], PORTRAIT)
    if edge == LEFT:
        return [(x, y), (x + width + out, y + drop), (x + width + out, y + height + drop * 0.6), (x, y + height)]
    if edge == RIGHT:
        return [(x + width, y), (x - out, y + drop), (x - out, y + height + drop * 0.6), (x + width, y + height)]
    return [(x, y), (x + drop, y + height + out), (x + width + drop * 0.6, y + height + out), (x + width, y)]


def under_booklet(edge):
    """The leaves of an open booklet, fanned out behind its cover."""
    picture = _surface()
    orientation = LANDSCAPE if edge == TOP else PORTRAIT
    picture.poly(_leaf(orientation, edge, 14, 6.5), INK, fill_opacity=0.16)
    for out, drop, fill in ((11.5, 5, DARK), (8, 3.4, MID), (4.5, 1.8, LIGHT)):
        picture.poly(_leaf(orientation, edge, out, drop), fill, EDGE, FINE_LINE)
    return picture


def upper_booklet(edge):
    """The cover, rounded toward the fold, with the two staples on it."""
    picture = _surface()
    x, y, width, height = SHEET[LANDSCAPE if edge == TOP else PORTRAIT]
    picture.rect(x + 0.5, y + 0.5, width - 1, height - 1, PAPER, EDGE, FINE_LINE)
    depth = 5
    band = {LEFT: (x, y, depth, height), RIGHT: (x + width - depth, y, depth, height), TOP: (x, y, width, depth)}[edge]
    run = {LEFT: (SHADE, PAPER, 0, 0, 1, 0), RIGHT: (PAPER, SHADE, 0, 0, 1, 0), TOP: (SHADE, PAPER, 0, 0, 0, 1)}[edge]
    picture.rect(*band, picture.gradient(*run), fill_opacity=0.75)
    picture.rect(x + 0.5, y + 0.5, width - 1, height - 1, None, EDGE, FINE_LINE)
    for part in (0.27, 0.73):
        if edge == TOP:
            picture.line([(x + width * part - 4, y + 0.8), (x + width * part + 4, y + 0.8)], INK, 1.8)
        else:
            at = x + 0.8 if edge == LEFT else x + width - 0.8
            picture.line([(at, y + height * part - 4), (at, y + height * part + 4)], INK, 1.8)
    return picture


# -- a block with an adhesive spine ------------------------------------------------------------------------------------------


def under_block(edge):
    """The sheets below the upper one and the strip of adhesive; the upper sheet lies at its own offset on them."""
    picture = _surface()
    orientation = LANDSCAPE if edge == TOP else PORTRAIT
    x, y, width, height = SHEET[orientation]
    dx, dy = {LEFT: (SPINE, 0), RIGHT: (SPINE_RIGHT, 0), TOP: (0, SPINE)}[edge]
    x, y = x + dx, y + dy
    _shadow(picture, x, y + 3, width, height - 1 if edge == TOP else height)
    for depth in (5, 3.3, 1.6):
        picture.rect(x + 0.5, y + 0.5 + depth, width - 1, height - 1, LIGHT if depth == 3.3 else PAPER, SOFT, 0.8)
    thick, down = SPINE - 0.5, 5
    if edge == LEFT:
        strip = [(x + 0.5, y + 0.5), (x + 0.5, y + height + down - 0.5), (x - thick, y + height - 1), (x - thick, y + 3)]
        lines = [[(x - thick * p, y + 0.5 + 2.5 * p), (x - thick * p, y + height + down - 0.5 - 5.5 * p)] for p in (0.35, 0.7)]
    elif edge == RIGHT:
        right = x + width - 0.5
        strip = [(right, y + 0.5), (right, y + height + down - 0.5), (right + thick, y + height - 1), (right + thick, y + 3)]
        lines = [[(right + thick * p, y + 0.5 + 2.5 * p), (right + thick * p, y + height + down - 0.5 - 5.5 * p)]
                 for p in (0.35, 0.7)]
    else:
        strip = [(x + 0.5, y + 0.5), (x + width - 0.5, y + 0.5), (x + width - 3, y - thick), (x + 3, y - thick)]
        lines = [[(x + 0.5 + 2.5 * p, y - thick * p), (x + width - 0.5 - 2.5 * p, y - thick * p)] for p in (0.35, 0.7)]
    picture.poly(strip, BLUE, "#1f4f82", FINE_LINE)
    for line in lines:
        picture.line(line, SOFT, 0.7, stroke_opacity=0.7)
    return picture


def pictures():
    for orientation, name in ((PORTRAIT, "portrait"), (LANDSCAPE, "landscape")):
        yield 15000 + orientation, f"under-sheet-{name}", under_sheet(orientation)
        yield 15070 + orientation, f"upper-sheet-{name}", upper_sheet(orientation)
    for place, edge in enumerate((LEFT, RIGHT, TOP)):
        yield 15002 + place, f"under-booklet-{edge}", under_booklet(edge)
        yield 16030 + place, f"under-block-{edge}", under_block(edge)
    for place, edge in enumerate((RIGHT, LEFT, TOP)):
        yield 15072 + place, f"upper-booklet-{edge}", upper_booklet(edge)
