"""A desktop session that nobody else sees, whatever shows its windows."""

import os
import pathlib
import shutil
import subprocess
import tempfile

from . import children

# Root, and whoever the programs run as, may talk on the same bus.
BUS_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <include>/usr/share/dbus-1/session.conf</include>
  <policy context="mandatory"><allow user="*"/></policy>
</busconfig>
"""

# A portal that the machine has installed says more about the machine than about the desktop under test.
NO_PORTAL = """[D-BUS Service]
Name=org.freedesktop.portal.Desktop
Exec=/bin/false
"""


class Session:
    """A throwaway home, a message bus and the programs in them; all gone when the block ends.

    `env` is the environment of programs that live here. `keyboard`, which a derived class makes, has the hands.
    """

    portals = ()  # the back ends of the machine's desktop portal that this desktop has, by name

    def __init__(self):
        self._children = []
        # Who the programs run as, in the words of subprocess; nothing for whoever runs the tests.
        self._identity = {}
        self.home = None
        self.env = None
        self.keyboard = None
        self.display_server = None

    def __enter__(self):
        self._check()
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="larkspool-home."))
        try:
            self._build()
        except BaseException:
            self.__exit__(None, None, None)
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self._children):
            children.end(process)
        self._children.clear()
        shutil.rmtree(self.home, ignore_errors=True)

    def _check(self):
        """Skips the test where something is missing."""

    def _build(self):
        raise NotImplementedError

    # What a test may ask of every desktop

    def takes_hot_key(self, program):
        """Whether a press of the default hot key, or what takes its place here, would reach the program by now."""
        raise NotImplementedError

    @property
    def focuses_new_windows(self):
        """Whether a window has the keyboard as soon as it is shown."""
        return True

    def screenshot(self, path):
        """The whole screen as a picture file."""
        raise NotImplementedError

    @property
    def store_file(self):
        return pathlib.Path(self.env["XDG_DATA_HOME"]) / "larkspool" / "larkspool.sqlite"

    @property
    def debug_log(self):
        return self.home / "larkspool_debug.log"

    def readable(self, path):
        """The file, or a copy of it, where the session's programs can read it."""
        return pathlib.Path(path)

    def give(self, path):
        """Makes a file or folder that a test has made belong to whom the programs run as."""
        if self._identity:
            os.chown(path, self._identity["user"], self._identity["group"])

    def on_screen(self, command):
        """The words that start a program with a window so that it uses the desktop's display server."""
        return command

    def spawn(self, *command, **options):
        """Starts a program that is ended with the desktop at the latest."""
        process = children.spawn(command, self.env, **self._identity, **options)
        self._children.append(process)
        return process

    def run(self, *command, deadline=20, **options):
        """Runs a program to its end; its standard output as bytes."""
        words = [str(word) for word in command]
        done = subprocess.run(
            words, env=self.env, capture_output=True, timeout=deadline, **self._identity, **options
        )
        if done.returncode != 0:
            raise AssertionError(f"{words} failed: {done.stderr.decode('utf-8', 'replace')}")
        return done.stdout

    def end(self, process):
        children.end(process)

    def end_display(self):
        """Takes the display server away, as the end of a desktop session does."""
        children.end(self.display_server)

    def kill_display(self):
        """Takes the display server away as a crash does."""
        self.display_server.kill()
        self.display_server.wait(10)

    # For derived classes

    def _environment(self):
        env = {
            key: value
            for key, value in os.environ.items()
            if not key.startswith(("XDG_", "QT_", "QML", "GTK_", "DBUS_", "WAYLAND_", "LC_", "LANGUAGE"))
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

    def _start_bus(self):
        if not self.portals:
            self._hide_portal()
        configuration = self.home / "bus.conf"
        configuration.write_text(BUS_CONFIGURATION)
        which = f"--config-file={configuration}" if self._identity else "--session"
        self.env["DBUS_SESSION_BUS_ADDRESS"] = self._first_line(
            lambda fd: ["dbus-daemon", which, "--nofork", f"--print-address={fd}"]
        )

    def _hide_portal(self):
        # The first folder in which the bus looks for services.
        folder = pathlib.Path(self.env["XDG_RUNTIME_DIR"]) / "dbus-1" / "services"
        folder.mkdir(parents=True, mode=0o700)
        file = folder / "org.freedesktop.portal.Desktop.service"
        file.write_text(NO_PORTAL)
        for path in (folder.parent, folder, file):
            self.give(path)

    def _first_line(self, command_for):
        """Starts a server that writes one line to a descriptor when it is ready; returns the line."""
        reader, writer = os.pipe()
        with os.fdopen(reader) as pipe:
            try:
                self.spawn(*command_for(str(writer)), pass_fds=(writer,))
            finally:
                os.close(writer)
            line = pipe.readline().strip()
        if not line:
            raise AssertionError(f"did not start: {self._children[-1].args}")
        return line
