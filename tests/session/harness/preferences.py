"""The program with preferences of a user's own."""

import pathlib

from .larkspool import Larkspool
from .waiting import wait_until

# Virtual key codes (US layout numbering) by the symbol that a US keyboard has there, and modifier bits.
KEY_CODES = {"v": 9, "F12": 111, "Insert": 114}
MODIFIER_BITS = {"Super": 256, "Shift": 512, "Alt": 2048, "Control": 4096}


def preferences_file(desktop):
    """Where the preferences are kept; its folder exists."""
    folder = pathlib.Path(desktop.env["XDG_CONFIG_HOME"]) / "larkspool"
    folder.mkdir(exist_ok=True)
    return folder / "larkspool.conf"


class LarkspoolWithHotKey(Larkspool):
    """A run of the program with another hot key than the default one: modifiers first, then the key."""

    def __init__(self, desktop, *hot_key, **options):
        super().__init__(desktop, **options)
        *self._modifiers, self._key = hot_key
        bits = sum(MODIFIER_BITS[modifier] for modifier in self._modifiers)
        combination = f'{{"keyCode":{KEY_CODES[self._key]},"modifiers":{bits}}}'
        preferences_file(desktop).write_text(f"[General]\nhotkeyCombo={combination}\n")

    def wait_for_hot_key(self, deadline=20.0, every=0.01):
        def is_live():
            if self.process.poll() is not None:
                raise AssertionError(f"ended with {self.process.returncode}: {self.stdout.all()} {self.stderr.all()}")
            return self._desktop.probe.is_grabbed(self._key, self._modifiers)

        wait_until(is_live, "the hot key is live", deadline, every)

    def open_panel(self, deadline=10.0):
        self._desktop.keyboard.hit(*self._modifiers, self._key)
        window = wait_until(self.panel, "the panel is shown", deadline)
        self._desktop.keyboard.wait_for_focus(window, deadline)
        return window
