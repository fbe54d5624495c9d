"""The panel on a desktop of several monitors that come and go."""

import unittest

from harness import Desktop, Larkspool, need, programs, run_tests, wait_until

SIZE = (680, 640)
# Of a screen of 1920 x 1080: x, y, width and height.
LEFT = (0, 0, 960, 1080)
RIGHT = (960, 0, 960, 1080)
SMALL = (0, 0, 1024, 768)
SMALL_MODE = ["63.50", "1024", "1072", "1176", "1328", "768", "771", "775", "798"]


def middle(monitor):
    """Where the panel stands when it is centred on the monitor."""
    x, y, width, height = monitor
    return (x + (width - SIZE[0]) // 2, y + (height - SIZE[1]) // 2, *SIZE)


class Screens(unittest.TestCase):
    def setUp(self):
        need("xrandr")
        self.desktop = self.enterContext(Desktop())
        self.keyboard = self.desktop.keyboard

    def split(self):
        """Two monitors side by side on the one screen."""
        self.set_monitor("left", LEFT, "screen")
        self.set_monitor("right", RIGHT, "none")

    def set_monitor(self, name, place, output):
        x, y, width, height = place
        self.desktop.run("xrandr", "--setmonitor", name, f"{width}/250x{height}/280+{x}+{y}", output)

    def start(self):
        self.program = self.enterContext(Larkspool(self.desktop))
        self.terminal = programs.Terminal(self.desktop)

    def put_terminal_on(self, monitor):
        """Moves the terminal to the monitor and gives it the keyboard."""
        self.keyboard.move(self.terminal.window, monitor[0] + 40, 60)
        wait_until(lambda: abs(self.keyboard.geometry(self.terminal.window)[0] - monitor[0] - 40) < 20, "moved")
        self.keyboard.focus(self.terminal.window)

    def assert_opens_on(self, monitor):
        panel = self.program.open_panel()
        wait_until(lambda: self.keyboard.geometry(panel) == middle(monitor), f"centred on {monitor}")
        return panel

    def close_panel(self):
        if self.program.panel() is not None:
            self.keyboard.hit("Escape")
        self.program.wait_until_hidden()

    def test_the_panel_opens_on_the_monitor_with_the_focused_window(self):
        self.split()
        self.start()
        for monitor in (LEFT, RIGHT, LEFT):
            self.put_terminal_on(monitor)
            self.assert_opens_on(monitor)
            self.close_panel()

    def test_monitors_that_come_while_it_runs_are_known(self):
        self.start()
        self.split()
        self.put_terminal_on(RIGHT)
        self.assert_opens_on(RIGHT)

    def test_the_panel_opens_on_the_monitor_that_is_left_when_its_own_is_taken_away(self):
        self.split()
        self.start()
        self.put_terminal_on(RIGHT)
        self.assert_opens_on(RIGHT)
        self.desktop.run("xrandr", "--delmonitor", "right")
        self.program.wait_until_hidden()
        self.assert_opens_on(LEFT)

    def test_the_panel_opens_in_the_middle_of_a_screen_that_has_shrunk(self):
        self.start()
        self.program.open_panel()
        self.desktop.run("xrandr", "--newmode", "small", *SMALL_MODE)
        self.desktop.run("xrandr", "--addmode", "screen", "small")
        self.desktop.run("xrandr", "--output", "screen", "--mode", "small")
        self.program.wait_until_hidden()
        self.assert_opens_on(SMALL)


if __name__ == "__main__":
    run_tests()
