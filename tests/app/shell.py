"""Tests of the program's start and end, its Getting Started window and its About window, under a window
manager."""

import os
import unittest

from dark import DARK, DARK_COLORS
from driver import (ABOUT, GUIDE, MAIN, Atspi, ProgramTest, close, front_window, is_minimized, key,
                    wait_for, walk, window_property, windows_named, xdotool)

MWM_MINIMIZE_DECORATION = 0x20
MWM_MAXIMIZE_DECORATION = 0x40


class Shell(ProgramTest):
    def assert_centered(self, program, title):
        """Waits until the window is centred horizontally, with a quarter of the free height above it."""
        width, height = map(int, xdotool("getdisplaygeometry").split())

        def place():
            left, top, frame_width, frame_height = program.frame(title)
            return (left, top) == ((width - frame_width) // 2, (height - frame_height) // 4)

        wait_for(f"{title} to be centred", place)

    def decorations(self, program, title):
        """The decorations that the window requests from the window manager."""
        hints = window_property(program.window(title), "_MOTIF_WM_HINTS").split(",")
        return int(hints[2], 16)

    def walk_through_the_guide(self, look, **environment):
        program = self.start(**environment)
        program.wait_until_in_front(GUIDE)
        self.assertTrue(program.is_open(MAIN))
        self.assert_centered(program, GUIDE)
        self.assertFalse(self.decorations(program, GUIDE) & MWM_MINIMIZE_DECORATION)
        self.assertTrue(self.decorations(program, GUIDE) & MWM_MAXIMIZE_DECORATION)
        for page in range(1, 6):
            program.label(f"{page} of 5")
            self.picture(f"guide-{look}-{page}.png")
            program.click(program.find(Atspi.Role.PUSH_BUTTON, "Next →" if page < 5 else "Done"))
        wait_for("the guide to close", lambda: not windows_named(GUIDE))
        program.wait_until_in_front()
        for menu in ("Daily Steps", "Window", "Help"):
            program.open_menu(menu)
            self.picture(f"menu-{look}-{menu.replace(' ', '-')}.png")
            key("Escape", "Escape")
        program.choose("Help", "Getting Started…")
        program.wait_until_in_front(GUIDE)
        program.label("1 of 5")
        self.assert_centered(program, GUIDE)
        return program

    def test_the_first_start_shows_the_guide_in_front_and_its_done_button_closes_it(self):
        self.walk_through_the_guide("light")

    def test_the_guide_and_the_about_window_open_on_a_dark_desktop(self):
        (self.configuration / "kdeglobals").write_text(DARK_COLORS)
        program = self.walk_through_the_guide("dark", **DARK)
        program.activate(MAIN)
        program.choose("Daily Steps", "About Daily Steps")
        program.wait_until_in_front(ABOUT)
        self.picture("about-dark.png")

    def test_a_moved_guide_that_is_shown_again_is_centred_and_at_its_first_page(self):
        program = self.start()
        program.wait_until_in_front(GUIDE)
        program.click(program.find(Atspi.Role.PUSH_BUTTON, "Next →"))
        program.label("2 of 5")
        xdotool("windowmove", "--sync", program.window(GUIDE), 20, 30)
        program.activate(MAIN)
        program.choose("Help", "Getting Started…")
        program.wait_until_in_front(GUIDE)
        program.label("1 of 5")
        self.assert_centered(program, GUIDE)

    def test_the_guides_frame_cannot_be_made_smaller_than_400_by_400(self):
        program = self.start()
        program.wait_until_in_front(GUIDE)
        xdotool("windowsize", program.window(GUIDE), 50, 50)
        wait_for("the smallest frame", lambda: program.frame(GUIDE)[2:] == (400, 400))
        self.picture("guide-smallest.png")

    def test_the_guide_does_not_open_if_an_empty_path_is_remembered(self):
        self.remember("")
        program = self.start()
        program.wait_until_in_front()
        program.label("From: —")
        self.assertFalse(program.is_open(GUIDE))

    def test_the_guide_opens_if_the_path_is_only_given_on_the_command_line(self):
        file = self.folder / "export.xml"
        file.write_text("<HealthData/>")
        program = self.start("-xmlFilePath", str(file))
        program.wait_until_in_front(GUIDE)
        program.label("No file selected\\.")
        path = program.find(Atspi.Role.TEXT, "Export file")
        self.assertEqual(Atspi.Text.get_text(path, 0, -1), "")

    def test_assistive_programs_know_the_application_and_its_pictures_by_name(self):
        program = self.start()
        program.wait_until_in_front(GUIDE)
        self.assertEqual(program.accessible.get_name(), "Daily Steps")
        program.find(Atspi.Role.IMAGE, "The Summary tab .*")
        key("Return")
        program.find(Atspi.Role.IMAGE, "The end of the profile .*")
        key("alt+d", "a")
        program.wait_until_in_front(ABOUT)
        program.find(Atspi.Role.IMAGE, "Daily Steps icon")

    def test_a_click_on_the_link_opens_the_website_and_leaves_about_open(self):
        self.remember("")
        opened = self.folder / "opened"
        browser = self.folder / "xdg-open"
        browser.write_text(f'#!/bin/sh\necho "$@" > {opened}.new && mv {opened}.new {opened}\n')
        browser.chmod(0o755)
        program = self.start(PATH=f"{self.folder}:{os.environ['PATH']}")
        program.wait_until_in_front()
        key("alt+d", "a")
        program.wait_until_in_front(ABOUT)
        program.click(program.find(Atspi.Role.PUSH_BUTTON, "ambulet\\.example"))
        wait_for("the website", opened.exists)
        self.assertEqual(opened.read_text(), "https://ambulet.example\n")
        self.assertTrue(program.is_open(ABOUT))

    def test_the_name_in_the_about_window_grows_with_a_large_font(self):
        (self.configuration / "kdeglobals").write_text(
            DARK_COLORS + '[General]\nfont=DejaVu Sans,20,-1,5,50,0,0,0,0,0\n')
        program = self.start(**DARK)
        program.wait_until_in_front(GUIDE)
        self.picture("guide-large-font.png")
        key("alt+d", "a")
        program.wait_until_in_front(ABOUT)
        self.picture("about-large-font.png")
        name = program.extents(program.find(Atspi.Role.LABEL, "Daily Steps"))
        self.assertGreater(name[3], 22 * 1.9)

    def test_choosing_about_twice_shows_one_window_centred(self):
        self.remember("")
        program = self.start()
        program.wait_until_in_front()
        program.choose("Daily Steps", "About Daily Steps")
        program.wait_until_in_front(ABOUT)
        self.assert_centered(program, ABOUT)
        self.picture("about-light.png")
        window = program.window(ABOUT)
        self.assertFalse(self.decorations(program, ABOUT) &
                         (MWM_MINIMIZE_DECORATION | MWM_MAXIMIZE_DECORATION))
        hints = window_property(window, "WM_NORMAL_HINTS")
        bar = next(node for node in walk(program.front())
                   if node.get_role() == Atspi.Role.MENU_BAR)
        height = 260 + program.extents(bar)[3]
        self.assertIn(f"minimum size: 360 by {height}\n", hints)
        self.assertIn(f"maximum size: 360 by {height}\n", hints)

        xdotool("windowmove", "--sync", window, 10, 700)
        program.activate(MAIN)
        program.choose("Daily Steps", "About Daily Steps")
        program.wait_until_in_front(ABOUT)
        self.assertEqual(windows_named(ABOUT), [window])
        self.assert_centered(program, ABOUT)

    def test_the_windows_have_the_programs_icon(self):
        program = self.start()
        for title in (MAIN, GUIDE):
            window = program.window(title)
            for size in (16, 128):
                wait_for(f"the icon of {size} pixels", lambda: f"({size} x {size})" in
                         window_property(window, "_NET_WM_ICON"))

    def test_a_minimised_window_counts_as_open_and_closing_all_windows_quits(self):
        program = self.start()
        program.wait_until_in_front(GUIDE)
        guide = program.window(GUIDE)
        program.activate(MAIN)
        window = program.window(MAIN)
        key("ctrl+m")
        wait_for("the main window to be minimised", lambda: is_minimized(window))
        program.wait_until_in_front(GUIDE)
        close(front_window())
        wait_for("the guide to close", lambda: guide not in windows_named(GUIDE))
        xdotool("windowactivate", window)
        program.wait_until_in_front()
        self.assertIsNone(program.process.poll())
        close(front_window())
        self.assertEqual(program.end(), 0)

    def test_the_program_runs_while_only_the_guide_is_open_and_done_in_the_guide_ends_the_program(self):
        program = self.start()
        program.wait_until_in_front(GUIDE)
        program.activate(MAIN)
        close(front_window())
        program.wait_until_in_front(GUIDE)
        for page in range(1, 6):
            program.label(f"{page} of 5")
            key("Return")
        self.assertEqual(program.end(), 0)


if __name__ == "__main__":
    unittest.main()
