#!/usr/bin/env python3
"""Draws the program's icon, a sheet of source text with the three kinds of declarations on it, and
writes it as a Windows icon with the sizes 16 to 256.

Usage: make_icon.py src/app/declarium.ico
"""
import struct
import sys
import zlib

SIZES = (16, 20, 24, 32, 40, 48, 64, 256)
SAMPLES = 4  # per pixel and direction

SHEET = (252, 252, 250)
EDGE = (46, 74, 122)
BAND = (38, 92, 166)
LINES = (
    # top, left, right of the drawn lines in units of the icon, and their colors
    (0.40, 0.24, 0.44, (0, 0, 200)), (0.40, 0.50, 0.78, (90, 90, 96)),
    (0.55, 0.24, 0.36, (0, 0, 200)), (0.55, 0.42, 0.66, (90, 90, 96)),
    (0.70, 0.24, 0.40, (0, 0, 200)), (0.70, 0.46, 0.72, (0, 128, 0)),
)


def inside_round_box(x, y, left, top, right, bottom, radius):
    if not (left <= x <= right and top <= y <= bottom):
        return False
    nearest_x = min(max(x, left + radius), right - radius)
    nearest_y = min(max(y, top + radius), bottom - radius)
    return (x - nearest_x) ** 2 + (y - nearest_y) ** 2 <= radius ** 2


def color_at(x, y):
    """The color at a point of the unit square, None outside the sheet."""
    if not inside_round_box(x, y, 0.08, 0.04, 0.92, 0.96, 0.10):
        return None
    if not inside_round_box(x, y, 0.13, 0.09, 0.87, 0.91, 0.06):
        return EDGE
    if y < 0.30:
        return BAND
    for top, left, right, color in LINES:
        if top <= y <= top + 0.075 and left <= x <= right:
            return color
    return SHEET


def pixels(size):
    for row in range(size):
        for column in range(size):
            samples = [color_at((column + (i + 0.5) / SAMPLES) / size,
                                 (row + (j + 0.5) / SAMPLES) / size)
                       for i in range(SAMPLES) for j in range(SAMPLES)]
            hit = [s for s in samples if s]
            if not hit:
                yield 0, 0, 0, 0
                continue
            mean = [round(sum(c[k] for c in hit) / len(hit)) for k in range(3)]
            yield *mean, round(255 * len(hit) / len(samples))


def png(size):
    def chunk(kind, data):
        return (struct.pack(">I", len(data)) + kind + data +
                struct.pack(">I", zlib.crc32(kind + data)))

    flat = list(pixels(size))
    rows = b"".join(b"\0" + b"".join(bytes(p) for p in flat[r * size:(r + 1) * size])
                    for r in range(size))
    header = struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
            chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def bitmap(size):
    """A 32-bit device-independent bitmap with its empty mask, as icons hold it."""
    flat = list(pixels(size))
    rows = b"".join(b"".join(bytes((b, g, r, a)) for r, g, b, a in flat[row * size:(row + 1) * size])
                    for row in reversed(range(size)))
    mask = bytes((size + 31) // 32 * 4 * size)
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, len(rows) + len(mask),
                         0, 0, 0, 0)
    return header + rows + mask


def main():
    images = [png(s) if s == 256 else bitmap(s) for s in SIZES]
    offset = 6 + 16 * len(images)
    directory = struct.pack("<HHH", 0, 1, len(images))
    for size, image in zip(SIZES, images):
        directory += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(image), offset)
        offset += len(image)
    with open(sys.argv[1], "wb") as file:
        file.write(directory + b"".join(images))


if __name__ == "__main__":
    main()
