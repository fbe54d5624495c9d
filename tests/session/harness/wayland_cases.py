"""What holds on every Wayland desktop that lets programs see the clipboard, for test files to derive from."""

import os
import pathlib
import re
import time
import uuid

from . import accessibility, pictures, programs
from .data_control import CLOSES_AT_ONCE, NEVER_CLOSES, Clipboard, Dribble, Owner, wait_for_content
from .larkspool import Larkspool
from .store import Store
from .waiting import stays, wait_until
from .wayland_programs import wl_copy, wl_paste

TEXT = "grün, “quoted”, 🦜\n\tand a second line"
PLAIN = "text/plain;charset=utf-8"
HINT = "x-kde-passwordManagerHint"
TOOLKIT_LINE = re.compile(r"^The (Wayland|X11) connection broke\b")
COUNT = 100
PAUSE = 0.02
BUSY = 0.1  # seconds of processor time in a second that a program which waits does not need


class WaylandCases:
    """`desktop()` makes the desktop; `may_print` are the lines that the program may print on it."""

    may_print = ()

    def desktop(self):
        raise NotImplementedError

    def setUp(self):
        self.desk = self.enterContext(self.desktop())
        self.store = Store(self.desk.store_file)
        self.clipboard = Clipboard(self.desk)

    def larkspool(self):
        return Larkspool(self.desk, may_print=self.may_print)

    def start(self):
        self.program = self.enterContext(self.larkspool())

    def copy(self, *texts):
        for text in texts:
            self.clipboard.wait_for_change(lambda text=text: wl_copy(self.desk, text.encode()))
            self.store.wait_for(text)


