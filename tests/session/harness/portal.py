"""A desktop portal for pressing keys, written for tests: it notes the keys and decides in place of a user."""

import threading

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

PATH = "/org/freedesktop/portal/desktop"
INTERFACE = "org.freedesktop.portal.RemoteDesktop"
GRANTED, DENIED = 0, 1
_KEYBOARD = 1
_DESCRIPTION = f"""
<node>
  <interface name="{INTERFACE}">
    <method name="CreateSession"><arg type="a{{sv}}" direction="in"/><arg type="o" direction="out"/></method>
    <method name="SelectDevices">
      <arg type="o" direction="in"/><arg type="a{{sv}}" direction="in"/><arg type="o" direction="out"/>
    </method>
    <method name="Start">
      <arg type="o" direction="in"/><arg type="s" direction="in"/><arg type="a{{sv}}" direction="in"/>
      <arg type="o" direction="out"/>
    </method>
    <method name="NotifyKeyboardKeysym">
      <arg type="o" direction="in"/><arg type="a{{sv}}" direction="in"/>
      <arg type="i" direction="in"/><arg type="u" direction="in"/>
    </method>
    <property name="AvailableDeviceTypes" type="u" access="read"/>
    <property name="version" type="u" access="read"/>
  </interface>
</node>
"""


class HandWrittenPortal:
    """On the desktop's bus for as long as the block lasts. `decision` may be changed at any time.

    `press` is called with every key symbol and whether it goes down, on a thread of the portal's own.
    """

    def __init__(self, desktop, decision=GRANTED, press=None):
        self._press = press
        self._address = desktop.env["DBUS_SESSION_BUS_ADDRESS"]
        self.decision = decision
        self.keys = []  # key symbol and whether it goes down
        self.restore_tokens = []  # those that were handed in, or nothing, one per session
        self._context = GLib.MainContext()
        self._loop = GLib.MainLoop(self._context)
        self._is_ready = threading.Event()
        self._thread = threading.Thread(target=self._run, daemon=True)

    def __enter__(self):
        self._thread.start()
        if not self._is_ready.wait(10):
            raise AssertionError("the portal does not start")
        return self

    def __exit__(self, *_):
        self._context.invoke_full(GLib.PRIORITY_DEFAULT, self._loop.quit)
        self._thread.join(10)

    def _run(self):
        self._context.push_thread_default()
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self._bus = Gio.DBusConnection.new_for_address_sync(self._address, flags, None, None)
        description = Gio.DBusNodeInfo.new_for_xml(_DESCRIPTION).interfaces[0]
        self._bus.register_object(PATH, description, self._call, self._property, None)
        arguments = GLib.Variant("(su)", ("org.freedesktop.portal.Desktop", 4))
        bus = "org.freedesktop.DBus"
        self._bus.call_sync(bus, "/", bus, "RequestName", arguments, None, Gio.DBusCallFlags.NONE, 5000, None)
        self._is_ready.set()
        self._loop.run()
        self._bus.close_sync(None)
        self._context.pop_thread_default()

    def _property(self, _bus, _sender, _path, _interface, name):
        return GLib.Variant("u", 2 if name == "version" else _KEYBOARD)

    def _call(self, _bus, sender, _path, _interface, method, arguments, invocation):
        values = arguments.unpack()
        if method == "NotifyKeyboardKeysym":
            self.keys.append((values[2], values[3] == 1))
            if self._press is not None:
                self._press(*self.keys[-1])
            invocation.return_value(None)
            return
        options = values[-1]
        place = sender[1:].replace(".", "_")
        request = f"{PATH}/request/{place}/{options['handle_token']}"
        response, results = GRANTED, {}
        if method == "CreateSession":
            session = f"{PATH}/session/{place}/{options['session_handle_token']}"
            results["session_handle"] = GLib.Variant("s", session)
        elif method == "SelectDevices":
            self.restore_tokens.append(options.get("restore_token"))
        elif self.decision == GRANTED:
            results["devices"] = GLib.Variant("u", _KEYBOARD)
            results["restore_token"] = GLib.Variant("s", f"token-{len(self.restore_tokens)}")
        else:
            response = self.decision
        invocation.return_value(GLib.Variant("(o)", (request,)))
        signal = GLib.Variant("(ua{sv})", (response, results))
        self._bus.emit_signal(sender, request, "org.freedesktop.portal.Request", "Response", signal)
