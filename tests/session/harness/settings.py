"""The settings window, by real keys and clicks and as a screen reader hears it."""

import configparser

from . import accessibility
from .preferences import preferences_file
from .waiting import wait_until

TITLE = "^Larkspool Settings$"
LINES = r"^\[Larkspool\] (openSettings called|Showing settings window)$"
TABS = ("General", "Categories", "Shortcuts", "Storage", "About")


class Settings:
    """The settings window of a running program; `LINES` is what it may print."""

    def __init__(self, desktop, program):
        self._desktop = desktop
        self._program = program
        self.window = None

    def open(self, deadline=10.0):
        """Opens it by the menu of the panel, and waits until it has the keyboard."""
        self._program.open_panel()
        self.click("push button", "Menu")
        self.click("menu item", "Settings...")
        self._program.wait_until_hidden()
        self.wait_until_open(deadline)

    def wait_until_open(self, deadline=10.0):
        self.window = self._desktop.keyboard.wait_for_window(TITLE, deadline)
        self._desktop.keyboard.wait_for_focus(self.window)

    def is_open(self):
        return bool(self._desktop.keyboard.windows(TITLE))

    def close(self):
        """By Escape."""
        self._desktop.keyboard.press("Escape")
        self.wait_until_closed()

    def wait_until_closed(self):
        wait_until(lambda: not self.is_open(), "the settings are closed")

    def node(self, role, name, index=0):
        """What has the role and the name, once it is there; of several the so many-th from the top."""
        def heard():
            found = sorted(accessibility.nodes(self._desktop, role, name), key=lambda node: (node.y, node.x))
            return found[index] if len(found) > index else None

        return wait_until(heard, f"{role} {name!r} in the accessibility tree")

    def has(self, role, name):
        return bool(accessibility.nodes(self._desktop, role, name))

    def wait_for_state(self, role, name, state, is_set=True):
        wait_until(lambda: (state in self.node(role, name).states) == is_set, f"{name!r} is {state}: {is_set}")

    def focused(self):
        """The innermost thing that has the focus."""
        nodes = [node for node in accessibility.nodes(self._desktop) if "focused" in node.states]
        return nodes[-1] if nodes else None

    def wait_for_focus_on(self, name):
        def has_focus():
            node = self.focused()
            return node is not None and node.name == name

        wait_until(has_focus, f"focus on {name!r}")

    def click(self, role, name, index=0):
        x, y = self.node(role, name, index).middle
        self._desktop.run("xdotool", "mousemove", x, y, "click", 1)

    def choose_tab(self, name):
        self.click("page tab", name)
        self.wait_for_state("page tab", name, "checked")

    # What it has stored

    def stored(self, key):
        """The preference as it stands in the file, or nothing."""
        path = preferences_file(self._desktop)
        if not path.is_file():
            return None
        parser = configparser.ConfigParser(interpolation=None, strict=False)
        parser.optionxform = str
        parser.read_string(path.read_text())
        return parser["General"].get(key) if parser.has_section("General") else None

    def wait_until_stored(self, key, value):
        wait_until(lambda: self.stored(key) == value, f"{key} is stored as {value}")
