"""The machine's frame of 160 x 110, its body, and where its paper comes from: trays, cabinets, the bypass, the side tray.

Every picture is as large as the whole machine, so that all of them can be laid on one point. Parts are boxes seen from the front, a
little from above and from the right; a lit part is drawn by the same shape in the signal colour, so it can't slip.

              trays     finisher       bridge     body           bypass      side tray
      x   4 ........ 24 ... 30 .. 59 ............ 66 ... 114 ... 118 .. 137  123 .. 153
"""

from svg import AMBER, BLUE, DARK, EDGE, FINE_LINE, INK, LIGHT, MID, ORANGE, PAPER, RUST, SHADE, SKY, SOFT, Picture

WIDTH, HEIGHT = 160, 110
FLOOR = 105
DEEP_X, DEEP_Y = 7, -4  # offset of a box's far edges from its near ones

LEFT, RIGHT = 66, 114  # the body's front
SCANNER, GAP, ENGINE, TRAYS, CABINET = 16, 25, 43, 54, 77  # tops of its sections
TRAY = (TRAYS, 65.5, CABINET)  # tops of trays 1 and 2, and the end


class Tones:
    """Colours of one box: front, top, side, outline."""

    def __init__(self, front, top, side, line):
        self.front, self.top, self.side, self.line = front, top, side, line


PLAIN = Tones(MID, LIGHT, DARK, EDGE)
BRIGHT = Tones(LIGHT, PAPER, MID, EDGE)
DIM = Tones("#c7d0d8", MID, SHADE, EDGE)
LIT = Tones(ORANGE, AMBER, "#cf7110", RUST)


def box(picture, left, top, right, bottom, tones=PLAIN, deep=1.0, line=FINE_LINE):
    """A box whose near face is given; `deep` is its depth as a part of the body's."""
    dx, dy = DEEP_X * deep, DEEP_Y * deep
    picture.poly([(left, top), (left + dx, top + dy), (right + dx, top + dy), (right, top)], tones.top, tones.line, line)
    picture.poly([(right, top), (right + dx, top + dy), (right + dx, bottom + dy), (right, bottom)], tones.side, tones.line, line)
    picture.rect(left, top, right - left, bottom - top, tones.front, tones.line, line)


def shadow(picture, left, right, bottom=FLOOR):
    picture.poly([(left - 1, bottom), (left + DEEP_X, bottom + DEEP_Y), (right + DEEP_X + 5, bottom + DEEP_Y),
                  (right + 4, bottom + 1.5),
                  (left, bottom + 1.5)], INK, fill_opacity=0.16)


def handle(picture, left, right, y, color=SHADE):
    picture.rect((left + right) / 2 - 7, y, 14, 2.2, color, radius=1.1)


def drawer(picture, top, bottom, tones=BRIGHT, left=LEFT, right=RIGHT):
    """The front of a paper tray: its grip, and a window that shows how much lies in it."""
    picture.rect(left + 2.5, top + 1.2, right - left - 5, bottom - top - 2, tones.front, tones.line, FINE_LINE, 1)
    lit = tones is LIT
    handle(picture, left, right, top + (bottom - top) * 0.3, PAPER if lit else SHADE)
    picture.rect(right - 9, top + (bottom - top) * 0.3, 2.6, (bottom - top) * 0.45, PAPER if lit else SOFT, tones.line, 0.6)
    if lit:
        picture.rect(right - 9, top + (bottom - top) * 0.5, 2.6, (bottom - top) * 0.25, RUST)


