"""What the menus' items do to windows, and their keys, under a window manager."""

import unittest

from driver import (ABOUT, GUIDE, MAIN, Atspi, ProgramTest, front_window, has_state, is_minimized, key,
                    wait_for, window_property, windows_named, xdotool)


class Menus(ProgramTest):
    def start_with_all_windows(self):
        """The program with its three windows open; each one's X window by its title."""
        program = self.start()
        program.wait_until_in_front(GUIDE)
        program.activate(MAIN)
        program.choose("Daily Steps", "About Daily Steps")
        program.wait_until_in_front(ABOUT)
        return program, {title: program.window(title) for title in (MAIN, GUIDE, ABOUT)}

    def wait_for_minimized(self, windows):
        wait_for("all windows minimised", lambda: all(map(is_minimized, windows)))

    def restore(self, program, title, window):
        xdotool("windowactivate", window)
        program.wait_until_in_front(title)

    def test_hide_minimises_all_windows_from_each_of_them_and_show_all_brings_them_back(self):
        program, windows = self.start_with_all_windows()
        for title, window in windows.items():
            self.restore(program, title, window)
            key("ctrl+h")
            self.wait_for_minimized(windows.values())
            self.restore(program, MAIN, windows[MAIN])
            program.choose("Daily Steps", "Show All")
            wait_for("all windows", lambda: not any(map(is_minimized, windows.values())))
            program.wait_until_in_front()

    def test_hide_others_minimises_other_programs_windows_and_show_all_brings_them_back(self):
        self.remember("")
        other = self.start().window(MAIN)
        program = self.start()
        own = wait_for("the second program's window",
                       lambda: next(iter(set(windows_named(MAIN)) - {other}), None))
        wait_for("it in front", lambda: front_window() == own)
        key("ctrl+alt+h")
        wait_for("the other minimised", lambda: is_minimized(other))
        self.assertFalse(is_minimized(own))
        program.choose("Daily Steps", "Show All")
        wait_for("the other back", lambda: not is_minimized(other))
        wait_for("its own in front", lambda: front_window() == own)

    def test_hide_others_works_from_each_window(self):
        self.remember("")
        other = self.start().window(MAIN)
        self.settings_file.unlink()
        program = self.start()
        program.wait_until_in_front(GUIDE)
        key("ctrl+alt+h")
        wait_for("the other minimised", lambda: is_minimized(other))
        self.assertFalse(is_minimized(program.window(GUIDE)))

    def test_minimize_acts_on_the_window_in_front_where_it_has_the_button(self):
        program, windows = self.start_with_all_windows()
        for title in (ABOUT, GUIDE):
            self.restore(program, title, windows[title])
            key("ctrl+m")
            # A key that is handled after that one: had it done anything, it would have by now.
            key("ctrl+h")
            self.wait_for_minimized(windows.values())
        self.restore(program, MAIN, windows[MAIN])
        program.choose("Daily Steps", "Show All")
        wait_for("all windows", lambda: not any(map(is_minimized, windows.values())))
        program.wait_until_in_front()
        key("ctrl+m")
        wait_for("the main window minimised", lambda: is_minimized(windows[MAIN]))
        self.assertFalse(is_minimized(windows[GUIDE]))
        self.assertFalse(is_minimized(windows[ABOUT]))

    def test_zoom_fills_the_screen_and_gives_the_size_back(self):
        self.remember("")
        program = self.start()
        program.wait_until_in_front()
        window = program.window(MAIN)
        before = program.frame(MAIN)
        program.choose("Window", "Zoom")
        wait_for("the zoomed window", lambda: "MAXIMIZED_VERT" in window_property(
            window, "_NET_WM_STATE"))
        program.choose("Window", "Zoom")
        wait_for("the old size", lambda: program.frame(MAIN) == before)

    def test_the_window_menu_lists_the_open_windows_and_brings_up_the_chosen_one(self):
        program, windows = self.start_with_all_windows()
        program.activate(MAIN)

        def listed():
            items = program.open_menu("Window")
            key("Escape", "Escape")
            names = [node.get_name() for node in items]
            below = items[names.index("Bring All to Front") + 1:]
            self.assertEqual(below[0].get_role(), Atspi.Role.SEPARATOR)
            return [(node.get_name(), has_state(node, Atspi.StateType.CHECKED))
                    for node in below[1:]]

        self.assertEqual(listed(), [(ABOUT, False), (MAIN, True), (GUIDE, False)])
        program.choose("Window", GUIDE)
        program.wait_until_in_front(GUIDE)
        key("alt+F4")
        wait_for("the guide to close", lambda: windows[GUIDE] not in windows_named(GUIDE))
        program.activate(MAIN)
        self.assertEqual(listed(), [(ABOUT, False), (MAIN, True)])

    def test_bring_all_to_front_raises_all_windows_above_other_programs(self):
        program, windows = self.start_with_all_windows()
        self.remember("")
        self.start()
        other = wait_for("the other program's window",
                         lambda: next(iter(set(windows_named(MAIN)) - {windows[MAIN]}), None))

        def stacking():
            told = window_property(xdotool("search", "--maxdepth", 0, "--class", "").split()[0],
                                   "_NET_CLIENT_LIST_STACKING")
            return [str(int(window, 16)) for window in told.split("#")[-1].split(",")]

        wait_for("the other on top", lambda: stacking()[-1] == other)
        self.restore(program, MAIN, windows[MAIN])
        wait_for("the other below one window", lambda: stacking()[-2:] == [other, windows[MAIN]])
        program.choose("Window", "Bring All to Front")
        wait_for("the other below all", lambda: stacking()[0] == other)
        self.assertEqual(stacking()[-1], windows[MAIN])

    def test_quit_ends_the_program_from_each_window_also_when_the_main_one_is_closed(self):
        for title in (MAIN, GUIDE, ABOUT):
            with self.subTest(title):
                program, windows = self.start_with_all_windows()
                if title != MAIN:
                    program.activate(MAIN)
                    key("alt+F4")
                    wait_for("the main window to close", lambda: windows[MAIN] not in windows_named(MAIN))
                program.activate(title)
                key("ctrl+q")
                self.assertEqual(program.end(), 0)


if __name__ == "__main__":
    unittest.main()
