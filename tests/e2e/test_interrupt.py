"""Ctrl-C and similar signals: the run ends as a cancelled one and cleans up."""

import os
import signal
import subprocess
import unittest

import kavu
from kavu import CLEAN, FAILED

MEGABYTES = 60


class InterruptTest(kavu.KavuTest):
    def setUp(self):
        super().setUp()
        self.document = kavu.big_document(MEGABYTES)
        self.write("big.tma", self.document)

    def splitting(self):
        """True once group files are being written."""
        store = self.store_folder()
        return bool(store) and any(".D" in name for name in os.listdir(store))

    def interrupted_load(self, number, *more):
        process = self.start("--json", "check", "big.tma")
        self.wait_for(self.splitting, process)
        for one in (number, *more):
            process.send_signal(one)
        return self.finish(process)

    def test_an_interrupt_during_a_load_leaves_nothing_behind(self):
        result = self.interrupted_load(signal.SIGINT)
        self.assertEqual(result.status, FAILED)
        self.assertIs(result.json["opened"], False)
        self.assertIn(b"cancelled", result.err)

    def test_termination_and_a_lost_terminal_are_interrupts_too(self):
        for number in (signal.SIGTERM, signal.SIGHUP):
            result = self.interrupted_load(number)
            self.assertEqual(result.status, FAILED, number)
            self.assertIs(result.json["opened"], False)

    def test_a_second_interrupt_still_cleans_up(self):
        result = self.interrupted_load(signal.SIGINT, signal.SIGINT, signal.SIGTERM)
        self.assertEqual(result.status, FAILED)

    def test_an_interrupt_that_the_caller_ignores_stays_ignored(self):
        self.write("small.tma", "G\\106:09;")
        process = self.start("--json", "check", "big.tma",
                             preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN))
        self.wait_for(self.splitting, process)
        process.send_signal(signal.SIGHUP)
        self.assertEqual(self.finish(process).status, CLEAN)

    def test_the_source_file_is_untouched(self):
        self.interrupted_load(signal.SIGINT)
        self.assertEqual(self.read("big.tma"), self.document)

    def test_cancelling_in_the_middle_of_the_d_group_leaves_the_target_short(self):
        """And the next save makes a backup of that short file."""
        process = self.start("--json", "save", "big.tma", "-o", "out.tma")

        def saving():
            return self.exists("out.tma") and os.path.getsize(self.path("out.tma")) > 1000000

        self.wait_for(saving, process)
        process.send_signal(signal.SIGINT)
        result = self.finish(process)
        self.assertEqual(result.status, FAILED, result.err)
        self.assertIs(result.json["opened"], True)
        short = self.read("out.tma")
        self.assertGreater(len(short), 1000000)
        self.assertLess(len(short), len(self.document))
        self.assertTrue(short.endswith(b";\r\n"))

        self.write("small.tma", "G\\106:09;")
        self.assertEqual(self.run_json("save", "small.tma", "-o", "out.tma").status, CLEAN)
        self.assertEqual(self.read("out.bak"), short)

    def test_a_cancelled_save_puts_the_former_file_back_when_told_so(self):
        self.write("out.tma", "G\\PN:OLD;\r\n")
        process = self.start("--json", "--answer-all", "yes", "save", "big.tma", "-o", "out.tma")
        self.wait_for(lambda: os.path.getsize(self.path("out.tma")) > 1000000, process)
        process.send_signal(signal.SIGINT)
        result = self.finish(process)
        self.assertEqual(result.status, FAILED, result.err)
        self.assertEqual(self.read("out.tma"), b"G\\PN:OLD;\r\n")
        self.assertEqual(self.read("out.bak"), b"G\\PN:OLD;\r\n")


if __name__ == "__main__":
    kavu.main()
