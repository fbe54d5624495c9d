"""The program under test."""

import os
import pathlib
import re
import signal
import subprocess
import time

from . import accessibility, children
from .waiting import wait_until

HOT_KEY = "super+shift+v"
PANEL_TITLE = "^Larkspool$"
# In the panel, in pixels from its upper left corner.
MENU_BUTTON = (651, 24)
SEEDED = ["[Larkspool] Seeded 5 default categories", "[Larkspool] Seeded 10 default templates"]


def binary():
    """The program's file: $LARKSPOOL_BINARY, else the one that belongs to the tests' own build."""
    path = os.environ.get("LARKSPOOL_BINARY") or os.environ.get("LARKSPOOL_BUILT_BINARY")
    if not path:
        raise AssertionError("set LARKSPOOL_BINARY to the program to be tested")
    if not os.access(path, os.X_OK):
        raise AssertionError(f"no such program: {path}")
    return pathlib.Path(path).resolve()


class Larkspool:
    """One run of the program on a desktop.

    Whatever it prints beyond its two seeding lines has to be announced with `may_print` (regular expressions), or
    `stop` fails: a warning that nobody expects is a defect.
    """

    def __init__(self, desktop, wrapper=(), may_print=()):
        self._desktop = desktop
        self._wrapper = wrapper
        self._may_print = [re.compile(pattern) for pattern in may_print]
        self.process = None

    def __enter__(self):
        self.start()
        self.wait_for_hot_key()
        return self

    def __exit__(self, kind, *_):
        if self.process.poll() is None:
            if kind is None:
                self.stop()
            else:
                self.kill()
                print("larkspool printed:", *self.stdout.finish(), *self.stderr.finish(), sep="\n  ")

    def start(self):
        """Starts the program, without waiting for anything."""
        self.started_at = time.monotonic()
        self.process = self._desktop.spawn(
            *self._wrapper, self._desktop.readable(binary()), stdout=subprocess.PIPE, stderr=subprocess.PIPE
        )
        self.stdout = children.Lines(self.process.stdout)
        self.stderr = children.Lines(self.process.stderr)

    @property
    def pid(self):
        return self.process.pid

    def wait_for_hot_key(self, deadline=20.0, every=0.01):
        """Waits until a press of the default hot key would be taken; the seconds since the start."""
        def is_live():
            if self.process.poll() is not None:
                raise AssertionError(f"ended with {self.process.returncode}: {self.stdout.all()} {self.stderr.all()}")
            return self._desktop.takes_hot_key(self)

        wait_until(is_live, "the hot key is live", deadline, every)
        return time.monotonic() - self.started_at

    def unexpected_lines(self):
        """What has been printed and was not announced."""
        def is_announced(line):
            return any(pattern.search(line) for pattern in self._may_print)

        printed = [line for line in self.stdout.all() if line not in SEEDED] + self.stderr.all()
        return [line for line in printed if not is_announced(line)]

    def stop(self, deadline=10.0):
        """Asks the program to end, which it has to do cleanly and without an unexpected word; its output lines."""
        self.process.send_signal(signal.SIGTERM)
        try:
            code = self.process.wait(deadline)
        except subprocess.TimeoutExpired:
            raise AssertionError(f"still runs {deadline:g} s after SIGTERM") from None
        lines = self.stdout.finish()
        self.stderr.finish()
        if code != 0:
            raise AssertionError(f"exit code {code}; printed {lines} {self.stderr.all()}")
        unexpected = self.unexpected_lines()
        if unexpected:
            raise AssertionError(f"unexpected lines: {unexpected}")
        return lines

    def kill(self):
        """kill -9."""
        self.process.kill()
        self.process.wait(10)

    # The panel

    def panel(self):
        """The panel's window while it is shown, else nothing."""
        windows = self._desktop.keyboard.windows(PANEL_TITLE)
        return windows[0] if windows else None

    def open_panel(self, deadline=10.0):
        """Presses the hot key and waits until the panel has the keyboard; its window."""
        self._desktop.keyboard.press(HOT_KEY)
        window = wait_until(self.panel, "the panel is shown", deadline)
        self._desktop.keyboard.wait_for_focus(window, deadline)
        return window

    def wait_until_hidden(self, deadline=10.0):
        wait_until(lambda: self.panel() is None, "the panel is hidden", deadline)

    def rows(self):
        """The names of the history's rows as a screen reader hears them, from top to bottom."""
        def heard():
            names = accessibility.rows(self._desktop)
            return None if names is None else (names,)

        return wait_until(heard, "the list is in the accessibility tree")[0]

    # What it costs

    def memory(self, field="Pss"):
        """A figure of the process's memory in bytes: Pss, Rss, ..."""
        text = pathlib.Path(f"/proc/{self.pid}/smaps_rollup").read_text()
        return int(re.search(rf"^{field}:\s+(\d+) kB", text, re.M).group(1)) * 1024

    def peak_memory(self):
        """The largest resident size since `reset_peak_memory`, in bytes."""
        text = pathlib.Path(f"/proc/{self.pid}/status").read_text()
        return int(re.search(r"^VmHWM:\s+(\d+) kB", text, re.M).group(1)) * 1024

    def reset_peak_memory(self):
        pathlib.Path(f"/proc/{self.pid}/clear_refs").write_text("5")

    def wake_ups(self):
        """How often its threads have gone to sleep so far, which is how often they were woken."""
        count = 0
        for status in pathlib.Path(f"/proc/{self.pid}/task").glob("*/status"):
            count += int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", status.read_text(), re.M).group(1))
        return count

    def memory_holds(self, needle):
        """Whether the bytes occur in the process's own memory. PermissionError when that may not be read."""
        keep = len(needle) - 1
        maps = pathlib.Path(f"/proc/{self.pid}/maps").read_text().splitlines()
        with open(f"/proc/{self.pid}/mem", "rb", buffering=0) as memory:
            for line in maps:
                place, rights, *_ = line.split()
                if not rights.startswith("rw"):
                    continue
                start, stop = (int(part, 16) for part in place.split("-"))
                if _occurs(memory, start, stop, needle, keep):
                    return True
        return False


def _occurs(memory, start, stop, needle, keep):
    tail = b""
    while start < stop:
        try:
            memory.seek(start)
            block = memory.read(min(stop - start, 1 << 20))
        except OSError:  # a mapping without memory behind it
            return False
        if not block:
            return False
        if needle in tail + block:
            return True
        tail = block[-keep:]
        start += len(block)
    return False
