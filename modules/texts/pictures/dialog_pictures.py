"""Pictures at fixed places of pages and dialogs: watermark modes, quality samples, rows of the per-page list, output and
partners of a fax, and the hands that drag a stamp."""

from status import COVER, GREEN, SEPARATOR, telephone
from svg import (BLUE, EDGE, INK, LIGHT, MID, ORANGE, PAPER, RUST, SHADE, SYMBOL_LINE, TEXT, Picture, arrow, number, text_lines,
                 word)

# -- watermark modes ---------------------------------------------------------------------------------------------------------


def watermark_mode(mode):
    """0 none, 1 over the page, 2 seen through the page's text."""
    picture = Picture(64, 64)
    picture.rect(13, 5, 42, 57, INK, fill_opacity=0.2, radius=1)
    picture.rect(10.5, 2.5, 42, 57, PAPER, EDGE, SYMBOL_LINE)

    def stamp(color, strength):
        with picture.group("translate(31.5 31) rotate(-42)", opacity=strength):
            word(picture, "COPY", 0, 0, 11.5, color, 3.2, 6.4)

    if mode == 2:
        stamp(ORANGE, 0.4)
    picture.rect(16, 8.5, 18, 2.6, BLUE)
    text_lines(picture, 16, 15, 31, 41, 4.6, TEXT if mode != 2 else EDGE, 1.7)
    if mode == 1:
        with picture.group("translate(31.5 31) rotate(-42)"):
            word(picture, "COPY", 0, 0, 11.5, PAPER, 5.4, 6.4)
        stamp(ORANGE, 1)
    return picture


# -- quality samples: text, a drawing and a photo, as a job would hold them ---------------------------------------------------

SAMPLE = (120, 160)
PHOTO = (10, 100, 100, 52)  # left, top, width, height; the mask of the samples is black there


def _photo(picture, black):
    """Hills before a sky that darkens upward, in greys; in black alone only shapes are left."""
    x, y, width, height = PHOTO
    sky = picture.gradient("#6a6a6a", "#ececec")
    hill = picture.gradient("#8a8a8a", "#3c3c3c")
    near = picture.gradient("#5a5a5a", "#101010")
    picture.rect(x, y, width, height, PAPER if black else sky)
    picture.circle(x + 74, y + 15, 8, PAPER, "#000000" if black else None, 1)
    picture.path(f"M{x} {y + 36}C{x + 14} {y + 18} {x + 26} {y + 14} {x + 40} {y + 30}S{x + 70} {y + 40} {x + width} {y + 20}"
                 f"V{y + height}H{x}z", "#000000" if black else hill)
    meadow = f"C{x + 24} {y + 34} {x + 50} {y + 50} {x + width - 1} {y + 40}"
    picture.path(f"M{x} {y + 46}H{x + 1}{meadow}H{x + width}V{y + height}H{x}z", PAPER if black else near)
    if black:
        picture.path(f"M{x + 1} {y + 46}{meadow}", stroke="#000000", line=0.8)
    for tree in (14, 24, 80):
        top = y + 28
        picture.poly([(x + tree, top), (x + tree + 5, top + 16), (x + tree - 5, top + 16)], PAPER if black else "#262626",
                     "#000000" if black else None, 0.8)


