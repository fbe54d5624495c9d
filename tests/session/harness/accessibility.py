"""The program as a screen reader hears it.

Run as a program, in the environment of a desktop, it prints what it hears as JSON: of "rows" the names of the rows of
the list "History", of "nodes" everything that is visible; of "windows" the windows of all programs.
"""

import json
import pathlib
import sys

PROGRAM = "larkspool"
LIST = "History"


def rows(desktop):
    """The names of the history's rows on the desktop, from top to bottom; nothing when there is no such list."""
    return _heard(desktop, "rows")


class Node:
    """One thing of the program's that a screen reader knows."""

    def __init__(self, facts):
        self.role = facts["role"]
        self.name = facts["name"]
        self.description = facts["description"]
        self.states = set(facts["states"])
        self.x, self.y, self.width, self.height = facts["place"]

    @property
    def middle(self):
        """On the screen, in pixels."""
        return self.x + self.width // 2, self.y + self.height // 2

    def __repr__(self):
        return f"{self.role} {self.name!r} {sorted(self.states)}"


def nodes(desktop, role=None, name=None):
    """What is visible of the program's, or of that all with the role (such as "push button") and the name."""
    heard = [Node(facts) for facts in _heard(desktop, "nodes") or []]
    return [node for node in heard if role in (None, node.role) and name in (None, node.name)]


def windows(desktop):
    """The visible windows of all programs that a screen reader hears of: program, pid, number in it, title, active."""
    return _heard(desktop, "windows") or []


def _heard(desktop, what):
    return json.loads(desktop.run("/usr/bin/python3", desktop.readable(pathlib.Path(__file__).resolve()), what))


def _tree(node, depth=0):
    yield node
    if depth > 20:
        return
    for i in range(node.get_child_count()):
        child = node.get_child_at_index(i)
        if child is not None:
            yield from _tree(child, depth + 1)


def _list_of(program):
    from gi.repository import Atspi

    roles = (Atspi.Role.LIST, Atspi.Role.LIST_BOX)
    return next((node for node in _tree(program) if node.get_role() in roles and node.get_name() == LIST), None)


def _names_from_top_to_bottom(history):
    """Where the rows are says their order; in the tree they stand in the order in which they were made."""
    from gi.repository import Atspi

    rows = [
        node
        for node in _tree(history)
        if node.get_role() == Atspi.Role.LIST_ITEM and node.get_state_set().contains(Atspi.StateType.VISIBLE)
    ]
    rows.sort(key=lambda row: row.get_extents(Atspi.CoordType.SCREEN).y)
    return [row.get_name() for row in rows]


def _rows_of(program, found):
    history = _list_of(program)
    return found if history is None else _names_from_top_to_bottom(history)


STATES = ("CHECKED", "ENABLED", "FOCUSED", "SELECTED", "EDITABLE", "EXPANDED")


def _facts(node):
    from gi.repository import Atspi

    states = node.get_state_set()
    place = node.get_extents(Atspi.CoordType.SCREEN)
    return {
        "role": node.get_role_name(),
        "name": node.get_name(),
        "description": node.get_description(),
        "states": [name.lower() for name in STATES if states.contains(getattr(Atspi.StateType, name))],
        "place": [place.x, place.y, place.width, place.height],
    }


def _nodes_of(program, found):
    from gi.repository import Atspi

    visible = (node for node in _tree(program) if node.get_state_set().contains(Atspi.StateType.SHOWING))
    return (found or []) + [_facts(node) for node in visible]


def _windows_of(program, found):
    from gi.repository import Atspi

    for i in range(program.get_child_count()):
        window = program.get_child_at_index(i)
        if window is None:
            continue
        states = window.get_state_set()
        if states.contains(Atspi.StateType.SHOWING):
            facts = {
                "program": program.get_name(), "pid": program.get_process_id(), "number": i,
                "title": window.get_name(), "active": states.contains(Atspi.StateType.ACTIVE),
            }  # fmt: skip
            found = (found or []) + [facts]
    return found


def _main():
    import gi

    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi, GLib

    look = {"rows": _rows_of, "nodes": _nodes_of, "windows": _windows_of}[sys.argv[1]]
    desktop = Atspi.get_desktop(0)
    found = None
    for i in range(desktop.get_child_count()):
        program = desktop.get_child_at_index(i)
        if program is None or (look is not _windows_of and PROGRAM not in program.get_name().lower()):
            continue
        try:
            found = look(program, found)
        except GLib.Error as failure:
            print(failure, file=sys.stderr)
    json.dump(found, sys.stdout)


if __name__ == "__main__":
    _main()