class CaptureCases(WaylandCases):
    def setUp(self):
        super().setUp()
        self.start()

    def test_a_text_is_stored_with_its_type_count_and_time(self):
        before = time.time()
        self.copy("grün 🇩🇪 e\u0301")
        item = self.store.item("grün 🇩🇪 e\u0301")
        self.assertEqual((item["type"], item["characterCount"], item["isPinned"]), ("text", 8, 0))
        self.assertEqual(item["id"], str(uuid.UUID(item["id"])))
        self.assertTrue(before <= item["createdAt"] <= time.time(), item["createdAt"])

    def test_a_copy_with_no_window_in_front_has_no_source(self):
        self.copy("from nowhere")
        item = self.store.item("from nowhere")
        self.assertEqual((item["sourceAppName"], item["sourceAppBundleId"]), (None, None))

    def test_a_text_copied_in_an_editor_bears_the_name_and_id_of_its_desktop_file(self):
        programs.Editor(self.desk, "mousepad", "from an editor").copy_all()
        item = self.store.wait_for("from an editor")
        self.assertEqual(item["sourceAppBundleId"], "org.xfce.mousepad")
        self.assertEqual(item["sourceAppName"], programs.desktop_name("org.xfce.mousepad"))

    def test_a_picture_is_stored_pixel_by_pixel(self):
        picture = pictures.png(320, 200)
        wl_copy(self.desk, picture, "image/png")
        item = self.store.wait_for_newest(lambda newest: newest["type"] == "image", "the picture")
        self.assertEqual(pictures.pixels(self.store.image(item["id"])), pictures.pixels(picture))

    def test_a_list_of_files_is_stored_as_a_file_by_its_path(self):
        document = self.desk.home / "the report.pdf"
        document.write_bytes(b"%PDF-1.4")
        self.desk.give(document)
        address = f"file://{self.desk.home}/the%20report.pdf\r\n"
        wl_copy(self.desk, address.encode(), "text/uri-list")
        self.assertEqual(self.store.wait_for(str(document))["type"], "file")

    def test_a_text_that_is_marked_as_a_secret_is_not_stored_nor_asked_for(self):
        with Owner(self.desk) as owner:
            secret = {PLAIN: b"hunter2", HINT: b"secret"}
            self.clipboard.wait_for_change(lambda: owner.copy(secret))
            # Whoever took it would have done so by the time that a later copy has come through.
            self.assertTrue(stays(lambda: PLAIN not in owner.asked_for(), 1), "nobody asks for it")
            owner.copy_text("the next copy")
            self.store.wait_for("the next copy")
        self.assertEqual(self.store.contents(), ["the next copy"])

    def test_the_content_outlives_the_program_that_copied_it(self):
        editor = programs.Editor(self.desk, "mousepad", "outlives its owner")
        editor.copy_all()
        self.store.wait_for("outlives its owner")
        editor.close()
        wait_for_content(self.clipboard, PLAIN, b"outlives its owner")
        self.assertEqual(wl_paste(self.desk), b"outlives its owner")
        self.copy("and the next one")
        self.assertEqual(self.store.contents(), ["and the next one", "outlives its owner"])

    def test_every_type_that_means_something_to_others_outlives_an_owner_with_a_window(self):
        contents = {PLAIN: b"rich", "text/html": b"<b>rich</b>", "application/x-test": b"\0\1\2"}
        window = programs.Editor(self.desk, "mousepad")
        with Owner(self.desk) as owner:
            owner.copy(contents)
            self.store.wait_for("rich")
            window.close()
        for mime, content in contents.items():
            wait_for_content(self.clipboard, mime, content)

    def test_a_clipboard_cleared_on_purpose_stays_empty(self):
        programs.Editor(self.desk, "mousepad")
        with Owner(self.desk) as owner:
            owner.copy_text("cleared on purpose")
            self.store.wait_for("cleared on purpose")
            self.clipboard.wait_for_change(owner.clear)
            self.assertTrue(stays(lambda: self.clipboard.types() is None, 1), "nobody offers anything")

    def test_a_secret_that_is_cleared_does_not_come_back(self):
        window = programs.Editor(self.desk, "mousepad")
        with Owner(self.desk) as owner:
            owner.copy_text("an entry before it")
            self.store.wait_for("an entry before it")
            self.clipboard.wait_for_change(lambda: owner.copy({PLAIN: b"hunter2", HINT: b"secret"}))
            # As a password manager does that ends: what others have copied would be kept.
            window.close()
            self.clipboard.wait_for_change(owner.clear)
            self.assertTrue(stays(lambda: self.clipboard.types() is None, 1), "nobody offers anything")
        self.assertEqual(self.store.contents(), ["an entry before it"])

    def test_an_owner_that_never_closes_its_pipe_does_not_hold_up_the_next_copy(self):
        with Owner(self.desk) as stuck, Owner(self.desk) as owner:
            self.clipboard.wait_for_change(lambda: stuck.copy({PLAIN: NEVER_CLOSES}))
            wait_until(lambda: PLAIN in stuck.asked_for(), "it is asked")
            owner.copy_text("the next copy")
            self.store.wait_for("the next copy", 5)
        self.assertEqual(self.store.contents(), ["the next copy"])

    def test_an_owner_that_closes_its_pipe_at_once_leaves_no_entry(self):
        with Owner(self.desk) as owner:
            owner.copy({PLAIN: CLOSES_AT_ONCE})
            wait_until(lambda: PLAIN in owner.asked_for(), "it is asked")
            owner.copy_text("the next copy")
            self.store.wait_for("the next copy")
        self.assertEqual(self.store.contents(), ["the next copy"])

    def test_a_text_that_comes_byte_by_byte_is_stored_whole(self):
        with Owner(self.desk) as owner:
            owner.copy({PLAIN: Dribble(TEXT.encode(), 0.01)})
            self.store.wait_for(TEXT)
        self.assertEqual(self.store.contents(), [TEXT])

    def test_a_text_copied_again_moves_to_the_top_as_one_entry(self):
        for text in ("first", "second", "first"):
            wl_copy(self.desk, text.encode())
            self.store.wait_for_newest(lambda newest, text=text: newest["content"] == text, f"newest: {text}")
        self.assertEqual(self.store.contents(), ["first", "second"])


class FastCopiesCases(WaylandCases):
    def setUp(self):
        super().setUp()
        self.start()

    def test_a_hundred_copies_twenty_milliseconds_apart_are_all_kept_in_order(self):
        texts = [f"copy number {number}" for number in range(COUNT)]
        with Owner(self.desk) as owner:
            start = time.monotonic()
            for number, text in enumerate(texts):
                owner.copy_text(text)
                owner.serve_until(start + (number + 1) * PAUSE)
            wait_until(lambda: self.store.item(texts[-1]), "the last one is stored", 10)
        self.assertEqual(self.store.contents(), texts[::-1])


