"""An X desktop that nobody else sees."""

from .keyboard import Keyboard
from .session import Session
from .waiting import need, wait_until
from .xprobe import XProbe

# What to start for a window manager; {home} is the desktop's home.
WINDOW_MANAGERS = {
    "openbox": ["openbox", "--sm-disable"],
    "xfwm4": ["xfwm4", "--compositor=off"],
    "i3": ["i3", "-c", "{home}/i3.conf"],
}
# Without a file of its own i3 asks questions first. Its own keys would stand in the way of others.
I3_CONFIG = """# i3 config file (v4)
font pango:monospace 8
workspace_layout default
"""


class Desktop(Session):
    """A throwaway home, a message bus, an X server and a window manager; all gone when the block ends.

    `env` is the environment of programs that live on it; `window_manager` is one of WINDOW_MANAGERS or None.
    """

    def __init__(self, size="1920x1080x24", window_manager="openbox"):
        super().__init__()
        self._size = size
        self._window_manager = window_manager
        self.probe = None

    def __exit__(self, *_):
        if self.probe is not None:
            self.probe.close()
        super().__exit__(*_)

    def _check(self):
        need("Xvfb", "dbus-daemon", "xdotool")
        if self._window_manager:
            need(WINDOW_MANAGERS[self._window_manager][0])

    def _build(self):
        self.env = self._environment()
        self.env["DISPLAY"] = ":" + self._first_line(
            lambda fd: ["Xvfb", "-displayfd", fd, "-screen", "0", self._size, "-nolisten", "tcp", "-noreset"]
        )
        self.display_server = self._children[-1]
        self._start_bus()
        self.probe = XProbe(self.env["DISPLAY"])
        self.keyboard = Keyboard(self)
        if self._window_manager:
            self._start_window_manager()

    def _start_window_manager(self):
        (self.home / "i3.conf").write_text(I3_CONFIG)
        command = [word.format(home=self.home) for word in WINDOW_MANAGERS[self._window_manager]]
        self.window_manager = self.spawn(*command)
        wait_until(self.probe.has_window_manager, "a window manager takes the display")

    def takes_hot_key(self, program):
        return self.probe.is_grabbed("v", ["Super", "Shift"])

    @property
    def focuses_new_windows(self):
        return self.probe.has_window_manager()

    def screenshot(self, path):
        need("/usr/bin/import")
        self.run("/usr/bin/import", "-window", "root", path)
