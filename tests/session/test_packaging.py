"""What an installation puts where, and that a desktop takes it."""

import configparser
import os
import pathlib
import re
import signal
import struct
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree

from harness import Desktop, Larkspool, need, run_tests, wait_until
from harness.application import NAME, Application


ICON_SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)


def png_size(path):
    """Width and height by the picture's header (PNG Specification, "IHDR")."""
    head = path.read_bytes()[:24]
    if head[:8] != b"\x89PNG\r\n\x1a\n" or head[12:16] != b"IHDR":
        raise AssertionError(f"{path} is no PNG picture")
    return struct.unpack(">II", head[16:24])


def keys(path, group):
    parser = configparser.RawConfigParser()
    parser.optionxform = str
    parser.read(path, encoding="utf-8")
    return dict(parser[group])


class Packaging(unittest.TestCase):
    def setUp(self):
        need("cmake")
        build = os.environ.get("LARKSPOOL_BUILD_DIR")
        if not build:
            raise AssertionError("set LARKSPOOL_BUILD_DIR to the build that is to be installed")
        self.prefix = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="larkspool-prefix.")))
        self.run_program("cmake", "--install", build, "--prefix", self.prefix)
        self.desktop_file = self.prefix / "share/applications" / f"{NAME}.desktop"
        self.service_file = self.prefix / "share/dbus-1/services" / f"{NAME}.service"

    def run_program(self, *command):
        done = subprocess.run([str(word) for word in command], capture_output=True, text=True)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        return done.stdout + done.stderr

    def test_the_desktop_file_is_a_valid_one(self):
        need("desktop-file-validate")
        self.assertEqual(self.run_program("desktop-file-validate", self.desktop_file), "")

    def test_the_desktop_file_names_what_is_installed(self):
        entry = keys(self.desktop_file, "Desktop Entry")
        self.assertEqual(entry["Exec"], str(self.prefix / "bin" / "larkspool"))
        self.assertTrue(os.access(entry["Exec"], os.X_OK))
        icon = self.prefix / "share/icons/hicolor/scalable/apps" / f"{entry['Icon']}.svg"
        self.assertTrue(icon.is_file())
        self.assertEqual(entry["DBusActivatable"], "true")

    def test_the_desktop_file_asks_for_what_kwin_restricts(self):
        wanted = keys(self.desktop_file, "Desktop Entry")["X-KDE-Wayland-Interfaces"].split(",")
        self.assertEqual(wanted, ["org_kde_plasma_window_management", "org_kde_kwin_fake_input"])

    def test_what_tells_of_the_program_tells_the_version_that_it_says_itself(self):
        said = self.run_program(self.prefix / "bin" / "larkspool", "--version")
        version = re.fullmatch(r"larkspool (\d+\.\d+\.\d+)\n", said)[1]
        metainfo = xml.etree.ElementTree.parse(self.prefix / "share/metainfo" / f"{NAME}.metainfo.xml")
        self.assertEqual(metainfo.find("releases/release").get("version"), version)
        self.assertIn(version, (self.prefix / "share/man/man1/larkspool.1").read_text(encoding="utf-8"))

    def test_the_icon_is_there_in_every_size_and_nothing_else_beside_it(self):
        theme = self.prefix / "share/icons/hicolor"
        expected = {f"{side}x{side}/apps/{NAME}.png" for side in ICON_SIZES} | {f"scalable/apps/{NAME}.svg"}
        found = {str(path.relative_to(theme)) for path in theme.rglob("*") if path.is_file()}
        self.assertEqual(found, expected)
        for side in ICON_SIZES:
            self.assertEqual(png_size(theme / f"{side}x{side}/apps/{NAME}.png"), (side, side))

    def test_the_pages_are_where_the_program_looks_for_them(self):
        folder = self.prefix / "bin" / "../share/larkspool/help"
        self.assertEqual(sorted(path.name for path in folder.iterdir()), ["index.html", "privacy.html"])
        for page in folder.iterdir():
            self.assertTrue(page.read_text(encoding="utf-8").startswith("<!DOCTYPE html>"), page)

    def test_the_service_file_names_the_installed_program(self):
        service = keys(self.service_file, "D-BUS Service")
        self.assertEqual(service, {"Name": NAME, "Exec": str(self.prefix / "bin" / "larkspool")})

    def test_a_bus_starts_the_installed_program(self):
        with Desktop() as desktop:
            services = pathlib.Path(desktop.env["XDG_DATA_HOME"]) / "dbus-1" / "services"
            services.mkdir(parents=True)
            (services / self.service_file.name).symlink_to(self.service_file)
            with Application(desktop) as application:
                application.activate()
                process = application.process()
                try:
                    wait_until(Larkspool(desktop).panel, "the panel is shown")
                    self.assertEqual(os.readlink(f"/proc/{process}/exe"), str(self.prefix / "bin" / "larkspool"))
                finally:
                    os.kill(process, signal.SIGTERM)
                application.wait_until_gone()


if __name__ == "__main__":
    run_tests()
