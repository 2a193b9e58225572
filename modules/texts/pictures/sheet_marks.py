"""What lies on the sheet of the paper view: zoom arrows, staples, holes, marks of edges, the turned corner."""

from sheet_frame import BOTTOM, LANDSCAPE, LEFT, PORTRAIT, RIGHT, TOP
from sheet_pages import HALF_REDUCED, REDUCED
from svg import BLUE, EDGE, INK, ORANGE, PAGE, PAPER, SHADE, SKY, SOFT, Picture, figure, number, solid_arrow

ORIENTATIONS = ((PORTRAIT, "portrait"), (LANDSCAPE, "landscape"))
EDGES = ((LEFT, "left"), (RIGHT, "right"), (TOP, "top"), (BOTTOM, "bottom"))

# -- zoom --------------------------------------------------------------------------------------------------------------------


def zoom_arrow(orientation, enlarge, outline):
    """Two arrows apart or toward each other. On a landscape sheet they lie along the diagonal that falls."""
    picture = Picture(48, 24)
    rise = 6.5 if orientation == PORTRAIT else -6.5
    ends = [((21, 12 + rise / 7), (3, 12 + rise)), ((27, 12 - rise / 7), (45, 12 - rise))]
    for near, far in ends:
        start, end = (near, far) if enlarge else (far, near)
        if outline:
            solid_arrow(picture, start, end, PAPER, 4.6, 9, ORANGE, 1.6)
        else:
            solid_arrow(picture, start, end, ORANGE, 4.6, 9, PAPER, 1.2)
    return picture


# -- staples and holes -------------------------------------------------------------------------------------------------------

STAPLE = 24  # the pictures' size
INSET = 2.4  # from the sheet's edge; holes have room beside it
TWO_APART = {PORTRAIT: 17, LANDSCAPE: 14}  # two staples along a sheet's long and short side
CORNER_LEFT, CORNER_RIGHT, TWO_LEFT, TWO_RIGHT, TWO_TOP = range(1, 6)


def staple_number(mark, orientation):
    """A corner looks alike on a turned sheet; two staples are wider apart on the longer side."""
    if mark <= CORNER_RIGHT:
        return mark - 1
    return mark - 1 + (3 if orientation == LANDSCAPE else 0)


def _staples(mark, orientation):
    """Ends of each staple's back."""
    if mark == CORNER_LEFT:
        return [((3.2, 9.4), (9.4, 3.2))]
    if mark == CORNER_RIGHT:
        return [((14.6, 3.2), (20.8, 9.4))]
    if mark == TWO_TOP:
        apart = TWO_APART[LANDSCAPE if orientation == PORTRAIT else PORTRAIT] / 2
        return [((12 + side * apart - 2.9, INSET), (12 + side * apart + 2.9, INSET)) for side in (-1, 1)]
    apart, x = TWO_APART[orientation] / 2, STAPLE - INSET if mark == TWO_RIGHT else INSET
    return [((x, 12 + side * apart - 2.9), (x, 12 + side * apart + 2.9)) for side in (-1, 1)]


def staple(mark, orientation):
    """A wire's back, with a light line where it shines; a pale rim parts it from a mark of the edge below it."""
    picture = Picture(STAPLE, STAPLE)
    for start, end in _staples(mark, orientation):
        picture.line([start, end], PAPER, 4.2, stroke_opacity=0.9)
        picture.line([start, end], INK, 2.5, stroke_linecap="square")
        picture.line([(x - 0.35, y - 0.35) for x, y in (start, end)], SOFT, 0.6)
    return picture


def staple_shadow(mark, orientation):
    picture = Picture(STAPLE, STAPLE)
    for start, end in _staples(mark, orientation):
        shifted = [(x + 1.3, y + 1.5) for x, y in (start, end)]
        picture.line(shifted, INK, 3.2, stroke_opacity=0.25)
    return picture


def hole():
    picture = Picture(7, 7)
    picture.circle(3.5, 3.5, 2.7, "#47535e", SHADE, 1)
    picture.path("M1.6 3.6A1.9 1.9 0 0 1 4.4 1.9", stroke=INK, line=1)
    return picture


