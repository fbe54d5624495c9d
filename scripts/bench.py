#!/usr/bin/python3
"""Measures the whole program and runs the small benchmarks; prints the table of budgets."""

import argparse
import json
import pathlib
import re
import statistics
import subprocess
import sys
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "session"))
sys.dont_write_bytecode = True

import bench_sway  # noqa: E402
from bench_common import (  # noqa: E402
    MB, Row, make_store, memory_after_showing_once, percentile_95, settle, start_time,
)  # fmt: skip
from harness import Desktop, Larkspool, Store, accessibility, programs, settings, wait_until  # noqa: E402
from harness.pixels import Pixels  # noqa: E402
from harness.owner import Background, Owner, SilentAfterTargets  # noqa: E402

SMALL = ROOT / "build" / "release" / "bench" / "larkspool_bench"
SHOWINGS = 40
SEARCHES = 6
MOVES_A_SECOND = 100
COMBINED = 500
COMBININGS = 5
OPENINGS = 12
# What passes by rule between the choice and the window.
SETTINGS_WAIT = 0.1
CYCLES_BEFORE, CYCLES = 100, 400
SAVES = "/iterations:400/repeats:5/real_time"
REPEATS = "/repeats:5"


# The small benchmarks that have a budget: name in the table, how to get the figure from the results by name (times
# there are in nanoseconds), budget and unit.
def time_of(name):
    return lambda results: results[name]["real_time"]


def ratio(name, other):
    return lambda results: results[name]["real_time"] / results[other]["real_time"]


def milliseconds(name):
    return lambda results: results[name]["real_time"] / 1e6


def counter(name, key):
    return lambda results: results[name][key]


def per_run(name, key):
    """A counter over all of a benchmark's runs, per run, to a thousandth: setting up and ending count once."""
    return lambda results: round(results[name][key] / results[name]["iterations"], 3)


KEYSTROKE = "searchKeystroke/0/iterations:10"
SMALL_BUDGETS = [
    ("poll with nothing new", time_of("pollWithNothingNew"), 1000, "ns"),
    ("poll with nothing new: allocations", per_run("pollWithNothingNew", "allocations"), 0, ""),
    (
        "save into 10,000 entries / bare SQLite",
        ratio(f"saveNewText/10000{SAVES}", f"bareInsertAndCommit/10000{SAVES}"),
        1.5,
        "x",
    ),
    ("duplicate check, 100,000 / 100 entries", ratio(f"duplicateCheckMiss/100000{REPEATS}", f"duplicateCheckMiss/100{REPEATS}"), 1.5, "x"),
    ("the same, finding one", ratio(f"duplicateCheckHit/100000{REPEATS}", f"duplicateCheckHit/100{REPEATS}"), 1.5, "x"),
    ("search keystroke to updated list, 10,000 texts of 1 KB", counter(KEYSTROKE, "search"), 4, "ms"),
    ("the same / a plain scan of the same memory", counter(KEYSTROKE, "ratio"), 3, "x"),
    ("longest turn, text of 50 MB, less the write", milliseconds("longestTurnText/iterations:5/manual_time"), 50, "ms"),
    (
        "longest turn, picture of 3840 x 2160, the same",
        milliseconds("longestTurnPicture/iterations:3/manual_time"),
        50,
        "ms",
    ),
    ("text of 10 MB counted and stored", milliseconds("captureTenMegabytes/iterations:10/real_time"), 300, "ms"),
]


