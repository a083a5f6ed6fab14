"""Drives the real program: sends keys and clicks through the X server, and reads the program's state from
the accessibility bus. Run tests under with-desktop."""

import ctypes
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import time
import unittest

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

BIN = pathlib.Path(os.environ["AMBULET_BIN"])
PICTURES = pathlib.Path(os.environ["AMBULET_PICTURES"])
PROGRAM = pathlib.Path(os.environ.get("AMBULET_PROGRAM", BIN / "ambulet"))
MAIN = "Daily Steps — Ambulet"  # the titles of the windows
GUIDE = "Getting Started with Daily Steps"
ABOUT = "About Daily Steps"
DIALOG = "Select a HealthKit XML export file"
PATIENCE = 30  # seconds to wait for anything before a test fails
FAULTS = {"LD_PRELOAD": str(BIN / "libambulet_faults.so")}


def wait_for(what, condition):
    """Waits until condition() is true, and returns the value of condition(). After PATIENCE it fails with a
    message that names `what`."""
    end = time.monotonic() + PATIENCE
    while True:
        try:
            value = condition()
        except (gi.repository.GLib.Error, StopIteration):  # an object is gone, missing, or does not answer
            value = None
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"timed out waiting for {what}")
        time.sleep(0.01)


def xdotool(*arguments):
    return subprocess.run(["xdotool", *map(str, arguments)], check=True, capture_output=True,
                          text=True).stdout


def type_text(text):
    xdotool("type", "--delay", 5, text)


def key(*names):
    xdotool("key", "--delay", 20, *names)


def walk(node):
    """The node and its descendants, except the cells of tables, of which there may be thousands."""
    yield node
    if node.get_role() == Atspi.Role.TABLE:
        return
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child is not None:
            yield from walk(child)


def has_state(node, state):
    return node.get_state_set().contains(state)


def windows_named(title, *, visible=True):
    """The X windows with the title: the visible ones or, if not `visible`, all."""
    found = subprocess.run(["xdotool", "search", *(["--onlyvisible"] if visible else []), "--name",
                            "."], capture_output=True, text=True, check=False).stdout.split()
    return [window for window in found if title == subprocess.run(
        ["xdotool", "getwindowname", window], capture_output=True, text=True,
        check=False).stdout.rstrip("\n")]


class ClientMessage(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("sent", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong),
                ("message_type", ctypes.c_ulong), ("format", ctypes.c_int),
                ("data", ctypes.c_long * 5), ("rest", ctypes.c_long * 12)]


# Without this handler, an X error would end the process.
IGNORE_ERROR = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(
    lambda display, error: 0)


def close(window):
    """Asks an X window to close, as the button in its title bar does. Does nothing if the window is
    gone."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XSetErrorHandler(IGNORE_ERROR)
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XInternAtom.restype = ctypes.c_ulong
    x11.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
    x11.XSendEvent.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_long,
                               ctypes.c_void_p]
    x11.XCloseDisplay.argtypes = [ctypes.c_void_p]
    display = x11.XOpenDisplay(None)
    message = ClientMessage(type=33, window=int(window), format=32,
                            message_type=x11.XInternAtom(display, b"WM_PROTOCOLS", 0))
    message.data[0] = x11.XInternAtom(display, b"WM_DELETE_WINDOW", 0)
    x11.XSendEvent(display, int(window), 0, 0, ctypes.byref(message))
    x11.XCloseDisplay(display)


def window_property(window, name):
    """The value of a window's property, as xprop prints it."""
    told = subprocess.run(["xprop", "-id", window, name], check=True, capture_output=True,
                          text=True).stdout
    return re.split(r"[=:]", told, maxsplit=1)[-1].strip()


def place_of(window):
    """The screen position of the window's content: left, top."""
    told = subprocess.run(["xwininfo", "-id", window], check=True, capture_output=True,
                          text=True).stdout
    return tuple(int(re.search(rf"Absolute upper-left {axis}: *(-?\d+)", told)[1])
                 for axis in "XY")


