"""The main job on Mutter, which shows programs neither the clipboard nor windows; its X server shows the former."""

import unittest

from harness import Larkspool, Store, pictures, programs, run_tests, wait_until
from harness.application import Application
from harness.mutter import Mutter
from harness.portal import HandWrittenPortal
from harness.wayland_cases import TEXT, rests, said_at_the_end, wait_for_paste_keys
from harness.wayland_keyboard import code
from harness.wayland_programs import wl_copy, wl_paste

# No program may press keys there or have hot keys, which is said once, at the start.
MAY_PRINT = (
    r"^\[Larkspool\] No (hot key|paste keys): ", r"^\[Larkspool\] Accessibility permission not granted ",
    r"^Failed to register hotkey: ",
)  # fmt: skip
# Key symbols that a paste may consist of, and which key has them.
KEYS = {0xFFE3: "ctrl", 0xFFE1: "shift", 0xFF63: "Insert", ord("v"): "v"}


class MutterCase(unittest.TestCase):
    def setUp(self):
        self.desk = self.enterContext(Mutter())
        self.store = Store(self.desk.store_file)
        self.prepare()
        self.program = self.enterContext(Larkspool(self.desk, may_print=MAY_PRINT))

    def prepare(self):
        """What has to be there before the program."""

    def copy(self, *texts):
        for text in texts:
            wl_copy(self.desk, text.encode())
            self.store.wait_for(text)

    def open_panel(self):
        with Application(self.desk) as application:
            application.activate()
        panel = wait_until(self.program.panel, "the panel is shown")
        self.desk.keyboard.wait_for_focus(panel)

    def choose(self, *keys):
        self.open_panel()
        self.desk.keyboard.press(*keys)
        self.program.wait_until_hidden()


class Capture(MutterCase):
    def test_texts_are_stored_newest_first(self):
        self.copy("first", TEXT, "third")
        self.assertEqual(self.store.contents(), ["third", TEXT, "first"])

    def test_a_text_copied_in_an_editor_is_stored(self):
        programs.Editor(self.desk, "mousepad", TEXT).copy_all()
        self.store.wait_for(TEXT)

    def test_a_picture_is_stored_pixel_by_pixel(self):
        picture = pictures.png(320, 200)
        wl_copy(self.desk, picture, "image/png")
        item = self.store.wait_for_newest(lambda newest: newest["type"] == "image", "the picture")
        self.assertEqual(pictures.pixels(self.store.image(item["id"])), pictures.pixels(picture))

    def test_the_content_outlives_the_program_that_copied_it(self):
        copier = wl_copy(self.desk, b"outlives its owner")
        self.store.wait_for("outlives its owner")
        self.desk.end(copier)
        wait_until(lambda: wl_paste(self.desk) == b"outlives its owner", "it can be pasted", every=0.2)

    def test_when_the_compositor_is_killed_it_says_one_thing_at_most_and_ends_or_rests(self):
        program = self.program
        self.copy("before the end")
        self.desk.kill_display()
        wait_until(lambda: program.process.poll() is not None or rests(program), "it ends or rests", 20)
        self.assertLessEqual(len(said_at_the_end(program)), 1, program.unexpected_lines())
        self.assertEqual(self.store.integrity(), "ok")
        self.assertEqual(self.store.contents(), ["before the end"])


class Panel(MutterCase):
    def test_a_chosen_text_is_on_the_clipboard_for_the_program_that_was_in_front(self):
        self.copy("older", TEXT, "newer")
        editor = programs.Editor(self.desk, "mousepad")
        self.choose("Down", "Return")
        self.desk.keyboard.wait_for_focus(editor.window)
        self.desk.keyboard.press("ctrl+v")
        wait_until(lambda: editor.saved() == TEXT.encode(), "pasted whole", every=0.2)

    def test_what_is_typed_into_the_panel_is_searched_for(self):
        self.copy("an apple", "a pear", "an apple pie")
        self.open_panel()
        wait_until(lambda: self.program.rows() == ["an apple pie", "a pear", "an apple"], "three rows")
        self.desk.keyboard.type("pear")
        wait_until(lambda: self.program.rows() == ["a pear"], lambda: f"one row: {self.program.rows()}")

    def test_escape_hides_the_panel_and_the_keyboard_goes_back(self):
        self.copy("not wanted")
        editor = programs.Editor(self.desk, "mousepad")
        self.choose("Escape")
        self.desk.keyboard.wait_for_focus(editor.window)


class Portal(MutterCase):
    """The portal is there before anybody asks for it: whoever comes first is the portal for good."""

    def prepare(self):
        self.enterContext(HandWrittenPortal(self.desk, press=self.press))

    def press(self, symbol, is_down):
        self.desk.hand.key(code(KEYS[symbol]), is_down)

    def test_a_chosen_text_is_pasted_by_way_of_the_remote_desktop_portal(self):
        self.copy(TEXT)
        editor = programs.Editor(self.desk, "mousepad")
        self.choose("Return")
        wait_for_paste_keys(self.desk)
        wait_until(lambda: editor.saved() == TEXT.encode(), "pasted whole", every=0.2)


if __name__ == "__main__":
    run_tests()
