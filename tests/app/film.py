"""Films the display. The X server keeps the picture in a file, which is read again and again."""

import mmap
import os
import pathlib
import struct
import threading
import time
import zlib

INTERVAL = 0.004  # seconds between two reads


class Film:
    """Records the pictures on the display during the with block. A picture counts if two successive reads
    get it, because the server may be drawing during a read."""

    def __enter__(self):
        file = pathlib.Path(os.environ["AMBULET_DESKTOP"]) / "Xvfb_screen0"
        with open(file, "rb") as opened:
            self._map = mmap.mmap(opened.fileno(), 0, access=mmap.ACCESS_READ)
        # The file is an X window dump. Its header has numbers of 32 bits, the most significant byte first.
        header = struct.unpack(">25I", self._map[:100])
        self._begin, self._width, self._height = header[0] + header[19] * 12, header[4], header[5]
        self._line = header[12]
        self._pictures = []
        self._over = threading.Event()
        self._thread = threading.Thread(target=self._run)
        self._thread.start()
        return self

    def _run(self):
        last = None
        while not self._over.is_set():
            look = self._map[self._begin:self._begin + self._line * self._height]
            if look == last and (not self._pictures or look != self._pictures[-1]):
                self._pictures.append(look)
            last = look
            time.sleep(INTERVAL)

    def __exit__(self, *_):
        self._over.set()
        self._thread.join()
        self._map.close()

    def states(self, left, top, width, height):
        """The pictures of a part of the display, without those that equal the one before."""
        found = []
        for picture in self._pictures:
            lines = [picture[self._line * y + 4 * left:self._line * y + 4 * (left + width)]
                     for y in range(top, top + height)]
            if not found or lines != found[-1]:
                found.append(lines)
        return found


def save(lines, path):
    """Writes a picture, given as lines with 4 bytes per pixel, to a PNG file."""
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

    rows = b"".join(b"\0" + b"".join(line[i + 2:i + 3] + line[i + 1:i + 2] + line[i:i + 1]
                                     for i in range(0, len(line), 4)) for line in lines)
    size = struct.pack(">IIBBBBB", len(lines[0]) // 4, len(lines), 8, 2, 0, 0, 0)
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", size)
                     + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))
