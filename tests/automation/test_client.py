"""The module for Python: its methods are those of the type library, and its errors have classes."""

import csv
import inspect
import os
import re
import shutil
import sys
import textwrap
import typing
import unittest

import dbus.mainloop.glib
import kavu
from gi.repository import GLib

from private_bus import PrivateBusTest, SOURCE, type_library

TYPES = {"x": "int", "i": "int", "s": "str", "b": "bool", "d": "float"}


class MethodsOfTheModuleTest(unittest.TestCase):
    def test_they_are_those_of_the_type_library_with_types_and_a_text_each(self):
        library = type_library()
        for client, interface in ((kavu.Kavu, "Kavu.IKavu"), (kavu.KavuGui, "Kavu.IKavuGui")):
            own = {name for name, _ in inspect.getmembers(client, inspect.isfunction)
                   if name[0].isupper()}
            self.assertEqual(own, {name for tag, name, _ in library[interface] if tag == "method"})
            for tag, name, arguments in library[interface]:
                if tag != "method":
                    continue
                method = getattr(client, name)
                signature = inspect.signature(method)
                self.assertEqual(
                    [(each.name, each.annotation) for each in list(signature.parameters.values())[1:]],
                    [(argument, TYPES[kind]) for argument, kind, way in arguments if way == "in"])
                results = [(argument, TYPES[kind]) for argument, kind, way in arguments if way == "out"]
                if len(results) > 1:
                    result = getattr(kavu, signature.return_annotation)
                    self.assertEqual(
                        [(field, kind.__name__)
                         for field, kind in typing.get_type_hints(result).items()], results)
                else:
                    self.assertEqual(signature.return_annotation,
                                     results[0][1] if results else "None")
                self.assertTrue(method.__doc__.endswith("."))

    def test_calls_have_the_signatures_of_the_type_library(self):
        for client, interface in ((kavu.Kavu, "Kavu.IKavu"), (kavu.KavuGui, "Kavu.IKavuGui")):
            class Recorder(client):
                def __init__(self):  # pylint: disable=super-init-not-called
                    self.sent = None

                def _call(self, method, signature, *arguments):
                    self.sent = (method, signature, arguments)
                    return (0, 0, 0)[:self.results] if self.results > 1 else 0
            recorder = Recorder()
            for tag, name, arguments in type_library()[interface]:
                if tag != "method":
                    continue
                given = tuple(range(sum(way == "in" for _, _, way in arguments)))
                recorder.results = len(arguments) - len(given)
                getattr(recorder, name)(*given)
                self.assertEqual(recorder.sent, (
                    name, "".join(kind for _, kind, way in arguments if way == "in"), given))


class ModuleTest(PrivateBusTest):
    def setUp(self):
        super().setUp()
        self.start_bus()
        self.start_server()

    def test_failures_are_exceptions_of_their_name(self):
        editor = kavu.Kavu(self.bus)
        with self.assertRaises(kavu.NoDocument) as caught:
            editor.GetBitRate()
        self.assertEqual(caught.exception.name, "Kavu.Error.NoDocument")
        self.assertTrue(str(caught.exception))
        editor.OpenTmatsFile(0, self.sample())
        editor.LoadPCMFormat(0, 1)
        with self.assertRaises(kavu.Refused) as caught:
            editor.SetFrameSyncPatternByLength(0, 34)
        self.assertEqual(caught.exception.number, 440)
        self.assertTrue(caught.exception.message)
        self.assertEqual(editor.GetSFIDInfo(1), kavu.SFIDInfo("SFID", 1))
        self.assertIs(type(editor.GetBitRate()), int)
        self.assertIs(type(editor.IsTmatsFileChanged()), bool)
        self.assertIs(type(editor.GetPCMComment()), str)

    def test_signals_come_in_their_order(self):
        loop = dbus.mainloop.glib.DBusGMainLoop()
        bus = dbus.bus.BusConnection(self.address, mainloop=loop)
        self.addCleanup(bus.close)
        editor = kavu.Kavu(bus)
        told = []
        editor.on_document_opened(lambda path: told.append(("opened", path)))
        editor.on_document_saved(lambda path: told.append(("saved", path)))
        editor.on_document_closed(lambda path: told.append(("closed", path)))
        editor.on_format_changed(lambda name, changed: told.append((name, changed)))
        path = self.sample()
        editor.OpenTmatsFile(0, path)
        editor.LoadPCMFormat(0, 1)
        editor.SetBitRate(1)
        editor.SetBitRate(2)
        editor.SavePCMFormat(0)
        editor.SaveTmatsFile(0)
        editor.CloseTmatsFile(0, False)

        def have_all_come():
            GLib.MainContext.default().iteration(False)
            return len(told) >= 5

        self.wait_until(have_all_come)
        self.assertEqual(told, [("opened", path), ("PCM Stream 1", True), ("PCM Stream 1", False),
                                ("saved", path), ("closed", path)])


