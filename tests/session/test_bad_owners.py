"""Programs that own the clipboard and misbehave, and contents at the edge of what can be held."""

import hashlib
import os
import time
import unittest

from harness import Desktop, Larkspool, Store, accessibility, missing, pictures, programs, run_tests, stays, wait_until
from harness.owner import (
    CLAIMED_SIZE,
    Background,
    BoundlessOwner,
    DribblingOwner,
    DyingOwner,
    Owner,
    SilentAfterTargets,
    SilentOwner,
)

# What a copy needs at most when nothing is wrong: one poll, and a slow machine's time to start xclip.
AS_EVER = 3.0
SECRET = "correct-horse-" + "battery-staple-9417"


class WithProgram(unittest.TestCase):
    may_print = ()

    def setUp(self):
        self.desktop = self.enterContext(Desktop())
        self.store = Store(self.desktop.store_file)
        self.program = self.enterContext(Larkspool(self.desktop, may_print=self.may_print))
        self.display = self.desktop.env["DISPLAY"]

    def assert_next_copy_is_taken(self, text="the next copy"):
        programs.xclip_copy(self.desktop, text.encode())
        self.store.wait_for(text, AS_EVER)
        self.assertEqual(self.store.contents(), [text])


class BadOwners(WithProgram):
    def wait_until_asked(self, owner, what):
        wait_until(lambda: owner.asked_for, what)

    def test_after_an_owner_that_never_answers_the_next_copy_is_taken_as_ever(self):
        owner = SilentOwner(self.display)
        owner.copy({"UTF8_STRING": b"never given"})
        with Background(owner):
            self.wait_until_asked(owner, "the silent owner is asked")
            self.assert_next_copy_is_taken()

    def test_pasting_into_the_search_gives_what_is_known_and_waits_for_no_owner(self):
        programs.xclip_copy(self.desktop, b"known")
        self.store.wait_for("known")
        self.program.open_panel()
        self.desktop.keyboard.press("ctrl+f")
        wait_until(lambda: accessibility.nodes(self.desktop, "text"), "the search field")
        owner = SilentOwner(self.display)
        owner.copy({"UTF8_STRING": b"never given"})
        with Background(owner):
            self.wait_until_asked(owner, "the silent owner is asked")
            beginning = time.monotonic()
            self.desktop.keyboard.press("ctrl+v", "shift+Insert")
            wait_until(lambda: self.program.rows() == [], "the search has the text twice")
            self.assertLess(time.monotonic() - beginning, AS_EVER)

    def test_after_an_owner_that_lists_its_targets_and_gives_none_the_next_copy_is_taken_as_ever(self):
        owner = SilentAfterTargets(self.display)
        owner.copy({"UTF8_STRING": b"never given"})
        with Background(owner):
            wait_until(lambda: "UTF8_STRING" in owner.asked_for, "the owner is asked for its text")
            self.assert_next_copy_is_taken()

    def test_after_an_owner_that_dies_in_a_transfer_the_next_copy_is_taken_as_ever(self):
        owner = DyingOwner(self.display)
        owner.copy({"UTF8_STRING": b""})
        with Background(owner):
            wait_until(lambda: owner.is_dead, "the owner dies")
            self.assert_next_copy_is_taken()

    def test_during_a_transfer_of_one_byte_a_second_the_next_copy_is_taken_as_ever(self):
        owner = DribblingOwner(self.display)
        owner.copy({"UTF8_STRING": b""})
        with Background(owner):
            wait_until(lambda: owner.sent >= 2, "two bytes have been sent")
            self.assert_next_copy_is_taken()

    def test_the_hot_key_works_as_ever_while_an_owner_hangs(self):
        programs.xclip_copy(self.desktop, b"already here")
        self.store.wait_for("already here")
        owner = SilentAfterTargets(self.display)
        owner.copy({"UTF8_STRING": b"never given"})
        with Background(owner):
            wait_until(lambda: "UTF8_STRING" in owner.asked_for, "the owner is asked for its text")
            self.program.open_panel(deadline=2)
            self.desktop.keyboard.press("Escape")
            self.program.wait_until_hidden(deadline=2)


class BoundlessOwners(WithProgram):
    # Content beyond what a row can hold is skipped with one line, which names no content.
    may_print = (r"^\[Larkspool\] Skipped a copy of \d+ bytes: [a-z ]+$",)

    def test_an_owner_that_claims_four_gigabytes_is_skipped_with_one_line_and_the_next_copy_is_taken(self):
        owner = BoundlessOwner(self.display)
        owner.copy({"UTF8_STRING": b""})
        before = self.program.memory("Rss")
        with Background(owner):
            self.program.stdout.wait_for(
                lambda line: line.startswith("[Larkspool] Skipped"), "a line about content that is too large", 60
            )
            self.assert_next_copy_is_taken()
        lines = [line for line in self.program.stdout.all() if "Seeded" not in line]
        self.assertEqual(len(lines), 1, lines)
        self.assertLess(owner.sent, CLAIMED_SIZE)
        wait_until(lambda: self.program.memory("Rss") < before + 64_000_000, "the memory is given back")


