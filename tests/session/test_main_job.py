"""The main job: copy here, call the history up there, choose, and it stands where the work is."""

import unittest

from harness import Desktop, Larkspool, Store, pictures, programs, run_tests, stays, wait_until

TEXT = "grün, “quoted”, 🦜\n\tand a second line"


class MainJob(unittest.TestCase):
    def setUp(self):
        self.desktop = self.enterContext(Desktop())
        self.store = Store(self.desktop.store_file)
        self.program = self.enterContext(Larkspool(self.desktop))

    def copy(self, *texts):
        for text in texts:
            programs.xclip_copy(self.desktop, text.encode())
            self.store.wait_for(text)

    def choose(self, *keys):
        self.program.open_panel()
        self.desktop.keyboard.press(*keys)
        self.program.wait_until_hidden()

    def test_a_text_copied_in_an_editor_stands_in_the_terminal_byte_by_byte(self):
        editor = programs.Editor(self.desktop, "mousepad", TEXT)
        editor.copy_all()
        self.store.wait_for(TEXT)
        self.copy("copied in between")
        terminal = programs.Terminal(self.desktop)
        self.choose("Down", "Return")
        wait_until(lambda: terminal.typed() == TEXT.encode(), f"pasted whole; so far {terminal.typed()!r}")
        self.desktop.keyboard.wait_for_focus(terminal.window)

    def test_a_line_copied_in_a_terminal_stands_in_the_editor_byte_by_byte(self):
        source = programs.TerminalWithText(self.desktop, "from the terminal")
        source.select_first_line()
        copied = self.store.wait_for_newest(
            lambda newest: newest["content"].startswith("from the terminal"), "the terminal's line"
        )["content"]
        source.close()
        editor = programs.Editor(self.desktop, "mousepad")
        self.choose("Return")
        wait_until(lambda: editor.saved() == copied.encode(), "pasted whole", every=0.2)
        self.desktop.keyboard.wait_for_focus(editor.window)

    def test_a_text_stands_in_a_qt_editor_byte_by_byte(self):
        self.copy("older", TEXT, "newer")
        editor = programs.Editor(self.desktop, "featherpad")
        self.choose("Down", "Return")
        wait_until(lambda: editor.saved().rstrip(b"\n") == TEXT.encode(), "pasted whole", every=0.2)

    def test_the_paste_goes_to_the_window_that_was_in_front_of_several(self):
        self.copy("for the second")
        first = programs.Terminal(self.desktop, "first.txt")
        second = programs.Terminal(self.desktop, "second.txt")
        programs.Terminal(self.desktop, "third.txt")
        second.focus()
        self.choose("Return")
        wait_until(lambda: second.typed() == b"for the second", "pasted")
        self.assertEqual(first.typed(), b"")

    def test_rows_are_named_by_their_preview_newest_first(self):
        self.copy("the oldest", "https://example.org/page", "the newest")
        self.program.open_panel()
        rows = wait_until(lambda: len(self.program.rows()) == 3 and self.program.rows(), "three rows")
        self.assertEqual(rows, ["the newest", "https://example.org/page", "the oldest"])

    def test_a_copy_made_while_the_panel_is_open_appears_at_the_top(self):
        self.copy("already there")
        self.program.open_panel()
        wait_until(lambda: self.program.rows() == ["already there"], "one row")
        self.copy("new")
        wait_until(lambda: self.program.rows() == ["new", "already there"], "the new row on top")

    def test_escape_hides_the_panel_and_pastes_nothing(self):
        self.copy("not wanted")
        terminal = programs.Terminal(self.desktop)
        self.choose("Escape")
        self.desktop.keyboard.wait_for_focus(terminal.window)
        self.assertTrue(stays(lambda: terminal.typed() == b"", 1), "nothing is pasted")

    def test_a_click_into_another_program_hides_the_panel_each_time(self):
        self.copy("one")
        terminal = programs.Terminal(self.desktop)
        self.desktop.keyboard.move(terminal.window, 20, 20)
        for _ in range(3):
            self.program.open_panel()
            self.desktop.keyboard.click(terminal.window, 10, 10)
            self.program.wait_until_hidden()
            self.desktop.keyboard.wait_for_focus(terminal.window)
        self.assertEqual(terminal.typed(), b"")

    def test_the_hot_key_hides_a_panel_that_is_shown(self):
        self.choose("super+shift+v")

    def test_the_panel_stands_in_the_middle_of_the_screen(self):
        window = self.program.open_panel()
        wait_until(
            lambda: self.desktop.keyboard.geometry(window) == (620, 220, 680, 640), "680 x 640 in the middle"
        )

    def test_up_and_down_stop_at_the_ends(self):
        self.copy("last", "middle", "first")
        terminal = programs.Terminal(self.desktop)
        copied = self.store.item("first")["createdAt"]
        self.choose("Up", "Up", "Return")
        wait_until(lambda: terminal.typed() == b"first", "the first")
        # What was pasted is a new copy, and when that comes the highlight goes to the top.
        wait_until(lambda: self.store.item("first")["createdAt"] > copied, "it is copied anew")
        self.choose("Down", "Down", "Down", "Down", "Return")
        wait_until(lambda: terminal.typed() == b"firstlast", lambda: f"then the last, not {terminal.typed()}")

    def test_a_picture_is_pasted_as_one(self):
        picture = pictures.png(50, 40)
        programs.xclip_copy(self.desktop, picture, "image/png")
        self.store.wait_for_newest(lambda newest: newest["type"] == "image", "the picture")
        self.copy("a text after it")
        programs.Terminal(self.desktop)
        self.choose("Down", "Return")
        pasted = wait_until(lambda: programs.xclip_paste(self.desktop, "image/png"), "a picture on the clipboard")
        self.assertEqual(pictures.pixels(pasted), pictures.pixels(picture))

    def test_the_debug_log_tells_the_road_of_a_paste(self):
        self.copy("logged")
        terminal = programs.Terminal(self.desktop)
        self.choose("Return")
        wait_until(lambda: terminal.typed() == b"logged", "pasted")
        lines = [line.split("] ", 1)[1] for line in self.desktop.debug_log.read_text().splitlines()]
        name = programs.desktop_name("debian-xterm")
        self.assertEqual(lines[:2], ["handleItemSelected: logged", "Copied to pasteboard"])
        self.assertRegex(lines[2], rf"^Previous app: {name}, pid: {terminal.process.pid}$")
        self.assertEqual(
            lines[3:],
            [
                f"Target active: true, frontmost: {name}",
                "simulatePaste called",
                "AXIsProcessTrusted: true",
                "CGEventSource created: true",
                "Paste simulated via CGEvent SUCCESS",
            ],
        )


if __name__ == "__main__":
    run_tests()
