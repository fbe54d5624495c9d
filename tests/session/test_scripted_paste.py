"""Pasting where the X server takes no keys from programs: the desktop's own services are asked to press them."""

import pathlib
import stat
import unittest

from harness import Larkspool, Store, programs, run_tests, wait_until
from harness.application import Application
from harness.plain_desktops import DesktopWithoutFakeKeys
from harness.portal import DENIED, HandWrittenPortal

# Printed once, at the start.
NO_KEYS = [r"^\[Larkspool\] No paste keys: ", r"^\[Larkspool\] Accessibility permission not granted "]
CONTROL_V = [(0xFFE3, True), (ord("v"), True), (ord("v"), False), (0xFFE3, False)]
ROAD = [
    "simulatePaste called",
    "AXIsProcessTrusted: false",
    "Not trusted — trying AppleScript fallback",
    "Trying AppleScript paste",
]
SUCCESS = "Paste simulated via AppleScript SUCCESS"


class ScriptedPaste(unittest.TestCase):
    def setUp(self):
        self.desktop = self.enterContext(DesktopWithoutFakeKeys())
        self.store = Store(self.desktop.store_file)
        self.editor = programs.Editor(self.desktop, "mousepad")

    def larkspool(self):
        return Larkspool(self.desktop, may_print=NO_KEYS)

    def copy(self):
        programs.xclip_copy(self.desktop, b"to be pasted")
        self.store.wait_for("to be pasted")

    def log(self):
        """The messages of the log, without their times."""
        if not self.desktop.debug_log.exists():
            return []
        return [line.split("] ", 1)[1] for line in self.desktop.debug_log.read_text().splitlines()]

    def choose(self, program):
        """Chooses the newest entry; what the log says from the call for the paste on."""
        before = len(self.log())
        with Application(self.desktop) as application:
            application.activate()
        panel = wait_until(program.panel, "the panel is shown")
        self.desktop.keyboard.wait_for_focus(panel)
        self.desktop.send_key(panel, "Return")
        program.wait_until_hidden()

        def said():
            lines = self.log()[before:]
            return lines[lines.index(ROAD[0]) :] if ROAD[0] in lines else []

        return wait_until(lambda: len(said()) > len(ROAD) and said(), "the paste is over")

    @property
    def token_file(self):
        return pathlib.Path(self.desktop.env["XDG_STATE_HOME"]) / "larkspool" / "remote-desktop-token"

    def test_where_nothing_presses_keys_the_log_says_so(self):
        with self.larkspool() as program:
            self.copy()
            error = (
                "AppleScript error: the desktop offers no remote-desktop portal,"
                " and no accessibility service that presses keys"
            )
            self.assertEqual(self.choose(program), [*ROAD, error])
            # The chosen entry is on the clipboard, for the user to paste.
            self.assertEqual(programs.xclip_paste(self.desktop), b"to be pasted")

    def test_a_hand_written_portal_is_asked_once_and_presses_the_keys(self):
        with HandWrittenPortal(self.desktop) as portal:
            with self.larkspool() as program:
                self.copy()
                for times in (1, 2):
                    self.assertEqual(self.choose(program), [*ROAD, SUCCESS])
                    self.assertEqual(portal.keys, CONTROL_V * times)
            self.assertEqual(portal.restore_tokens, [None])
            self.assertEqual(self.token_file.read_text(), "token-1")
            self.assertEqual(stat.S_IMODE(self.token_file.stat().st_mode), 0o600)
            with self.larkspool() as program:
                self.assertEqual(self.choose(program), [*ROAD, SUCCESS])
            self.assertEqual(portal.restore_tokens, [None, "token-1"])
            self.assertEqual(self.token_file.read_text(), "token-2")

    def test_a_no_to_a_hand_written_portal_is_logged_and_nothing_is_pressed(self):
        with HandWrittenPortal(self.desktop, DENIED) as portal, self.larkspool() as program:
            self.copy()
            error = "AppleScript error: the desktop's question was answered with no"
            self.assertEqual(self.choose(program), [*ROAD, error])
            self.assertEqual(portal.keys, [])


if __name__ == "__main__":
    run_tests()
