"""Ctrl-C and similar signals: the run ends as a cancelled one and cleans up."""

import os
import signal
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED

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

    def cancelled_save(self, watched, *options):
        """A save that is cancelled when a good part of the new file is written."""
        process = self.start("--json", *options, "save", "big.tma", "-o", "out.tma")

        def saving():
            return self.exists(watched) and os.path.getsize(self.path(watched)) > 1000000

        self.wait_for(saving, process)
        process.send_signal(signal.SIGINT)
        result = self.finish(process)
        self.assertEqual(result.status, FAILED, result.err)
        self.assertIs(result.json["opened"], True)
        return result

    def in_place(self):
        self.write("my.ini", "[KAVU-9]\r\nSaveInPlace=1\r\n")
        return ("--settings", "my.ini")

    def test_a_cancelled_save_has_not_happened(self):
        self.write("out.tma", "G\\PN:OLD;\r\n")
        self.write("out.bak", "older")
        before = sorted(os.listdir(self.work))
        result = self.cancelled_save(".out.tma.kavu-new")
        self.assertEqual(result.asked(), [], "there is nothing to put back")
        self.assertEqual(self.read("out.tma"), b"G\\PN:OLD;\r\n")
        self.assertEqual(self.read("out.bak"), b"older")
        self.assertEqual(sorted(os.listdir(self.work)), before)

    def test_a_cancelled_save_of_a_new_file_makes_none(self):
        self.cancelled_save(".out.tma.kavu-new")
        self.assertEqual(os.listdir(self.work), ["big.tma"])

    def test_in_place_cancelling_in_the_middle_of_the_d_group_leaves_the_target_short(self):
        """And the next save makes a backup of that short file."""
        self.cancelled_save("out.tma", *self.in_place())
        short = self.read("out.tma")
        self.assertGreater(len(short), 1000000)
        self.assertLess(len(short), len(self.document))
        self.assertTrue(short.endswith(b";\r\n"))

        self.write("small.tma", "G\\106:09;")
        self.assertEqual(self.run_json("save", "small.tma", "-o", "out.tma").status, CLEAN)
        self.assertEqual(self.read("out.bak"), short)

    def test_in_place_a_cancelled_save_puts_the_former_file_back(self):
        for options in ([], ["--answer-all", "no"], ["--answer-all", "yes"],
                        ["--answer", "restore=yes"]):
            self.write("out.tma", "G\\PN:OLD;\r\n")
            result = self.cancelled_save("out.tma", *options, *self.in_place())
            self.assertEqual(self.read("out.tma"), b"G\\PN:OLD;\r\n", options)
            self.assertEqual(self.read("out.bak"), b"G\\PN:OLD;\r\n")
            question = result.json["questions"][-1]
            self.assertEqual((question["id"], question["name"], question["reply"]),
                             (0, "restore", "yes"))

    def test_in_place_a_cancelled_save_leaves_the_short_file_when_told_so(self):
        self.write("out.tma", "G\\PN:OLD;\r\n")
        result = self.cancelled_save("out.tma", "--answer-all", "yes", "--answer", "restore=no",
                                     *self.in_place())
        self.assertEqual(result.json["questions"][-1]["reply"], "no")
        self.assertGreater(len(self.read("out.tma")), 1000000)
        self.assertEqual(self.read("out.bak"), b"G\\PN:OLD;\r\n")

    def run_beside(self, store, *arguments):
        """A run while the store of a killed one is there."""
        process = self.start("--json", *arguments)
        out, err = process.communicate()
        self.assertEqual([os.path.join(self.temp, name) for name in os.listdir(self.temp)], [store])
        return kavu.Result(process.returncode, out, err)

    def test_in_place_a_killed_save_is_told_of_by_an_open_and_the_next_save(self):
        self.write("out.tma", "G\\PN:OLD;\r\n" * 100)
        process = self.start("--json", *self.in_place(), "save", "big.tma", "-o", "out.tma")
        self.wait_for(lambda: os.path.getsize(self.path("out.tma")) > 1000000, process)
        process.kill()
        process.communicate()
        store = self.store_folder()
        self.assertTrue(store)
        short = self.read("out.tma")
        opened = self.run_beside(store, "check", "out.tma")
        told = [note for note in opened.notes if note.startswith("'out.tma' was left cut short by a "
                                                                 "save that was not completed")]
        self.assertEqual(len(told), 1, opened)
        self.assertIn(store, told[0])
        self.write("small.tma", "G\\106:09;")
        result = self.run_beside(store, "save", "small.tma", "-o", "out.tma")
        self.assertEqual(result.status, REPORTED, result)
        texts = [message["text"] for message in result.json["messages"]]
        self.assertEqual(len(texts), 1, texts)
        for name in ("out.tma", "out.bak~", store):
            self.assertIn("'" + name + "'", texts[0])
        self.assertEqual(self.read("out.bak~"), b"G\\PN:OLD;\r\n" * 100)
        self.assertEqual(self.read("out.bak"), short)


if __name__ == "__main__":
    kavu.main()