class SessionCases(WaylandCases):
    """The beginning and the end of a session."""

    def test_what_was_on_the_clipboard_at_the_start_is_not_captured(self):
        self.clipboard.wait_for_change(lambda: wl_copy(self.desk, b"from before"))
        self.start()
        self.copy("from now")
        self.assertEqual(self.store.contents(), ["from now"])

    def test_it_ends_cleanly_and_the_content_of_a_living_owner_stays(self):
        with self.larkspool() as program:
            self.copy("still there")
            program.stop()
        self.assertEqual(self.clipboard.read(PLAIN), b"still there")

    def test_when_the_compositor_is_killed_it_says_one_thing_at_most_and_ends_or_rests(self):
        program = self.larkspool()
        program.start()
        program.wait_for_hot_key()
        self.copy("before the end")
        self.desk.kill_display()
        wait_until(lambda: program.process.poll() is not None or rests(program), "it ends or rests", 20)
        self.assertLessEqual(len(said_at_the_end(program)), 1, program.unexpected_lines())
        self.assertEqual(self.store.integrity(), "ok")
        self.assertEqual(self.store.contents(), ["before the end"])


class PanelDesk(WaylandCases):
    """`terminal()` opens a terminal whose keyboard can be read, `open_panel()` calls the panel up."""

    def setUp(self):
        super().setUp()
        self.start()

    def terminal(self, name="typed.txt"):
        raise NotImplementedError

    def has_keyboard_by_itself(self):
        """Whether the program, by what it tells screen readers, takes itself for the active one."""
        return any(window["active"] and window["pid"] == self.program.pid for window in accessibility.windows(self.desk))

    def open_panel(self):
        return self.program.open_panel()

    def choose(self, *keys):
        self.open_panel()
        self.desk.keyboard.press(*keys)
        self.program.wait_until_hidden()

    def assert_typed(self, terminal, content):
        wait_until(lambda: terminal.typed() == content, lambda: f"pasted whole; so far {terminal.typed()!r}")


class PanelCases(PanelDesk):
    """The panel itself."""

    def test_the_panel_floats_in_the_middle_of_the_screen_and_has_the_keyboard(self):
        self.terminal()
        panel = self.open_panel()
        facts = wait_until(lambda: self.desk.keyboard.facts(panel), "the panel")
        self.assertNotEqual(facts.is_floating, False)
        self.assertTrue(facts.is_active)
        self.assertEqual(facts.place, (620, 220, 680, 640))

    def test_what_is_typed_into_the_panel_is_searched_for(self):
        self.copy("an apple", "a pear", "an apple pie")
        terminal = self.terminal()
        self.open_panel()
        wait_until(lambda: self.program.rows() == ["an apple pie", "a pear", "an apple"], "three rows")
        self.desk.keyboard.type("pear")
        wait_until(lambda: self.program.rows() == ["a pear"], lambda: f"one row: {self.program.rows()}")
        self.desk.keyboard.press("Return")
        self.assert_typed(terminal, b"a pear")

    def test_a_copy_made_while_the_panel_is_open_appears_at_the_top(self):
        self.copy("already there")
        self.open_panel()
        wait_until(lambda: self.program.rows() == ["already there"], "one row")
        self.copy("new")
        wait_until(lambda: self.program.rows() == ["new", "already there"], "the new row on top")

    def test_escape_hides_the_panel_and_pastes_nothing(self):
        self.copy("not wanted")
        terminal = self.terminal()
        self.choose("Escape")
        self.desk.keyboard.wait_for_focus(terminal.window)
        self.assertTrue(stays(lambda: terminal.typed() == b"", 1), "nothing is pasted")

    def test_a_click_into_another_program_hides_the_panel(self):
        self.copy("one")
        terminal = self.terminal()
        self.open_panel()
        # The program learns of the keyboard after the compositor has given it.
        wait_until(self.has_keyboard_by_itself, "the program has the keyboard")
        self.desk.keyboard.click(terminal.window, 10, 10)
        self.program.wait_until_hidden()
        self.desk.keyboard.wait_for_focus(terminal.window)
        self.assertEqual(terminal.typed(), b"")

    def test_a_picture_is_pasted_as_one(self):
        picture = pictures.png(50, 40)
        wl_copy(self.desk, picture, "image/png")
        self.store.wait_for_newest(lambda newest: newest["type"] == "image", "the picture")
        self.copy("a text after it")
        self.terminal()
        self.choose("Down", "Return")
        pasted = wait_until(lambda: self.clipboard.read("image/png"), "a picture on the clipboard")
        self.assertEqual(pictures.pixels(pasted), pictures.pixels(picture))


