"""The main job on KWin, which allows its own protocols to programs that their desktop file allows them."""

import unittest

from harness import programs, run_tests, wait_until
from harness.application import Application
from harness.kwin import KWin
from harness.larkspool import HOT_KEY
from harness.wayland_cases import CaptureCases, EditorPasteCases, PanelCases, PanelDesk, PasteCases, SessionCases


class Capture(CaptureCases, unittest.TestCase):
    desktop = KWin


class Session(SessionCases, unittest.TestCase):
    desktop = KWin


class KWinDesk(PanelDesk):
    def terminal(self, name="typed.txt"):
        return programs.VteTerminal(self.desk, name)

    def open_panel(self):
        with Application(self.desk) as application:
            application.activate()
        window = wait_until(self.program.panel, "the panel is shown")
        self.desk.keyboard.wait_for_focus(window)
        return window


class Panel(KWinDesk, PanelCases, PasteCases, unittest.TestCase):
    desktop = KWin


class WithoutDesktopFile(KWinDesk, EditorPasteCases, unittest.TestCase):
    """Nothing allows the program the restricted protocols: the portal presses the keys, and nobody tells which program
    is in front, so that a terminal is not known for one."""

    may_print = (r"^\[Larkspool\] No paste keys: ", r"^\[Larkspool\] Accessibility permission not granted ")

    def desktop(self):
        return KWin(allows="")


class HotKey(KWinDesk, unittest.TestCase):
    desktop = KWin

    def open_by_key(self):
        return self.program.open_panel()

    def test_the_hot_key_opens_the_panel_and_hides_it_again(self):
        for _ in range(3):
            self.open_by_key()
            self.desk.keyboard.press(HOT_KEY)
            self.program.wait_until_hidden()

    def test_a_text_is_chosen_with_nothing_but_keys(self):
        self.copy("chosen", "newer")
        terminal = self.terminal()
        self.open_by_key()
        self.desk.keyboard.press("Down", "Return")
        self.program.wait_until_hidden()
        self.assert_typed(terminal, b"chosen")

    def test_the_hot_key_is_there_again_after_a_new_start(self):
        self.open_by_key()
        self.program.stop()
        self.start()
        self.open_by_key()


if __name__ == "__main__":
    run_tests()
