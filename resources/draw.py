#!/usr/bin/env python3
"""Draws the pictures and the clip of this folder. Not part of the build: run it after a change."""

import math
import struct
from pathlib import Path

HERE = Path(__file__).parent
SAMPLES = 4  # per pixel and axis


def coverage(inside, x, y):
    """The part of pixel (x, y) that lies inside the shape, 0 to 1."""
    hits = sum(
        inside(x + (i + 0.5) / SAMPLES, y + (j + 0.5) / SAMPLES)
        for i in range(SAMPLES)
        for j in range(SAMPLES)
    )
    return hits / SAMPLES**2


def near_segment(px, py, a, b, width):
    (ax, ay), (bx, by) = a, b
    dx, dy = bx - ax, by - ay
    t = max(0.0, min(1.0, ((px - ax) * dx + (py - ay) * dy) / (dx * dx + dy * dy)))
    return math.hypot(px - ax - t * dx, py - ay - t * dy) <= width / 2


def strokes(points, width):
    pairs = list(zip(points, points[1:]))
    return lambda x, y: any(near_segment(x, y, a, b, width) for a, b in pairs)


def rounded_triangle(a, b, c, radius):
    def inside(x, y):
        signs = [
            (q[0] - p[0]) * (y - p[1]) - (q[1] - p[1]) * (x - p[0])
            for p, q in ((a, b), (b, c), (c, a))
        ]
        return all(s >= 0 for s in signs) or any(
            near_segment(x, y, p, q, 2 * radius) for p, q in ((a, b), (b, c), (c, a))
        )

    return inside


def picture(name, layers, size=64):
    """Writes a 32-bit bitmap with premultiplied alpha, bottom row first."""
    rows = bytearray()
    for y in reversed(range(size)):
        for x in range(size):
            red = green = blue = alpha = 0.0
            for inside, colour in layers:
                cover = coverage(inside, x, y)
                red, green, blue = (
                    old * (1 - cover) + new * cover for old, new in zip((red, green, blue), colour)
                )
                alpha = alpha * (1 - cover) + cover
            rows += bytes(round(value) for value in (blue, green, red, alpha * 255))
    header = struct.pack("<IiiHHIIiiII", 40, size, size, 1, 32, 0, len(rows), 0, 0, 0, 0)
    file = struct.pack("<2sIHHI", b"BM", 14 + len(header) + len(rows), 0, 0, 14 + len(header))
    (HERE / name).write_bytes(file + header + rows)


WHITE, RED, GREEN, AMBER, DARK = (
    (255, 255, 255),
    (200, 48, 44),
    (46, 140, 72),
    (240, 176, 32),
    (60, 48, 16),
)


def disc(x, y):
    return math.hypot(x - 32, y - 32) <= 29


def cross(x, y):
    return strokes([(21, 21), (43, 43)], 7)(x, y) or strokes([(43, 21), (21, 43)], 7)(x, y)


def exclamation(x, y):
    return strokes([(32, 24), (32, 38)], 6)(x, y) or math.hypot(x - 32, y - 47.5) <= 3.6


def title(name, width=150, height=300):
    """The wizards' side: a trunk of revisions with two branches, light on blue. 24-bit."""
    trunk = [(46, 290), (46, 18)]
    branches = [[(46, 214), (88, 176), (88, 52)], [(46, 130), (16, 100), (16, 60)]]
    revisions = [(46, y) for y in (262, 214, 172, 130, 88, 46)]
    revisions += [(88, y) for y in (158, 112, 66)] + [(16, 78)]
    lines = [strokes(points, 3) for points in [trunk, *branches]]
    layers = [
        (lambda x, y: any(line(x, y) for line in lines), (190, 208, 232)),
        (lambda x, y: any(math.hypot(x - a, y - b) <= 8 for a, b in revisions), (236, 242, 250)),
        (lambda x, y: any(math.hypot(x - a, y - b) <= 4 for a, b in revisions), (52, 92, 148)),
    ]
    rows = bytearray()
    for y in reversed(range(height)):
        t = y / height
        row = bytearray()
        for x in range(width):
            colour = tuple(a + (b - a) * t for a, b in zip((44, 78, 128), (88, 132, 188)))
            for inside, paint in layers:
                cover = coverage(inside, x, y)
                colour = tuple(old * (1 - cover) + new * cover for old, new in zip(colour, paint))
            red, green, blue = (round(value) for value in colour)
            row += bytes((blue, green, red))
        rows += row + b"\0" * (-len(row) % 4)
    header = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(rows), 0, 0, 0, 0)
    file = struct.pack("<2sIHHI", b"BM", 14 + len(header) + len(rows), 0, 0, 14 + len(header))
    (HERE / name).write_bytes(file + header + rows)