# -- edges -------------------------------------------------------------------------------------------------------------------

EDGE_LENGTH, LINE_WIDTH, BAND_WIDTH = 84, 8, 12
MARKED = {(PORTRAIT, LEFT): 84, (PORTRAIT, TOP): 62, (LANDSCAPE, LEFT): 62, (LANDSCAPE, TOP): 84}  # lengths on the sheet


def _marked(orientation, edge):
    return MARKED[orientation, LEFT if edge in (LEFT, RIGHT) else TOP]


def _edge_picture(edge, width):
    return Picture(width, EDGE_LENGTH) if edge in (LEFT, RIGHT) else Picture(EDGE_LENGTH, width)


def _at_edge(edge, width, along, across):
    """A point of an edge's picture: `along` the edge, `across` from it inward."""
    if edge == LEFT:
        return (across, along)
    if edge == RIGHT:
        return (width - across, along)
    if edge == TOP:
        return (along, across)
    return (along, width - across)


def binding_mark(orientation, edge):
    """A cord along the edge that binds, in stitches."""
    picture = _edge_picture(edge, LINE_WIDTH)
    length = _marked(orientation, edge)
    first, last = (EDGE_LENGTH - length) / 2, (EDGE_LENGTH + length) / 2
    picture.line([_at_edge(edge, LINE_WIDTH, a, 2.5) for a in (first + 1.5, last - 1.5)], BLUE, 3)
    stitches = 9 if length > 70 else 7
    for place in range(stitches):
        along = first + (place + 0.5) * length / stitches
        picture.line([_at_edge(edge, LINE_WIDTH, along - 1, 1.3), _at_edge(edge, LINE_WIDTH, along + 1, 3.7)], PAPER, 1)
    return picture


def margin_band(orientation, edge):
    """The strip that a margin keeps free, up to a dashed line."""
    picture = _edge_picture(edge, BAND_WIDTH)
    length, deep = _marked(orientation, edge) + 4, 8.5
    first, last = (EDGE_LENGTH - length) / 2, (EDGE_LENGTH + length) / 2
    first, last = max(0, first), min(EDGE_LENGTH, last)
    corners = [_at_edge(edge, BAND_WIDTH, a, b) for a, b in ((first, 0), (last, 0), (last, deep), (first, deep))]
    picture.poly(corners, SKY, fill_opacity=0.55)
    count = int(length / 7)
    for place in range(count):
        along = first + (place + 0.7) * (last - first) / count
        picture.line([_at_edge(edge, BAND_WIDTH, along, 1.2), _at_edge(edge, BAND_WIDTH, along - 3.4, deep - 2)], BLUE, 0.8,
                     stroke_opacity=0.6)
    picture.line([_at_edge(edge, BAND_WIDTH, a, deep) for a in (first, last)], BLUE, 1.1, stroke_dasharray="3 2",
                 stroke_linecap="butt")
    return picture


def reduced_margin(orientation, edge, half):
    """On a reduced page: the edge that gave way to the margin, and the way that it went."""
    width, height = (HALF_REDUCED if half else REDUCED)[orientation]
    picture = Picture(width, height)
    upright = edge in (LEFT, RIGHT)
    length, across = (height, width) if upright else (width, height)

    def at(along, deep):
        return _at_edge(edge, across, along, deep)

    picture.line([at(1.5, 1.2), at(length - 1.5, 1.2)], ORANGE, 2)
    for part in (0.25, 0.75) if not half else (0.5,):
        solid_arrow(picture, at(length * part, 2.5), at(length * part, 12), ORANGE, 2.4, 5, PAPER, 0.8)
    return picture


# -- the back of a two-sided sheet -------------------------------------------------------------------------------------------

FLIP = 28
OVER_SHORT, OVER_LONG = 4, 5


LOW = 0.86  # on a landscape sheet the corner is turned less high


