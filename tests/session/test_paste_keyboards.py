"""The hot key and the paste chord on keyboards of several layouts, and under a hand that still holds keys."""

import unittest

from harness import Desktop, Larkspool, Store, need, programs, run_tests, stays, wait_until

TEXT = "pasted;"
CYRILLIC_A = "ф"  # what the key A of a US keyboard types


class Layouts(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        need("setxkbmap")
        cls.desktop = cls.enterClassContext(Desktop())
        cls.keyboard = cls.desktop.keyboard
        cls.program = cls.enterClassContext(Larkspool(cls.desktop))
        cls.editor = programs.Editor(cls.desktop, "mousepad")
        cls.terminal = programs.VteTerminal(cls.desktop)
        programs.xclip_copy(cls.desktop, TEXT.encode())
        Store(cls.desktop.store_file).wait_for(TEXT)

    def paste_into(self, window):
        window.focus()
        self.keyboard.hit("Super", "Shift", "v")
        panel = wait_until(self.program.panel, "the hot key is heard by its place")
        self.keyboard.wait_for_focus(panel)
        self.keyboard.hit("Return")

    def assert_pastes(self):
        """A paste lands in an editor, which takes Ctrl+V, and in a terminal, which takes Ctrl+Shift+V."""
        shown = self.editor.text()
        self.paste_into(self.editor)
        wait_until(lambda: self.editor.text() == shown + TEXT, "pasted into the editor", every=0.1)
        typed = self.terminal.typed()
        self.paste_into(self.terminal)
        wait_until(lambda: self.terminal.typed() == typed + TEXT.encode(), "pasted into the terminal")

    def test_us(self):
        self.keyboard.set_layout("us")
        self.assert_pastes()

    def test_german(self):
        self.keyboard.set_layout("de")
        self.assert_pastes()

    def test_dvorak_has_the_letter_elsewhere(self):
        self.keyboard.set_layout("us", "dvorak")
        self.assert_pastes()

    def test_russian_has_no_such_letter(self):
        self.keyboard.set_layout("ru")
        self.assert_pastes()

    def test_russian_while_it_is_the_second_of_two_layouts(self):
        self.keyboard.set_layout("us,ru", "", "grp:menu_toggle")
        self.editor.focus()
        shown = self.editor.text()
        self.keyboard.hit("Menu")
        self.keyboard.hit("a")
        wait_until(lambda: self.editor.text() == shown + CYRILLIC_A, "the second layout is in use", every=0.1)
        self.assert_pastes()


class HeldKeys(unittest.TestCase):
    def setUp(self):
        need("xset")
        self.desktop = self.enterContext(Desktop())
        self.keyboard = self.desktop.keyboard
        self.program = self.enterContext(Larkspool(self.desktop))
        programs.xclip_copy(self.desktop, TEXT.encode())
        Store(self.desktop.store_file).wait_for(TEXT)
        self.receiver = programs.Receiver(self.desktop)

    def open_panel_with_the_hand_on_the_keys(self):
        self.keyboard.hit("v")
        self.keyboard.wait_for_focus(wait_until(self.program.panel, "the panel is shown"))

    def pasted(self):
        return [text.decode() for _, text in self.receiver.pastes()]

    def test_the_chord_waits_for_the_hot_keys_modifiers_and_nothing_leaks(self):
        with self.keyboard.held("Super", "Shift"):
            self.open_panel_with_the_hand_on_the_keys()
            self.keyboard.hit("Return")
            self.program.wait_until_hidden()
            self.keyboard.wait_for_focus(self.receiver.window)
            self.assertTrue(stays(lambda: self.pasted() == [], 0.6), "the chord waits")
        wait_until(lambda: self.pasted() == [TEXT], "pasted once the keys are up")
        self.assertEqual(self.receiver.other_keys(), [])

    def test_the_chord_waits_for_return_itself(self):
        with self.keyboard.held("Super", "Shift"):
            self.open_panel_with_the_hand_on_the_keys()
        # Its repeats would go to the program, as those of any held key do.
        self.keyboard.without_repeat()
        with self.keyboard.held("Return"):
            self.program.wait_until_hidden()
            self.assertTrue(stays(lambda: self.pasted() == [], 0.4), "the chord waits")
        wait_until(lambda: self.pasted() == [TEXT], "pasted once the key is up")
        self.assertEqual(self.receiver.other_keys(), [])


if __name__ == "__main__":
    run_tests()
