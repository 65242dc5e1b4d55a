"""Packs rendered pictures into an icon file: bottom-up 32-bit bitmaps, the large sizes as PNG."""

import struct

PNG_FROM = 64


def bitmap(size, pixels):
    """The icon bitmap of `pixels`, blue-green-red-alpha from the top row down."""
    stride = size * 4
    rows = [pixels[y * stride : (y + 1) * stride] for y in reversed(range(size))]
    mask = bytearray()
    for row in rows:
        bits = bytearray((size + 31) // 32 * 4)
        for x in range(size):
            if row[x * 4 + 3] == 0:
                bits[x // 8] |= 0x80 >> (x % 8)
        mask += bits
    header = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0, len(pixels) + len(mask), 0, 0, 0, 0)
    return header + b"".join(rows) + bytes(mask)


def icon(images):
    """An icon file of (size, data) pairs."""
    directory = struct.pack("<HHH", 0, 1, len(images))
    offset = len(directory) + 16 * len(images)
    body = b""
    for size, data in images:
        directory += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(data), offset + len(body))
        body += data
    return directory + body
