"""sway without a screen: a tiling compositor with wlroots' protocols."""

import json
import os
import tempfile
import time

from .waiting import need
from .wayland import WaylandDesktop
from .wayland_keyboard import WaylandKeyboard, WindowFacts

WIDTH, HEIGHT = 1920, 1080
# The bar stays away, so that a tiled window covers the screen. Keys do not repeat: on a busy machine a release may come
# late. The history has a key as a user would bind it.
CONFIGURATION = """
xwayland {xwayland}
output HEADLESS-1 mode {width}x{height}
input type:keyboard repeat_rate 0
default_border none
default_floating_border none
bindsym Mod4+Shift+v exec {activate}
{more}
"""
ACTIVATE = (
    "gdbus call --session --dest org.larkspool.Larkspool --object-path /org/larkspool/Larkspool"
    " --method org.freedesktop.Application.Activate {}"
)
# What the compositor compiles into the keymap of a keyboard that has all keys of a US one.
KEYMAP = """xkb_keymap {
  xkb_keycodes { include "evdev+aliases(qwerty)" };
  xkb_types { include "complete" };
  xkb_compat { include "complete" };
  xkb_symbols { include "pc+us+inet(evdev)" };
};
"""
XKB_FORMAT = 1
# A virtual keyboard says itself which modifiers are in effect: the bits of the eight real ones.
MODIFIERS = {42: 1, 29: 4, 56: 8, 125: 64}


def _milliseconds():
    return int(time.monotonic() * 1000) & 0xFFFFFFFF


class VirtualHand:
    """One keyboard and one mouse, there from the start: a keyboard that comes with its first key loses it."""

    def __init__(self, wire):
        self._wire = wire
        seat = wire.bind("wl_seat", 1)
        self._keyboard = wire.bind("zwp_virtual_keyboard_manager_v1").send("create_virtual_keyboard", seat)
        with tempfile.TemporaryFile() as file:
            file.write(KEYMAP.encode() + b"\0")
            file.flush()
            self._keyboard.send("keymap", XKB_FORMAT, file.fileno(), os.fstat(file.fileno()).st_size)
        self._pointer = wire.bind("zwlr_virtual_pointer_manager_v1").send("create_virtual_pointer", seat)
        self._modifiers = 0
        wire.roundtrip()

    def key(self, code, is_down):
        if code in MODIFIERS:
            self._modifiers ^= MODIFIERS[code]
        self._keyboard.send("key", _milliseconds(), code, int(is_down))
        self._keyboard.send("modifiers", self._modifiers, 0, 0, 0)
        self._wire.roundtrip()

    def move(self, x, y):
        self._pointer.send("motion_absolute", _milliseconds(), x, y, WIDTH, HEIGHT)
        self._pointer.send("frame")
        self._wire.roundtrip()

    def button(self, code, is_down):
        self._pointer.send("button", _milliseconds(), code, int(is_down))
        self._pointer.send("frame")
        self._wire.roundtrip()


class Sway(WaylandDesktop):
    """`more` goes to the end of its configuration, in which {home} is the desktop's home."""

    name = "sway"

    def __init__(self, xwayland=False, more=""):
        super().__init__(xwayland)
        self._more = more

    def _check(self):
        need("sway", "swaymsg", "dbus-daemon", "gdbus", "grim")

    def _prepare(self):
        values = {
            "xwayland": "force" if self._has_xwayland else "disable", "width": WIDTH, "height": HEIGHT,
            "activate": ACTIVATE, "more": self._more.replace("{home}", str(self.home)),
        }  # fmt: skip
        (self.home / "sway.conf").write_text(CONFIGURATION.format(**values))
        self.env["SWAYSOCK"] = self.env["XDG_RUNTIME_DIR"] + "/sway.sock"

    def _command(self):
        return ["sway", "-c", self.home / "sway.conf"]

    def _compositor_environment(self):
        return {"WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman", "WLR_LIBINPUT_NO_DEVICES": "1"}

    def _make_hands(self):
        self.keyboard = WaylandKeyboard(VirtualHand(self.wire()), self._windows, self._activate)

    def _windows(self):
        return list(_windows_of(json.loads(self.message("-t", "get_tree")), is_floating=False))

    def _activate(self, handle):
        self.message(f"[con_id={handle}] focus")

    def message(self, *words):
        """Says something to the compositor; its answer."""
        return self.run("swaymsg", *words)

    def screenshot(self, path):
        self.run("grim", path)


def _windows_of(node, is_floating):
    if node.get("pid"):
        # The place of the content: without the border that the compositor draws.
        place, content = node["rect"], node["window_rect"]
        place = (place["x"] + content["x"], place["y"] + content["y"], content["width"], content["height"])
        program = node.get("app_id") or (node.get("window_properties") or {}).get("class", "")
        if node["visible"]:
            yield WindowFacts(node["id"], node["name"], node["focused"], place, program, is_floating)
    for child in node["nodes"]:
        yield from _windows_of(child, is_floating)
    for child in node["floating_nodes"]:
        yield from _windows_of(child, is_floating=True)
