#!/usr/bin/env python3
"""Writes the small pictures that the toolkit's tests load from the resource archive.

    tools/make_test_images.py [output folder]   (default: resources/images)

Only the standard library is used: PNG is written with zlib and struct, GIF by hand. The
output is the same on every run, so the files can be kept in the repository and made
again at will.
"""
import os
import struct
import sys
import zlib

# A disc on a transparent ground, so that a picture and its scaled form can be told apart
# only by their size.
DISC = (0x33, 0x66, 0xCC, 0xFF)
CLEAR = (0, 0, 0, 0)


def disc_pixels(side):
    """Rows of RGBA tuples: a disc filling a square of `side` pixels."""
    centre = (side - 1) / 2.0
    radius = side / 2.0
    rows = []
    for y in range(side):
        row = []
        for x in range(side):
            inside = (x - centre) ** 2 + (y - centre) ** 2 <= radius * radius
            row.append(DISC if inside else CLEAR)
        rows.append(row)
    return rows


def png_chunk(kind, data):
    body = kind + data
    return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)


def png_bytes(rows):
    """An 8-bit RGBA PNG of the rows."""
    height, width = len(rows), len(rows[0])
    raw = bytearray()
    for row in rows:
        raw.append(0)  # filter: none
        for pixel in row:
            raw.extend(pixel)
    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + png_chunk(b"IHDR", header) +
            png_chunk(b"IDAT", zlib.compress(bytes(raw), 9)) + png_chunk(b"IEND", b""))


def lzw_codes(indexes, min_code_size):
    """LZW data that never grows a table: a clear code every two pixels keeps every code
    at its first width, which any decoder reads the same way."""
    clear = 1 << min_code_size
    codes = []
    for start in range(0, len(indexes), 2):
        codes.append(clear)
        codes.extend(indexes[start:start + 2])
    codes.append(clear + 1)  # end of information
    width = min_code_size + 1
    out = bytearray()
    bits = 0
    count = 0
    for code in codes:
        bits |= code << count
        count += width
        while count >= 8:
            out.append(bits & 0xFF)
            bits >>= 8
            count -= 8
    if count:
        out.append(bits & 0xFF)
    return bytes(out)


def gif_sub_blocks(data):
    out = bytearray()
    for start in range(0, len(data), 255):
        block = data[start:start + 255]
        out.append(len(block))
        out.extend(block)
    out.append(0)
    return bytes(out)


def gif_bytes(frames, side, palette, delay_cs):
    """An animated GIF of square frames of palette indexes, looping forever; index 0 is
    transparent."""
    min_code_size = 2
    table = bytearray()
    for colour in palette:
        table.extend(colour)
    table.extend(b"\0" * (3 * 4 - len(table)))  # four entries: size field 1
    out = bytearray(b"GIF89a")
    out += struct.pack("<HHBBB", side, side, 0x80 | 0x10 | 0x01, 0, 0)
    out += table
    out += b"\x21\xFF\x0BNETSCAPE2.0\x03\x01" + struct.pack("<H", 0) + b"\0"
    for indexes in frames:
        # Graphic control: restore to background, transparent index 0.
        out += b"\x21\xF9\x04" + struct.pack("<BHB", 0x08 | 0x01, delay_cs, 0) + b"\0"
        out += b"\x2C" + struct.pack("<HHHHB", 0, 0, side, side, 0)
        out.append(min_code_size)
        out += gif_sub_blocks(lzw_codes(indexes, min_code_size))
    out += b"\x3B"
    return bytes(out)


def square_frame(side, left, top, size, colour_index):
    return [colour_index if left <= x < left + size and top <= y < top + size else 0
            for y in range(side) for x in range(side)]


def main():
    root = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.join(root, "resources", "images")
    os.makedirs(folder, exist_ok=True)
    files = {
        "frame_test16.png": png_bytes(disc_pixels(16)),
        "frame_test16@2x.png": png_bytes(disc_pixels(32)),
        # A square that steps from the left half to the right half.
        "frame_test_anim.gif": gif_bytes(
            [square_frame(16, 1, 4, 7, 1), square_frame(16, 8, 4, 7, 2)], 16,
            [(0xFF, 0xFF, 0xFF), (0x33, 0x66, 0xCC), (0x99, 0x99, 0x99)], 25),
    }
    for name, data in files.items():
        with open(os.path.join(folder, name), "wb") as out:
            out.write(data)
        print(os.path.join(folder, name))


if __name__ == "__main__":
    main()
