"""Mutter without a screen or a shell: no protocol for clipboards or keys, and nothing that lists windows."""

import pathlib

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

from . import accessibility  # noqa: E402
from .waiting import need, wait_until  # noqa: E402
from .wayland import WaylandDesktop  # noqa: E402
from .wayland_keyboard import WaylandKeyboard, WindowFacts  # noqa: E402

WIDTH, HEIGHT = 1920, 1080
REMOTE = "org.gnome.Mutter.RemoteDesktop"
REMOTE_PATH = "/org/gnome/Mutter/RemoteDesktop"
SHIFT = 42
KEYBOARD_CAPABILITY = 2


class RemoteHand:
    """A keyboard that Mutter's remote desktop service makes."""

    def __init__(self, address, wire):
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self._bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
        self._bus.set_exit_on_close(False)
        wait_until(self._is_there, "the remote desktop service is there")
        self._session = self._call(REMOTE_PATH, REMOTE, "CreateSession", None).unpack()[0]
        self._call(self._session, f"{REMOTE}.Session", "Start", None)
        # The keyboard comes with its first key, which nobody hears.
        seat, capabilities = wire.bind("wl_seat", 1), []
        seat.on["capabilities"] = capabilities.append
        self.key(SHIFT, True)
        self.key(SHIFT, False)
        wire.run_until(lambda: capabilities and capabilities[-1] & KEYBOARD_CAPABILITY, "the seat has a keyboard")

    def _is_there(self):
        bus = "org.freedesktop.DBus"
        flags = Gio.DBusCallFlags.NONE
        arguments = GLib.Variant("(s)", (REMOTE,))
        return self._bus.call_sync(bus, "/", bus, "NameHasOwner", arguments, None, flags, 5000, None).unpack()[0]

    def _call(self, path, interface, method, arguments):
        return self._bus.call_sync(
            REMOTE, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE, 10000, None
        )

    def key(self, code, is_down):
        arguments = GLib.Variant("(ub)", (code, is_down))
        self._call(self._session, f"{REMOTE}.Session", "NotifyKeyboardKeycode", arguments)

    def close(self):
        if not self._bus.is_closed():
            self._bus.close_sync(None)


class Mutter(WaylandDesktop):
    """Its windows are seen as a screen reader sees them: only of programs that speak to one."""

    name = "GNOME"

    def __init__(self, xwayland=True):
        super().__init__(xwayland)
        self.hand = None

    def __exit__(self, *_):
        if self.hand is not None:
            self.hand.close()
        super().__exit__(*_)

    def _check(self):
        need("mutter", "dbus-daemon", "gdbus")

    def _prepare(self):
        # On a busy machine a release may come late: keys do not repeat.
        folder = pathlib.Path(self.env["XDG_CONFIG_HOME"]) / "glib-2.0" / "settings"
        folder.mkdir(parents=True)
        (folder / "keyfile").write_text("[org/gnome/desktop/peripherals/keyboard]\nrepeat=false\n")

    def _compositor_environment(self):
        return {"GSETTINGS_BACKEND": "keyfile"}

    def _command(self):
        screen = ["--virtual-monitor", f"{WIDTH}x{HEIGHT}"]
        words = ["--headless", "--wayland", "--wayland-display", self.socket_name, *screen]
        return ["mutter", *words, *([] if self._has_xwayland else ["--no-x11"])]

    def _make_hands(self):
        self.hand = RemoteHand(self.env["DBUS_SESSION_BUS_ADDRESS"], self.wire())
        self.keyboard = WaylandKeyboard(self.hand, self._windows, self._activate)

    def _windows(self):
        return [
            WindowFacts((window["pid"], window["number"]), window["title"], window["active"], program=window["program"])
            for window in accessibility.windows(self)
        ]

    def _activate(self, _handle):
        """Nothing lets a test choose the window here: it can only see that the right one is in front."""
