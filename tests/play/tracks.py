"""Small tracks and pictures for tests that need to know every cell."""

import struct
import zlib


def track(width, height, ground="."):
    """An open field with the goal line in its middle; cars start to the right of it."""
    rows = [[ground] * width for _ in range(height)]
    middle = height // 2
    for y in range(middle - 20, middle + 21):
        rows[y][width // 2] = "!"
    rows[middle][width // 2 + 10] = "*"
    text = f"{width} {height}\n" + "".join("".join(row) + "\n" for row in rows)
    return text.encode()


def png(rgb, width=8, height=8):
    """A picture of one colour."""

    def chunk(kind, data):
        return (struct.pack(">I", len(data)) + kind + data
                + struct.pack(">I", zlib.crc32(kind + data)))

    rows = (b"\0" + bytes(rgb) * width) * height
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))
