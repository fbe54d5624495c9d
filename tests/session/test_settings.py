"""The settings window: real keys and clicks, the accessibility tree, and what they come to outside the program."""

import os
import pathlib
import unittest

from harness import Desktop, Larkspool, Store, larkspool, programs, run_tests, stays, wait_until
from harness.preferences import preferences_file
from harness.settings import LINES, TABS, Settings

HELD_LINE = "Failed to register hotkey: -9878"


class OnADesktop(unittest.TestCase):
    WINDOW_MANAGER = "openbox"

    def setUp(self):
        self.desktop = self.enterContext(Desktop(window_manager=self.WINDOW_MANAGER))
        self.keyboard = self.desktop.keyboard
        self.store = Store(self.desktop.store_file)
        self.prepare()
        self.program = self.enterContext(Larkspool(self.desktop, may_print=[LINES, *self.may_print()]))
        self.settings = Settings(self.desktop, self.program)

    def prepare(self):
        """Before the program starts."""

    def may_print(self):
        return []

    def expect_tabs(self):
        for name in TABS:
            self.assertTrue(self.settings.has("page tab", name), name)


class Opening(OnADesktop):
    def test_it_opens_from_the_panels_menu_in_the_middle_and_has_its_size(self):
        self.settings.open()
        self.expect_tabs()
        x, y, width, height = self.keyboard.geometry(self.settings.window)
        self.assertEqual((width, height), (480, 400))
        self.assertAlmostEqual(x + width / 2, 960, delta=20)
        self.assertAlmostEqual(y + height / 2, 540, delta=40)

    def test_escape_closes_it_and_it_can_be_opened_again(self):
        for _ in range(3):
            self.settings.open()
            self.settings.close()

    def test_asked_for_twice_there_is_one_window(self):
        self.settings.open()
        window = self.settings.window
        self.settings.open()
        self.assertEqual(self.settings.window, window)
        self.assertEqual(len(self.keyboard.windows("^Larkspool Settings$")), 1)

    def test_the_window_manager_closes_it(self):
        self.settings.open()
        self.desktop.run("xdotool", "windowclose" if not self.desktop.window_manager else "key", "alt+F4")
        self.settings.wait_until_closed()
        self.assertIsNone(self.program.process.poll())


class OpeningOnXfwm(Opening):
    WINDOW_MANAGER = "xfwm4"


class General(OnADesktop):
    def test_each_toggle_is_stored_at_once(self):
        self.settings.open()
        for label, key, value in (
            ("Show source app name", "showSourceApp", "false"),
            ("Play sound on copy", "playSoundOnCopy", "true"),
            ("Play click sound on navigation", "playSoundOnNavigate", "false"),
        ):
            self.settings.click("check box", label)
            self.settings.wait_until_stored(key, value)
            self.settings.wait_for_state("check box", label, "checked", value == "true")

    def test_launch_at_login_writes_and_removes_the_autostart_entry(self):
        entry = pathlib.Path(self.desktop.env["XDG_CONFIG_HOME"]) / "autostart" / "org.larkspool.Larkspool.desktop"
        self.settings.open()
        self.settings.click("check box", "Launch at login")
        wait_until(entry.exists, "the autostart entry is there")
        self.desktop.run("desktop-file-validate", entry)
        lines = entry.read_text().splitlines()
        self.assertIn(f"TryExec={larkspool.binary()}", lines)
        self.assertIn(f"Exec={larkspool.binary()}", lines)
        self.settings.click("check box", "Launch at login")
        wait_until(lambda: not entry.exists(), "the autostart entry is gone")
        self.settings.wait_until_stored("launchAtLogin", "false")

    def test_a_swatch_is_stored_and_survives_a_new_window(self):
        self.settings.open()
        self.settings.wait_for_state("radio button", "Orange", "checked")
        self.settings.click("radio button", "White")
        self.settings.wait_until_stored("borderColorHex", "#FFFFFF")
        self.settings.close()
        self.settings.open()
        self.settings.wait_for_state("radio button", "White", "checked")

    def test_what_another_program_writes_is_shown_at_once(self):
        self.settings.open()
        path = preferences_file(self.desktop)
        path.write_text("[General]\nplaySoundOnCopy=true\nborderColorHex=#007AFF\nother=1\n")
        self.settings.wait_for_state("check box", "Play sound on copy", "checked")
        self.settings.wait_for_state("radio button", "Blue", "checked")
        self.settings.click("check box", "Play sound on copy")
        self.settings.wait_until_stored("playSoundOnCopy", "false")
        self.assertEqual(self.settings.stored("other"), "1")


