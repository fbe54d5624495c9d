"""The Flatpak's manifest: it says what its page explains, asks for no more, and names what there is."""

import json
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

from harness import missing, need, run_tests
from harness.application import NAME

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDER = ROOT / "packaging" / "flatpak"
MANIFEST = FOLDER / f"{NAME}.yml"
# CMake's own, of which no list of the project's knows.
OPTIONS_OF_CMAKE = {"CMAKE_BUILD_TYPE"}
# What would take the sandbox away, or most of it.
TOO_MUCH = (
    r"--share=network",
    r"--socket=(session-bus|system-bus)",
    r"--device=",
    r"--(system-)?(own|talk)-name=.*\*",
    r"--(system-)?talk-name=org\.freedesktop\.(Flatpak|systemd1)",
    r"--filesystem=(host|home|~|/)(:|$)",
    r"--filesystem=(?!.*:ro$)",
    r"--allow=",
)
# Folders of which Flatpak shows the desktop files with the name of the application, and no others.
EXPORTED = ("applications", "dbus-1/services", "icons", "metainfo")


def manifest():
    try:
        import yaml
    except ImportError:
        missing("not installed: python3-yaml")
    return yaml.safe_load(MANIFEST.read_text(encoding="utf-8"))


def explained():
    """The permissions in the first column of the page's table of them, in order."""
    page = (FOLDER / "README.md").read_text(encoding="utf-8")
    section = page.partition("## What it may use\n")[2].partition("\n## ")[0]
    return re.findall(r"^\| `(--[^`]+)` \|", section, re.M)


def options_of_project():
    text = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
    return set(re.findall(r"^option\((\w+) |^set\((\w+) .*\bCACHE\b", text, re.M))


class Manifest(unittest.TestCase):
    def setUp(self):
        self.manifest = manifest()
        self.module = self.manifest["modules"][0]

    def test_its_name_is_that_of_the_application(self):
        self.assertEqual(self.manifest["id"], NAME)

    def test_its_command_is_the_installed_program(self):
        text = (ROOT / "packaging" / f"{NAME}.desktop.in").read_text(encoding="utf-8")
        self.assertIn("\nExec=@LARKSPOOL_PROGRAM@\n", text)
        self.assertEqual(self.manifest["command"], "larkspool")

    def test_the_runtime_and_what_builds_for_it_belong_together(self):
        self.assertEqual((self.manifest["runtime"], self.manifest["sdk"]), ("org.kde.Platform", "org.kde.Sdk"))
        # 6.10 would be 6.1 as a number.
        self.assertIsInstance(self.manifest["runtime-version"], str)
        self.assertIn(f"org.kde.Platform//{self.manifest['runtime-version']} ", (FOLDER / "README.md").read_text())

    def test_the_page_explains_each_permission_and_no_other(self):
        self.assertEqual(self.manifest["finish-args"], explained())

    def test_no_permission_takes_the_sandbox_away(self):
        for permission in self.manifest["finish-args"]:
            for pattern in TOO_MUCH:
                self.assertIsNone(re.match(pattern, permission), f"{permission} is too much")

    def test_the_build_has_no_network(self):
        self.assertNotIn("network", MANIFEST.read_text(encoding="utf-8"))

    def test_its_source_is_this_tree_without_what_is_built_in_it(self):
        self.assertEqual(len(self.manifest["modules"]), 1)
        (source,) = self.module["sources"]
        self.assertEqual((source["type"], (FOLDER / source["path"]).resolve()), ("dir", ROOT))
        self.assertEqual(set(source["skip"]), {".git", "build"})

    def test_each_option_that_it_sets_is_one_of_the_projects(self):
        known = {name for pair in options_of_project() for name in pair if name} | OPTIONS_OF_CMAKE
        options = [re.fullmatch(r"-D(\w+)(?::\w+)?=\S+", option) for option in self.module["config-opts"]]
        self.assertTrue(all(options), self.module["config-opts"])
        self.assertLessEqual({option[1] for option in options}, known)
        self.assertIn("-DLARKSPOOL_TESTS=OFF", self.module["config-opts"])

    def test_the_builder_understands_every_word_of_it(self):
        need("flatpak-builder")
        words = ["flatpak-builder", "--show-manifest", str(MANIFEST)]
        # It makes a folder for itself where it is started.
        with tempfile.TemporaryDirectory(prefix="larkspool-flatpak.") as folder:
            shown = subprocess.run(words, cwd=folder, capture_output=True, text=True, timeout=60)
        self.assertEqual((shown.returncode, shown.stderr), (0, ""))
        # What it does not know it leaves out.
        self.assertEqual(json.loads(shown.stdout), self.manifest)


class Exports(unittest.TestCase):
    def test_whatever_the_desktop_is_to_see_has_the_applications_name(self):
        need("cmake")
        build = os.environ.get("LARKSPOOL_BUILD_DIR")
        if not build:
            raise AssertionError("set LARKSPOOL_BUILD_DIR to the build that is to be installed")
        with tempfile.TemporaryDirectory(prefix="larkspool-prefix.") as prefix:
            words = ["cmake", "--install", build, "--prefix", prefix]
            done = subprocess.run(words, capture_output=True, text=True)
            self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
            for folder in EXPORTED:
                place = pathlib.Path(prefix) / "share" / folder
                names = [path.name for path in place.rglob("*") if path.is_file()]
                self.assertTrue(names, f"something in {folder}")
                for name in names:
                    self.assertTrue(name.startswith(f"{NAME}."), f"{folder}: {name}")


if __name__ == "__main__":
    run_tests()
