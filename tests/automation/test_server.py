"""The server on the bus: what it tells of itself, how it begins and ends, and who reaches it."""

import os
import signal
import sys
import time
import unittest

from private_bus import (GUI_NAME, GUI_PATH, INTERFACE, NAME, PATH, PrivateBusTest, SECONDS, interfaces_of,
                         type_library)

INVALID_ARGUMENTS = "org.freedesktop.DBus.Error.InvalidArgs"
UNKNOWN_METHOD = "org.freedesktop.DBus.Error.UnknownMethod"


class ServerTest(PrivateBusTest):
    def setUp(self):
        super().setUp()
        self.start_bus()

    # --- what it tells ------------------------------------------------------------------------

    def introspect(self, name, path):
        return self.bus.get_object(name, path, introspect=False).Introspect(
            dbus_interface="org.freedesktop.DBus.Introspectable")

    def test_introspection_is_the_type_library(self):
        self.start_server()
        told = {**interfaces_of(self.introspect(NAME, PATH)),
                **interfaces_of(self.introspect(GUI_NAME, GUI_PATH))}
        library = type_library()
        self.assertEqual(told, library)
        kinds = [kind for kind, _, _ in library[INTERFACE]]
        self.assertEqual((kinds.count("method"), kinds.count("signal")), (111, 4))
        self.assertEqual(len(library["Kavu.IKavuGui"]), 2)

    def test_wrong_arguments_and_names_get_the_errors_of_the_bus(self):
        self.start_server()
        def call(name, signature, arguments):
            return self.bus.call_blocking(NAME, PATH, INTERFACE, name, signature, arguments)

        for name, signature, arguments in [
                ("OpenTmatsFile", "s", ["x"]), ("OpenTmatsFile", "is", [0, "/x"]),
                ("GetBitRate", "i", [1]), ("SetBitRate", "s", ["1"]), ("SetBitRate", "x", [2 ** 31]),
                ("CloseTmatsFile", "xi", [0, 1])]:
            self.fails(INVALID_ARGUMENTS, call, name, signature, arguments)
        self.fails(UNKNOWN_METHOD, call, "GetNothing", "", [])

    def test_the_program_tells_its_path(self):
        self.start_server()
        self.assertEqual(self.gui().GetKAVU9ModulePathname(), os.path.realpath(self.program))

    def test_the_program_is_started_only_for_a_file_and_on_a_display(self):
        self.start_server()
        path = self.sample()
        self.fails("BadValue", self.gui().StartKAVU9, "flight-test.tma")
        self.fails("BadValue", self.gui().StartKAVU9, "")
        self.assertIn("/none.tma", self.fails("FileError", self.gui().StartKAVU9, "/none.tma"))
        self.fails("NoDisplay", self.gui().StartKAVU9, path)

    # --- begin and end --------------------------------------------------------------------------

    def test_a_second_server_ends_at_once(self):
        first = self.start_server()
        owner = self.bus.get_name_owner(NAME)
        self.assertEqual(self.start("/EMBEDDING").wait(timeout=SECONDS), 0)
        self.assertEqual(self.bus.get_name_owner(NAME), owner)
        self.assertIsNone(first.poll())
        self.assertEqual(len(os.listdir(self.temp)), 1)

    def test_a_signal_ends_the_server_tidily(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            process = self.start_server()
            self.wait_until(lambda: os.listdir(self.temp))
            process.send_signal(number)
            self.assertEqual(process.wait(timeout=SECONDS), 0)
            self.assertEqual(os.listdir(self.temp), [])
            self.assertFalse(self.bus.name_has_owner(NAME))

    def test_without_a_bus_the_server_says_so(self):
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + self.root + "/none"
        result = self.run_program(self.program, "-Embedding")
        self.assertEqual(result.returncode, 2)
        self.assertIn(b"no session bus", result.stderr)
        self.assertEqual(os.listdir(self.temp), [])

    def test_the_server_ends_with_its_bus(self):
        process = self.start_server()
        self.bus_process.kill()
        self.assertEqual(process.wait(timeout=SECONDS), 0)
        self.assertEqual(os.listdir(self.temp), [])

    def test_the_server_ends_a_minute_after_its_last_client(self):
        process = self.start_server()
        client, stays = self.connect(), self.connect()
        for bus in (client, stays):
            self.gui(bus).GetKAVU9ModulePathname()
        client.close()
        time.sleep(62)
        self.assertIsNone(process.poll(), "ended while a client was there")
        left = time.monotonic()
        stays.close()
        self.assertEqual(process.wait(timeout=90), 0)
        self.assertGreater(time.monotonic() - left, 59)
        self.assertEqual(os.listdir(self.temp), [])

    def test_a_window_does_not_take_the_names(self):
        self.environment["QT_QPA_PLATFORM"] = "offscreen"
        window = self.start("--no-splash")
        self.wait_until(lambda: os.listdir(self.temp))
        time.sleep(1)
        self.assertIsNone(window.poll())
        self.assertFalse(self.bus.name_has_owner(NAME))
        self.assertFalse(self.bus.name_has_owner(GUI_NAME))

    # --- who reaches it -------------------------------------------------------------------------

    def test_a_client_that_dies_in_mid_call_harms_nothing(self):
        process = self.start_server()
        script = ("import dbus, os\n"
                  "bus = dbus.SessionBus()\n"
                  "gui = bus.get_object('Kavu.KavuGui', '/Kavu/KavuGui', introspect=False)\n"
                  "for _ in range(200):\n"
                  "    gui.GetKAVU9ModulePathname(dbus_interface='Kavu.IKavuGui',\n"
                  "        reply_handler=print, error_handler=print)\n"
                  "bus.flush()\n"
                  "os.kill(os.getpid(), 9)\n")
        for _ in range(3):
            self.run_program(sys.executable, "-c",
                             "import dbus.mainloop.glib\n"
                             "dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)\n" + script)
            self.assertTrue(self.gui().GetKAVU9ModulePathname())
        self.assertIsNone(process.poll())

    @unittest.skipUnless(os.geteuid() == 0, "only the superuser can be somebody else")
    def test_processes_of_other_users_are_refused(self):
        self.start_bus("--config-file=" + self.write("open.conf", """<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><auth>EXTERNAL</auth>
<policy context="default"><allow send_destination="*"/><allow receive_sender="*"/>
<allow own="*"/><allow user="*"/></policy></busconfig>"""))
        self.start_server()
        for path in (self.root, self.environment["XDG_RUNTIME_DIR"]):
            os.chmod(path, 0o755)
        command = ["busctl", "--address=" + self.address, "call", GUI_NAME, GUI_PATH,
                   "Kavu.IKavuGui", "GetKAVU9ModulePathname"]
        self.assertEqual(self.run_program(*command).returncode, 0)
        other = ["setpriv", "--reuid=65534", "--clear-groups"]
        # The bus itself lets the other user in.
        bus = [*command[:2], "call", "org.freedesktop.DBus", "/org/freedesktop/DBus",
               "org.freedesktop.DBus", "GetId"]
        self.assertEqual(self.run_program(*other, *bus).returncode, 0)
        result = self.run_program(*other, *command)
        self.assertNotEqual(result.returncode, 0)
        self.assertIn(b"Access denied", result.stderr)


class RegistrationTest(PrivateBusTest):
    def files(self):
        base = os.path.join(self.data, "dbus-1")
        return sorted(os.path.relpath(os.path.join(folder, name), base)
                      for folder, _, names in os.walk(base) for name in names)

    def test_switches_write_and_remove_the_files_of_the_user(self):
        for register, unregister in (("-RegServer", "-UnregServer"),
                                     ("/regserver", "/UNREGSERVER")):
            self.assertEqual(self.run_program(self.program, register).returncode, 0)
            self.assertEqual(self.files(), [
                "interfaces/Kavu.IKavu.xml", "interfaces/Kavu.IKavuGui.xml",
                "services/Kavu.Kavu.service", "services/Kavu.KavuGui.service"])
            with open(os.path.join(self.data, "dbus-1/services/Kavu.Kavu.service"),
                      encoding="utf-8") as file:
                self.assertEqual(file.read(), "[D-BUS Service]\nName=Kavu.Kavu\nExec=%s -Embedding\n" %
                                 os.path.realpath(self.program))
            told = {}
            for name in ("Kavu.IKavu", "Kavu.IKavuGui"):
                with open(os.path.join(self.data, "dbus-1/interfaces", name + ".xml"),
                          encoding="utf-8") as file:
                    told.update(interfaces_of(file.read()))
            self.assertEqual(told, type_library())
            for _ in range(2):
                self.assertEqual(self.run_program(self.program, unregister).returncode, 0)
                self.assertEqual(self.files(), [])
        self.assertEqual(os.listdir(self.temp), [])

    def test_the_first_of_the_switches_counts(self):
        self.assertEqual(self.run_program(self.program, "/UnregServer", "-RegServer").returncode, 0)
        self.assertEqual(self.files(), [])

    def test_a_file_that_cannot_be_written_is_named(self):
        self.environment["XDG_DATA_HOME"] = self.write("plain", "")
        result = self.run_program(self.program, "-RegServer")
        self.assertEqual(result.returncode, 2)
        self.assertIn(self.environment["XDG_DATA_HOME"].encode(), result.stderr)

    def test_the_bus_starts_the_program_for_either_name(self):
        self.assertEqual(self.run_program(self.program, "-RegServer").returncode, 0)
        for name, path in ((NAME, PATH), (GUI_NAME, GUI_PATH)):
            self.start_bus()
            self.bus.get_object(name, path, introspect=False).Ping(
                dbus_interface="org.freedesktop.DBus.Peer")
            self.wait_until(lambda: self.bus.name_has_owner(NAME) and
                            self.bus.name_has_owner(GUI_NAME))
            self.bus_process.kill()
            self.wait_until(lambda: not os.listdir(self.temp))

    def test_tools_of_the_bus_call_it(self):
        self.assertEqual(self.run_program(self.program, "-RegServer").returncode, 0)
        self.start_bus()
        result = self.run_program("busctl", "--address=" + self.address, "call", GUI_NAME,
                                  GUI_PATH, "Kavu.IKavuGui", "GetKAVU9ModulePathname")
        self.assertEqual(result.stdout.decode(), 's "%s"\n' % os.path.realpath(self.program))
        result = self.run_program("gdbus", "call", "--session", "--dest", GUI_NAME,
                                  "--object-path", GUI_PATH, "--method",
                                  "Kavu.IKavuGui.GetKAVU9ModulePathname")
        self.assertEqual(result.stdout.decode(), "('%s',)\n" % os.path.realpath(self.program))
        result = self.run_program("busctl", "--address=" + self.address, "introspect", NAME, PATH,
                                  INTERFACE)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(result.stdout.count(b" method "), 111)


if __name__ == "__main__":
    unittest.main()
