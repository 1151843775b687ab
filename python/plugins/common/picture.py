"""Pictures of grids as PNG files (ISO/IEC 15948), written with nothing but the standard library.

The build puts this file beside each plugin that imports it.
"""

import math
import struct
import zlib

#: Dark blue over green to yellow: lightness rises evenly, so it reads without colour, too.
_RAMP = ((68, 1, 84), (59, 82, 139), (33, 145, 140), (94, 201, 98), (253, 231, 37))
_MOST_PIXELS = 2000
_LEAST_PIXELS = 400


def picture_of(grid, cells, values, most=math.inf):
    """The bytes of a PNG file of cells with values, north up; cells without one are transparent.

    most: values beyond have the last colour. Small grids are enlarged; of large ones each n-th row
    and column is shown."""
    low, high = min(values, default=0.0), min(most, max(values, default=0.0))
    scale = 254 / (high - low) if high > low else 0.0
    colours = bytearray(grid.size)  # numbers in the palette; 0: no value
    for cell, value in zip(cells, values):
        colours[cell] = 1 + int((min(value, high) - low) * scale)
    longest = max(grid.columns, grid.rows)
    step = math.ceil(longest / _MOST_PIXELS)
    factor = max(1, _LEAST_PIXELS // longest)
    lines = []
    for row in reversed(range(0, grid.rows, step)):
        line = colours[row * grid.columns : (row + 1) * grid.columns : step]
        if factor > 1:
            line = b"".join(line[i : i + 1] * factor for i in range(len(line)))
        lines += [b"\0" + line] * factor  # each line begins with its filter method: none
    return _png(len(lines[0]) - 1, lines)


def legend(text, values, most=math.inf):
    """A title that tells what the colours mean."""
    if not values:
        return text
    high = max(values)
    last = f"{most:.6g} and more" if most < high else f"{high:.6g}"
    return f"{text}: {min(values):.6g} (dark blue) to {last} (yellow)"


def _png(width, lines):
    header = struct.pack(">IIBBBBB", width, len(lines), 8, 3, 0, 0, 0)  # 8 bits, with a palette
    palette = b"\0\0\0" + b"".join(_colour(i / 254) for i in range(255))
    return b"\x89PNG\r\n\x1a\n" + b"".join(
        (
            _chunk(b"IHDR", header),
            _chunk(b"PLTE", palette),
            _chunk(b"tRNS", b"\0"),  # the first colour of the palette is transparent
            _chunk(b"IDAT", zlib.compress(b"".join(lines), 6)),
            _chunk(b"IEND", b""),
        )
    )


def _colour(place):
    i = min(int(place * (len(_RAMP) - 1)), len(_RAMP) - 2)
    rest = place * (len(_RAMP) - 1) - i
    return bytes(round(a + (b - a) * rest) for a, b in zip(_RAMP[i], _RAMP[i + 1]))


def _chunk(kind, data):
    checksum = zlib.crc32(kind + data)
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", checksum)
