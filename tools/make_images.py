#!/usr/bin/env python3
"""Draws the library's message pictures, the disclosure chevrons of folding frames and the
buttons of folder lists, and writes them as PNG and GIF files.

    tools/make_images.py [output folder]   (default: resources/images)

The pictures form one set in the flat look of current GTK desktops: round shapes filled with
one colour of the GNOME palette, a thin edge one step darker, and a bold symbol in white (in
dark grey on yellow). Each is drawn at every size it ships in, "name.png" and twice as large
"name@2x.png", never scaled from another size, with its strokes placed on the pixel grid.

Only the standard library is used. Shapes are signed distance functions, rasterised with
16 x 16 samples a pixel where an edge crosses it. PNG is written with zlib and struct, GIF by
hand. The output is the same on every run, so the files can be kept in the repository and
made again at will.
"""
import math
import os
import struct
import sys
import zlib

# ---------------------------------------------------------------------------------------------
# File writers

def png_chunk(kind, data):
    body = kind + data
    return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)


def png_bytes(rows):
    """An 8-bit RGBA PNG of rows of RGBA tuples."""
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
    transparent. The colour table has at least four entries."""
    bits = 2
    while (1 << bits) < len(palette):
        bits += 1
    min_code_size = bits
    table = bytearray()
    for colour in palette:
        table.extend(colour)
    table.extend(b"\0" * (3 * (1 << bits) - len(table)))
    out = bytearray(b"GIF89a")
    # Global colour table of 2^bits entries, colour resolution 2^bits.
    out += struct.pack("<HHBBB", side, side, 0x80 | ((bits - 1) << 4) | (bits - 1), 0, 0)
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


# ---------------------------------------------------------------------------------------------
# Shapes: signed distance functions of a point in pixel units, negative inside. Pixel (i, j)
# covers [i, i + 1) x [j, j + 1). Each function gives the exact distance outside its shape and
# no more than the distance inside, which the rasteriser relies on to skip plain pixels.

def circle(cx, cy, r):
    return lambda x, y: math.hypot(x - cx, y - cy) - r


def segment_distance(x, y, ax, ay, bx, by):
    dx, dy = bx - ax, by - ay
    length2 = dx * dx + dy * dy
    t = 0.0 if length2 == 0 else max(0.0, min(1.0, ((x - ax) * dx + (y - ay) * dy) / length2))
    return math.hypot(x - ax - t * dx, y - ay - t * dy)


def stroke(points, width):
    """A line through the points, `width` thick, with round caps and joins."""
    r = width / 2.0
    pairs = list(zip(points, points[1:])) or [(points[0], points[0])]

    def sdf(x, y):
        return min(segment_distance(x, y, a[0], a[1], b[0], b[1]) for a, b in pairs) - r
    return sdf


def rounded_rect(x0, y0, x1, y1, r):
    cx, cy = (x0 + x1) / 2.0, (y0 + y1) / 2.0
    hx, hy = (x1 - x0) / 2.0 - r, (y1 - y0) / 2.0 - r

    def sdf(x, y):
        qx, qy = abs(x - cx) - hx, abs(y - cy) - hy
        return math.hypot(max(qx, 0.0), max(qy, 0.0)) + min(max(qx, qy), 0.0) - r
    return sdf


def polygon_sdf(points):
    """The exact distance to a convex polygon, negative inside."""
    edges = list(zip(points, points[1:] + points[:1]))
    # Orientation, so that "inside" is the same side of every edge.
    area = sum(a[0] * b[1] - b[0] * a[1] for a, b in edges)
    sign = 1.0 if area > 0 else -1.0

    def sdf(x, y):
        distance = min(segment_distance(x, y, a[0], a[1], b[0], b[1]) for a, b in edges)
        inside = all(sign * ((b[0] - a[0]) * (y - a[1]) - (b[1] - a[1]) * (x - a[0])) >= 0
                     for a, b in edges)
        return -distance if inside else distance
    return sdf


def rounded_triangle(a, b, c, r):
    """The triangle a, b, c with its corners rounded to radius r; its sides stay in place."""
    la = math.hypot(b[0] - c[0], b[1] - c[1])
    lb = math.hypot(a[0] - c[0], a[1] - c[1])
    lc = math.hypot(a[0] - b[0], a[1] - b[1])
    perimeter = la + lb + lc
    ix = (la * a[0] + lb * b[0] + lc * c[0]) / perimeter
    iy = (la * a[1] + lb * b[1] + lc * c[1]) / perimeter
    area = abs((b[0] - a[0]) * (c[1] - a[1]) - (c[0] - a[0]) * (b[1] - a[1])) / 2.0
    inradius = 2.0 * area / perimeter
    k = (inradius - r) / inradius  # the triangle shrunk by r about its incentre
    core = polygon_sdf([(ix + (p[0] - ix) * k, iy + (p[1] - iy) * k) for p in (a, b, c)])
    return lambda x, y: core(x, y) - r


def union(*shapes):
    return lambda x, y: min(shape(x, y) for shape in shapes)


def inset(shape, amount):
    return lambda x, y: shape(x, y) + amount


# ---------------------------------------------------------------------------------------------
# Rasteriser

SAMPLES = 16  # a pixel's samples along each axis where an edge crosses it


def coverage(shape, side):
    """Rows of the part of each pixel that the shape covers, 0 to 1."""
    offsets = [(k + 0.5) / SAMPLES for k in range(SAMPLES)]
    rows = []
    for j in range(side):
        row = []
        for i in range(side):
            d = shape(i + 0.5, j + 0.5)
            if d >= 0.75:  # farther than the pixel's half diagonal
                row.append(0.0)
            elif d <= -0.75:
                row.append(1.0)
            else:
                hits = sum(1 for oy in offsets for ox in offsets if shape(i + ox, j + oy) <= 0)
                row.append(hits / float(SAMPLES * SAMPLES))
        rows.append(row)
    return rows


def hex_colour(text):
    return tuple(int(text[k:k + 2], 16) for k in (1, 3, 5))


class canvas_t:
    """A square of premultiplied RGBA floats that shapes are painted onto, one over another."""

    def __init__(self, side):
        self.side = side
        self.pixels = [[(0.0, 0.0, 0.0, 0.0)] * side for _ in range(side)]
        # The colour kept in fully transparent pixels: that of the first shape painted, the
        # outermost, so that a scaler that ignores alpha blends towards it, not towards black.
        self.ground = None

    def paint(self, shape, colour, opacity=1.0):
        if self.ground is None:
            self.ground = hex_colour(colour)
        r, g, b = (channel / 255.0 for channel in hex_colour(colour))
        for j, row in enumerate(coverage(shape, self.side)):
            for i, c in enumerate(row):
                c *= opacity
                if c:
                    pr, pg, pb, pa = self.pixels[j][i]
                    self.pixels[j][i] = (r * c + pr * (1 - c), g * c + pg * (1 - c),
                                         b * c + pb * (1 - c), c + pa * (1 - c))

    def rgba_rows(self):
        rows = []
        for row in self.pixels:
            out = []
            for pr, pg, pb, pa in row:
                alpha = int(round(pa * 255))
                if alpha == 0:
                    out.append((self.ground or (0, 0, 0)) + (0,))
                else:
                    out.append(tuple(int(round(min(1.0, channel / pa) * 255))
                                     for channel in (pr, pg, pb)) + (alpha,))
            rows.append(out)
        return rows


# ---------------------------------------------------------------------------------------------
# The pictures

RED, RED_EDGE = "#e01b24", "#c01c28"
DARK_RED, DARK_RED_EDGE = "#a51d2d", "#7d1520"
YELLOW, YELLOW_EDGE = "#f5c211", "#e5a50a"
GREEN, GREEN_EDGE = "#2ec27e", "#26a269"
BLUE, BLUE_EDGE = "#3584e4", "#1c71d8"
WHITE = "#ffffff"
DARK = "#3d3846"
SPINNER = "#77767b"
LIGHT, LIGHTER = "#c0bfbc", "#deddda"
MID_GREY = "#86858a"  # as far in contrast from light yellow as from near black

# Each picture is drawn for a design size, 12, 13, 15, 16 or 24, at a scale, 1 or 2: `side`
# pixels is their product. Measures are given in pixels for each (design, scale), so that straight
# strokes fill whole pixels; a 2x form keeps the proportions of its 1x form.

# The darker edge: a pixel at 24, less on the small pictures, where it would crowd the
# symbol.
EDGE = {(12, 1): 0.6, (12, 2): 1.2, (16, 1): 0.8, (16, 2): 1.4, (24, 1): 1.0, (24, 2): 1.5}

# The disc's margin.
MARGIN = {12: 0.5, 16: 0.5, 24: 1.0}


def badge(design, scale, fill, edge):
    """A canvas with the round ground of a picture: a disc with an edge one shade darker."""
    side = design * scale
    canvas = canvas_t(side)
    c = side / 2.0
    disc = circle(c, c, c - MARGIN[design] * scale)
    canvas.paint(disc, edge)
    canvas.paint(inset(disc, EDGE[design, scale]), fill)
    return canvas


def cross(c, arm, width):
    return union(stroke([(c - arm, c - arm), (c + arm, c + arm)], width),
                 stroke([(c + arm, c - arm), (c - arm, c + arm)], width))


def bar_and_dot(c, measures):
    """The strokes of "i" and "!": a bar and a dot, centred on x = c. `measures` holds the
    bar's width, top, bottom and corner radius, then the dot's width, top and corner radius.
    Widths are whole pixels of the same parity as 2c, so that the sides fall on pixel edges."""
    width, top, bottom, corner, dot, dot_top, dot_corner = measures
    return union(rounded_rect(c - width / 2.0, top, c + width / 2.0, bottom, corner),
                 rounded_rect(c - dot / 2.0, dot_top, c + dot / 2.0, dot_top + dot, dot_corner))


def draw_error(design, scale):
    canvas = badge(design, scale, RED, RED_EDGE)
    # At 12 the strokes run through pixel centres, about a pixel wide.
    arm, width = {(12, 1): (2.5, 1.4), (12, 2): (5.0, 2.8),
                  (16, 1): (2.8, 2.0), (16, 2): (5.6, 4.0),
                  (24, 1): (4.2, 3.0), (24, 2): (8.4, 6.0)}[design, scale]
    canvas.paint(cross(design * scale / 2.0, arm, width), WHITE)
    return canvas


def draw_checkmark(design, scale):
    canvas = badge(design, scale, GREEN, GREEN_EDGE)
    u = design * scale / 24.0
    points = [(7.0 * u, 12.4 * u), (10.6 * u, 16.0 * u), (17.2 * u, 9.2 * u)]
    canvas.paint(stroke(points, 3.0 * u), WHITE)
    return canvas


INFO_GLYPH = {
    (12, 1): (2, 5.0, 10.0, 0.5, 2, 2.0, 0.7),
    (12, 2): (4, 10.0, 20.0, 1.0, 4, 4.0, 2.0),
    (16, 1): (2, 7.0, 12.0, 0.5, 2, 4.0, 0.7),
    (16, 2): (4, 14.0, 24.0, 1.0, 4, 8.0, 2.0),
    (24, 1): (4, 11.0, 19.0, 0.9, 4, 5.0, 2.0),
    (24, 2): (8, 22.0, 38.0, 1.8, 8, 10.0, 4.0),
}


def draw_info(design, scale):
    canvas = badge(design, scale, BLUE, BLUE_EDGE)
    canvas.paint(bar_and_dot(design * scale / 2.0, INFO_GLYPH[design, scale]), WHITE)
    return canvas


def warning_triangle(design, scale):
    """The triangle of a warning, its corners rounded; its base is on a pixel edge."""
    u = design * scale / 24.0
    if design == 12:
        top, bottom, half, r = -0.3 * scale, 11.0 * scale, 6.2 * scale, 1.4 * scale
    elif design == 16:
        top, bottom, half, r = -0.4 * scale, 15.0 * scale, 8.3 * scale, 1.9 * scale
    else:
        top, bottom, half, r = -0.9 * u, 23.0 * u, 13.3 * u, 3.0 * u
    c = design * scale / 2.0
    return rounded_triangle((c, top), (c - half, bottom), (c + half, bottom), r)


WARNING_GLYPH = {
    (12, 1): (2, 4.0, 7.0, 0.5, 2, 8.0, 0.7),
    (12, 2): (4, 8.0, 14.0, 1.8, 4, 16.0, 2.0),
    (16, 1): (2, 5.0, 10.0, 0.5, 2, 11.0, 0.7),
    (16, 2): (4, 10.0, 20.0, 1.8, 4, 22.0, 2.0),
    (24, 1): (4, 7.0, 15.0, 1.8, 4, 16.6, 2.0),
    (24, 2): (8, 14.0, 30.0, 3.6, 8, 33.2, 4.0),
}


def draw_warning(design, scale):
    canvas = canvas_t(design * scale)
    shape = warning_triangle(design, scale)
    canvas.paint(shape, YELLOW_EDGE)
    canvas.paint(inset(shape, EDGE[design, scale]), YELLOW)
    canvas.paint(bar_and_dot(design * scale / 2.0, WARNING_GLYPH[design, scale]), DARK)
    return canvas


def octagon(c, apothem, r):
    """A regular octagon with flat sides at `apothem` from its centre, corners rounded to r."""
    reach = (apothem - r) / math.cos(math.pi / 8)
    corners = [(c + reach * math.cos(math.pi / 8 + k * math.pi / 4),
                c + reach * math.sin(math.pi / 8 + k * math.pi / 4)) for k in range(8)]
    return inset(polygon_sdf(corners), -r)


# A bolder "!" than the warning's: critical must not pass for an error at a glance.
CRITICAL_GLYPH = {
    (16, 1): (2, 3.0, 9.0, 0.5, 2, 11.0, 0.7),
    (16, 2): (6, 6.0, 18.0, 1.8, 6, 21.0, 3.0),
}


def draw_critical(design, scale):
    """A stop sign: a dark red octagon with a white "!". Its flat sides lie a pixel in, on pixel
    edges, so that it looks as large as a disc and stays sharp."""
    side = design * scale
    canvas = canvas_t(side)
    shape = octagon(side / 2.0, side / 2.0 - scale, 0.6 * scale)
    canvas.paint(shape, DARK_RED_EDGE)
    canvas.paint(inset(shape, EDGE[design, scale]), DARK_RED)
    canvas.paint(bar_and_dot(side / 2.0, CRITICAL_GLYPH[design, scale]), WHITE)
    return canvas


def draw_empty(design, scale):
    return canvas_t(design * scale)


# The scroll buttons of a message pane: a chevron, alone or on a round ground. They sit on the
# tooltip colour, light yellow in light themes and near black in dark ones, so the normal
# chevron is a grey half way between, the disabled one the same grey mostly transparent (it
# takes the tone of whatever lies under it), and the grounds of hover and pressed are light
# discs that carry a dark chevron on either.
SCROLL_DESIGN = 15
SCROLL_LOOKS = {
    # look: (ground colour or None, chevron colour, chevron opacity)
    "normal": (None, MID_GREY, 1.0),
    "hover": (LIGHTER, DARK, 1.0),
    "pressed": (LIGHT, DARK, 1.0),
    "disabled": (None, MID_GREY, 0.35),
}


def scroll_chevron(side, scale, pointing_right):
    """A right angle of a stroke whose back and tip lie two pixels either side of the middle."""
    u = float(scale)
    c = side / 2.0
    back, tip, reach = c - 2.0 * u, c + 2.0 * u, 4.0 * u
    if not pointing_right:
        back, tip = side - back, side - tip
    return stroke([(back, c - reach), (tip, c), (back, c + reach)], 2.0 * u)


def draw_scroll(pointing_right, look):
    def draw(design, scale):
        side = design * scale
        canvas = canvas_t(side)
        ground, colour, opacity = SCROLL_LOOKS[look]
        if ground:
            canvas.paint(circle(side / 2.0, side / 2.0, side / 2.0), ground)
        canvas.paint(scroll_chevron(side, scale, pointing_right), colour, opacity)
        return canvas
    return draw


# The spinner: eight dots on a ring, and a wave of size running round it clockwise, a whole
# turn in the twelve frames: the leading dot is the largest, the ones behind it smaller and
# smaller. Size, not shade, tells the way round, so that it reads on any background. A GIF
# pixel is either drawn or not, so each dot is a small pixel figure, the pixels that a circle
# covers at least half of: a dot's centre is on a pixel centre, and the eight lie at the same
# distance from the middle, at (3.5, 8.5) and its mirror images. The form at twice the size
# doubles every measure: its centres fall on pixel corners, and the dots stay symmetric.
SPINNER_SIDE = 24
SPINNER_FRAMES = 12
SPINNER_DELAY_CS = 8

# Radius by how far, in degrees, the wave's head has gone past the dot: 5 x 5 with its
# corners cut, 3 x 3, a plus of five pixels, one pixel.
SPINNER_DOTS = [(30.0, 2.5), (120.0, 1.6), (210.0, 1.2), (360.0, 0.6)]


def spinner_frame(step, scale):
    side = SPINNER_SIDE * scale
    c = side / 2.0
    near, far = 3.5 * scale, 8.5 * scale
    offsets = [(near, -far), (far, -near), (far, near), (near, far),
               (-near, far), (-far, near), (-far, -near), (-near, -far)]
    head = 360.0 * step / SPINNER_FRAMES
    dots = []
    for dx, dy in offsets:
        angle = math.degrees(math.atan2(dx, -dy)) % 360.0  # clockwise from the top
        # A dot the head is about to reach, up to 15 degrees on, counts as reached.
        behind = (head - angle + 15.0) % 360.0 - 15.0
        radius = next(r for limit, r in SPINNER_DOTS if behind < limit)
        dots.append(circle(c + dx, c + dy, radius * scale))
    rows = coverage(union(*dots), side)
    return [1 if rows[y][x] >= 0.5 else 0 for y in range(side) for x in range(side)]


def spinner_gif(scale):
    frames = [spinner_frame(step, scale) for step in range(SPINNER_FRAMES)]
    return gif_bytes(frames, SPINNER_SIDE * scale, [(0xFF, 0xFF, 0xFF), hex_colour(SPINNER)],
                     SPINNER_DELAY_CS)


# The disclosure button of a folding frame: a chevron that points down while the frame is
# open and right while it is closed. The pictures sit beside a caption on the window's own
# background, light or dark, so they are drawn in greys that keep about 3.5:1 on either,
# with translucent grounds that darken a light background and lighten a dark one.
CHEVRON = "#8b8a8f"
CHEVRON_HOT = "#77767b"
# Look: chevron colour, its opacity, and the opacity of the round ground (0 for none).
CHEVRON_LOOKS = {
    "": (CHEVRON, 1.0, 0.0),
    "_hovered": (CHEVRON_HOT, 1.0, 0.18),
    "_pressed": (CHEVRON_HOT, 1.0, 0.36),
    "_disabled": (CHEVRON, 0.45, 0.0),
}


def disclosure_chevron(design, scale, opened):
    """Two strokes meeting at a point, centred. The side is odd, so that at 1x the point and
    the ends lie on pixel centres and each 45-degree stroke is a clean stair of pixels."""
    c = design * scale / 2.0
    arm, depth = 4.0 * scale, 2.0 * scale
    if opened:
        points = [(c - arm, c - depth), (c, c + depth), (c + arm, c - depth)]
    else:
        points = [(c - depth, c - arm), (c + depth, c), (c - depth, c + arm)]
    return stroke(points, 1.7 * scale)


def draw_disclosure(opened, look):
    colour, opacity, ground = CHEVRON_LOOKS[look]

    def draw(design, scale):
        side = design * scale
        canvas = canvas_t(side)
        canvas.ground = hex_colour(CHEVRON)
        if ground:
            canvas.paint(circle(side / 2.0, side / 2.0, side / 2.0), CHEVRON_HOT, ground)
        canvas.paint(disclosure_chevron(design, scale, opened), colour, opacity)
        return canvas
    return draw


# The bitmap buttons beside a list of folders: move up, move down, remove. Like the disclosure
# chevrons they sit on the window's own background, so they take the same grey, with strokes
# two pixels wide whose ends and corners lie on pixel corners, so that each 45-degree stroke is
# a clean stair. Down mirrors up.
LIST_BUTTON_DESIGN = 16


def list_button(shape_of):
    def draw(design, scale):
        canvas = canvas_t(design * scale)
        canvas.paint(shape_of(design * scale, float(scale)), CHEVRON)
        return canvas
    return draw


def move_chevron(pointing_up):
    def shape(side, u):
        c = side / 2.0
        arm, depth = 5.0 * u, 2.5 * u
        middle = c + 0.5 * u if pointing_up else c - 0.5 * u
        sign = 1.0 if pointing_up else -1.0
        return stroke([(c - arm, middle + sign * depth), (c, middle - sign * depth),
                       (c + arm, middle + sign * depth)], 2.0 * u)
    return shape


def remove_cross(side, u):
    return cross(side / 2.0, 4.0 * u, 2.0 * u)


PICTURES = [
    ("error24", draw_error, 24),
    ("warning24", draw_warning, 24),
    ("checkmark24", draw_checkmark, 24),
    ("info24", draw_info, 24),
    ("error12", draw_error, 12),
    ("warning12", draw_warning, 12),
    ("info12", draw_info, 12),
    ("empty12", draw_empty, 12),
    ("severity_critical", draw_critical, 16),
    ("severity_error", draw_error, 16),
    ("severity_warn", draw_warning, 16),
    ("severity_info", draw_info, 16),
] + [("scroll_%s_%s" % (way, look), draw_scroll(way == "right", look), SCROLL_DESIGN)
     for way in ("left", "right") for look in SCROLL_LOOKS] + [
    ("advanced_%s%s" % (name, look), draw_disclosure(opened, look), 13)
    for name, opened in (("open", True), ("close", False)) for look in CHEVRON_LOOKS] + [
    ("up", list_button(move_chevron(True)), LIST_BUTTON_DESIGN),
    ("down", list_button(move_chevron(False)), LIST_BUTTON_DESIGN),
    ("cross", list_button(remove_cross), LIST_BUTTON_DESIGN),
]


def all_files():
    """File name and content of every picture."""
    files = {}
    for name, draw, design in PICTURES:
        files[name + ".png"] = png_bytes(draw(design, 1).rgba_rows())
        files[name + "@2x.png"] = png_bytes(draw(design, 2).rgba_rows())
    files["progress.gif"] = spinner_gif(1)
    files["progress@2x.gif"] = spinner_gif(2)
    return files


def main():
    root = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.join(root, "resources", "images")
    os.makedirs(folder, exist_ok=True)
    for name, data in all_files().items():
        with open(os.path.join(folder, name), "wb") as out:
            out.write(data)
        print(os.path.join(folder, name))


if __name__ == "__main__":
    main()
