"""The effect of menu items and shortcuts on windows, under a window manager."""

import subprocess
import unittest

from driver import (ABOUT, GUIDE, MAIN, Atspi, ProgramTest, close, front_window, has_state,
                    is_minimized, key, wait_for, window_property, windows_named, xdotool)

MINIMIZE = (0x8, 0x20)  # bits of _MOTIF_WM_HINTS: the function and the decoration


class Menus(ProgramTest):
    def start_with_all_windows(self):
        """Starts the program and opens all its windows. Returns the program, and the X windows by title."""
        program = self.start()
        program.wait_until_in_front(GUIDE)
        program.activate(MAIN)
        program.choose("Daily Steps", "About Daily Steps")
        program.wait_until_in_front(ABOUT)
        return program, {title: program.window(title) for title in (MAIN, GUIDE, ABOUT)}

    def start_another(self):
        """Starts one more copy of the program. Returns the copy and its main window, which is in front."""
        self.remember("")  # so that no guide opens
        before = set(windows_named(MAIN))
        program = self.start()
        window = wait_for("one more main window",
                          lambda: next(iter(set(windows_named(MAIN)) - before), None))
        wait_for("the new window to be in front", lambda: front_window() == window)
        return program, window

    def wait_for_minimized(self, windows):
        wait_for("all windows to be minimised", lambda: all(map(is_minimized, windows)))

    def decorations(self, window):
        """The functions and the decorations that the window requests from the window manager."""
        return [int(value, 16) for value in window_property(window, "_MOTIF_WM_HINTS").split(",")[1:3]]

    def restore(self, program, title, window):
        xdotool("windowactivate", window)
        program.wait_until_in_front(title)

    def test_hide_minimises_all_windows_whichever_is_in_front_and_show_all_restores_them(self):
        program, windows = self.start_with_all_windows()
        for title, window in windows.items():
            self.restore(program, title, window)
            key("ctrl+h")
            self.wait_for_minimized(windows.values())
            self.restore(program, MAIN, windows[MAIN])
            program.choose("Daily Steps", "Show All")
            wait_for("all windows to be restored", lambda: not any(map(is_minimized, windows.values())))
            program.wait_until_in_front()

    def test_a_window_without_a_minimise_button_gets_one_only_while_it_is_hidden(self):
        program, windows = self.start_with_all_windows()
        before = {title: self.decorations(windows[title]) for title in (GUIDE, ABOUT)}
        key("ctrl+h")
        self.wait_for_minimized(windows.values())
        for title, own in before.items():
            self.assertEqual([asked & bit for asked, bit in zip(own, MINIMIZE)], [0, 0])
            wait_for("the button to appear", lambda: self.decorations(windows[title])
                     == [asked | bit for asked, bit in zip(own, MINIMIZE)])
            self.restore(program, title, windows[title])
            wait_for("the button to go", lambda: self.decorations(windows[title]) == own)

    def test_hide_others_minimises_other_programs_windows_and_show_all_restores_them(self):
        _, other = self.start_another()
        program, own = self.start_another()
        key("ctrl+alt+h")
        wait_for("the other window to be minimised", lambda: is_minimized(other))
        self.assertFalse(is_minimized(own))
        program.choose("Daily Steps", "Show All")
        wait_for("the other window to be restored", lambda: not is_minimized(other))
        wait_for("the program's own window in front", lambda: front_window() == own)

    def test_hide_others_keeps_panels_and_show_all_does_not_restore_windows_that_the_user_minimised(self):
        typed = {self.start_another()[1]: kind for kind in ("DOCK", "DESKTOP")}
        _, minimized = self.start_another()
        _, other = self.start_another()
        program, own = self.start_another()
        xdotool("windowminimize", minimized)
        wait_for("the window to be minimised", lambda: is_minimized(minimized))
        for window, kind in typed.items():
            subprocess.run(["xprop", "-id", window, "-f", "_NET_WM_WINDOW_TYPE", "32a", "-set",
                            "_NET_WM_WINDOW_TYPE", f"_NET_WM_WINDOW_TYPE_{kind}"], check=True)
        key("ctrl+alt+h")
        # Of the windows to be minimised, `other` is the last in the window manager's list, so it is the last
        # that the program asked the window manager to minimise.
        wait_for("the other window to be minimised", lambda: is_minimized(other))
        self.assertFalse(any(map(is_minimized, typed)))
        program.choose("Daily Steps", "Show All")
        wait_for("the other window to be restored", lambda: not is_minimized(other))
        wait_for("the program's own window in front", lambda: front_window() == own)
        self.assertTrue(is_minimized(minimized))

    def test_show_all_does_not_restore_a_window_that_was_restored_and_minimised_again(self):
        _, restored = self.start_another()
        _, other = self.start_another()
        program, own = self.start_another()
        key("ctrl+alt+h")
        self.wait_for_minimized((restored, other))
        xdotool("windowmap", restored)
        wait_for("the window to be restored", lambda: not is_minimized(restored))
        xdotool("windowminimize", restored)
        self.wait_for_minimized((restored,))
        self.restore(program, MAIN, own)
        program.choose("Daily Steps", "Show All")
        wait_for("the other window to be restored", lambda: not is_minimized(other))
        # Show All goes through the windows in the order in which Hide Others minimised them, and `restored`
        # comes before `other`.
        self.assertTrue(is_minimized(restored))

    def test_hide_others_works_whichever_window_is_in_front(self):
        program, windows = self.start_with_all_windows()
        _, other = self.start_another()
        for title, window in windows.items():
            self.restore(program, title, window)
            key("ctrl+alt+h")
            wait_for("the other window to be minimised", lambda: is_minimized(other))
            self.assertFalse(any(map(is_minimized, windows.values())))
            self.restore(program, MAIN, windows[MAIN])
            program.choose("Daily Steps", "Show All")
            wait_for("the other window to be restored", lambda: not is_minimized(other))
            wait_for("the program's own window in front", lambda: front_window() == windows[MAIN])

    def test_minimize_does_nothing_to_a_window_without_a_minimise_button(self):
        program, windows = self.start_with_all_windows()
        # Keys are handled in order. When the second key has its effect, the first has been handled.
        self.restore(program, ABOUT, windows[ABOUT])
        key("ctrl+m", "Tab")
        wait_for("the focus on the link", lambda: any(
            has_state(node, Atspi.StateType.FOCUSED)
            for node in program.all(Atspi.Role.PUSH_BUTTON, "ambulet\\.example")))
        self.assertFalse(is_minimized(windows[ABOUT]))
        self.restore(program, GUIDE, windows[GUIDE])
        key("ctrl+m", "Return")
        program.label("2 of 5")
        self.assertFalse(is_minimized(windows[GUIDE]))

    def test_minimize_acts_on_the_front_window_only(self):
        program, windows = self.start_with_all_windows()
        program.activate(MAIN)
        key("ctrl+m")
        wait_for("the main window to be minimised", lambda: is_minimized(windows[MAIN]))
        self.assertFalse(is_minimized(windows[GUIDE]))
        self.assertFalse(is_minimized(windows[ABOUT]))

    def test_zoom_maximises_the_window_and_restores_its_size(self):
        self.remember("")
        program = self.start()
        program.wait_until_in_front()
        window = program.window(MAIN)
        before = program.frame(MAIN)
        program.choose("Window", "Zoom")
        wait_for("the window to be maximised", lambda: "MAXIMIZED_VERT" in window_property(
            window, "_NET_WM_STATE"))
        program.choose("Window", "Zoom")
        wait_for("the old size", lambda: program.frame(MAIN) == before)

    def test_the_window_menu_lists_the_open_windows_and_raises_the_chosen_one(self):
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
        close(front_window())
        wait_for("the guide to close", lambda: windows[GUIDE] not in windows_named(GUIDE))
        program.activate(MAIN)
        self.assertEqual(listed(), [(ABOUT, False), (MAIN, True)])

    def test_bring_all_to_front_raises_all_windows_except_minimised_ones(self):
        program, windows = self.start_with_all_windows()
        key("ctrl+h")
        self.wait_for_minimized(windows.values())
        self.restore(program, GUIDE, windows[GUIDE])
        _, other = self.start_another()

        def stacking():
            told = window_property(xdotool("search", "--maxdepth", 0, "--class", "").split()[0],
                                   "_NET_CLIENT_LIST_STACKING")
            listed = [str(int(window, 16)) for window in told.split("#")[-1].split(",")]
            return [window for window in listed if not is_minimized(window)]

        self.restore(program, MAIN, windows[MAIN])
        wait_for("the other window to be between",
                 lambda: stacking() == [windows[GUIDE], other, windows[MAIN]])
        program.choose("Window", "Bring All to Front")
        wait_for("the other window to be below",
                 lambda: stacking() == [other, windows[GUIDE], windows[MAIN]])
        self.assertTrue(is_minimized(windows[ABOUT]))

    def close_all_but(self, program, windows, title):
        for other in windows.keys() - {title}:
            program.activate(other)
            close(front_window())
            wait_for(f"{other} to close", lambda: windows[other] not in windows_named(other))
        program.activate(title)

    def test_every_item_can_be_reached_from_each_window_when_it_is_the_only_one(self):
        always = {"Daily Steps": ["About Daily Steps", "Services", "Hide Daily Steps", "Hide Others",
                                  "Show All", "Quit Daily Steps"],
                  "Window": ["Minimize", "Zoom", "Bring All to Front"],
                  "Help": ["Getting Started…"]}
        for title in (MAIN, GUIDE, ABOUT):
            with self.subTest(title):
                program, windows = self.start_with_all_windows()
                self.close_all_but(program, windows, title)
                for menu, items in always.items():
                    shown = [node.get_name() for node in program.open_menu(menu)
                             if node.get_role() in (Atspi.Role.MENU_ITEM,
                                                    Atspi.Role.CHECK_MENU_ITEM)]
                    listed = [title] if menu == "Window" else []
                    self.assertEqual(shown, items + listed)
                    self.picture(f"only-{title.split()[0]}-{menu.split()[0]}.png")
                    key("Escape", "Escape")
                program.choose("Help", "Getting Started…")
                program.wait_until_in_front(GUIDE)
                program.choose("Daily Steps", "About Daily Steps")
                program.wait_until_in_front(ABOUT)
                program.choose("Daily Steps", "Quit Daily Steps")
                self.assertEqual(program.end(), 0)

    def test_access_keys_open_the_menus_and_choose_items_in_each_window(self):
        program, windows = self.start_with_all_windows()
        for title in windows:
            for keys, menu in (("alt+d", "Daily Steps"), ("alt+w", "Window"), ("alt+h", "Help"),
                               ("F10", "Daily Steps")):
                with self.subTest(title, keys=keys):
                    program.activate(title)
                    key(keys)
                    program.shown_items(program.menu(menu))
                    key("Escape", "Escape")
            program.activate(title)
            key("alt+d", "a")
            program.wait_until_in_front(ABOUT)
            program.activate(title)
            key("alt+h", "g")
            program.wait_until_in_front(GUIDE)

    def test_escape_closes_only_the_guide_and_about_but_ctrl_w_closes_any_front_window(self):
        program, windows = self.start_with_all_windows()
        key("Escape")
        wait_for("About to close", lambda: not windows_named(ABOUT))
        program.activate(GUIDE)
        key("Escape")
        wait_for("the guide to close", lambda: not windows_named(GUIDE))
        program.wait_until_in_front()
        key("Escape", "alt+d", "a")
        program.wait_until_in_front(ABOUT)
        key("ctrl+w")
        wait_for("About to close", lambda: not windows_named(ABOUT))
        program.wait_until_in_front()
        self.assertIsNone(program.process.poll())
        key("ctrl+w")
        self.assertEqual(program.end(), 0)

    def test_show_all_does_not_restore_windows_that_the_user_minimised(self):
        program, windows = self.start_with_all_windows()
        program.activate(MAIN)
        key("ctrl+m")
        wait_for("the main window to be minimised", lambda: is_minimized(windows[MAIN]))
        program.activate(ABOUT)
        key("ctrl+h")
        self.wait_for_minimized(windows.values())
        self.restore(program, ABOUT, windows[ABOUT])
        program.choose("Daily Steps", "Show All")
        wait_for("the guide to be restored", lambda: not is_minimized(windows[GUIDE]))
        self.assertTrue(is_minimized(windows[MAIN]))

    def test_quit_ends_the_program_whichever_window_is_the_only_one_left(self):
        for title in (MAIN, GUIDE, ABOUT):
            with self.subTest(title):
                program, windows = self.start_with_all_windows()
                self.close_all_but(program, windows, title)
                key("ctrl+q")
                self.assertEqual(program.end(), 0)


if __name__ == "__main__":
    unittest.main()
