"""Finding an entry by typing, by category and back again, with real keys in the real panel."""

import unittest

from harness import Desktop, Larkspool, Store, programs, run_tests, stays, wait_until


class Search(unittest.TestCase):
    def setUp(self):
        self.desktop = self.enterContext(Desktop())
        self.store = Store(self.desktop.store_file)
        self.program = self.enterContext(Larkspool(self.desktop))
        self.keyboard = self.desktop.keyboard

    def copy(self, *texts):
        for text in texts:
            programs.xclip_copy(self.desktop, text.encode())
            self.store.wait_for(text)

    def expect_rows(self, *rows):
        heard = None

        def are_these():
            nonlocal heard
            heard = self.program.rows()
            return heard == list(rows)

        try:
            wait_until(are_these, f"rows {rows}")
        except AssertionError:
            raise AssertionError(f"rows {heard} instead of {list(rows)}") from None

    def test_typing_finds_and_return_pastes(self):
        self.copy("a lark in the morning", "a wren at noon", "an owl at night")
        terminal = programs.Terminal(self.desktop)
        self.program.open_panel()
        self.keyboard.type("WREN")
        self.expect_rows("a wren at noon")
        self.keyboard.press("Return")
        self.program.wait_until_hidden()
        wait_until(lambda: terminal.typed() == b"a wren at noon", "pasted")

    def test_keys_typed_as_fast_as_they_come_are_all_in_the_search(self):
        self.copy("abcdefghijklmnopqrstuvwxyz", "abcdefghijklmnopqrstuvwxy")
        for _ in range(5):
            self.program.open_panel()
            self.desktop.run("xdotool", "type", "--delay", "0", "abcdefghijklmnopqrstuvwxyz")
            self.expect_rows("abcdefghijklmnopqrstuvwxyz")
            self.keyboard.press("Escape", "Escape")
            self.program.wait_until_hidden()

    def test_accents_and_cases_go_by_the_rules_of_the_language(self):
        self.copy("Straße nach Süden", "Strand", "Sudan")
        self.program.open_panel()
        self.keyboard.type("STRASSE")
        self.expect_rows("Straße nach Süden")
        self.keyboard.press("ctrl+a")
        self.keyboard.set_layout("de")
        self.keyboard.type("süd")
        self.expect_rows("Straße nach Süden")

    def test_nothing_found_is_said_and_the_way_back_shows_everything(self):
        self.copy("one", "two")
        window = self.program.open_panel()
        self.keyboard.type("three")
        self.expect_rows()
        self.keyboard.press("Escape")
        self.expect_rows("two", "one")
        self.assertEqual(self.program.panel(), window)
        self.keyboard.press("Escape")
        self.program.wait_until_hidden()

    def test_deleting_the_search_closes_it_and_the_arrows_move_the_highlight_again(self):
        self.copy("one", "two")
        terminal = programs.Terminal(self.desktop)
        self.program.open_panel()
        self.keyboard.type("o")
        self.expect_rows("two", "one")
        self.keyboard.press("BackSpace", "Down", "Return")
        self.program.wait_until_hidden()
        wait_until(lambda: terminal.typed() == b"one", "the second row")

    def test_the_arrows_choose_a_category_and_escape_ends_it(self):
        self.copy("just text", "https://example.org/page")
        self.program.open_panel()
        self.keyboard.press("Right", "Right")
        self.expect_rows("https://example.org/page")
        self.keyboard.press("Left")
        self.expect_rows("just text")
        self.keyboard.press("Escape")
        self.expect_rows("https://example.org/page", "just text")

    def test_a_search_is_over_when_the_panel_is_shown_again(self):
        self.copy("one", "two")
        self.program.open_panel()
        self.keyboard.type("one")
        self.expect_rows("one")
        self.keyboard.press("super+shift+v")
        self.program.wait_until_hidden()
        self.program.open_panel()
        self.expect_rows("two", "one")

    def test_a_word_deep_in_a_large_text_is_found(self):
        text = "the quick brown fox\n" * 200_000 + "a lark at the end\n"
        programs.xclip_copy(self.desktop, text.encode())
        wait_until(
            lambda: self.store.query("SELECT 1 FROM ClipboardItem WHERE length(content) > 1000000"), "stored", 30
        )
        self.copy("small")
        self.program.open_panel()
        self.keyboard.type("lark at")
        wait_until(
            lambda: [row[:9] for row in self.program.rows()] == ["the quick"], "the large text is the one row"
        )

    def test_a_copy_made_during_a_search_is_listed_only_if_it_is_sought(self):
        self.copy("robin one")
        self.program.open_panel()
        self.keyboard.type("robin")
        self.expect_rows("robin one")
        self.copy("wren")
        self.copy("robin two")
        self.expect_rows("robin two", "robin one")

    def test_a_click_on_the_row_that_is_found_pastes_it(self):
        self.copy("a lark", "a wren")
        terminal = programs.Terminal(self.desktop)
        self.program.open_panel()
        self.keyboard.type("lark")
        self.expect_rows("a lark")
        self.desktop.run("xdotool", "mousemove", "960", "430", "click", "1")
        self.program.wait_until_hidden()
        wait_until(lambda: terminal.typed() == b"a lark", "pasted")

    def test_letters_for_the_search_do_not_reach_the_program_below(self):
        self.copy("one")
        terminal = programs.Terminal(self.desktop)
        self.program.open_panel()
        self.keyboard.type("xyz")
        self.keyboard.press("Escape", "Escape")
        self.program.wait_until_hidden()
        self.keyboard.wait_for_focus(terminal.window)
        self.assertTrue(stays(lambda: terminal.typed() == b"", 1), "nothing is typed")


if __name__ == "__main__":
    run_tests()