class KeyboardOnly(OnADesktop):
    def test_tab_reaches_every_control_of_the_page_and_space_turns_it(self):
        self.settings.open()
        self.settings.wait_for_focus_on("General")
        stops = (
            "Launch at login", "Show source app name", "Play sound on copy", "Play click sound on navigation",
            "Orange", "General",
        )  # fmt: skip
        for name in stops:
            self.keyboard.press("Tab")
            self.settings.wait_for_focus_on(name)
        self.keyboard.press("shift+Tab", "shift+Tab")
        self.settings.wait_for_focus_on("Play click sound on navigation")
        self.keyboard.press("space")
        self.settings.wait_until_stored("playSoundOnNavigate", "false")

    def test_control_tab_and_access_keys_choose_pages(self):
        self.settings.open()
        self.keyboard.press("ctrl+Tab")
        self.settings.wait_for_state("page tab", "Categories", "checked")
        self.keyboard.press("ctrl+shift+Tab", "ctrl+shift+Tab")
        self.settings.wait_for_state("page tab", "About", "checked")
        self.keyboard.press("alt+s")
        self.settings.wait_for_state("page tab", "Shortcuts", "checked")
        self.keyboard.press("alt+g")
        self.settings.wait_for_state("page tab", "General", "checked")
        self.keyboard.press("alt+p")
        self.settings.wait_until_stored("playSoundOnCopy", "true")

    def test_arrows_step_through_tabs_and_swatches(self):
        self.settings.open()
        self.settings.choose_tab("Storage")
        self.keyboard.press("Left")
        self.settings.wait_for_state("page tab", "Shortcuts", "checked")
        self.settings.choose_tab("General")
        self.settings.click("radio button", "Red")
        self.keyboard.press("Right")
        self.settings.wait_until_stored("borderColorHex", "#007AFF")
        self.keyboard.press("Left", "Left")
        self.settings.wait_until_stored("borderColorHex", "#FF8C00")

    def test_keys_that_mean_something_in_the_panel_mean_nothing_here(self):
        programs.xclip_copy(self.desktop, b"one row")
        self.store.wait_for("one row")
        self.settings.open()
        self.settings.choose_tab("Categories")
        self.settings.click("push button", "Add new category")
        self.settings.wait_for_focus_on("Name")
        self.assertTrue(self.settings.has("dialog", "New Category"))
        self.keyboard.type("Return pastes nothing")
        self.keyboard.press("Return")
        wait_until(lambda: not self.settings.has("dialog", "New Category"), "the form is closed")
        self.assertTrue(self.settings.is_open())
        self.assertIsNone(self.program.panel())


