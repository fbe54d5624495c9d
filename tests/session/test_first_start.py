"""The first start, and the second one."""

import sqlite3
import stat
import unittest

from harness import Desktop, Larkspool, Store, programs, run_tests, wait_until
from harness.larkspool import SEEDED

CATEGORIES = [
    ("Text", "#3F78F3", "doc.text"),
    ("URL", "#33B873", "link"),
    ("Image", "#EB8C33", "photo"),
    ("File", "#808594", "doc"),
    ("Rich Text", "#9A4DD8", "doc.richtext"),
]
TEMPLATES = [
    ("Comma", ", ", "", "", "", ""),
    ("New Line", "\n", "", "", "", ""),
    ("Space", " ", "", "", "", ""),
    ("Tab", "\t", "", "", "", ""),
    ('"Double Quotes"', ", ", '"', '"', "", ""),
    ("'Single Quotes'", ", ", "'", "'", "", ""),
    ("JSON Array", ", ", '"', '"', "[", "]"),
    ("Bullet List", "\n", "- ", "", "", ""),
    ("Numbered", "\n", "", "", "", ""),
    ("SQL IN", ", ", "'", "'", "(", ")"),
]
CATEGORY_COLUMNS = ("name", "colorHex", "icon")
TEMPLATE_COLUMNS = ("name", "separator", "itemPrefix", "itemSuffix", "wrapPrefix", "wrapSuffix")


def rows(store, table, columns):
    found = store.query(f"SELECT * FROM {table} ORDER BY sortOrder")
    return [tuple(row[column] for column in columns) for row in found]


class FirstStart(unittest.TestCase):
    def setUp(self):
        self.desktop = self.enterContext(Desktop())
        self.store = Store(self.desktop.store_file)

    def test_five_categories_and_ten_templates_are_seeded_in_order_and_announced(self):
        with Larkspool(self.desktop) as program:
            self.assertEqual(rows(self.store, "ClipCategory", CATEGORY_COLUMNS), CATEGORIES)
            self.assertEqual(rows(self.store, "PasteTemplate", TEMPLATE_COLUMNS), TEMPLATES)
            for table, count in (("ClipCategory", 5), ("PasteTemplate", 10)):
                found = self.store.query(f"SELECT sortOrder, isDefault FROM {table} ORDER BY sortOrder")
                self.assertEqual([row["sortOrder"] for row in found], list(range(count)))
                self.assertEqual([row["isDefault"] for row in found], [1] * count)
            self.assertEqual(program.stop(), SEEDED)

    def test_a_second_start_inserts_nothing_and_prints_nothing(self):
        with Larkspool(self.desktop):
            pass
        before = self.tables()
        with Larkspool(self.desktop) as program:
            self.assertEqual(program.stop(), [])
        self.assertEqual(self.tables(), before)

    def test_a_store_with_categories_but_no_templates_gets_templates_only(self):
        with Larkspool(self.desktop):
            pass
        self.store.change("DELETE FROM PasteTemplate")
        self.store.change("DELETE FROM ClipCategory WHERE sortOrder > 0")
        with Larkspool(self.desktop) as program:
            self.assertEqual(program.stop(), SEEDED[1:])
        self.assertEqual(rows(self.store, "ClipCategory", CATEGORY_COLUMNS), CATEGORIES[:1])
        self.assertEqual(rows(self.store, "PasteTemplate", TEMPLATE_COLUMNS), TEMPLATES)

    def test_what_was_on_the_clipboard_at_the_start_is_not_captured(self):
        programs.xclip_copy(self.desktop, b"copied before the start")
        with Larkspool(self.desktop):
            programs.xclip_copy(self.desktop, b"copied after the start")
            self.store.wait_for("copied after the start")
            self.assertEqual(self.store.contents(), ["copied after the start"])

    def test_only_the_user_can_read_the_store(self):
        with Larkspool(self.desktop):
            programs.xclip_copy(self.desktop, b"mine alone")
            self.store.wait_for("mine alone")
            folder = self.desktop.store_file.parent
            self.assertEqual(stat.S_IMODE(folder.stat().st_mode), 0o700)
            modes = {file.name: stat.S_IMODE(file.stat().st_mode) for file in folder.iterdir()}
            self.assertIn("larkspool.sqlite", modes)
            self.assertEqual(set(modes.values()), {0o600}, modes)

    def test_sigterm_ends_it_cleanly_with_everything_in_one_file(self):
        with Larkspool(self.desktop) as program:
            programs.xclip_copy(self.desktop, b"still here")
            self.store.wait_for("still here")
            program.stop()
        self.assertEqual([file.name for file in self.desktop.store_file.parent.iterdir()], ["larkspool.sqlite"])
        self.assertEqual(self.store.integrity(), "ok")
        self.assertEqual(self.store.contents(), ["still here"])

    def test_it_ends_when_the_display_goes_away(self):
        program = Larkspool(self.desktop, may_print=["."])
        program.start()
        program.wait_for_hot_key()
        programs.xclip_copy(self.desktop, b"before the end")
        self.store.wait_for("before the end")
        self.desktop.end_display()
        wait_until(lambda: program.process.poll() is not None, "the program ends with its display")
        self.assertEqual(self.store.integrity(), "ok")
        self.assertEqual(self.store.contents(), ["before the end"])

    def tables(self):
        connection = sqlite3.connect(f"file:{self.desktop.store_file}?mode=ro", uri=True)
        try:
            return list(connection.iterdump())
        finally:
            connection.close()


if __name__ == "__main__":
    run_tests()
