"""The windows on a display of 1024 x 600. The main window is higher than that by default."""

import unittest

from driver import (ABOUT, GUIDE, MAIN, ProgramTest, close, front_window, wait_for,
                    window_property, xdotool)


class SmallScreen(ProgramTest):
    def assert_on_screen(self, program, title):
        width, height = map(int, xdotool("getdisplaygeometry").split())

        def on_screen():
            left, top, frame_width, frame_height = program.frame(title)
            return (left >= 0 and top >= 0 and left + frame_width <= width
                    and top + frame_height <= height)

        wait_for(f"{title} on the screen", on_screen)

    def test_every_window_opens_with_its_whole_frame_on_the_screen(self):
        program = self.start()
        program.wait_until_in_front(GUIDE)
        self.assert_on_screen(program, GUIDE)
        self.assert_on_screen(program, MAIN)
        self.assertEqual(program.frame(MAIN)[3], 600)
        program.activate(MAIN)
        self.picture("small-screen.png")
        program.choose("Daily Steps", "About Daily Steps")
        program.wait_until_in_front(ABOUT)
        self.assert_on_screen(program, ABOUT)

    def test_a_size_set_by_the_user_is_restored_at_the_next_start(self):
        self.remember("")
        program = self.start()
        program.wait_until_in_front()
        self.assert_on_screen(program, MAIN)
        xdotool("windowsize", program.window(MAIN), 700, 450)
        wait_for("the size", lambda: program.extents(program.windows()[0])[2:] == (700, 450))
        close(front_window())
        self.assertEqual(program.end(), 0)
        again = self.start()
        again.wait_until_in_front()
        wait_for("the size", lambda: again.extents(again.windows()[0])[2:] == (700, 450))

    def test_a_maximised_window_is_maximised_at_the_next_start(self):
        self.remember("")
        for start in ("first", "second"):
            program = self.start()
            program.wait_until_in_front()
            if start == "first":
                program.choose("Window", "Zoom")
            wait_for("the window to be maximised", lambda: "MAXIMIZED_VERT" in window_property(
                program.window(MAIN), "_NET_WM_STATE"))
            wait_for("the size", lambda: program.frame(MAIN) == (0, 0, 1024, 600))
            close(front_window())
            self.assertEqual(program.end(), 0)


if __name__ == "__main__":
    unittest.main()
