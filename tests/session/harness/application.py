"""The program as the message bus knows it, and the bus itself."""

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

from .waiting import wait_until  # noqa: E402

NAME = "org.larkspool.Larkspool"
PATH = "/org/larkspool/Larkspool"
INTERFACE = "org.freedesktop.Application"
_BUS = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")


class Application:
    """Calls over a connection of its own to the desktop's bus; closed when the block ends."""

    def __init__(self, desktop):
        self._bus = Gio.DBusConnection.new_for_address_sync(
            desktop.env["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION,
            None,
            None,
        )
        self._bus.set_exit_on_close(False)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if not self._bus.is_closed():
            self._bus.close_sync(None)

    def _call(self, place, method, arguments, deadline):
        name, path, interface = place
        flags = Gio.DBusCallFlags.NONE
        return self._bus.call_sync(
            name, path, interface, method, arguments, None, flags, int(deadline * 1000), None
        ).unpack()

    def activate(self, deadline=20.0, **platform_data):
        """Asks the program to show itself, as a desktop does; the bus starts it when it does not run."""
        data = {key.replace("_", "-"): GLib.Variant("s", value) for key, value in platform_data.items()}
        self._call((NAME, PATH, INTERFACE), "Activate", GLib.Variant("(a{sv})", (data,)), deadline)

    def process(self, deadline=10.0):
        """The process that owns the program's name; nothing when nobody does."""
        try:
            return self._process_of(NAME, deadline)
        except GLib.Error as failure:
            if Gio.DBusError.get_remote_error(failure) == "org.freedesktop.DBus.Error.NameHasNoOwner":
                return None
            raise

    def answers(self, deadline=10.0):
        """Whether the main thread of the program answers: the bus's own thread leaves objects to the thread they
        belong to."""
        try:
            self._call((NAME, PATH, "org.freedesktop.DBus.Introspectable"), "Introspect", None, deadline)
        except GLib.Error:
            return False
        return True

    def wait_until_gone(self, deadline=10.0):
        wait_until(lambda: self.process() is None, "the name is free", deadline)

    def bus_process(self):
        """The process of the bus."""
        return self._process_of(_BUS[0], 10.0)

    def _process_of(self, name, deadline):
        return self._call(_BUS, "GetConnectionUnixProcessID", GLib.Variant("(s)", (name,)), deadline)[0]
