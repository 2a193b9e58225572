"""Folds and folded bindings: a sheet seen from above its lower edge, so that its panels and the way they turn are seen at once."""

from svg import BLUE, EDGE, INK, ORANGE, PAPER, RUST, SOFT, Picture, number

SIZE = 34
INSIDE = "#cfe1f4"  # the printed side; the other one is white


def _lines(picture, start, end, height):
    """Text on a panel, along its slope."""
    for part in (0.25, 0.42, 0.59, 0.76):
        points = []
        for along in (0.18, 0.82):
            points.append((start[0] + (end[0] - start[0]) * along, start[1] + (end[1] - start[1]) * along - height * (1 - part)))
        picture.line(points, BLUE if part == 0.25 else "#7ba3cc", 1.1)


def _mirrored(picture, on):
    return picture.group("matrix(-1 0 0 1 34 0)" if on else None)


def _turn(picture, data):
    """The way a panel goes."""
    picture.path(data, stroke=ORANGE, line=1.7)


def half(printed_inside):
    """Two panels, like an open card."""
    picture = Picture(SIZE, SIZE)
    _panels_open(picture, printed_inside)
    _turn(picture, "M26 5.8C22.6 1.8 15 1.6 10.6 4.6M10.8 1.6 10 5 13.6 5.4")
    return picture


def _panels_open(picture, inside):
    left, fold, right = (3, 25), (17, 31), (31, 25)
    if not inside:
        left, fold, right = (3, 31), (17, 25), (31, 31)
    for start, end, shade in ((left, fold, False), (fold, right, True)):
        picture.poly([start, end, (end[0], end[1] - 18), (start[0], start[1] - 18)], INSIDE, EDGE, 1.2)
        if shade:
            picture.poly([start, end, (end[0], end[1] - 18), (start[0], start[1] - 18)], INK, fill_opacity=0.1)
        _lines(picture, start, end, 18)


def z_fold():
    """Half of the sheet stays flat, the other half folds back and forth."""
    picture = Picture(SIZE, SIZE)
    corners = [(2.5, 31), (17.5, 31), (24.5, 24), (31.5, 31)]
    for place, (start, end) in enumerate(zip(corners, corners[1:])):
        top = 20
        picture.poly([start, end, (end[0], end[1] - top), (start[0], start[1] - top)], (INSIDE, PAPER, INSIDE)[place], EDGE, 1.2)
        if place == 1:
            picture.poly([start, end, (end[0], end[1] - top), (start[0], start[1] - top)], INK, fill_opacity=0.12)
    _lines(picture, corners[0], corners[1], 20)
    _turn(picture, "M29.5 7.5C27 3 20 2.4 15.6 5.2M16.2 2 15 5.6 18.6 6.4")
    return picture


def letter(inside, mirrored):
    """Three panels: the outer ones close over the middle one."""
    picture = Picture(SIZE, SIZE)
    with _mirrored(picture, mirrored):
        for start, end, fill in (((10, 30), (24, 30), INSIDE if inside else PAPER),
                                 ((24, 30), (31.5, 24), INSIDE if inside else PAPER)):
            picture.poly([start, end, (end[0], end[1] - 18), (start[0], start[1] - 18)], fill, EDGE, 1.2)
            if inside:
                _lines(picture, start, end, 18)
        picture.poly([(24, 30), (31.5, 24), (31.5, 6), (24, 12)], INK, fill_opacity=0.1)
        start, end = (10, 30), (18.5, 32.4)
        cover = [start, end, (end[0], end[1] - 18), (start[0], start[1] - 18)]
        picture.poly(cover, PAPER if inside else INSIDE, EDGE, 1.2)
        if not inside:
            _lines(picture, start, end, 18)
        _turn(picture, "M30 3.4C25 .6 17 1.4 13 6M12.6 2.6 12.6 6.4 16.4 6.6")
        _turn(picture, "M3 27C3 20 5 15 8 12.6M4.4 12.6 8.2 12.4 8 16.2")
    return picture


def accordion(inside):
    """Three panels in a zigzag."""
    picture = Picture(SIZE, SIZE)
    low, high = (31, 25) if inside else (25, 31)
    corners = [(2.5, low), (12.2, high), (21.8, low), (31.5, high)]
    for place, (start, end) in enumerate(zip(corners, corners[1:])):
        shape = [start, end, (end[0], end[1] - 19), (start[0], start[1] - 19)]
        picture.poly(shape, INSIDE, EDGE, 1.2)
        if (place % 2 == 0) == inside:
            picture.poly(shape, INK, fill_opacity=0.1)
        _lines(picture, start, end, 19)
    for x in (7.3, 26.7):
        _turn(picture, f"M{number(x - 4)} 3.2H{number(x + 4)}M{number(x - 2)} 1.2 {number(x - 4)} 3.2 {number(x - 2)} 5.2"
                       f"M{number(x + 2)} 1.2 {number(x + 4)} 3.2 {number(x + 2)} 5.2")
    return picture


