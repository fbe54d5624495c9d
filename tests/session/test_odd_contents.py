"""Contents that are broken, or not what they seem: each has a clear outcome, and the next copy is taken as ever."""

import os
import struct
import unittest

from harness import Desktop, Larkspool, Store, pictures, run_tests, wait_until
from harness.owner import Background, Owner


def uri(path):
    return b"file://" + str(path).encode() + b"\r\n"


def tiff_bomb():
    """A file of some hundred bytes that claims a picture of 60,000 x 60,000 pixels."""
    entries = [
        (256, 4, 60_000), (257, 4, 60_000), (258, 3, 8), (259, 3, 1), (262, 3, 1),
        (273, 4, 8), (277, 3, 1), (278, 4, 60_000), (279, 4, 100),
    ]
    directory = struct.pack("<H", len(entries))
    directory += b"".join(struct.pack("<HHII", tag, kind, 1, value) for tag, kind, value in entries)
    return b"II*\0" + struct.pack("<I", 108) + b"\0" * 100 + directory + b"\0\0\0\0"


class WithProgram(unittest.TestCase):
    may_print = ()

    def setUp(self):
        self.desktop = self.enterContext(Desktop())
        self.store = Store(self.desktop.store_file)
        self.enterContext(Larkspool(self.desktop, may_print=self.may_print))

    def entries_after(self, data):
        """What is stored of one copy: (content, type), known to be all once the next copy is there."""
        owner = Owner(self.desktop.env["DISPLAY"])
        owner.copy(data)
        with Background(owner):
            self.wait_until_asked(owner, data)
            following = Owner(self.desktop.env["DISPLAY"])
            following.copy_text("the next copy")
            with Background(following):
                self.store.wait_for("the next copy")
        return [(item["content"], item["type"]) for item in self.store.items()[1:]]

    @staticmethod
    def wait_until_asked(owner, data):
        wait_until(lambda: set(data) <= set(owner.asked_for), "the content is asked for")


class OddContents(WithProgram):
    def test_text_with_bytes_that_are_no_utf8_is_stored_with_replacement_characters(self):
        self.assertEqual(self.entries_after({"UTF8_STRING": b"caf\xe9 here"}), [("caf\ufffd here", "text")])

    def test_text_with_a_zero_byte_in_it_is_stored_whole(self):
        self.assertEqual(self.entries_after({"UTF8_STRING": b"before\0after"}), [("before\0after", "text")])

    def test_an_address_list_with_comments_gives_its_first_file(self):
        first = self.desktop.home / "first file.txt"
        first.write_text("x")
        listed = b"# copied files\r\n" + uri(str(first).replace(" ", "%20")) + uri(self.desktop.home / "second.txt")
        self.assertEqual(self.entries_after({"text/uri-list": listed}), [(str(first), "file")])

    def test_an_image_file_that_is_gone_is_stored_as_file(self):
        gone = self.desktop.home / "gone.png"
        self.assertEqual(self.entries_after({"text/uri-list": uri(gone)}), [(str(gone), "file")])

    def test_a_directory_named_like_an_image_is_stored_as_file(self):
        folder = self.desktop.home / "folder.png"
        folder.mkdir()
        self.assertEqual(self.entries_after({"text/uri-list": uri(folder)}), [(str(folder), "file")])

    def test_a_fifo_named_like_an_image_is_stored_as_file_and_never_waited_for(self):
        fifo = self.desktop.home / "pipe.png"
        os.mkfifo(fifo)
        self.assertEqual(self.entries_after({"text/uri-list": uri(fifo)}), [(str(fifo), "file")])


class BrokenPictures(WithProgram):
    # What the decoders of pictures say of broken ones.
    may_print = (r"^libpng error: ", r"^TIFFReadDirectory: Warning, ", r"^qt\.gui\.imageio: ")

    def test_a_broken_png_falls_through_to_the_text_beside_it(self):
        data = {"image/png": pictures.png(20, 20)[:100], "UTF8_STRING": b"a text beside it"}
        self.assertEqual(self.entries_after(data), [("a text beside it", "text")])

    def test_a_broken_png_alone_is_not_stored(self):
        self.assertEqual(self.entries_after({"image/png": b"\x89PNG\r\n\x1a\nnot a picture"}), [])

    def test_a_tiff_that_claims_gigabytes_of_pixels_is_not_stored(self):
        self.assertEqual(self.entries_after({"image/tiff": tiff_bomb()}), [])


if __name__ == "__main__":
    run_tests()
