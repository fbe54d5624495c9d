"""Waiting for conditions, what to do about missing tools, and how a test file ends."""

import os
import shutil
import sys
import threading
import time
import unittest

POLL_SECONDS = 0.02
ALL_SKIPPED = 77  # ctest's SKIP_RETURN_CODE for these tests


class Missing(unittest.SkipTest):
    """Something that this machine does not offer."""


def wait_until(condition, what, deadline=10.0, every=POLL_SECONDS):
    """Returns the condition's first true value; fails when there is none within the deadline, in seconds.

    `what` is waited for, in words, or a function that gives them when it did not come.
    """
    pause = threading.Event()
    end = time.monotonic() + deadline
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() >= end:
            raise AssertionError(f"not within {deadline:g} s: {what() if callable(what) else what}")
        pause.wait(every)


def stays(condition, seconds, every=POLL_SECONDS):
    """Whether the condition holds from now on for so long, as far as a look every few milliseconds can tell."""
    pause = threading.Event()
    end = time.monotonic() + seconds
    while condition():
        if time.monotonic() >= end:
            return True
        pause.wait(every)
    return False


def missing(reason):
    """A visible skip on a developer's desk, a failure in CI."""
    if os.environ.get("CI"):
        raise AssertionError(f"missing in CI: {reason}")
    raise Missing(reason)


def need(*programs):
    """Makes sure that the programs are installed."""
    absent = [program for program in programs if shutil.which(program) is None]
    if absent:
        missing("not installed: " + ", ".join(absent))


def run_tests():
    """Runs the tests of the calling file; exits 77 when each of them was skipped."""
    sys.stdout.reconfigure(line_buffering=True)
    result = unittest.main(exit=False, verbosity=2).result
    if not result.wasSuccessful():
        sys.exit(1)
    if result.testsRun == 0:
        sys.exit("no test ran")
    sys.exit(ALL_SKIPPED if len(result.skipped) >= result.testsRun else 0)