def bypass(picture, tones=BRIGHT):
    """The fold-out tray on the right side, with a sheet in it when it is lit."""
    hinge_x, hinge_y = RIGHT + 4, 55
    picture.poly([(hinge_x, hinge_y), (hinge_x + 3, hinge_y - 4.5), (hinge_x + 19, hinge_y - 12), (hinge_x + 17, hinge_y - 7)],
                 tones.top, tones.line, FINE_LINE)
    picture.poly([(hinge_x, hinge_y), (hinge_x + 17, hinge_y - 7), (hinge_x + 17, hinge_y - 5), (hinge_x, hinge_y + 2.2)],
                 tones.front, tones.line, FINE_LINE)
    if tones is LIT:
        picture.poly([(hinge_x + 3, hinge_y - 2.8), (hinge_x + 5, hinge_y - 5.8), (hinge_x + 16, hinge_y - 11),
                      (hinge_x + 14.5, hinge_y - 7.6)],
                     PAPER, RUST, 0.7)


# -- body --------------------------------------------------------------------------------------------------------------------


def _feeder(picture):
    """The document feeder on the scanner, with originals in its tray."""
    box(picture, LEFT + 3, 8.5, RIGHT - 1, 15, BRIGHT, 0.9)
    picture.poly([(LEFT + 20, 8), (LEFT + 24, 4.6), (RIGHT + 1, 3.2), (RIGHT - 2, 7.4)], DARK, EDGE, FINE_LINE)
    picture.poly([(LEFT + 22, 6.8), (LEFT + 25.5, 3.6), (RIGHT - 4, 2.4), (RIGHT - 7, 6)], PAPER, EDGE, 0.8)
    picture.poly([(LEFT + 4, 8.3), (LEFT + 9, 4.2), (LEFT + 23, 4.2), (LEFT + 20, 8.3)], PLAIN.front, EDGE, FINE_LINE)


