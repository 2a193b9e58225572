"""The pages on the sheet of the paper view: page images, frames around them and figures of their order, all on one grid."""

from sheet_frame import LANDSCAPE, PORTRAIT
from svg import BLUE, EDGE, ORANGE, PAGE, PAPER, SKY, Picture, arrow, figure, text_lines

SIZE = {PORTRAIT: (64, 84), LANDSCAPE: (84, 64)}
HALF_SIZE = {PORTRAIT: (60, 42), LANDSCAPE: (42, 60)}  # two of them on a sheet, the second 45 further
REDUCED = {PORTRAIT: (56, 74), LANDSCAPE: (74, 56)}
HALF_REDUCED = {PORTRAIT: (52, 36), LANDSCAPE: (36, 52)}
LAYOUTS = (1, 2, 4, 6, 9, 16)  # pages by layout class
GAP = 2  # a page's distance from its cell's edge


def size_of(orientation, half):
    return (HALF_SIZE if half else SIZE)[orientation]


def grid(layout, orientation, half):
    """Columns and rows of a layout class. Half a sheet is as wide as the sheet is upright, and the other way round."""
    along, across = ((1, 1), (2, 1), (2, 2), (3, 2), (3, 3), (4, 4))[layout]
    wide = (orientation == LANDSCAPE) != half
    return (along, across) if wide else (across, along)


def cells(layout, orientation, half):
    """Boxes of the pages, row by row."""
    width, height = size_of(orientation, half)
    columns, rows = grid(layout, orientation, half)
    gap = GAP if max(columns, rows) < 4 else 1.5
    return [(width * c / columns + gap, height * r / rows + gap, width / columns - 2 * gap, height / rows - 2 * gap)
            for r in range(rows) for c in range(columns)]


def written_page(picture, x, y, width, height, ground=PAGE, heading=BLUE, edge=SKY, mirrored=False):
    """A page as one knows it by sight: a heading, text, and a picture if there is room for one."""
    if ground:
        picture.rect(x + 0.25, y + 0.25, width - 0.5, height - 0.5, ground, edge, 0.5)
    inset = max(1.5, min(width, height) * 0.11)
    left, top, across, down = x + inset, y + inset, width - 2 * inset, height - 2 * inset
    pitch = max(1.9, min(4, down / 9))
    bar = across * 0.55
    picture.rect(left + across - bar if mirrored else left, top, bar, pitch * 0.62, heading)
    top, down = top + 1.8 * pitch, down - 1.8 * pitch
    if min(width, height) < 30:
        text_lines(picture, left, top, across, down, pitch)
        return
    image = min(across * 0.44, down * 0.42)
    beside = left + image + pitch * 0.8 if not mirrored else left
    at = left if not mirrored else left + across - image
    above = int(down * 0.26 / pitch) * pitch
    text_lines(picture, left, top, across, above, pitch, last=0.85)
    top += above + pitch * 0.3
    picture.rect(at, top, image, image * 0.8, "#d3e3f4", SKY, 0.5)
    picture.poly([(at, top + image * 0.8), (at + image * 0.36, top + image * 0.3), (at + image * 0.6, top + image * 0.6),
                  (at + image * 0.75, top + image * 0.45), (at + image, top + image * 0.8)], SKY)
    picture.circle(at + image * 0.76, top + image * 0.2, image * 0.09, "#f3b45c")
    rows = max(1, int(image * 0.8 / pitch))
    text_lines(picture, beside, top, across - image - pitch * 0.8, rows * pitch, pitch, last=1)
    top += rows * pitch + pitch * 0.5
    text_lines(picture, left, top, across, y + height - inset - top, pitch)


def page_images(layout, orientation, half=False, other=False):
    """The pages of one side; `other`: the half that carries another page than the first, on tinted ground."""
    picture = Picture(*size_of(orientation, half))
    single = layout == 0 and not half
    for box in cells(layout, orientation, half):
        if other:
            written_page(picture, *box, ground="#fdf0dc", heading=ORANGE, edge="#ecc489", mirrored=True)
        else:
            written_page(picture, *box, ground=None if single else PAGE)
    return picture


def reduced_page(orientation, half):
    """One page, smaller, with a dotted line around it."""
    width, height = (HALF_REDUCED if half else REDUCED)[orientation]
    picture = Picture(width, height)
    written_page(picture, 1, 1, width - 2, height - 2)
    picture.rect(0.75, 0.75, width - 1.5, height - 1.5, None, BLUE, 0.9, stroke_dasharray="2.5 2", stroke_linecap="butt")
    return picture


def border(layout, orientation, half, dotted):
    """A frame around each page."""
    picture = Picture(*size_of(orientation, half))
    dots = {"stroke_dasharray": "0.1 2", "stroke_linecap": "round"} if dotted else {}
    for x, y, width, height in cells(layout, orientation, half):
        picture.rect(x, y, width, height, None, EDGE if not dotted else "#3d4852", 1.2 if dotted else 1.1, **dots)
    return picture


