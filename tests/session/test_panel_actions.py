"""What can be done to entries in the panel, with real keys and clicks: combine, edit, create, pin, assign, delete."""

import unittest

from harness import Desktop, Larkspool, Store, programs, run_tests, wait_until
from harness.larkspool import MENU_BUTTON, SEEDED


class Actions(unittest.TestCase):
    def setUp(self):
        self.desktop = self.enterContext(Desktop())
        self.store = Store(self.desktop.store_file)
        self.program = self.enterContext(Larkspool(self.desktop))
        self.keyboard = self.desktop.keyboard

    def copy(self, *texts):
        for text in texts:
            programs.xclip_copy(self.desktop, text.encode())
            self.store.wait_for(text)

    def wait_for_rows(self, *rows):
        wait_until(lambda: self.program.rows() == list(rows), f"rows {rows}")

    def open_menu_of_first_row(self):
        self.desktop.run("xdotool", "mousemove", "960", "370", "click", "3")

    def test_two_selected_entries_are_combined_and_pasted_and_kept(self):
        self.copy("one", "two")
        terminal = programs.Terminal(self.desktop)
        self.program.open_panel()
        self.keyboard.press("shift+Down", "Return")
        # From "New Line" to "Space", the next template.
        self.keyboard.press("Right", "Return")
        self.program.wait_until_hidden()
        wait_until(lambda: terminal.typed() == b"two one", "pasted")
        self.store.wait_for("two one")

    def test_escape_closes_the_combine_panel_and_pastes_nothing(self):
        self.copy("one", "two")
        terminal = programs.Terminal(self.desktop)
        window = self.program.open_panel()
        self.keyboard.press("shift+Down", "Return", "Escape")
        self.assertEqual(self.program.panel(), window)
        self.keyboard.press("Up", "Return")
        self.program.wait_until_hidden()
        wait_until(lambda: terminal.typed() == b"two", "the highlighted entry alone")

    def test_an_edit_is_stored(self):
        self.copy("lark")
        self.program.open_panel()
        self.keyboard.press("ctrl+e")
        self.keyboard.type(" and wren")
        self.keyboard.press("shift+Return")
        self.keyboard.type("owl")
        self.keyboard.press("Return")
        self.store.wait_for("lark and wren\nowl")
        self.assertEqual(len(self.store.items()), 1)

    def test_a_cancelled_edit_changes_nothing(self):
        self.copy("lark")
        window = self.program.open_panel()
        self.keyboard.press("ctrl+e")
        self.keyboard.type(" and wren")
        self.keyboard.press("Escape")
        self.assertEqual(self.program.panel(), window)
        self.keyboard.press("Escape")
        self.program.wait_until_hidden()
        self.assertEqual(self.store.contents(), ["lark"])

    def test_a_new_address_is_stored_as_one(self):
        self.program.open_panel()
        self.keyboard.press("ctrl+n")
        self.keyboard.type("https://example.org/new")
        self.keyboard.press("Return")
        self.assertEqual(self.store.wait_for("https://example.org/new")["type"], "url")
        self.wait_for_rows("https://example.org/new")

    def test_the_menu_of_a_row_pins_and_deletes(self):
        self.copy("one")
        self.program.open_panel()
        self.wait_for_rows("one")
        self.open_menu_of_first_row()
        self.keyboard.press("Down", "Down", "Return")
        wait_until(lambda: self.store.items()[0]["isPinned"] == 1, "pinned")
        self.open_menu_of_first_row()
        self.keyboard.press("Down", "Down", "Down", "Down", "Return")
        wait_until(lambda: not self.store.items(), "deleted")

    def test_the_menu_of_a_row_assigns_a_category(self):
        self.copy("one")
        self.program.open_panel()
        self.wait_for_rows("one")
        self.open_menu_of_first_row()
        self.keyboard.press("Down", "Down", "Down", "Right", "Down", "Down", "Down", "Return")
        wait_until(lambda: self.store.items()[0]["categoryId"] is not None, "assigned")

    def test_quit_in_the_menu_ends_the_program_and_keeps_the_entries(self):
        self.copy("one")
        panel = self.program.open_panel()
        self.keyboard.click(panel, *MENU_BUTTON)
        self.keyboard.press("Down", "Down", "Down", "Return")
        self.assertEqual(self.program.process.wait(10), 0)
        self.program.stderr.finish()
        self.assertEqual(self.program.stdout.finish(), SEEDED)
        self.assertEqual(self.program.unexpected_lines(), [])
        self.assertEqual(self.store.contents(), ["one"])

    def test_the_wheel_moves_the_highlight(self):
        self.copy("one", "two", "three")
        terminal = programs.Terminal(self.desktop)
        self.program.open_panel()
        self.desktop.run("xdotool", "mousemove", "960", "600", "click", "5", "click", "5", "click", "4")
        self.keyboard.press("Return")
        self.program.wait_until_hidden()
        wait_until(lambda: terminal.typed() == b"two", "the second row")


if __name__ == "__main__":
    run_tests()
