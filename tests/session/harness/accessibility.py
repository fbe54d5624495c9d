"""The panel as a screen reader hears it.

Run as a program, in the environment of a desktop, it prints the names of the rows of the list "History" as JSON.
"""

import json
import pathlib
import sys

PROGRAM = "larkspool"
LIST = "History"


def rows(desktop):
    """The names of the history's rows on the desktop, from top to bottom; nothing when there is no such list."""
    return json.loads(desktop.run("/usr/bin/python3", pathlib.Path(__file__).resolve()))


def _tree(node, depth=0):
    yield node
    if depth > 12:
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


def _main():
    import gi

    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi, GLib

    desktop = Atspi.get_desktop(0)
    found = None
    for i in range(desktop.get_child_count()):
        program = desktop.get_child_at_index(i)
        if program is None or PROGRAM not in program.get_name().lower():
            continue
        try:
            history = _list_of(program)
            if history is not None:
                found = _names_from_top_to_bottom(history)
        except GLib.Error as failure:
            print(failure, file=sys.stderr)
    json.dump(found, sys.stdout)


if __name__ == "__main__":
    _main()
