"""Real programs that copy and paste, driven as a hand would."""

import configparser
import pathlib
import subprocess

from . import children, text_field
from .waiting import need, wait_until


def desktop_name(desktop_id):
    """The name that a program's desktop file gives, without a language."""
    path = pathlib.Path("/usr/share/applications") / f"{desktop_id}.desktop"
    parser = configparser.RawConfigParser(strict=False)
    parser.optionxform = str
    parser.read(path, encoding="utf-8")
    return parser["Desktop Entry"]["Name"]


def xclip_copy(desktop, content, target=None):
    """Copies bytes with xclip, which serves them until another program copies; the process."""
    need("xclip")
    words = ["xclip", "-quiet", "-selection", "clipboard", "-i"]
    if target:
        words += ["-t", target]
    before = desktop.probe.selection_owner()
    process = desktop.spawn(*words, stdin=subprocess.PIPE)
    process.stdin.write(content)
    process.stdin.close()
    wait_until(lambda: desktop.probe.selection_owner() not in (0, before), "xclip owns the clipboard")
    return process


def xsel_copy(desktop, content):
    """Copies bytes with xsel; the process."""
    need("xsel")
    before = desktop.probe.selection_owner()
    process = desktop.spawn("xsel", "--clipboard", "--input", "--nodetach", stdin=subprocess.PIPE)
    process.stdin.write(content)
    process.stdin.close()
    wait_until(lambda: desktop.probe.selection_owner() not in (0, before), "xsel owns the clipboard")
    return process


def xclip_paste(desktop, target="UTF8_STRING", selection="clipboard", deadline=20):
    """The clipboard's bytes as xclip gets them; nothing when there are none of the target."""
    need("xclip")
    try:
        return desktop.run("xclip", "-selection", selection, "-o", "-t", target, deadline=deadline)
    except AssertionError:
        return None


def targets(desktop):
    """The names of the targets that the clipboard offers."""
    answer = xclip_paste(desktop, "TARGETS")
    return answer.decode().split() if answer else []


class Window:
    """A program with a window on the desktop."""

    def __init__(self, desktop, command, title, **options):
        need(command[0])
        self.desktop = desktop
        self.process = desktop.spawn(*desktop.on_screen(command), **options)
        self.window = desktop.keyboard.wait_for_window(title)
        if not desktop.focuses_new_windows:
            self.focus()
        desktop.keyboard.wait_for_focus(self.window)

    def focus(self):
        self.desktop.keyboard.focus(self.window)

    def press(self, *chords):
        """Presses keys in this window."""
        self.focus()
        self.desktop.keyboard.press(*chords)

    def close(self):
        self.desktop.end(self.process)


class Editor(Window):
    """A text editor on a file of its own; its texts are read back by saving."""

    def __init__(self, desktop, program, text="", name="notes.txt"):
        self.file = desktop.home / name
        self.file.write_text(text, encoding="utf-8")
        desktop.give(self.file)
        super().__init__(desktop, [program, self.file], name)

    def type(self, text):
        self.focus()
        self.desktop.keyboard.type(text)

    def copy_all(self):
        self.press("ctrl+a", "ctrl+c")

    def saved(self):
        """The file's bytes after Ctrl+S."""
        self.press("ctrl+s")
        return self.file.read_bytes()

    def text(self):
        """What mousepad shows, read as a screen reader does: without a key being pressed."""
        return text_field.text(self.desktop, "mousepad")


class Terminal(Window):
    """An xterm whose keyboard goes into a file, byte for byte."""

    def __init__(self, desktop, name="typed.txt"):
        self.file = desktop.home / name
        script = f'stty -icanon -echo && exec cat > "{self.file}"'
        super().__init__(desktop, ["xterm", "-title", f"terminal {name}", "-e", "sh", "-c", script], f"terminal {name}")
        wait_until(self.file.exists, "the terminal takes the keyboard")

    def typed(self):
        """What has arrived so far."""
        return self.file.read_bytes()