class EditorPasteCases(PanelDesk):
    """What is chosen in the panel stands in the editor that was in front."""

    def test_a_chosen_text_stands_in_a_gtk_editor_byte_by_byte(self):
        self.copy("older", TEXT, "newer")
        editor = programs.Editor(self.desk, "mousepad")
        self.choose("Down", "Return")
        wait_for_paste_keys(self.desk)
        wait_until(lambda: editor.saved() == TEXT.encode(), "pasted whole", every=0.2)
        self.desk.keyboard.wait_for_focus(editor.window)

    def test_a_chosen_text_stands_in_a_qt_editor_byte_by_byte(self):
        self.copy("older", TEXT, "newer")
        editor = programs.Editor(self.desk, "featherpad")
        self.choose("Down", "Return")
        wait_for_paste_keys(self.desk)
        wait_until(lambda: editor.saved().rstrip(b"\n") == TEXT.encode(), "pasted whole", every=0.2)


class PasteCases(EditorPasteCases):
    """The same for terminals, which take other keys for a paste than editors do."""

    def test_a_chosen_text_stands_in_a_terminal_byte_by_byte(self):
        self.copy(TEXT, "copied in between")
        terminal = self.terminal()
        self.choose("Down", "Return")
        self.assert_typed(terminal, TEXT.encode())
        self.desk.keyboard.wait_for_focus(terminal.window)

    def test_a_text_copied_in_an_editor_stands_in_the_terminal(self):
        editor = programs.Editor(self.desk, "mousepad", TEXT)
        editor.copy_all()
        self.store.wait_for(TEXT)
        editor.close()
        terminal = self.terminal()
        self.choose("Return")
        self.assert_typed(terminal, TEXT.encode())

    def test_the_paste_goes_to_the_window_that_was_in_front_of_several(self):
        self.copy("for the second")
        first, second = self.terminal("first.txt"), self.terminal("second.txt")
        self.terminal("third.txt")
        second.focus()
        self.choose("Return")
        self.assert_typed(second, b"for the second")
        self.assertEqual(first.typed(), b"")

    def test_the_panel_opens_and_pastes_ten_times_in_a_row(self):
        self.copy("again,")
        terminal = self.terminal()
        for times in range(1, 11):
            self.choose("Return")
            self.assert_typed(terminal, b"again," * times)


def wait_for_paste_keys(desktop):
    """Waits until the program says that it has pressed them: keys of the tests' own in between would mix with them."""
    def are_pressed():
        return desktop.debug_log.exists() and "Paste simulated via" in desktop.debug_log.read_text()

    wait_until(are_pressed, "the keys of the paste are pressed")


def said_at_the_end(program):
    """What the program itself has said beyond what was announced; the toolkit has a line of its own."""
    return [line for line in program.unexpected_lines() if not TOOLKIT_LINE.search(line)]


def rests(program):
    """Whether the process needs next to no processor time in a second from now on."""
    before, end = _processor_time(program.pid), time.monotonic() + 1
    if before is None or not stays(lambda: program.process.poll() is None, end - time.monotonic()):
        return False
    after = _processor_time(program.pid)
    return after is not None and after - before < BUSY


def _processor_time(pid):
    """Seconds so far; nothing when the process is gone."""
    try:
        fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(") ", 1)[1].split()
    except OSError:
        return None
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")
