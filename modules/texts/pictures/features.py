"""The second row of the status panel: a symbol for each feature that is on."""

from svg import (AMBER, BLUE, DARK, EDGE, MID, ORANGE, PAPER, RUST, SHADE, SKY, SOFT, SYMBOL_LINE, TEXT, Picture, arrow,
                 letter_a, number, sheet, text_lines, word)

SQUARE = 34


def lower():
    return Picture(SQUARE, SQUARE)


def _film(picture, x, y, width, height):
    """A transparency: one sees through it, and light glints on it."""
    picture.rect(x, y, width, height, "#c3e0f8", None, None, 1, fill_opacity=0.72)
    picture.poly([(x + width * 0.18, y + height), (x + width * 0.68, y), (x + width * 0.9, y), (x + width * 0.4, y + height)],
                 PAPER,
                 fill_opacity=0.65)
    picture.rect(x, y, width, height, None, BLUE, SYMBOL_LINE, 1)


def transparency(interleaf):
    """0 alone, 1 with blank sheets between, 2 with printed ones."""
    picture = lower()
    if interleaf == 0:
        picture.rect(3.7, 9.7, 17, 21, PAPER, EDGE, SYMBOL_LINE)
        text_lines(picture, 6.4, 13.4, 11.6, 15, 3.3, EDGE, 1.4)
        _film(picture, 10.7, 3.7, 19, 22)
        letter_a(picture, 22.4, 13.4, 9, "#1f4f82", 2)
        return picture
    sheet(picture, 11.7, 11.7, 18, 19)
    if interleaf == 2:
        text_lines(picture, 22, 15, 5.5, 14, 3, BLUE, 1.4, last=1)
        text_lines(picture, 14, 25.4, 13.5, 4, 3, BLUE, 1.4)
    _film(picture, 3.7, 3.7, 18, 20)
    return picture


def image_shift():
    """What is printed moves on its sheet."""
    picture = lower()
    sheet(picture, 4.7, 3.7, 24, 27)
    picture.rect(8, 7.5, 9, 11, None, SHADE, 1.1, stroke_dasharray="1.8 1.8", stroke_linecap="butt")
    picture.rect(15.5, 15, 10, 12, "#c5dbf0", BLUE, 1.2)
    arrow(picture, (10.5, 10), (18.6, 18.6), ORANGE, 2.2, 5)
    return picture


def chapter():
    """An open book with a ribbon where a chapter begins."""
    picture = lower()
    picture.path("M17 10.5C13.5 7.5 7.5 7 2.7 8.4V26.6C7.5 25.2 13.5 25.8 17 28.6 20.5 25.8 26.5 25.2 31.3 26.6V8.4C26.5 7 20.5 7.5 17 "
                 "10.5z", PAPER, EDGE, SYMBOL_LINE)
    picture.path("M17 10.5C15.6 9.3 14 8.6 12.4 8.1 13.6 14 14 20 13.4 26.4 15 27 16.2 27.8 17 28.6z", MID)
    picture.line([(17, 10.5), (17, 28.6)], EDGE, SYMBOL_LINE)
    for row in range(4):
        picture.path(f"M5.5 {number(12.4 + row * 3.3)}C8 {number(11.8 + row * 3.3)} 10 {number(11.9 + row * 3.3)} 12 "
                     f"{number(12.6 + row * 3.3)}", stroke=TEXT, line=1.3)
    picture.path("M20.2 17.4C23 15.6 26 15.4 28.6 15.8M20.2 20.7C23 18.9 26 18.7 28.6 19.1M20.2 24C23 22.2 26 22 28.6 22.4",
                 stroke=TEXT,
                 line=1.3)
    picture.path("M22.4 6.6 27.4 5.8V14.4L25 12.4 22.4 15z", ORANGE, RUST, 1)
    return picture


def pile():
    """A high pile of sheets on a tray."""
    picture = lower()
    for place in range(7):
        y = 24.6 - place * 2.7
        shift = (0, 0.8, -0.6, 0.4, -0.3, 0.7, 0)[place]
        picture.poly([(4.5 + shift, y), (9.5 + shift, y - 4.4), (30 + shift, y - 4.4), (25 + shift, y)], PAPER, EDGE, 1)
        picture.rect(4.5 + shift, y, 20.5, 2, MID if place % 2 else PAPER, EDGE, 0.9)
        picture.poly([(25 + shift, y), (30 + shift, y - 4.4), (30 + shift, y - 2.4), (25 + shift, y + 2)], DARK, EDGE, 0.9)
    picture.path("M2.5 28.4H26.5L31.6 24M2.5 28.4V30.6H26.7L31.6 26.4", stroke=BLUE, line=1.8)
    return picture