def _panel(picture):
    """The operation panel at the front: a touch screen and a start button."""
    picture.poly([(LEFT - 1, 19), (LEFT + 31, 19), (LEFT + 33, 25.5), (LEFT - 2.5, 25.5)], DIM.front, EDGE, FINE_LINE)
    picture.poly([(LEFT + 3, 20.2), (LEFT + 17, 20.2), (LEFT + 17.4, 24.3), (LEFT + 2.2, 24.3)], "#2f4a63", INK, 0.7)
    picture.poly([(LEFT + 4, 21), (LEFT + 9, 21), (LEFT + 7, 23.6), (LEFT + 3.6, 23.6)], SKY, fill_opacity=0.8)
    for place in range(6):
        picture.rect(LEFT + 19.5 + place % 3 * 2.4, 20.6 + place // 3 * 2.1, 1.5, 1.2, PAPER)
    picture.circle(LEFT + 29, 22.2, 1.5, "#3f9b57")


def _body(picture):
    """The body down to tray 2: scanner, inner output space, engine, two trays, bypass."""
    box(picture, LEFT, ENGINE, RIGHT, CABINET, PLAIN)
    # The column at the right carries the scanner; left of it is the space where sheets come out.
    picture.poly([(LEFT, ENGINE), (LEFT + DEEP_X, ENGINE + DEEP_Y), (LEFT + DEEP_X, GAP), (LEFT, GAP)], SHADE, EDGE, FINE_LINE)
    picture.poly([(LEFT + DEEP_X, GAP), (RIGHT - 10, GAP), (RIGHT - 10, ENGINE + DEEP_Y), (LEFT + DEEP_X, ENGINE + DEEP_Y)],
                 "#6d7a86", EDGE, FINE_LINE)
    picture.poly([(LEFT, ENGINE), (LEFT + DEEP_X, ENGINE + DEEP_Y), (RIGHT - 10, ENGINE + DEEP_Y), (RIGHT - 10, ENGINE)], DARK,
                 EDGE,
                 FINE_LINE)
    box(picture, RIGHT - 10, GAP, RIGHT, ENGINE, PLAIN)
    picture.rect(RIGHT - 10, GAP, 10, ENGINE - GAP + 0.5, PLAIN.front)
    picture.line([(RIGHT - 10, GAP), (RIGHT - 10, ENGINE)], EDGE, FINE_LINE)
    picture.line([(RIGHT, GAP), (RIGHT, ENGINE + 2)], EDGE, FINE_LINE)
    box(picture, LEFT, SCANNER, RIGHT, GAP, PLAIN)
    _feeder(picture)
    _panel(picture)
    picture.rect(LEFT + 2.5, ENGINE + 1.8, RIGHT - LEFT - 5, TRAYS - ENGINE - 2.6, BRIGHT.front, SOFT, FINE_LINE, 1)
    picture.rect(LEFT + 6, ENGINE + 4.2, 10, 1.6, BLUE, radius=0.6)
    picture.line([(RIGHT + 2.5, ENGINE - 1), (RIGHT + 2.5, CABINET - 3)], SHADE, 0.8)
    drawer(picture, TRAY[0], TRAY[1])
    drawer(picture, TRAY[1], TRAY[2])
    bypass(picture)


def _foot(picture):
    for x in (LEFT + 4, RIGHT - 4):
        picture.rect(x - 2.5, FLOOR - 3, 5, 3, INK, radius=1.2)


CABINET_TRAYS = (CABINET + 0.5, 89.5, 101.5)
LONE_TRAY_END = 94  # tray 3 alone is deeper and has a plinth


def body():
    """Without a feeder unit the body is on an open stand."""
    picture = Picture(WIDTH, HEIGHT)
    shadow(picture, LEFT, RIGHT)
    back = DEEP_X
    for x in (LEFT + back, RIGHT + back - 3):
        picture.rect(x, CABINET - 3, 2.6, FLOOR - CABINET, SHADE, EDGE, 0.8)
    box(picture, LEFT + 1, 94, RIGHT - 1, 96.5, DIM)
    for x in (LEFT + 1, RIGHT - 4.4):
        picture.rect(x, CABINET, 3.4, FLOOR - CABINET - 2, DARK, EDGE, FINE_LINE)
        picture.rect(x - 0.6, FLOOR - 3, 4.6, 3, INK, radius=1.2)
    _body(picture)
    return picture


def cabinet(two_trays):
    picture = Picture(WIDTH, HEIGHT)
    shadow(picture, LEFT, RIGHT)
    _foot(picture)
    box(picture, LEFT, CABINET, RIGHT, 102.5, PLAIN)
    if two_trays:
        drawer(picture, CABINET_TRAYS[0], CABINET_TRAYS[1])
        drawer(picture, CABINET_TRAYS[1], CABINET_TRAYS[2])
    else:
        drawer(picture, CABINET_TRAYS[0], LONE_TRAY_END)
        picture.rect(LEFT + 2.5, LONE_TRAY_END + 1.4, RIGHT - LEFT - 5, CABINET_TRAYS[2] - LONE_TRAY_END - 2, DIM.front, SOFT,
                     FINE_LINE, 1)
    _body(picture)
    return picture


SIDE_LEFT, SIDE_RIGHT, SIDE_TOP = 123, 146, 66


def side_tray(tones=PLAIN):
    """The large capacity tray that is docked to the right side."""
    picture = Picture(WIDTH, HEIGHT)
    if tones is PLAIN:
        shadow(picture, SIDE_LEFT, SIDE_RIGHT)
        picture.rect(SIDE_LEFT + 2, FLOOR - 3, 5, 3, INK, radius=1.2)
        picture.rect(SIDE_RIGHT - 7, FLOOR - 3, 5, 3, INK, radius=1.2)
    box(picture, SIDE_LEFT, SIDE_TOP, SIDE_RIGHT, 102.5, tones)
    door = BRIGHT if tones is PLAIN else tones
    picture.rect(SIDE_LEFT + 2.5, SIDE_TOP + 9, SIDE_RIGHT - SIDE_LEFT - 5, 25.5, door.front, SOFT if tones is PLAIN else RUST,
                 FINE_LINE, 1)
    handle(picture, SIDE_LEFT, SIDE_RIGHT, SIDE_TOP + 12, SHADE if tones is PLAIN else PAPER)
    picture.line([(SIDE_LEFT, SIDE_TOP + 6.5), (SIDE_RIGHT, SIDE_TOP + 6.5)], tones.line, 0.8)
    return picture
