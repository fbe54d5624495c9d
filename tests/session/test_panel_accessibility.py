"""The panel for somebody who does not see it: each of its states as a screen reader hears it, and hears of it."""

import itertools
import re
import unittest

from harness import Desktop, Larkspool, Store, need, programs, run_tests, screen_reader, wait_until

CATEGORIES = ["Text", "URL", "Image", "File", "Rich Text"]
NAMED = {"push button", "text", "list", "list item", "menu item", "popup menu", "label", "dialog", "panel"}
BUTTON = "push button"
ROW = "list item"


class Panel(unittest.TestCase):
    may_print = ()

    def setUp(self):
        self.desktop = self.enterContext(Desktop())
        self.store = Store(self.desktop.store_file)
        self.program = self.enterContext(Larkspool(self.desktop, may_print=self.may_print))
        self.keyboard = self.desktop.keyboard

    def copy(self, *texts):
        for text in texts:
            programs.xclip_copy(self.desktop, text.encode())
            self.store.wait_for(text)

    def open(self, *texts):
        """Copies, opens the panel and waits for its rows."""
        self.copy(*texts)
        self.program.open_panel()
        wait_until(lambda: self.program.rows() == list(reversed(texts)), "the rows")

    def listen(self):
        return screen_reader.Listener(self.desktop)

    def heard(self):
        """Everything that is visible, once all of it has a name and lies in the panel: a look while something comes or
        goes may find half of it."""
        flaw = None

        def sound():
            nonlocal flaw
            nodes = wait_until(self.nodes_of_the_window, "the window is heard")
            frame = next(node for node in nodes if node.role == "frame")
            try:
                for node in nodes:
                    self.check(node, frame, nodes)
            except AssertionError as found:
                flaw = found
                return None
            return nodes

        try:
            return wait_until(sound, "everything is named and in its place", 5)
        except AssertionError as late:
            raise flaw or late from None

    def nodes_of_the_window(self):
        nodes = screen_reader.nodes(self.desktop)
        return nodes if [node.name for node in nodes if node.role == "frame"] == ["Larkspool"] else None

    def check(self, node, frame, nodes):
        if node.role not in NAMED:
            self.assertNotIn("focusable", node.states, node)
            return
        self.assertNotEqual(node.name.strip(), "", node)
        self.assertGreaterEqual(node.x, frame.x, node)
        self.assertLessEqual(node.x + node.width, frame.x + frame.width, node)
        if node.role in (BUTTON, ROW, "menu item"):
            self.assertIn("Press", node.actions, node)
        within = self.within(node, frame, nodes)
        self.assertGreaterEqual(node.y, within.y, node)
        self.assertLessEqual(node.y + node.height, within.y + within.height, node)

    def within(self, node, frame, nodes):
        """What a node has to lie in: of the rows only the highlighted one has to be in sight as a whole."""
        if node.role != ROW:
            return frame
        history = next(found for found in nodes if (found.role, found.name) == ("list", "History"))
        if "selected" in node.states:
            return history
        self.assertLess(node.y, history.y + history.height, node)
        self.assertGreater(node.y + node.height, history.y, node)
        return node

    def wait_for_text(self, name, text):
        """Waits until the field's text is heard as it is; it may come a moment after the field."""
        wait_until(lambda: self.wait_for("text", name).text == text, f"{name!r} holds {text!r}")

    def wait_for(self, role, name, *states, but=()):
        """The node with the role and the name, once it has the states and none of those in `but`."""
        def found():
            for node in self.heard():
                if (node.role, node.name) == (role, name) and node.states.issuperset(states):
                    if node.states.isdisjoint(but):
                        return node
            return None

        try:
            return wait_until(found, f"{role} {name!r} {states}, not {but}")
        except AssertionError as late:
            raise AssertionError(f"{late}; heard {screen_reader.nodes(self.desktop)}") from None

    def wait_until_gone(self, role, name):
        wait_until(
            lambda: not [node for node in self.heard() if (node.role, node.name) == (role, name)],
            f"no {role} {name!r}",
        )

    def click(self, node, button=1):
        self.desktop.run("xdotool", "mousemove", *node.middle, "click", button)

    def names(self, role):
        return [node.name for node in self.heard() if node.role == role]


