"""What a screen reader does beyond listening once: it follows the focus, reads texts, and acts.

Its other half runs as a program of its own in the environment of a desktop, which has a bus that ours has not.
"""

import json
import pathlib
import subprocess
import sys

from . import accessibility, children
from .waiting import wait_until

SESSION = pathlib.Path(__file__).resolve().parent.parent
MODULE = ["/usr/bin/python3", "-m", "harness.screen_reader"]
FOCUSED = "object:state-changed:focused"
DESCRIBED = "object:property-change:accessible-description"
LONGEST_TEXT = 1000
TRIES = 20


class Node(accessibility.Node):
    """One visible thing with all its states, what it offers to do, and the beginning of its text if it has one."""

    def __init__(self, facts):
        super().__init__(facts)
        self.states = set(facts["every state"])
        self.actions = facts["actions"]
        # The toolkit ends a paragraph with a separator of its own.
        self.text = facts["text"] and facts["text"].replace("\u2029", "\n")


def nodes(desktop, role=None, name=None):
    """What is visible of the program's, or of that all with the role and the name."""
    found = [Node(facts) for facts in json.loads(desktop.run(*MODULE, "nodes", cwd=SESSION))]
    return [node for node in found if role in (None, node.role) and name in (None, node.name)]


def act(desktop, role, name):
    """Presses the first visible thing with the role and the name."""
    desktop.run(*MODULE, "act", role, name, cwd=SESSION)


class Listener:
    """Follows the program's events from now on, in order."""

    def __init__(self, desktop):
        process = desktop.spawn(*MODULE, "listen", cwd=SESSION, stdout=subprocess.PIPE)
        self._lines = children.Lines(process.stdout)
        wait_until(self._lines.all, "the listener is ready")
        self._read = 1

    def heard(self):
        """The events that have come since those of the last `wait_for`: (type, detail, role, name)."""
        return [tuple(json.loads(line)) for line in self._lines.all()[self._read :]]

    def wait_for(self, *event):
        """Waits until the event has come, and forgets what came before it."""
        try:
            wait_until(lambda: event in self.heard(), f"heard: {event}")
        except AssertionError as late:
            raise AssertionError(f"{late}; heard {self.heard()}") from None
        self._read += self.heard().index(event) + 1

    def wait_for_focus(self, role, name):
        self.wait_for(FOCUSED, 1, role, name)


# The other half


def _actions(node):
    from gi.repository import Atspi

    action = node.get_action_iface()
    return [Atspi.Action.get_action_name(action, i) for i in range(action.get_n_actions())] if action else []


def _node_facts(node):
    from gi.repository import Atspi

    facts = accessibility._facts(node)
    facts["every state"] = [state.value_nick for state in node.get_state_set().get_states()]
    facts["actions"] = _actions(node)
    facts["text"] = None
    text = node.get_text_iface()
    if text:
        length = min(Atspi.Text.get_character_count(text), LONGEST_TEXT)
        facts["text"] = Atspi.Text.get_text(text, 0, length)
    return facts


def _visible():
    from gi.repository import Atspi

    desktop = Atspi.get_desktop(0)
    for i in range(desktop.get_child_count()):
        program = desktop.get_child_at_index(i)
        if program is None or accessibility.PROGRAM not in program.get_name().lower():
            continue
        for node in accessibility._tree(program):
            if node.get_state_set().contains(Atspi.StateType.SHOWING):
                yield node


def _of_one_moment(look):
    """What the look finds when nothing goes away meanwhile."""
    from gi.repository import GLib

    for _ in range(TRIES - 1):
        try:
            return look()
        except GLib.Error as gone:
            print(gone, file=sys.stderr)
    return look()


def _print_nodes():
    json.dump(_of_one_moment(lambda: [_node_facts(node) for node in _visible()]), sys.stdout)


def _act(role, name):
    def find():
        return [node for node in _visible() if (node.get_role_name(), node.get_name()) == (role, name)]

    found = _of_one_moment(find)
    if not found:
        sys.exit(f"no {role} {name!r}")
    action = _actions(found[0]).index("Press")
    if not found[0].get_action_iface().do_action(action):
        sys.exit(f"{role} {name!r} does nothing")


def _listen():
    from gi.repository import Atspi, GLib

    def hear(event):
        try:
            facts = [event.type, event.detail1, event.source.get_role_name(), event.source.get_name()]
        except GLib.Error:  # gone by now
            return
        print(json.dumps(facts), flush=True)

    listener = Atspi.EventListener.new(hear)
    for kind in ("object:state-changed:focused", "object:state-changed:checked", "object:property-change"):
        listener.register(kind)
    print("ready", flush=True)
    GLib.MainLoop().run()


def _main():
    import gi

    gi.require_version("Atspi", "2.0")
    {"nodes": _print_nodes, "act": _act, "listen": _listen}[sys.argv[1]](*sys.argv[2:])


if __name__ == "__main__":
    _main()
