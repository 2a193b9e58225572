"""What comes out of the machine and where: output trays, the bridge, finishers, mail bins, the saddle unit; and what is lit."""

from machine_body import (BRIGHT, CABINET_TRAYS, DIM, FLOOR, HEIGHT, LEFT, LIT, LONE_TRAY_END, PLAIN, RIGHT, TRAY, WIDTH,
                          body, box, bypass, cabinet, drawer, shadow, side_tray)
from svg import DARK, EDGE, FINE_LINE, INK, ORANGE, PAPER, RUST, SHADE, SOFT, Picture, number

# -- where sheets come out ---------------------------------------------------------------------------------------------------


def inner_tray(picture, top, tones=BRIGHT, left=LEFT - 8):
    """A tray in the space below the scanner; it sticks out at the left unless something is docked there."""
    right = RIGHT - 12
    picture.poly([(left, top - 2.5), (left + 6, top - 6), (right, top - 3.4), (right - 4, top)], tones.top, tones.line, FINE_LINE)
    picture.poly([(left, top - 2.5), (right - 4, top), (right - 4, top + 1.8), (left, top - 0.7)], tones.front, tones.line,
                 FINE_LINE)
    if tones is LIT:
        picture.poly([(left + 6, top - 3.2), (left + 10.5, top - 5.4), (right - 8, top - 3.6), (right - 12, top - 1.4)], PAPER,
                     RUST, 0.7)


INNER_LOW, INNER_HIGH = 41.5, 33.5


def output_tray():
    picture = Picture(WIDTH, HEIGHT)
    inner_tray(picture, INNER_LOW)
    return picture


def job_separator():
    picture = Picture(WIDTH, HEIGHT)
    inner_tray(picture, INNER_LOW)
    inner_tray(picture, INNER_HIGH)
    picture.line([(LEFT + 0.5, INNER_HIGH), (LEFT + 0.5, INNER_LOW - 3)], EDGE, 1.6)
    return picture


def bridge():
    """What carries sheets through the inner space to a finisher at the left."""
    picture = Picture(WIDTH, HEIGHT)
    box(picture, FINISHER_RIGHT, 36, RIGHT - 10, 42.5, PLAIN, 0.55)
    picture.rect(LEFT + 2, 38, RIGHT - LEFT - 16, 2.4, BRIGHT.front, SOFT, 0.7, 1)
    picture.path(f"M{LEFT + 14} 39.2h-7m2.4-1.5-2.4 1.5 2.4 1.5", stroke=SHADE, line=0.9)
    return picture


# -- finishers ---------------------------------------------------------------------------------------------------------------

FINISHER_LEFT, FINISHER_RIGHT = 30, 59
BIN_TOP, BIN_BOTTOM = 27, 72  # the bin-type finisher hangs at the body's side, on a stand
TALL_LEFT, TALL_TOP = 24, 21


def out_tray(picture, y, left, right, tones=BRIGHT, thick=2.2):
    """A tray on a finisher's left side, rising toward its end, with sheets on it when it is lit."""
    picture.poly([(left, y - 5), (left + 5, y - 9), (right + 5, y - 3.4), (right, y)], tones.top, tones.line, FINE_LINE)
    picture.poly([(left, y - 5), (right, y), (right, y + thick), (left, y - 5 + thick * 0.7)], tones.front, tones.line, FINE_LINE)
    if tones is LIT:
        for lift in (0, 1.4):
            picture.poly([(left + 4, y - 5.2 - lift), (left + 8, y - 8.2 - lift), (right + 4, y - 4.2 - lift),
                          (right, y - 1.2 - lift)],
                         PAPER, RUST, 0.7)


def finisher_front(picture, left, top, right, bottom):
    """The door with its grip, and the slit that sheets leave by."""
    picture.rect(left + 4, top + 5, right - left - 8, bottom - top - 9, BRIGHT.front, SOFT, FINE_LINE, 1)
    picture.rect(left + 7, (top + bottom) / 2 - 4, 2.2, 8, SHADE, radius=1.1)


