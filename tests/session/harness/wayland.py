"""A Wayland desktop that nobody else sees: what all compositors have in common."""

import contextlib
import os
import pathlib
import pwd
import shutil
import signal
import socket
import stat
import subprocess

from . import application, children, wlwire
from .session import Session
from .waiting import missing, wait_until

# Compositors refuse to run as root; what root tests runs as this user.
USER = "nobody"
# Connects to a socket and hands the connection over, then stays: a compositor looks at the program of the process
# that has connected, and that process has to be one of its own user's.
CONNECTOR = """
import array, socket, sys
parent = socket.socket(fileno=0)
client = socket.socket(socket.AF_UNIX)
client.connect(sys.argv[1])
parent.sendmsg([b"x"], [(socket.SOL_SOCKET, socket.SCM_RIGHTS, array.array("i", [client.fileno()]))])
client.close()
parent.recv(1)
"""


class WaylandDesktop(Session):
    """A throwaway home, a message bus and a compositor without a screen or a device; all gone when the block ends.

    A derived class says how to start its compositor, and makes `keyboard`. With `xwayland` there is an X server, too.
    """

    name = None  # as XDG_CURRENT_DESKTOP has it
    socket_name = "wayland-1"

    def __init__(self, xwayland=False):
        super().__init__()
        self._has_xwayland = xwayland
        self._wires = []
        self._connectors = []
        if os.geteuid() == 0:
            user = pwd.getpwnam(USER)
            self._identity = {"user": user.pw_uid, "group": user.pw_gid, "extra_groups": []}

    def __exit__(self, *_):
        for wire in self._wires:
            wire.close()
        for connector in self._connectors:
            connector.close()
        self._wires.clear()
        self._connectors.clear()
        for process in reversed(self._children):
            children.end(process)
        self._end_strays()
        super().__exit__(*_)

    def _end_strays(self):
        """Ends what has left its parent: an X server that a compositor has started by way of another process."""
        for number in (signal.SIGTERM, signal.SIGKILL):
            for folder, _ in self._processes():
                with contextlib.suppress(ProcessLookupError):
                    os.kill(int(folder.name), number)
            try:
                wait_until(lambda: not list(self._processes()), "all have ended", 3)
                return
            except AssertionError:
                continue

    def _processes(self):
        """The folders under /proc, and the words, of all processes that have this desktop's home."""
        ours = f"HOME={self.home}".encode()
        for folder in pathlib.Path("/proc").glob("[0-9]*"):
            with contextlib.suppress(OSError):  # gone in between, or another user's
                if ours in (folder / "environ").read_bytes().split(b"\0"):
                    yield folder, (folder / "cmdline").read_text().split("\0")

    def _command(self):
        """What starts the compositor."""
        raise NotImplementedError

    def _compositor_environment(self):
        """What the compositor needs in its environment, and nobody else."""
        return {}

    def _build(self):
        self.env = self._environment()
        self.env.update(XDG_SESSION_TYPE="wayland", XDG_CURRENT_DESKTOP=self.name, GDK_BACKEND="wayland")
        if self._identity:
            self.env.update(USER=USER, LOGNAME=USER)
        self.env.pop("DISPLAY", None)
        self._choose_portals()
        self._prepare()
        self._give_home()
        self._start_bus()
        self._start_compositor()
        self._tell_bus()
        self._make_hands()

    def _choose_portals(self):
        """Without a back end of its own desktop the portal would take any that is installed."""
        folder = self.home / "portals"
        folder.mkdir()
        for portal in self.portals:
            file = pathlib.Path("/usr/share/xdg-desktop-portal/portals") / f"{portal}.portal"
            if not file.exists():
                missing(f"not installed: the portal's back end {portal}")
            shutil.copy(file, folder)
        self.env["XDG_DESKTOP_PORTAL_DIR"] = str(folder)

    def _prepare(self):
        """Writes files that the compositor reads."""

    def _make_hands(self):
        raise NotImplementedError

    def _give_home(self):
        for folder, _, names in os.walk(self.home):
            for name in (".", *names):
                self.give(pathlib.Path(folder) / name)

    def _start_compositor(self):
        plain = self.env
        self.env = {**plain, **self._compositor_environment()}
        try:
            self.display_server = self.spawn(*self._command(), stderr=subprocess.PIPE)
        finally:
            self.env = plain
        self._said = children.Lines(self.display_server.stderr)
        self.env["WAYLAND_DISPLAY"] = self.socket_name
        wait_until(self._is_up, lambda: f"the compositor is up: {self._said.all()}", 30)
        if self._has_xwayland:
            wait_until(self._find_xwayland, "Xwayland runs", 20)

    def _is_up(self):
        if self.display_server.poll() is not None:
            raise AssertionError(f"{self.name} ended with {self.display_server.returncode}: {self._said.all()}")
        return self._socket_path.exists()

    @property
    def _socket_path(self):
        return pathlib.Path(self.env["XDG_RUNTIME_DIR"]) / self.socket_name

    def _find_xwayland(self):
        """Takes the display's name, and the file that lets programs in, from the server's own command line. It need
        not be a child of the compositor's."""
        for _, words in self._processes():
            if words[0].endswith("Xwayland"):
                self.env["DISPLAY"] = words[1]
                if "-auth" in words:
                    self.env["XAUTHORITY"] = words[words.index("-auth") + 1]
                return True
        return False

    def _tell_bus(self):
        """Services that the bus starts find the display."""
        names = ["WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP", "XDG_SESSION_TYPE"]
        self.run("dbus-update-activation-environment", *names, *(["DISPLAY"] if "DISPLAY" in self.env else []))

    def readable(self, path):
        path = pathlib.Path(path).resolve()
        is_open = all(parent.stat().st_mode & stat.S_IXOTH for parent in path.parents)
        if not self._identity or (is_open and path.stat().st_mode & stat.S_IROTH):
            return path
        copy = self.home / path.name
        shutil.copy(path, copy)
        self.give(copy)
        return copy

    def on_screen(self, command):
        # The program under test has to find its way by itself; the others are told.
        return ["env", "QT_QPA_PLATFORM=wayland", *command]

    def takes_hot_key(self, program):
        """Wayland does not say who holds a key. What can be told: the program is on the bus, and its main thread
        answers there, which it does when all that it makes at the start is made."""
        with application.Application(self) as bus:
            return bus.process() == program.pid and bus.answers()

    # The tests' own connections

    def connect(self, program="/usr/bin/python3", env=None):
        """A connected socket of a process that the compositor takes for the program, a Python."""
        here, there = socket.socketpair()
        with here:
            command = [program, "-I", "-c", CONNECTOR, str(self._socket_path)]
            process = children.spawn(command, env or self.env, stdin=there, **self._identity)
            self._children.append(process)
            there.close()
            here.settimeout(10)
            _, descriptors, _, _ = socket.recv_fds(here, 1, 1)
            self._connectors.append(here.dup())
        return socket.socket(fileno=descriptors[0])

    def wire(self):
        """A client of the compositor of the tests' own; closed with the desktop at the latest."""
        self._wires.append(wlwire.Connection(self.connect()))
        return self._wires[-1]

    def globals(self):
        """The interfaces that the compositor offers to a plain client, with their versions."""
        with wlwire.Connection(self.connect()) as wire:
            return {interface: version for interface, (_, version) in wire.globals.items()}
