"""A hot key that is hit like mad, and preferences that say nothing sensible about it."""

import os
import pathlib
import time
import unittest

from harness import Desktop, Larkspool, Store, missing, need, programs, run_tests, stays, wait_until
from harness.preferences import LarkspoolWithHotKey, preferences_file

NOBODY = 65534
# Put before a command, it makes permissions count for root as for anybody.
RIGHTS = "-dac_override,-dac_read_search,-fowner,-chown"
AS_ANYBODY = ("setpriv", f"--bounding-set={RIGHTS}", f"--inh-caps={RIGHTS}")

PRESSES = 200
PRESSES_PER_SECOND = 20
# Qt says so when a window is shown again before the server has told that it is hidden.
SHOWN_AGAIN = r"^qt\.qpa\.xcb: internal error:  void QXcbWindow::setNetWmStateOnUnmappedWindow\(\) called on mapped"
# What a process may differ in between two looks at rest: a few pages more or less.
MEMORY_NOISE = 4 << 20

NONSENSE = {
    "no JSON": "{keyCode:",
    "no object": "[9,768]",
    "nothing": "",
    "texts": '{"keyCode":"9","modifiers":"768"}',
    "nulls": '{"keyCode":null,"modifiers":null}',
    "a modifier short": '{"keyCode":9}',
    "negative": '{"keyCode":-9,"modifiers":768}',
    "a fraction": '{"keyCode":9.5,"modifiers":768}',
    "more than 32 bits": '{"keyCode":9,"modifiers":4294967296}',
    "endless": '{"keyCode":1e999,"modifiers":768}',
}


class Hammered(unittest.TestCase):
    def setUp(self):
        self.desktop = self.enterContext(Desktop())
        self.program = self.enterContext(Larkspool(self.desktop, may_print=[SHOWN_AGAIN]))
        programs.xclip_copy(self.desktop, b"one row")
        Store(self.desktop.store_file).wait_for("one row")
        self.terminal = programs.Terminal(self.desktop)

    def hammer(self, count):
        """Hits the hot key so often, at a pace that a machine can keep up with."""
        beginning = time.monotonic()
        for number in range(count):
            due = beginning + number / PRESSES_PER_SECOND
            wait_until(lambda due=due: time.monotonic() >= due, "the next press is due", every=0.001)
            self.desktop.keyboard.hit("Super", "Shift", "v")

    def settle(self):
        """Waits until the panel is hidden and the terminal has the keyboard, whatever the last press did."""
        if not stays(lambda: self.program.panel() is None, 0.5):
            self.desktop.keyboard.wait_for_focus(self.program.panel())
            self.desktop.keyboard.hit("Super", "Shift", "v")
        self.program.wait_until_hidden()
        self.desktop.keyboard.wait_for_focus(self.terminal.window)

    def resources(self):
        descriptors = len(list(pathlib.Path(f"/proc/{self.program.pid}/fd").iterdir()))
        threads = len(list(pathlib.Path(f"/proc/{self.program.pid}/task").iterdir()))
        return {"windows": self.desktop.probe.window_count(), "descriptors": descriptors, "threads": threads}

    def test_it_leaves_a_panel_that_toggles_and_nothing_behind(self):
        self.hammer(20)
        self.settle()
        before, memory_before = self.resources(), self.program.memory("Anonymous")
        self.hammer(PRESSES)
        self.settle()
        self.program.open_panel()
        self.desktop.keyboard.hit("Super", "Shift", "v")
        self.program.wait_until_hidden()
        self.assertTrue(stays(lambda: self.program.panel() is None, 0.3), "one press, one change")
        wait_until(lambda: self.resources() == before, f"the same resources as before: {before}")
        self.assertLess(self.program.memory("Anonymous") - memory_before, MEMORY_NOISE)
        self.assertEqual(self.terminal.typed(), b"", "no key went astray")


class Preferences(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.desktop = cls.enterClassContext(Desktop())
        cls.file = preferences_file(cls.desktop)

    def assert_default_hot_key(self, wrapper=()):
        with Larkspool(self.desktop, wrapper) as program:
            program.open_panel()
            self.desktop.keyboard.hit("Escape")
            program.wait_until_hidden()

    def test_a_value_that_is_no_hot_key_is_passed_over(self):
        self.addCleanup(self.file.unlink)
        for what, value in NONSENSE.items():
            escaped = value.replace('"', '\\"')
            with self.subTest(what):
                self.file.write_text(f'[General]\nhotkeyCombo="{escaped}"\n')
                self.assert_default_hot_key()

    def test_a_file_of_something_else_is_passed_over(self):
        self.addCleanup(self.file.unlink)
        self.file.write_bytes(os.urandom(5000))
        self.assert_default_hot_key()

    def test_a_directory_in_its_place_is_passed_over(self):
        self.file.mkdir()
        self.addCleanup(self.file.rmdir)
        self.assert_default_hot_key()

    def test_a_file_without_permission_is_passed_over(self):
        if os.geteuid() != 0:
            missing("a file can only be given away by root")
        need("setpriv")
        self.addCleanup(self.file.unlink)
        self.file.write_text('[General]\nhotkeyCombo={"keyCode":111,"modifiers":0}\n')
        self.file.chmod(0)
        os.chown(self.file, NOBODY, NOBODY)
        self.assert_default_hot_key(AS_ANYBODY)

    def test_a_hot_key_of_its_own_is_taken(self):
        # The others could pass because the file is never read.
        self.addCleanup(self.file.unlink)
        with LarkspoolWithHotKey(self.desktop, "F12") as program:
            self.assertFalse(self.desktop.probe.is_grabbed("v", ["Super", "Shift"]))
            program.open_panel()


if __name__ == "__main__":
    run_tests()
