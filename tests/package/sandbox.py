"""Tests of the program in bubblewrap, with the permissions of the Flatpak: a read-only system, separate
settings, no network, and only those files of the user that a document portal would provide. No portal
runs. Instead, a folder is mounted at a portal's path, and the file in this folder has the attribute that a
portal sets. Run this file under tests/app/with-desktop."""

import os
import pathlib
import signal
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "app"))
from driver import BIN, DIALOG, Atspi, Program, ProgramTest, key, type_text, wait_for  # noqa: E402

PORTAL = "/run/user/1000/doc/1a2b3c4d"
HOST_PATH = "/home/walker/Downloads/export.xml"


class Child:
    """The process that bubblewrap has started. All attributes but `pid` are those of bubblewrap's process."""

    def __init__(self, sandbox):
        self._sandbox = sandbox
        children = pathlib.Path(f"/proc/{sandbox.pid}/task/{sandbox.pid}/children")
        self.pid = int(wait_for("the sandboxed process", children.read_text).split()[0])

    def __getattr__(self, name):
        return getattr(self._sandbox, name)


class Sandboxed(ProgramTest):
    def setUp(self):
        super().setUp()
        self.portal = self.folder / "portal"
        self.portal.mkdir()

    def hand_over(self, size):
        """Puts an export at the place where the portal would put it. Replaces an earlier export."""
        file = self.export(size)
        os.setxattr(file, "user.document-portal.host-path", HOST_PATH.encode())
        file.rename(self.portal / "export.xml")

    def start_sandboxed(self):
        bus = os.environ["DBUS_SESSION_BUS_ADDRESS"].split("path=")[1].split(",")[0]
        runtime = os.environ["XDG_RUNTIME_DIR"]
        prefix = ["bwrap", "--unshare-net", "--die-with-parent", "--proc", "/proc", "--dev", "/dev",
                  "--tmpfs", "/tmp", "--tmpfs", "/run", "--tmpfs", "/home"]
        for path in ("/usr", "/etc", "/bin", "/lib", "/lib64", "/tmp/.X11-unix", bus, runtime,
                     str(BIN)):
            if os.path.exists(path):
                prefix += ["--ro-bind", path, path]
        prefix += ["--ro-bind", str(self.portal), PORTAL,
                   "--bind", str(self.configuration), str(self.configuration)]
        program = Program(self.configuration, prefix=prefix, HOME="/home/walker")
        program.process = Child(program.process)
        self.addCleanup(program.kill)
        program.find(Atspi.Role.PUSH_BUTTON, "Choose…")
        return program

    def path_field(self, program):
        return next(node for node in program.all(Atspi.Role.TEXT)
                    if "/" in text_of(node))

    def test_a_file_from_the_portal_is_chosen_shown_and_found_again(self):
        self.hand_over("200K")
        program = self.start_sandboxed()
        program.label("No file selected\\.")
        program.activate("Daily Steps — Ambulet")
        program.click(program.find(Atspi.Role.PUSH_BUTTON, "Choose…"))
        program.window(DIALOG)
        type_text(f"{PORTAL}/export.xml")
        key("Return")
        first = program.label("Loaded [0-9]+ days of data\\.").get_name()
        wait_for("the path outside of the sandbox",
                 lambda: text_of(self.path_field(program)) == HOST_PATH)
        os.kill(program.process.pid, signal.SIGTERM)
        self.assertEqual(program.end(), 0)
        self.assertIn(PORTAL, self.settings_file.read_text())

        # A newer export replaces the file.
        self.hand_over("2M")
        program = self.start_sandboxed()
        second = program.label("Loaded [0-9]+ days of data\\.").get_name()
        self.assertNotEqual(first, second)
        self.assertEqual(text_of(self.path_field(program)), HOST_PATH)


def text_of(node):
    return Atspi.Text.get_text(node, 0, -1)


if __name__ == "__main__":
    unittest.main()
