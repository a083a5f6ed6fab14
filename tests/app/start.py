"""The start of the main window as a user sees it: first the complete window without rows, then the rows,
and nothing in between."""

import collections
import unittest

from dark import DARK, DARK_COLORS
from driver import MAIN, PICTURES, Program, ProgramTest, xdotool
from film import Film, save

# The window's lower left corner is left out, because the progress indicator moves there.
INDICATOR_WIDTH, INDICATOR_HEIGHT = 90, 30


def without_indicator(lines):
    kept = lines[:-INDICATOR_HEIGHT]
    return kept + [line[4 * INDICATOR_WIDTH:] for line in lines[-INDICATOR_HEIGHT:]]


def background(lines):
    """The colour of the panel's background: the most frequent one in the upper part of the window."""
    panel = b"".join(lines[30:150])
    return collections.Counter(panel[i:i + 4] for i in range(0, len(panel), 4)).most_common(1)[0][0]


class Start(ProgramTest):
    def film(self, name, file, **environment):
        """Films a start with `file` as the remembered export. Returns the number of different pictures of the
        window."""
        self.remember(file)
        xdotool("mousemove", 0, 0)  # the server draws the pointer into the picture
        with Film() as film:
            program = Program(self.configuration, **environment)
            self.addCleanup(program.kill)
            program.label("Loaded [0-9]+ days of data\\.")
            program.wait_until_in_front()
            place = program.extents(next(node for node in program.windows()
                                         if node.get_name() == MAIN))
        program.kill()
        # The first states show the empty display. It also shows through the window until the first paint,
        # because the window has no background in the X server.
        states = film.states(*place)
        display, last = background(states[0]), background(states[-1])
        # A picture may be taken while the server copies the window's first picture to the display, from top
        # to bottom. Such a picture still has the last line of the empty display.
        whole = [state for state in states if state[-1] != states[0][-1]]
        shown = [state for state in whole if background(state) != display]
        PICTURES.mkdir(parents=True, exist_ok=True)
        for number, state in enumerate(states):
            save(state, PICTURES / f"start-{name}-{number}.png")
        self.assertEqual({background(state) for state in shown}, {last}, "another background was shown")
        self.assertEqual(shown, states[-len(shown):], "the empty display was shown again")
        distinct = []
        for state in map(without_indicator, shown):
            if not distinct or state != distinct[-1]:
                distinct.append(state)
        self.assertLessEqual(len(distinct), 2, name)
        return len(distinct)

    def slow_export(self):
        """An export that takes so long to read that the window is first seen without rows. It is large, and
        not in UTF-8."""
        record = b'<Record type="HKQuantityTypeIdentifierStepCount" value="9876" startDate="2025-%02d-%02d 12:00:00 +0000"/>'
        days = b"".join(record % (month, day) for month in range(1, 13) for day in range(1, 29))
        file = self.folder / "slow.xml"
        file.write_bytes(b'<?xml version="1.0" encoding="ISO-8859-1"?>\n<HealthData>\n' + 400 * days
                         + b"</HealthData>\n")
        return file

    def film_all(self, theme, **environment):
        self.film(f"{theme}-short", self.export("100K", "short.xml"), **environment)
        self.film(f"{theme}-long", self.export("20M", "long.xml"), **environment)
        states = self.film(f"{theme}-slow", self.slow_export(), **environment)
        self.assertEqual(states, 2)

    def test_the_complete_window_appears_before_the_rows_on_a_light_desktop(self):
        self.film_all("light")

    def test_the_complete_window_appears_before_the_rows_on_a_dark_desktop(self):
        (self.configuration / "kdeglobals").write_text(DARK_COLORS)
        self.film_all("dark", **DARK)


if __name__ == "__main__":
    unittest.main()