class Shortcuts(OnADesktop):
    def may_print(self):
        return [HELD_LINE]

    def record(self, *chords):
        self.settings.click("push button", "Open Larkspool")
        wait_until(lambda: self.settings.has("push button", "Cancel"), "it records")
        self.keyboard.press(*chords)
        wait_until(lambda: not self.settings.has("push button", "Cancel"), "it has recorded")

    def open_page(self):
        self.settings.open()
        self.settings.choose_tab("Shortcuts")

    def shown(self):
        return self.settings.node("push button", "Open Larkspool").description

    def is_grabbed(self, key, *modifiers):
        return self.desktop.probe.is_grabbed(key, list(modifiers))

    def test_a_recorded_combination_works_at_once_and_the_old_one_is_free(self):
        self.open_page()
        self.assertEqual(self.shown(), "⌘ ⇧ V")
        self.record("super+shift+k")
        self.settings.wait_until_stored("hotkeyCombo", '"{\\"keyCode\\":40,\\"modifiers\\":768}"')
        self.assertEqual(self.shown(), "⌘ ⇧ K")
        wait_until(lambda: self.is_grabbed("k", "Super", "Shift"), "the new one is held")
        self.assertFalse(self.is_grabbed("v", "Super", "Shift"))
        self.settings.close()
        self.keyboard.press("super+shift+k")
        wait_until(self.program.panel, "the panel is shown")

    def test_the_present_hot_key_can_be_recorded_again_and_does_not_fire_meanwhile(self):
        self.open_page()
        self.record("super+shift+v")
        self.assertTrue(stays(lambda: self.program.panel() is None, 0.5))
        self.settings.wait_until_stored("hotkeyCombo", '"{\\"keyCode\\":9,\\"modifiers\\":768}"')
        wait_until(lambda: self.is_grabbed("v", "Super", "Shift"), "it is held again")

    def test_escape_and_cancel_leave_things_as_they_were(self):
        self.open_page()
        self.record("Escape")
        self.settings.click("push button", "Open Larkspool")
        self.settings.click("push button", "Cancel")
        wait_until(lambda: not self.settings.has("push button", "Cancel"), "it records no more")
        self.assertIsNone(self.settings.stored("hotkeyCombo"))
        wait_until(lambda: self.is_grabbed("v", "Super", "Shift"), "it is held again")
        self.assertTrue(self.settings.is_open())

    def test_combinations_that_mean_something_in_the_settings_are_recorded_as_any(self):
        self.open_page()
        for chord, code, modifiers in (("alt+g", 5, 2048), ("ctrl+Tab", 48, 4096)):
            self.record(chord)
            self.settings.wait_until_stored("hotkeyCombo", f'"{{\\"keyCode\\":{code},\\"modifiers\\":{modifiers}}}"')
            self.settings.wait_for_state("page tab", "Shortcuts", "checked")

    def test_another_page_ends_the_recording(self):
        self.open_page()
        self.settings.click("push button", "Open Larkspool")
        wait_until(lambda: self.settings.has("push button", "Cancel"), "it records")
        self.settings.choose_tab("Storage")
        wait_until(lambda: self.is_grabbed("v", "Super", "Shift"), "the hot key is held again")
        self.keyboard.press("ctrl+F12")
        self.assertIsNone(self.settings.stored("hotkeyCombo"))

    def test_a_letter_alone_is_not_recorded(self):
        self.open_page()
        self.settings.click("push button", "Open Larkspool")
        wait_until(lambda: self.settings.has("push button", "Cancel"), "it records")
        self.keyboard.press("k", "shift")
        self.assertTrue(self.settings.has("push button", "Cancel"))
        self.keyboard.press("ctrl+F12")
        self.settings.wait_until_stored("hotkeyCombo", '"{\\"keyCode\\":111,\\"modifiers\\":4096}"')

    def test_the_position_counts_not_the_letter(self):
        self.open_page()
        self.keyboard.set_layout("us", "dvorak")
        self.settings.click("push button", "Open Larkspool")
        wait_until(lambda: self.settings.has("push button", "Cancel"), "it records")
        self.keyboard.hit("Control", "Alt", "v")
        self.settings.wait_until_stored("hotkeyCombo", '"{\\"keyCode\\":9,\\"modifiers\\":6144}"')

    def test_one_that_another_program_holds_is_refused_with_a_line(self):
        self.open_page()
        self.desktop.probe.grab("j", ["Control", "Alt"])
        path = preferences_file(self.desktop)
        path.write_text('[General]\nhotkeyCombo={"keyCode":38,"modifiers":6144}\n')
        wait_until(lambda: self.shown() == "⌥ ⌃ J", "what is stored is shown")
        # A grabbed key does not come to windows: it is registered when a recording ends.
        self.record("Escape")
        wait_until(lambda: HELD_LINE in self.program.stdout.all(), "the line")
        self.assertEqual(self.shown(), "⌥ ⌃ J")