def double_parallel(inside):
    """Folded in the middle and once more: an open card of two layers that hang together at the left."""
    picture = Picture(SIZE, SIZE)
    height = 14.5
    behind, front = ((5, 21.5), (17, 26.8), (29, 21.5)), ((2.5, 26), (17, 32.4), (31.5, 26))

    def layer(corners, fill, lines):
        for place, (start, end) in enumerate(zip(corners, corners[1:])):
            shape = [start, end, (end[0], end[1] - height), (start[0], start[1] - height)]
            picture.poly(shape, fill, EDGE, 1.2)
            if place == 1:
                picture.poly(shape, INK, fill_opacity=0.1)
            if lines == "all":
                _lines(picture, start, end, height)
            elif lines == "first":
                picture.line([(x + (end[0] - start[0]) * part, y - height + 2.6 + (end[1] - start[1]) * part)
                              for (x, y), part in ((start, 0.15), (start, 0.85))], BLUE, 1.2)

    layer(behind, INSIDE if inside else PAPER, "first" if inside else None)
    picture.poly([behind[0], (behind[0][0], behind[0][1] - height), (front[0][0], front[0][1] - height), front[0]],
                 SOFT, EDGE, 1.2)
    layer(front, PAPER if inside else INSIDE, None if inside else "all")
    _turn(picture, "M25.6 4.4C21 .8 13 .8 8.4 3.6M9 .8 8 3.9 11.6 5")
    return picture


def gate(inside):
    """Two wings that meet in the middle."""
    picture = Picture(SIZE, SIZE)
    wings = [((9, 25), (3, 31)), ((25, 25), (31, 31))]
    back = [(9, 25), (25, 25), (25, 7), (9, 7)]
    picture.poly(back, INSIDE if inside else PAPER, EDGE, 1.2)
    if inside:
        _lines(picture, (9, 25), (25, 25), 18)
    for start, end in wings:
        shape = [start, end, (end[0], end[1] - 18), (start[0], start[1] - 18)]
        picture.poly(shape, PAPER if inside else INSIDE, EDGE, 1.2)
        if not inside:
            _lines(picture, start, end, 18)
        elif start[0] > 17:
            picture.poly(shape, INK, fill_opacity=0.1)
    _turn(picture, "M4.5 7.4C6 3 11 1.6 15 3.6M12 1.2 15.4 3.8 12 6.4")
    _turn(picture, "M29.5 7.4C28 3 23 1.6 19 3.6M22 1.2 18.6 3.8 22 6.4")
    return picture


def _open_leaves(picture, sheets, staples=0, trimmed=False):
    """Sheets that lie in each other at the fold, from above; the innermost is printed."""
    reach = 14.2 if not trimmed else 12.4
    for place in range(sheets):
        drop = (sheets - 1 - place) * 2.4
        out = reach - (place * 1.3 if not trimmed else 0)
        fill = INSIDE if place == sheets - 1 else PAPER
        for side in (-1, 1):
            shape = [(17, 30.6 - (sheets - 1 - drop / 2.4) * 2.4), (17 + side * out, 24.6 - place * 2.4),
                     (17 + side * out, 8.6 - place * 2.4 + sheets), (17, 14.6 - place * 2.4 + sheets)]
            picture.poly(shape, fill, EDGE, 1.2)
            if side > 0:
                picture.poly(shape, INK, fill_opacity=0.1)
    base = sheets - 1
    for side in (-1, 1):
        out = reach - (base * 1.3 if not trimmed else 0)
        start, end = (17, 30.6 - base * 2.4), (17 + side * out, 24.6 - base * 2.4)
        if side < 0:
            start, end = end, start
        _lines(picture, start, end, 15 - base * 0.4)
    for part in ((0.3, 0.72) if staples == 2 else (0.5,) if staples == 1 else ()):
        y = 14.6 - base * 2.4 + sheets + (16 - sheets) * part
        picture.line([(17, y - 1.8), (17, y + 1.8)], ORANGE, 2.2)


def sheets_folded(booklet):
    """Several sheets folded together; as a booklet they lie in each other in the order of its pages."""
    picture = Picture(SIZE, SIZE)
    _open_leaves(picture, 3 if not booklet else 4)
    if not booklet:
        _turn(picture, "M26 4.6C22.6 1.2 15 1 10.6 3.6M11 .8 10 4.2 13.6 4.8")
    return picture


def bound(code):
    """Book bindings: 1 folded and stapled, 2 folded and stapled once, 3 only folded, 4 trimmed as well, 5 with a cover."""
    picture = Picture(SIZE, SIZE)
    if code == 5:
        picture.poly([(17, 33), (1.6, 27), (1.6, 9.4), (17, 15)], ORANGE, RUST, 1.2)
        picture.poly([(17, 33), (32.4, 27), (32.4, 9.4), (17, 15)], "#cf7110", RUST, 1.2)
    _open_leaves(picture, 2 if code == 2 else 3, {1: 2, 2: 1, 3: 0, 4: 2, 5: 2}[code], code == 4)
    if code == 3:
        picture.line([(17, 10), (17, 25)], ORANGE, 1.4, stroke_dasharray="2 2", stroke_linecap="butt")
    if code == 4:
        picture.line([(31.4, 3.6), (31.4, 30)], ORANGE, 1.4, stroke_dasharray="2.4 2", stroke_linecap="butt")
        picture.circle(29.6, 31, 1.5, None, ORANGE, 1.2)
        picture.circle(32, 31.8, 1.2, None, ORANGE, 1.1)
    return picture


def pictures():
    folds = [("half-inside", half(True)), ("half-outside", half(False)), ("z", z_fold()),
             ("letter-inside", letter(True, False)), ("letter-outside", letter(False, False)),
             ("letter-inside-mirrored", letter(True, True)), ("letter-outside-mirrored", letter(False, True)),
             ("accordion-inside", accordion(True)), ("accordion-outside", accordion(False)),
             ("double-inside", double_parallel(True)), ("double-outside", double_parallel(False)),
             ("gate-inside", gate(True)), ("gate-outside", gate(False)),
             ("sheets-together", sheets_folded(False)), ("booklet", sheets_folded(True))]
    for place, (name, picture) in enumerate(folds):
        yield 15550 + place, f"fold-{name}", picture
    for code in range(1, 6):
        yield 16244 + code, f"book-{code}", bound(code)