def sample(black_text, black_photo):
    """The inks of text and drawing are greys, or black; the photo keeps its greys, or is black as well."""
    picture = Picture(*SAMPLE)
    ink, soft, fill = ("#000000", "#000000", "#000000") if black_text else ("#404040", "#707070", "#a8a8a8")
    picture.rect(0, 0, *SAMPLE, PAPER)
    word(picture, "SAMPLE", 36.5, 14, 10.5, ink, 2.1, 5.2)
    word(picture, "TO A DOT", 91, 15.8, 5.4, soft, 0.8, 5.6)
    for row, text in enumerate(("THE LETTERS OF A SMALL PRINT", "STAY CLEAN AT THEIR EDGES AND", "CAN BE READ")):
        pitch, height = 5.25, 3.9
        word(picture, text, 10 + (pitch * (len(text) - 1) + 4) * height / 12, 27 + row * 6.2, height, ink if row == 0 else soft,
             0.65,
             pitch)
    # The drawing: bars of a chart and a circle with fine spokes.
    picture.line([(10, 48), (10, 93), (60, 93)], ink, 1.2)
    for place, height in enumerate((16, 27, 21, 37)):
        picture.rect(14.5 + place * 11, 93 - height, 7, height, fill if place % 2 == 0 else PAPER, ink, 0.9)
    picture.line([(18, 72), (29, 61), (40, 66), (51, 51)], soft, 0.8)
    picture.circle(88, 71, 21, None, ink, 1.2)
    picture.circle(88, 71, 10, fill if not black_text else None, ink, 0.7)
    for place in range(18):
        with picture.group(f"rotate({place * 20} 88 71)"):
            picture.line([(88, 61), (88, 50)], soft, 0.5)
    _photo(picture, black_photo)
    return picture


def sample_mask():
    picture = Picture(*SAMPLE)
    picture.rect(0, 0, *SAMPLE, "#ffffff")
    picture.rect(*PHOTO, "#000000")
    return picture


# -- rows of the per-page list -----------------------------------------------------------------------------------------------


def _row_page(picture, x=3.5, y=1.5, fill=PAPER, stroke=EDGE, width=9, height=12):
    picture.rect(x, y, width, height, fill, stroke, 1)


def _row_lines(picture, x=5.5, y=4, color=BLUE, rows=3):
    for row in range(rows):
        picture.rect(x, y + row * 2.5, 5 if row < rows - 1 else 3.2, 1.1, color)


def one_page(picture, color):
    _row_page(picture, 3.5, 2)
    _row_lines(picture, 5.5, 4.6, color)


def two_pages(picture, color, behind):
    _row_page(picture, 5.5, 0.5, behind)
    _row_page(picture, 2.5, 3)
    _row_lines(picture, 4.5, 5.6, color)
    picture.rect(12.2, 3.4, 1.2, 1.1, color)
    picture.rect(12.2, 5.9, 1.2, 1.1, color)


def blank_sheet(picture):
    _row_page(picture, 3.5, 2, "#fffdf5", ORANGE)
    picture.line([(8, 5.4), (8, 10.6)], ORANGE, 1.5)
    picture.line([(5.4, 8), (10.6, 8)], ORANGE, 1.5)


def front_cover(picture, printed):
    _row_page(picture, 6, 0.8)
    _row_page(picture, 2.5, 3, COVER, RUST)
    if printed:
        _row_lines(picture, 4.5, 5.6, RUST)


def back_cover(picture, printed):
    _row_page(picture, 6, 0.8, COVER, RUST)
    for row in range(3 if printed else 0):
        picture.rect(12.3, 3.2 + row * 2.5, 1.6, 1.1, RUST)
    _row_page(picture, 2.5, 3)


def chapter_start(picture):
    picture.path("M8 4.5C6.4 3.2 3.6 3 1.5 3.6V12C3.6 11.4 6.4 11.7 8 13 9.6 11.7 12.4 11.4 14.5 12V3.6C12.4 3 9.6 3.2 8 4.5z",
                 PAPER, EDGE, 1)
    picture.line([(8, 4.5), (8, 13)], EDGE, 1)
    picture.poly([(10.4, 2.4), (13, 2.4), (13, 7), (11.7, 5.8), (10.4, 7)], ORANGE)


def tab_sheet(picture):
    picture.poly([(2.5, 2), (10.5, 2), (10.5, 5), (13.5, 5), (13.5, 8.6), (10.5, 8.6), (10.5, 14), (2.5, 14)], SEPARATOR, GREEN,
                 1)


def film(picture):
    picture.rect(3.5, 2, 9, 12, "#a9d3f5", BLUE, 1, fill_opacity=0.6)
    picture.poly([(4.6, 13.4), (9.4, 2.6), (11.6, 2.6), (6.8, 13.4)], PAPER, fill_opacity=0.8)


