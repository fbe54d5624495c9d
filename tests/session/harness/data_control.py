"""The clipboard of a compositor with wlroots' data-control protocol: what is on it, and owners written for tests."""

import os
import select
import threading
import time

from .waiting import wait_until

MANAGER = "zwlr_data_control_manager_v1"
# Instead of bytes, what an owner may do when it is asked for a type.
NEVER_CLOSES = object()
CLOSES_AT_ONCE = object()


class Dribble:
    """Bytes that come one by one, with a pause in seconds after each."""

    def __init__(self, data, pause):
        self.data = data
        self.pause = pause


class Clipboard:
    """Looks at the clipboard on a wire of its own. One thread at a time."""

    def __init__(self, desktop):
        self._wire = desktop.wire()
        self._offer = None
        self._types = {}  # by offer
        self.changes = 0
        device = _device(self._wire)
        device.on["data_offer"] = self._introduce
        device.on["selection"] = self._select
        self._wire.roundtrip()

    def _introduce(self, offer):
        self._types[offer] = []
        offer.on["offer"] = self._types[offer].append

    def _select(self, offer):
        if self._offer is not None:
            self._types.pop(self._offer, None)
            self._offer.send("destroy")
        self._offer = offer
        self.changes += 1

    def types(self):
        """The MIME types that are offered by now; nothing when nobody offers any."""
        self._wire.roundtrip()
        return None if self._offer is None else list(self._types[self._offer])

    def read(self, mime, deadline=10.0):
        """The bytes of a type; nothing when it is not offered."""
        if mime not in (self.types() or []):
            return None
        reader, writer = os.pipe()
        with os.fdopen(reader, "rb", buffering=0) as pipe:
            self._offer.send("receive", mime, writer)
            os.close(writer)
            return _read_all(pipe, deadline)

    def wait_for_change(self, act, deadline=10.0):
        """Calls the function and waits until the clipboard has changed since; what the function has returned."""
        self._wire.roundtrip()
        before = self.changes
        result = act()
        self._wire.run_until(lambda: self.changes > before, "the clipboard changes", deadline)
        return result


class Owner:
    """Owns the clipboard from a thread of its own, closed when the block ends.

    What it offers is given by MIME type: bytes, a Dribble, NEVER_CLOSES or CLOSES_AT_ONCE.
    """

    def __init__(self, desktop):
        self._wire = desktop.wire()
        self._manager = self._wire.bind(MANAGER)
        self._device = _device(self._wire, self._manager)
        # An offer that nobody looks at is still one to be given back.
        self._device.on["data_offer"] = lambda offer: offer.send("destroy")
        self._is_closed = threading.Event()
        self._kept = []  # descriptors that are never closed while this lives
        self._asked_for = []
        self._thread = threading.Thread(target=self._serve, daemon=True)

    def __enter__(self):
        self._wire.roundtrip()
        self._thread.start()
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        """Ends the connection, and with it what is offered."""
        self._is_closed.set()
        self._thread.join(10)
        self._wire.close()
        while self._kept:
            os.close(self._kept.pop())

    def copy(self, contents):
        """Offers contents by MIME type in place of the ones before."""
        source = self._manager.send("create_data_source")
        source.on["send"] = lambda mime, descriptor: self._answer(contents[mime], mime, descriptor)
        source.on["cancelled"] = lambda: source.send("destroy")
        for mime in contents:
            source.send("offer", mime)
        self._device.send("set_selection", source)

    def copy_text(self, text):
        self.copy({"text/plain;charset=utf-8": text.encode(), "text/plain": text.encode()})

    def clear(self):
        """Takes what is on the clipboard away."""
        self._device.send("set_selection", None)

    def asked_for(self):
        """The types that have been asked for so far, in order."""
        return list(self._asked_for)

    def serve_until(self, moment):
        """Waits until the moment on time.monotonic's clock; requests are answered meanwhile as always."""
        self._is_closed.wait(max(0.0, moment - time.monotonic()))

    def _serve(self):
        while not self._is_closed.is_set():
            try:
                self._wire.dispatch(0.05)
            except OSError:  # the compositor is gone
                return

    def _answer(self, content, mime, descriptor):
        self._asked_for.append(mime)
        if content is NEVER_CLOSES:
            self._kept.append(descriptor)
        elif content is CLOSES_AT_ONCE:
            os.close(descriptor)
        else:
            # A slow reader holds up nobody else.
            threading.Thread(target=self._write, args=(content, descriptor), daemon=True).start()

    def _write(self, content, descriptor):
        try:
            with os.fdopen(descriptor, "wb", buffering=0) as pipe:
                if isinstance(content, Dribble):
                    for i in range(len(content.data)):
                        pipe.write(content.data[i : i + 1])
                        self._is_closed.wait(content.pause)
                else:
                    _write_all(pipe, content)
        except BrokenPipeError:  # the reader has had enough
            pass


def _device(wire, manager=None):
    manager = manager or wire.bind(MANAGER)
    return manager.send("get_data_device", wire.bind("wl_seat"))


def _write_all(pipe, data):
    left = memoryview(data)
    while left:
        left = left[pipe.write(left) :]


def _read_all(pipe, deadline):
    end = time.monotonic() + deadline
    blocks = []
    while True:
        readable, _, _ = select.select([pipe], [], [], max(0.0, end - time.monotonic()))
        if not readable:
            raise AssertionError(f"no end within {deadline:g} s; {sum(map(len, blocks))} bytes so far")
        block = pipe.read(1 << 16)
        if not block:
            return b"".join(blocks)
        blocks.append(block)


def wait_for_content(clipboard, mime, content, deadline=10.0):
    """Waits until the clipboard offers the type with exactly these bytes."""
    wait_until(lambda: clipboard.read(mime) == content, lambda: f"{mime}, of {clipboard.types()}", deadline)
