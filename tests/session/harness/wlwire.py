"""The Wayland wire format, and the few protocols that tests speak themselves.

Tests look at a compositor from outside the program, so that a mistake in the program's own tables does not hide
itself here. The tables below are the ones of the protocols' XML files, as far as tests need them: a request or event
that is missing at the end of a table was never asked for.
"""

import array
import collections
import os
import select
import socket
import struct
import time

# Of every interface: its requests and its events, in the order of their numbers. The letters say what a message
# holds: i and u numbers, f a fixed-point number, s a text (or none), o an object (or none), n a new object of the
# interface after the colon, a an array, h a descriptor.
Interface = collections.namedtuple("Interface", "requests events")


def _table(lines):
    return [tuple(line.split(" ")) if " " in line else (line, "") for line in lines]


_WINDOW_EVENTS = [
    "title_changed s", "app_id_changed s", "state_changed u", "virtual_desktop_changed i", "themed_icon_name_changed s",
    "unmapped", "initial_state", "parent_window o", "geometry iiuu", "icon_changed", "pid_changed u",
    "virtual_desktop_entered s", "virtual_desktop_left s", "application_menu ss", "activity_entered s",
    "activity_left s", "resource_name_changed s",
]  # fmt: skip

_TEXTS = {
    "wl_display": (["sync n:wl_callback", "get_registry n:wl_registry"], ["error ous", "delete_id u"]),
    "wl_callback": ([], ["done u"]),
    "wl_registry": (["bind usun"], ["global usu", "global_remove u"]),
    "wl_seat": ([], ["capabilities u", "name s"]),
    "wl_output": ([], ["geometry iiiiissi", "mode uiii", "done", "scale i"]),
    # wlr-data-control-unstable-v1
    "zwlr_data_control_manager_v1": (
        ["create_data_source n:zwlr_data_control_source_v1", "get_data_device n:zwlr_data_control_device_v1,o"], []
    ),
    "zwlr_data_control_device_v1": (
        ["set_selection o", "destroy", "set_primary_selection o"],
        ["data_offer n:zwlr_data_control_offer_v1", "selection o", "finished", "primary_selection o"],
    ),
    "zwlr_data_control_source_v1": (["offer s", "destroy"], ["send sh", "cancelled"]),
    "zwlr_data_control_offer_v1": (["receive sh", "destroy"], ["offer s"]),
    # virtual-keyboard-unstable-v1, wlr-virtual-pointer-unstable-v1
    "zwp_virtual_keyboard_manager_v1": (["create_virtual_keyboard o,n:zwp_virtual_keyboard_v1"], []),
    "zwp_virtual_keyboard_v1": (["keymap uhu", "key uuu", "modifiers uuuu", "destroy"], []),
    "zwlr_virtual_pointer_manager_v1": (["create_virtual_pointer o,n:zwlr_virtual_pointer_v1"], []),
    "zwlr_virtual_pointer_v1": (
        ["motion uff", "motion_absolute uuuuu", "button uuu", "axis uuf", "frame", "axis_source u", "axis_stop uu",
         "axis_discrete uufi", "destroy"], []
    ),
    # KDE's fake-input and plasma-window-management
    "org_kde_kwin_fake_input": (
        ["authenticate ss", "pointer_motion ff", "button uu", "axis uf", "touch_down uff", "touch_motion uff",
         "touch_up u", "touch_cancel", "touch_frame", "pointer_motion_absolute ff", "keyboard_key uu"], []
    ),
    "org_kde_plasma_window_management": (
        ["show_desktop u", "get_window n:org_kde_plasma_window,u", "get_window_by_uuid n:org_kde_plasma_window,s"],
        ["show_desktop_changed u", "window u", "stacking_order_changed a", "stacking_order_uuid_changed s",
         "window_with_uuid us"],
    ),
    "org_kde_plasma_window": (["set_state uu"], _WINDOW_EVENTS),
}  # fmt: skip
INTERFACES = {name: Interface(_table(requests), _table(events)) for name, (requests, events) in _TEXTS.items()}


def _fields(signature):
    """The letters of a signature, each with the interface of a new object or nothing."""
    if ":" not in signature and "," not in signature:
        return [(letter, None) for letter in signature]
    found = []
    for part in signature.split(","):
        letter, _, interface = part.partition(":")
        found += [(letter, interface)] if interface else [(each, None) for each in letter]
    return found


class ProtocolError(AssertionError):
    """The compositor has ended the connection with an error."""


class Proxy:
    """An object of the compositor's. `on` maps the names of events to what is called with their arguments."""

    def __init__(self, connection, identifier, interface):
        self.connection = connection
        self.id = identifier
        self.interface = interface
        self.on = {}

    def send(self, name, *arguments):
        """Sends a request; the new object when it makes one."""
        return self.connection.send(self, name, arguments)


