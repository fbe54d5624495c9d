"""Hands on a desktop's keyboard and mouse."""

from .waiting import wait_until


class Keyboard:
    """Keys, clicks and windows by way of xdotool."""

    def __init__(self, desktop):
        self._desktop = desktop

    def _xdotool(self, *words):
        return self._desktop.run("xdotool", *words).decode()

    def press(self, *chords):
        """Presses key combinations, one after the other: "ctrl+a", "Return"."""
        self._xdotool("key", "--clearmodifiers", *chords)

    def type(self, text):
        self._xdotool("type", "--delay", "5", text)

    def windows(self, name):
        """Visible windows whose title matches the regular expression."""
        try:
            found = self._xdotool("search", "--onlyvisible", "--name", name)
        except AssertionError:  # xdotool's way to say that there is none
            return []
        return [int(line) for line in found.split()]

    def wait_for_window(self, name, deadline=20.0):
        """The first visible window with such a title, once there is one."""
        return wait_until(lambda: self.windows(name), f"a window titled {name}", deadline)[0]

    def wait_for_focus(self, window, deadline=10.0):
        """Waits until the window is the active one and holds the keyboard."""
        wait_until(lambda: self._has_focus(window), f"window {window} has the keyboard", deadline)

    def _has_focus(self, window):
        if self._desktop.probe.active_window() != window:
            return False
        try:
            return int(self._xdotool("getwindowfocus")) == window
        except AssertionError:
            return False

    def focus(self, window):
        """Brings the window to the front with the keyboard."""
        self._xdotool("windowactivate", window)
        self.wait_for_focus(window)

    def click(self, window, x, y, times=1):
        """Clicks with the first button at a place in the window."""
        self._xdotool(
            "mousemove", "--window", window, x, y, "click", "--repeat", times, "--delay", 40, 1
        )

    def geometry(self, window):
        """x, y, width and height of the window on the screen."""
        lines = self._xdotool("getwindowgeometry", "--shell", window).split()
        values = dict(line.split("=") for line in lines)
        return tuple(int(values[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))