class Rows(Panel):
    def test_a_row_is_named_by_its_text_and_described_by_kind_age_and_program(self):
        self.open("one", "https://example.org/page")
        row = self.wait_for(ROW, "https://example.org/page", "selected", "focused", "selectable")
        self.assertTrue(row.description.startswith("URL, "), row.description)
        self.wait_for(ROW, "one", "selectable", but=["selected", "focused"])
        self.wait_for("list", "History")
        self.wait_for("label", "2 items")

    def test_the_highlighted_row_is_announced_when_the_panel_opens_and_as_the_keys_move_it(self):
        self.copy("one", "two", "three")
        reader = self.listen()
        self.program.open_panel()
        reader.wait_for_focus(ROW, "three")
        self.keyboard.press("Down")
        reader.wait_for(screen_reader.FOCUSED, 0, ROW, "three")
        reader.wait_for_focus(ROW, "two")
        self.keyboard.press("Down")
        reader.wait_for_focus(ROW, "one")
        self.keyboard.press("Up")
        reader.wait_for_focus(ROW, "two")
        self.wait_for(ROW, "two", "selected", "focused")
        self.wait_for(ROW, "one", but=["selected", "focused"])

    def test_the_wheel_moves_the_highlight_and_it_is_announced(self):
        self.open("one", "two", "three")
        reader = self.listen()
        self.desktop.run("xdotool", "mousemove", *self.wait_for("list", "History").middle, "click", 5)
        reader.wait_for_focus(ROW, "two")
        self.desktop.run("xdotool", "click", 5)
        reader.wait_for_focus(ROW, "one")
        self.desktop.run("xdotool", "click", 4)
        reader.wait_for_focus(ROW, "two")
        self.wait_for(ROW, "two", "selected", "focused")

    def test_a_row_that_comes_to_another_entry_is_announced_again(self):
        self.open("just text", "https://example.org/page")
        reader = self.listen()
        self.keyboard.press("Right")
        reader.wait_for_focus(ROW, "just text")
        self.keyboard.press("Escape")
        reader.wait_for_focus(ROW, "https://example.org/page")

    def test_a_click_on_a_row_pastes_it(self):
        terminal = programs.Terminal(self.desktop)
        self.open("one", "two", "three")
        self.click(self.wait_for(ROW, "two"))
        self.program.wait_until_hidden()
        wait_until(lambda: terminal.typed() == b"two", "pasted")

    def test_the_action_of_a_row_pastes_it(self):
        terminal = programs.Terminal(self.desktop)
        self.open("one", "two", "three")
        screen_reader.act(self.desktop, ROW, "one")
        self.program.wait_until_hidden()
        wait_until(lambda: terminal.typed() == b"one", "pasted")

    def test_the_buttons_of_the_highlighted_row_pin_and_delete_by_clicks(self):
        self.open("one")
        self.click(self.wait_for(BUTTON, "Pin"))
        wait_until(lambda: self.store.items()[0]["isPinned"] == 1, "pinned")
        self.click(self.wait_for(BUTTON, "Unpin"))
        wait_until(lambda: self.store.items()[0]["isPinned"] == 0, "unpinned")
        self.click(self.wait_for(BUTTON, "Delete"))
        wait_until(lambda: not self.store.items(), "deleted")

    def test_the_buttons_of_the_highlighted_row_pin_and_delete_by_their_actions(self):
        self.open("one")
        self.wait_for(BUTTON, "Pin")
        screen_reader.act(self.desktop, BUTTON, "Pin")
        self.wait_for(BUTTON, "Unpin")
        self.assertEqual(self.store.items()[0]["isPinned"], 1)
        screen_reader.act(self.desktop, BUTTON, "Unpin")
        self.wait_for(BUTTON, "Pin")
        self.assertEqual(self.store.items()[0]["isPinned"], 0)
        screen_reader.act(self.desktop, BUTTON, "Delete")
        wait_until(lambda: not self.store.items(), "deleted")

    def test_a_history_without_entries_says_what_to_do(self):
        self.program.open_panel()
        self.wait_for("label", "Welcome to Larkspool!")
        self.wait_for("label", "Just start typing to search")
        self.assertNotIn("No items found", self.names("label"))