def partition():
    """A job in parts: piles one behind the other."""
    picture = lower()
    for x, y, color in ((13.5, 3.5, SOFT), (3.5, 15.5, SOFT)):
        for place in (2, 1, 0):
            picture.rect(x + place * 1.6 + 0.2, y + 2.2 + 1.2 - place * 1.2, 12.6, 11.6, PAPER, EDGE, 1.1)
        text_lines(picture, x + 2.6, y + 6.8, 8, 8, 2.8, TEXT, 1.2)
    picture.line([(2.6, 12.6), (11, 12.6)], ORANGE, 1.8, stroke_dasharray="2.4 2", stroke_linecap="butt")
    picture.line([(21.6, 21.4), (31.4, 21.4)], ORANGE, 1.8, stroke_dasharray="2.4 2", stroke_linecap="butt")
    return picture


def exposure(level):
    """A sun on a page that goes from light to dark; rays by the level."""
    picture = lower()
    grey = ("#ffffff", "#e4eaf0", "#c4d0dc", "#97a8b8", "#6c7e8f")[level - 1]
    sheet(picture, 3.7, 3.7, 26.6, 26.6, grey)
    picture.circle(17, 17, 4 + level * 0.3, AMBER, ORANGE, 1.6)
    for place in range(8):
        with picture.group(f"rotate({45 * place} 17 17)"):
            picture.line([(17, 10 - level * 0.3), (17, 8.6 - level * 0.55)], ORANGE if level < 4 else AMBER, 1.8)
    for place in range(5):
        picture.rect(6 + place * 4.6, 31.4, 3.4, 2, ORANGE if place < level else SOFT)
    return picture


def exposure_common():
    """A dial that lies under the symbols of all levels."""
    picture = lower()
    picture.circle(17, 17, 4.8, AMBER, ORANGE, 1.6)
    for place in range(8):
        with picture.group(f"rotate({45 * place} 17 17)"):
            picture.line([(17, 9.4), (17, 5.6)], ORANGE, 2)
    return picture


def pattern():
    """Stamp mode: a ground that shows a word when the page is copied."""
    picture = lower()
    sheet(picture, 5.7, 2.7, 22.6, 28.6)
    for row in range(8):
        for column in range(6):
            picture.circle(9 + column * 3.4 - row % 2 * 0.0, 6.2 + row * 3.2, 0.75, SKY)
    with picture.group("translate(17 17) rotate(-35)"):
        picture.rect(-11.5, -3.7, 23, 7.4, PAPER, fill_opacity=0.85)
        word(picture, "COPY", 0, 0, 5.4, ORANGE, 1.5, 5.8)
    return picture


def perfect_binding():
    """A book with a flat back, glued."""
    picture = lower()
    picture.poly([(9, 9.5), (13, 5), (30.5, 5), (27, 9.5)], PAPER, EDGE, 1.2)
    picture.line([(10.5, 7.9), (28.2, 7.9)], SOFT, 0.9)
    picture.line([(11.8, 6.4), (29.4, 6.4)], SOFT, 0.9)
    picture.poly([(27, 9.5), (30.5, 5), (30.5, 26), (27, 30.5)], MID, EDGE, 1.2)
    picture.line([(28.7, 7.6), (28.7, 28)], SOFT, 0.9)
    picture.rect(9, 9.5, 18, 21, "#7fb0e0", "#1f4f82", SYMBOL_LINE)
    picture.rect(12.4, 13.5, 11.2, 4.6, PAPER)
    picture.poly([(4.6, 6.6), (9, 9.5), (9, 30.5), (4.6, 27.4)], BLUE, "#1f4f82", 1.2)
    picture.poly([(4.6, 6.6), (8.6, 2.4), (13, 5), (9, 9.5)], "#5d98d0", "#1f4f82", 1.2)
    picture.line([(5.6, 11.6), (8, 13.2)], ORANGE, 1.6)
    picture.line([(5.6, 22.6), (8, 24.2)], ORANGE, 1.6)
    return picture


def pictures():
    for kind, name in enumerate(("alone", "blank-interleaf", "printed-interleaf")):
        yield 15520 + kind, f"transparency-{name}", transparency(kind)
    yield 15530, "image-shift", image_shift()
    yield 15540, "chapter", chapter()
    yield 15646, "pile", pile()
    yield 15650, "partition", partition()
    for level in range(1, 6):
        yield 16259 + level, f"exposure-{level}", exposure(level)
    yield 16265, "exposure", exposure_common()
    yield 15656, "stamp-mode", pattern()
    yield 15660, "perfect-binding", perfect_binding()