class VteTerminal(Window):
    """An xfce4-terminal whose keyboard goes into a file, byte for byte."""

    def __init__(self, desktop, name="typed-vte.txt"):
        self.file = desktop.home / name
        folder = pathlib.Path(desktop.env["XDG_CONFIG_HOME"]) / "xfce4" / "terminal"
        folder.mkdir(parents=True, exist_ok=True)
        desktop.give(folder)
        desktop.give(folder.parent)
        # By default it asks before it takes several lines, since a shell would run them.
        (folder / "terminalrc").write_text("[Configuration]\nMiscShowUnsafePasteDialog=FALSE\n")
        script = f"stty -icanon -echo && exec cat > '{self.file}'"
        command = ["xfce4-terminal", "--disable-server", "-T", f"vte {name}", "-x", "sh", "-c", script]
        super().__init__(desktop, command, f"vte {name}")
        wait_until(self.file.exists, "the terminal takes the keyboard")

    def typed(self):
        """What has arrived so far."""
        return self.file.read_bytes()


class Browser(Window):
    """Chromium on an empty page; its address bar is read as a screen reader does."""

    def __init__(self, desktop):
        need("chromium")
        flags = [
            "--no-sandbox", f"--user-data-dir={desktop.home}/browser", "--no-first-run", "--password-store=basic",
            "--disable-gpu", "--disable-background-networking", "--force-renderer-accessibility",
        ]  # fmt: skip
        # It appears in the accessibility tree only with the variable and the flag.
        command = ["env", "ACCESSIBILITY_ENABLED=1", "chromium", *flags, "about:blank"]
        super().__init__(desktop, command, "about:blank")

    def type_address(self, text):
        """Types a text into the address bar, in place of what it held; the keyboard stays there."""
        self.press("ctrl+l", "ctrl+a")
        self.desktop.keyboard.type(text)
        wait_until(lambda: self.address() == text, "typed", every=0.2)

    def address(self):
        """What the address bar holds; nothing while it is not in the tree."""
        return text_field.text(self.desktop, "Chromium", "Address and search bar")


class Receiver(Window):
    """A window that says when a paste arrives; see the program of the same name."""

    def __init__(self, desktop):
        program = pathlib.Path(__file__).with_name("receiver.py")
        super().__init__(desktop, ["/usr/bin/python3", program], "^receiver$", stdout=subprocess.PIPE)
        self.lines = children.Lines(self.process.stdout)

    def pastes(self):
        """When and what, for every paste so far."""
        found = [line.split(" ") for line in self.lines.all() if line.startswith("pasted ")]
        return [(float(moment), bytes.fromhex(text)) for _, moment, text in found]

    def other_keys(self):
        """The codes of keys that came and were no paste."""
        return [int(line.split(" ")[1]) for line in self.lines.all() if line.startswith("key ")]


class TerminalWithText(Window):
    """An xterm that shows one line, in which a selection with the mouse goes to the clipboard."""

    def __init__(self, desktop, line):
        shown = desktop.home / "shown"
        script = f'printf "%s\\n" "{line}" && touch "{shown}" && exec cat'
        resources = ["-xrm", "XTerm*selectToClipboard: true", "-xrm", "XTerm*highlightSelection: true"]
        super().__init__(desktop, ["xterm", *resources, "-title", "shown", "-e", "sh", "-c", script], "shown")
        wait_until(shown.exists, "the terminal shows its line")

    def select_first_line(self):
        """Three clicks select the line."""
        self.focus()
        self.desktop.keyboard.click(self.window, 30, 10, times=3)


class FileManager(Window):
    """pcmanfm in a folder."""

    def __init__(self, desktop, folder):
        super().__init__(desktop, ["pcmanfm", "--no-desktop", folder], folder.name)

    def copy_all(self):
        self.press("ctrl+a", "ctrl+c")


class PictureViewer(Window):
    """ristretto on a picture."""

    def __init__(self, desktop, picture):
        super().__init__(desktop, ["ristretto", picture], picture.name)

    def copy(self):
        self.press("ctrl+c")


def copy_screenshot(desktop):
    """Photographs the screen into the clipboard with xfce4-screenshooter, which ends as soon as it may."""
    need("xfce4-screenshooter")
    return desktop.spawn("xfce4-screenshooter", "--fullscreen", "--clipboard")
