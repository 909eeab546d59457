#!/usr/bin/env python3
"""Draws the module's artwork: the session form's banner and the window icon.

The pictures are ours: a return sheet with a tick on a navy-to-teal band. Run
from the repository root to redraw frontend/artwork/*.png (plain Python, no
image library: shapes are sampled 4 x 4 per pixel and written as PNG).
"""
import math
import struct
import zlib

NAVY = (11, 57, 84)
TEAL = (8, 126, 139)
WHITE = (255, 255, 255)
LINE = (160, 178, 190)
GREEN = (46, 160, 67)
SAMPLES = 4


def in_round_rect(x, y, left, top, right, bottom, radius):
    if x < left or x > right or y < top or y > bottom:
        return False
    cx = min(max(x, left + radius), right - radius)
    cy = min(max(y, top + radius), bottom - radius)
    return (x - cx) ** 2 + (y - cy) ** 2 <= radius ** 2


def near_segment(x, y, a, b, half_width):
    (ax, ay), (bx, by) = a, b
    dx, dy = bx - ax, by - ay
    t = max(0.0, min(1.0, ((x - ax) * dx + (y - ay) * dy) / (dx * dx + dy * dy)))
    px, py = ax + t * dx, ay + t * dy
    return (x - px) ** 2 + (y - py) ** 2 <= half_width ** 2


def sheet_shapes(ox, oy, scale):
    """The return sheet with its lines and the tick badge, as (test, colour) layers."""
    s = scale
    layers = [
        (lambda x, y: in_round_rect(x, y, ox, oy, ox + 34 * s, oy + 44 * s, 3 * s), WHITE),
    ]
    for i in range(5):
        top = oy + (9 + i * 6) * s
        width = 22 if i % 2 else 26
        layers.append((lambda x, y, top=top, width=width:
                       in_round_rect(x, y, ox + 5 * s, top, ox + (5 + width) * s, top + 2 * s, 1 * s), LINE))
    cx, cy, r = ox + 30 * s, oy + 38 * s, 11 * s
    layers.append((lambda x, y: (x - cx) ** 2 + (y - cy) ** 2 <= r ** 2, GREEN))
    layers.append((lambda x, y: near_segment(x, y, (cx - 5.5 * s, cy + 0.5 * s), (cx - 1.5 * s, cy + 4.5 * s), 1.6 * s)
                   or near_segment(x, y, (cx - 1.5 * s, cy + 4.5 * s), (cx + 6 * s, cy - 4 * s), 1.6 * s), WHITE))
    return layers


def render(width, height, background, layers):
    rows = []
    for py in range(height):
        row = bytearray([0])
        for px in range(width):
            acc = [0.0, 0.0, 0.0, 0.0]
            for sy in range(SAMPLES):
                for sx in range(SAMPLES):
                    x = px + (sx + 0.5) / SAMPLES
                    y = py + (sy + 0.5) / SAMPLES
                    colour = background(x, y)
                    for test, layer_colour in layers:
                        if test(x, y):
                            colour = layer_colour + (255,)
                    for i in range(4):
                        acc[i] += colour[i]
            row += bytes(int(round(c / (SAMPLES * SAMPLES))) for c in acc)
        rows.append(bytes(row))
    return rows


def write_png(path, width, height, rows):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF)

    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    with open(path, "wb") as out:
        out.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header)
                  + chunk(b"IDAT", zlib.compress(b"".join(rows), 9)) + chunk(b"IEND", b""))


def band(width):
    def colour(x, y):
        t = min(1.0, x / width)
        shade = [round(NAVY[i] + (TEAL[i] - NAVY[i]) * t) for i in range(3)]
        # a faint wave across the band
        if abs(y - (48 + 10 * math.sin(x / 60.0))) < 1.0:
            shade = [min(255, c + 18) for c in shade]
        return tuple(shade) + (255,)
    return colour


def main():
    width, height = 960, 72
    write_png("frontend/artwork/banner.png", width, height,
              render(width, height, band(width), sheet_shapes(30, 10, 1.15)))
    size = 64
    icon_bg = lambda x, y: (TEAL + (255,)) if in_round_rect(x, y, 1, 1, size - 1, size - 1, 12) else (0, 0, 0, 0)
    write_png("frontend/artwork/icon.png", size, size, render(size, size, icon_bg, sheet_shapes(12, 7, 1.0)))


if __name__ == "__main__":
    main()