def film_and_sheet(picture):
    _row_page(picture, 6, 3)
    picture.rect(1.5, 1.5, 9, 12, "#a9d3f5", BLUE, 1, fill_opacity=0.7)


def punched(picture):
    _row_page(picture, 3.5, 2)
    for y in (5, 8, 11):
        picture.circle(5.7, y, 0.9, EDGE)


def stapled(picture):
    _row_page(picture, 3.5, 2)
    picture.line([(5, 5.6), (7.2, 3.4)], INK, 1.5)
    _row_lines(picture, 6, 7.4, BLUE, 2)


# In the order of the numbers. The list shows the first, the one-sided and the two-sided page.
ROWS = (("blank-sheet", blank_sheet), ("printed-sheet", one_page, ORANGE), ("printed-both-sides", two_pages, ORANGE, COVER),
        ("front-cover-blank", front_cover, False), ("front-cover-printed", front_cover, True),
        ("back-cover-blank", back_cover, False), ("back-cover-printed", back_cover, True),
        ("chapter", chapter_start), ("tab-sheet", tab_sheet), ("one-sided", one_page, BLUE),
        ("two-sided", two_pages, BLUE, "#cfe1f4"), ("transparency", film), ("interleaf", film_and_sheet),
        ("punched", punched), ("stapled", stapled))

# -- hands -------------------------------------------------------------------------------------------------------------------


def hand(closed):
    """The pointer's hot spot is the middle of the palm, (16, 16)."""
    picture = Picture(32, 32)
    if closed:
        outline = ("M9.5 27.5C8.6 24 6.2 21.6 5.8 18.6 5.5 16.6 6.6 15.4 8.4 15.6V13.6C8.4 11 12 10.4 12.6 12.6 12.8 10 16.4 9.8 16.8 12.2 "
                   "17.4 10 20.6 10.2 21 12.8 21.8 11.2 24.8 11.8 24.8 14.4V20C24.8 23.4 23.6 25 23.4 27.5z")
        knuckles = "M12.6 12.8V15.6M16.8 12.6V15.6M21 13V15.6M8.4 15.6V18.6"
    else:
        outline = ("M10.4 28.5C9.4 25.2 6.6 22.4 4.6 18.8 3.4 16.6 5.8 15 7.6 16.8L9.6 18.8V7.4C9.6 5 12.8 5 13 7.4V5.2C13 2.6 16.6 2.6 16.8 5.2V7"
                   "C16.9 4.6 20.4 4.6 20.5 7V9.8C20.6 7.6 23.8 7.6 24 10V20C24 23.6 22.6 25.2 22.4 28.5z")
        knuckles = "M13 7.4V14.6M16.8 7V14.6M20.5 9.6V14.8"
    picture.path(outline, PAPER, PAPER, 3)
    picture.path(outline, PAPER, INK, 1.4)
    picture.path(knuckles, stroke=INK, line=1.3)
    return picture


# -- output and partners of a fax, 48 x 48 -----------------------------------------------------------------------------------


def person(picture, x, y, size, color, edge):
    """Head and shoulders; (x, y) is the middle of the shoulders' lower edge."""
    picture.path(f"M{number(x - size * 0.42)} {number(y)}C{number(x - size * 0.42)} {number(y - size * 0.52)} {number(x + size * 0.42)} "
                 f"{number(y - size * 0.52)} {number(x + size * 0.42)} {number(y)}z", color, edge, SYMBOL_LINE)
    picture.circle(x, y - size * 0.58, size * 0.22, color, edge, SYMBOL_LINE)


