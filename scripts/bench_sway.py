"""The measures on sway, for the Wayland back ends: the same budgets as on X11."""

import json
import statistics
import threading
import time

from bench_common import MB, Row, make_store, memory_after_showing_once, percentile_95, settle, start_time

from harness import Larkspool, Store, children, wait_until
from harness.application import Application
from harness.data_control import Owner
from harness.sway import Sway
from harness.wayland_programs import wl_copy

SHOWINGS = 40
# sway offers programs no hot keys, which is said once.
MAY_PRINT = (r"^\[Larkspool\] No hot key: ", r"^Failed to register hotkey: ")


class Mappings:
    """When sway maps the panel, which is when it has got its first frame. In use for as long as the block lasts."""

    def __init__(self, desktop):
        self._desktop = desktop
        self._moments = []
        self._has_come = threading.Condition()

    def __enter__(self):
        self._process = self._desktop.spawn(
            "swaymsg", "-r", "-m", "-t", "subscribe", '["window"]', stdout=children.subprocess.PIPE
        )
        threading.Thread(target=self._read, daemon=True).start()
        return self

    def __exit__(self, *_):
        children.end(self._process)

    def _read(self):
        for line in self._process.stdout:
            moment = time.monotonic()
            event = json.loads(line)
            if event["change"] == "new" and event["container"].get("app_id") == "org.larkspool.Larkspool":
                with self._has_come:
                    self._moments.append(moment)
                    self._has_come.notify_all()

    def wait_for(self, number):
        """The moment of that mapping, counted from 0."""
        with self._has_come:
            if not self._has_come.wait_for(lambda: len(self._moments) > number, 10):
                raise AssertionError("the panel is not mapped")
            return self._moments[number]


def sway_start_and_memory():
    with Sway() as desktop:
        empty = start_time(desktop, MAY_PRINT)
    with Sway() as desktop:
        make_store(desktop, 10_000, 80, 200, MAY_PRINT)
        full = start_time(desktop, MAY_PRINT)
        memory = memory_after_showing_once(desktop, MAY_PRINT)
    return [
        Row("sway: start to its name on the bus, 10,000 texts and 200 images", full * 1000, 150, "ms"),
        Row("sway: the same / start with an empty store", full / empty, 1.5, "x", f"empty: {empty * 1000:.0f} ms"),
        Row("sway: memory (PSS) after the panel was shown once", memory / MB, 45, "MB"),
    ]


def sway_panel_trigger():
    """From the call that shows the panel to its first frame, as the compositor gets it."""
    times = []
    with Sway() as desktop:
        make_store(desktop, 10_000, 80, 200, MAY_PRINT)
        with Larkspool(desktop, may_print=MAY_PRINT) as program, Application(desktop) as bus, Mappings(desktop) as maps:
            for number in range(SHOWINGS + 1):
                begin = time.monotonic()
                bus.activate()
                mapped = maps.wait_for(number)
                if number:  # the first one warms the caches
                    times.append(mapped - begin)
                desktop.keyboard.wait_for_focus(wait_until(program.panel, "the panel is shown"))
                desktop.keyboard.press("Escape")
                program.wait_until_hidden()
                settle(0.1)
    return [
        Row("sway: panel trigger to its first frame, median", statistics.median(times) * 1000, 10, "ms"),
        Row("sway: the same, 95th percentile", percentile_95(times) * 1000, 16, "ms"),
    ]


def sway_fast_copies():
    texts = [f"copy number {number}" for number in range(100)]
    with Sway() as desktop, Larkspool(desktop, may_print=MAY_PRINT), Owner(desktop) as owner:
        store = Store(desktop.store_file)
        start = time.monotonic()
        for number, text in enumerate(texts):
            owner.copy_text(text)
            last = time.monotonic()
            owner.serve_until(start + (number + 1) * 0.02)
        wait_until(lambda: store.item(texts[-1]), "the last copy is stored", 30)
        seconds = time.monotonic() - last
        kept = store.contents()
        in_order = kept == [text for text in reversed(texts) if text in set(kept)]
    return [
        Row("sway: 100 copies 20 ms apart: lost or out of order", 100 - len(kept) + (not in_order), 0, "copies"),
        Row("sway: 100 copies 20 ms apart: last one stored after", seconds * 1000, 1000, "ms"),
    ]


def sway_idle():
    with Sway() as desktop, Larkspool(desktop, may_print=MAY_PRINT) as program:
        wl_copy(desktop, b"something")
        Store(desktop.store_file).wait_for("something")
        program.open_panel()
        desktop.keyboard.press("Escape")
        program.wait_until_hidden()
        settle(3)
        before = program.wake_ups()
        settle(10)
        woken = program.wake_ups() - before
    return [Row("sway: idle with the panel hidden: wake-ups a second", woken / 10, 3, "/s")]


MEASURES = [sway_start_and_memory, sway_panel_trigger, sway_fast_copies, sway_idle]