# -- page order --------------------------------------------------------------------------------------------------------------


def sequence(order, columns, rows):
    """The cells (column, row) in the order of their pages. Orders 1 and 2 know one line, 3 to 6 a grid."""
    across, down = range(columns), range(rows)
    if order == 1:
        return [(c, r) for r in down for c in across]
    if order == 2:
        return [(c, r) for r in reversed(down) for c in reversed(across)]
    columns_first = order in (4, 6)
    from_left = across if order in (3, 4) else list(reversed(across))
    if columns_first:
        return [(c, r) for c in from_left for r in down]
    return [(c, r) for r in down for c in from_left]


def _badge(picture, value, x, y, height, room):
    """A figure on a white disk, so that it is read over text and over a page's edge."""
    digits = len(str(value))
    if digits > 1:
        height = min(height, room / 2)
    picture.circle(x, y, height * (0.78 if digits == 1 else 0.98), PAPER, fill_opacity=0.92)
    figure(picture, value, x, y, height, BLUE, 0.17)


def _path_of_order(picture, order, columns, rows, width, height):
    """Where figures have no room: a line through the pages, with a dot at the first and a point at the last."""
    places = [((c + 0.5) * width / columns, (r + 0.5) * height / rows) for c, r in sequence(order, columns, rows)]
    picture.line(places, PAPER, 2.8, stroke_opacity=0.7)
    picture.line(places[:-1], BLUE, 1.1)
    arrow(picture, places[-2], places[-1], BLUE, 1.1, 3.6)
    picture.circle(*places[0], 2.2, BLUE)


def order_figures(layout, orientation, half, order):
    width, height = size_of(orientation, half)
    picture = Picture(width, height)
    columns, rows = grid(layout, orientation, half)
    if LAYOUTS[layout] == 16 and half:
        _path_of_order(picture, order, columns, rows, width, height)
        return picture
    cell_width, cell_height = width / columns, height / rows
    tall = min(min(cell_width, cell_height) * 0.46, 13)
    for value, (column, row) in enumerate(sequence(order, columns, rows), 1):
        _badge(picture, value, (column + 0.5) * cell_width, (row + 0.5) * cell_height, tall, cell_width)
    return picture


def order_ends(orientation):
    """Sixteen pages on half a sheet that begin at the upper right and end at the lower left, in either direction."""
    width, height = HALF_SIZE[orientation]
    picture = Picture(width, height)
    first, last = (width * 7 / 8, height / 8), (width / 8, height * 7 / 8)
    picture.line([first, last], PAPER, 3.4, stroke_opacity=0.85)
    picture.line([first, last], BLUE, 1.2, stroke_dasharray="1 2.4")
    arrow(picture, (last[0] + 1, last[1] - 1), last, BLUE, 1.4, 3.6)
    picture.circle(*first, 2.2, BLUE)
    return picture


def order_number(layout, orientation, half, order):
    """The picture of an order: 18 a block (2 of two pages, 4 of each larger layout), a block for each orientation of a whole sheet
    and of half a sheet. There is one number less than there are combinations: the last two share theirs."""
    block = 2 * half + orientation
    place = 18 * block + (order - 1 if layout == 1 else 2 + 4 * (layout - 2) + order - 3)
    place = min(place, 70)
    return 15120 + place if place < 54 else 15996 + place - 54


def border_number(layout, orientation, half, dotted):
    return 15200 + 2 * (layout - 1 + 5 * half) + orientation + 20 * dotted


def pictures():
    for half in (False, True):
        for layout in range(6):
            for orientation in (PORTRAIT, LANDSCAPE):
                name = f"{LAYOUTS[layout]}-{'half-' if half else ''}{'landscape' if orientation else 'portrait'}"
                first = 15092 if half else 15080
                yield first + 2 * layout + orientation, f"pages-{name}", page_images(layout, orientation, half)
                if half:
                    yield 15984 + 2 * layout + orientation, f"other-pages-{name}", page_images(layout, orientation, True, True)
                if layout == 0:
                    continue
                for dotted in (False, True):
                    yield (border_number(layout, orientation, half, dotted),
                           f"border-{'dotted' if dotted else 'solid'}-{name}", border(layout, orientation, half, dotted))
                for order in (1, 2) if layout == 1 else (3, 4, 5, 6):
                    at = order_number(layout, orientation, half, order)
                    if at == 16012:
                        continue
                    yield at, f"order-{order}-{name}", order_figures(layout, orientation, half, order)
    yield 16012, "order-from-right-16-half-landscape", order_ends(LANDSCAPE)
    yield 15110, "reduced-portrait", reduced_page(PORTRAIT, False)
    yield 15111, "reduced-landscape", reduced_page(LANDSCAPE, False)
    yield 15113, "reduced-half-portrait", reduced_page(PORTRAIT, True)
    yield 15112, "reduced-half-landscape", reduced_page(LANDSCAPE, True)
