"""Drives the real program from outside: keys and clicks through the X server, the state through the
accessibility bus. Needs a desktop, as with-desktop starts one."""

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
PATIENCE = 30  # seconds that anything may take on a slow machine before a test gives up


def wait_for(what, condition):
    """The first true value of condition(); fails with `what` where none comes."""
    end = time.monotonic() + PATIENCE
    while True:
        try:
            value = condition()
        except gi.repository.GLib.Error:  # the object is gone, or not answering yet
            value = None
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain for {what}")
        time.sleep(0.01)


def xdotool(*arguments):
    return subprocess.run(["xdotool", *map(str, arguments)], check=True, capture_output=True,
                          text=True).stdout


def type_text(text):
    xdotool("type", "--delay", 5, text)


def key(*names):
    xdotool("key", "--delay", 20, *names)


def walk(node):
    """The node and all below it, but for the cells of a table: there may be thousands."""
    yield node
    if node.get_role() == Atspi.Role.TABLE:
        return
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child is not None:
            yield from walk(child)


def has_state(node, state):
    return node.get_state_set().contains(state)


class Program:
    """One run of the program, on the settings in `configuration`."""

    def __init__(self, configuration, **environment):
        self.process = subprocess.Popen(
            [BIN / "ambulet"],
            env={**os.environ, "LC_ALL": "en_US.UTF-8", "XDG_CONFIG_HOME": str(configuration),
                 **environment})

    @property
    def accessible(self):
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(index)
            if application is not None and application.get_process_id() == self.process.pid:
                application.set_cache_mask(Atspi.Cache.NONE)  # what is, not what was
                return application
        return None

    def all(self, role=None, name=None):
        """The accessible objects of a role, with a name that matches the regular expression."""
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
        return self.find(Atspi.Role.LABEL, pattern)

    def wait_until_in_front(self):
        """Waits until the main window has the keyboard."""
        wait_for("the window in front", lambda: any(
            has_state(frame, Atspi.StateType.ACTIVE) for frame in self.all(Atspi.Role.FRAME)))

    def click(self, node, *, modifier=None, button=1):
        """Clicks in the middle of an object."""
        box = node.get_extents(Atspi.CoordType.SCREEN)
        self.click_at(box.x + box.width // 2, box.y + box.height // 2, modifier=modifier,
                      button=button)

    @staticmethod
    def click_at(x, y, *, modifier=None, button=1):
        held = ["keydown", modifier] if modifier else []
        released = ["keyup", modifier] if modifier else []
        xdotool("mousemove", "--sync", x, y, *held, "click", button, *released)

    def end(self):
        """Waits for the process to end; its exit status."""
        return self.process.wait(PATIENCE)

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()


class ProgramTest(unittest.TestCase):
    """A test on files and settings in a folder of its own."""

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        self.configuration = self.folder / "configuration"
        self.configuration.mkdir()

    def start(self, **environment):
        program = Program(self.configuration, **environment)
        self.addCleanup(program.kill)
        return program

    @property
    def settings_file(self):
        return self.configuration / "org.ambulet.DailySteps.ini"

    def remember(self, file):
        """Writes settings in which `file` is the remembered one."""
        self.settings_file.write_text(f'[General]\nxmlFilePath="{file}"\n')

    def export(self, size, name="export.xml"):
        """Makes an export of about the size, as in "20M"; its path."""
        file = self.folder / name
        subprocess.run([BIN / "makeexport", "--size", size, file], check=True)
        return file

    @staticmethod
    def picture(name):
        """Saves the screen, for people to look at."""
        PICTURES.mkdir(parents=True, exist_ok=True)
        subprocess.run([BIN / "picture", PICTURES / name], check=True)
