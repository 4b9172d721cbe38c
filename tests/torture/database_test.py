#!/usr/bin/env python3
"""Lets the file calls of a change of the measurement database, or of the purge of a table, fail,
and kills the program at each of them: the file is the former or the new one, whole, and what failed
is told."""

import errno
import signal
import struct
import unittest

import support
from torture_test import recorded_calls

FORMER_TEXT = b"".join(b"M%d;W;16;FW;M;D;DE%s\r\n" % (i, b";" * 29) for i in range(300))
FORMER_XML = (b"<MeasurementDatabase>" +
              b"".join(b"\n\t<Measurement>\n\t\t<Name>M%d</Name>\n\t</Measurement>" % i
                       for i in range(300)) + b"\n</MeasurementDatabase>\n")
ROWS = b"".join((b"*" if i % 3 == 0 else b" ") + b"%-8d" % i for i in range(300))
FORMER_TABLE = (b"\x03\x18\x01\x01" + struct.pack("<IHH", 300, 65, 9) + bytes(20) +
                b"NAME".ljust(11, b"\0") + b"C" + bytes(4) + b"\x08" + bytes(15) + b"\r" +
                ROWS + b"\x1a")
CHANGES = {
    "add": ["add", "New", "--field", "26=text"],
    "put": ["put", "M100", "--field", "26=text"],
    "remove": ["remove", "M100"],
    "remove-all": ["remove", "--all"],
}


class DatabaseTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.workshop = support.Workshop()
        cls.addClassCleanup(cls.workshop.close)

    def case(self, name, former):
        return self.workshop.case(name, b"", former)

    def change(self, case, arguments, version, faults=None):
        """Without a version the file is a table."""
        if version is None:
            return case.run("dbase", arguments[0], case.target, *arguments[1:], "--settings",
                            case.settings, faults=faults)
        return case.run("mdb", *arguments, "--database", case.target, "--database-version", version,
                        "--settings", case.settings, faults=faults)

    def recorded(self, name, former, arguments, version):
        """The bytes after a good run, and its calls on the database and beside it."""
        case = self.case(f"{name}-recorded", former)
        log = self.workshop.folder / f"{name}.log"
        outcome = self.change(case, arguments, version, {"LOG": log})
        self.assertEqual(outcome.status, 0, outcome)
        calls = [call for call in recorded_calls(log) if str(case.target.parent) in call.path]
        self.assertGreater(len(calls), 5)
        return case.target.read_bytes(), calls

    def each_change(self):
        for name, arguments in CHANGES.items():
            for version, former in ((1, FORMER_TEXT), (2, FORMER_XML)):
                yield f"{name}-{version}", former, arguments, version
        yield "purge", FORMER_TABLE, ["purge", "--yes"], None

    def test_a_call_that_fails_leaves_the_former_or_the_new_database(self):
        for name, former, arguments, version in self.each_change():
            new, calls = self.recorded(name, former, arguments, version)
            for call, code in [(call, code) for call in calls
                               for code in (errno.ENOSPC, errno.EACCES, errno.EIO)]:
                with self.subTest(change=name, call=call, code=errno.errorcode[code]):
                    case = self.case(f"{name}-{call.number}-{code}", former)
                    outcome = self.change(case, arguments, version,
                                          {"AT": call.number, "ERRNO": code})
                    self.assertIn(outcome.status, (0, 1, 2), outcome)
                    there = case.target.read_bytes()
                    self.assertEqual(there == new or there == former, True)
                    if outcome.status == 2:
                        self.assertIn(there, (former, new))
                        self.assertNotEqual(outcome.err, "")
                    else:
                        self.assertEqual(there, new)
                    self.assertEqual(case.left_in_temp(), [])

    def test_a_kill_leaves_the_former_or_the_new_database_and_the_next_change_works(self):
        for name, former, arguments, version in self.each_change():
            new, calls = self.recorded("kill-" + name, former, arguments, version)
            for call in calls:
                with self.subTest(change=name, call=call):
                    case = self.case(f"kill-{name}-{call.number}", former)
                    outcome = self.change(case, arguments, version, {"KILL_AT": call.number})
                    self.assertEqual(outcome.status, -signal.SIGKILL, outcome)
                    self.assertIn(case.target.read_bytes(), (former, new))
                    again = self.change(case, ["put", "M1"] if version else arguments, version)
                    self.assertEqual(again.status, 0, again)


if __name__ == "__main__":
    unittest.main()