class Categories(OnADesktop):
    def names(self):
        return [row["name"] for row in self.store.query("SELECT name FROM ClipCategory ORDER BY sortOrder, rowid")]

    def open_page(self):
        self.settings.open()
        self.settings.choose_tab("Categories")

    def test_a_category_is_added_edited_moved_and_deleted(self):
        self.open_page()
        self.settings.click("push button", "Add new category")
        self.settings.wait_for_focus_on("Name")
        self.settings.click("push button", "Save")
        self.assertTrue(self.settings.has("push button", "Save"))
        self.keyboard.type("Recipes")
        self.settings.click("radio button", "Teal")
        self.settings.click("push button", "Save")
        wait_until(lambda: self.names()[-1:] == ["Recipes"], "it is stored")
        stored = self.store.query("SELECT * FROM ClipCategory WHERE name = 'Recipes'")[0]
        self.assertEqual((stored["colorHex"], stored["icon"], stored["sortOrder"]), ("#2DB5AA", "tag.fill", 5))
        self.settings.click("push button", "Move Up", 5)
        wait_until(lambda: self.names()[4] == "Recipes", "it has moved up")
        self.settings.click("push button", "Edit", 4)
        self.settings.wait_for_focus_on("Name")
        self.keyboard.press("ctrl+a")
        self.keyboard.type("Rezepte")
        self.keyboard.press("Return")
        wait_until(lambda: self.names()[4] == "Rezepte", "it has another name")
        self.settings.click("push button", "Delete", 4)
        wait_until(lambda: "Rezepte" not in self.names(), "it is gone")

    def test_the_panel_shows_a_new_category_at_once(self):
        programs.xclip_copy(self.desktop, b"one row")
        self.store.wait_for("one row")
        self.open_page()
        self.settings.click("push button", "Add new category")
        self.settings.wait_for_focus_on("Name")
        self.keyboard.type("Recipes")
        self.keyboard.press("Return")
        wait_until(lambda: "Recipes" in self.names(), "it is stored")
        self.settings.close()
        self.program.open_panel()
        self.settings.node("push button", "Recipes")

    def test_escape_closes_the_form_alone(self):
        self.open_page()
        self.settings.click("push button", "Add new category")
        self.settings.wait_for_focus_on("Name")
        self.keyboard.press("Escape")
        wait_until(lambda: not self.settings.has("push button", "Save"), "the form is closed")
        self.assertTrue(self.settings.is_open())
        self.assertEqual(len(self.names()), 5)

    def test_by_key_the_focus_stays_where_a_row_is_deleted(self):
        self.open_page()
        self.settings.click("push button", "Move Up")
        # From the first row's first button on: down, edit, delete.
        self.keyboard.press("Tab", "Tab", "Tab")
        self.settings.wait_for_focus_on("Delete")
        for left in (4, 3, 2, 1):
            self.keyboard.press("space")
            wait_until(lambda left=left: len(self.names()) == left, f"{left} left")
            self.settings.wait_for_focus_on("Delete")
        self.keyboard.press("space")
        wait_until(lambda: not self.names(), "none left")
        self.settings.wait_for_focus_on("Add new category")

    def test_the_defaults_come_back_beside_what_is_there(self):
        self.open_page()
        self.settings.click("push button", "Restore Defaults")
        wait_until(lambda: len(self.names()) == 10, "ten categories")


class Storage(OnADesktop):
    def test_the_limit_is_stored_and_the_history_cleared(self):
        for text in ("one", "two"):
            programs.xclip_copy(self.desktop, text.encode())
            self.store.wait_for(text)
        self.settings.open()
        self.settings.choose_tab("Storage")
        self.settings.click("combo box", "Max history items")
        self.settings.click("list item", "Unlimited")
        self.settings.wait_until_stored("maxHistoryCount", "10000")
        self.settings.click("push button", "Clear All History")
        wait_until(lambda: self.store.items() == [], "nothing is left")

    def may_print(self):
        return [r"^\[Larkspool\] Cleared all history \(2 items\)$"]


