"""The tray icon in panels that people have: it is seen, a click toggles the history, and it finds each panel."""

import unittest

from harness import Desktop, Larkspool, run_tests, trays, wait_until
from harness.larkspool import PANEL_TITLE

PANEL_SIZE = (680, 640)
# A program that has no message bus shows its icon by the older protocol.
WITHOUT_BUS = ("env", "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent")


class InATray:
    """What holds in every tray. The mixing class tells how to make it, and the icon's colour and size in it."""

    wrapper = ()
    color = trays.ACCENT
    # What the symbol fills of an icon of 22 pixels, which stands in the middle of a panel of 30.
    glyph = (14, 18)
    middle = 15

    def setUp(self):
        self.desktop = self.enterContext(Desktop(size="1280x800x24"))
        self.tray = self.make_tray()

    def icon_color(self):
        return self.color

    def start(self):
        return self.enterContext(Larkspool(self.desktop, wrapper=self.wrapper))

    def history(self):
        """The history's window while it is shown. An icon of the older kind is a window of the same name."""
        keyboard = self.desktop.keyboard
        shown = [window for window in keyboard.windows(PANEL_TITLE) if keyboard.geometry(window)[2:] == PANEL_SIZE]
        return shown[0] if shown else None

    def assert_a_click_toggles(self, place, button=1):
        self.tray.click(place, button)
        window = wait_until(self.history, "a click shows the history")
        self.desktop.keyboard.wait_for_focus(window)
        self.tray.click(place, button)
        wait_until(lambda: self.history() is None, "another click hides it")

    def is_whole(self, place):
        """Whether this is the whole icon at its size and place. Edges between pixels are of a colour in between."""
        if place is None:
            return False
        left, top, right, bottom = place
        width, height = self.glyph
        return (
            abs(right - left - width) <= 1
            and abs(bottom - top - height) <= 1
            and abs((top + bottom) / 2 - self.middle) <= 1.5
        )

    def test_the_icon_is_seen_whole_and_a_click_toggles_the_history(self):
        self.tray.start()
        self.start()
        color = self.icon_color()
        wait_until(lambda: self.is_whole(self.tray.icon(color)), "a whole icon in the middle", 20, every=0.1)
        for button in self.buttons:
            self.assert_a_click_toggles(self.tray.icon(color), button)

    def test_a_panel_that_starts_later_gets_the_icon(self):
        self.start()
        self.tray.start()
        self.assert_a_click_toggles(self.tray.wait_for_icon(self.icon_color()))

    def test_a_panel_that_is_killed_and_started_again_gets_it_again(self):
        self.tray.start()
        self.start()
        color = self.icon_color()
        for _ in range(2):
            self.tray.wait_for_icon(color)
            self.tray.kill()
            self.tray.wait_until_gone(color)
            self.tray.start()
        self.assert_a_click_toggles(self.tray.wait_for_icon(color))

    def test_the_icon_goes_with_the_program(self):
        self.tray.start()
        program = self.start()
        color = self.icon_color()
        self.tray.wait_for_icon(color)
        program.stop()
        self.tray.wait_until_gone(color)


class NewerKind(InATray, unittest.TestCase):
    """A StatusNotifierItem in a panel that has trays of both kinds."""

    # The third opens the panel's own menu.
    buttons = (1, 2)

    def make_tray(self):
        return trays.XfcePanel(self.desktop)

    def test_it_shows_one_icon_though_the_panel_takes_both_kinds(self):
        self.tray.start()
        trays.foreground(self.desktop)
        self.start()
        self.tray.wait_for_icon(self.icon_color())
        self.assertEqual(self.desktop.keyboard.windows(PANEL_TITLE), [])


class OlderKind(InATray, unittest.TestCase):
    """An embedded window in the same panel, whose foreground it takes."""

    wrapper = WITHOUT_BUS
    buttons = (1, 2, 3)

    def make_tray(self):
        return trays.XfcePanel(self.desktop)

    def icon_color(self):
        return trays.foreground(self.desktop)


class OlderKindInADarkPanel(OlderKind):
    def make_tray(self):
        return trays.XfcePanel(self.desktop, dark=True)


class OlderTray(InATray, unittest.TestCase):
    """A panel that knows nothing of the newer kind, on a desktop with a message bus."""

    # Of an icon of 28 pixels.
    glyph = (18, 22)
    buttons = (1, 2, 3)

    def make_tray(self):
        return trays.Trayer(self.desktop)


if __name__ == "__main__":
    run_tests()
