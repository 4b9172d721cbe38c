"""The server on a display: dialogs over the caller's window, and what others get meanwhile."""

import os
import re
import subprocess
import sys
import threading
import unittest

import dbus

from private_bus import INTERFACE, NAME, PATH, PrivateBusTest, SOURCE

sys.path.insert(0, os.path.join(SOURCE, "tests", "e2e_app"))
from desktop import Desktop  # pylint: disable=wrong-import-position


class DisplayTest(PrivateBusTest):
    def setUp(self):
        super().setUp()
        self.desktop = Desktop(self.folder("desktop"))
        self.addCleanup(self.desktop.close)
        self.environment["DISPLAY"] = self.desktop.display
        self.start_bus()
        self.server = self.start_server()
        self.path = self.sample()
        self.editor = self.kavu()
        self.editor.OpenTmatsFile(0, self.path)

    def caller_window(self):
        """The X11 id of a window of another program."""
        process = subprocess.Popen(["xev"], env=self.environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(self.end, process)
        return int(self.desktop.wait(
            lambda: self.desktop.ask("search", "--onlyvisible", "--name", "Event Tester"), "xev"))

    def begin(self, method, *arguments):
        """Calls from a client of its own, and gives a function that waits for the error's name."""
        outcome = []
        bus = self.connect()

        def run():
            try:
                self.kavu(bus).__getattr__(method)(*arguments)
                outcome.append("")
            except dbus.DBusException as error:
                outcome.append(error.get_dbus_name())
        thread = threading.Thread(target=run)
        thread.start()
        self.addCleanup(thread.join)

        def wait():
            thread.join(60)
            self.assertEqual(len(outcome), 1, "the call has not ended")
            return outcome[0]
        return wait

    def dialog(self, title):
        return self.desktop.wait(lambda: self.desktop.find(title), title)

    def close_dialog(self, title, key):
        self.desktop.wait(lambda: re.search(title, self.desktop.active()), "the focus of " + title)
        self.desktop.key(key)

    def transient_for(self, window):
        result = self.run_program("xprop", "-id", window, "WM_TRANSIENT_FOR")
        match = re.search(rb"0x[0-9a-f]+", result.stdout)
        return int(match.group(), 16) if match else None

    def test_a_dialog_belongs_to_the_callers_window(self):
        window = self.caller_window()
        wait = self.begin("EditGeneralInfo", window)
        self.assertEqual(self.transient_for(self.dialog("General")), window)
        self.close_dialog("General", "Escape")
        self.assertEqual(wait(), "Kavu.Error.Cancelled")
        wait = self.begin("EditGeneralInfo", 0)
        self.assertNotEqual(self.transient_for(self.dialog("General")), window)
        self.close_dialog("General", "Escape")
        self.assertEqual(wait(), "Kavu.Error.Cancelled")

    def test_others_are_told_that_a_dialog_is_open(self):
        wait = self.begin("EditGeneralInfo", 0)
        self.dialog("General")
        self.fails("Busy", self.editor.IsTmatsFileChanged)
        self.fails("Busy", self.editor.GetPCMStreamName, 99)
        self.close_dialog("General", "Escape")
        self.assertEqual(wait(), "Kavu.Error.Cancelled")
        self.assertFalse(self.editor.IsTmatsFileChanged())

    def test_a_message_is_shown_over_a_window_and_told_as_the_error(self):
        self.editor.LoadPCMFormat(0, 1)
        self.fails("Refused", self.editor.SetFrameSyncPatternByLength, 0, 34)
        self.assertEqual(self.desktop.titles(), {})
        window = self.caller_window()
        wait = self.begin("SetFrameSyncPatternByLength", window, 34)
        self.desktop.wait(self.desktop.titles, "the message")
        self.desktop.wait(self.desktop.active, "its focus")
        self.desktop.key("Return")
        self.assertEqual(wait(), "Kavu.Error.Refused")

    def test_a_signal_closes_the_dialog_that_is_open(self):
        wait = self.begin("EditGeneralInfo", 0)
        self.dialog("General")
        self.terminate(self.server)
        wait()
        self.assertEqual(os.listdir(self.temp), [])

    def test_a_client_that_dies_under_its_dialog_leaves_it_to_the_user(self):
        client = subprocess.Popen(
            ["busctl", "--address=" + self.address, "call", NAME, PATH, INTERFACE,
             "EditGeneralInfo", "x", "0"], env=self.environment, stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.dialog("General")
        client.kill()
        client.wait(timeout=60)
        self.close_dialog("General", "Escape")
        self.wait_until(lambda: self.answers())
        self.assertIsNone(self.server.poll())

    def answers(self):
        try:
            self.editor.IsTmatsFileChanged()
        except dbus.DBusException as error:
            self.assertEqual(error.get_dbus_name(), "Kavu.Error.Busy")
            return False
        return True

    def test_the_program_is_started_on_a_file(self):
        self.gui().StartKAVU9(self.path)
        window = self.desktop.wait(lambda: self.desktop.find("flight-test"), "the editor")
        self.assertEqual(self.desktop.ask("getwindowname", window).count("flight-test"), 1)
        self.desktop.ask("windowclose", window)


if __name__ == "__main__":
    unittest.main()