HIGH_TRAY, LOW_TRAY = 40, 57  # positions of trays 11 and 31 of the bin-type finisher
BIN_REACH = 9  # the left end of its trays
SADDLE_TOP, SADDLE_TRAY = 75, 95
MAIL_TOP, MAIL_PITCH = 4, 5.4
EXIT_TRAY = 32.5


def _stand(picture):
    for x in (FINISHER_LEFT + 3, FINISHER_RIGHT - 6):
        picture.rect(x, BIN_BOTTOM, 3, FLOOR - BIN_BOTTOM - 2, DARK, EDGE, FINE_LINE)
    box(picture, FINISHER_LEFT - 2, FLOOR - 5, FINISHER_RIGHT - 1, FLOOR - 2.5, DIM, 0.6)
    for x in (FINISHER_LEFT + 1, FINISHER_RIGHT - 5):
        picture.rect(x - 1, FLOOR - 2.5, 4, 2.5, INK, radius=1)


def _mail_bins(picture):
    box(picture, FINISHER_LEFT + 3, MAIL_TOP, FINISHER_RIGHT - 2, BIN_TOP, PLAIN, 0.8)
    picture.rect(FINISHER_LEFT + 9, MAIL_TOP + 3, FINISHER_RIGHT - FINISHER_LEFT - 14, BIN_TOP - MAIL_TOP - 6, BRIGHT.front, SOFT,
                 FINE_LINE, 1)
    for place in range(4):
        mail_bin(picture, place)


def mail_bin(picture, place, tones=BRIGHT):
    """Mail bin 1 is the lowest: place 3 from the top."""
    y = MAIL_TOP + 5 + place * MAIL_PITCH
    left, right = FINISHER_LEFT - 14, FINISHER_LEFT + 3
    picture.poly([(left, y - 2.6), (left + 4, y - 5), (right + 1, y - 2.2), (right + 1, y)], tones.top, tones.line, 0.9)
    picture.poly([(left, y - 2.6), (right + 1, y), (right + 1, y + 1.5), (left, y - 1.3)], tones.front, tones.line, 0.9)
    if tones is LIT:
        picture.poly([(left + 3, y - 2.9), (left + 6, y - 4.5), (right + 1, y - 2.3), (right + 1, y - 0.8)], PAPER, RUST, 0.6)


def _saddle(picture):
    box(picture, FINISHER_LEFT, SADDLE_TOP, FINISHER_RIGHT, 102.5, PLAIN)
    picture.rect(FINISHER_LEFT + 4, SADDLE_TOP + 4, FINISHER_RIGHT - FINISHER_LEFT - 8, 20, BRIGHT.front, SOFT, FINE_LINE, 1)
    _booklet_sign(picture, EDGE)
    saddle_tray(picture)


def _booklet_sign(picture, color):
    """An open booklet on the door: this unit folds and staples."""
    x, y = (FINISHER_LEFT + FINISHER_RIGHT) / 2, SADDLE_TOP + 16
    with picture.group(f"translate({number(x)} {number(y)})"):
        picture.path("M0 2C-2 0-5-.4-7 .6V-6C-5-7-2-6.6 0-4.6 2-6.6 5-7 7-6V.6C5-.4 2 0 0 2z", PAPER, color, 0.9)
        picture.line([(0, -4.6), (0, 2)], color, 0.9)


