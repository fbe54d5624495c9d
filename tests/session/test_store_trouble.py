"""A store that cannot be opened, and a disk that is full."""

import hashlib
import os
import shutil
import subprocess
import unittest

from harness import Desktop, Larkspool, Store, missing, need, programs, run_tests, stays, wait_until

CANNOT_OPEN = r"^Failed to create ModelContainer: \S"
NEWER_VERSION = 1000
NOBODY = 65534
# Put before a command, it makes permissions count for root as for anybody.
RIGHTS = "-dac_override,-dac_read_search,-fowner,-chown"
AS_ANYBODY = ("setpriv", f"--bounding-set={RIGHTS}", f"--inh-caps={RIGHTS}")


def contents(folder):
    """Every file of the folder by name, with a digest of its bytes; but for an empty log and the log's index."""
    found = {file.name: hashlib.sha256(file.read_bytes()).hexdigest() for file in folder.iterdir()}
    if found.get("larkspool.sqlite-wal") == hashlib.sha256(b"").hexdigest():
        del found["larkspool.sqlite-wal"]
        found.pop("larkspool.sqlite-shm", None)
    return found


LARGE = "kept in memory " * 20_000


class CannotOpen(unittest.TestCase):
    def setUp(self):
        self.desktop = self.enterContext(Desktop())
        self.file = self.desktop.store_file
        self.store = Store(self.file)

    def assert_goes_on_without_store(self, wrapper=()):
        """One line says why, nothing is seeded or captured, the hot key works, and the end is a clean one."""
        with Larkspool(self.desktop, wrapper, may_print=[CANNOT_OPEN]) as program:
            program.stdout.wait_for(lambda line: line.startswith("Failed to create ModelContainer: "), "the line")
            copier = programs.xclip_copy(self.desktop, b"copied in vain")
            self.desktop.end(copier)
            program.open_panel()
            self.desktop.keyboard.press("Escape")
            program.wait_until_hidden()
            lines = program.stop()
        self.assertEqual(len(lines), 1, lines)

    def assert_untouched(self, before):
        self.assertEqual(contents(self.file.parent), before)

    def test_a_directory_in_its_place_is_left_alone(self):
        self.file.mkdir(parents=True)
        (self.file / "something").write_text("of somebody's")
        self.assert_goes_on_without_store()
        self.assertEqual((self.file / "something").read_text(), "of somebody's")

    def test_a_corrupt_file_is_left_alone(self):
        self.file.parent.mkdir(parents=True)
        self.file.write_bytes(os.urandom(50_000))
        before = contents(self.file.parent)
        self.assert_goes_on_without_store()
        self.assert_untouched(before)

    def test_a_file_with_a_corrupt_page_of_entries_is_left_alone(self):
        with Larkspool(self.desktop):
            programs.xclip_copy(self.desktop, b"soon unreadable")
            self.store.wait_for("soon unreadable")
        page = self.store.query("SELECT rootpage FROM sqlite_schema WHERE name = 'ClipboardItem'")[0]["rootpage"]
        size = self.store.query("PRAGMA page_size")[0]["page_size"]
        with open(self.file, "r+b") as file:
            file.seek((page - 1) * size)
            file.write(os.urandom(size))
        before = contents(self.file.parent)
        self.assert_goes_on_without_store()
        self.assert_untouched(before)

    def test_another_programs_database_is_left_alone(self):
        self.file.parent.mkdir(parents=True)
        self.store.change("CREATE TABLE somebodys (anything TEXT)")
        before = contents(self.file.parent)
        self.assert_goes_on_without_store()
        self.assert_untouched(before)

    def test_a_file_from_a_newer_version_is_left_alone(self):
        with Larkspool(self.desktop):
            pass
        version = self.store.query("PRAGMA user_version")[0]["user_version"]
        self.assertGreater(version, 0, "the schema has a version from the first day")
        self.store.change(f"PRAGMA user_version = {version + NEWER_VERSION}")
        before = contents(self.file.parent)
        self.assert_goes_on_without_store()
        self.assert_untouched(before)

    def test_a_folder_without_permission_is_left_alone(self):
        if os.geteuid() != 0:
            missing("a folder can only be given away by root")
        need("setpriv")
        with Larkspool(self.desktop):
            pass
        before = contents(self.file.parent)
        os.chown(self.file.parent, NOBODY, NOBODY)
        self.assert_goes_on_without_store(AS_ANYBODY)
        self.assert_untouched(before)


class FullDisk(unittest.TestCase):
    def setUp(self):
        self.desktop = self.enterContext(Desktop())
        self.folder = self.desktop.store_file.parent
        self.folder.mkdir(parents=True, mode=0o700)
        self.mount()
        self.store = Store(self.desktop.store_file)

    def mount(self):
        """A small disk under the store."""
        if os.geteuid() != 0:
            missing("a small disk can only be mounted by root")
        command = ["mount", "-t", "tmpfs", "-o", "size=2m,mode=0700", "larkspool-test", str(self.folder)]
        done = subprocess.run(command, capture_output=True, text=True)
        if done.returncode != 0:
            missing(f"a small disk cannot be mounted here: {done.stderr.strip()}")
        self.addCleanup(subprocess.run, ["umount", "--lazy", str(self.folder)], check=True)

    def fill(self):
        """Takes all the room there is."""
        filler = self.folder / "filler"
        with open(filler, "wb", buffering=0) as file:
            try:
                while True:
                    file.write(b"f" * 4096)
            except OSError:
                pass
        self.assertEqual(shutil.disk_usage(self.folder).free, 0)
        return filler

    def copy_while_full(self, program):
        """A copy that there is no room for, on a disk that was full before; what fills the disk."""
        programs.xclip_copy(self.desktop, b"before")
        self.store.wait_for("before")
        filler = self.fill()
        programs.xclip_copy(self.desktop, LARGE.encode())
        program.open_panel()
        wait_until(lambda: program.rows()[0].startswith("kept in memory"), "the copy is in the panel")
        self.assertTrue(stays(lambda: self.store.item(LARGE) is None, 1), "there is no room for it")
        return filler

    def test_a_copy_made_while_the_disk_is_full_is_shown_and_saved_with_the_next_once_there_is_room(self):
        with Larkspool(self.desktop) as program:
            self.copy_while_full(program).unlink()
            programs.xclip_copy(self.desktop, b"after")
            self.store.wait_for("after")
            self.assertEqual(self.store.contents(), ["after", LARGE, "before"])
        self.assertEqual(self.store.integrity(), "ok")
        self.assertEqual(self.store.contents(), ["after", LARGE, "before"])

    def test_a_copy_made_while_the_disk_is_full_is_saved_by_itself_once_there_is_room(self):
        with Larkspool(self.desktop) as program:
            self.copy_while_full(program).unlink()
            self.store.wait_for(LARGE, deadline=30)


if __name__ == "__main__":
    run_tests()