def _curl(picture, mirrored, orientation):
    """The lower right corner turned up, or the lower left one."""
    tall = LOW if orientation == LANDSCAPE else 1
    with picture.group(f"matrix({-1 if mirrored else 1} 0 0 {tall} {FLIP if mirrored else 0} {number(FLIP * (1 - tall))})"):
        picture.path("M28 3V28H3z", "#cfd8e0", None)  # the sheet below, in the corner's shadow
        picture.path("M28 5C22 10 16 16 4.2 28 8.2 23.6 7.2 16.6 4.7 9.1 12 11 20 10 28 5z", INK, fill_opacity=0.18)
        picture.path("M28 3C20 7.5 11 9 3.5 7 6.5 14 6.5 21 3 28 9 20 20 10 28 3z",
                     picture.gradient(PAPER, "#d5e4f3", 0, 0, 1, 1), EDGE, 1)


def turned_corner(edge, flip, orientation):
    """The corner opposite the binding, with the number of the page behind it as one reads it there. A sheet that turns over its
    upright axis shows its back upright, one that turns over the other axis upside down."""
    picture = Picture(FLIP, FLIP)
    mirrored = edge == RIGHT
    _curl(picture, mirrored, orientation)
    upright = (flip == OVER_LONG) == (orientation == PORTRAIT)
    x, y = 16.8 if mirrored else 11.2, 13.2 if orientation == PORTRAIT else 15
    with picture.group(None if upright else f"rotate(180 {x} {y})"):
        figure(picture, 2, x, y, 7, BLUE, 0.19)
        if edge == TOP:  # one sees where the head of the page is
            picture.line([(x - 3, y - 5.2), (x + 3, y - 5.2)], ORANGE, 1)
    return picture


def flip_number(edge, flip, orientation):
    return 15180 + 6 * orientation + 2 * (edge - 1) + flip - OVER_SHORT


# -- one sheet out of two pages ----------------------------------------------------------------------------------------------


def two_in_one(orientation):
    """Two sheets that become one."""
    picture = Picture(20, 20)
    with picture.group("matrix(0 1 1 0 0 0)" if orientation == LANDSCAPE else None):
        picture.circle(10, 10, 9.3, PAPER, BLUE, 1.2)
        picture.rect(5.5, 4.2, 9, 5.8, PAGE, BLUE, 1)
        picture.rect(5.5, 10, 9, 5.8, "#fdf0dc", BLUE, 1)
        picture.line([(4, 10), (16, 10)], ORANGE, 1.2, stroke_dasharray="1.6 1.6", stroke_linecap="butt")
    return picture


def pictures():
    for orientation, name in ORIENTATIONS:
        for place, enlarge in enumerate((True, False)):
            what = f"{'enlarge' if enlarge else 'reduce'}-{name}"
            yield 15010 + 2 * orientation + place, f"zoom-{what}", zoom_arrow(orientation, enlarge, False)
            yield 16033 + 2 * orientation + place, f"zoom-outline-{what}", zoom_arrow(orientation, enlarge, True)
        for mark in range(CORNER_LEFT, TWO_TOP + 1):
            if mark <= CORNER_RIGHT and orientation == LANDSCAPE:
                continue
            place = staple_number(mark, orientation)
            yield 15020 + place, f"staple-{mark}-{name}", staple(mark, orientation)
            yield 15040 + place, f"staple-shadow-{mark}-{name}", staple_shadow(mark, orientation)
        for edge, side in EDGES:
            yield 15400 + 4 * orientation + edge - 1, f"binding-{side}-{name}", binding_mark(orientation, edge)
            yield 15060 + 4 * orientation + edge - 1, f"margin-{side}-{name}", margin_band(orientation, edge)
            for half in (False, True):
                yield (15250 + 8 * half + 4 * orientation + edge - 1,
                       f"reduced-margin-{side}-{'half-' if half else ''}{name}", reduced_margin(orientation, edge, half))
        for edge, side in EDGES[:3]:
            for flip in (OVER_SHORT, OVER_LONG):
                yield (flip_number(edge, flip, orientation), f"back-{side}-{flip}-{name}",
                       turned_corner(edge, flip, orientation))
        yield 15870 + orientation, f"two-in-one-{name}", two_in_one(orientation)
    yield 15050, "hole", hole()
