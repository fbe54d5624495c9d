"""The road of a paste under window managers of every kind, and under none."""

import unittest

from harness import Desktop, Larkspool, Store, need, programs, run_tests, stays, wait_until
from harness.preferences import LarkspoolWithHotKey, preferences_file

CENTRED = (620, 220, 680, 640)


class OnADesktop:
    window_manager = None
    frame_size = 0  # what the window manager reckons with for a frame, even if it draws none

    @classmethod
    def setUpClass(cls):
        cls.desktop = cls.enterClassContext(Desktop(window_manager=cls.window_manager))
        cls.keyboard = cls.desktop.keyboard
        cls.store = Store(cls.desktop.store_file)

    def start(self):
        self.program = self.enterContext(Larkspool(self.desktop))

    def copy(self, text):
        programs.xclip_copy(self.desktop, text.encode())
        # Not just anywhere: an earlier test may have copied the same.
        wait_until(lambda: self.store.contents()[:1] == [text], "the newest entry")

    def terminal(self):
        terminal = programs.Terminal(self.desktop, f"{self._testMethodName}.txt")
        self.addCleanup(terminal.close)
        return terminal

    def choose(self, key="Return"):
        self.keyboard.hit(key)
        self.program.wait_until_hidden()

    def assert_pasted(self, terminal, text):
        wait_until(lambda: terminal.typed() == text.encode(), "pasted")
        self.keyboard.wait_for_focus(terminal.window)

    def is_centred(self, panel):
        x, y, *size = self.keyboard.geometry(panel)
        distance = max(abs(x - CENTRED[0]), abs(y - CENTRED[1]))
        return tuple(size) == CENTRED[2:] and distance <= self.frame_size

    def assert_centred(self, panel):
        wait_until(lambda: self.is_centred(panel), "680 x 640 in the middle")

    # What holds everywhere

    def test_paste_after_paste_lands_and_the_keyboard_goes_back(self):
        self.start()
        self.copy("pasted;")
        terminal = self.terminal()
        for count in range(1, 4):
            self.assert_centred(self.program.open_panel())
            self.choose()
            self.assert_pasted(terminal, "pasted;" * count)

    def test_the_panel_takes_the_keyboard_from_a_program_that_was_just_typed_in(self):
        # Window managers compare when their windows were last used, and refuse one that looks older. A hot key
        # without modifiers is the hardest: the program hears nothing at all before it.
        self.program = self.enterContext(LarkspoolWithHotKey(self.desktop, "F12"))
        self.addCleanup(preferences_file(self.desktop).unlink)
        self.copy("pasted;")
        editor = programs.Editor(self.desktop, "mousepad")
        self.addCleanup(editor.close)
        for count in range(1, 3):
            editor.type("typed;")
            self.program.open_panel()
            self.choose()
            wait_until(lambda: editor.saved() == b"typed;pasted;" * count, "pasted", every=0.2)

    def test_escape_hides_the_panel_and_the_keyboard_goes_back(self):
        self.start()
        self.copy("not wanted")
        terminal = self.terminal()
        self.program.open_panel()
        self.choose("Escape")
        if self.window_manager:
            self.keyboard.wait_for_focus(terminal.window)
        self.assertTrue(stays(lambda: terminal.typed() == b"", 0.5), "nothing is pasted")


class WithAWindowManager(OnADesktop):
    def test_a_click_on_another_window_hides_the_panel(self):
        self.start()
        terminal = self.terminal()
        # Some window managers put a window in the middle, where the panel will be.
        self.keyboard.move(terminal.window, 10, 40)
        self.program.open_panel()
        self.keyboard.click(terminal.window, 30, 30)
        self.program.wait_until_hidden()
        self.keyboard.wait_for_focus(terminal.window)

    def test_a_window_that_went_to_another_workspace_is_pasted_into(self):
        self.start()
        self.copy("pasted;")
        terminal = self.terminal()
        self.program.open_panel()
        self.keyboard.send_to_workspace(terminal.window, 2)
        self.choose()
        self.assert_pasted(terminal, "pasted;")
        self.assertEqual(self.desktop.probe.workspace_of(terminal.window), self.desktop.probe.workspace())


class WithMinimisedWindows(WithAWindowManager):
    def test_a_window_that_was_minimised_is_brought_back_and_pasted_into(self):
        self.start()
        self.copy("pasted;")
        terminal = self.terminal()
        self.program.open_panel()
        self.keyboard.minimise(terminal.window)
        self.choose()
        self.assert_pasted(terminal, "pasted;")


class Openbox(WithMinimisedWindows, unittest.TestCase):
    window_manager = "openbox"


class Xfwm4(WithMinimisedWindows, unittest.TestCase):
    window_manager = "xfwm4"

    @classmethod
    def setUpClass(cls):
        need("xfconf-query")
        super().setUpClass()
        # Off by default.
        setting = ["-p", "/general/prevent_focus_stealing", "-n", "-t", "bool", "-s", "true"]
        cls.desktop.run("xfconf-query", "-c", "xfwm4", *setting)


class I3(WithAWindowManager, unittest.TestCase):
    window_manager = "i3"
    frame_size = 20


class NoWindowManager(OnADesktop, unittest.TestCase):
    window_manager = None


if __name__ == "__main__":
    run_tests()
