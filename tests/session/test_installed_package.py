"""The Debian package on a fresh Debian: installed, used, upgraded, removed and purged.

The package is $LARKSPOOL_PACKAGE, else what scripts/package has left in build/package. Nothing that this tree has built
besides takes part; the hands are this machine's, and all that they touch is the fresh system's own.
"""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

from harness import Larkspool, Store, missing, need, run_tests, wait_until
from harness.application import NAME
from harness.bare_system import USER, BareSystem, have_own_world
from harness.children import Lines
from harness.larkspool import MENU_BUTTON, SEEDED
from harness.login import PACKAGES, Login, Screen
from harness.programs import Editor

ROOT = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = "/usr/bin/larkspool"
DESKTOP_FILE = f"/usr/share/applications/{NAME}.desktop"
AUTOSTART_FILE = f".config/autostart/{NAME}.desktop"
# Where the system writes down what was installed when; and the package's file itself.
PAPERS = ("/var/log/", "/var/cache/", "/root/")
SENTENCE = "The harbour office opens at half past eight."


def package():
    named = os.environ.get("LARKSPOOL_PACKAGE")
    if named:
        return pathlib.Path(named)
    made = sorted((ROOT / "build" / "package").glob("larkspool_*.deb"))
    if not made:
        missing("no package; scripts/package makes one")
    if made[0].with_name("source.sum").read_text().strip() != tool(ROOT / "scripts" / "source-sum"):
        missing("the package is of other sources; scripts/package makes it anew")
    return made[0]


def tool(*command):
    return subprocess.run([str(word) for word in command], capture_output=True, text=True, check=True).stdout.strip()


class FreshSystem(unittest.TestCase):
    """A fresh Debian with the package installed, and an empty home, for each test."""

    system = None

    @classmethod
    def setUpClass(cls):
        cls.package = package()
        cls.version = tool("dpkg-deb", "--field", cls.package, "Version")
        if FreshSystem.system is None:
            FreshSystem.system = unittest.enterModuleContext(BareSystem())
            cls.system.install(cls.give(cls.package))

    @classmethod
    def give(cls, deb):
        """Copies a package into the system; its place there."""
        shutil.copy(deb, cls.system.root / "root" / deb.name)
        return f"/root/{deb.name}"

    def setUp(self):
        need("dpkg-deb", "Xvfb", "openbox")
        self.addCleanup(self.forget)
        self.store = Store(self.system.home / ".local/share/larkspool/larkspool.sqlite")

    def forget(self):
        """A new user, and the package as it was."""
        self.system.run("sh", "-c", f"rm -rf /home/{USER}/* /home/{USER}/.[!.]*")
        self.system.install("--allow-downgrades", "--reinstall", self.give(self.package))

    def running(self):
        return self.system.processes(program=PROGRAM)


