#!/usr/bin/env python3
"""Draws the programs' icons, 32 by 32 pixels each: the main window's and vtv4v-reg's in 16 colours, the check's in 256.

usage: tools/icons.py src/platform/windows
"""
import struct
import sys
from pathlib import Path

SIZE = 32
CLEAR = None  # a transparent pixel

# The standard 16-colour palette.
BLACK, MAROON, GREEN, OLIVE, NAVY, PURPLE, TEAL, SILVER, GREY, RED, LIME, YELLOW, BLUE, FUCHSIA, AQUA, WHITE = range(16)
PALETTE_16 = [(0, 0, 0), (128, 0, 0), (0, 128, 0), (128, 128, 0), (0, 0, 128), (128, 0, 128), (0, 128, 128),
              (192, 192, 192), (128, 128, 128), (255, 0, 0), (0, 255, 0), (255, 255, 0), (0, 0, 255), (255, 0, 255),
              (0, 255, 255), (255, 255, 255)]


def ico(picture, palette, bits):
    """Returns the content of an icon file. `picture` is a list of rows of palette indexes or CLEAR."""
    per_byte = 8 // bits
    colours = b"".join(struct.pack("<BBBB", b, g, r, 0) for r, g, b in palette)
    colours = colours.ljust(4 << bits, b"\0")
    pixels, mask = bytearray(), bytearray()
    for row in reversed(picture):
        for start in range(0, SIZE, per_byte):
            byte = 0
            for index in row[start:start + per_byte]:
                byte = byte << bits | (index or 0)
            pixels.append(byte)
        mask += int("".join("1" if index is CLEAR else "0" for index in row), 2).to_bytes(SIZE // 8, "big")
    header = struct.pack("<IiiHHIIiiII", 40, SIZE, 2 * SIZE, 1, bits, 0, len(pixels) + len(mask), 0, 0, 0, 0)
    image = header + colours + pixels + mask
    entry = struct.pack("<BBBBHHII", SIZE, SIZE, (1 << bits) & 0xFF, 0, 1, bits, len(image), 22)
    return struct.pack("<HHH", 0, 1, 1) + entry + image


class Canvas:
    """A 16-colour icon, drawn with filled rectangles."""

    def __init__(self):
        self.picture = [[CLEAR] * SIZE for _ in range(SIZE)]

    def fill(self, left, top, right, bottom, colour):
        for y in range(top, bottom + 1):
            for x in range(left, right + 1):
                self.picture[y][x] = colour

    def icon(self):
        return ico(self.picture, PALETTE_16, 4)


def window_icon():
    """Draws a sheet with three sliders, each in a different position."""
    canvas = Canvas()
    fill = canvas.fill
    fill(5, 4, 28, 30, GREY)      # shadow
    fill(3, 1, 26, 28, BLACK)     # outline
    fill(4, 2, 25, 27, WHITE)     # sheet
    fill(4, 2, 25, 6, NAVY)       # title bar
    for x in (6, 9, 12, 15):      # title
        fill(x, 4, x + 1, 4, WHITE)
    for top, knob, dark, light in ((10, 8, MAROON, RED), (16, 17, OLIVE, YELLOW), (22, 13, GREEN, LIME)):
        fill(7, top + 1, 22, top + 2, SILVER)
        fill(7, top + 2, 22, top + 2, GREY)
        fill(knob, top - 1, knob + 4, top + 4, BLACK)
        fill(knob + 1, top, knob + 3, top + 3, light)
        fill(knob + 3, top, knob + 3, top + 3, dark)
        fill(knob + 1, top + 3, knob + 3, top + 3, dark)
    return canvas.icon()


def rollout_icon():
    """Draws a sheet of settings, with arrows to three computers."""
    canvas = Canvas()
    fill = canvas.fill
    fill(2, 6, 14, 27, GREY)      # shadow
    fill(0, 4, 12, 25, BLACK)     # outline
    fill(1, 5, 11, 24, WHITE)     # sheet
    fill(1, 5, 11, 8, NAVY)       # title bar
    fill(3, 6, 6, 7, WHITE)       # title
    for top, colour in ((11, RED), (15, OLIVE), (19, GREEN)):
        fill(3, top, 4, top + 1, colour)
        fill(6, top, 9, top + 1, SILVER)
    for top in (1, 12, 23):
        fill(23, top, 31, top + 6, BLACK)          # screen
        fill(24, top + 1, 30, top + 5, TEAL)
        fill(24, top + 1, 26, top + 1, AQUA)
        fill(25, top + 7, 29, top + 7, GREY)       # foot
    fill(14, 15, 19, 15, BLUE)                     # arrows: a line that branches
    fill(17, 4, 17, 26, BLUE)
    for row in (4, 15, 26):
        fill(17, row, 21, row, BLUE)
        fill(19, row - 2, 19, row + 2, BLUE)
        fill(20, row - 1, 20, row + 1, BLUE)
    return canvas.icon()


def check_icon():
    """Draws a report on a clipboard, with a check mark in a circle that is half green and half red."""
    samples = 8

    def colour(x, y):
        def inside(left, top, right, bottom, radius):
            dx = max(left + radius - x, x - right + radius, 0)
            dy = max(top + radius - y, y - bottom + radius, 0)
            return dx * dx + dy * dy <= radius * radius

        def near(points, width):
            for (ax, ay), (bx, by) in zip(points, points[1:]):
                t = ((x - ax) * (bx - ax) + (y - ay) * (by - ay)) / ((bx - ax) ** 2 + (by - ay) ** 2)
                t = min(max(t, 0), 1)
                if (x - ax - t * (bx - ax)) ** 2 + (y - ay - t * (by - ay)) ** 2 <= width * width:
                    return True
            return False

        if inside(10, 0.5, 20, 6, 2.2):                       # clip
            return (150, 156, 168) if inside(11, 1.5, 19, 5, 1.5) else (84, 90, 102)
        distance = ((x - 22.5) ** 2 + (y - 22.5) ** 2) ** 0.5
        if distance <= 8.6:                                   # circle with the check mark
            if near([(18.2, 22.8), (21.3, 26), (27, 19.2)], 1.35):
                return (255, 255, 255)
            light = 1 - 0.35 * (y - 14) / 17
            base = (58, 178, 74) if x + y < 47.5 else (226, 58, 48)
            rim = 0.72 if distance > 7.7 else 1
            return tuple(int(part * light * rim) for part in base)
        if inside(2.5, 2.5, 27, 30.5, 2.5):                   # board
            if inside(5, 5.5, 24.5, 28, 0.8):                 # report
                for top in (9, 12.5, 16, 19.5, 23):
                    if top <= y <= top + 1.2 and 7.5 <= x <= (22 if top < 16 else 15):
                        return (120, 132, 152)
                return (252, 252, 250)
            light = 1 - 0.3 * y / SIZE
            return (int(176 * light), int(122 * light), int(66 * light))
        return CLEAR

    palette, picture = [(0, 0, 0)], []
    for row in range(SIZE):
        line = []
        for column in range(SIZE):
            seen = [colour(column + (i + 0.5) / samples, row + (j + 0.5) / samples)
                    for i in range(samples) for j in range(samples)]
            seen = [pixel for pixel in seen if pixel is not CLEAR]
            if len(seen) * 2 < samples * samples:
                line.append(CLEAR)
                continue
            mean = tuple(sum(pixel[part] for pixel in seen) // len(seen) // 12 * 12 for part in range(3))
            if mean not in palette:
                palette.append(mean)
            line.append(palette.index(mean))
        picture.append(line)
    return ico(picture, palette, 8)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    folder = Path(sys.argv[1])
    (folder / "vtv4v.ico").write_bytes(window_icon())
    (folder / "vtv4v-reg.ico").write_bytes(rollout_icon())
    (folder / "check.ico").write_bytes(check_icon())
