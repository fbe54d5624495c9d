"""One instance per session, which every further start and the desktop itself bring to the front."""

import os
import pathlib
import signal
import unittest

from harness import Desktop, Larkspool, Store, programs, run_tests, stays, wait_until
from harness.application import NAME, Application
from harness.larkspool import SEEDED, binary

DOES_NOT_ANSWER = "[Larkspool] Another instance is running, and it does not answer"
ROUNDS = 5


def ends(program, deadline=10.0):
    """Waits for a program that ends by itself; its exit code, and what it printed."""
    code = program.process.wait(deadline)
    return code, program.stdout.finish() + program.stderr.finish()


class SingleInstance(unittest.TestCase):
    def setUp(self):
        self.desktop = self.enterContext(Desktop())
        self.store = Store(self.desktop.store_file)

    def start(self):
        """One more start of the program, while another one runs."""
        program = Larkspool(self.desktop)
        program.start()
        return program

    def wait_until_shown(self, program):
        self.desktop.keyboard.wait_for_focus(wait_until(program.panel, "the panel is shown"))

    def test_a_second_start_shows_the_panel_of_the_first_and_a_third_hides_it(self):
        with Larkspool(self.desktop) as first:
            self.assertEqual(ends(self.start()), (0, []))
            self.wait_until_shown(first)
            self.assertEqual(ends(self.start()), (0, []))
            first.wait_until_hidden()

    def test_a_call_over_the_bus_shows_and_hides_the_panel(self):
        with Larkspool(self.desktop) as program, Application(self.desktop) as application:
            self.assertEqual(application.process(), program.pid)
            application.activate(activation_token="of-the-user")
            self.wait_until_shown(program)
            application.activate()
            program.wait_until_hidden()
            self.assertIsNone(program.process.poll())

    def test_of_two_starts_at_the_same_moment_one_runs_and_shows_the_panel(self):
        for _ in range(ROUNDS):
            with Application(self.desktop) as application:
                both = [self.start(), self.start()]
                try:
                    self.one_runs(both, application)
                finally:
                    for program in both:
                        self.desktop.end(program.process)
                application.wait_until_gone()

    def one_runs(self, both, application):
        over = wait_until(lambda: next((one for one in both if one.process.poll() is not None), None), "one ends")
        runs = both[0] if over is both[1] else both[1]
        self.assertEqual(ends(over), (0, []))
        runs.wait_for_hot_key()
        self.wait_until_shown(runs)
        self.assertEqual(application.process(), runs.pid)
        self.assertTrue(stays(lambda: runs.panel() is not None, 0.3), "the panel stays")
        runs.stop()

    def test_an_instance_that_does_not_answer_is_told_of_and_shows_the_panel_once_it_can(self):
        with Larkspool(self.desktop) as first:
            first.process.send_signal(signal.SIGSTOP)
            try:
                self.assertEqual(ends(self.start()), (1, [DOES_NOT_ANSWER]))
            finally:
                first.process.send_signal(signal.SIGCONT)
            self.wait_until_shown(first)

    def test_the_next_start_after_a_crash_runs(self):
        first = self.start()
        first.wait_for_hot_key()
        first.kill()
        with Larkspool(self.desktop) as next_one, Application(self.desktop) as application:
            self.assertEqual(application.process(), next_one.pid)

    def assert_works(self):
        """Captures a copy, and takes the hot key."""
        with Larkspool(self.desktop) as program:
            programs.xclip_copy(self.desktop, b"copied without a bus")
            self.store.wait_for("copied without a bus")
            program.open_panel()

    def test_without_a_bus_it_runs_all_the_same(self):
        self.desktop.env["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={self.desktop.home}/no-such-bus"
        self.assert_works()

    def test_beside_a_bus_that_hangs_it_runs_all_the_same(self):
        with Application(self.desktop) as application:
            bus = application.bus_process()
        os.kill(bus, signal.SIGSTOP)
        try:
            self.assert_works()
        finally:
            os.kill(bus, signal.SIGCONT)

    def test_it_goes_on_when_the_bus_ends(self):
        with Larkspool(self.desktop) as program:
            with Application(self.desktop) as application:
                os.kill(application.bus_process(), signal.SIGKILL)
            programs.xclip_copy(self.desktop, b"copied after the end of the bus")
            self.store.wait_for("copied after the end of the bus")
            program.open_panel()

    def test_started_by_the_bus_it_shows_the_panel_once(self):
        printed = self.desktop.home / "printed"
        services = pathlib.Path(self.desktop.env["XDG_DATA_HOME"]) / "dbus-1" / "services"
        services.mkdir(parents=True)
        # A service's line holds no quotes within quotes.
        script = self.desktop.home / "start"
        script.write_text(f"#!/bin/sh\nexec '{binary()}' > '{printed}' 2>&1\n")
        script.chmod(0o700)
        (services / f"{NAME}.service").write_text(f"[D-BUS Service]\nName={NAME}\nExec={script}\n")
        panel = Larkspool(self.desktop).panel
        with Application(self.desktop) as application:
            application.activate()
            process = application.process()
            try:
                self.desktop.keyboard.wait_for_focus(wait_until(panel, "the panel is shown"))
                self.assertTrue(stays(lambda: panel() is not None, 0.5), "the panel stays")
            finally:
                os.kill(process, signal.SIGTERM)
            application.wait_until_gone()
        self.assertEqual(printed.read_text().splitlines(), SEEDED)


if __name__ == "__main__":
    run_tests()