class Alone(FreshSystem):
    """With what the package depends on and nothing else: by its name before the tests that install more."""

    def test_it_says_its_version(self):
        answer = self.system.run(PROGRAM, "--version", user=USER, env=self.system.environment())
        self.assertEqual(answer, f"larkspool {self.version}\n")

    def test_it_draws_its_panel_and_complains_of_nothing(self):
        screen = self.enterContext(Screen(self.system))
        process = screen.spawn(*screen.on_screen([PROGRAM]), stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        said = [Lines(pipe) for pipe in (process.stdout, process.stderr)]
        wait_until(lambda: screen.takes_hot_key(process), "the hot key is live", 30)
        Larkspool(screen).open_panel()
        mapped = pathlib.Path(f"/proc/{self.running()[0]}/maps").read_text()
        for plugin in ("platforms/libqxcb.so", "imageformats/libqsvg.so"):
            self.assertIn(plugin, mapped)
        self.system.end_programs_of(USER)
        self.assertEqual(said[0].finish(), SEEDED)
        self.assertEqual(said[1].finish(), [])

    def test_every_file_of_the_package_has_its_manual_place(self):
        listed = self.system.run("dpkg", "--listfiles", "larkspool").splitlines()
        for path in (
            PROGRAM, DESKTOP_FILE, f"/usr/share/dbus-1/services/{NAME}.service", f"/usr/share/metainfo/{NAME}.metainfo.xml",
            f"/usr/share/icons/hicolor/scalable/apps/{NAME}.svg", "/usr/share/man/man1/larkspool.1.gz",
            "/usr/share/larkspool/help/index.html", "/usr/share/doc/larkspool/copyright",
        ):  # fmt: skip
            self.assertIn(path, listed)
        self.assertEqual(self.system.run("dpkg", "--verify", "larkspool"), "")


class WithADesktop(FreshSystem):
    """As a newcomer has it: the package, then a desktop to log in to."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.system.install(*PACKAGES)

    def logged_in(self):
        """A new login, and the program as the hands find it there."""
        desktop = self.enterContext(Login(self.system))
        return desktop, Larkspool(desktop)

    def start_from_the_menu(self, desktop):
        desktop.launch(DESKTOP_FILE)
        wait_until(lambda: desktop.takes_hot_key(None), "the hot key is live", 30)

    def started_from_the_menu(self):
        desktop, program = self.logged_in()
        self.start_from_the_menu(desktop)
        return desktop, program

    def copy_in_an_editor(self, desktop):
        letter = Editor(desktop, "mousepad", name="letter.txt")
        letter.type(SENTENCE)
        letter.copy_all()
        self.store.wait_for(SENTENCE)
        # Else the next editor would offer to bring the text back.
        letter.saved()
        letter.close()

    def paste_into_an_editor(self, desktop, program):
        reply = Editor(desktop, "mousepad", name="reply.txt")
        program.open_panel()
        desktop.keyboard.press("Return")
        program.wait_until_hidden()
        wait_until(lambda: reply.saved().decode().strip() == SENTENCE, lambda: f"pasted; there is {reply.saved()}")
        reply.close()

    def test_a_newcomer_starts_it_copies_presses_the_hot_key_and_pastes(self):
        desktop, program = self.started_from_the_menu()
        self.copy_in_an_editor(desktop)
        self.assertEqual(self.store.item(SENTENCE)["sourceAppName"], "Mousepad")
        self.paste_into_an_editor(desktop, program)
        self.assertEqual(len(self.running()), 1)

    def test_a_desktop_that_starts_programs_by_the_bus_shows_its_panel(self):
        desktop, program = self.logged_in()
        desktop.activate()
        window = wait_until(program.panel, "the panel greets", 30)
        desktop.keyboard.wait_for_focus(window)

    def choose_launch_at_login(self, desktop):
        panel = Larkspool(desktop).open_panel()
        desktop.keyboard.click(panel, *MENU_BUTTON)
        desktop.keyboard.press("Down", "Return")
        settings = desktop.keyboard.wait_for_window("^Larkspool Settings$")
        desktop.keyboard.wait_for_focus(settings)
        desktop.keyboard.press("alt+l")
        wait_until((self.system.home / AUTOSTART_FILE).exists, "the entry for the login is there")

    def test_chosen_in_the_settings_it_starts_at_the_next_login_with_the_history(self):
        with Login(self.system) as desktop:
            self.start_from_the_menu(desktop)
            self.copy_in_an_editor(desktop)
            self.choose_launch_at_login(desktop)
        self.assertEqual(self.running(), [])
        desktop, program = self.logged_in()
        wait_until(self.running, "the login starts it", 30)
        wait_until(lambda: desktop.takes_hot_key(program), "the hot key is live", 30)
        self.paste_into_an_editor(desktop, program)

    def test_the_entry_for_the_login_asks_for_nothing_that_has_been_removed(self):
        with Login(self.system) as desktop:
            self.start_from_the_menu(desktop)
            self.choose_launch_at_login(desktop)
        self.assertEqual(self.lists_for_the_login(), ["[*] Larkspool"])
        self.system.run("apt-get", "purge", "--yes", "larkspool", deadline=300)
        self.assertEqual(self.lists_for_the_login(), ["[ ] Larkspool"])

    def lists_for_the_login(self):
        """How the desktop's own list names the program: with a star when a login would start it."""
        command = "exec /usr/lib/*/openbox-xdg-autostart --list OPENBOX"
        listed = self.system.run("sh", "-c", command, user=USER, env=self.system.environment())
        return [line for line in listed.splitlines() if line.startswith("[") and line.endswith(" Larkspool")]

    def test_an_upgrade_leaves_the_running_program_and_its_history_whole(self):
        desktop, program = self.started_from_the_menu()
        self.copy_in_an_editor(desktop)
        before = self.running()
        newer = f"{self.version}+next"
        self.system.install(self.give(self.repacked(newer)))
        self.assertEqual(self.system.run("dpkg-query", "--show", "--showformat=${Version}", "larkspool"), newer)
        self.assertEqual(self.running(), before)
        self.paste_into_an_editor(desktop, program)
        desktop.activate()
        wait_until(program.panel, "a second start shows the panel of the first")
        self.assertEqual(self.running(), before)

    def test_removed_it_leaves_nothing_but_the_users_own_history(self):
        desktop, _ = self.started_from_the_menu()
        self.copy_in_an_editor(desktop)
        self.system.end_programs_of(USER)
        self.system.run("apt-get", "remove", "--yes", "larkspool", deadline=300)
        self.assertEqual(self.traces(), [])
        self.assertEqual(self.store.contents(), [SENTENCE])
        self.system.run("dpkg", "--purge", "larkspool")
        self.assertEqual(self.traces(), [])
        known = self.system.run("dpkg-query", "--show", "--showformat=${Package}\n")
        self.assertNotIn("larkspool", known.split())

    def repacked(self, version):
        """The package as a later version."""
        folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="larkspool-newer.")))
        content = folder / "content"
        tool("dpkg-deb", "--raw-extract", self.package, content)
        control = content / "DEBIAN" / "control"
        control.write_text(control.read_text().replace(f"\nVersion: {self.version}\n", f"\nVersion: {version}\n"))
        newer = folder / f"larkspool_{version}_newer.deb"
        tool("dpkg-deb", "--root-owner-group", "--build", content, newer)
        return newer

    def traces(self):
        """What is left on the system under the program's name, besides the user's home and the system's papers."""
        found = self.system.files("*larkspool*")
        return [path for path in found if not path.startswith((f"/home/{USER}/", *PAPERS))]


if __name__ == "__main__":
    have_own_world()
    run_tests()
