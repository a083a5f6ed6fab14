"""Faults of the export file and of the system. In spite of them, the real program must stay usable, quit at
once, and keep its settings."""

import os
import random
import subprocess
import time
import unittest

from driver import (FAULTS, MAIN, PATIENCE, Atspi, ProgramTest, close, key, wait_for,
                    windows_named)

RECORD = (b'<Record type="HKQuantityTypeIdentifierStepCount" value="1" '
          b'startDate="2025-03-%02d 12:00:00 +0000"/>\n')


class Faults(ProgramTest):
    def write_export(self, records, name="export.xml"):
        """Writes an export of about `records` records of one step: repeatedly one for each day of March.
        Returns the path."""
        file = self.folder / name
        with file.open("wb") as out:
            out.write(b"<HealthData>\n")
            month = b"".join(RECORD % day for day in range(1, 32))
            for _ in range(records // 31):
                out.write(month)
            out.write(b"</HealthData>\n")
        return file

    def quit(self, program):
        program.wait_until_in_front()
        key("ctrl+q")
        self.assertEqual(program.end(), 0)

    def set_stride(self, program, stride="3.25"):
        program.set_stride(stride)
        wait_for("the stride", lambda: f"strideFootLength={stride}" in self.settings_file.read_text())

    def test_the_window_stays_usable_and_quits_at_once_if_a_mount_hangs(self):
        # The mount is in the folder that the open dialog lists.
        mount = self.folder / "mount"
        mount.mkdir()
        other = self.write_export(31, "other.xml")
        self.remember(self.write_export(31).rename(mount / "export.xml"))
        program = self.start(AMBULET_HANG=str(mount), **FAULTS)
        program.label("Parsing XML…")
        self.quit(program)

        program = self.start(AMBULET_HANG=str(mount), **FAULTS)
        program.label("Parsing XML…")
        program.choose_file(other)
        program.label(r"Loaded 31 days of data\.")
        program.set_stride("3.25")
        program.find(Atspi.Role.PUSH_BUTTON, r"Miles: .* @ 3\.25 ft/step")
        self.quit(program)

    def test_the_window_stays_usable_without_free_descriptors(self):
        self.remember(self.write_export(31))
        program = self.start()
        program.label(r"Loaded 31 days of data\.")
        # Qt paints large areas on threads of its own. Without descriptors it cannot start them, and aborts.
        self.set_stride(program, "3.5")
        limits = f"--pid={program.process.pid}"
        subprocess.run(["prlimit", limits, "--nofile=3:"], check=True)
        program.set_stride("3.25")
        program.find(Atspi.Role.PUSH_BUTTON, r"Miles: .* @ 3\.25 ft/step")  # the program keeps it in memory
        self.assertIn("strideFootLength=3.5", self.settings_file.read_text())
        subprocess.run(["prlimit", limits, "--nofile=1024:"], check=True)
        self.quit(program)
        self.assertIn("strideFootLength=3.25", self.settings_file.read_text())

    def test_the_status_reports_an_error_and_the_window_stays_usable_if_the_load_gets_no_thread(self):
        self.remember(self.write_export(31))
        program = self.start(AMBULET_THREADS="0", **FAULTS)
        program.label(r"The file could not be read\.")
        self.set_stride(program)
        self.quit(program)

    def test_the_load_gives_the_right_figures_without_a_second_thread(self):
        self.remember(self.write_export(310_000))
        program = self.start(AMBULET_THREADS="1", **FAULTS)
        program.label(r"Loaded 31 days of data\.")
        program.label("Steps: 310,000")
        self.quit(program)

    def test_the_window_stays_usable_and_quits_at_once_while_a_file_is_read_slowly(self):
        self.remember(self.write_export(310_000))
        program = self.start(AMBULET_SLOW_READ=str(1000 * PATIENCE), **FAULTS)
        program.label("Parsing XML…")
        self.set_stride(program)
        program.label("Parsing XML…")
        began = time.monotonic()
        self.quit(program)
        self.assertLess(time.monotonic() - began, PATIENCE)

        program = self.start(AMBULET_SLOW_READ="20", **FAULTS)
        program.label(r"Loaded 31 days of data\.")
        program.label("Steps: 310,000")
        self.quit(program)

    def test_a_file_that_changes_during_a_load_gives_the_days_read_so_far(self):
        def append(file):
            with file.open("ab") as out:
                out.write(b"<HealthData>" * 100000)

        changes = {
            "truncated": lambda file: os.truncate(file, 1000),
            "deleted": lambda file: file.unlink(),
            "replaced": lambda file: self.write_export(31, "new.xml").rename(file),
            "growing": append,
        }
        for name, change in changes.items():
            with self.subTest(name):
                file = self.write_export(300_000, "changing.xml")
                self.remember(file)
                program = self.start(AMBULET_SLOW_READ="50", **FAULTS)
                program.label("Parsing XML…")
                change(file)
                program.label("Parsing XML…")  # the load has not ended before the change
                program.label(r"Loaded [1-9]\d* days of data\.")
                self.quit(program)

    def test_a_read_error_in_the_middle_gives_the_days_read_so_far(self):
        file = self.folder / "export.xml"
        with file.open("wb") as out:
            out.write(b"<HealthData>\n")
            for day in (1, 2):
                out.write(RECORD % day * 50_000)
            out.write(b"</HealthData>\n")
        self.remember(file)
        program = self.start(AMBULET_READ_ERROR=str(file.stat().st_size // 4), **FAULTS)
        program.label(r"Loaded 1 days of data\.")
        self.quit(program)

    def test_a_quit_at_any_moment_ends_the_program_and_keeps_the_settings(self):
        file = self.write_export(300_000)
        self.remember(file)
        remembered = self.settings_file.read_text().splitlines()[1]
        moments = random.Random(1)
        for _ in range(int(os.environ.get("AMBULET_QUITS", "8"))):
            program = self.start_without_waiting()
            time.sleep(moments.random() * 0.6)  # so that the quit comes at a random moment

            def ended():
                for window in windows_named(MAIN):
                    close(window)
                return program.process.poll() is not None

            wait_for("the end", ended)
            self.assertEqual(program.process.returncode, 0)
            self.assertIn(remembered, self.settings_file.read_text().splitlines())
        self.assertEqual(os.listdir(self.configuration), [self.settings_file.name])


if __name__ == "__main__":
    unittest.main()
