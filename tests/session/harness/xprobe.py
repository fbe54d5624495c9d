"""What can be told about a display from outside."""

import contextlib
import threading

from Xlib import X, XK, Xatom, display, error
from Xlib.ext import xtest


class XProbe:
    """A quiet look at a display through a connection of its own. Any one thread at a time."""

    def __init__(self, name):
        self._display = display.Display(name)
        self._root = self._display.screen().root
        self._lock = threading.Lock()

    def close(self):
        with self._lock, contextlib.suppress(error.ConnectionClosedError):
            self._display.close()

    def _atom(self, name):
        return self._display.intern_atom(name)

    def has_window_manager(self):
        with self._lock:
            found = self._root.get_full_property(self._atom("_NET_SUPPORTING_WM_CHECK"), Xatom.WINDOW)
            return found is not None

    def selection_owner(self, selection="CLIPBOARD"):
        """The window that owns a selection, as a number; 0 when none does."""
        with self._lock:
            owner = self._display.get_selection_owner(self._atom(selection))
            return owner if isinstance(owner, int) else owner.id

    def active_window(self):
        """The active window as a number; 0 when there is none."""
        with self._lock:
            found = self._root.get_full_property(self._atom("_NET_ACTIVE_WINDOW"), Xatom.WINDOW)
            return found.value[0] if found is not None and len(found.value) else 0

    def workspace(self):
        """The number of the current workspace, counted from 0."""
        with self._lock:
            return self._root.get_full_property(self._atom("_NET_CURRENT_DESKTOP"), Xatom.CARDINAL).value[0]

    def workspace_of(self, window):
        """The number of the window's workspace, counted from 0; nothing when its window manager does not say."""
        with self._lock:
            resource = self._display.create_resource_object("window", window)
            found = resource.get_full_property(self._atom("_NET_WM_DESKTOP"), Xatom.CARDINAL)
            return found.value[0] if found is not None and len(found.value) else None

    def fake_key(self, code, is_down):
        """Presses or releases the key with the server's code, as the keyboard itself would."""
        with self._lock:
            xtest.fake_input(self._display, X.KeyPress if is_down else X.KeyRelease, code)
            self._display.sync()

    def is_grabbed(self, key, modifiers):
        """Whether another program holds the key with exactly the modifiers ("Super", "Shift", ...) as a hot key.

        Tried under a server grab, so that the program cannot be refused because of the attempt.
        """
        with self._lock, self._server_grab():
            if not self._grab(key, modifiers):
                return True
            self._root.ungrab_key(*self._combination(key, modifiers))
            return False

    def grab(self, key, modifiers):
        """Takes the key with the modifiers as a hot key, for as long as the desktop lasts."""
        with self._lock:
            if not self._grab(key, modifiers):
                raise AssertionError("another program holds the hot key")

    def _grab(self, key, modifiers):
        refused = error.CatchError(error.BadAccess)
        combination = self._combination(key, modifiers)
        self._root.grab_key(*combination, False, X.GrabModeAsync, X.GrabModeAsync, onerror=refused)
        self._display.sync()
        return refused.get_error() is None

    def _combination(self, key, modifiers):
        bits = {"Shift": X.ShiftMask, "Control": X.ControlMask, "Super": X.Mod4Mask, "Alt": X.Mod1Mask}
        mask = 0
        for modifier in modifiers:
            mask |= bits[modifier]
        return self._display.keysym_to_keycode(XK.string_to_keysym(key)), mask

    def window_count(self):
        """How many windows there are on the display, whosever they are."""
        def count(window):
            return 1 + sum(count(child) for child in window.query_tree().children)

        with self._lock, self._server_grab():
            return count(self._root)

    @contextlib.contextmanager
    def _server_grab(self):
        self._display.grab_server()
        try:
            yield
        finally:
            self._display.ungrab_server()
            self._display.sync()
