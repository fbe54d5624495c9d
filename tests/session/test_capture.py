"""Copies in real programs, and what the history makes of them."""

import time
import unittest
import uuid

from harness import Desktop, Larkspool, Store, pictures, programs, run_tests, stays, wait_until
from harness.owner import Background, Owner


class Capture(unittest.TestCase):
    def setUp(self):
        self.desktop = self.enterContext(Desktop())
        self.store = Store(self.desktop.store_file)
        self.program = self.enterContext(Larkspool(self.desktop))

    def category(self, item):
        found = self.store.query("SELECT name FROM ClipCategory WHERE id = ?", item["categoryId"])
        return found[0]["name"] if found else None

    # Text

    def test_text_from_xclip_is_stored_with_its_type_count_category_and_time(self):
        before = time.time()
        programs.xclip_copy(self.desktop, "grün 🇩🇪 e\u0301".encode())
        item = self.store.wait_for("grün 🇩🇪 e\u0301")
        self.assertEqual((item["type"], item["characterCount"], item["isPinned"]), ("text", 8, 0))
        self.assertEqual(self.category(item), "Text")
        self.assertEqual(item["id"], str(uuid.UUID(item["id"])))
        self.assertTrue(before <= item["createdAt"] <= time.time(), item["createdAt"])

    def test_text_from_xsel_is_stored(self):
        programs.xsel_copy(self.desktop, b"from xsel\nin two lines\n")
        self.assertEqual(self.store.wait_for("from xsel\nin two lines\n")["type"], "text")

    def test_text_copied_in_a_gtk_editor_bears_the_name_and_id_of_its_desktop_file(self):
        editor = programs.Editor(self.desktop, "mousepad", "from a GTK editor")
        editor.copy_all()
        item = self.store.wait_for("from a GTK editor")
        self.assertEqual(item["sourceAppBundleId"], "org.xfce.mousepad")
        self.assertEqual(item["sourceAppName"], programs.desktop_name("org.xfce.mousepad"))

    def test_text_copied_in_a_qt_editor_bears_the_name_and_id_of_its_desktop_file(self):
        editor = programs.Editor(self.desktop, "featherpad", "from a Qt editor")
        editor.copy_all()
        item = self.store.wait_for("from a Qt editor")
        self.assertEqual(item["sourceAppBundleId"], "featherpad")
        self.assertEqual(item["sourceAppName"], programs.desktop_name("featherpad"))

    def test_a_selection_in_a_terminal_is_stored(self):
        terminal = programs.TerminalWithText(self.desktop, "a line in a terminal")
        terminal.select_first_line()
        item = self.store.wait_for_newest(
            lambda newest: newest["content"].rstrip("\n") == "a line in a terminal", "the terminal's line"
        )
        self.assertEqual(item["sourceAppBundleId"], "debian-xterm")

    def test_a_copy_with_no_window_in_front_has_no_source(self):
        programs.xclip_copy(self.desktop, b"from nowhere")
        item = self.store.wait_for("from nowhere")
        self.assertEqual((item["sourceAppName"], item["sourceAppBundleId"]), (None, None))

    def test_white_space_alone_is_not_stored(self):
        programs.xclip_copy(self.desktop, b" \t\n \r\n")
        programs.xclip_copy(self.desktop, b"the next copy")
        self.store.wait_for("the next copy")
        self.assertEqual(self.store.contents(), ["the next copy"])

    def test_a_web_address_among_blanks_is_stored_as_url_without_them(self):
        programs.xclip_copy(self.desktop, b"  https://example.org/a?b=c \n")
        item = self.store.wait_for("https://example.org/a?b=c")
        self.assertEqual((item["type"], self.category(item)), ("url", "URL"))

    def test_an_address_with_a_scheme_and_no_host_is_text(self):
        programs.xclip_copy(self.desktop, b"tel:+4930123456")
        self.assertEqual(self.store.wait_for("tel:+4930123456")["type"], "text")

    # Images

    def test_a_picture_copied_in_a_viewer_is_stored_pixel_by_pixel(self):
        picture = self.desktop.home / "picture.png"
        picture.write_bytes(pictures.png(320, 200))
        viewer = programs.PictureViewer(self.desktop, picture)
        viewer.copy()
        item = self.store.wait_for_newest(lambda newest: newest["type"] == "image", "the picture")
        image = self.store.image(item["id"])
        self.assertEqual(pictures.pixels(image), pictures.pixels(picture.read_bytes()))
        self.assertEqual(item["content"], f"Image ({len(image) // 1024} KB)")
        self.assertEqual(self.category(item), "Image")
        self.assertEqual(item["sourceAppBundleId"], "org.xfce.ristretto")

    def test_a_screenshot_survives_the_program_that_took_it(self):
        shooter = programs.copy_screenshot(self.desktop)
        item = self.store.wait_for_newest(lambda newest: newest["type"] == "image", "the screenshot", 20)
        width, height, _ = pictures.pixels(self.store.image(item["id"]))
        self.assertEqual((width, height), (1920, 1080))
        wait_until(lambda: shooter.poll() is not None, "the program that took it has ended", 20)
        pasted = wait_until(lambda: programs.xclip_paste(self.desktop, "image/png"), "it can be pasted")
        self.assertEqual(pictures.pixels(pasted), pictures.pixels(self.store.image(item["id"])))

    # Files

    def test_a_document_copied_in_a_file_manager_is_stored_as_file_by_its_path(self):
        folder = self.folder_with("the report.pdf", b"%PDF-1.4")
        programs.FileManager(self.desktop, folder).copy_all()
        item = self.store.wait_for(str(folder / "the report.pdf"))
        self.assertEqual((item["type"], self.category(item)), ("file", "File"))
        self.assertEqual(item["sourceAppBundleId"], "pcmanfm")

    def test_an_image_file_copied_in_a_file_manager_is_stored_with_its_bytes_unchanged(self):
        content = pictures.png(40, 30)
        folder = self.folder_with("HOLIDAY.PNG", content)
        programs.FileManager(self.desktop, folder).copy_all()
        item = self.store.wait_for(str(folder / "HOLIDAY.PNG"))
        self.assertEqual(item["type"], "image")
        self.assertEqual(self.store.image(item["id"]), content)

    def folder_with(self, name, content):
        folder = self.desktop.home / "documents"
        folder.mkdir()
        (folder / name).write_bytes(content)
        return folder

    # Again, and afterwards

    def test_a_text_copied_again_moves_to_the_top_as_one_entry(self):
        for text in ("first", "second", "first"):
            programs.xclip_copy(self.desktop, text.encode())
            self.store.wait_for_newest(lambda newest, text=text: newest["content"] == text, f"newest: {text}")
        self.assertEqual(self.store.contents(), ["first", "second"])

    def test_a_text_copied_twice_in_a_row_stays_one_entry(self):
        programs.xclip_copy(self.desktop, b"the same")
        first = self.store.wait_for("the same")
        programs.xclip_copy(self.desktop, b"the same")
        self.store.wait_for_newest(lambda newest: newest["createdAt"] > first["createdAt"], "a newer one")
        self.assertEqual(self.store.contents(), ["the same"])

    def test_the_content_outlives_the_program_that_copied_it(self):
        copier = programs.xclip_copy(self.desktop, b"outlives its owner")
        self.store.wait_for("outlives its owner")
        self.desktop.end(copier)
        wait_until(
            lambda: programs.xclip_paste(self.desktop) == b"outlives its owner", "the content is there again"
        )
        programs.xclip_copy(self.desktop, b"and the next one")
        self.store.wait_for("and the next one")
        self.assertEqual(self.store.contents(), ["and the next one", "outlives its owner"])

    def test_a_clipboard_cleared_on_purpose_stays_empty(self):
        owner = Owner(self.desktop.env["DISPLAY"])
        owner.copy_text("cleared on purpose")
        owner.serve(time.monotonic() + 0.2)
        owner.clear()
        with Background(owner):
            self.store.wait_for("cleared on purpose")
            self.assertTrue(stays(lambda: self.desktop.probe.selection_owner() == 0, 1), "nobody owns it")

    def test_an_entry_pasted_from_the_history_becomes_the_newest_without_a_second_copy_of_it(self):
        terminal = programs.Terminal(self.desktop)
        for text in ("older", "newer"):
            programs.xclip_copy(self.desktop, text.encode())
            self.store.wait_for(text)
        terminal.focus()
        self.program.open_panel()
        self.desktop.keyboard.press("Down", "Return")
        wait_until(lambda: terminal.typed() == b"older", "pasted")
        self.store.wait_for_newest(lambda newest: newest["content"] == "older", "its own write captured like any")
        self.assertEqual(self.store.contents(), ["older", "newer"])
        self.assertEqual(programs.xclip_paste(self.desktop), b"older")


class Pins(unittest.TestCase):
    def test_a_pinned_text_copied_again_keeps_its_pin_and_its_category(self):
        with Desktop() as desktop:
            store = Store(desktop.store_file)
            with Larkspool(desktop):
                for text in ("pinned one", "later one"):
                    programs.xclip_copy(desktop, text.encode())
                    store.wait_for(text)
            urls = store.query("SELECT id FROM ClipCategory WHERE name = 'URL'")[0]["id"]
            store.change("UPDATE ClipboardItem SET isPinned = 1, categoryId = ? WHERE content = 'pinned one'", urls)
            old = store.item("pinned one")
            with Larkspool(desktop):
                programs.xclip_copy(desktop, b"pinned one")
                item = store.wait_for_newest(lambda newest: newest["content"] == "pinned one", "at the top")
            self.assertEqual((item["isPinned"], item["categoryId"]), (1, urls))
            self.assertNotEqual(item["id"], old["id"])
            self.assertEqual(store.contents(), ["pinned one", "later one"])


if __name__ == "__main__":
    run_tests()
