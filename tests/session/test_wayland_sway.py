"""The main job on sway, whose user binds a key of the desktop's own to the history."""

import unittest

from harness import programs, run_tests, wait_until
from harness.larkspool import HOT_KEY
from harness.sway import Sway
from harness.wayland_cases import TEXT, CaptureCases, PanelCases, PasteCases, SessionCases
from harness.wayland_programs import Foot, xclip_copy

# It offers programs no hot keys.
MAY_PRINT = (r"^\[Larkspool\] No hot key: ", r"^Failed to register hotkey: ")


class Capture(CaptureCases, unittest.TestCase):
    may_print = MAY_PRINT
    desktop = Sway


class Session(SessionCases, unittest.TestCase):
    may_print = MAY_PRINT
    desktop = Sway


class Panel(PanelCases, PasteCases, unittest.TestCase):
    may_print = MAY_PRINT
    desktop = Sway

    def terminal(self, name="typed.txt"):
        return Foot(self.desk, name)

    def is_panel_there(self):
        """Whether sway has the panel's window, to be seen or not."""
        return "org.larkspool.Larkspool" in self.desk.message("-t", "get_tree").decode()

    def test_a_second_press_of_the_key_hides_the_panel(self):
        for _ in range(3):
            self.choose(HOT_KEY)

    def test_the_panel_waits_behind_a_window_that_fills_the_screen_and_takes_no_keys_there(self):
        """sway shows nothing in front of such a window but what belongs to it."""
        self.copy(TEXT)
        terminal = self.terminal()
        self.desk.message(f"[con_id={terminal.window}] fullscreen enable")
        self.desk.keyboard.press(HOT_KEY)
        wait_until(self.is_panel_there, "it is there")
        self.desk.keyboard.type("still mine")
        self.assert_typed(terminal, b"still mine")
        self.desk.keyboard.press(HOT_KEY)
        wait_until(lambda: not self.is_panel_there(), "it is hidden")
        self.desk.message(f"[con_id={terminal.window}] fullscreen disable")
        self.choose("Return")
        self.assert_typed(terminal, b"still mine" + TEXT.encode())


class WithXwayland(PasteCases, unittest.TestCase):
    """As most people have it: an X server is there as well, and the program does not take it for the desktop."""

    may_print = MAY_PRINT

    def desktop(self):
        return Sway(xwayland=True)

    def terminal(self, name="typed.txt"):
        return Foot(self.desk, name)

    def test_a_text_copied_in_an_x11_program_stands_in_a_wayland_terminal(self):
        source = programs.Terminal(self.desk, "in front.txt")
        xclip_copy(self.desk, TEXT.encode())
        self.store.wait_for(TEXT)
        source.close()
        terminal = self.terminal()
        self.choose("Return")
        self.assert_typed(terminal, TEXT.encode())

    def test_a_chosen_text_stands_in_an_x11_terminal(self):
        self.copy(TEXT)
        terminal = programs.Terminal(self.desk)
        self.choose("Return")
        self.assert_typed(terminal, TEXT.encode())


if __name__ == "__main__":
    run_tests()