class About(OnADesktop):
    def prepare(self):
        """A browser that writes down what it is given."""
        folder = self.desktop.home / "bin"
        folder.mkdir()
        self.opened = self.desktop.home / "opened"
        browser = folder / "xdg-open"
        browser.write_text(f'#!/bin/sh\necho "$1" >>"{self.opened}"\n')
        browser.chmod(0o755)
        self.desktop.env["PATH"] = f"{folder}:{self.desktop.env['PATH']}"

    def test_the_pages_open_in_the_browser(self):
        self.settings.open()
        self.settings.choose_tab("About")
        self.assertTrue(self.settings.has("label", "Version 1.0.0"))
        for name, page in (("Website", "index.html"), ("Privacy Policy", "privacy.html")):
            self.settings.click("link", name)
            wait_until(lambda page=page: self.opened.exists() and page in self.opened.read_text(), page)
        for address in self.opened.read_text().split():
            path = pathlib.Path(address.removeprefix("file://"))
            self.assertIn("Larkspool", path.read_text())


class BadPreferences(OnADesktop):
    TEXTS = {
        "half written": '[General]\nborderColorHex="#FF',
        "of wrong types": "[General]\nmaxHistoryCount=many\nplaySoundOnNavigate=perhaps\nborderColorHex=1, 2\n",
        "no text": "\x00\x01[[[=\n=\n",
        "ten megabytes": "[General]\n" + "".join(f"key{n}=value {n}\n" for n in range(500_000)),
    }

    def test_a_broken_file_shows_the_defaults_and_stays_until_something_is_changed(self):
        path = preferences_file(self.desktop)
        for what, text in self.TEXTS.items():
            with self.subTest(what):
                path.write_text(text)
                self.settings.open()
                self.settings.wait_for_state("check box", "Play click sound on navigation", "checked")
                self.settings.close()
                self.assertEqual(path.read_text(), text)
                self.settings.open()
                self.settings.click("check box", "Play sound on copy")
                wait_until(lambda: "playSoundOnCopy=true" in path.read_text(), "stored")
                self.assertTrue(all(line in path.read_text() for line in text.split("\n")[:50]))
                self.settings.close()


class UnwritablePreferences(OnADesktop):
    def prepare(self):
        (preferences_file(self.desktop) / "a folder in its place").mkdir(parents=True)

    def may_print(self):
        return [r"^\[Larkspool\] Preferences could not be saved: "]

    def test_a_change_holds_while_the_program_runs(self):
        self.settings.open()
        self.settings.click("check box", "Play sound on copy")
        self.settings.wait_for_state("check box", "Play sound on copy", "checked")
        self.settings.close()
        self.settings.open()
        self.settings.wait_for_state("check box", "Play sound on copy", "checked")


class ManyTimes(OnADesktop):
    COUNT = 100

    def descriptors(self):
        return len(os.listdir(f"/proc/{self.program.pid}/fd"))

    def turn(self):
        self.program.open_panel()
        # The menu's first entry, without looking for it.
        x, y = self.menu
        self.desktop.run("xdotool", "mousemove", x, y, "click", 1)
        self.keyboard.press("Down", "Return")
        self.settings.wait_until_open()
        self.settings.close()

    def settle(self):
        """Waits until the program gives nothing back any more."""
        looks = [None]

        def is_settled():
            looks.append((self.descriptors(), self.program.memory("Anonymous")))
            return looks[-1] == looks[-2]

        wait_until(is_settled, "it has settled", every=0.3)

    def test_nothing_leaks(self):
        self.program.open_panel()
        self.menu = self.settings.node("push button", "Menu").middle
        self.keyboard.press("Escape")
        self.program.wait_until_hidden()
        for _ in range(20):
            self.turn()
        self.settle()
        descriptors, windows, memory = self.descriptors(), self.desktop.probe.window_count(), self.program.memory("Anonymous")
        for _ in range(self.COUNT - 20):
            self.turn()
        self.settle()
        self.assertEqual(self.descriptors(), descriptors)
        self.assertEqual(self.desktop.probe.window_count(), windows)
        self.assertLess(self.program.memory("Anonymous") - memory, 2 << 20)


if __name__ == "__main__":
    run_tests()
