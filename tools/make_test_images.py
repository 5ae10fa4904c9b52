#!/usr/bin/env python3
"""Writes the small pictures that the toolkit's tests load from the resource archive.

    tools/make_test_images.py [output folder]   (default: resources/images)

Only the standard library is used: the PNG and GIF writers are those of make_images.py
beside this file. The output is the same on every run, so the files can be kept in the
repository and made again at will.
"""
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from make_images import gif_bytes, png_bytes  # noqa: E402

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
