#!/usr/bin/env python3
"""Lets the file calls of reports, calibration sheets and layouts fail, and kills the program at each
of them: the file of the user is the former or the new one, whole, and what failed is told."""

import errno
import signal
import unittest

import support
from torture_test import recorded_calls

FORMER = b"what the target held before\n" * 40
LAYOUT = b"[Reports]\r\nFmt=1\r\nFrameRpt=1\r\nMesRpt=1\r\nOther=kept\r\n"
SOURCE = "".join([
    "G\\PN:REPORTS;\nG\\106:09;\nG\\DSI\\N:1;\nG\\DSI-1:S;\nG\\DST-1:RF;\n",
    "M-1\\ID:S;\nM-1\\BB\\DLN:PCM 1;\nM-1\\BSG1:PCM;\n",
    "P-1\\DLN:PCM 1;\nP-1\\TF:ONE;\nP-1\\F1:16;\nP-1\\MF\\N:4;\nP-1\\MF1:6;\nP-1\\MF4:16;\n",
    "P-1\\MF5:1110101110010000;\n",
    "D-1\\DLN:PCM 1;\nD-1\\ML\\N:1;\nD-1\\MN\\N-1:1;\nD-1\\MN-1-1:A;\nD-1\\LT-1-1:MFSC;\n",
    "D-1\\MFS\\N-1-1:1;\nD-1\\MFSW-1-1-1:2;\n",
    "C-1\\DCN:A;\nC-1\\DCT:PRS;\nC-1\\PS1:Y;\nC-1\\PS2:1;\nC-1\\PS\\N:3;\n",
    *(f"C-1\\PS3-{i}:{i};\nC-1\\PS4-{i}:{2 * i};\n" for i in (1, 2, 3)),
]).encode()


def commands(case):
    """The runs that write a file of the user, by name."""
    out = ["-o", case.target]
    rpt = case.root / "target" / "own.rpt"
    rpt.write_bytes(LAYOUT)
    report = ["report", case.source, "PCM 1", "--layout", rpt]
    return {
        "text": [*report, "--to", "text", *out],
        "workbook": [*report, "--to", "workbook", *out],
        "xlsx": [*report, "--to", "xlsx", *out],
        "pdf": [*report, "--to", "pdf", *out],
        "calibration": ["calibration", case.source, *out],
        "plots": ["plots", case.source, "A", *out],
        "layout": ["layout", "set", rpt, "Dest=4", *out],
    }


NAMES = ("text", "workbook", "xlsx", "pdf", "calibration", "plots", "layout")


class ReportsTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.workshop = support.Workshop()
        cls.addClassCleanup(cls.workshop.close)

    def run_one(self, case, name, faults=None):
        return case.run("--now", support.NOW, "--overwrite", *commands(case)[name], "--settings", case.settings,
                        faults=faults)

    def recorded(self, name, label):
        """The bytes after a good run, and its calls on the target and beside it."""
        case = self.workshop.case(f"{label}-{name}-recorded", SOURCE, FORMER)
        log = self.workshop.folder / f"{label}-{name}.log"
        outcome = self.run_one(case, name, {"LOG": log})
        self.assertIn(outcome.status, (0, 1), outcome)
        self.assertNotEqual(case.target.read_bytes(), FORMER)
        calls = [call for call in recorded_calls(log)
                 if "target" in call.path and "own.rpt" not in call.path]
        self.assertGreater(len(calls), 2)
        return case.target.read_bytes(), calls

    def test_a_call_that_fails_leaves_the_former_or_the_new_file(self):
        for name in NAMES:
            new, calls = self.recorded(name, "fail")
            for call in calls:
                with self.subTest(command=name, call=call):
                    case = self.workshop.case(f"fail-{name}-{call.number}", SOURCE, FORMER)
                    outcome = self.run_one(case, name, {"AT": call.number, "ERRNO": errno.ENOSPC})
                    self.assertIn(outcome.status, (0, 1, 2), outcome)
                    there = case.target.read_bytes()
                    self.assertTrue(there in (FORMER, new), outcome)
                    if there == FORMER:
                        self.assertEqual(outcome.status, 2, outcome)
                        self.assertNotEqual(outcome.err, "")
                    self.assertEqual(case.left_in_temp(), [])

    def test_a_kill_leaves_the_former_or_the_new_file(self):
        for name in NAMES:
            new, calls = self.recorded(name, "kill")
            for call in calls:
                with self.subTest(command=name, call=call):
                    case = self.workshop.case(f"kill-{name}-{call.number}", SOURCE, FORMER)
                    outcome = self.run_one(case, name, {"KILL_AT": call.number})
                    self.assertEqual(outcome.status, -signal.SIGKILL, outcome)
                    self.assertTrue(case.target.read_bytes() in (FORMER, new))


if __name__ == "__main__":
    unittest.main()
