"""An X desktop that nobody else sees."""

import os
import pathlib
import shutil
import subprocess
import tempfile

from . import children
from .keyboard import Keyboard
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


class Desktop:
    """A throwaway home, a message bus, an X server and a window manager; all gone when the block ends.

    `env` is the environment of programs that live on it; `window_manager` is one of WINDOW_MANAGERS or None.
    """

    def __init__(self, size="1920x1080x24", window_manager="openbox"):
        self._size = size
        self._window_manager = window_manager
        self._children = []
        self.home = None
        self.env = None
        self.probe = None

    def __enter__(self):
        need("Xvfb", "dbus-daemon", "xdotool")
        if self._window_manager:
            need(WINDOW_MANAGERS[self._window_manager][0])
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="larkspool-home."))
        try:
            self._build()
        except BaseException:
            self.__exit__(None, None, None)
            raise
        return self

    def __exit__(self, *_):
        if self.probe is not None:
            self.probe.close()
        for process in reversed(self._children):
            children.end(process)
        self._children.clear()
        shutil.rmtree(self.home, ignore_errors=True)

    def _build(self):
        self.env = self._environment()
        self.env["DISPLAY"] = ":" + self._first_line(
            lambda fd: ["Xvfb", "-displayfd", fd, "-screen", "0", self._size, "-nolisten", "tcp", "-noreset"]
        )
        self.env["DBUS_SESSION_BUS_ADDRESS"] = self._first_line(
            lambda fd: ["dbus-daemon", "--session", "--nofork", f"--print-address={fd}"]
        )
        self.probe = XProbe(self.env["DISPLAY"])
        self.keyboard = Keyboard(self)
        if self._window_manager:
            self._start_window_manager()

    def _start_window_manager(self):
        (self.home / "i3.conf").write_text(I3_CONFIG)
        command = [word.format(home=self.home) for word in WINDOW_MANAGERS[self._window_manager]]
        self.window_manager = self.spawn(*command)
        wait_until(self.probe.has_window_manager, "a window manager takes the display")

    def _environment(self):
        env = {
            key: value
            for key, value in os.environ.items()
            if not key.startswith(("XDG_", "QT_", "QML", "GTK_", "DBUS_", "WAYLAND_", "LC_"))
        }
        env["HOME"] = str(self.home)
        for name, folder in (
            ("XDG_DATA_HOME", ".local/share"),
            ("XDG_CONFIG_HOME", ".config"),
            ("XDG_CACHE_HOME", ".cache"),
            ("XDG_STATE_HOME", ".local/state"),
            ("XDG_RUNTIME_DIR", "run"),
        ):
            path = self.home / folder
            path.mkdir(parents=True, mode=0o700)
            env[name] = str(path)
        env.update(LANG="C.UTF-8", GSETTINGS_BACKEND="memory", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        # A click neither finds nor starts the sound server of the desk.
        env["PULSE_SERVER"] = f"unix:{env['XDG_RUNTIME_DIR']}/no-sound"
        return env

    def _first_line(self, command_for):
        """Starts a server that writes one line to a descriptor when it is ready; returns the line."""
        reader, writer = os.pipe()
        with os.fdopen(reader) as pipe:
            try:
                self._children.append(
                    children.spawn(command_for(str(writer)), self.env, pass_fds=(writer,))
                )
            finally:
                os.close(writer)
            line = pipe.readline().strip()
        if not line:
            raise AssertionError(f"did not start: {self._children[-1].args}")
        return line

    @property
    def store_file(self):
        return pathlib.Path(self.env["XDG_DATA_HOME"]) / "larkspool" / "larkspool.sqlite"

    @property
    def debug_log(self):
        return self.home / "larkspool_debug.log"

    def spawn(self, *command, **options):
        """Starts a program that is ended with the desktop at the latest."""
        process = children.spawn(command, self.env, **options)
        self._children.append(process)
        return process

    def run(self, *command, deadline=20, **options):
        """Runs a program to its end; its standard output as bytes."""
        words = [str(word) for word in command]
        done = subprocess.run(words, env=self.env, capture_output=True, timeout=deadline, **options)
        if done.returncode != 0:
            raise AssertionError(f"{words} failed: {done.stderr.decode('utf-8', 'replace')}")
        return done.stdout

    def end(self, process):
        children.end(process)

    def end_display(self):
        """Takes the X server away, as the end of a desktop session does."""
        children.end(self._children[0])

    def screenshot(self, path):
        """The whole screen as a picture file."""
        need("/usr/bin/import")
        self.run("/usr/bin/import", "-window", "root", path)
