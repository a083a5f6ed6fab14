"""The main window: stride editor, selection, clicks that clear it, keyboard, remembered frame and
accessibility."""

import unittest

from gi.repository import GLib

from driver import (MAIN, Atspi, ProgramTest, close, front_window, has_state, key, type_text,
                    wait_for, xdotool)

State = Atspi.StateType

EXPORT = """<?xml version="1.0" encoding="UTF-8"?>
<HealthData>
 <Record type="HKQuantityTypeIdentifierStepCount" startDate="2025-03-03 12:00:00 +0000" value="5280"/>
 <Record type="HKQuantityTypeIdentifierStepCount" startDate="2025-03-02 12:00:00 +0000" value="10560"/>
 <Record type="HKQuantityTypeIdentifierStepCount" startDate="2025-03-01 12:00:00 +0000" value="2640"/>
 <Record type="HKQuantityTypeIdentifierStepCount" startDate="2025-02-28 12:00:00 +0000" value="5280"/>
</HealthData>
"""
# The rows of the table.
MARCH, MARCH_3, MARCH_2, MARCH_1, FEBRUARY, FEBRUARY_28 = range(6)


class WindowTest(ProgramTest):
    def setUp(self):
        super().setUp()
        file = self.folder / "export.xml"
        file.write_text(EXPORT)
        self.remember(file)
        self.program = self.start()
        self.program.label("Loaded 4 days of data\\.")
        self.program.wait_until_in_front()
        self.table = self.program.find(Atspi.Role.TABLE, "Days")

    def cell(self, row, column=0):
        return self.table.get_accessible_at(row, column)

    def press(self, row, modifier=None):
        self.program.click(self.cell(row), modifier=modifier)

    def expect_days(self, count):
        self.program.label(f"Days: {count}")

    def miles(self):
        return self.program.find(Atspi.Role.PUSH_BUTTON, "Miles: .*")

    def editors(self):
        return [node for node in self.program.all(Atspi.Role.TEXT, "Stride length in feet")
                if has_state(node, State.SHOWING)]

    def focused(self):
        return next((node for node in self.program.all() if has_state(node, State.FOCUSED)
                     and node.get_role() not in (Atspi.Role.TABLE_CELL, Atspi.Role.FRAME)), None)

    def expect_focus(self, role, name):
        wait_for(f"the focus on {name}", lambda: self.focused() is not None
                 and (self.focused().get_role(), self.focused().get_name()) == (role, name))


class Stride(WindowTest):
    def test_a_click_opens_the_editor_and_the_return_key_stores_the_stride(self):
        self.program.click(self.miles())
        editor = wait_for("the editor", self.editors)[0]
        self.assertEqual(Atspi.Text.get_text(editor, 0, -1), "2.50")
        self.picture("stride-editor.png")
        type_text("3")
        key("Return")
        self.program.find(Atspi.Role.PUSH_BUTTON, "Miles: 13\\.50 @ 3\\.00 ft/step")
        self.assertEqual(self.cell(MARCH, 3).get_name(), "3.50")
        wait_for("the editor to close", lambda: not self.editors())
        wait_for("the stored stride",
                 lambda: "strideFootLength=3" in self.settings_file.read_text())

    def test_escape_closes_the_editor_and_stores_nothing(self):
        self.program.click(self.miles())
        wait_for("the editor", self.editors)
        type_text("9")
        key("Escape")
        wait_for("the editor to close", lambda: not self.editors())
        self.assertEqual(self.miles().get_name(), "Miles: 11.25 @ 2.50 ft/step")
        self.assertNotIn("strideFootLength", self.settings_file.read_text())

    def test_a_click_on_a_row_stores_the_stride_and_selects_the_row(self):
        self.program.click(self.miles())
        wait_for("the editor", self.editors)
        type_text("2")
        self.press(MARCH_2)
        self.program.find(Atspi.Role.PUSH_BUTTON, "Miles: 4\\.00 @ 2\\.00 ft/step")
        self.expect_days(1)

    def test_the_editor_stays_open_while_the_window_is_minimised(self):
        self.program.click(self.miles())
        wait_for("the editor", self.editors)
        type_text("9")
        before = xdotool("getactivewindow").strip()
        xdotool("windowminimize", before)
        wait_for("the window to be inactive", lambda: not has_state(
            self.program.find(Atspi.Role.FRAME), State.ACTIVE))
        xdotool("windowactivate", "--sync", before)
        self.program.wait_until_in_front()
        editor = wait_for("the editor", self.editors)[0]
        self.assertEqual(Atspi.Text.get_text(editor, 0, -1), "9")
        self.assertNotIn("strideFootLength", self.settings_file.read_text())


