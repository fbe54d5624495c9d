"""Entries of odd contents in the real panel: it opens, each row keeps to its place, and what keys do goes on."""

import struct
import time
import unittest
import uuid
import zlib

from harness import Desktop, Larkspool, Store, programs, run_tests, screen_reader, wait_until

MB = 1_000_000
ROW = "list item"
ROW_HEIGHT = 130
# A row stands within the margins of the list, and the highlighted one beyond others.
SIDE = 20
TOO_LARGE = "too large to be edited"
CONTROLS = "".join(chr(code) for code in range(1, 32)) + "\x7f\x85"
BIDI = "\u202a\u202b\u202c\u202d\u202e\u2066\u2067\u2068\u2069"


def wide_picture(side):
    """A PNG file of one black square, one bit to the pixel."""
    packer = zlib.compressobj(9)
    row = bytes(1 + (side + 7) // 8)
    body = b"".join(packer.compress(row) for _ in range(side)) + packer.flush()

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", side, side, 1, 0, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", body) + chunk(b"IEND", b"")


class OddRows(unittest.TestCase):
    def setUp(self):
        self.desktop = self.enterContext(Desktop())
        self.store = Store(self.desktop.store_file)
        self.keyboard = self.desktop.keyboard
        with Larkspool(self.desktop):  # makes the store
            wait_until(lambda: self.store.query("SELECT 1 FROM PasteTemplate"), "the store is there")

    def seed(self, content, kind="text", image=None, application="Editor"):
        """Puts an entry into the store, newer than those before it."""
        count = self.store.query("SELECT count(*) AS n FROM ClipboardItem")[0]["n"]
        self.store.change(
            "INSERT INTO ClipboardItem (id, content, type, imageData, sourceAppName, sourceAppBundleId, isPinned,"
            " createdAt, characterCount, categoryId) VALUES (?, ?, ?, ?, ?, 'org.example.editor', 0, ?, ?, NULL)",
            str(uuid.uuid4()), content, kind, image, application, time.time() - 1000 + count, len(content),
        )

    def run_program(self):
        self.program = self.enterContext(Larkspool(self.desktop))

    def rows(self, count):
        """The rows in sight, each looked at whether it is as large as any and lies in the list."""
        def found():
            nodes = screen_reader.nodes(self.desktop)
            rows = [node for node in nodes if node.role == ROW]
            history = [node for node in nodes if (node.role, node.name) == ("list", "History")]
            return (history[0], rows) if history and len(rows) == count else None

        history, rows = wait_until(found, f"{count} rows")
        rows.sort(key=lambda row: row.y)
        for row in rows:
            self.assertEqual(row.height, ROW_HEIGHT, row)
            self.assertGreaterEqual(row.x, history.x + SIDE, row)
            self.assertLessEqual(row.x + row.width, history.x + history.width - SIDE, row)
            self.assertNotEqual(row.name.strip(), "")
        for upper, lower in zip(rows, rows[1:]):
            self.assertLessEqual(upper.y + upper.height, lower.y, "rows lie over each other")
        return rows

    def open_with_neighbours(self, content, **how):
        """Runs the program on the odd entry between two plain ones and opens the panel; the odd row."""
        self.seed("the one below")
        self.seed(content, **how)
        self.seed("the one above")
        self.run_program()
        self.program.open_panel()
        above, odd, below = self.rows(3)
        self.assertEqual((above.name, below.name), ("the one above", "the one below"))
        self.keyboard.press("Down")
        return odd

    def has_label(self, part):
        return any(part in node.name for node in screen_reader.nodes(self.desktop, "label"))

    def expect_found(self, sought, row):
        self.keyboard.type(sought)
        wait_until(lambda: self.program.rows() == [row.name], f"{sought!r} finds the one row", 60)
        self.rows(1)
        self.keyboard.press("Escape")
        self.rows(3)

    def expect_refusal(self):
        self.keyboard.press("Down", "ctrl+e")
        wait_until(lambda: self.has_label(TOO_LARGE), "the refusal")
        self.assertEqual(screen_reader.nodes(self.desktop, "text"), [])
        self.rows(3)

    def expect_editor(self, beginning):
        self.keyboard.press("Down", "ctrl+e")
        field = wait_until(lambda: screen_reader.nodes(self.desktop, "text", "Edit"), "the editor")[0]
        self.assertEqual(field.text[: len(beginning)], beginning)
        self.keyboard.press("Escape")
        self.rows(3)

    def hide(self):
        self.keyboard.press("Escape")
        self.program.wait_until_hidden()

    def expect_use_leaves_no_memory_of(self, size, use):
        """Shows the panel once without the entry's use and once with it."""
        self.hide()
        self.program.open_panel()
        self.rows(3)
        self.hide()
        before = self.program.memory()
        self.program.open_panel()
        use()
        self.hide()
        wait_until(lambda: self.program.memory() - before < size, f"less than {size} bytes more than {before}")

    def test_a_text_of_50_megabytes(self):
        text = "the quick brown fox jumps over the lazy dog\n" * 1_130_000 + "a lark at the end\n"
        self.assertGreater(len(text), 49 * MB)
        row = self.open_with_neighbours(text)

        def use():
            self.expect_found("lark at", row)
            self.expect_refusal()

        self.expect_use_leaves_no_memory_of(len(text) // 4, use)

    def test_one_line_of_5_megabytes(self):
        text = "abcdefghi " * 500_000 + "lark"
        row = self.open_with_neighbours(text)

        def use():
            self.expect_found("lark", row)
            self.expect_refusal()

        self.expect_use_leaves_no_memory_of(len(text), use)

    def test_10000_lines_are_edited(self):
        text = "".join(f"line {number}\n" for number in range(10_000))
        row = self.open_with_neighbours(text)
        self.assertLess(row.name.count("\n"), 6)
        self.expect_found("line 9999", row)
        self.expect_editor("line 0\nline 1\nline 2\n")

    def test_control_characters(self):
        text = f"before{CONTROLS}after"
        row = self.open_with_neighbours(text)
        self.assertTrue(row.name.startswith("before"), row)
        self.assertFalse(set(row.name) & (set(CONTROLS) - set("\t\n")), row)
        self.expect_found("before", row)
        self.expect_editor("before")

    def test_characters_that_turn_the_direction(self):
        text = f"before{BIDI}after\u202e\u2067 " * 100
        row = self.open_with_neighbours(text)
        self.assertTrue(row.name.startswith("beforeafter"), row)
        self.assertFalse(set(row.name) & set(BIDI), row)
        self.expect_found("before", row)
        self.expect_editor("before")

    def test_letters_with_a_thousand_marks(self):
        row = self.open_with_neighbours("lark" + "\u0302" * 1000 + " wren")
        self.expect_found("wren", row)
        self.expect_editor("lark")

    def test_a_picture_of_30000_pixels_to_the_side(self):
        picture = wide_picture(30_000)
        row = self.open_with_neighbours("square.png", kind="image", image=picture)
        # Its pixels alone are 112 MB.
        wait_until(lambda: self.program.memory() < 100 * MB, "the picture is not kept in memory")
        self.expect_found("square", row)

    def test_a_file_that_is_gone(self):
        row = self.open_with_neighbours("/no/such/folder/gone.txt", kind="file")
        self.assertIn("gone.txt", row.name)
        self.expect_found("gone", row)

    def test_an_application_with_a_name_of_500_characters(self):
        name = ("Quite a long name " * 30)[:500]
        row = self.open_with_neighbours("a text", application=name)
        self.assertIn(name.strip()[:100], row.description)
        self.expect_found("long name", row)
        self.expect_editor("a text")

    def test_all_of_them_are_passed_by_the_highlight(self):
        self.seed("the last")
        self.seed("abcdefghi " * 500_000)
        self.seed("".join(f"line {number}\n" for number in range(10_000)))
        self.seed(f"before{CONTROLS}after")
        self.seed(f"before{BIDI}after")
        self.seed("square.png", kind="image", image=wide_picture(30_000))
        self.seed("/no/such/folder/gone.txt", kind="file")
        self.seed("a text", application="long name " * 50)
        self.run_program()
        self.program.open_panel()
        for _ in range(7):
            self.keyboard.press("Down")
        wait_until(
            lambda: [row.name for row in screen_reader.nodes(self.desktop, ROW) if "selected" in row.states]
            == ["the last"],
            "the highlight is on the last row",
        )
        self.keyboard.press("Return")
        self.program.wait_until_hidden()
        wait_until(lambda: programs.xclip_paste(self.desktop) == b"the last", "the last entry is copied")


if __name__ == "__main__":
    run_tests()