def output_printer():
    picture = Picture(48, 48)
    picture.rect(13.5, 3.5, 21, 16, PAPER, EDGE, SYMBOL_LINE)
    text_lines(picture, 17, 7.5, 14, 8, 3.6, line=1.5)
    picture.poly([(5, 24), (10, 17.5), (38, 17.5), (43, 24)], LIGHT, EDGE, SYMBOL_LINE)
    picture.rect(14, 20, 20, 1.8, SHADE, radius=0.9)
    picture.rect(4.5, 24, 39, 13.5, MID, EDGE, SYMBOL_LINE, 2)
    picture.circle(38.5, 28, 1.5, GREEN)
    picture.rect(11, 31, 26, 2.6, "#56636f")
    picture.poly([(12.5, 32.4), (35.5, 32.4), (38.5, 44.5), (9.5, 44.5)], PAPER, EDGE, SYMBOL_LINE)
    text_lines(picture, 15, 35.6, 18, 8, 3.2, BLUE, 1.5)
    return picture


def output_fax():
    picture = Picture(48, 48)
    picture.rect(15.5, 3.5, 21, 20, PAPER, EDGE, SYMBOL_LINE)
    text_lines(picture, 19, 7.5, 14, 9, 3.6, line=1.5)
    picture.poly([(4.5, 27), (9, 19.5), (39, 19.5), (43.5, 27)], LIGHT, EDGE, SYMBOL_LINE)
    picture.rect(13, 22, 24, 1.8, SHADE, radius=0.9)
    picture.rect(4.5, 27, 39, 17, MID, EDGE, SYMBOL_LINE, 2)
    with picture.group("translate(8 29.5) scale(.82)"):
        telephone(picture, 0, 0)
    for place in range(9):
        picture.rect(29.5 + place % 3 * 4, 30.5 + place // 3 * 3.8, 2.6, 2.3, PAPER, EDGE, 0.6)
    return picture


def cover_sheet(on):
    picture = Picture(48, 48)
    picture.rect(18.5, 4.5, 22, 30, PAPER, EDGE, SYMBOL_LINE)
    text_lines(picture, 33.5, 10, 4.6, 20, 3.8, line=1.5, last=1)
    if on:
        picture.rect(7.5, 12.5, 23, 31, COVER, RUST, SYMBOL_LINE)
        picture.rect(11.5, 17, 15, 5, ORANGE)
        text_lines(picture, 11.5, 26, 15, 14, 4, "#d9a764", 1.7)
    else:
        picture.rect(7.5, 12.5, 23, 31, None, SHADE, 1.4, stroke_dasharray="3 2.6", stroke_linecap="butt")
        text_lines(picture, 22, 10, 16, 2, 3.8, line=1.5)
    return picture


def partner(receiver):
    """Somebody beside a telephone: who sends has the sheet leave, who receives has it come."""
    picture = Picture(48, 48)
    person(picture, 15, 43, 26, "#cfe1f4" if not receiver else COVER, BLUE if not receiver else RUST)
    picture.rect(30.5, 21.5, 13, 17, PAPER, EDGE, SYMBOL_LINE)
    text_lines(picture, 33, 25, 8, 11, 3.2, line=1.4)
    if receiver:
        arrow(picture, (37, 4), (37, 17), ORANGE, 2.6, 5.5)
    else:
        arrow(picture, (37, 17), (37, 4), ORANGE, 2.6, 5.5)
    return picture


def pictures():
    for mode, name in enumerate(("off", "over", "through")):
        yield 15850 + mode, f"watermark-{name}", watermark_mode(mode)
    yield 11202, "sample", sample(False, False)
    yield 11203, "sample-black-text", sample(True, False)
    yield 11204, "sample-black", sample(True, True)
    yield 11205, "sample-mask", sample_mask()
    for place, (name, draw, *options) in enumerate(ROWS):
        picture = Picture(16, 16)
        draw(picture, *options)
        yield 14000 + place, f"row-{name}", picture
    yield 11000, "hand-open", hand(False)
    yield 11001, "hand-closed", hand(True)
    yield 17030, "output-printer", output_printer()
    yield 17031, "output-fax", output_fax()
    yield 17032, "cover-sheet-off", cover_sheet(False)
    yield 17033, "cover-sheet-on", cover_sheet(True)
    yield 17034, "sender", partner(False)
    yield 17035, "receiver", partner(True)