class Narrowed(Panel):
    def test_the_chip_of_a_category_is_checked_when_it_is_chosen_by_a_click_and_by_its_action(self):
        self.open("just text", "https://example.org/page")
        self.assertEqual([name for name in self.names(BUTTON) if name in CATEGORIES], CATEGORIES)
        self.click(self.wait_for(BUTTON, "URL", but=["checked"]))
        self.wait_for(BUTTON, "URL", "checked")
        wait_until(lambda: self.program.rows() == ["https://example.org/page"], "the one row")
        self.wait_for("label", "1 item")
        screen_reader.act(self.desktop, BUTTON, "Text")
        self.wait_for(BUTTON, "Text", "checked")
        self.wait_for(BUTTON, "URL", but=["checked"])
        self.assertEqual(self.program.rows(), ["just text"])
        self.click(self.wait_for(BUTTON, "Text"))
        self.wait_for(BUTTON, "Text", but=["checked"])

    def test_left_and_right_check_the_chips_in_turn(self):
        self.open("just text")
        reader = self.listen()
        self.keyboard.press("Right")
        reader.wait_for("object:state-changed:checked", 1, BUTTON, "Text")
        self.keyboard.press("Right")
        reader.wait_for("object:state-changed:checked", 1, BUTTON, "URL")
        self.wait_for("label", "No items found")
        self.keyboard.press("Left")
        self.wait_for(BUTTON, "Text", "checked")
        self.keyboard.press("Left")
        self.wait_for(BUTTON, "Text", but=["checked"])

    def test_the_search_field_is_named_and_has_its_text_and_the_highlight_is_announced_in_a_search(self):
        self.open("a lark", "a wren", "an owl")
        reader = self.listen()
        self.keyboard.type("a")
        reader.wait_for_focus("text", "Search...")
        field = self.wait_for("text", "Search...", "focused", "editable")
        self.wait_for_text("Search...", "a")
        self.keyboard.press("Down")
        reader.wait_for_focus(ROW, "a wren")
        self.wait_for(ROW, "a wren", "selected", "focused")
        self.keyboard.type(" lark")
        reader.wait_for_focus("text", "Search...")
        wait_until(lambda: self.program.rows() == ["a lark"], "the row that is sought")
        self.wait_for_text("Search...", "a lark")
        self.wait_for(ROW, "a lark", "selected", but=["focused"])

    def test_a_search_that_finds_nothing_says_so(self):
        self.open("a lark")
        self.keyboard.type("owl")
        self.wait_for("label", "No items found")
        self.wait_for("label", "Try a different search term")
        self.wait_for("label", "0 items")

    def test_the_category_search_has_a_field_and_a_list_of_chips_that_are_announced(self):
        self.open("just text", "https://example.org/page")
        reader = self.listen()
        self.keyboard.press("Tab")
        reader.wait_for_focus("text", "Filter...")
        self.wait_for("text", "Filter...", "focused", "editable")
        self.wait_for("list", "Categories")
        self.assertEqual([name for name in self.names(BUTTON) if name in CATEGORIES], CATEGORIES * 2)
        self.keyboard.press("Down")
        reader.wait_for_focus(BUTTON, "URL")
        self.wait_for(BUTTON, "URL", "checked", "focused")
        self.keyboard.type("ima")
        reader.wait_for_focus("text", "Filter...")
        self.wait_for(BUTTON, "Image", "checked")
        self.wait_for_text("Filter...", "ima")
        self.assertEqual([name for name in self.names(BUTTON) if name in CATEGORIES], [*CATEGORIES, "Image"])

    def test_a_chip_of_the_category_search_chooses_by_a_click(self):
        self.open("just text", "https://example.org/page")
        self.keyboard.press("Tab")
        self.keyboard.type("url")
        self.wait_for("list", "Categories")
        wait_until(lambda: self.names(BUTTON).count("Text") == 1, "the chips that match")
        chips = [node for node in self.heard() if (node.role, node.name) == (BUTTON, "URL")]
        self.click(max(chips, key=lambda chip: chip.y))
        wait_until(lambda: self.program.rows() == ["https://example.org/page"], "the one row")
        self.wait_for("text", "Search...", "focused")


