"""What is to be seen on a display, as it changes."""

import contextlib
import time

from Xlib import X, display, error


class Pixels:
    """The pixels of a rectangle of the screen, read through a connection of its own."""

    def __init__(self, name, x, y, width, height):
        self._display = display.Display(name)
        self._root = self._display.screen().root
        self._place = (x, y, width, height)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        with contextlib.suppress(error.ConnectionClosedError):
            self._display.close()

    def now(self):
        return self._root.get_image(*self._place, X.ZPixmap, 0xFFFFFFFF).data

    def wait_for_change(self, before, deadline=10.0):
        """Looks without a pause until the rectangle is no longer as it was; the moment when that was seen."""
        end = time.monotonic() + deadline
        while time.monotonic() < end:
            if self.now() != before:
                return time.monotonic()
        raise AssertionError(f"nothing has changed within {deadline:g} s")

    def wait_for(self, wanted, deadline=10.0):
        """Looks without a pause until the rectangle is as wanted; the moment when that was seen."""
        end = time.monotonic() + deadline
        while time.monotonic() < end:
            if self.now() == wanted:
                return time.monotonic()
        raise AssertionError(f"not as wanted within {deadline:g} s")

    def wait_for_rest(self, before, quiet=0.25, deadline=10.0):
        """Looks until the rectangle has changed and then stayed as it is; the moment of its last change."""
        last, changed_at = before, None
        end = time.monotonic() + deadline
        while time.monotonic() < end:
            now, at = self.now(), time.monotonic()
            if now != last:
                last, changed_at = now, at
            elif changed_at is not None and at - changed_at > quiet:
                return changed_at
        raise AssertionError(f"no rest within {deadline:g} s")
