"""Copies that follow each other faster than the poll."""

import time
import unittest

from harness import Desktop, Larkspool, Store, run_tests, wait_until
from harness.owner import Background, Owner

COUNT = 100
PAUSE = 0.02


class FastCopies(unittest.TestCase):
    def test_a_hundred_copies_twenty_milliseconds_apart_are_all_kept_in_order(self):
        texts = [f"copy number {number}" for number in range(COUNT)]
        with Desktop() as desktop, Larkspool(desktop):
            store = Store(desktop.store_file)
            owner = Owner(desktop.env["DISPLAY"])
            start = time.monotonic()
            for number, text in enumerate(texts):
                owner.copy_text(text)
                owner.serve(start + (number + 1) * PAUSE)
            with Background(owner):
                wait_until(lambda: store.item(texts[-1]), "the last one is stored", 10)
            self.assertEqual(store.contents(), texts[::-1])
            times = [item["createdAt"] for item in store.items()]
            self.assertEqual(times, sorted(times, reverse=True))


if __name__ == "__main__":
    run_tests()