class LargeContents(WithProgram):
    def test_a_text_of_fifty_megabytes_is_stored_whole_while_the_panel_opens_as_ever(self):
        line = "".join(f"{number:06d} the quick brown fox, grün\n" for number in range(1000))
        text = line * (50_000_000 // len(line.encode()) + 1)
        programs.xclip_copy(self.desktop, text.encode())
        self.program.open_panel(deadline=2)
        self.desktop.keyboard.press("Escape")
        self.program.wait_until_hidden()
        item = wait_until(
            lambda: self.store.query("SELECT id, type, characterCount, length(content) AS n FROM ClipboardItem"),
            "the text is stored", 60,
        )[0]
        self.assertEqual((item["type"], item["n"], item["characterCount"]), ("text", len(text), len(text)))
        content = self.store.query("SELECT content FROM ClipboardItem")[0]["content"]
        self.assertEqual(self.digest(content), self.digest(text))
        before = self.program.memory("Rss")
        self.program.open_panel(deadline=2)
        wait_until(lambda: self.program.rows()[0].startswith("000000 the quick"), "the text has its row")
        self.assertLess(self.program.memory("Rss"), before + 40_000_000, "the row does not hold the text")

    def test_a_large_text_comes_back_whole_after_its_owner_has_gone(self):
        text = os.urandom(5_000_000).hex().encode()
        copier = programs.xclip_copy(self.desktop, text)
        wait_until(lambda: self.store.query("SELECT 1 FROM ClipboardItem"), "the text is stored", 60)
        self.desktop.end(copier)
        owner = wait_until(self.desktop.probe.selection_owner, "the clipboard has an owner again")
        self.assertNotEqual(owner, 0)
        self.assertEqual(hashlib.sha256(programs.xclip_paste(self.desktop, deadline=60)).digest(),
            hashlib.sha256(text).digest())

    def test_a_picture_of_a_whole_4k_screen_is_stored_pixel_by_pixel(self):
        picture = pictures.png(3840, 2160)
        programs.xclip_copy(self.desktop, picture, "image/png")
        item = self.store.wait_for_newest(lambda newest: newest["type"] == "image", "the picture", 60)
        self.assertEqual(pictures.pixels(self.store.image(item["id"])), pictures.pixels(picture))

    @staticmethod
    def digest(text):
        return hashlib.sha256(text.encode()).hexdigest()


class Secrets(WithProgram):
    def copy_secret(self, hint):
        owner = Owner(self.display)
        owner.copy({"UTF8_STRING": SECRET.encode(), "x-kde-passwordManagerHint": hint})
        owner.serve(time.monotonic() + 0.3)
        return owner

    def test_a_password_managers_copy_is_never_read(self):
        with Background(self.copy_secret(b"secret")) as owner:
            wait_until(lambda: "x-kde-passwordManagerHint" in owner.asked_for, "the hint is asked for")
            self.assert_next_copy_is_taken()
            self.assertNotIn("UTF8_STRING", owner.asked_for)

    def test_a_password_managers_copy_leaves_no_trace_in_store_log_or_memory(self):
        with Background(self.copy_secret(b"secret")) as owner:
            wait_until(lambda: "x-kde-passwordManagerHint" in owner.asked_for, "the hint is asked for")
            self.assert_next_copy_is_taken("a marker that memory does hold")
            try:
                self.assertTrue(self.program.memory_holds(b"a marker that memory does hold"))
                self.assertFalse(self.program.memory_holds(SECRET.encode()))
                self.assertFalse(self.program.memory_holds(SECRET.encode("utf-16-le")))
            except PermissionError as refused:
                missing(f"another process's memory may not be read here: {refused}")
        self.program.stop()
        for file in self.desktop.home.rglob("*"):
            if file.is_file():
                self.assertNotIn(SECRET.encode(), file.read_bytes(), file)
        for line in self.program.stdout.all():
            self.assertNotIn(SECRET, line)

    def test_a_password_managers_copy_is_not_kept_alive(self):
        with Background(self.copy_secret(b"secret")) as owner:
            wait_until(lambda: "x-kde-passwordManagerHint" in owner.asked_for, "the hint is asked for")
        self.assertTrue(stays(lambda: self.desktop.probe.selection_owner() == 0, 1), "nobody owns the clipboard")
        self.assert_next_copy_is_taken()

    def test_a_copy_hinted_as_public_is_stored(self):
        with Background(self.copy_secret(b"public")):
            self.store.wait_for(SECRET)


if __name__ == "__main__":
    run_tests()
