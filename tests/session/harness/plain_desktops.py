"""Desktops that offer less than others."""

import contextlib

from Xlib import XK, X, display
from Xlib.protocol import event

from .desktop import Desktop


class DesktopWithoutFakeKeys(Desktop):
    """Its X server lacks the XTEST extension, so that no program can press keys; nor can the harness, which has to
    make do with events that it sends to one window."""

    def _first_line(self, command_for):
        def command(descriptor):
            words = command_for(descriptor)
            return [*words, "-extension", "XTEST"] if words[0] == "Xvfb" else words

        return super()._first_line(command)

    def send_key(self, window, name):
        """Sends the events of a key's press and release to a window, as if it had been hit there."""
        with contextlib.closing(display.Display(self.env["DISPLAY"])) as server:
            target = server.create_resource_object("window", window)
            root = server.screen().root
            values = {
                "time": X.CurrentTime, "root": root, "window": target, "child": X.NONE, "same_screen": 1,
                "root_x": 0, "root_y": 0, "event_x": 0, "event_y": 0, "state": 0,
                "detail": server.keysym_to_keycode(XK.string_to_keysym(name)),
            }  # fmt: skip
            for kind in (event.KeyPress, event.KeyRelease):
                target.send_event(kind(**values))
            server.sync()
