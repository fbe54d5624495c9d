"""Sessions of the user of a system of the tests' own."""

import os

from .application import INTERFACE, NAME, PATH
from .bare_system import USER, USER_NUMBER
from .desktop import Desktop
from .waiting import wait_until

# What a login needs on such a system, besides what is tested: a message bus, a window manager that starts what is to
# start at login, an editor, a launcher.
PACKAGES = ("dbus", "openbox", "python3-xdg", "mousepad", "libglib2.0-bin")


class Screen(Desktop):
    """A display on which the system's user starts programs; they are that system's, the hands are this machine's."""

    def __init__(self, system, window_manager="openbox"):
        super().__init__(window_manager=window_manager)
        self.system = system
        self.login_env = None
        self._scratch = None

    def __exit__(self, *_):
        # The programs first, as at a logout; the display last.
        self.system.end_programs_of(USER)
        if self._scratch:
            self.home = self._scratch
        super().__exit__(*_)

    def _build(self):
        super()._build()
        self._scratch, self.home = self.home, self.system.home
        self.login_env = self.system.environment(DISPLAY=self.env["DISPLAY"])

    @property
    def store_file(self):
        return self.home / ".local/share/larkspool/larkspool.sqlite"

    def give(self, path):
        os.chown(path, USER_NUMBER, USER_NUMBER)

    def on_screen(self, command):
        root = str(self.system.root)
        inside = [str(word).removeprefix(root) for word in command]
        variables = [f"{key}={value}" for key, value in self.login_env.items()]
        return self.system.words("env", "--ignore-environment", *variables, *inside, user=USER)


class Login(Screen):
    """A login: a message bus, and openbox with all that it starts at login."""

    def __init__(self, system):
        super().__init__(system, window_manager=None)

    def _build(self):
        super()._build()
        bus = f"{self.system.runtime_folder}/bus"
        socket = self.system.root / bus.lstrip("/")
        socket.unlink(missing_ok=True)
        self.login_env |= {"DBUS_SESSION_BUS_ADDRESS": f"unix:path={bus}", "XDG_CURRENT_DESKTOP": "openbox"}
        self.spawn(*self.on_screen(["dbus-daemon", "--session", f"--address=unix:path={bus}", "--nofork"]))
        wait_until(socket.exists, "the bus is there")
        self.spawn(*self.on_screen(["openbox-session"]))
        wait_until(self.probe.has_window_manager, "a window manager takes the display", 30)

    def launch(self, desktop_file):
        """Starts a program as the menu of a desktop does."""
        # What is started keeps the launcher's output open, so that is not waited for.
        launcher = self.spawn(*self.on_screen(["gio", "launch", desktop_file]))
        if launcher.wait(20) != 0:
            raise AssertionError(f"{desktop_file} could not be launched")

    def activate(self):
        """Asks the program to show itself, as desktops and second starts do; the bus starts it when it does not run."""
        place = ["--session", "--dest", NAME, "--object-path", PATH]
        self.run(*self.on_screen(["gdbus", "call", *place, "--method", f"{INTERFACE}.Activate", "{}"]))