def saddle_tray(picture, tones=BRIGHT):
    """The low tray at the left, in which booklets lie."""
    left, right = 8, FINISHER_LEFT
    picture.poly([(left, SADDLE_TRAY + 3), (left + 5, SADDLE_TRAY), (right + 1, SADDLE_TRAY - 5), (right + 1, SADDLE_TRAY - 1.5)],
                 tones.top, tones.line, FINE_LINE)
    picture.poly([(left, SADDLE_TRAY + 3), (right + 1, SADDLE_TRAY - 1.5), (right + 1, SADDLE_TRAY + 1.5),
                  (left, SADDLE_TRAY + 5.2)],
                 tones.front, tones.line, FINE_LINE)
    if tones is LIT:
        for x in (13, 18.5, 24):
            y = SADDLE_TRAY + 2.4 - (x - 8) * 0.2
            picture.path(f"M{x} {y}l-3-6.4 6-1.6 3 6.2z", PAPER, RUST, 0.8)


def finisher(bins=False, saddle=False, exit_tray=False):
    """The bin-type finisher. With the mail bins or the saddle unit its trays are a little lower or higher."""
    picture = Picture(WIDTH, HEIGHT)
    shadow(picture, FINISHER_LEFT, FINISHER_RIGHT - 4)
    if saddle:
        for x in (FINISHER_LEFT + 1, FINISHER_RIGHT - 6):
            picture.rect(x, FLOOR - 3, 5, 3, INK, radius=1.2)
        _saddle(picture)
    else:
        _stand(picture)
    box(picture, FINISHER_LEFT, BIN_TOP, FINISHER_RIGHT, BIN_BOTTOM + (3 if saddle else 0), PLAIN)
    finisher_front(picture, FINISHER_LEFT, BIN_TOP, FINISHER_RIGHT, BIN_BOTTOM)
    if bins:
        _mail_bins(picture)
    out_tray(picture, LOW_TRAY, BIN_REACH, FINISHER_LEFT)
    out_tray(picture, high_tray(bins, saddle), BIN_REACH + (3 if bins else 0), FINISHER_LEFT)
    if exit_tray:
        inner_exit(picture)
    return picture


def high_tray(bins, saddle):
    return HIGH_TRAY + (2 if bins else -1 if saddle else 0)


def inner_exit(picture, tones=BRIGHT):
    """Exit tray 2: in the inner space, above the bridge."""
    inner_tray(picture, EXIT_TRAY, tones, LEFT + 1)


def tall_finisher():
    """The floor-type finisher: as high as the body, with two large trays."""
    picture = Picture(WIDTH, HEIGHT)
    shadow(picture, TALL_LEFT, FINISHER_RIGHT)
    for x in (TALL_LEFT + 2, FINISHER_RIGHT - 7):
        picture.rect(x, FLOOR - 3, 5, 3, INK, radius=1.2)
    box(picture, TALL_LEFT, TALL_TOP, FINISHER_RIGHT, 102.5, PLAIN)
    picture.rect(TALL_LEFT + 4, TALL_TOP + 6, FINISHER_RIGHT - TALL_LEFT - 8, 44, BRIGHT.front, SOFT, FINE_LINE, 1)
    picture.rect(TALL_LEFT + 4, TALL_TOP + 52, FINISHER_RIGHT - TALL_LEFT - 8, 26, BRIGHT.front, SOFT, FINE_LINE, 1)
    picture.rect(TALL_LEFT + 7, TALL_TOP + 24, 2.2, 8, SHADE, radius=1.1)
    picture.rect(TALL_LEFT + 7, TALL_TOP + 61, 2.2, 8, SHADE, radius=1.1)
    for y in TALL_TRAYS:
        out_tray(picture, y, 4, TALL_LEFT, thick=3)
    return picture


TALL_TRAYS = (35, 61)

# -- lit parts ---------------------------------------------------------------------------------------------------------------


def lit(draw, *arguments, **options):
    """A picture with one part in the signal colour; `draw` takes the picture and the colours."""
    picture = Picture(WIDTH, HEIGHT)
    draw(picture, *arguments, tones=LIT, **options)
    return picture


def lit_drawer(top, bottom):
    return lit(drawer, top, bottom)


