"""Panels with a tray, as desktops have them, and what can be seen in them."""

import os
import pathlib
import re
import signal

from . import pictures
from .waiting import need, wait_until

# In a tray that does not tell its foreground.
ACCENT = (0xD4, 0x6C, 0x00)
# Panels are at the upper edge, and their trays at its left end.
STRIP = (400, 40)
# Panels that scale an icon shade it a little.
NEAR = 32

_XFCE_SETTINGS = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="{dark}"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="30"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray"/>
  </property>
</channel>
"""


def _is_near(rgb, at, color):
    return all(abs(rgb[at + channel] - color[channel]) <= NEAR for channel in range(3))


class Tray:
    """A panel's program, which may be started again after its end."""

    def __init__(self, desktop, *command):
        need("/usr/bin/import", command[0])
        self._desktop = desktop
        self._command = command
        self._process = None

    def start(self):
        self._process = self._desktop.spawn(*self._command)

    def kill(self):
        """kill -9, with all that it has started."""
        os.killpg(self._process.pid, signal.SIGKILL)
        self._process.wait(10)

    def _strip(self):
        picture = self._desktop.run(
            "/usr/bin/import", "-window", "root", "-crop", f"{STRIP[0]}x{STRIP[1]}+0+0", "+repage", "png:-"
        )
        return pictures.pixels(picture)

    def icon(self, color):
        """Where the screen shows an icon of the colour: (left, top, right, bottom), the last ones outside; else
        nothing. A few pixels that are alike by chance are no icon."""
        width, height, rgb = self._strip()
        places = [(at % width, at // width) for at in range(width * height) if _is_near(rgb, 3 * at, color)]
        if len(places) < 80:
            return None
        columns, rows = zip(*places)
        return min(columns), min(rows), max(columns) + 1, max(rows) + 1

    def wait_for_icon(self, color):
        """The icon's place, once it is shown."""
        return wait_until(lambda: self.icon(color), f"an icon of the colour {color}", 20, every=0.1)

    def wait_until_gone(self, color):
        wait_until(lambda: self.icon(color) is None, "no icon", 20, every=0.1)

    def click(self, place, button=1):
        left, top, right, bottom = place
        self._desktop.run("xdotool", "mousemove", (left + right) // 2, (top + bottom) // 2, "click", button)


class XfcePanel(Tray):
    """xfce4-panel with its tray plugin alone, which shows items of both kinds."""

    def __init__(self, desktop, dark=False):
        super().__init__(desktop, "xfce4-panel", "--disable-wm-check")
        settings = pathlib.Path(desktop.env["XDG_CONFIG_HOME"]) / "xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"
        settings.parent.mkdir(parents=True)
        settings.write_text(_XFCE_SETTINGS.format(dark="true" if dark else "false"))


class Trayer(Tray):
    """trayer, which knows the older kind alone."""

    def __init__(self, desktop):
        words = "--edge top --align left --widthtype request --heighttype pixel --height 30"
        super().__init__(desktop, "trayer", *words.split())


def foreground(desktop):
    """The colour that the tray of the older kind tells, once there is one that does."""
    need("xprop")

    def told():
        owner = desktop.probe.selection_owner("_NET_SYSTEM_TRAY_S0")
        if owner == 0:
            return None
        told = desktop.run("xprop", "-id", owner, "_NET_SYSTEM_TRAY_COLORS").decode()
        return [int(number) for number in re.findall(r"\d+", told.partition("=")[2])]

    channels = wait_until(told, "the tray tells its colours", 20)
    return tuple(channel >> 8 for channel in channels[:3])
