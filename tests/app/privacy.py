"""A whole session of the real program under strace and under Landlock. The program must not use the
network. It must write nothing but its settings and files of the desktop. It must read nothing but itself,
its settings, the chosen file, and files of the system and the desktop."""

import os
import pathlib
import re
import socket
import subprocess
import sys
import tempfile
import unittest

import landlock
from driver import (ABOUT, GUIDE, PROGRAM, Atspi, ProgramTest, close, front_window, key,
                    wait_for, windows_named)

# Paths of the system.
SYSTEM = ["/usr", "/lib", "/lib64", "/bin", "/etc", "/proc", "/sys", "/dev", "/var/cache/fontconfig",
          "/var/lib/dbus", "/run/dbus", "/run/systemd", "/run/nscd", "/var/run/nscd", "/run/udev"]
# Files for all programs of a desktop, in the home folder and in XDG_CONFIG_HOME.
DESKTOP_NAMES = re.compile(
    r"\.Xauthority|\.Xdefaults.*|\.icons|\.themes|\.fonts|\.fonts\.conf.*|\.terminfo|\.drirc|\.compose-cache|"
    r"\.XCompose|\.cache/(fontconfig|mesa_shader_cache)|\.local/share/(icons|fonts|mime|applications|themes)|"
    r"(\.config/)?(fontconfig|kdeglobals|user-dirs\.dirs|gtk-.*|dconf|qt6ct|Trolltech\.conf|QtProject.*|"
    r"kdedefaults|breezerc|oxygenrc|menus|ibus|at-spi.*)")
EXPORT_OF_A_DAY = (b'<HealthData><Record type="HKQuantityTypeIdentifierStepCount" value="1" '
                   b'startDate="2025-03-02 12:00:00 +0000"/></HealthData>')
CHANGES = re.compile(r"^(rename|unlink|mkdir|rmdir|link|symlink|truncate|chmod|fchmodat|chown|mknod|creat)")


def local_sockets():
    """The addresses of the display, the session bus, the accessibility bus, and the system's name service,
    as strace prints them: those in the abstract name space begin with "@"."""
    display = os.environ["DISPLAY"].removeprefix(":").partition(".")[0]
    bus = re.findall(r"unix:(path|abstract)=([^,;]*)", os.environ["DBUS_SESSION_BUS_ADDRESS"])
    return [*(f"{kind}/tmp/.X11-unix/X{display}" for kind in ("", "@")),
            *(("@" if kind == "abstract" else "") + address for kind, address in bus),
            *(os.environ["XDG_RUNTIME_DIR"] + f"/at-spi/bus{end}" for end in ("", f"_{display}")),
            "/run/nscd/socket", "/var/run/nscd/socket"]


class Call:
    """A system call in strace's output: name, arguments, result."""

    def __init__(self, line):
        match = re.match(r"(?:\d+ +)?(\w+)\((.*)\) += (-?\d+|\?)", line)
        self.name, self.arguments, result = match.groups() if match else ("", "", "-1")
        self.succeeded = not result.startswith("-") and result != "?"
        self.paths = [path.encode().decode("unicode_escape")
                      for path in re.findall(r'"((?:[^"\\]|\\.)*)"', self.arguments)]