class ExamplesTest(PrivateBusTest):
    """The examples against the service that the bus starts, without a display."""

    def setUp(self):
        super().setUp()
        self.start_bus()
        self.assertEqual(self.run_program(self.program, "-RegServer").returncode, 0)
        self.path = self.sample()

    def example(self, name, *arguments, status=0):
        result = self.run_program(sys.executable,
                                  os.path.join(SOURCE, "examples", "automation", name), *arguments)
        self.assertEqual(result.returncode, status, result.stderr.decode())
        return result

    def read_rows(self, path):
        with open(path, newline="", encoding="utf-8") as file:
            return list(csv.DictReader(file))

    def audit(self, status=1):
        out = os.path.join(self.work, "audit.csv")
        self.example("audit_limits.py", self.path, out, status=status)
        return {row["measurement"]: row for row in self.read_rows(out)}

    def test_a_list_becomes_measurements_with_conversions(self):
        listing = os.path.join(SOURCE, "examples", "automation", "measurements.csv")
        self.example("stream_from_csv.py", self.path, "PCM Stream 1", listing)
        audit = self.audit()
        for row in self.read_rows(listing):
            made = audit[row["name"]]
            self.assertEqual((made["type"], made["units"], made["low limit"], made["high limit"]),
                             (row["type"], row["units"], row["low"], row["high"]))
        result = self.run_program(os.environ["KAVU_CLI"], "check", self.path)
        self.assertEqual(result.returncode, 0, result.stdout)

    def test_a_list_with_a_wrong_row_leaves_the_file_as_it_was(self):
        with open(self.path, "rb") as file:
            before = file.read()
        listing = self.write("wrong.csv", "name,word\nGOOD,63\nBAD,64\n")
        result = self.example("stream_from_csv.py", self.path, "PCM Stream 1", listing, status=1)
        self.assertIn(b"wrong.csv:3: BAD: ", result.stderr)
        with open(self.path, "rb") as file:
            self.assertEqual(file.read(), before)

    def test_names_get_another_prefix(self):
        self.example("rename_by_prefix.py", self.path, "PCM Stream 1", "ENG1-", "LEFT-")
        names = set(self.audit())
        self.assertIn("LEFT-N1", names)
        self.assertFalse([name for name in names if name.startswith("ENG1-")])

    def test_the_audit_has_a_row_for_each_measurement(self):
        audit = self.audit()
        self.assertEqual(len(audit), 65 + 36 + 20)
        self.assertEqual(audit["ENG1-N1"]["stream"], "PCM Stream 1")

    # --- the manual -----------------------------------------------------------------------------

    def blocks(self, heading):
        """The indented blocks below a heading of the manual's page."""
        with open(os.path.join(SOURCE, "docs", "manual", "automation.md"), encoding="utf-8") as file:
            part = re.search(r"^#+ %s\n(.*?)(?=^#|\Z)" % heading, file.read(), re.S | re.M).group(1)
        return [textwrap.dedent(block) for block in re.findall(r"(?:^    .*\n)+(?:\n(?:^    .*\n)+)*", part, re.M)]

    def shell(self, text):
        result = self.run_program("bash", "-ec", text, cwd=self.work)
        return result.returncode, result.stdout.decode(), result.stderr.decode()

    def test_the_commands_of_the_manual_work(self):
        (commands,) = self.blocks("From the shell")
        self.assertEqual(self.shell(commands), (0, "i 3\n('PCM Stream 1',)\n", ""))

    def test_the_program_of_the_manual_works(self):
        (program,) = self.blocks("From Python")
        result = self.run_program(sys.executable, "-c", program.replace("/data", self.work))
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, b"", b""))
        self.assertEqual(self.audit()["ENG1-OIL-T"]["units"], "degF")

    def test_the_examples_of_the_manual_work(self):
        examples = os.path.join(SOURCE, "examples", "automation")
        listing, command = self.blocks("A list becomes measurements")
        with open(os.path.join(examples, "measurements.csv"), encoding="utf-8") as file:
            self.assertEqual(file.read(), listing)
        (audit,) = self.blocks("The limits of all measurements")
        for name in os.listdir(examples):
            shutil.copy(os.path.join(examples, name), self.work)
        run = command.replace("python3", sys.executable)
        self.assertEqual(self.shell(run), (0, "", ""))
        self.assertEqual(self.shell(audit.replace("python3", sys.executable))[0], 1)
        names = {row["measurement"] for row in self.read_rows(os.path.join(self.work, "audit.csv"))}
        self.assertLessEqual({"APU-OIL-T", "APU-EGT", "APU-RPM"}, names)


if __name__ == "__main__":
    unittest.main()
