"""The text of a field of a program, as a screen reader has it.

Run as a program, in the environment of a desktop, with the program's name and the field's, which may be empty: prints
the text as JSON, null when there is no such field.
"""

import json
import pathlib
import sys


def text(desktop, program, field=""):
    """What the field of the program holds; nothing when there is no such field."""
    return json.loads(desktop.run("/usr/bin/python3", desktop.readable(pathlib.Path(__file__).resolve()), program, field))


def _tree(node):
    yield node
    for i in range(node.get_child_count()):
        child = node.get_child_at_index(i)
        if child is not None:
            yield from _tree(child)


def _main(program, field):
    import gi

    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi, GLib

    desktop = Atspi.get_desktop(0)
    for i in range(desktop.get_child_count()):
        running = desktop.get_child_at_index(i)
        if running is None or program not in running.get_name():
            continue
        try:
            for node in _tree(running):
                if node.get_role() in (Atspi.Role.ENTRY, Atspi.Role.TEXT) and node.get_name() == field:
                    return Atspi.Text.get_text(node, 0, -1)
        except GLib.Error as failure:
            print(failure, file=sys.stderr)
    return None


if __name__ == "__main__":
    json.dump(_main(*sys.argv[1:]), sys.stdout)
