"""Hands on a desktop's keyboard and mouse."""

import contextlib

from .waiting import wait_until

# Key codes by position, named by what a US keyboard has there.
KEYS = {
    "Control": 37, "Shift": 50, "Alt": 64, "Super": 133, "Return": 36, "Escape": 9, "Down": 116, "F12": 96, "Insert": 118,
    "Menu": 135, "Space": 65, "7": 16, "a": 38, "n": 57, "r": 27, "t": 28, "v": 55, "y": 29,
}  # fmt: skip


class Keyboard:
    """Keys, clicks and windows by way of xdotool."""

    def __init__(self, desktop):
        self._desktop = desktop

    def _xdotool(self, *words):
        return self._desktop.run("xdotool", *words).decode()

    def press(self, *chords):
        """Presses key combinations, one after the other: "ctrl+a", "Return"."""
        self._xdotool("key", "--clearmodifiers", *chords)

    def hit(self, *keys):
        """Presses keys by position, each while the ones before it are held, and lets go of them: see KEYS."""
        with self.held(*keys):
            pass

    @contextlib.contextmanager
    def held(self, *keys):
        """Holds keys by position down for as long as the block lasts."""
        probe = self._desktop.probe
        for key in keys:
            probe.fake_key(KEYS[key], is_down=True)
        try:
            yield
        finally:
            for key in reversed(keys):
                probe.fake_key(KEYS[key], is_down=False)

    def without_repeat(self):
        """From now on a key that is held down types once."""
        self._desktop.run("xset", "r", "off")

    def set_layout(self, layout, variant="", option=""):
        """Chooses a layout, or several separated by commas, in the words of setxkbmap."""
        # An empty option takes back those that were set before.
        options = ["-option", "", *(["-option", option] if option else [])]
        self._desktop.run("setxkbmap", "-layout", layout, "-variant", variant, *options)

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
        probe = self._desktop.probe
        if probe.has_window_manager() and probe.active_window() != window:
            return False
        try:
            return int(self._xdotool("getwindowfocus")) == window
        except AssertionError:
            return False

    def focus(self, window):
        """Brings the window to the front with the keyboard."""
        how = "windowactivate" if self._desktop.probe.has_window_manager() else "windowfocus"
        self._xdotool(how, window)
        self.wait_for_focus(window)

    def click(self, window, x, y, times=1):
        """Clicks with the first button at a place in the window."""
        self._xdotool(
            "mousemove", "--window", window, x, y, "click", "--repeat", times, "--delay", 40, 1
        )

    def minimise(self, window):
        """Minimises the window and waits until it is out of sight."""
        self._xdotool("windowminimize", "--sync", window)

    def move(self, window, x, y):
        """Asks for another place for the window; a tiling window manager does not care."""
        self._xdotool("windowmove", window, x, y)

    def send_to_workspace(self, window, number):
        """Moves the window to the workspace, counted from 1, and stays where it is."""
        before = self._desktop.probe.workspace_of(window)
        if self._desktop.window_manager.args[0] == "i3":  # its workspaces exist from when they are wanted
            self._desktop.run("i3-msg", f"[id={window}] move container to workspace {number}")
        else:
            self._xdotool("set_desktop_for_window", window, number - 1)
        wait_until(lambda: self._desktop.probe.workspace_of(window) != before, f"on workspace {number}")

    def geometry(self, window):
        """x, y, width and height of the window on the screen."""
        lines = self._xdotool("getwindowgeometry", "--shell", window).split()
        values = dict(line.split("=") for line in lines)
        return tuple(int(values[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))