class Selection(WindowTest):
    def test_a_control_click_adds_a_day_and_a_shift_click_selects_a_range(self):
        self.press(MARCH_3)
        self.expect_days(1)
        self.program.label("From: Mar 3, 2025")
        self.press(FEBRUARY_28, modifier="ctrl")
        self.expect_days(2)
        self.program.label("From: Feb 28, 2025")
        self.press(MARCH_3)
        self.press(FEBRUARY_28, modifier="shift")
        self.expect_days(4)
        self.picture("selection.png")

    def test_a_month_cannot_be_selected(self):
        self.press(MARCH_2)
        self.expect_days(1)
        self.press(FEBRUARY)
        self.press(MARCH, modifier="ctrl")
        self.program.label("To: Mar 2, 2025")
        self.expect_days(1)

    def test_clicks_outside_the_controls_clear_the_selection(self):
        window = self.program.find(Atspi.Role.FRAME).get_extents(Atspi.CoordType.SCREEN)
        table = self.table.get_extents(Atspi.CoordType.SCREEN)
        for x, y in ((table.x + 100, table.y - 1),  # the separator, which is one pixel high
                     (table.x + 4, table.y - 10),   # the empty panel
                     (window.x + window.width - 3, window.y + window.height - 3)):
            self.press(MARCH_2)
            self.expect_days(1)
            self.program.click_at(x, y)
            self.expect_days(4)

    def test_clicks_on_controls_keep_the_selection(self):
        self.press(MARCH_2)
        self.expect_days(1)
        for node in (self.program.label("Steps: .*"), self.program.label("Loaded .*"),
                     self.program.find(Atspi.Role.TEXT, "Export file")):
            self.program.click(node)
        self.press(MARCH_3, modifier="ctrl")
        self.expect_days(2)

    def test_copied_rows_can_be_pasted(self):
        self.press(MARCH_3)
        self.expect_days(1)
        key("ctrl+c")
        self.program.click(self.miles())
        editor = wait_for("the editor", self.editors)[0]
        key("ctrl+v")
        pasted = wait_for("the pasted text", lambda: next(
            (text for text in [Atspi.Text.get_text(editor, 0, -1)] if text != "2.50"), None))
        self.assertEqual(pasted.split(), ["Date", "Steps", "Daily", "Steps", "Daily", "Miles",
                                          "Mar", "3,", "2025", "5,280"])


class Keyboard(WindowTest):
    def test_all_controls_can_be_used_by_keyboard(self):
        wait_for("a focus", self.focused)
        while self.focused().get_name() != "Choose…":
            key("Tab")
        key("Tab")
        self.expect_focus(Atspi.Role.TEXT, "Export file")
        key("Tab")
        self.expect_focus(Atspi.Role.PUSH_BUTTON, "Miles: 11.25 @ 2.50 ft/step")
        self.picture("focus-miles.png")
        key("space")
        wait_for("the editor", self.editors)
        type_text("5")
        key("Return")
        self.expect_focus(Atspi.Role.PUSH_BUTTON, "Miles: 22.50 @ 5.00 ft/step")
        key("Tab")
        wait_for("the table", lambda: has_state(self.table, State.FOCUSED)
                 or self.focused() is not None and self.focused().get_name() == "Days")
        self.picture("focus-table.png")
        key("Home")
        self.expect_days(1)
        self.program.label("To: Mar 3, 2025")
        key("shift+End")
        self.expect_days(4)
        self.program.label("From: Feb 28, 2025")
        key("Escape")
        key("Home")
        self.expect_days(1)
        key("Escape")
        self.expect_days(4)
        key("End")
        self.expect_days(1)
        key("ctrl+a")
        self.expect_days(4)


