"""Choosing a file, reloading it at the next start, quitting during a load."""

import subprocess
import time
import unittest

from driver import BIN, GUIDE, Atspi, ProgramTest, has_state, key, type_text


def days_of(file):
    printed = subprocess.run([BIN / "stepdays", file], check=True, capture_output=True, text=True)
    return len(printed.stdout.splitlines())


class Loading(ProgramTest):
    def test_a_file_chosen_at_the_first_start_is_loaded_again_at_the_next(self):
        file = self.export("2M")
        loaded = f"Loaded {days_of(file)} days of data\\."

        program = self.start()
        program.label("No file selected\\.")
        program.wait_until_in_front(GUIDE)
        key("alt+F4")
        program.wait_until_in_front()
        program.label("From: —")
        program.click(program.find(Atspi.Role.PUSH_BUTTON, "Choose…"))
        program.find(Atspi.Role.PUSH_BUTTON, "Open")
        type_text(str(file))
        self.picture("choosing.png")
        key("Return")
        program.label(loaded)
        program.label("From: [A-Z][a-z]{2} [0-9]+, [0-9]{4}")
        path = program.find(Atspi.Role.TEXT, "Export file")
        self.assertEqual(Atspi.Text.get_text(path, 0, -1), str(file))
        # Also waits until the dialog's completion list is closed.
        self.assertFalse([node for node in program.all(Atspi.Role.LIST)
                          if has_state(node, Atspi.StateType.SHOWING)])
        self.picture("loaded.png")
        program.wait_until_in_front()
        key("alt+F4")
        self.assertEqual(program.end(), 0)

        again = self.start()
        again.label(loaded)
        again.wait_until_in_front()
        key("alt+F4")
        self.assertEqual(again.end(), 0)
        self.assertEqual([entry.name for entry in self.configuration.iterdir()],
                         [self.settings_file.name])

    def slow_export(self):
        """An export that takes seconds to read: it is large and not in UTF-8."""
        file = self.folder / "slow.xml"
        record = (b'<Record type="HKQuantityTypeIdentifierStepCount" value="1" '
                  b'startDate="2025-03-02 12:00:00 +0000"/>\n')
        with file.open("wb") as out:
            out.write(b'<?xml version="1.0" encoding="ISO-8859-1"?>\n<HealthData>\n')
            for _ in range(200):
                out.write(record * 50000)
            out.write(b"</HealthData>\n")
        return file

    def test_quitting_during_a_load_ends_the_process_at_once(self):
        self.remember(self.slow_export())
        for quitting in ("alt+F4", "ctrl+q"):
            with self.subTest(quitting):
                program = self.start()
                program.wait_until_in_front()
                program.label("Parsing XML…")
                before = time.monotonic()
                key(quitting)
                self.assertEqual(program.end(), 0)
                self.assertLess(time.monotonic() - before, 0.5)


if __name__ == "__main__":
    unittest.main()
