"""A desktop of a test's own: display, message bus, window manager, home, and real programs on it."""

from .desktop import Desktop
from .larkspool import Larkspool
from .store import Store
from .waiting import Missing, missing, need, run_tests, stays, wait_until

__all__ = ["Desktop", "Larkspool", "Missing", "Store", "missing", "need", "run_tests", "stays", "wait_until"]
