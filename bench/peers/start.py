"""start.py BIN FOLDER RUNS SIZE: measures, on the screen, how long the application takes to show its window,
and to show the days of a remembered export in FOLDER. It compares the first time with that of bare_window,
and the second with that of stepdays. The programs run alternately, RUNS times but at least five."""
import os
import statistics
import subprocess
import sys
import tempfile
import time

import variants
from measuring import measured, print_goals
from screen import Screen

WINDOW_OVER_BARE = 1.25  # at most
DAYS_AFTER_STEPDAYS = 60  # ms, at most

binaries, folder, runs, size = sys.argv[1], sys.argv[2], max(int(sys.argv[3]), 5), sys.argv[4]


class Shown:
    """A run of a program on the screen, until the end of the with block."""

    def __init__(self, screen, home, program):
        # Without a session bus, so that the time does not include answers of other programs.
        environment = {**os.environ, "DISPLAY": screen.display, "QT_QPA_PLATFORM": "xcb", "HOME": home,
                       "XDG_CONFIG_HOME": home, "XDG_RUNTIME_DIR": home, "LC_ALL": "C.UTF-8", "TZ": "UTC",
                       "DBUS_SESSION_BUS_ADDRESS": f"unix:path={home}/no-bus"}
        self._screen, self._before = screen, screen.look()
        self._begin = time.monotonic()
        self._process = subprocess.Popen([os.path.join(binaries, program)], env=environment, close_fds=False)
        self.painted = self._time(lambda picture: picture != self._before, f"{program} painting")

    def _time(self, condition, what):
        return (self._screen.wait(condition, what) - self._begin) * 1000

    def time_of(self, picture):
        return self._time(lambda now: now == picture, "the days")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.terminate()
        self._process.wait()
        self._screen.wait(lambda picture: picture == self._before, "the window to go")


class Settings:
    """A home folder with settings that remember a file. It exists during the with block."""

    def __init__(self, file):
        self._file = file

    def __enter__(self):
        self._folder = tempfile.TemporaryDirectory()
        with open(os.path.join(self._folder.name, "org.ambulet.DailySteps.ini"), "w", encoding="utf-8") as settings:
            settings.write(f'[General]\nxmlFilePath="{self._file}"\n')
        return self._folder.name

    def __exit__(self, *_):
        self._folder.cleanup()


def final_picture(screen, home):
    """Returns the picture of the application's window with the days, and saves it as days.xwd. After this
    call, all files that the application reads are cached in memory."""
    for _ in range(2):  # the first start has no stored frame to restore
        with Shown(screen, home, "ambulet"):
            picture = screen.wait_until_still(1)
            screen.save(os.path.join(folder, "days.xwd"))
    return picture


def measure(screen, home, export):
    """The measured times in ms, by their names."""
    stepdays = [os.path.join(binaries, "stepdays"), export]
    measured(binaries, stepdays)
    with Shown(screen, home, "bare_window"):
        pass
    days = final_picture(screen, home)
    times = {"bare window painted": [], "window painted": [], "days in the window": [], "stepdays": []}
    for _ in range(runs):
        with Shown(screen, home, "bare_window") as bare:
            times["bare window painted"].append(bare.painted)
        with Shown(screen, home, "ambulet") as shown:
            times["window painted"].append(shown.painted)
            times["days in the window"].append(shown.time_of(days))
        times["stepdays"].append(measured(binaries, stepdays).wall * 1000)
    return times


export = os.path.abspath(
    variants.export(os.path.join(binaries, "makeexport"), os.path.join(folder, f"export-{size}.xml"), size))
with Settings(export) as home, Screen() as screen:
    times = measure(screen, home, export)

print(f"\nThe application's start with an export of {size}, {runs} runs of each, in ms")
print(f"{'':24}{'median':>8}{'least':>8}{'most':>8}")
for what, values in times.items():
    print(f"{what:24}{statistics.median(values):8.1f}{min(values):8.1f}{max(values):8.1f}")
median = {what: statistics.median(values) for what, values in times.items()}
print_goals([
    ("window painted / bare window painted", WINDOW_OVER_BARE,
     median["window painted"] / median["bare window painted"]),
    ("days in the window minus stepdays, ms", DAYS_AFTER_STEPDAYS,
     median["days in the window"] - median["stepdays"]),
])
