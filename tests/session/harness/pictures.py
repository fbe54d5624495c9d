"""Pictures as values: made, and compared pixel by pixel."""

import random
import struct
import zlib


def png(width, height, seed=1):
    """The bytes of a PNG file with noise in it, so that it is large and like no other."""
    noise = random.Random(seed)
    rows = bytearray()
    for _ in range(height):
        rows += b"\0" + noise.randbytes(width * 3)
    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    return (
        b"\x89PNG\r\n\x1a\n"
        + _chunk(b"IHDR", header)
        + _chunk(b"IDAT", zlib.compress(bytes(rows), 1))
        + _chunk(b"IEND", b"")
    )


def _chunk(kind, body):
    return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))


def pixels(encoded):
    """(width, height, red-green-blue bytes) of a picture file's bytes."""
    import gi

    gi.require_version("GdkPixbuf", "2.0")
    from gi.repository import GdkPixbuf

    loader = GdkPixbuf.PixbufLoader()
    loader.write(encoded)
    loader.close()
    picture = loader.get_pixbuf()
    width, height, channels = picture.get_width(), picture.get_height(), picture.get_n_channels()
    data, stride = picture.get_pixels(), picture.get_rowstride()
    rows = bytearray()
    for y in range(height):
        row = data[y * stride : y * stride + width * channels]
        if channels == 4:
            opaque = bytearray(width * 3)
            for channel in range(3):
                opaque[channel::3] = row[channel::4]
            row = bytes(opaque)
        rows += row
    return width, height, bytes(rows)
