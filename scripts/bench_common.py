"""What the measures of the whole program share: the lines of the table, a store of any size, and a few figures."""

import pathlib
import statistics
import sys
import threading
import time
import uuid

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests" / "session"))
sys.dont_write_bytecode = True

from harness import Larkspool, Store, pictures, wait_until  # noqa: E402

MB = 1_000_000
STARTS = 7


class Row:
    """One line of the table. `measured` is nothing when it was not run."""

    def __init__(self, name, measured, budget, unit, note=""):
        self.name, self.measured, self.budget, self.unit, self.note = name, measured, budget, unit, note

    def verdict(self):
        if self.measured is None:
            return "not run"
        return "held" if self.measured <= self.budget else "NOT HELD"

    def cells(self):
        measured = "" if self.measured is None else f"{self.measured:.3g} {self.unit}"
        return [self.name, measured, f"{self.budget:g} {self.unit}", self.verdict(), self.note]


def fill(store, texts, characters, images):
    """Puts entries into a store that the program has made, oldest first."""
    import sqlite3

    picture = pictures.png(816, 817)  # noise does not compress: about 2 MB
    assert 1.9 * MB < len(picture) < 2.1 * MB, len(picture)
    start = time.time() - 1_000_000
    insert = (
        "INSERT INTO ClipboardItem (id, content, type, imageData, sourceAppName, sourceAppBundleId, isPinned,"
        " createdAt, characterCount, categoryId) VALUES (?, ?, ?, ?, 'Editor', 'org.example.editor', 0, ?, ?, NULL)"
    )

    def rows():
        every = max(1, texts // images) if images else 0
        for number in range(texts):
            text = f"entry {number} of many, ".ljust(characters, "abcdefgh "[number % 9])
            yield (str(uuid.uuid4()), text, "text", None, start + number, characters)
            if every and number % every == 0 and number // every < images:
                name = f"Image {number}"
                yield (str(uuid.uuid4()), name, "image", picture, start + number + 0.5, len(name))

    connection = sqlite3.connect(store.path)
    with connection:
        connection.executemany(insert, rows())
    connection.close()


def make_store(desktop, texts, characters, images, may_print=()):
    with Larkspool(desktop, may_print=may_print):
        pass
    fill(Store(desktop.store_file), texts, characters, images)


def settle(seconds):
    """Lets the program be, so that what it does by itself is over, or can be counted."""
    threading.Event().wait(seconds)


def percentile_95(values):
    return sorted(values)[len(values) * 95 // 100]


def start_time(desktop, may_print=()):
    """The median time from start to a live hot key, in seconds; the first start warms the caches."""
    times = []
    for number in range(STARTS + 1):
        program = Larkspool(desktop, may_print=may_print)
        program.start()
        seconds = program.wait_for_hot_key(every=0.002)
        if number:
            times.append(seconds)
        program.stop()
    return statistics.median(times)


def memory_after_showing_once(desktop, may_print=()):
    with Larkspool(desktop, may_print=may_print) as program:
        program.open_panel()
        wait_until(program.rows, "the list has rows")
        desktop.keyboard.press("Escape")
        program.wait_until_hidden()
        settle(2)
        return program.memory("Pss")
