#!/usr/bin/python3
"""Plays the main job once on a desktop of its own, with real programs, and says each step and how long it took.

Ends with 0 only if every step worked. Pictures go to the folder named on the command line.
"""

import contextlib
import pathlib
import shutil
import sys
import time
import traceback

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "session"))
sys.dont_write_bytecode = True

from harness import Desktop, Larkspool, Store, accessibility, pictures, programs, wait_until  # noqa: E402

POEM = "A lark went up, and what it sang\nwas copied once and pasted twice: grün, 🐦\n"


class Demo:
    """The steps, in order; each one works or ends the demonstration."""

    def __init__(self, folder):
        self._folder = folder
        self._step = 0
        self._started = time.monotonic()

    @contextlib.contextmanager
    def step(self, claim):
        self._step += 1
        print(f"{self._step:3}  {claim} ... ", end="", flush=True)
        begin = time.monotonic()
        try:
            yield
        except BaseException:
            print("FAILED")
            raise
        print(f"{(time.monotonic() - begin) * 1000:.0f} ms")

    def picture(self, desktop, name):
        desktop.screenshot(self._folder / f"{name}.png")

    def play(self):
        with contextlib.ExitStack() as stack:
            with self.step("a display, a message bus and a window manager of its own"):
                desktop = stack.enter_context(Desktop("1280x800x24"))
            try:
                self.play_on(desktop)
            except BaseException:
                if desktop.probe is not None:
                    self.picture(desktop, "failed")
                raise

    def play_on(self, desktop):
        store = Store(desktop.store_file)
        program = Larkspool(desktop)
        try:
            with self.step("Larkspool starts, until its hot key is live"):
                program.start()
                program.wait_for_hot_key(every=0.002)
            self.copy(desktop, store)
            self.paste(desktop, store, program)
            self.combine(desktop, store, program)
        except BaseException:
            if program.process.poll() is None:
                program.kill()
            print("Larkspool printed:", *program.stdout.finish(), *program.stderr.finish(), sep="\n  ")
            raise
        with self.step("Larkspool ends, asked by SIGTERM"):
            program.stop()
        with self.step("everything is in one sound file of the user's own"):
            assert store.integrity() == "ok", store.integrity()
            assert len(store.items()) == 5, store.contents()

    def copy(self, desktop, store):
        editor = programs.Editor(desktop, "mousepad", name="poem.txt")
        with self.step("a text typed and copied in mousepad is in the history"):
            editor.type("typed by hand, and more")
            editor.copy_all()
            store.wait_for("typed by hand, and more")
        editor.close()

        picture = desktop.home / "picture.png"
        picture.write_bytes(pictures.png(320, 200))
        viewer = programs.PictureViewer(desktop, picture)
        with self.step("a picture copied in ristretto is in the history, pixel by pixel"):
            viewer.copy()
            item = store.wait_for_newest(lambda newest: newest["type"] == "image", "the picture is stored")
            assert pictures.pixels(store.image(item["id"])) == pictures.pixels(picture.read_bytes())
        viewer.close()

        folder = desktop.home / "papers"
        folder.mkdir()
        (folder / "the report.pdf").write_bytes(b"%PDF-1.4\n")
        files = programs.FileManager(desktop, folder)
        with self.step("a file copied in pcmanfm is in the history"):
            files.copy_all()
            assert store.wait_for(str(folder / "the report.pdf"))["type"] == "file"
        files.close()

        with self.step("a poem copied with xclip is in the history"):
            programs.xclip_copy(desktop, POEM.encode())
            store.wait_for(POEM)
        self.picture(desktop, "1-copied")

    def paste(self, desktop, store, program):
        terminal = programs.Terminal(desktop)
        with self.step("Super+Shift+V opens the panel over the terminal"):
            program.open_panel()
        with self.step("a screen reader hears four entries, the newest first"):
            rows = wait_until(lambda: len(program.rows()) == 4 and program.rows(), "four rows")
            assert rows[0].startswith("A lark went up"), rows
            assert rows[3].startswith("typed by hand"), rows
        self.picture(desktop, "2-panel")
        with self.step("Down three times and Return: the first text stands in the terminal"):
            desktop.keyboard.press("Down", "Down", "Down", "Return")
            wait_until(lambda: terminal.typed() == b"typed by hand, and more", "the terminal has it")
        self.picture(desktop, "3-terminal")
        with self.step("what was pasted is the newest entry now"):
            store.wait_for_newest(
                lambda newest: newest["content"] == "typed by hand, and more", "it is at the top"
            )
        terminal.close()

        editor = programs.Editor(desktop, "featherpad", name="pasted.txt")
        with self.step("hot key, then letters: the list shows what holds them in any case"):
            program.open_panel()
            desktop.keyboard.type("WHAT IT SANG")
            wait_until(lambda: [row[:11] for row in program.rows()] == ["A lark went"], "the poem alone")
        self.picture(desktop, "4-search")
        with self.step("Return: the poem stands in featherpad, and is saved byte by byte"):
            desktop.keyboard.press("Return")
            program.wait_until_hidden()
            wait_until(lambda: editor.saved() == POEM.encode(), "the file holds the poem", every=0.2)
        self.picture(desktop, "5-editor")
        editor.close()
        with self.step("the history holds four entries still"):
            assert len(store.items()) == 4, store.contents()

    def combine(self, desktop, store, program):
        both = f"{POEM.strip()}\ntyped by hand, and more"
        editor = programs.Editor(desktop, "featherpad", name="combined.txt")
        with self.step("hot key, then Right: the texts alone"):
            program.open_panel()
            desktop.keyboard.press("Right")
            wait_until(lambda: len(program.rows()) == 2, "two rows")
        self.picture(desktop, "6-filter")
        with self.step("Shift+Down and Return: the combine panel shows both as one text"):
            desktop.keyboard.press("shift+Down")
            wait_until(lambda: accessibility.nodes(desktop, name="2 items selected"), "two are selected")
            desktop.keyboard.press("Return")
            wait_until(lambda: accessibility.nodes(desktop, name="Combine 2 items"), "the combine panel")
        self.picture(desktop, "7-combine")
        with self.step("Return: both stand in featherpad, one under the other, and are an entry of their own"):
            desktop.keyboard.press("Return")
            program.wait_until_hidden()
            # The editor ends a file with a line break of its own.
            wait_until(lambda: editor.saved() == both.encode() + b"\n", "the file holds both", every=0.2)
            store.wait_for(both)
        self.picture(desktop, "8-combined")
        editor.close()

    def report(self, word):
        print(f"{word} in {time.monotonic() - self._started:.1f} s. Pictures: {self._folder}")


def main():
    folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ROOT / "build" / "demo").resolve()
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    demo = Demo(folder)
    try:
        demo.play()
    except Exception:
        traceback.print_exc()
        demo.report("Failed")
        return 1
    demo.report("Every step worked")
    return 0


if __name__ == "__main__":
    sys.exit(main())
