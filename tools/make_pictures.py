#!/usr/bin/env python3
"""Draws the products' own small pictures into their resource files. Run by hand after a change of the drawings."""
import struct
import sys
from pathlib import Path

ROOT = Path(sys.argv[1])
CLEAR = (0, 0, 0, 0)


class Picture:
    def __init__(self, size):
        self.size = size
        self.pixels = [[CLEAR] * size for _ in range(size)]

    def put(self, x, y, colour):
        if 0 <= x < self.size and 0 <= y < self.size:
            self.pixels[y][x] = colour

    def box(self, left, top, right, bottom, colour):
        for y in range(top, bottom):
            for x in range(left, right):
                self.put(x, y, colour)

    def frame(self, left, top, right, bottom, line, fill):
        self.box(left, top, right, bottom, line)
        self.box(left + 1, top + 1, right - 1, bottom - 1, fill)

    def stroke(self, x0, y0, x1, y1, width, colour):
        steps = 4 * max(abs(x1 - x0), abs(y1 - y0), 1)
        for step in range(int(steps) + 1):
            x, y = x0 + (x1 - x0) * step / steps, y0 + (y1 - y0) * step / steps
            for dy in range(width):
                for dx in range(width):
                    self.put(int(x + dx - width / 2 + 0.5), int(y + dy - width / 2 + 0.5), colour)

    def ring(self, cx, cy, rx, ry, width, colour):
        for y in range(self.size):
            for x in range(self.size):
                outer = ((x + .5 - cx) / rx) ** 2 + ((y + .5 - cy) / ry) ** 2
                inner = ((x + .5 - cx) / (rx - width)) ** 2 + ((y + .5 - cy) / (ry - width)) ** 2
                if outer <= 1 < inner:
                    self.put(x, y, colour)

    def palette_image(self):
        """The same with at most 256 colours, a quarter of the size."""
        size = self.size
        colours = sorted({pixel for row in self.pixels for pixel in row if pixel[3] >= 128} | {(0, 0, 0, 255)})
        row_bytes = (size + 3) // 4 * 4
        mask_bytes = (size + 31) // 32 * 4
        data, mask = bytearray(), bytearray()
        for row in reversed(self.pixels):
            data += bytes(colours.index(pixel if pixel[3] >= 128 else (0, 0, 0, 255)) for pixel in row).ljust(row_bytes, b'\0')
            bits = bytearray(mask_bytes)
            for x, pixel in enumerate(row):
                if pixel[3] < 128:
                    bits[x // 8] |= 0x80 >> (x % 8)
            mask += bits
        header = struct.pack('<IiiHHIIiiII', 40, size, size * 2, 1, 8, 0, 0, 0, 0, len(colours), 0)
        return header + b''.join(bytes((b, g, r, 0)) for r, g, b, _ in colours) + bytes(data) + bytes(mask)

    def icon_image(self):
        size = self.size
        header = struct.pack('<IiiHHIIiiII', 40, size, size * 2, 1, 32, 0, 0, 0, 0, 0, 0)
        colours = b''.join(bytes((b, g, r, a)) for row in reversed(self.pixels) for r, g, b, a in row)
        mask_row = (size + 31) // 32 * 4
        mask = bytearray()
        for row in reversed(self.pixels):
            bits = bytearray(mask_row)
            for x, pixel in enumerate(row):
                if pixel[3] < 128:
                    bits[x // 8] |= 0x80 >> (x % 8)
            mask += bits
        return header + colours + bytes(mask)


def page(size):
    """A sheet of paper with lines."""
    picture, unit = Picture(size), size / 16
    at = lambda value: int(round(value * unit))
    grey, white, line = (110, 118, 130, 255), (255, 255, 255, 255), (170, 178, 190, 255)
    picture.frame(at(2), at(1), at(13), at(15), grey, white)
    for y in (4, 7, 10):
        picture.box(at(4), at(y), at(11), at(y) + max(1, at(.8)), line)
    return picture, at


def missing_file(size):
    picture, at = page(size)
    red = (200, 30, 40, 255)
    width = max(2, at(1.6))
    picture.stroke(at(7), at(8), at(14), at(15) - 1, width, red)
    picture.stroke(at(14), at(8), at(7), at(15) - 1, width, red)
    return picture


def link(size):
    picture, unit = Picture(size), size / 16
    blue, light = (20, 90, 170, 255), (90, 160, 225, 255)
    picture.ring(8 * unit, 8 * unit, 7 * unit, 7 * unit, 1.3 * unit, blue)
    picture.ring(8 * unit, 8 * unit, 3.6 * unit, 7 * unit, 1 * unit, light)
    picture.box(int(2 * unit), int(7.5 * unit), int(14 * unit), int(8.5 * unit) + (0 if unit > 1 else 1), light)
    return picture


def grid(size):
    picture, unit = Picture(size), size / 16
    at = lambda value: int(round(value * unit))
    dark, white, blue = (70, 84, 104, 255), (255, 255, 255, 255), (58, 124, 196, 255)
    picture.frame(at(1), at(2), at(15), at(14), dark, white)
    picture.box(at(1), at(2), at(15), at(5), blue)
    for y in (8, 11):
        picture.box(at(1), at(y), at(15), at(y) + max(1, at(.6)), dark)
    picture.box(at(6), at(5), at(6) + max(1, at(.6)), at(14), dark)
    return picture


def document(size):
    return page(size)[0]


def folder(size):
    picture, unit = Picture(size), size / 16
    at = lambda value: int(round(value * unit))
    brown, yellow, light = (150, 110, 30, 255), (244, 200, 90, 255), (252, 224, 150, 255)
    picture.frame(at(1), at(3), at(7), at(6), brown, yellow)
    picture.frame(at(1), at(5), at(15), at(14), brown, yellow)
    picture.box(at(2), at(6) + 1, at(14), at(8), light)
    return picture


def kind(size):
    """A document with a globe: either may be meant."""
    picture, at = page(size)
    small = link(max(size // 2, 1))
    for y in range(small.size):
        for x in range(small.size):
            if small.pixels[y][x][3]:
                picture.put(size - small.size + x, size - small.size + y, small.pixels[y][x])
    return picture


def notes(size):
    picture, at = page(size)
    picture.stroke(at(14), at(5), at(8), at(12), max(2, at(1.5)), (224, 150, 40, 255))
    picture.stroke(at(8), at(12), at(7), at(13), max(1, at(1)), (60, 60, 60, 255))
    return picture


def save_icon(path, draw, sizes=(16, 20, 24, 32, 48), plain=False):
    images = [draw(size) for size in sizes]
    entries, data, offset = b'', b'', 6 + 16 * len(images)
    for image in images:
        content = image.palette_image() if plain else image.icon_image()
        depth = 8 if plain else 32
        entries += struct.pack('<BBBBHHII', image.size, image.size, 0, 0, 1, depth, len(content), offset)
        data += content
        offset += len(content)
    path.write_bytes(struct.pack('<HHH', 0, 1, len(images)) + entries + data)


def save_toolbox_bitmap(path):
    picture = grid(16)
    rows = b''.join(b''.join(bytes(p[2::-1]) if p[3] else b'\xc0\xc0\xc0' for p in row) for row in reversed(picture.pixels))
    header = struct.pack('<IiiHHIIiiII', 40, 16, 16, 1, 24, 0, len(rows), 0, 0, 0, 0)
    path.write_bytes(struct.pack('<2sIHHI', b'BM', 14 + len(header) + len(rows), 0, 0, 54) + header + rows)


save_icon(ROOT / 'server/missing_file.ico', missing_file)
save_icon(ROOT / 'server/link.ico', link)
for name, draw, sizes in (('document', document, (16, 24, 32)), ('notes', notes, (32, 48, 64)),
                          ('folder', folder, (32, 48, 64)), ('kind', kind, (32, 48, 64))):
    save_icon(ROOT / f'server/{name}.ico', draw, sizes, True)
save_icon(ROOT / 'workbench/program/workbench.ico', grid)
save_toolbox_bitmap(ROOT / 'grid/control/toolbox.bmp')