def small_rows():
    """The rows of the small benchmarks, and every result in full for the report."""
    results = {}
    if SMALL.exists():
        print("measuring: small benchmarks", file=sys.stderr)
        with Desktop(window_manager=False) as desktop:
            report = desktop.home / "report.json"
            words = [SMALL, f"--benchmark_out={report}", "--benchmark_out_format=json"]
            subprocess.run(words, env=desktop.env, stdout=subprocess.DEVNULL, check=True)
            found = json.loads(report.read_text())["benchmarks"]
        for result in found:
            if result.get("run_type", "iteration") == "iteration" or result.get("aggregate_name") == "median":
                result["real_time"] *= {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[result["time_unit"]]
                results[result["run_name"]] = result
    rows = []
    for name, figure, budget, unit in SMALL_BUDGETS:
        try:
            rows.append(Row(name, figure(results), budget, unit))
        except KeyError as absent:
            rows.append(Row(name, None, budget, unit, f"no benchmark {absent}"))
    return rows, results


# Whole-program measures


def start_and_memory():
    with Desktop() as desktop:
        empty = start_time(desktop)
    with Desktop() as desktop:
        make_store(desktop, 10_000, 80, 200)
        full = start_time(desktop)
        memory = memory_after_showing_once(desktop)
    with Desktop() as desktop:
        make_store(desktop, 10_000, 1000, 0)
        memory_1k = memory_after_showing_once(desktop)
    return [
        Row("start to hot key live, 10,000 texts and 200 images", full * 1000, 150, "ms"),
        Row("the same / start with an empty store", full / empty, 1.5, "x", f"empty: {empty * 1000:.0f} ms"),
        Row("memory (PSS) after the panel was shown once", memory / MB, 45, "MB"),
        Row("the same, texts of 1 KB and no images", memory_1k / MB, 75, "MB"),
    ]


def panel_trigger():
    """From the hot key's press to the panel's first complete frame, both as the X server has them."""
    times = []
    with Desktop() as desktop:
        make_store(desktop, 10_000, 80, 200)
        with Larkspool(desktop) as program, Pixels(desktop.env["DISPLAY"], 860, 480, 200, 40) as middle:
            # A row that the pointer is over would light up by and by.
            desktop.run("xdotool", "mousemove", 5, 5)
            empty, complete = middle.now(), None
            for _ in range(SHOWINGS + 1):
                with desktop.keyboard.held("Super", "Shift"):
                    begin = time.monotonic()
                    with desktop.keyboard.held("v"):
                        middle.wait_for_change(empty)
                        if complete:
                            times.append(middle.wait_for(complete) - begin)
                desktop.keyboard.wait_for_focus(wait_until(program.panel, "the panel is shown"))
                if not complete:
                    settle(1)
                    complete = middle.now()
                desktop.keyboard.press("Escape")
                program.wait_until_hidden()
                middle.wait_for(empty)
    return [
        Row("panel trigger to first complete frame, median", statistics.median(times) * 1000, 10, "ms"),
        Row("the same, 95th percentile", percentile_95(times) * 1000, 16, "ms"),
    ]


def search_keystroke():
    """From a key of a search to the drawn list, as the X server has them; the searches differ in what they find."""
    times = []
    with Desktop() as desktop:
        make_store(desktop, 10_000, 1000, 0)
        with Larkspool(desktop) as program, Pixels(desktop.env["DISPLAY"], 630, 200, 660, 660) as panel:
            for _ in range(SEARCHES):
                program.open_panel()
                desktop.keyboard.type("e")
                settle(0.5)
                for key in ("n", "t", "r", "y", "Space", "7", "7"):
                    before = panel.now()
                    begin = time.monotonic()
                    desktop.keyboard.hit(key)  # held longer, it would repeat
                    times.append(panel.wait_for_rest(before) - begin)
                desktop.keyboard.press("Escape", "Escape")
                program.wait_until_hidden()
    return [Row("search keystroke to the drawn list, 95th percentile", percentile_95(times) * 1000, 16, "ms")]


class Moving:
    """How the list is drawn while the highlight moves through it."""

    # What the toolkit's own loop says of each frame.
    TIMING = {"QSG_RENDER_TIMING": "1", "QT_LOGGING_RULES": "qt.scenegraph.time.renderloop=true"}
    FRAME = re.compile(r"Frame rendered .* in (\d+)ms")

    def __init__(self, desktop, program):
        self._program = program
        self._list = Pixels(desktop.env["DISPLAY"], 900, 320, 40, 500)
        self._first_line = len(program.stderr.all())

    def watch(self):
        """Looks until nothing has changed for a second; the moments at which the list was seen to change."""
        pause, moments = threading.Event(), []
        with self._list:
            last, end = self._list.now(), time.monotonic() + 1
            while time.monotonic() < end:
                now, at = self._list.now(), time.monotonic()
                if now != last:
                    moments.append(at)
                    last, end = now, at + 1
                pause.wait(0.001)
        return moments

    def rows(self, how, moments):
        """The table's rows, and whether the way to the end was really gone."""
        lines = self._program.stderr.all()[self._first_line :]
        frames = [int(found.group(1)) for found in map(self.FRAME.search, lines) if found]
        gaps = [(after - before) * 1000 for before, after in zip(moments, moments[1:])]
        seen = f"as seen on the screen, {len(gaps)}: {percentile_95(gaps):.0f} ms, longest {max(gaps):.0f} ms"
        pace = f"{(moments[-1] - moments[0]):.0f} s, {len(frames)} frames"
        return [
            Row(f"{how} through 10,000 rows: frame, 95th percentile", percentile_95(frames), 16, "ms", seen),
            Row("the same, longest", max(frames), 16, "ms", pace),
        ]


def highlighted(desktop):
    rows = [node for node in accessibility.nodes(desktop, "list item") if "selected" in node.states]
    return rows[0].name if rows else None


def move_through(how, act):
    """`act` makes the highlight go down all the way, and returns what the watcher has seen."""
    with Desktop() as desktop:
        make_store(desktop, 10_000, 80, 200)
        oldest = Store(desktop.store_file).contents()[-1]
        desktop.env.update(Moving.TIMING)
        with Larkspool(desktop, may_print=[r"^qt\.scenegraph\.time\."]) as program:
            program.open_panel()
            settle(1)
            moving = Moving(desktop, program)
            moments = act(desktop, moving)
            wait_until(lambda: highlighted(desktop) == oldest.strip(), "the highlight is at the end")
            return moving.rows(how, moments)


def hold_down():
    def act(desktop, moving):
        desktop.run("xset", "r", "rate", 200, MOVES_A_SECOND)
        with desktop.keyboard.held("Down"):
            return moving.watch()

    return move_through("Down held", act)


def turn_wheel():
    def act(desktop, moving):
        pace = ["--repeat", 10_200, "--delay", 1000 // MOVES_A_SECOND]
        desktop.run("xdotool", "mousemove", 960, 600)
        desktop.spawn("xdotool", "click", *pace, 5)
        return moving.watch()

    return move_through("wheel turned", act)


def combine_many():
    """From Return to the drawn combine panel, as the X server has them."""
    times = []
    with Desktop() as desktop:
        make_store(desktop, 10_000, 80, 0)
        with Larkspool(desktop) as program, Pixels(desktop.env["DISPLAY"], 630, 230, 660, 600) as panel:
            # A row that the pointer is over would fade to what it is without.
            desktop.run("xdotool", "mousemove", 5, 5)
            program.open_panel()
            for _ in range(COMBININGS):
                desktop.run("xdotool", "key", "--repeat", COMBINED - 1, "--delay", 12, "shift+Down", deadline=60)
                settle(1)
                before = panel.now()
                begin = time.monotonic()
                desktop.keyboard.hit("Return")
                times.append(panel.wait_for_rest(before) - begin)
                wait_until(
                    lambda: accessibility.nodes(desktop, "dialog", f"Combine {COMBINED} items"), "the combine panel"
                )
                desktop.keyboard.press("Escape", "Escape")
                program.wait_until_hidden()
                program.open_panel()
    return [
        Row(f"combine panel of {COMBINED} entries drawn, median", statistics.median(times) * 1000, 16, "ms",
            f"longest of {COMBININGS}: {max(times) * 1000:.0f} ms"),
    ]


def use_in_cycles():
    """What the use of the panel leaves in memory."""
    with Desktop() as desktop:
        make_store(desktop, 1000, 80, 20)
        with Larkspool(desktop) as program, Pixels(desktop.env["DISPLAY"], 900, 230, 40, 500) as panel:

            def press_and_see(*keys):
                before = panel.now()
                desktop.keyboard.press(*keys)
                panel.wait_for_rest(before, quiet=0.1)

            def cycle(number):
                program.open_panel()
                # Nothing is edited before what is typed has been sought.
                press_and_see("1", str(number % 10))
                press_and_see("Down", "Down", "ctrl+e")
                if number == 0:
                    wait_until(lambda: accessibility.nodes(desktop, "text", "Edit"), "an entry of a search is edited")
                press_and_see("Escape")
                press_and_see("Escape")
                desktop.keyboard.press("Escape")
                program.wait_until_hidden()

            def memory_after(cycles):
                for number in cycles:
                    cycle(number)
                settle(2)
                return program.memory("Pss"), program.memory("Private_Dirty")

            before, own_before = memory_after(range(CYCLES_BEFORE))
            after, own_after = memory_after(range(CYCLES_BEFORE, CYCLES_BEFORE + CYCLES))
    return [
        Row(f"{CYCLES} times opened, searched, edited and hidden: memory (PSS) grown by", (after - before) / MB, 1, "MB",
            # Of the PSS, other programs that use the same libraries take a share.
            f"before: {before / MB:.1f} MB; written by it alone: {(own_after - own_before) / MB:.2f} MB more"),
    ]


def settings_window():
    """From the choice in the panel's menu to the settings on the screen, and what closing them leaves in memory."""
    times, memory = [], []
    with Desktop() as desktop:
        make_store(desktop, 1000, 80, 0)
        with Larkspool(desktop, may_print=[settings.LINES]) as program, Pixels(
            desktop.env["DISPLAY"], 860, 480, 200, 40
        ) as middle:
            window = settings.Settings(desktop, program)
            empty = middle.now()
            program.open_panel()
            x, y = window.node("push button", "Menu").middle
            memory.append(program.memory("Anonymous"))
            for number in range(OPENINGS):
                if number:
                    program.open_panel()
                desktop.run("xdotool", "mousemove", x, y, "click", 1)
                desktop.keyboard.press("Down")
                settle(0.3)
                begin = time.monotonic()
                desktop.keyboard.hit("Return")
                middle.wait_for(empty)
                times.append(middle.wait_for_change(empty) - begin)
                window.wait_until_open()
                settle(0.3)
                window.close()
                middle.wait_for(empty)
                settle(0.3)
                memory.append(program.memory("Anonymous"))
    beyond = [(seconds - SETTINGS_WAIT) * 1000 for seconds in times]
    return [
        Row("settings shown, beyond their wait of 0.1 s, first time", beyond[0], 250, "ms"),
        Row("the same, later: median", statistics.median(beyond[1:]), 100, "ms", f"longest: {max(beyond[1:]):.0f} ms"),
        Row("memory after closing them, from the second time on", (memory[-1] - memory[1]) / MB, 2, "MB",
            f"{OPENINGS} times; the first leaves {(memory[1] - memory[0]) / MB:.1f} MB"),
    ]


def fast_copies():
    texts = [f"copy number {number}" for number in range(100)]
    with Desktop() as desktop, Larkspool(desktop):
        store = Store(desktop.store_file)
        owner = Owner(desktop.env["DISPLAY"])
        start = time.monotonic()
        for number, text in enumerate(texts):
            owner.copy_text(text)
            last = time.monotonic()
            owner.serve(start + (number + 1) * 0.02)
        with Background(owner):
            wait_until(lambda: store.item(texts[-1]), "the last copy is stored", 30)
        seconds = time.monotonic() - last
        kept = store.contents()
        in_order = kept == [text for text in reversed(texts) if text in set(kept)]
    return [
        Row("100 copies 20 ms apart: lost or out of order", 100 - len(kept) + (not in_order), 0, "copies"),
        Row("100 copies 20 ms apart: last one stored after", seconds * 1000, 1000, "ms"),
    ]


def hanging_owner():
    with Desktop() as desktop, Larkspool(desktop):
        store = Store(desktop.store_file)

        def copy_and_time(text):
            start = time.monotonic()
            programs.xclip_copy(desktop, text.encode())
            store.wait_for(text, 90)
            return time.monotonic() - start

        as_ever = max(copy_and_time(f"before {number}") for number in range(5))
        times = []
        for number in range(5):
            owner = SilentAfterTargets(desktop.env["DISPLAY"])
            owner.copy({"UTF8_STRING": b"never given"})
            with Background(owner):
                wait_until(lambda: "UTF8_STRING" in owner.asked_for, "the owner is asked")
                times.append(copy_and_time(f"after {number}"))
    return [Row("copy after an owner that hangs, longest of 5", max(times) * 1000, 1000, "ms",
                f"without: {as_ever * 1000:.0f} ms")]


def large_text():
    text = ("the quick brown fox jumps over the lazy dog, again and again\n" * 820_000)[: 50 * MB].encode()
    with Desktop() as desktop, Larkspool(desktop) as program:
        store = Store(desktop.store_file)
        programs.xclip_copy(desktop, b"a small one first")
        store.wait_for("a small one first")
        before = program.memory("Rss")
        program.reset_peak_memory()
        programs.xclip_copy(desktop, text)
        wait_until(lambda: store.query("SELECT 1 FROM ClipboardItem WHERE length(content) > 1000"), "stored", 90)
        peak = program.peak_memory() - before
        programs.xclip_copy(desktop, b"a small one after")
        store.wait_for("a small one after")
        settle(2)
        after = program.memory("Rss") - before
    return [
        Row("text of 50 MB copied: memory peak / payload", peak / len(text), 3, "x"),
        Row("text of 50 MB copied: memory kept after the next copy", after / MB, 5, "MB"),
    ]


def idle():
    with Desktop() as desktop, Larkspool(desktop) as program:
        programs.xclip_copy(desktop, b"something")
        Store(desktop.store_file).wait_for("something")
        program.open_panel()
        desktop.keyboard.press("Escape")
        program.wait_until_hidden()
        settle(3)
        before = program.wake_ups()
        settle(10)
        woken = program.wake_ups() - before
    return [Row("idle with the panel hidden: wake-ups a second", woken / 10, 3, "/s")]


WHOLE = [
    start_and_memory,
    panel_trigger,
    search_keystroke,
    hold_down,
    turn_wheel,
    combine_many,
    use_in_cycles,
    settings_window,
    fast_copies,
    hanging_owner,
    large_text,
    idle,
    *bench_sway.MEASURES,
]


def print_table(rows):
    table = [["what", "measured", "budget", "", "note"]] + [row.cells() for row in rows]
    widths = [max(len(line[column]) for line in table) for column in range(5)]
    for number, line in enumerate(table):
        print("  ".join(cell.ljust(width) for cell, width in zip(line, widths)).rstrip())
        if number == 0:
            print("  ".join("-" * width for width in widths))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--strict", action="store_true", help="end with 1 when a budget is not held or not measured")
    parser.add_argument("--only", metavar="PART", help="only measures whose function's name contains this")
    options = parser.parse_args()

    rows, results = ([], {}) if options.only else small_rows()
    for measure in WHOLE:
        if options.only and options.only not in measure.__name__:
            continue
        print(f"measuring: {measure.__name__.replace('_', ' ')}", file=sys.stderr)
        try:
            rows += measure()
        except Exception as failure:  # one measure that fails does not hide the others
            rows.append(Row(measure.__name__.replace("_", " "), None, 0, "", f"{failure}"))
    if results:
        print("All small benchmarks:")
        for name, result in results.items():
            print(f"  {name:45} {result['real_time']:>14,.0f} ns")
        print()
    print_table(rows)
    missed = [row for row in rows if row.verdict() != "held"]
    print(f"\n{len(rows) - len(missed)} of {len(rows)} budgets held")
    return 1 if options.strict and missed else 0


if __name__ == "__main__":
    sys.exit(main())
