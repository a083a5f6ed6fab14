"""Tests of the program installed by `cmake --install`: its files, its integration into the desktop, and
its hardening. Run this file under tests/app/with-desktop."""

import configparser
import json
import os
import pathlib
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
BUILD = pathlib.Path(os.environ["AMBULET_BUILD"])
PREFIX = pathlib.Path(tempfile.mkdtemp())
ID = "org.ambulet.DailySteps"
os.environ["AMBULET_PROGRAM"] = str(PREFIX / "bin" / "ambulet")
os.environ["XDG_DATA_DIRS"] = f"{PREFIX / 'share'}:/usr/local/share:/usr/share"

sys.path.insert(0, str(ROOT / "tests" / "app"))
from driver import MAIN, Atspi, ProgramTest, key, wait_for, window_property  # noqa: E402


def setUpModule():
    subprocess.run(["cmake", "--install", BUILD, "--prefix", PREFIX], check=True,
                   stdout=subprocess.DEVNULL)


def tearDownModule():
    shutil.rmtree(PREFIX)


def readelf(*options):
    return subprocess.run(["readelf", "--wide", *options, PREFIX / "bin" / "ambulet"], check=True,
                          capture_output=True, text=True).stdout


def desktop_entry():
    parser = configparser.ConfigParser(interpolation=None)
    parser.optionxform = str
    parser.read(PREFIX / "share" / "applications" / f"{ID}.desktop")
    return parser["Desktop Entry"]


class Files(unittest.TestCase):
    def test_the_installed_files_are_exactly_the_expected_ones(self):
        icons = "share/icons/hicolor"
        expected = {
            "bin/ambulet",
            f"share/applications/{ID}.desktop",
            f"share/metainfo/{ID}.metainfo.xml",
            f"{icons}/scalable/apps/{ID}.svg",
            *(f"{icons}/{size}x{size}/apps/{ID}.png"
              for size in (16, 22, 24, 32, 48, 64, 128, 256, 512)),
            "share/man/man1/ambulet.1",
            "share/doc/ambulet/LICENSE",
        }
        self.assertEqual(
            {str(file.relative_to(PREFIX)) for file in PREFIX.rglob("*") if file.is_file()},
            expected)

    def test_each_icon_has_the_size_of_its_folder(self):
        for picture in PREFIX.rglob("*.png"):
            width, height = struct.unpack(">II", picture.read_bytes()[16:24])
            self.assertEqual(f"{width}x{height}", picture.parent.parent.name)

    def test_no_placeholder_is_left_in_a_file(self):
        for file in (f"share/metainfo/{ID}.metainfo.xml", "share/man/man1/ambulet.1"):
            self.assertNotRegex((PREFIX / file).read_text(), "@[A-Za-z_]+@")


class Hardening(unittest.TestCase):
    def test_the_program_is_position_independent(self):
        self.assertIn("Type:                              DYN", readelf("--file-header"))

    def test_relocations_are_read_only_before_main(self):
        self.assertIn("GNU_RELRO", readelf("--program-headers"))
        self.assertRegex(readelf("--dynamic"), r"FLAGS_1\).*\bNOW\b")

    def test_the_stack_is_not_executable(self):
        self.assertRegex(readelf("--program-headers"), r"GNU_STACK .* RW +0x")

    def test_no_segment_is_writable_and_executable(self):
        self.assertNotRegex(readelf("--program-headers"), r"LOAD .* RWE ")

    def test_libraries_are_loaded_from_the_system_only(self):
        self.assertNotRegex(readelf("--dynamic"), r"\((RPATH|RUNPATH)\)")

    def test_buffer_overruns_are_detected(self):
        symbols = readelf("--dyn-syms")
        self.assertIn("__stack_chk_fail", symbols)
        self.assertRegex(symbols, r"__(read|pread64|memcpy|memmove|strcpy|fdelt)_chk")
        self.assertIn("__glibcxx_assert_fail", symbols)

    @unittest.skipUnless(os.uname().machine == "x86_64", "only x86 has this protection")
    def test_control_flow_protection_is_on(self):
        # The code is checked, not the ELF note, which the linker writes only if the system's start files
        # have it.
        code = subprocess.run(["objdump", "--disassemble=main", PREFIX / "bin" / "ambulet"],
                              check=True, capture_output=True, text=True).stdout
        self.assertRegex(code, r"<main>:\n.*endbr64")

    def test_each_source_is_compiled_with_every_flag(self):
        # Not every flag can be seen in the program.
        flags = {"-fstack-protector-strong", "-fstack-clash-protection", "-fPIE",
                 "-ftrivial-auto-var-init=zero", "-D_FORTIFY_SOURCE=3", "-D_GLIBCXX_ASSERTIONS"}
        if os.uname().machine == "x86_64":
            flags.add("-fcf-protection=full")
        commands = json.loads((BUILD / "compile_commands.json").read_text())
        ours = [entry for entry in commands if entry["file"].startswith(str(ROOT / "src"))]
        self.assertGreater(len(ours), 50)
        for entry in ours:
            self.assertEqual(flags - set(entry["command"].split()), set(), entry["file"])

    def test_the_program_does_not_contain_the_path_of_its_sources(self):
        program = (PREFIX / "bin" / "ambulet").read_bytes()
        for folder in (ROOT, BUILD):
            self.assertNotIn(str(folder).encode(), program)


class Running(ProgramTest):
    def test_the_desktop_file_matches_the_window(self):
        entry = desktop_entry()
        self.assertEqual(shutil.which(entry["Exec"], path=str(PREFIX / "bin")),
                         str(PREFIX / "bin" / "ambulet"))
        self.assertEqual(entry["Icon"], ID)
        program = self.start()
        window = program.window(MAIN)
        self.assertIn(f'"{entry["StartupWMClass"]}"', window_property(window, "WM_CLASS"))

    def test_no_memory_is_writable_and_executable(self):
        self.remember(self.export("2M"))
        program = self.start()
        program.label("Loaded [0-9]+ days of data\\.")
        self.picture("installed.png")
        program.wait_until_in_front()
        program.click(program.find(Atspi.Role.PUSH_BUTTON, "Miles: .*"))
        program.find(Atspi.Role.TEXT)
        key("Escape")
        program.click(program.find(Atspi.Role.PUSH_BUTTON, "Choose…"))
        wait_for("the dialog", lambda: program.all(Atspi.Role.FILE_CHOOSER)
                 or program.all(Atspi.Role.DIALOG))
        maps = pathlib.Path(f"/proc/{program.process.pid}/maps").read_text()
        self.assertEqual(re.findall(r"^\S+ rwx.*", maps, re.MULTILINE), [])


if __name__ == "__main__":
    unittest.main()
