"""Processes that are ours to end, and that never outlive us."""

import ctypes
import os
import signal
import subprocess
import threading

_PR_SET_PDEATHSIG = 1
_libc = ctypes.CDLL(None, use_errno=True)


def _die_with_parent():
    _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGTERM)


def spawn(command, env, **options):
    """Starts a program in a process group of its own, so that what it starts can be ended with it."""
    options.setdefault("stdin", subprocess.DEVNULL)
    options.setdefault("stdout", subprocess.DEVNULL)
    options.setdefault("stderr", subprocess.DEVNULL)
    return subprocess.Popen(
        [str(word) for word in command], env=env, start_new_session=True, preexec_fn=_die_with_parent, **options
    )


def end(process, patience=3.0):
    """Ends a program started by `spawn`, and its group: asked first, then not."""
    _signal_group(process, signal.SIGTERM)
    try:
        process.wait(patience)
    except subprocess.TimeoutExpired:
        _signal_group(process, signal.SIGKILL)
        process.wait(patience)


def _signal_group(process, number):
    if process.poll() is not None:
        return
    try:
        os.killpg(process.pid, number)
    except ProcessLookupError:
        pass


class Lines:
    """The lines that a program writes to a pipe, read as they come."""

    def __init__(self, pipe):
        self._lines = []
        self._changed = threading.Condition()
        self._thread = threading.Thread(target=self._read, args=(pipe,), daemon=True)
        self._thread.start()

    def _read(self, pipe):
        for raw in pipe:
            with self._changed:
                self._lines.append(raw.decode("utf-8", "replace").rstrip("\n"))
                self._changed.notify_all()
        pipe.close()

    def all(self):
        with self._changed:
            return list(self._lines)

    def wait_for(self, predicate, what, deadline=10.0):
        """The first line that the predicate accepts."""
        def found():
            return next((line for line in self._lines if predicate(line)), None)

        with self._changed:
            if not self._changed.wait_for(lambda: found() is not None, deadline):
                raise AssertionError(f"not within {deadline:g} s: {what}; lines so far: {self._lines}")
            return found()

    def finish(self, deadline=5.0):
        """Every line, once the writer has closed its end."""
        self._thread.join(deadline)
        return self.all()
