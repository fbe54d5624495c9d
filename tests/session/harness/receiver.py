"""A window that takes a paste and says when it got the text.

Run as a program, in the environment of a desktop, it shows a window titled "receiver". Each Ctrl+V makes it ask for the
clipboard's text, and when the text is there it prints a line: the moment on time.monotonic's clock, and the text as
hexadecimal digits. Any other key, but for modifiers, is printed as a line "key" and its code.
"""

import time

from Xlib import X, XK, display


class Receiver:
    def __init__(self):
        self._display = display.Display()
        self._text = self._display.intern_atom("UTF8_STRING")
        self._clipboard = self._display.intern_atom("CLIPBOARD")
        self._place = self._display.intern_atom("LARKSPOOL_TEST_PASTE")
        self._v = self._display.keysym_to_keycode(XK.XK_v)
        self._modifiers = {code for codes in self._display.get_modifier_mapping() for code in codes}
        screen = self._display.screen()
        self._window = screen.root.create_window(
            0, 0, 300, 200, 0, X.CopyFromParent, background_pixel=screen.white_pixel, event_mask=X.KeyPressMask
        )
        self._window.set_wm_name("receiver")
        self._window.set_wm_class("receiver", "Receiver")
        self._window.set_wm_protocols([])
        self._window.map()
        self._display.flush()

    def run(self):
        while True:
            event = self._display.next_event()
            if event.type == X.KeyPress:
                self._press(event)
            elif event.type == X.SelectionNotify:
                self._arrive(event)

    def _press(self, event):
        if event.detail == self._v and event.state & X.ControlMask:
            self._window.convert_selection(self._clipboard, self._text, self._place, event.time)
            self._display.flush()
        elif event.detail not in self._modifiers:
            print("key", event.detail, flush=True)

    def _arrive(self, event):
        found = self._window.get_full_property(self._place, X.AnyPropertyType) if event.property != X.NONE else None
        now = time.monotonic()
        print("pasted", now, bytes(found.value).hex() if found else "", flush=True)


if __name__ == "__main__":
    Receiver().run()
