"""Pictures of pixels as shares of darkness: reads PNG files of 8 bits a channel, one channel of them."""

import struct
import zlib

CELLS = 32
DARK = 16  # of 255: what counts as drawn at the edges


def rows_of(path):
    """Darkness of each pixel, 0 to 255, row by row; alpha is not looked at."""
    with open(path, "rb") as stream:
        data = stream.read()
    width, height, depth, kind = struct.unpack_from(">IIBB", data, 16)
    channels = {0: 1, 2: 3, 4: 2, 6: 4}[kind]
    if depth != 8:
        raise ValueError(f"{path}: {depth} bits")
    packed, at = b"", 8
    while at < len(data):
        length = struct.unpack_from(">I", data, at)[0]
        if data[at + 4:at + 8] == b"IDAT":
            packed += data[at + 8:at + 8 + length]
        at += length + 12
    raw, stride = zlib.decompress(packed), 1 + width * channels
    above = bytes(width)
    for row in range(height):
        line = raw[row * stride:(row + 1) * stride]
        above = unfiltered(line[0], line[1::channels], above)
        yield [255 - value for value in above]


def unfiltered(kind, line, above):
    if kind == 0:
        return line
    if kind == 2:
        return bytes((a + b) & 255 for a, b in zip(line, above))
    result, left, corner = bytearray(len(line)), 0, 0
    for i, value in enumerate(line):
        up = above[i]
        if kind == 1:
            guess = left
        elif kind == 3:
            guess = (left + up) >> 1
        else:
            guess = paeth(left, up, corner)
        left = result[i] = (value + guess) & 255
        corner = up
    return bytes(result)


def paeth(left, up, corner):
    near = left + up - corner
    by_left, by_up, by_corner = abs(near - left), abs(near - up), abs(near - corner)
    if by_left <= by_up and by_left <= by_corner:
        return left
    return up if by_up <= by_corner else corner


def drawn_box(rows):
    """Left, top, right and bottom of what is drawn; nothing where nothing is."""
    drawn = [y for y, row in enumerate(rows) if max(row) > DARK]
    if not drawn:
        return None
    columns = [max(column) > DARK for column in zip(*rows)]
    return columns.index(True), drawn[0], len(columns) - columns[::-1].index(True), drawn[-1] + 1


def dark_shares(rows, box, cells_down):
    """The share of darkness in cells of 1/32 of the box' width and of its height by that number, row by row."""
    left, top, right, bottom = box
    xs = [left + round(i * (right - left) / CELLS) for i in range(CELLS + 1)]
    ys = [top + round(i * (bottom - top) / cells_down) for i in range(cells_down + 1)]
    shares = []
    for above, below in zip(ys, ys[1:]):
        for first, last in zip(xs, xs[1:]):
            pixels = [value for row in rows[above:below] for value in row[first:last]]
            shares.append(sum(pixels) / (255 * len(pixels)) if pixels else 0.0)
    return shares


def apart(shares, other, least=0.002):
    """Cells in which the one has something and the other has nothing, there and all around: strokes that are missing hardly
    change how dark a cell is. Strokes along the edge, half of which lies outside a metafile's picture, are not looked at."""
    found, down = 0, len(shares) // CELLS
    inside = {(y, x) for y in range(1, down - 1) for x in range(1, CELLS - 1)}
    for ours, theirs in ((shares, other), (other, shares)):
        taken = {divmod(i, CELLS) for i, share in enumerate(theirs) if share > least}
        near = {(y + dy, x + dx) for y, x in taken for dy in (-1, 0, 1) for dx in (-1, 0, 1)}
        alone = inside - near
        found += sum(share > least and divmod(i, CELLS) in alone for i, share in enumerate(ours))
    return found
