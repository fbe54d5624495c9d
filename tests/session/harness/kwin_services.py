"""What KWin tells over the message bus: a picture of its screen, and which hot keys are in use."""

import os
import threading

import gi

gi.require_version("GdkPixbuf", "2.0")
gi.require_version("Gio", "2.0")
from gi.repository import GdkPixbuf, Gio, GLib  # noqa: E402

from .waiting import wait_until  # noqa: E402

HOT_KEYS = "org.kde.kglobalaccel"
PLACE = ("org.kde.KWin", "/org/kde/KWin/ScreenShot2", "org.kde.KWin.ScreenShot2")


def _connect(address):
    flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
    return Gio.DBusConnection.new_for_address_sync(address, flags, None, None)


def hot_key_is_active(address, key):
    """Whether a running program has the key, in Qt's numbers, as its hot key."""
    bus = _connect(address)

    def ask(path, interface, method, arguments):
        flags = Gio.DBusCallFlags.NONE
        return bus.call_sync(HOT_KEYS, path, interface, method, arguments, None, flags, 10000, None).unpack()[0]

    try:
        # Keys of programs that have ended are remembered, and are not active.
        service = ("/kglobalaccel", "org.kde.KGlobalAccel")
        holders = ask(*service, "getGlobalShortcutsByKey", GLib.Variant("(i)", (key,)))
        components = [ask(*service, "getComponent", GLib.Variant("(s)", (holder[2],))) for holder in holders]
        return any(ask(path, "org.kde.kglobalaccel.Component", "isActive", None) for path in components)
    except GLib.Error:  # not there yet
        return False
    finally:
        bus.close_sync(None)


def capture(address, path):
    """Writes the screen to a PNG file."""
    bus = _connect(address)
    reader, writer = os.pipe()
    descriptors = Gio.UnixFDList.new()
    arguments = GLib.Variant("(a{sv}h)", ({}, descriptors.append(writer)))
    os.close(writer)
    blocks = []
    thread = threading.Thread(target=_read, args=(reader, blocks), daemon=True)
    thread.start()
    answer, _ = bus.call_with_unix_fd_list_sync(
        *PLACE, "CaptureActiveScreen", arguments, None, Gio.DBusCallFlags.NONE, 10000, descriptors, None
    )
    facts = answer.unpack()[0]
    size = facts["stride"] * facts["height"]
    wait_until(lambda: sum(map(len, blocks)) >= size, "the whole picture")
    bus.close_sync(None)
    _save(b"".join(blocks), facts, path)


def _read(reader, blocks):
    with os.fdopen(reader, "rb", buffering=0) as pipe:
        while block := pipe.read(1 << 20):
            blocks.append(block)


def _save(data, facts, path):
    """From blue, green, red and a fourth byte to red, green and blue."""
    width, height, stride = facts["width"], facts["height"], facts["stride"]
    rows = bytearray(width * height * 3)
    for y in range(height):
        row = data[y * stride : y * stride + width * 4]
        for channel in range(3):
            rows[y * width * 3 + channel : (y + 1) * width * 3 : 3] = row[2 - channel :: 4]
    picture = GdkPixbuf.Pixbuf.new_from_bytes(
        GLib.Bytes.new(bytes(rows)), GdkPixbuf.Colorspace.RGB, False, 8, width, height, width * 3
    )
    picture.savev(str(path), "png", [], [])
