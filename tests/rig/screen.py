"""Screenshots compared: which pixels a thing on the screen accounts for."""

import cairo


def load(path):
    """Rows of four-byte pixels of a PNG."""
    surface = cairo.ImageSurface.create_from_png(str(path))
    data, stride = bytes(surface.get_data()), surface.get_stride()
    width = surface.get_width()
    rows = (data[y * stride : y * stride + 4 * width] for y in range(surface.get_height()))
    return [[row[x : x + 3] for x in range(0, len(row), 4)] for row in rows]


def shown_only_in(shown, before, after):
    """{(x, y): color} of what differs in `shown` while `before` and `after` it are the same.

    A clock that goes on in between is not the thing's, as it does not go back.
    """
    pixels = {}
    for y, row in enumerate(shown):
        for x, pixel in enumerate(row):
            if pixel != before[y][x] and before[y][x] == after[y][x]:
                pixels[x, y] = pixel
    return pixels


def bounds(pixels):
    """The leftmost, topmost, rightmost and lowest place of some pixels."""
    xs, ys = [x for x, _ in pixels], [y for _, y in pixels]
    return min(xs), min(ys), max(xs), max(ys)


def outermost_group(pixels, on_left=False, gap=8):
    """Of those pixels the ones at one end that no `gap` of unchanged columns parts.

    Panels move other things a little when an item comes, on its other side.
    """
    columns = sorted({x for x, _ in pixels}, reverse=not on_left)
    last = columns[0] if columns else 0
    for x in columns:
        if abs(last - x) > gap:
            break
        last = x
    return {at: color for at, color in pixels.items() if at[0] == last or (at[0] < last) == on_left}