def icon(name, sizes=(16, 32, 48)):
    """The host's icon: two revisions on a trunk and one on a branch. 32-bit."""
    images = []
    for size in sizes:
        unit = size / 16
        scaled = lambda points: [(x * unit, y * unit) for x, y in points]
        lines = [
            strokes(scaled([(5, 14.5), (5, 1.5)]), 1.6 * unit),
            strokes(scaled([(5, 10.5), (11.5, 7), (11.5, 3)]), 1.6 * unit),
        ]
        discs = scaled([(5, 12.5), (5, 4), (11.5, 4)])
        layers = [
            (lambda x, y: any(line(x, y) for line in lines), (70, 110, 170)),
            (lambda x, y: any(math.hypot(x - a, y - b) <= 2.9 * unit for a, b in discs), (32, 72, 132)),
            (lambda x, y: any(math.hypot(x - a, y - b) <= 1.5 * unit for a, b in discs), WHITE),
        ]
        rows = bytearray()
        for y in reversed(range(size)):
            for x in range(size):
                red = green = blue = alpha = 0.0
                for inside, colour in layers:
                    cover = coverage(inside, x, y)
                    if cover:
                        red, green, blue = (
                            old * (1 - cover) * bool(alpha) + new * (cover if alpha else 1)
                            for old, new in zip((red, green, blue), colour)
                        )
                    alpha = alpha * (1 - cover) + cover
                rows += bytes(min(255, round(v)) for v in (blue, green, red, alpha * 255))
        mask = bytes(((size + 31) // 32) * 4 * size)
        header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, len(rows), 0, 0, 0, 0)
        images.append((size, header + bytes(rows) + mask))
    file = struct.pack("<HHH", 0, 1, len(images))
    offset = len(file) + 16 * len(images)
    for size, data in images:
        file += struct.pack("<BBBBHHII", size, size, 0, 0, 1, 32, len(data), offset)
        offset += len(data)
    (HERE / name).write_bytes(file + b"".join(data for _, data in images))


def chunk(tag, data):
    return tag + struct.pack("<I", len(data)) + data + b"\0" * (len(data) % 2)


def group(kind, *parts):
    return chunk(b"LIST", kind + b"".join(parts))


def clip(name, width=200, height=40, frames=20, rate=12):
    """Writes an uncompressed 8-bit clip: dots that light up one after the other."""
    background, rest, bright = (240, 240, 240), (200, 208, 220), (40, 96, 168)
    shades = 96
    palette = [background]
    # Each shade of a dot, and each of them half mixed with the background for its edge.
    for level in range(shades):
        t = level / (shades - 1)
        palette.append(tuple(round(a + (b - a) * t) for a, b in zip(rest, bright)))
    for level in range(shades):
        palette.append(tuple((c + b) // 2 for c, b in zip(palette[1 + level], background)))
    palette += [background] * (256 - len(palette))

    dots, gap = 5, 28
    left = width / 2 - (dots - 1) * gap / 2
    images = []
    for frame in range(frames):
        image = bytearray(width * height)
        for dot in range(dots):
            phase = (frame / frames - dot / (dots + 3)) % 1.0
            glow = max(0.0, math.cos(2 * math.pi * phase)) ** 2
            centre, radius = left + dot * gap, 6 + 2 * glow
            for y in range(height):
                for x in range(int(centre - 10), int(centre + 11)):
                    cover = coverage(
                        lambda px, py: math.hypot(px - centre, py - height / 2) <= radius, x, y
                    )
                    if cover > 0.25:
                        shade = 1 + round(glow * (shades - 1)) + (0 if cover > 0.75 else shades)
                        image[(height - 1 - y) * width + x] = shade
        images.append(bytes(image))

    size = width * height
    bitmap = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 8, 0, size, 0, 0, 256, 0)
    bitmap += b"".join(struct.pack("<BBBB", b, g, r, 0) for r, g, b in palette)
    main = struct.pack(
        "<14I", 1000000 // rate, size * rate, 0, 0x10, frames, 0, 1, size, width, height, 0, 0, 0, 0
    )
    stream = struct.pack(
        "<4s4sIHHIIIIIIII4H",
        b"vids", b"DIB ", 0, 0, 0, 0, 1, rate, 0, frames, size, 0xFFFFFFFF, size,
        0, 0, width, height,
    )
    movie = b"".join(chunk(b"00db", image) for image in images)
    index = b"".join(
        struct.pack("<4sIII", b"00db", 0x10, 4 + i * (8 + size), size) for i in range(frames)
    )
    body = (
        group(b"hdrl", chunk(b"avih", main), group(b"strl", chunk(b"strh", stream), chunk(b"strf", bitmap)))
        + group(b"movi", movie)
        + chunk(b"idx1", index)
    )
    (HERE / name).write_bytes(chunk(b"RIFF", b"AVI " + body))


if __name__ == "__main__":
    picture("err.bmp", [(disc, RED), (cross, WHITE)])
    picture("succes.bmp", [(disc, GREEN), (strokes([(19, 33), (28, 42), (45, 23)], 7), WHITE)])
    picture("alert.bmp", [(rounded_triangle((32, 9), (58, 54), (6, 54), 4), AMBER), (exclamation, DARK)])
    title("title2.bmp")
    icon("host.ico")
    clip("progress.avi")
