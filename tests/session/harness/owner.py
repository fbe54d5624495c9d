"""Clipboard owners written for the purpose: quick ones, huge ones, and ones that misbehave."""

import select
import threading
import time

from Xlib import X, Xatom, display
from Xlib.protocol import event as xevent
from Xlib.protocol import request as xrequest

CLAIMED_SIZE = 0xFFFFFFFF  # four gigabytes, as a 32-bit property can say


class Owner:
    """Owns a selection of a display with data by target, and serves it from the thread that calls `serve`."""

    def __init__(self, name, selection="CLIPBOARD"):
        self._display = display.Display(name)
        self._window = self._display.screen().root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
        self._window.change_attributes(event_mask=X.PropertyChangeMask)
        self._selection = self.atom(selection)
        self._data = {}
        self._stamp = None
        self.asked_for = []

    def atom(self, name):
        return self._display.intern_atom(name)

    def close(self):
        self._display.close()

    def copy(self, data):
        """Takes the selection with new data: bytes by target name."""
        self._data = {self.atom(target): content for target, content in data.items()}
        self._stamp = self._server_time()
        self._window.set_selection_owner(self._selection, self._stamp)
        self._display.flush()

    def copy_text(self, text):
        self.copy({"UTF8_STRING": text.encode()})

    def clear(self):
        """Gives the selection up on purpose."""
        xrequest.SetSelectionOwner(
            display=self._display.display, window=X.NONE, selection=self._selection, time=self._stamp
        )
        self._display.flush()

    def serve(self, until):
        """Answers requests until the moment, on time.monotonic's clock."""
        while True:
            while self._display.pending_events():
                self._handle(self._display.next_event())
            left = until - time.monotonic()
            if left <= 0:
                return
            select.select([self._display.fileno()], [], [], left)

    def _server_time(self):
        self._window.change_property(self.atom("LARKSPOOL_TEST_TIME"), Xatom.INTEGER, 32, [0])
        while True:
            event = self._display.next_event()
            if event.type == X.PropertyNotify and event.atom == self.atom("LARKSPOOL_TEST_TIME"):
                return event.time
            self._handle(event)

    def _handle(self, event):
        if event.type == X.SelectionRequest:
            self.asked_for.append(self._display.get_atom_name(event.target))
            self.answer(event)
            self._display.flush()

    def answer(self, request):
        """One request; misbehaving owners do it their own way."""
        if request.target == self.atom("TARGETS"):
            targets = [self.atom("TARGETS"), *self._data]
            request.requestor.change_property(request.property, Xatom.ATOM, 32, targets)
            self.notify(request, request.property)
        elif request.target in self._data:
            request.requestor.change_property(request.property, request.target, 8, self._data[request.target])
            self.notify(request, request.property)
        else:
            self.notify(request, X.NONE)

    def notify(self, request, prop):
        request.requestor.send_event(
            xevent.SelectionNotify(
                time=request.time,
                requestor=request.requestor,
                selection=request.selection,
                target=request.target,
                property=prop,
            )
        )


class SilentOwner(Owner):
    """Never answers anything."""

    def answer(self, request):
        pass


class SilentAfterTargets(Owner):
    """Says what it has, and never gives it."""

    def answer(self, request):
        if request.target == self.atom("TARGETS"):
            super().answer(request)


class IncrementalOwner(Owner):
    """Announces a large transfer; what follows is up to the kind. Chunks go out as they are asked for."""

    announced = CLAIMED_SIZE

    def answer(self, request):
        if request.target == self.atom("TARGETS"):
            super().answer(request)
            return
        request.requestor.change_attributes(event_mask=X.PropertyChangeMask)
        request.requestor.change_property(request.property, self.atom("INCR"), 32, [self.announced])
        self._transfer = request
        self.notify(request, request.property)

    def _handle(self, event):
        if event.type == X.PropertyNotify and event.state == X.PropertyDelete:
            transfer = getattr(self, "_transfer", None)
            if transfer is not None and event.window == transfer.requestor and event.atom == transfer.property:
                self.chunk_wanted(transfer)
                self._display.flush()
            return
        super()._handle(event)

    def chunk_wanted(self, transfer):
        raise NotImplementedError

    def send(self, transfer, content):
        transfer.requestor.change_property(transfer.property, transfer.target, 8, content)


class DyingOwner(IncrementalOwner):
    """Dies when the second piece is asked for."""

    announced = 1_000_000

    def __init__(self, name):
        super().__init__(name)
        self._chunks = 0
        self.is_dead = False

    def chunk_wanted(self, transfer):
        self._chunks += 1
        if self._chunks == 1:
            self.send(transfer, b"x" * 1000)
        else:
            self.is_dead = True
            self._display.close()

    def serve(self, until):
        if not self.is_dead:
            try:
                super().serve(until)
            except Exception:
                if not self.is_dead:
                    raise


class DribblingOwner(IncrementalOwner):
    """Sends one byte a second."""

    announced = 1_000

    def __init__(self, name):
        super().__init__(name)
        self._due = None
        self.sent = 0

    def chunk_wanted(self, transfer):
        self._due = time.monotonic() + 1

    def serve(self, until):
        while time.monotonic() < until:
            super().serve(min(until, self._due or until))
            if self._due is not None and time.monotonic() >= self._due:
                self._due = None
                self.sent += 1
                self.send(self._transfer, b"x")
                self._display.flush()


class BoundlessOwner(IncrementalOwner):
    """Claims four gigabytes, and never stops sending."""

    def __init__(self, name):
        super().__init__(name)
        self.sent = 0

    def chunk_wanted(self, transfer):
        block = b"y" * 200_000
        self.sent += len(block)
        self.send(transfer, block)


class Background:
    """Serves an owner from a thread of its own while the block runs."""

    def __init__(self, owner):
        self.owner = owner
        self._is_over = threading.Event()
        self._thread = threading.Thread(target=self._serve, daemon=True)

    def _serve(self):
        while not self._is_over.is_set() and not getattr(self.owner, "is_dead", False):
            self.owner.serve(time.monotonic() + 0.05)

    def __enter__(self):
        self._thread.start()
        return self.owner

    def __exit__(self, *_):
        self._is_over.set()
        self._thread.join(10)
        if not getattr(self.owner, "is_dead", False):
            self.owner.close()
