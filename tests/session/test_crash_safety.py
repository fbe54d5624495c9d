"""kill -9 at any moment."""

import concurrent.futures
import random
import threading
import time
import unittest

from harness import Desktop, Larkspool, Store, run_tests
from harness.owner import Owner

KILLS = 200
DESKTOPS = 4  # most of a round is waiting, so several desktops share the machine
LONGEST_LIFE = 1.2  # seconds after the hot key is live: two polls and a bit
PAUSE = 0.015


class Seen:
    """What a reader of the store has seen there so far, from a thread of its own."""

    def __init__(self, store):
        self._store = store
        self._is_over = threading.Event()
        self._thread = threading.Thread(target=self._look, daemon=True)
        self.contents = set()
        self.failure = None

    def _look(self):
        try:
            while not self._is_over.wait(0.01):
                self.contents.update(self._store.contents())
        except Exception as failure:  # handed to the test
            self.failure = failure

    def __enter__(self):
        self._thread.start()
        return self

    def __exit__(self, *_):
        self._is_over.set()
        self._thread.join(30)


class Round:
    """Starts the program over and over on one desktop, each time to be killed under a stream of copies."""

    def __init__(self, desktop, seed):
        self._desktop = desktop
        self._store = Store(desktop.store_file)
        self._random = random.Random(seed)
        self._number = 0
        self.kept = set()

    def kill_once(self):
        program = Larkspool(self._desktop)
        program.start()
        program.wait_for_hot_key()
        life = self._random.uniform(0, LONGEST_LIFE)
        with Seen(self._store) as seen:
            self._copy_until(time.monotonic() + life)
            program.kill()
        if seen.failure:
            raise seen.failure
        unexpected = program.unexpected_lines()
        if unexpected:
            raise AssertionError(f"unexpected lines: {unexpected}")
        self.kept |= seen.contents

    def check(self):
        """The file is sound, and nothing that was there once is gone."""
        if self._store.integrity() != "ok":
            raise AssertionError(f"integrity check: {self._store.integrity()}")
        lost = self.kept - set(self._store.contents())
        if lost:
            raise AssertionError(f"lost: {sorted(lost)}")

    def check_after_the_next_start(self):
        with Larkspool(self._desktop):
            self.check()

    def _copy_until(self, moment):
        owner = Owner(self._desktop.env["DISPLAY"])
        try:
            while time.monotonic() < moment:
                self._number += 1
                owner.copy_text(f"copy {self._number} of seed")
                owner.serve(min(moment, time.monotonic() + PAUSE))
        finally:
            owner.close()


def survive(seed, kills):
    with Desktop(window_manager=False) as desktop:
        rounds = Round(desktop, seed)
        for _ in range(kills):
            rounds.kill_once()
            rounds.check()
        rounds.check_after_the_next_start()
        return len(rounds.kept)


class CrashSafety(unittest.TestCase):
    def test_two_hundred_kills_under_a_stream_of_copies_lose_nothing_that_a_poll_has_taken(self):
        seed = random.SystemRandom().randrange(1 << 30)
        print(f"seed {seed}")
        with concurrent.futures.ThreadPoolExecutor(DESKTOPS) as pool:
            kept = list(pool.map(lambda number: survive(seed + number, KILLS // DESKTOPS), range(DESKTOPS)))
        print(f"{KILLS} kills, {sum(kept)} copies taken before one and there after all")
        self.assertGreater(min(kept), KILLS // DESKTOPS)


if __name__ == "__main__":
    run_tests()
