"""The first row of the status panel: symbols of the job, its sheets, overlay, stamp and users.

Symbols that lie over each other share a frame: a job symbol leaves its lower right corner to the badge of the output method, and the
layers of the sheet symbol are sheets of one pile.
"""

from svg import (AMBER, BLUE, EDGE, INK, LIGHT, MID, ORANGE, PAPER, RUST, SHADE, SOFT, SYMBOL_LINE, TEXT, Picture, arrow,
                 dog_ear, number, sheet, text_lines, word)

WIDE, HIGH = 34, 40
GREEN = "#3f9b57"


def upper():
    return Picture(WIDE, HIGH)


# -- job ---------------------------------------------------------------------------------------------------------------------


def _written(picture, x, y, width, height, pitch=3, heading=BLUE):
    """A sheet with a heading and text."""
    sheet(picture, x, y, width, height)
    picture.rect(x + 2.6, y + 3, width * 0.45, 1.5, heading)
    text_lines(picture, x + 2.6, y + 6.4, width - 5.2, height - 8, pitch, line=1.1)


def printer():
    """A job that comes out on paper."""
    picture = upper()
    _written(picture, 8.5, 2.7, 15, 14)
    picture.poly([(3, 18), (6.5, 13.5), (25.5, 13.5), (29, 18)], LIGHT, EDGE, SYMBOL_LINE)
    picture.rect(9, 15.4, 14, 1.2, SHADE, radius=0.6)
    picture.rect(2.7, 18, 26.6, 10.6, MID, EDGE, SYMBOL_LINE, 1.5)
    picture.circle(25.4, 21.4, 1.2, GREEN)
    picture.rect(7.5, 23.6, 17, 2, "#56636f")
    picture.poly([(8.5, 24.6), (23.5, 24.6), (25.5, 33.4), (6.5, 33.4)], PAPER, EDGE, SYMBOL_LINE)
    text_lines(picture, 10, 27, 12, 6, 2.6, BLUE, 1.1)
    return picture


def telephone(picture, x, y):
    """A receiver that lies on its telephone; 22 wide and 17 high."""
    with picture.group(f"translate({number(x)} {number(y)})"):
        picture.path("M4.5 16.5 7 9.5H15L17.5 16.5z", MID, EDGE, SYMBOL_LINE)
        picture.circle(11, 13, 2.3, PAPER, EDGE, 1)
        picture.path("M1 7.2C1 3 5 .8 11 .8S21 3 21 7.2C21 9 16 9 16 7.4V5.8C13.5 4.8 8.5 4.8 6 5.8V7.4C6 9 1 9 1 7.2z", BLUE,
                     "#1f4f82", 1)