class Connection:
    """A client of a compositor, on a socket that is connected already.

    Nothing happens on its own: events are read while one of `roundtrip`, `dispatch` and `run_until` runs.
    """

    def __init__(self, connected):
        self._socket = connected
        self._objects = {}
        self._next = 1
        self._buffer = b""
        self._descriptors = collections.deque()
        self.display = self._make("wl_display")
        self.display.on["error"] = self._fail
        self.globals = {}  # interface: (name, version)
        self.registry = self.display.send("get_registry")
        self.registry.on["global"] = self._add_global
        self.roundtrip()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        self._socket.close()
        while self._descriptors:
            os.close(self._descriptors.popleft())

    def fileno(self):
        return self._socket.fileno()

    def _make(self, interface):
        proxy = Proxy(self, self._next, interface)
        self._objects[self._next] = proxy
        self._next += 1
        return proxy

    def _add_global(self, name, interface, version):
        self.globals[interface] = (name, version)

    def _fail(self, proxy, code, message):
        raise ProtocolError(f"{proxy.interface if proxy else 'an object'}: error {code}: {message}")

    def bind(self, interface, version=1):
        """A global of the compositor's, or nothing when it does not offer the interface in the version."""
        name, offered = self.globals.get(interface, (0, 0))
        if offered < version:
            return None
        proxy = self._make(interface)
        self.send(self.registry, "bind", (name, interface, version, proxy))
        return proxy

    # Writing

    def send(self, proxy, name, arguments):
        requests = INTERFACES[proxy.interface].requests
        opcode = next(i for i, (each, _) in enumerate(requests) if each == name)
        body, descriptors, made, rest = b"", [], None, list(arguments)
        for letter, interface in _fields(requests[opcode][1]):
            if letter == "n" and interface:
                made = self._make(interface)
                body += struct.pack("=I", made.id)
                continue
            value = rest.pop(0)
            if letter == "h":
                descriptors.append(value)
            else:
                body += _packed(letter, value)
        header = struct.pack("=II", proxy.id, (8 + len(body)) << 16 | opcode)
        ancillary = [(socket.SOL_SOCKET, socket.SCM_RIGHTS, array.array("i", descriptors))] if descriptors else []
        self._socket.sendmsg([header + body], ancillary)
        if name == "destroy":
            proxy.on = {}  # events that were on their way already
        return made

    # Reading

    def roundtrip(self, deadline=10.0):
        """Waits until the compositor has done all that was asked for so far."""
        done = []
        self.display.send("sync").on["done"] = lambda _: done.append(True)
        self.run_until(lambda: done, "the compositor answers", deadline)

    def run_until(self, condition, what, deadline=10.0):
        """Handles events until the condition holds; its value."""
        end = time.monotonic() + deadline
        while True:
            value = condition()
            if value:
                return value
            left = end - time.monotonic()
            if left <= 0:
                raise AssertionError(f"not within {deadline:g} s: {what}")
            self.dispatch(min(left, 0.1))

    def dispatch(self, patience=0.0):
        """Handles the events that are there, or that come within so many seconds."""
        readable, _, _ = select.select([self._socket], [], [], patience)
        if not readable:
            return
        data, descriptors, _, _ = socket.recv_fds(self._socket, 1 << 16, 28)
        if not data:
            raise ConnectionResetError("the compositor has closed the connection")
        self._buffer += data
        self._descriptors.extend(descriptors)
        while len(self._buffer) >= 8:
            identifier, word = struct.unpack_from("=II", self._buffer)
            size = word >> 16
            if len(self._buffer) < size:
                return
            body, self._buffer = self._buffer[8:size], self._buffer[size:]
            self._handle(identifier, word & 0xFFFF, body)

    def _handle(self, identifier, opcode, body):
        proxy = self._objects.get(identifier)
        if proxy is None:
            return
        events = INTERFACES[proxy.interface].events
        if opcode >= len(events):
            return
        name, signature = events[opcode]
        arguments = self._unpacked(signature, body)
        if proxy is self.display and name == "delete_id":
            self._objects.pop(arguments[0], None)
        elif name in proxy.on:
            proxy.on[name](*arguments)
        else:
            self._discard(signature, arguments)

    def _discard(self, signature, arguments):
        for (letter, _), value in zip(_fields(signature), arguments):
            if letter == "h":
                os.close(value)

    def _unpacked(self, signature, body):
        arguments, at = [], 0
        for letter, interface in _fields(signature):
            if letter == "h":
                arguments.append(self._descriptors.popleft())
                continue
            (number,) = struct.unpack_from("=i" if letter in "if" else "=I", body, at)
            at += 4
            if letter in "sa":
                data, number, at = body[at : at + number], number, at + (number + 3) // 4 * 4
                arguments.append(data[:-1].decode("utf-8", "replace") if letter == "s" else data)
            elif letter == "n":
                arguments.append(Proxy(self, number, interface))
                self._objects[number] = arguments[-1]
            elif letter == "o":
                arguments.append(self._objects.get(number))
            else:
                arguments.append(number / 256 if letter == "f" else number)
        return arguments


def _packed(letter, value):
    if letter in "iu":
        return struct.pack("=i" if letter == "i" else "=I", value)
    if letter == "f":
        return struct.pack("=i", round(value * 256))
    if letter in "on":
        return struct.pack("=I", value.id if value is not None else 0)
    if value is None:
        return struct.pack("=I", 0)
    data = value.encode() + b"\0" if letter == "s" else value
    return struct.pack("=I", len(data)) + data + bytes(-len(data) % 4)
