"""A virtual X server, which keeps its picture in a file. The picture is read from that file."""
import mmap
import os
import struct
import subprocess
import tempfile
import time

WIDTH, HEIGHT = 960, 800
EACH = 8  # every eighth line is compared: this is quick, and enough to notice changed text


class Screen:
    def __enter__(self):
        self._folder = tempfile.TemporaryDirectory()
        read_end, write_end = os.pipe()
        with open(os.path.join(self._folder.name, "log"), "wb") as log:
            self._server = subprocess.Popen(
                ["Xvfb", "-displayfd", str(write_end), "-screen", "0", f"{WIDTH}x{HEIGHT}x24", "-nolisten", "tcp",
                 "-nocursor", "-noreset", "-fbdir", self._folder.name], pass_fds=[write_end], stdout=log, stderr=log)
        os.close(write_end)
        with os.fdopen(read_end) as number:
            self.display = ":" + number.readline().strip()
        with open(self._file(), "rb") as file:
            self._map = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
        # The file is an X window dump. Its header has numbers of 32 bits, the most significant byte first.
        header = struct.unpack(">25I", self._map[:100])
        header_size, bytes_per_line, colors = header[0], header[12], header[19]
        begin = header_size + colors * 12
        self._lines = [slice(begin + line * bytes_per_line, begin + (line + 1) * bytes_per_line)
                       for line in range(0, HEIGHT, EACH)]
        return self

    def __exit__(self, *_):
        self._map.close()
        self._server.terminate()
        self._server.wait()
        self._folder.cleanup()

    def _file(self):
        return os.path.join(self._folder.name, "Xvfb_screen0")

    def look(self):
        """The lines of the picture that are compared."""
        return [self._map[line] for line in self._lines]

    def save(self, path):
        """Writes the whole picture to a file, as an X window dump."""
        with open(path, "wb") as file:
            file.write(self._map)

    def wait(self, condition, what):
        """Waits until the picture meets the condition. Returns the time. After a minute raises TimeoutError,
        which names `what`."""
        end = time.monotonic() + 60
        while not condition(self.look()):
            if time.monotonic() > end:
                raise TimeoutError(what)
            time.sleep(0.001)
        return time.monotonic()

    def wait_until_still(self, seconds):
        """Waits until the picture has not changed for the given number of seconds. Returns the lines that are
        compared."""
        picture, since = self.look(), time.monotonic()
        while time.monotonic() - since < seconds:
            time.sleep(0.01)
            if self.look() != picture:
                picture, since = self.look(), time.monotonic()
        return picture