class Frame(WindowTest):
    def expect_frame_at_next_start(self, frame):
        self.program = self.start()
        self.program.wait_until_in_front()
        self.assertEqual(self.program.frame(MAIN), frame)

    def test_the_frame_is_restored_at_the_next_start(self):
        before = self.program.frame(MAIN)
        window = self.program.window(MAIN)
        xdotool("windowsize", "--sync", window, before[2] + 90, before[3] + 40)
        xdotool("windowmove", "--sync", window, 123, 77)

        def moved():
            frame = self.program.frame(MAIN)
            return frame if frame[0] != before[0] and frame[2] != before[2] else None

        frame = wait_for("the new frame", moved)
        self.program.wait_until_in_front()
        close(front_window())
        self.assertEqual(self.program.end(), 0)
        self.expect_frame_at_next_start(frame)

    def test_a_second_copy_does_not_open_exactly_over_the_first(self):
        wait_for("the stored frame", lambda: "MainWindowFrame" in self.settings_file.read_text())
        first = self.program.extents(self.program.find(Atspi.Role.FRAME))
        second = self.start()
        second.wait_until_in_front()
        place = second.extents(second.find(Atspi.Role.FRAME))
        self.assertEqual((place[0] - first[0], place[1] - first[1]), (30, 30))
        self.assertEqual(place[2:], first[2:])


class Accessibility(WindowTest):
    def test_the_window_and_every_control_have_names(self):
        self.assertEqual(self.program.find(Atspi.Role.FRAME).get_name(), "Daily Steps — Ambulet")
        for role in (Atspi.Role.PUSH_BUTTON, Atspi.Role.TEXT, Atspi.Role.TABLE, Atspi.Role.LABEL):
            nodes = [node for node in self.program.all(role) if has_state(node, State.SHOWING)]
            self.assertTrue(nodes, role)
            for node in nodes:
                self.assertTrue(node.get_name(), role)

    def test_assistive_programs_see_the_miles_as_a_button_with_a_description_and_an_action(self):
        miles = self.miles()
        self.assertEqual(miles.get_description(), "Click to edit stride length")
        names = [Atspi.Action.get_action_name(miles, i)
                 for i in range(Atspi.Action.get_n_actions(miles))]
        self.assertIn("Press", names)
        Atspi.Action.do_action(miles, names.index("Press"))
        editor = wait_for("the editor", self.editors)[0]
        self.assertEqual(editor.get_name(), "Stride length in feet")
        self.assertTrue(has_state(editor, State.EDITABLE))
        self.assertEqual(Atspi.Text.get_text(editor, 0, -1), "2.50")

    def test_the_table_has_headers_and_days_that_can_be_selected(self):
        self.assertEqual([self.table.get_column_header(i).get_name() for i in range(4)],
                         ["Date", "Steps", "Daily Steps", "Daily Miles"])
        self.assertEqual(self.cell(MARCH).get_name(), "March 2025")
        self.assertFalse(has_state(self.cell(MARCH), State.SELECTABLE))
        self.assertEqual(self.cell(MARCH_3).get_name(), "Mar 3, 2025")
        self.assertTrue(has_state(self.cell(MARCH_3), State.SELECTABLE))
        self.press(MARCH_3)
        wait_for("the selected state", lambda: has_state(self.cell(MARCH_3), State.SELECTED))

    def test_assistive_programs_get_months_as_headings_and_rows_named_by_their_first_cell(self):
        self.assertEqual(self.cell(MARCH).get_description(), "Heading of the rows that follow")
        self.assertEqual(self.cell(MARCH_3).get_description(), "")
        self.assertEqual([self.table.get_row_header(row).get_name() for row in range(6)],
                         ["March 2025", "Mar 3, 2025", "Mar 2, 2025", "Mar 1, 2025",
                          "February 2025", "Feb 28, 2025"])


class Status(ProgramTest):
    def test_the_end_of_a_load_is_announced_and_the_indicator_has_a_name(self):
        """Screen readers speak notifications that appear, but no text that only changes."""
        announced = []

        def appeared(event):
            if event.source.get_role() == Atspi.Role.NOTIFICATION and event.detail1 == 1:
                announced.append(event.source.get_name())

        listener = Atspi.EventListener.new(appeared)
        listener.register("object:state-changed:showing")
        self.remember(self.export("20M"))
        program = self.start()
        program.label("Loaded [0-9]+ days of data\\.")
        program.find(Atspi.Role.PROGRESS_BAR, "Loading")
        wait_for("the announcement", lambda: (
            GLib.MainContext.default().iteration(False),
            any(name.startswith("Loaded ") for name in announced))[1])


if __name__ == "__main__":
    unittest.main()
