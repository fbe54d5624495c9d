"""A paste into the programs that people paste into, and how long it takes."""

import time
import unittest

from harness import Desktop, Larkspool, Store, programs, run_tests, wait_until

# With another first word in each test, so that it is another entry.
TEXT = "{}: grün, “quoted”, 🦜\n\tand a second line\nand a third"
LINE = "grün, “quoted”, 🦜 on one line"

# What the rules wait for between the switch to the program and the keys, and what all else may take.
PASTE_DELAY = 0.15
SLACK = 0.05
TRIES = 10


class Programs(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.desktop = cls.enterClassContext(Desktop())
        cls.store = Store(cls.desktop.store_file)
        cls.program = cls.enterClassContext(Larkspool(cls.desktop))

    def copy(self, text):
        programs.xclip_copy(self.desktop, text.encode())
        self.store.wait_for(text)

    def paste_newest(self):
        self.program.open_panel()
        self.desktop.keyboard.hit("Return")
        self.program.wait_until_hidden()

    def assert_lands(self, program, read, every=0.02):
        text = TEXT.format(self.id())
        self.copy(text)
        program.focus()
        self.paste_newest()
        wait_until(lambda: read() == text.encode(), "pasted whole", every=every)
        program.close()

    def test_a_gtk_editor(self):
        editor = programs.Editor(self.desktop, "mousepad", name="gtk.txt")
        self.assert_lands(editor, editor.saved, every=0.2)

    def test_a_qt_editor(self):
        editor = programs.Editor(self.desktop, "featherpad", name="qt.txt")
        self.assert_lands(editor, lambda: editor.saved().rstrip(b"\n"), every=0.2)

    def test_xterm(self):
        terminal = programs.Terminal(self.desktop)
        self.assert_lands(terminal, terminal.typed)

    def test_a_vte_terminal(self):
        terminal = programs.VteTerminal(self.desktop)
        self.assert_lands(terminal, terminal.typed)

    def test_the_address_bar_of_a_browser(self):
        browser = programs.Browser(self.desktop)
        self.copy(LINE)
        browser.type_address("typed:")
        self.paste_newest()
        wait_until(lambda: browser.address() == "typed:" + LINE, "pasted whole", every=0.2)
        browser.close()

    def test_a_paste_arrives_a_twentieth_of_a_second_after_the_delay_at_most(self):
        copied = TEXT.format("timed")
        self.copy(copied)
        receiver = programs.Receiver(self.desktop)
        times = []
        for number in range(1, TRIES + 1):
            self.program.open_panel()
            pressed = time.monotonic()
            self.desktop.keyboard.hit("Return")
            arrived, text = wait_until(lambda: len(receiver.pastes()) == number and receiver.pastes()[-1], "pasted")
            self.assertEqual(text, copied.encode())
            times.append(arrived - pressed)
            if times[-1] <= PASTE_DELAY + SLACK:
                break
        self.assertGreaterEqual(min(times), PASTE_DELAY)
        self.assertLessEqual(min(times), PASTE_DELAY + SLACK, times)
        self.assertEqual(receiver.other_keys(), [], "no other key came with it")
        receiver.close()


if __name__ == "__main__":
    run_tests()