def fax(cover):
    """A fax machine, and the cover sheet that goes first."""
    picture = upper()
    if cover:
        picture.rect(13.7, 2.7, 14, 17, "#fdf0dc", ORANGE, SYMBOL_LINE)
        picture.rect(16.4, 5.6, 8.6, 2.4, ORANGE)
        text_lines(picture, 16.4, 10, 8.6, 4, 2.6, "#d9a764", 1.1)
        _written(picture, 7.5, 7.7, 14, 14)
    else:
        _written(picture, 9.5, 3.7, 15, 18)
    picture.poly([(3, 23), (6, 17.5), (26.5, 17.5), (29.5, 23)], LIGHT, EDGE, SYMBOL_LINE)
    picture.rect(8.5, 19.4, 15.5, 1.4, SHADE, radius=0.7)
    picture.rect(2.7, 23, 27, 13.3, MID, EDGE, SYMBOL_LINE, 1.5)
    picture.path("M5 29.5C3.9 26 8 24.9 10 24.9S16 26 15 29.5C14.7 30.8 12.3 30.6 12.2 29.3V28.3C11 27.8 9 27.8 7.8 28.3V29.3C7.7 30.6 "
                 "5.3 30.8 5 29.5z", BLUE, "#1f4f82", 0.8)
    for place in range(6):
        picture.rect(18.4 + place % 3 * 3.3, 27 + place // 3 * 3.4, 2.1, 2, PAPER, EDGE, 0.5)
    picture.rect(5, 32.6, 10, 1.6, SHADE, radius=0.8)
    return picture


def box_tray(picture, x, y, width, height):
    """An open box from the front."""
    lip = height * 0.42
    picture.poly([(x, y + lip), (x + width * 0.14, y), (x + width * 0.86, y), (x + width, y + lip)], SHADE, EDGE, SYMBOL_LINE)
    picture.rect(x, y + lip, width, height - lip, AMBER, RUST, SYMBOL_LINE, 1)
    picture.rect(x + width * 0.3, y + lip + (height - lip) * 0.3, width * 0.4, max(2, (height - lip) * 0.28), PAPER, RUST, 0.8)


def into_box():
    """A job without paper: a document that goes into a box."""
    picture = upper()
    dog_ear(picture, 9.7, 2.7, 14, 17, 4)
    text_lines(picture, 12.2, 8.4, 9, 8, 2.7, line=1.1)
    box_tray(picture, 3.7, 18.5, 26, 17.5)
    arrow(picture, (16.7, 12), (16.7, 23.5), BLUE, 2.2, 4.5)
    return picture


def form_being_made():
    """A form with its ruled fields, and the pencil that draws it."""
    picture = upper()
    form(picture, 4.7, 3.7, 21, 28)
    pencil(picture, 18.5, 33.5)
    return picture


def forward():
    """Sheets on their way to two places."""
    picture = upper()
    _written(picture, 3.7, 8.7, 14, 19)
    for y in (12, 25):
        arrow(picture, (19.5, 18.5), (29, y), BLUE, 2, 4.2)
    return picture


def form(picture, x, y, width, height):
    """A sheet with the frames of a form, no text."""
    sheet(picture, x, y, width, height)
    left, top, right, bottom = x + 3, y + 3.5, x + width - 3, y + height - 3.5
    picture.rect(left, top, right - left, 4, "#c5dbf0", BLUE, 1)
    picture.rect(left, top + 6.5, right - left, bottom - top - 6.5, PAPER, BLUE, 1)
    across = left + (right - left) * 0.38
    picture.line([(across, top + 6.5), (across, bottom)], BLUE, 1)
    for part in (0.34, 0.67):
        down = top + 6.5 + (bottom - top - 6.5) * part
        picture.line([(left, down), (right, down)], BLUE, 1)


def pencil(picture, x, y):
    """A pencil whose point is at (x, y)."""
    with picture.group(f"translate({number(x)} {number(y)}) rotate(40)"):
        picture.poly([(0, 0), (-2.4, -5), (2.4, -5)], "#f6d9b0", INK, 1)
        picture.poly([(0, 0), (-0.9, -1.9), (0.9, -1.9)], INK)
        picture.rect(-2.4, -18, 4.8, 13, ORANGE, RUST, 1)
        picture.rect(-2.4, -20.5, 4.8, 3.2, "#e0a6a6", RUST, 1, 0.8)


# Badges of the output method: in the lower right corner, on a disk that parts them from what is below.

BADGE_X, BADGE_Y, BADGE = 24.2, 29.8, 8.6


def badge():
    picture = upper()
    picture.circle(BADGE_X, BADGE_Y, BADGE, PAPER, EDGE, 1.1)
    return picture


def lock():
    picture = badge()
    picture.path("M21.4 28.8V26.6A2.8 2.8 0 0 1 27 26.6V28.8", stroke=EDGE, line=1.7)
    picture.rect(19.7, 28.6, 9, 6.4, ORANGE, RUST, 1, 1)
    picture.circle(24.2, 31.2, 1, INK)
    picture.line([(24.2, 31.4), (24.2, 33)], INK, 1.1)
    return picture


def box_badge():
    picture = badge()
    picture.poly([(18.8, 29), (20.4, 26), (28, 26), (29.6, 29)], SHADE, EDGE, 1)
    picture.rect(18.8, 29, 10.8, 6, AMBER, RUST, 1)
    picture.rect(22.4, 30.6, 3.6, 2.2, PAPER, RUST, 0.7)
    arrow(picture, (24.2, 22.8), (24.2, 27.6), BLUE, 1.5, 2.4)
    return picture


def hold():
    """A job that waits until it is released."""
    picture = badge()
    for x in (20.9, 25.3):
        picture.rect(x, 25.8, 2.5, 8, BLUE, radius=0.6)
    return picture


def clock():
    """A job that is printed later."""
    picture = badge()
    picture.circle(BADGE_X, BADGE_Y, 6.2, PAPER, BLUE, 1.6)
    picture.line([(24.2, 26.2), (24.2, 30), (26.9, 31.6)], INK, 1.5)
    return picture


def magnifier():
    """A proof: one copy to look at before the others."""
    picture = badge()
    picture.circle(22.9, 28.3, 3.9, "#d5e6f6", BLUE, 1.7)
    picture.line([(25.9, 31.3), (29, 34.4)], ORANGE, 2.4)
    return picture


def bell():
    picture = badge()
    picture.path("M19.5 32.4C21.2 31 20.4 25.6 24.2 25.6S27.2 31 28.9 32.4z", ORANGE, RUST, 1)
    picture.circle(24.2, 34, 1.1, RUST)
    return picture


# -- sheets: layers of one pile, from the back cover sheet to the front cover sheet --------------------------------------------

SHEET_WIDE, SHEET_HIGH, STEP = 18.5, 24, 3.1
LAYERS = ("front sheet", "front cover", "body", "back cover", "back sheet")
COVER, SEPARATOR = "#fbe3bf", "#c9e3cf"


def _layer(picture, layer, fill=PAPER, stroke=EDGE, shift=0.0):
    """The sheet's left and top; the pile recedes to the upper right."""
    place = LAYERS.index(layer) + shift
    x, y = 1.7 + place * STEP, HIGH - 3.2 - SHEET_HIGH - place * STEP
    picture.rect(x, y, SHEET_WIDE, SHEET_HIGH, fill, stroke, 1.2)
    return x, y


def _text_on(picture, at, heading=BLUE, color=TEXT):
    x, y = at
    picture.rect(x + 2.6, y + 3, 8, 1.7, heading)
    text_lines(picture, x + 2.6, y + 7.2, SHEET_WIDE - 5.2, 13, 3.1, color, 1.2)


def sheet_symbol(layer, printed=False, fill=PAPER, stroke=EDGE):
    picture = upper()
    at = _layer(picture, layer, fill, stroke)
    if printed:
        _text_on(picture, at, ORANGE, "#dcb27a")
    elif fill == COVER:
        x, y = at
        picture.path(f"M{number(x + 1.6)} {number(y + SHEET_HIGH - 1.6)}V{number(y + SHEET_HIGH - 6)}"
                     f"L{number(x + 6)} {number(y + SHEET_HIGH - 1.6)}z", "#f3cf9a")
    return picture


def separator_sheet(layer):
    """A sheet that shows whose job begins or ends: coloured, with a bar."""
    picture = upper()
    x, y = _layer(picture, layer, SEPARATOR, GREEN)
    picture.rect(x + 2.8, y + 3.4, SHEET_WIDE - 5.6, 3.2, GREEN)
    picture.rect(x + 2.8, y + 9, SHEET_WIDE - 9, 1.4, "#7fbb8f")
    return picture


def body_symbol(inserted=False, two_sided=False):
    """The job's own sheets; `inserted`: between them lies one of the list, `two_sided`: the list turns to two sides."""
    picture = upper()
    _layer(picture, "body", "#bcd7f2" if inserted else PAPER, BLUE if inserted else EDGE, 0.5)
    at = _layer(picture, "body")
    _text_on(picture, at)
    if two_sided:
        x, y = at[0] + SHEET_WIDE, at[1] + SHEET_HIGH
        picture.poly([(x - 8, y), (x, y - 8), (x, y)], SOFT)
        picture.poly([(x - 8, y), (x, y - 8), (x - 7.4, y - 7.4)], "#bcd7f2", BLUE, 1.1)
    return picture


def plain_pile():
    """Nothing but sheets of one kind."""
    picture = upper()
    for place in (2, 1):
        picture.rect(6.7 + place * 2.6, 9.2 - place * 2.6, 19, 26, PAPER, EDGE, 1.2)
    picture.rect(6.7, 9.2, 19, 26, PAPER, EDGE, SYMBOL_LINE)
    picture.rect(9.6, 12.6, 8.4, 1.8, BLUE)
    text_lines(picture, 9.6, 17.2, 13.2, 14, 3.2, line=1.2)
    return picture


def coloured_pile(color, edge):
    picture = upper()
    for place in (2, 1, 0):
        picture.rect(6.7 + place * 2.6, 9.2 - place * 2.6, 19, 26, color if place == 1 else PAPER, edge if place == 1 else EDGE,
                     1.2)
    return picture


# -- overlay and stamp -------------------------------------------------------------------------------------------------------


def _page_of_text(picture, x, y, width=19, height=26, fill=PAPER, lines=TEXT):
    picture.rect(x, y, width, height, fill, EDGE, SYMBOL_LINE)
    text_lines(picture, x + 3, y + 4, width - 6, height - 6, 3.3, lines, 1.3)


def no_overlay():
    picture = upper()
    picture.rect(11.7, 4.7, 18, 25, None, SHADE, 1.2, stroke_dasharray="2.2 2.2", stroke_linecap="butt")
    _page_of_text(picture, 4.7, 9.7)
    return picture


def overlay_made():
    picture = upper()
    form(picture, 9.7, 3.7, 20, 26)
    picture.circle(10.4, 29.4, 7.6, PAPER, EDGE, 1.1)
    picture.line([(10.4, 25.4), (10.4, 33.4)], ORANGE, 2.6)
    picture.line([(6.4, 29.4), (14.4, 29.4)], ORANGE, 2.6)
    return picture


def overlay(front):
    """The form and the page; the one in front covers the other."""
    picture = upper()
    if not front:
        form(picture, 11.7, 2.7, 19, 25)
        _page_of_text(picture, 3.7, 10.7, 19, 26)
    else:
        _page_of_text(picture, 11.7, 2.7, 19, 25)
        form(picture, 3.7, 10.7, 19, 26)
    return picture


def stamp_mark(picture, color=ORANGE, **more):
    """A rubber stamp's print across the page."""
    with picture.group("translate(17 20) rotate(-32)", **more):
        picture.rect(-13, -5, 26, 10, None, color, 1.8, 1.6)
        word(picture, "COPY", 0, 0, 5, color, 1.3, 6.2)


def stamped(order):
    """0 no stamp, 1 over the page, 2 under the page."""
    picture = upper()
    picture.rect(5.7, 4.7, 22.6, 31, PAPER, EDGE, SYMBOL_LINE)
    if order == 2:
        stamp_mark(picture, ORANGE, opacity=0.55)
    text_lines(picture, 9, 9, 16, 25, 3.8, TEXT if order != 2 else EDGE, 1.4)
    if order == 1:
        with picture.group("translate(17 20) rotate(-32)"):
            picture.rect(-13, -5, 26, 10, PAPER, radius=1.6, fill_opacity=0.9)
        stamp_mark(picture)
    if order == 0:
        with picture.group("translate(17 20) rotate(-32)"):
            picture.rect(-11, -4.4, 22, 8.8, PAPER, SHADE, 1.2, 1.6, stroke_dasharray="2 2", stroke_linecap="butt")
    return picture


def department():
    """The people of a department whose pages are counted."""
    picture = upper()
    for x, y, size, fill, edge in ((9.5, 25, 13, PAPER, EDGE), (24.5, 25, 13, PAPER, EDGE), (17, 33.5, 17.5, "#cfe1f4", BLUE)):
        picture.path(f"M{number(x - size * 0.48)} {number(y)}C{number(x - size * 0.48)} {number(y - size * 0.66)} "
                     f"{number(x + size * 0.48)} {number(y - size * 0.66)} {number(x + size * 0.48)} {number(y)}z", fill, edge, SYMBOL_LINE)
        picture.circle(x, y - size * 0.74, size * 0.26, fill, edge, SYMBOL_LINE)
    return picture


def pictures():
    jobs = {0: ("fax-with-cover", fax(True)), 1: ("fax", fax(False)), 2: ("save", into_box()), 3: ("forward", forward()),
            4: ("lock", lock()), 5: ("hold", hold()), 6: ("box", box_badge()), 7: ("print", printer()),
            8: ("form-made", form_being_made()), 9: ("later", clock()), 10: ("notice", bell()), 11: ("proof", magnifier())}
    for symbol, (name, picture) in jobs.items():
        yield {9: 15610, 10: 15620, 11: 15622}.get(symbol, 15590 + symbol), f"job-{name}", picture
    sheets = {0: ("plain", plain_pile()), 1: ("front-sheet", separator_sheet("front sheet")),
              2: ("front-cover-blank", sheet_symbol("front cover", fill=COVER)),
              3: ("front-cover-printed", sheet_symbol("front cover", True, COVER)), 4: ("body", body_symbol()),
              5: ("body-inserted", body_symbol(True)), 6: ("body-two-sided", body_symbol(True, True)),
              7: ("back-cover-blank", sheet_symbol("back cover", fill=COVER)),
              8: ("back-cover-printed", sheet_symbol("back cover", True, COVER)),
              9: ("back-sheet", separator_sheet("back sheet")), 10: ("blue-sheet", coloured_pile("#bcd7f2", BLUE)),
              11: ("green-sheet", coloured_pile(SEPARATOR, GREEN)), 12: ("orange-sheet", coloured_pile(COVER, ORANGE))}
    for symbol, (name, picture) in sheets.items():
        yield 15579 if symbol == 0 else 15569 + symbol if symbol < 10 else 15602 + symbol, f"sheets-{name}", picture
    yield 15510, "overlay-none", no_overlay()
    yield 15511, "overlay-made", overlay_made()
    yield 15512, "overlay-behind", overlay(False)
    yield 15839, "overlay-in-front", overlay(True)
    for order, name in enumerate(("none", "over", "under")):
        yield 15500 + order, f"stamp-{name}", stamped(order)
    yield 15644, "department", department()
