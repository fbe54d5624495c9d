"""Copies that follow each other faster than the poll, on compositors that let programs see the clipboard."""

import unittest

from harness import run_tests
from harness.kwin import KWin
from harness.sway import Sway
from harness.wayland_cases import FastCopiesCases


class OnSway(FastCopiesCases, unittest.TestCase):
    may_print = (r"^\[Larkspool\] No hot key: ", r"^Failed to register hotkey: ")
    desktop = Sway


class OnKWin(FastCopiesCases, unittest.TestCase):
    desktop = KWin


if __name__ == "__main__":
    run_tests()