class Menus(Panel):
    def test_the_menu_of_the_header_opens_by_a_click_and_its_entries_are_announced(self):
        self.open("one")
        reader = self.listen()
        self.click(self.wait_for(BUTTON, "Menu"))
        reader.wait_for_focus("popup menu", "Menu")
        self.wait_for("popup menu", "Menu", "focused")
        self.assertEqual(self.names("menu item"), ["Settings...", "Clear All History", "Quit Larkspool"])
        self.keyboard.press("Down", "Down")
        reader.wait_for_focus("menu item", "Clear All History")
        self.wait_for("menu item", "Clear All History", "selected", "focused")
        self.keyboard.press("Escape")
        reader.wait_for_focus(ROW, "one")
        self.wait_until_gone("popup menu", "Menu")

    def test_the_actions_of_the_header_menu_open_it_and_clear_the_history(self):
        self.open("one")
        screen_reader.act(self.desktop, BUTTON, "Menu")
        self.wait_for("menu item", "Clear All History")
        screen_reader.act(self.desktop, "menu item", "Clear All History")
        wait_until(lambda: not self.store.items(), "cleared")
        self.wait_until_gone("popup menu", "Menu")

    def test_the_menu_of_a_row_has_a_submenu_with_the_assigned_category_checked(self):
        self.open("one")
        reader = self.listen()
        self.click(self.wait_for(ROW, "one"), 3)
        reader.wait_for_focus("popup menu", "Entry")
        self.assertEqual(self.names("menu item"), ["Paste", "Pin", "Assign Category", "Delete"])
        self.keyboard.press("Down", "Down", "Down", "Right")
        reader.wait_for_focus("popup menu", "Assign Category")
        self.wait_for("popup menu", "Assign Category")
        self.assertEqual(self.names("menu item")[4:], ["None", *CATEGORIES])
        checked = [node.name for node in self.heard() if node.role == "menu item" and "checked" in node.states]
        self.assertEqual(checked, ["Text"])
        self.keyboard.press("Down")
        reader.wait_for_focus("menu item", "None")
        self.keyboard.press("Left")
        reader.wait_for_focus("menu item", "Assign Category")
        self.keyboard.press("Escape")
        reader.wait_for_focus(ROW, "one")

    def test_an_entry_of_the_submenu_assigns_by_a_click(self):
        self.open("one")
        before = self.store.items()[0]["categoryId"]
        self.click(self.wait_for(ROW, "one"), 3)
        self.click(self.wait_for("menu item", "Assign Category"))
        self.click(self.wait_for("menu item", "File"))
        wait_until(lambda: self.store.items()[0]["categoryId"] not in (None, before), "assigned")
        wait_until(lambda: not self.names("popup menu"), "the menus are gone")

    def test_a_pinned_entry_is_unpinned_by_the_menu(self):
        self.open("one")
        screen_reader.act(self.desktop, BUTTON, "Pin")
        self.wait_for(BUTTON, "Unpin")
        self.click(self.wait_for(ROW, "one"), 3)
        screen_reader.act(self.desktop, "menu item", "Unpin")
        wait_until(lambda: self.store.items()[0]["isPinned"] == 0, "unpinned")


class Cards(Panel):
    def test_an_edit_is_announced_and_has_a_field_of_lines_and_a_hint_and_is_cancelled_by_its_button(self):
        self.open("lark", "wren\nowl")
        reader = self.listen()
        self.keyboard.press("ctrl+e")
        reader.wait_for_focus("text", "Edit")
        field = self.wait_for("text", "Edit", "focused", "editable", "multi-line")
        self.assertEqual(field.text, "wren\nowl")
        self.wait_for("panel", "Edit")
        self.wait_for("label", "↩ Save  |  ⇧↩ New line  |  Esc Cancel")
        self.assertEqual(self.names(ROW), ["lark"])
        self.click(self.wait_for(BUTTON, "Cancel"))
        reader.wait_for_focus(ROW, "wren\nowl")
        self.wait_until_gone("text", "Edit")

    def test_a_new_item_is_announced_and_cancelled_by_its_action(self):
        self.open("lark")
        reader = self.listen()
        self.keyboard.press("ctrl+n")
        reader.wait_for_focus("text", "New item")
        self.keyboard.type("wren")
        self.wait_for("panel", "New item")
        wait_until(lambda: self.wait_for("text", "New item", "focused", "multi-line").text == "wren", "its text")
        screen_reader.act(self.desktop, BUTTON, "Cancel")
        reader.wait_for_focus(ROW, "lark")
        self.wait_until_gone("text", "New item")
        self.assertEqual(self.store.contents(), ["lark"])

    def test_that_an_entry_is_too_large_to_be_edited_is_said_at_its_row(self):
        text = "the quick brown fox\n" * 15_000
        programs.xclip_copy(self.desktop, text.encode())
        self.store.wait_for(text)
        self.program.open_panel()
        row = wait_until(lambda: [node for node in self.heard() if node.role == ROW], "the row")[0]
        reader = self.listen()
        self.keyboard.press("ctrl+e")
        reader.wait_for(screen_reader.DESCRIBED, 0, ROW, row.name)
        refusal = wait_until(
            lambda: [name for name in self.names("label") if "too large to be edited" in name], "the refusal"
        )[0]
        row = self.wait_for(ROW, row.name, "focused")
        self.assertIn(refusal, row.description)
        self.assertFalse(self.names("text"))