def lit_saddle():
    picture = Picture(WIDTH, HEIGHT)
    saddle_tray(picture, LIT)
    picture.rect(FINISHER_LEFT + 4, SADDLE_TOP + 4, FINISHER_RIGHT - FINISHER_LEFT - 8, 20, ORANGE, RUST, FINE_LINE, 1)
    _booklet_sign(picture, RUST)
    return picture


def glow(top):
    """Below a lit tray of the job separator: light on what is around it."""
    picture = Picture(WIDTH, HEIGHT)
    for spread, strength in ((5, 0.3), (2.5, 0.4)):
        picture.poly([(LEFT - 8 - spread, top - 3), (LEFT - 2, top - 6 - spread),
                      (RIGHT - 12 + spread / 2, top - 3.4 - spread / 2),
                      (RIGHT - 16, top + 1.8 + spread / 2), (LEFT - 8 - spread / 2,
                                                             top - 0.7 + spread)], ORANGE, fill_opacity=strength)
    return picture


def pictures():
    yield 19000, "body", body()
    yield 19011, "body-trays-3-and-4", cabinet(True)
    yield 19012, "body-tray-3", cabinet(False)
    yield 19009, "side-tray", side_tray()
    yield 19010, "output-tray", output_tray()
    yield 19013, "bridge", bridge()
    yield 19001, "finisher", finisher()
    yield 19003, "finisher-exit-tray", finisher(exit_tray=True)
    yield 19002, "finisher-mail-bins", finisher(bins=True)
    yield 19006, "finisher-mail-bins-exit-tray", finisher(bins=True, exit_tray=True)
    yield 19004, "finisher-saddle", finisher(saddle=True)
    yield 19007, "finisher-saddle-exit-tray", finisher(saddle=True, exit_tray=True)
    yield 19005, "tall-finisher", tall_finisher()
    yield 19008, "job-separator", job_separator()
    yield 19046, "lit-tray-1", lit_drawer(TRAY[0], TRAY[1])
    yield 19047, "lit-tray-2", lit_drawer(TRAY[1], TRAY[2])
    yield 19044, "lit-bypass", lit(bypass)
    yield 19048, "lit-tray-3-of-two", lit_drawer(CABINET_TRAYS[0], CABINET_TRAYS[1])
    yield 19049, "lit-tray-3-alone", lit_drawer(CABINET_TRAYS[0], LONE_TRAY_END)
    yield 19050, "lit-tray-4", lit_drawer(CABINET_TRAYS[1], CABINET_TRAYS[2])
    yield 19039, "lit-side-tray", side_tray(LIT)
    yield 19030, "lit-high-tray", lit(out_tray, HIGH_TRAY, BIN_REACH, FINISHER_LEFT)
    yield 19034, "lit-high-tray-saddle", lit(out_tray, high_tray(False, True), BIN_REACH, FINISHER_LEFT)
    yield 19036, "lit-high-tray-mail-bins", lit(out_tray, high_tray(True, False), BIN_REACH + 3, FINISHER_LEFT)
    yield 19032, "lit-tall-high-tray", lit(out_tray, TALL_TRAYS[0], 4, TALL_LEFT, thick=3)
    yield 19033, "lit-tall-low-tray", lit(out_tray, TALL_TRAYS[1], 4, TALL_LEFT, thick=3)
    yield 19031, "lit-low-tray", lit(out_tray, LOW_TRAY, BIN_REACH, FINISHER_LEFT)
    yield 19045, "lit-exit-tray", lit(inner_exit)
    yield 19037, "lit-separator-low", lit(inner_tray, INNER_LOW)
    yield 19038, "lit-separator-high", lit(inner_tray, INNER_HIGH)
    yield 19051, "glow-separator-low", glow(INNER_LOW)
    yield 19052, "glow-separator-high", glow(INNER_HIGH)
    for place in range(4):
        yield 19040 + place, f"lit-mail-bin-{4 - place}", lit(mail_bin, place)
    yield 19035, "lit-saddle", lit_saddle()
