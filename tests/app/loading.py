"""Choosing a file, reloading it at the next start, quitting during a load."""

import subprocess
import unittest

from driver import BIN, GUIDE, Atspi, ProgramTest, close, front_window, has_state, key, type_text


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
        close(front_window())
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
        # The dialog's list of suggestions is closed, too.
        self.assertFalse([node for node in program.all(Atspi.Role.LIST)
                          if has_state(node, Atspi.StateType.SHOWING)])
        self.picture("loaded.png")
        program.wait_until_in_front()
        close(front_window())
        self.assertEqual(program.end(), 0)

        again = self.start()
        again.label(loaded)
        again.wait_until_in_front()
        close(front_window())
        self.assertEqual(again.end(), 0)
        self.assertEqual([entry.name for entry in self.configuration.iterdir()],
                         [self.settings_file.name])

    def test_quitting_does_not_wait_for_a_load(self):
        endless = self.remember_endless_load()
        for quitting in (lambda: close(front_window()), lambda: key("ctrl+q")):
            program = self.start(**endless)
            program.wait_until_in_front()
            program.label("Parsing XML…")
            quitting()
            self.assertEqual(program.end(), 0)


if __name__ == "__main__":
    unittest.main()