class Several(Panel):
    def select_two(self):
        self.open("one", "two", "three")
        self.keyboard.press("shift+Down")

    def test_selected_entries_are_checked_and_counted(self):
        self.select_two()
        self.wait_for("label", "2 items selected")
        self.wait_for(ROW, "three", "checked", but=["selected"])
        self.wait_for(ROW, "two", "checked", "selected", "focused")
        self.wait_for(ROW, "one", but=["checked"])
        self.keyboard.press("Escape")
        self.wait_for(ROW, "three", but=["checked"])
        self.wait_until_gone("label", "2 items selected")

    def test_the_combine_panel_has_a_title_chips_a_preview_and_buttons_and_the_keys_are_announced(self):
        self.select_two()
        reader = self.listen()
        self.keyboard.press("Return")
        reader.wait_for_focus(BUTTON, "New Line")
        self.wait_for("dialog", "Combine 2 items")
        self.wait_for(BUTTON, "New Line", "checked", "focused")
        self.wait_for("label", "three\ntwo")
        self.wait_for(BUTTON, "Paste ↩")
        self.keyboard.press("Right")
        reader.wait_for_focus(BUTTON, "Space")
        self.wait_for(BUTTON, "New Line", but=["checked", "focused"])
        self.wait_for("label", "three two")
        screen_reader.act(self.desktop, BUTTON, "Comma")
        self.wait_for("label", "three, two")
        self.wait_for(BUTTON, "Comma", "checked")
        screen_reader.act(self.desktop, BUTTON, "Cancel")
        reader.wait_for_focus(ROW, "two")
        self.wait_until_gone("dialog", "Combine 2 items")

    def test_the_combine_panel_chooses_and_pastes_by_clicks(self):
        terminal = programs.Terminal(self.desktop)
        self.select_two()
        self.keyboard.press("Return")
        self.click(self.wait_for(BUTTON, "Space"))
        self.wait_for("label", "three two")
        self.click(self.wait_for(BUTTON, "Paste ↩"))
        self.program.wait_until_hidden()
        wait_until(lambda: terminal.typed() == b"three two", "pasted")


class Spoken(Panel):
    # The toolkit shows each key to the reader first, and says when that does not answer at once.
    may_print = [r"^QSpiApplication::keyEventError "]

    def test_a_screen_reader_speaks_the_row_that_the_keys_move_the_highlight_to(self):
        need("orca")
        log = self.desktop.home / "orca.log"
        self.open("one", "two", "three")
        self.desktop.spawn("orca", "--replace", f"--debug-file={log}")
        keys = itertools.cycle(["Down", "Up"])

        def is_spoken():
            # The reader writes its log in blocks: what it has said is in it when it has said more.
            self.keyboard.press(next(keys))
            spoken = re.findall(r"SPEECH OUTPUT: '(.*?)'", log.read_text()) if log.exists() else []
            return {"two.", "three."} <= set(spoken) and any(re.fullmatch(r"TEXT, (now|\d+m)\.", words) for words in spoken)

        wait_until(is_spoken, "both rows are spoken", 180, every=1)


if __name__ == "__main__":
    run_tests()
