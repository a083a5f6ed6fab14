"""How the program ends: by signals, by a lost display, by closing its windows in every order. Also two
copies of the program at the same time, and stored frames outside the screen."""

import itertools
import os
import signal
import struct
import subprocess
import unittest

from driver import (ABOUT, GUIDE, MAIN, Atspi, Program, ProgramTest, close, front_window, key,
                    type_text, wait_for, windows_named, xdotool)


class Ends(ProgramTest):
    def assert_settings_whole(self):
        """Asserts that the settings file has the path, and that its folder contains no other file."""
        self.assertIn("xmlFilePath=", self.settings_file.read_text())
        self.assertEqual([entry.name for entry in self.configuration.iterdir()],
                         [self.settings_file.name])

    def test_signals_quit_and_store_the_frame_even_during_a_load(self):
        endless = self.remember_endless_load()
        for number, width in ((signal.SIGTERM, 910), (signal.SIGHUP, 920), (signal.SIGINT, 930)):
            with self.subTest(number):
                program = self.start(**endless)
                program.wait_until_in_front()
                program.label("Parsing XML…")
                xdotool("windowsize", "--sync", program.window(MAIN), width, 700)
                wait_for("the size", lambda: program.extents(program.windows()[0])[2] == width)
                program.process.send_signal(number)
                self.assertEqual(program.end(), 0)
                self.assert_settings_whole()
                again = self.start()
                again.wait_until_in_front()
                self.assertEqual(again.extents(again.windows()[0])[2], width)
                again.kill()

    def test_a_signal_quits_while_the_file_dialog_is_open(self):
        self.remember("")
        program = self.start()
        program.wait_until_in_front()
        program.click(program.find(Atspi.Role.PUSH_BUTTON, "Choose…"))
        program.find(Atspi.Role.PUSH_BUTTON, "Open")
        program.process.send_signal(signal.SIGTERM)
        self.assertEqual(program.end(), 0)
        self.assert_settings_whole()

    def test_a_signal_that_was_ignored_at_the_start_stays_ignored(self):
        self.remember("")
        old = signal.signal(signal.SIGHUP, signal.SIG_IGN)
        self.addCleanup(signal.signal, signal.SIGHUP, old)
        program = self.start()
        program.wait_until_in_front()
        program.process.send_signal(signal.SIGHUP)
        key("alt+h", "g")
        program.wait_until_in_front(GUIDE)
        program.process.send_signal(signal.SIGTERM)
        self.assertEqual(program.end(), 0)

    def test_a_lost_display_ends_the_program_even_during_a_load(self):
        endless = self.remember_endless_load()
        read, write = os.pipe()
        with subprocess.Popen(["Xvfb", "-displayfd", str(write), "-nolisten", "tcp"],
                              pass_fds=[write], stderr=subprocess.DEVNULL) as display:
            self.addCleanup(display.kill)
            number = os.read(read, 10).decode().strip()
            program = Program(self.configuration, DISPLAY=f":{number}", **endless)
            self.addCleanup(program.kill)
            program.label("Parsing XML…")
            display.kill()
            self.assertEqual(program.end(), 1)
        os.close(read)
        os.close(write)
        self.assert_settings_whole()

    def test_closing_the_main_window_at_any_moment_of_the_first_start_keeps_the_guide_open(self):
        moments = {
            "the main window is created": lambda: windows_named(MAIN, visible=False),
            "the main window is visible": lambda: windows_named(MAIN),
            "the guide is created": lambda: windows_named(GUIDE, visible=False),
            "the guide is visible": lambda: windows_named(GUIDE),
            "the guide is in front": lambda: front_window() in windows_named(GUIDE),
        }
        for moment, has_come in moments.items():
            with self.subTest(moment):
                program = Program(self.configuration)
                self.addCleanup(program.kill)
                wait_for(moment, has_come)
                close(windows_named(MAIN, visible=False)[0])
                program.wait_until_in_front(GUIDE)
                wait_for("the main window to close", lambda: not windows_named(MAIN))
                self.assertIsNone(program.process.poll())
                close(front_window())
                self.assertEqual(program.end(), 0)
                self.settings_file.unlink(missing_ok=True)

    def test_the_program_ends_with_the_last_of_three_windows_in_every_order(self):
        for order in itertools.permutations((MAIN, GUIDE, ABOUT)):
            with self.subTest(order):
                program = self.start()
                program.wait_until_in_front(GUIDE)
                key("alt+d", "a")
                program.wait_until_in_front(ABOUT)
                for title in order:
                    self.assertIsNone(program.process.poll())
                    program.activate(title)
                    close(front_window())
                    if title != order[-1]:
                        wait_for(f"{title} to close", lambda: not windows_named(title))
                self.assertEqual(program.end(), 0)
                self.settings_file.unlink(missing_ok=True)

    def test_two_copies_both_store_their_changes_and_end_separately(self):
        file = self.folder / "export.xml"
        file.write_text("<HealthData/>")
        self.remember(file)
        first, second = self.start(), self.start()
        wait_for("two main windows", lambda: len(windows_named(MAIN)) == 2)
        for program in (first, second):
            program.label("Loaded 0 days of data\\.")
        second.wait_until_in_front()
        second.click(second.find(Atspi.Role.PUSH_BUTTON, "Miles: .*"))
        type_text("3.25")
        key("Return")
        wait_for("the stride", lambda: "strideFootLength=3.25" in self.settings_file.read_text())
        second.process.send_signal(signal.SIGTERM)
        self.assertEqual(second.end(), 0)
        self.assertIsNone(first.process.poll())
        wait_for("one main window", lambda: len(windows_named(MAIN)) == 1)
        first.wait_until_in_front()
        xdotool("windowsize", "--sync", front_window(), 910, 700)
        wait_for("the size", lambda: first.extents(first.windows()[0])[2] == 910)
        key("ctrl+q")
        self.assertEqual(first.end(), 0)
        self.assertIn("strideFootLength=3.25", self.settings_file.read_text())
        self.assertIn(f'xmlFilePath="{file}"'.replace('"', ""),
                      self.settings_file.read_text().replace('"', ""))
        again = self.start()
        again.wait_until_in_front()
        self.assertEqual(again.extents(again.windows()[0])[2], 910)