def is_minimized(window):
    return "window state: Iconic" in window_property(window, "WM_STATE")


def front_window():
    """The active X window, or None."""
    told = subprocess.run(["xdotool", "getactivewindow"], capture_output=True, text=True,
                          check=False)
    return told.stdout.strip() if told.returncode == 0 else None


class Program:
    """One run of the program, with its settings in the folder `configuration`. `prefix` is a command
    that runs the program, such as strace with its options."""

    def __init__(self, configuration, *arguments, prefix=(), **environment):
        self.scale = int(environment.get("QT_SCALE_FACTOR", 1))
        self.process = subprocess.Popen(
            [*prefix, PROGRAM, *arguments],
            env={**os.environ, "LC_ALL": "en_US.UTF-8", "XDG_CONFIG_HOME": str(configuration),
                 **environment})

    @property
    def accessible(self):
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(index)
            if application is not None and application.get_process_id() == self.process.pid:
                application.set_cache_mask(Atspi.Cache.NONE)  # always ask the program
                return application
        return None

    def is_open(self, title):
        return any(node.get_name() == title and has_state(node, Atspi.StateType.VISIBLE)
                   for node in self.windows())

    def windows(self):
        """The accessible objects of the windows."""
        application = self.accessible
        if application is None:
            return []
        children = map(application.get_child_at_index, range(application.get_child_count()))
        return [child for child in children if child is not None]

    def all(self, role=None, name=None):
        """The accessible objects with the role and a name that matches the regular expression."""
        application = self.accessible
        found = []
        for node in walk(application) if application else ():
            if role is not None and node.get_role() != role:
                continue
            if name is not None and not re.fullmatch(name, node.get_name() or ""):
                continue
            found.append(node)
        return found

    def find(self, role=None, name=None):
        return wait_for(f"role {role}, name {name}",
                        lambda: next(iter(self.all(role, name)), None))

    def label(self, pattern):
        """A label, or the status, which is a notification."""
        return self.find(name=pattern)

    def extents(self, node):
        """The object's screen rectangle in pixels: left, top, width, height."""
        box = node.get_extents(Atspi.CoordType.SCREEN)
        return tuple(side * self.scale for side in (box.x, box.y, box.width, box.height))

    def click(self, node, *, modifier=None, button=1):
        """Clicks on the middle of an object."""
        x, y, width, height = self.extents(node)
        self.click_at(x + width // 2, y + height // 2, modifier=modifier, button=button)

    @staticmethod
    def click_at(x, y, *, modifier=None, button=1):
        held = ["keydown", modifier] if modifier else []
        released = ["keyup", modifier] if modifier else []
        # Without --sync, which would not return if the pointer is already there.
        xdotool("mousemove", x, y, *held, "click", button, *released)

    def window(self, title):
        """Waits until a window with the title is visible; returns the X window."""
        return wait_for(f"window {title}", lambda: next(iter(windows_named(title)), None))

    def frame(self, title):
        """The rectangle of a window including its frame: left, top, width, height."""
        x, y, width, height = self.extents(wait_for(f"window {title}", lambda: next(
            node for node in self.windows() if node.get_name() == title)))
        left, right, top, bottom = map(
            int, window_property(self.window(title), "_NET_FRAME_EXTENTS").split(","))
        return x - left, y - top, width + left + right, height + top + bottom

    def activate(self, title):
        """Brings the window with the title to the front."""
        xdotool("windowactivate", self.window(title))
        self.wait_until_in_front(title)

    def wait_until_in_front(self, title=MAIN):
        """Waits until the window is active, and the program knows this and the window's position."""

        def in_front():
            window = next(node for node in self.windows() if node.get_name() == title)
            return (has_state(window, Atspi.StateType.ACTIVE)
                    and front_window() in windows_named(title)
                    and all(abs(here - there) < self.scale for here, there in zip(
                        self.extents(window), place_of(front_window()))))

        wait_for(f"{title} in front", in_front)

    def front(self):
        """The accessible object of the window that has the focus."""
        return wait_for("a window in front", lambda: next(
            node for node in self.windows() if has_state(node, Atspi.StateType.ACTIVE)))

    def menu(self, title):
        """The accessible object of a menu in the menu bar of the window in front."""
        return wait_for(f"the menu {title}", lambda: next(
            node for node in walk(self.front())
            if node.get_role() == Atspi.Role.MENU_ITEM and node.get_name() == title))

    @staticmethod
    def shown_items(menu):
        """Waits until a menu is open; returns the accessible objects of its items."""

        def shown():
            items = [node for node in walk(menu) if node != menu]
            return items if any(has_state(node, Atspi.StateType.SHOWING) for node in items) else None

        return wait_for("the items of the menu", shown)

    def open_menu(self, title):
        """Opens a menu of the window in front by a click; returns its items."""
        menu = self.menu(title)
        self.click(menu)
        return self.shown_items(menu)

    def choose(self, menu, item):
        """Chooses an item of a menu of the window in front."""
        self.click(next(node for node in self.open_menu(menu) if node.get_name() == item))

    def choose_file(self, file):
        """Opens the file dialog and chooses a file."""
        self.wait_until_in_front()
        self.click(self.find(Atspi.Role.PUSH_BUTTON, "Choose…"))
        self.wait_until_in_front(DIALOG)
        wait_for("the focus of the name field", lambda: any(
            has_state(node, Atspi.StateType.FOCUSED) for node in self.all(Atspi.Role.TEXT)))
        type_text(str(file))
        wait_for("the path in the dialog", lambda: any(
            Atspi.Text.get_text(node, 0, -1) == str(file) for node in self.all(Atspi.Role.TEXT)))
        key("Return")

    def set_stride(self, text):
        """Types a stride into the editor and commits it."""
        self.wait_until_in_front()
        self.click(self.find(Atspi.Role.PUSH_BUTTON, "Miles: .*"))
        type_text(text)
        key("Return")

    def end(self):
        """Waits for the process to end; returns its exit status."""
        return self.process.wait(PATIENCE)

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()


class ProgramTest(unittest.TestCase):
    """A test with files and settings in a temporary folder."""

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        self.configuration = self.folder / "configuration"
        self.configuration.mkdir()

    def start_without_waiting(self, *arguments, **environment):
        program = Program(self.configuration, *arguments, **environment)
        self.addCleanup(program.kill)
        return program

    def start(self, *arguments, **environment):
        program = self.start_without_waiting(*arguments, **environment)
        # Waits for a control, because the window is created before its contents.
        program.find(Atspi.Role.PUSH_BUTTON, "Choose…")
        return program

    @property
    def settings_file(self):
        return self.configuration / "org.ambulet.DailySteps.ini"

    def remember(self, file):
        """Writes settings with `file` as the remembered export."""
        self.settings_file.write_text(f'[General]\nxmlFilePath="{file}"\n')

    def remember_endless_load(self):
        """Remembers an export. Returns an environment in which the program never ends loading that export."""
        mount = self.folder / "mount"
        mount.mkdir()
        file = mount / "export.xml"
        file.write_text("<HealthData/>\n")
        self.remember(file)
        return {"AMBULET_HANG": str(mount), **FAULTS}

    def export(self, size, name="export.xml"):
        """Makes an export of about `size`, such as "20M". Returns the path of the export."""
        file = self.folder / name
        subprocess.run([BIN / "makeexport", "--size", size, file], check=True)
        return file

    @staticmethod
    def picture(name):
        """Saves a picture of the screen for inspection."""
        PICTURES.mkdir(parents=True, exist_ok=True)
        subprocess.run([BIN / "picture", PICTURES / name], check=True)
