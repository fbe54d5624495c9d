"""What comes between a paste and its target."""

import os
import signal
import unittest

from harness import Desktop, Larkspool, Store, missing, need, programs, run_tests, stays, wait_until
from harness.preferences import LarkspoolWithHotKey

NOT_IN_FRONT = "[Larkspool] No paste keys: the program that they are for is not in front"
HELD = "[Larkspool] No paste keys: a program holds them as a hot key"
# Makes the home read-only, but for the folders of the XDG variables, for the program alone.
READ_ONLY_HOME = """
for folder in "$XDG_DATA_HOME" "$XDG_CONFIG_HOME" "$XDG_CACHE_HOME" "$XDG_STATE_HOME" "$XDG_RUNTIME_DIR"; do
    mount --bind "$folder" "$folder" || exit
done
mount --bind "$HOME" "$HOME" && mount -o remount,ro,bind "$HOME" || exit
for folder in "$XDG_DATA_HOME" "$XDG_CONFIG_HOME" "$XDG_CACHE_HOME" "$XDG_STATE_HOME" "$XDG_RUNTIME_DIR"; do
    mount --bind "$folder" "$folder" && mount -o remount,rw,bind "$folder" || exit
done
exec "$@"
"""


class Trouble(unittest.TestCase):
    def setUp(self):
        self.desktop = self.enterContext(Desktop())
        self.keyboard = self.desktop.keyboard
        self.store = Store(self.desktop.store_file)

    def start(self, **options):
        self.program = self.enterContext(Larkspool(self.desktop, **options))

    def copy(self, text):
        programs.xclip_copy(self.desktop, text.encode())
        self.store.wait_for(text)

    def choose(self):
        self.keyboard.hit("Return")
        self.program.wait_until_hidden()

    def log(self):
        """The debug log's lines without their times."""
        return [line.split("] ", 1)[1] for line in self.desktop.debug_log.read_text().splitlines()]


class Targets(Trouble):
    def test_nothing_is_pasted_into_another_window_when_the_previous_application_has_ended(self):
        self.start(may_print=["No paste keys"])
        self.copy("kept")
        bystander = programs.Terminal(self.desktop, "bystander.txt")
        target = programs.Terminal(self.desktop, "target.txt")
        self.program.open_panel()
        target.close()
        self.choose()
        self.program.stdout.wait_for(lambda line: line == NOT_IN_FRONT, "the chord is dropped")
        self.keyboard.wait_for_focus(bystander.window)
        self.assertEqual(bystander.typed(), b"")
        self.assertEqual(programs.xclip_paste(self.desktop), b"kept", "it can be pasted by hand")
        self.assertRegex(self.log()[2], rf"^Previous app: .*, pid: {target.process.pid}$")
        self.assertRegex(self.log()[3], "^Target active: false, frontmost: ")
        # The next paste is not held up by it.
        self.program.open_panel()
        self.choose()
        wait_until(lambda: bystander.typed() == b"kept", "pasted")

    def test_a_program_that_hangs_holds_nothing_up_and_gets_its_paste_when_it_goes_on(self):
        self.start()
        self.copy("for later")
        target = programs.Terminal(self.desktop)
        os.kill(target.process.pid, signal.SIGSTOP)
        self.addCleanup(os.kill, target.process.pid, signal.SIGCONT)
        self.program.open_panel()
        self.choose()
        wait_until(lambda: self.log()[-1:] == ["Paste simulated via CGEvent SUCCESS"], "the keys are posted")
        self.copy("copied meanwhile")
        self.program.open_panel()
        wait_until(lambda: self.program.rows() == ["copied meanwhile", "for later"], "the panel works")
        self.keyboard.hit("Escape")
        self.program.wait_until_hidden()
        programs.xclip_copy(self.desktop, b"for later")
        os.kill(target.process.pid, signal.SIGCONT)
        wait_until(lambda: target.typed() == b"for later", "pasted")


class HotKeys(Trouble):
    def start_with(self, *hot_key, **options):
        self.program = self.enterContext(LarkspoolWithHotKey(self.desktop, *hot_key, **options))
        self.copy("pasted")

    def test_a_hot_key_that_somebody_else_holds_costs_the_hot_key_alone(self):
        self.desktop.probe.grab("v", ["Super", "Shift"])
        self.program = Larkspool(self.desktop, may_print=["^Failed to register hotkey: -9878$"])
        self.program.wait_for_hot_key = lambda: self.program.stdout.wait_for(
            lambda line: line == "Failed to register hotkey: -9878", "the line that says so"
        )
        self.enterContext(self.program)
        self.copy("captured all the same")
        self.keyboard.hit("Super", "Shift", "v")
        self.assertTrue(stays(lambda: self.program.panel() is None, 0.5), "it is the other's hot key")

    def test_a_paste_into_a_terminal_whose_chord_is_the_hot_key_lands_and_does_not_call_the_panel(self):
        self.start_with("Control", "Shift", "v")
        terminal = programs.VteTerminal(self.desktop)
        for count in range(1, 3):
            self.program.open_panel()
            self.choose()
            wait_until(lambda: terminal.typed() == b"pasted" * count, "pasted")
            self.assertTrue(stays(lambda: self.program.panel() is None, 0.3), "the panel stays hidden")

    def test_a_paste_into_an_editor_whose_chord_is_the_hot_key_lands_and_does_not_call_the_panel(self):
        self.start_with("Control", "v")
        editor = programs.Editor(self.desktop, "mousepad")
        self.program.open_panel()
        self.choose()
        wait_until(lambda: editor.text() == "pasted", "pasted", every=0.1)
        self.assertIsNone(self.program.panel())

    def test_a_paste_into_a_program_that_knows_the_hot_key_only_does_not_call_the_panel(self):
        self.start_with("Shift", "Insert", may_print=["No paste keys"])
        terminal = programs.Terminal(self.desktop)
        self.program.open_panel()
        self.choose()
        self.program.stdout.wait_for(lambda line: line == HELD, "the chord is dropped")
        self.assertTrue(stays(lambda: self.program.panel() is None, 0.3), "the panel stays hidden")
        self.assertEqual(terminal.typed(), b"")


class DebugLog(Trouble):
    def test_it_holds_fifty_characters_of_what_was_chosen(self):
        self.start()
        text = "🦜" * 49 + "é" * 30
        self.copy(text)
        terminal = programs.Terminal(self.desktop)
        self.program.open_panel()
        self.choose()
        wait_until(lambda: terminal.typed() == text.encode(), "pasted")
        self.assertEqual(self.log()[0], "handleItemSelected: " + text[:50])
        self.assertEqual(len(self.log()), 8)

    def test_a_home_that_cannot_be_written_costs_the_log_alone(self):
        if os.geteuid() != 0:
            missing("a folder can only be made read-only by root")
        need("unshare")
        self.start(wrapper=("unshare", "--mount", "--propagation", "private", "sh", "-c", READ_ONLY_HOME, "sh"))
        self.copy("pasted")
        terminal = programs.Terminal(self.desktop)
        self.program.open_panel()
        self.choose()
        wait_until(lambda: terminal.typed() == b"pasted", "pasted")
        self.assertFalse(self.desktop.debug_log.exists())


if __name__ == "__main__":
    run_tests()