class Privacy(ProgramTest):
    def setUp(self):
        super().setUp()
        self.files = self.folder / "files"
        self.files.mkdir()
        self.file = self.export("1M", "files/export.xml")
        for name in ("neighbour.xml", "neighbour", ".hidden"):
            (self.files / name).write_bytes(EXPORT_OF_A_DAY)

    def session(self, prefix, **environment):
        """Runs a session: first start, choosing a file, stride, guide, About, quit, second start, quit."""
        program = self.start(prefix=prefix(), **environment)
        program.wait_until_in_front(GUIDE)
        for page in range(1, 6):
            program.label(f"{page} of 5")
            key("Return")
        wait_for("the guide to close", lambda: not windows_named(GUIDE))
        program.choose_file(self.file)
        program.label(r"Loaded [1-9]\d* days of data\.")
        program.set_stride("3.25")
        program.find(Atspi.Role.PUSH_BUTTON, r"Miles: .* @ 3\.25 ft/step")
        program.choose("Help", "Getting Started…")
        program.wait_until_in_front(GUIDE)
        close(front_window())
        wait_for("the guide to close", lambda: not windows_named(GUIDE))
        program.wait_until_in_front()
        program.choose("Daily Steps", "About Daily Steps")
        program.wait_until_in_front(ABOUT)
        close(front_window())
        wait_for("About to close", lambda: not windows_named(ABOUT))
        program.wait_until_in_front()
        key("ctrl+q")
        self.assertEqual(program.end(), 0)

        again = self.start(prefix=prefix(), **environment)
        again.label(r"Loaded [1-9]\d* days of data\.")
        again.find(Atspi.Role.PUSH_BUTTON, r"Miles: .* @ 3\.25 ft/step")
        again.wait_until_in_front()
        key("ctrl+q")
        self.assertEqual(again.end(), 0)

    def is_the_desktops(self, path):
        for root in (os.environ["HOME"], str(self.configuration), os.environ["XDG_RUNTIME_DIR"]):
            if path == root or path.startswith(root + "/") and (
                    DESKTOP_NAMES.match(path[len(root) + 1:]) or root.endswith("runtime")):
                return True
        return False

    def is_the_settings(self, path):
        name = self.settings_file.name
        return pathlib.Path(path).parent == self.configuration and (
            pathlib.Path(path).name == name or re.fullmatch(rf"\.{re.escape(name)}\.new-\w{{6}}",
                                                            pathlib.Path(path).name))

    def is_allowed_to_be_read(self, path):
        path = os.path.normpath(path)
        return (any(path == place or path.startswith(place + "/") for place in SYSTEM)
                or path == str(PROGRAM) or path == str(self.file)
                or self.is_the_settings(path) or self.is_the_desktops(path))

    def test_a_session_under_strace(self):
        logs = []

        def strace():
            logs.append(self.folder / f"trace{len(logs)}")
            return ["strace", "-D", "-ff", "-qq", "-s", "4096", "-e", "trace=%file,%network",
                    "-e", "signal=none", "-o", logs[-1]]

        self.session(strace)
        calls = [Call(line) for log in self.folder.glob("trace*")
                 for line in log.read_text(errors="replace").splitlines()]
        self.assertGreater(len(calls), 1000)
        read = set()
        for call in calls:
            if call.name in ("connect", "sendto", "sendmsg", "sendmmsg"):  # even if the call failed
                for kind, address in re.findall(r'sun_path=(@?)"([^"]*)', call.arguments):
                    self.assertIn(kind + address, local_sockets())
        for call in filter(lambda call: call.succeeded, calls):
            if call.name == "socket":
                self.assertRegex(call.arguments, "^AF_(UNIX|NETLINK)", "a socket that is not local")
            elif call.name in ("bind", "listen", "accept", "accept4"):
                self.fail(f"{call.name}({call.arguments})")
            elif CHANGES.match(call.name):
                for path in call.paths:
                    self.assertTrue(self.is_the_settings(path) or self.is_the_desktops(path),
                                    f"{call.name}({call.arguments})")
            elif call.name in ("open", "openat") and call.paths:
                path = call.paths[-1]
                if re.search("O_WRONLY|O_RDWR|O_CREAT|O_TRUNC", call.arguments):
                    self.assertTrue(self.is_the_settings(path) or path.startswith("/dev/")
                                    or self.is_the_desktops(path), call.arguments)
                elif "O_DIRECTORY" not in call.arguments and not os.path.isdir(path):
                    self.assertTrue(self.is_allowed_to_be_read(path), call.arguments)
                read.add(os.path.normpath(path))
        self.assertIn(str(self.file), read)  # so the loop above sees opened files
        self.assertIn(str(self.settings_file), read)
        self.assertEqual(sorted(os.listdir(self.configuration)), [self.settings_file.name])

    def test_a_session_under_landlock(self):
        if landlock.version() < landlock.TCP_VERSION:
            print("NOT RUN: this kernel has no Landlock that denies TCP", file=sys.stderr)
            return
        home = os.environ["HOME"]
        options = []
        for place in [*SYSTEM, PROGRAM.parent, self.file, home, os.environ["XDG_RUNTIME_DIR"],
                      tempfile.gettempdir() + "/.X11-unix"]:
            options += ["--read", str(place)]
        for place in (self.configuration, "/dev", "/proc"):
            options += ["--write", str(place)]
        confined = [sys.executable, landlock.__file__, *options, "--"]

        def tried(code, *arguments):
            return subprocess.run([*confined, sys.executable, "-c", code, *map(str, arguments)],
                                  check=False, capture_output=True, text=True).stderr

        # Checks that the restrictions are in force.
        self.assertEqual(tried("import sys; open(sys.argv[1])", self.file), "")
        for neighbour in ("neighbour.xml", "neighbour", ".hidden"):
            self.assertIn("PermissionError", tried("import sys; open(sys.argv[1])",
                                                   self.files / neighbour))
        self.assertIn("PermissionError", tried("import sys; open(sys.argv[1], 'a')", self.file))
        with socket.create_server(("127.0.0.1", 0)) as server:
            connecting = "import socket, sys; socket.create_connection(('127.0.0.1', int(sys.argv[1])))"
            self.assertIn("PermissionError", tried(connecting, server.getsockname()[1]))
        # The program works under them.
        self.session(lambda: confined)
        # Another export cannot be read.
        self.remember(self.files / "neighbour.xml")
        program = self.start(prefix=confined)
        program.label(r"Loaded 0 days of data\.")
        program.kill()
        self.start().label(r"Loaded 1 days of data\.")


if __name__ == "__main__":
    unittest.main()
