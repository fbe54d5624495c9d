"""KWin without a screen: it gives some protocols only to programs that their desktop file allows them."""

import pathlib
import shutil

from .kwin_services import capture, hot_key_is_active
from .larkspool import binary
from .waiting import need
from .wayland import WaylandDesktop
from .wayland_keyboard import WaylandKeyboard, WindowFacts
from .wlwire import Connection

WIDTH, HEIGHT = 1920, 1080
RESTRICTED = "org_kde_plasma_window_management,org_kde_kwin_fake_input"
DESKTOP_FILE = """[Desktop Entry]
Type=Application
Name={name}
Exec={program}
X-KDE-Wayland-Interfaces={interfaces}
"""
HOT_KEY = 0x10000000 | 0x02000000 | ord("V")  # Meta, Shift and a key, in Qt's numbers
ACTIVE, MINIMISED = 1 << 0, 1 << 1  # of a window's state


class FakeInputHand:
    def __init__(self, wire):
        self._wire = wire
        self._input = wire.bind("org_kde_kwin_fake_input", 4)
        self._input.send("authenticate", "tests", "press keys")
        wire.roundtrip()

    def key(self, code, is_down):
        self._input.send("keyboard_key", code, int(is_down))
        self._wire.roundtrip()

    def move(self, x, y):
        self._input.send("pointer_motion_absolute", x, y)
        self._wire.roundtrip()

    def button(self, code, is_down):
        self._input.send("button", code, int(is_down))
        self._wire.roundtrip()


class WindowList:
    """The windows that the task bar would show, kept up to date by events."""

    def __init__(self, wire):
        self._wire = wire
        self._windows = {}
        self._list = wire.bind("org_kde_plasma_window_management", 16)
        self._list.on["window_with_uuid"] = self._add
        wire.roundtrip()

    def _add(self, _number, handle):
        facts = {"proxy": self._list.send("get_window_by_uuid", handle)}
        self._windows[handle] = facts
        facts["proxy"].on = {
            "title_changed": lambda title: facts.__setitem__("title", title),
            "app_id_changed": lambda program: facts.__setitem__("program", program),
            "state_changed": lambda state: facts.__setitem__("state", state),
            "geometry": lambda *place: facts.__setitem__("place", place),
            "unmapped": lambda: self._windows.pop(handle, None),
        }

    def look(self):
        # The first tells of new windows, the second what they are.
        self._wire.roundtrip()
        self._wire.roundtrip()
        found = []
        for handle, facts in self._windows.items():
            state = facts.get("state", 0)
            if not state & MINIMISED:
                program = facts.get("program", "")
                found.append(WindowFacts(handle, facts.get("title"), bool(state & ACTIVE), facts.get("place"), program))
        return found

    def activate(self, handle):
        self._windows[handle]["proxy"].send("set_state", ACTIVE, ACTIVE)
        self._wire.roundtrip()


class KWin(WaylandDesktop):
    """With `pictures` it draws with OpenGL in software, which is slow, and can be photographed.

    `allows` are the restricted interfaces that Larkspool's desktop file names; with an empty text it has no such file.
    """

    name = "KDE"
    portals = ("kde",)

    def __init__(self, xwayland=False, pictures=False, allows=RESTRICTED):
        super().__init__(xwayland)
        self._has_pictures = pictures
        self._allows = allows

    def _check(self):
        need("kwin_wayland", "dbus-daemon", "gdbus")

    def _prepare(self):
        # The installed file has a capability that a container need not grant. The content is what counts.
        shutil.copyfile(shutil.which("kwin_wayland"), self.home / "kwin_wayland")
        (self.home / "kwin_wayland").chmod(0o755)
        # A Python of the tests' own: other desktop files may name the system's.
        self._hand_program = self.home / "hand"
        shutil.copyfile(pathlib.Path("/usr/bin/python3").resolve(), self._hand_program)
        self._hand_program.chmod(0o755)
        self._allow("tests.hand", self._hand_program, RESTRICTED)
        if self._allows:
            self._allow("org.larkspool.Larkspool", self.readable(binary()), self._allows)
        # On a busy machine a release may come late.
        (pathlib.Path(self.env["XDG_CONFIG_HOME"]) / "kcminputrc").write_text("[Keyboard]\nKeyRepeat=nothing\n")
        self.env.update(KDE_FULL_SESSION="true", KDE_SESSION_VERSION="5")

    def _allow(self, identifier, program, interfaces):
        folder = pathlib.Path(self.env["XDG_DATA_HOME"]) / "applications"
        folder.mkdir(exist_ok=True)
        self.give(folder)
        text = DESKTOP_FILE.format(name=identifier, program=program, interfaces=interfaces)
        (folder / f"{identifier}.desktop").write_text(text)

    def _command(self):
        words = ["--virtual", "--width", WIDTH, "--height", HEIGHT, "--no-lockscreen", "--socket", self.socket_name]
        return [self.home / "kwin_wayland", *words, *(["--xwayland"] if self._has_xwayland else [])]

    def _compositor_environment(self):
        how = {"KWIN_COMPOSE": "Q"}
        if self._has_pictures:
            how = {"KWIN_COMPOSE": "O2", "KWIN_SCREENSHOT_NO_PERMISSION_CHECKS": "1", "LIBGL_ALWAYS_SOFTWARE": "1"}
        return how

    def _make_hands(self):
        env = {**self.env, "PYTHONHOME": "/usr"}
        wire = Connection(self.connect(self._hand_program, env))
        self._wires.append(wire)
        windows = WindowList(wire)
        self.keyboard = WaylandKeyboard(FakeInputHand(wire), windows.look, windows.activate)

    def takes_hot_key(self, program):
        return super().takes_hot_key(program) and hot_key_is_active(self.env["DBUS_SESSION_BUS_ADDRESS"], HOT_KEY)

    def screenshot(self, path):
        if not self._has_pictures:
            raise AssertionError("make the desktop with pictures=True")
        capture(self.env["DBUS_SESSION_BUS_ADDRESS"], path)