def stored_frame(x, y, width, height, screen=0, maximized=0, full_screen=0):
    """A frame as it is written in the settings file."""
    def rectangle(left, top):
        return struct.pack(">4i", left, top, left + width - 1, top + height - 1)

    data = (struct.pack(">IHH", 0x1D9D0CB, 3, 0) + rectangle(x, y) + rectangle(x, y)
            + struct.pack(">iBBi", screen, maximized, full_screen, 1400) + rectangle(x, y))
    return '"@ByteArray(' + "".join(f"\\x{byte:x}" for byte in data) + ')"'


class Frames(ProgramTest):
    def test_a_window_stored_outside_every_screen_is_moved_back(self):
        width, height = map(int, xdotool("getdisplaygeometry").split())
        frames = {
            "far to the left": stored_frame(-5000, 100, 700, 500),
            "far to the right": stored_frame(50000, 100, 700, 500),
            "above": stored_frame(100, -3000, 700, 500),
            "below": stored_frame(100, 9000, 700, 500),
            "the title bar just above": stored_frame(100, -40, 700, 500),
            "one point at the left": stored_frame(-699, 100, 700, 500),
            "one point at the right": stored_frame(width - 1, 100, 700, 500),
            "one point at the bottom": stored_frame(100, height - 1, 700, 500),
            "another screen": stored_frame(4000, 100, 700, 500, screen=7),
            "a negative screen": stored_frame(4000, 100, 700, 500, screen=-3),
            "a very large one": stored_frame(-2 ** 30, -2 ** 30, 2 ** 30, 2 ** 30),
            "a negative size": stored_frame(100, 100, -50, -50),
        }
        for name, frame in frames.items():
            with self.subTest(name):
                self.settings_file.write_text(f"[General]\nxmlFilePath=\nMainWindowFrame={frame}\n")
                program = self.start()

                def in_reach():
                    left, top, frame_width, frame_height = program.frame(MAIN)
                    return (top >= 0 and top + 20 <= height and left + frame_width >= 50
                            and left <= width - 50 and frame_width <= width
                            and frame_height <= height)

                wait_for(f"the window to be in reach: {name}", in_reach)
                program.process.terminate()
                self.assertEqual(program.end(), 0)


if __name__ == "__main__":
    unittest.main()
