"""The real program in another language: what a screen reader hears is German, what it prints is English."""

import re
import unittest

from harness import Desktop, Larkspool, Store, accessibility, programs, run_tests, wait_until

# Where the machine does not have the locale itself, the toolkit says what it takes in its place.
LOCALE_LINES = (
    r"^Detected locale \"C\" with character encoding",
    r"^Qt depends on a UTF-8 locale, and has switched to",
    r"^If this causes problems, reconfigure your locale",
    r"^Detected system locale encoding",
)
TITLE = "^Larkspool-Einstellungen$"
# Before the dots is a space at which no line ends.
SETTINGS_ENTRY = "Einstellungen\u00a0…"
SETTINGS_LINES = r"^\[Larkspool\] (openSettings called|Showing settings window)$"


class Translated(unittest.TestCase):
    LANGUAGE = {"LANG": "de_DE.UTF-8"}

    def setUp(self):
        self.desktop = self.enterContext(Desktop())
        self.store = Store(self.desktop.store_file)
        # Only the program's: the tools of the test speak as they always do.
        language = [f"{name}={value}" for name, value in self.LANGUAGE.items()]
        self.program = self.enterContext(
            Larkspool(
                self.desktop,
                wrapper=["env", "-u", "LANGUAGE", *language],
                may_print=[SETTINGS_LINES, *LOCALE_LINES],
            )
        )
        self.keyboard = self.desktop.keyboard

    def copy(self, *texts):
        for text in texts:
            programs.xclip_copy(self.desktop, text.encode())
            self.store.wait_for(text)

    def names(self, role):
        return [node.name for node in accessibility.nodes(self.desktop, role)]

    def wait_for(self, role, *names):
        """Waits until everything with the role is heard that is named here."""
        wait_until(lambda: set(names) <= set(self.names(role)), f"{role}s {names}")

    def click(self, role, name):
        node = wait_until(lambda: accessibility.nodes(self.desktop, role, name), f"{role} {name!r}")[0]
        self.desktop.run("xdotool", "mousemove", *node.middle, "click", 1)


class German(Translated):
    def test_the_panel_speaks_german(self):
        self.copy("eins", "https://example.org/zwei")
        self.program.open_panel()
        self.wait_for("list", "Verlauf")
        self.wait_for("label", "2 Einträge")
        self.wait_for("push button", "Text", "URL", "Bild", "Datei", "Rich-Text", "Menü", "Anheften", "Löschen")
        row = wait_until(lambda: accessibility.nodes(self.desktop, "list item", "eins"), "the row")[0]
        self.assertEqual(row.description.split(", ")[:2], ["TEXT", "jetzt"])

    def test_one_entry_is_counted_as_one(self):
        self.copy("eins")
        self.program.open_panel()
        self.wait_for("label", "1 Eintrag")

    def test_the_welcome_is_german(self):
        self.program.open_panel()
        self.wait_for("label", "Willkommen bei Larkspool!", "Zum Suchen einfach lostippen")

    def test_the_settings_are_german_from_their_title_to_their_last_page(self):
        self.program.open_panel()
        self.click("push button", "Menü")
        self.click("menu item", SETTINGS_ENTRY)
        self.program.wait_until_hidden()
        self.keyboard.wait_for_focus(self.keyboard.wait_for_window(TITLE))
        self.wait_for("page tab", "Allgemein", "Kategorien", "Tastenkürzel", "Speicher", "Info")
        self.wait_for("check box", "Bei der Anmeldung starten", "Beim Kopieren einen Ton abspielen")
        self.wait_for("radio button", "Orange", "Rot", "Weiß")
        self.click("page tab", "Kategorien")
        self.wait_for("list item", "Text", "URL", "Bild", "Datei", "Rich-Text")
        self.wait_for("push button", "Neue Kategorie", "Standardkategorien wiederherstellen")
        self.wait_for("push button", "Nach oben verschieben", "Nach unten verschieben")
        self.click("page tab", "Tastenkürzel")
        self.wait_for("push button", "Larkspool öffnen")
        self.wait_for("combo box", "Kategoriesuche")
        self.click("page tab", "Speicher")
        self.wait_for("push button", "Gesamten Verlauf löschen")
        self.click("page tab", "Info")
        self.wait_for("link", "Website", "Datenschutzerklärung")

    def test_what_is_printed_and_stored_is_english(self):
        self.copy("eins")
        self.program.open_panel()
        self.click("push button", "Menü")
        self.click("menu item", SETTINGS_ENTRY)
        self.keyboard.wait_for_focus(self.keyboard.wait_for_window(TITLE))
        printed = [line for line in self.program.stop() if not any(re.search(a, line) for a in LOCALE_LINES)]
        self.assertEqual(
            printed,
            [
                "[Larkspool] Seeded 5 default categories",
                "[Larkspool] Seeded 10 default templates",
                "[Larkspool] openSettings called",
                "[Larkspool] Showing settings window",
            ],
        )
        categories = self.store.query("SELECT name FROM ClipCategory ORDER BY sortOrder")
        self.assertEqual([category["name"] for category in categories], ["Text", "URL", "Image", "File", "Rich Text"])


class OfTheUsersList(Translated):
    """The first language of the list that the program knows, whatever the locale."""

    LANGUAGE = {"LANG": "C.UTF-8", "LANGUAGE": "fr:de:en"}

    def test_it_is_german(self):
        self.copy("eins")
        self.program.open_panel()
        self.wait_for("label", "1 Eintrag")


class Unknown(Translated):
    LANGUAGE = {"LANG": "fr_FR.UTF-8"}

    def test_a_language_without_translation_is_english(self):
        self.copy("one")
        self.program.open_panel()
        self.wait_for("list", "History")
        self.wait_for("label", "1 item")


if __name__ == "__main__":
    run_tests()
