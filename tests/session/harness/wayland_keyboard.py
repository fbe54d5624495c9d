"""Hands on a Wayland desktop's keyboard and mouse, with the face of the X desktop's."""

import contextlib
import re

from .waiting import wait_until

# Key codes of evdev by position, named as xdotool does by what a US keyboard has there.
CODES = {
    "Escape": 1, "BackSpace": 14, "Tab": 15, "Return": 28, "ctrl": 29, "Control": 29, "shift": 42, "Shift": 42,
    "alt": 56, "Alt": 56, "space": 57, "Space": 57, "F12": 88, "Home": 102, "Up": 103, "Left": 105, "Right": 106,
    "End": 107, "Down": 108, "Insert": 110, "Delete": 111, "super": 125, "Super": 125, "Menu": 127,
}  # fmt: skip
CHARACTERS = {" ": (57, False), "\n": (28, False)}
for _first, _plain, _shifted in (
    (2, "1234567890-=", "!@#$%^&*()_+"), (16, "qwertyuiop[]", "QWERTYUIOP{}"),
    (30, "asdfghjkl;'`", 'ASDFGHJKL:"~'), (43, "\\zxcvbnm,./", "|ZXCVBNM<>?"),
):  # fmt: skip
    for _offset, (_low, _high) in enumerate(zip(_plain, _shifted)):
        CHARACTERS[_low] = (_first + _offset, False)
        CHARACTERS[_high] = (_first + _offset, True)

LEFT_BUTTON = 0x110


def code(name):
    """The code of a key by its name, or by the character that it types."""
    return CODES[name] if name in CODES else CHARACTERS[name][0]


class WindowFacts:
    """What a compositor tells of a window. `handle` is its own name for it; `place` is x, y, width and height."""

    def __init__(self, handle, title, is_active, place=None, program="", is_floating=None):
        self.handle = handle
        self.title = title
        self.is_active = is_active
        self.place = place
        self.program = program
        self.is_floating = is_floating

    def __repr__(self):
        return f"{self.program} {self.title!r} {self.place}{' active' if self.is_active else ''}"


class WaylandKeyboard:
    """Keys, clicks and windows.

    `hand` has key(code, is_down), move(x, y) and button(code, is_down); `look` gives every window's WindowFacts, and
    `activate` brings a window to the front by its handle.
    """

    def __init__(self, hand, look, activate):
        self._hand = hand
        self._look = look
        self._activate = activate

    def press(self, *chords):
        """Presses key combinations, one after the other: "ctrl+a", "Return"."""
        for chord in chords:
            self.hit(*chord.split("+"))

    def hit(self, *keys):
        """Presses keys, each while the ones before it are held, and lets go of them."""
        with self.held(*keys):
            pass

    @contextlib.contextmanager
    def held(self, *keys):
        """Holds keys down for as long as the block lasts."""
        for key in keys:
            self._hand.key(code(key), True)
        try:
            yield
        finally:
            for key in reversed(keys):
                self._hand.key(code(key), False)

    def type(self, text):
        """Types characters that a US keyboard has."""
        for character in text:
            number, is_shifted = CHARACTERS[character]
            with self.held(*(["shift"] if is_shifted else [])):
                self._hand.key(number, True)
                self._hand.key(number, False)

    def all_windows(self):
        return self._look()

    def windows(self, name):
        """The handles of windows whose title matches the regular expression."""
        return [window.handle for window in self._look() if re.search(name, window.title or "")]

    def facts(self, handle):
        """What is told of the window by now; nothing when it is gone."""
        return next((window for window in self._look() if window.handle == handle), None)

    def wait_for_window(self, name, deadline=20.0):
        """The first window with such a title, once there is one."""
        return wait_until(lambda: self.windows(name), lambda: f"a window titled {name}: {self._look()}", deadline)[0]

    def wait_for_focus(self, handle, deadline=10.0):
        """Waits until the window holds the keyboard."""
        def has_focus():
            window = self.facts(handle)
            return window is not None and window.is_active

        wait_until(has_focus, lambda: f"window {handle} has the keyboard: {self._look()}", deadline)

    def focus(self, handle):
        """Brings the window to the front with the keyboard."""
        self._activate(handle)
        self.wait_for_focus(handle)

    def geometry(self, handle):
        """x, y, width and height of the window on the screen."""
        window = self.facts(handle)
        return window.place if window else None

    def click(self, handle, x, y, times=1):
        """Clicks with the first button at a place in the window."""
        left, top, _, _ = self.geometry(handle)
        self._hand.move(left + x, top + y)
        for _ in range(times):
            self._hand.button(LEFT_BUTTON, True)
            self._hand.button(LEFT_BUTTON, False)
