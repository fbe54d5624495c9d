"""Real programs that copy and paste on a Wayland desktop."""

import subprocess

from . import programs
from .waiting import need, wait_until


def wl_copy(desktop, content, mime="text/plain;charset=utf-8"):
    """Copies bytes with wl-copy, which serves them until another program copies; the process."""
    need("wl-copy")
    process = desktop.spawn("wl-copy", "--foreground", "--type", mime, stdin=subprocess.PIPE)
    process.stdin.write(content)
    process.stdin.close()
    return process


def wl_paste(desktop, mime="text/plain;charset=utf-8", deadline=20):
    """The clipboard's bytes as wl-paste gets them; nothing when there are none of the type."""
    need("wl-paste")
    try:
        return desktop.run("wl-paste", "--no-newline", "--type", mime, deadline=deadline)
    except AssertionError:
        return None


def xclip_copy(desktop, content):
    """Copies bytes with xclip on the desktop's X server, which takes them while one of its windows is in front."""
    need("xclip")
    process = desktop.spawn("xclip", "-quiet", "-selection", "clipboard", "-i", stdin=subprocess.PIPE)
    process.stdin.write(content)
    process.stdin.close()
    return process


class Foot(programs.Window):
    """A foot terminal whose keyboard goes into a file, byte for byte."""

    def __init__(self, desktop, name="typed.txt"):
        self.file = desktop.home / name
        script = f'stty -icanon -echo && exec cat > "{self.file}"'
        title = f"terminal {name}"
        super().__init__(desktop, ["foot", "--title", title, "--", "sh", "-c", script], title)
        wait_until(self.file.exists, "the terminal takes the keyboard")

    def typed(self):
        """What has arrived so far."""
        return self.file.read_bytes()
