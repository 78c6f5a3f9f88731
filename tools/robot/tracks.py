"""Small tracks and pictures for tests that need to know every cell."""

import struct
import zlib


def written(rows):
    return f"{len(rows[0])} {len(rows)}\n".encode() + "\n".join(map("".join, rows)).encode()


def track(width, height, ground="."):
    """An open field with the goal line in its middle; cars start to the right of it."""
    rows = [[ground] * width for _ in range(height)]
    middle = height // 2
    for y in range(middle - 20, middle + 21):
        rows[y][width // 2] = "!"
    rows[middle][width // 2 + 10] = "*"
    return written(rows)


def open_field():
    """Room for laps in circles: the goal line ends above their centre, so each crosses it once."""
    rows = [["."] * 800 for _ in range(800)]
    for y in range(100, 360):
        rows[y][400] = "!"
    rows[300][410] = "*"
    return written(rows)


def ring():
    """A short round course, wall to wall, that the computer laps in a few seconds."""
    def cell(x, y):
        if not 95**2 < (x - 250) ** 2 + (y - 200) ** 2 < 185**2:
            return "g"
        return "!" if x == 250 and y < 200 else "."

    rows = [[cell(x, y) for x in range(500)] for y in range(400)]
    rows[60][262] = "*"
    return written(rows)


def png(rgb, width=8, height=8):
    """A picture of one colour."""

    def chunk(kind, data):
        return (struct.pack(">I", len(data)) + kind + data
                + struct.pack(">I", zlib.crc32(kind + data)))

    rows = (b"\0" + bytes(rgb) * width) * height
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))
