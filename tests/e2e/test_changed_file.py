"""A file that another program changes between its opening and its save, and several runs on one
file: nothing of the others is lost without a word."""

import os
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED

THEIRS = b"G\\PN:THEIRS;\r\nG\\106:09;\r\n"
FIELDS = ("G\\PN", "G\\TA", "G\\RN", "G\\TN", "G\\UN", "G\\POC1-1", "G\\POC2-1")
IN_PLACE = "[KAVU-9]\r\nSaveInPlace=1\r\n"
DONE = (CLEAN, REPORTED)


class ChangedFileTest(kavu.KavuTest):
    def has_read(self):
        """True once the run has read its file to the end, as its store says."""
        record = os.path.join(self.store_folder() or "", "KAVU9REC.TMP")
        try:
            with open(record, encoding="latin-1") as file:
                return "\nsplit=1\n" in file.read()
        except OSError:
            return False

    def changed_meanwhile(self, *options):
        """A run on a file that is replaced between its reading and its save."""
        self.write("in.tma", kavu.big_document(8))
        run = self.start("--now", kavu.NOW, "--json", *options, "set", "in.tma", "G\\PN=MINE", "-o",
                         "in.tma")
        self.wait_for(self.has_read, run)
        self.write("theirs", THEIRS)
        os.replace(self.path("theirs"), self.path("in.tma"))
        return self.finish(run)

    def question(self, result):
        """The one named question of a run."""
        named = [asked for asked in result.json["questions"] if "name" in asked]
        self.assertEqual(len(named), 1, result)
        self.assertEqual((named[0]["name"], named[0]["id"]), ("changed-file", 0))
        self.assertIn("Another program has changed the file 'in.tma'", named[0]["text"])
        return named[0]

    def test_a_change_by_another_program_is_not_overwritten(self):
        for options in ((), ("--answer-all", "yes"), ("--answer", "changed-file=no")):
            result = self.changed_meanwhile(*options)
            self.assertEqual(result.status, FAILED, result)
            self.assertEqual(self.question(result)["reply"], "cancel")
            self.assertEqual(self.read("in.tma"), THEIRS)
            self.assertFalse(self.exists("in.bak"))

    def test_an_answer_overwrites_it_and_keeps_it_as_the_backup(self):
        result = self.changed_meanwhile("--answer", "changed-file=yes")
        self.assertIn(result.status, DONE, result)
        self.assertEqual(self.question(result)["reply"], "yes")
        self.assertIn(b"G\\PN:MINE;", self.read("in.tma"))
        self.assertEqual(self.read("in.bak"), THEIRS)

    def test_in_place_it_is_compared_as_well(self):
        self.write("my.ini", IN_PLACE)
        result = self.changed_meanwhile("--settings", "my.ini")
        self.assertEqual(result.status, FAILED, result)
        self.question(result)
        self.assertEqual(self.read("in.tma"), THEIRS)

    def test_another_output_is_no_changed_file(self):
        self.write("in.tma", kavu.big_document(2))
        self.write("out.tma", b"old")
        result = self.run_json("set", "in.tma", "G\\PN=MINE", "-o", "out.tma")
        self.assertIn(result.status, DONE, result)
        self.assertEqual(result.asked(), [])


class SeveralRunsTest(kavu.KavuTest):
    def run_all(self, *commands):
        runs = [self.start("--now", kavu.NOW, "--json", *command) for command in commands]
        results = []
        for run in runs:
            out, err = run.communicate(timeout=120)
            results.append(kavu.Result(run.returncode, out, err))
        self.assertEqual(os.listdir(self.temp), [])
        return results

    def says_why(self, result, in_place):
        """A run may meet the others while it reads the file, before its save, or in it. A file that
        is written in place may be read in part, which stops a run for one reason or another."""
        names = [asked.get("name") for asked in result.json["questions"]]
        texts = " ".join(message["text"] or "" for message in result.json["messages"])
        return any(("changed-file" in names, "Another program" in texts,
                    "was changed by another program while it was being read" in texts,
                    in_place and texts))

    def update_together(self, *options):
        """Every run sets a field of its own in the same file, from what it has read there."""
        self.write("in.tma", "G\\106:09;G\\POC\\N:1;" + kavu.group_commands("D", 1, 2000))
        results = self.run_all(*[(*options, "set", "in.tma", field + "=%d" % number, "-o",
                                  "in.tma") for number, field in enumerate(FIELDS)])
        saved = self.read("in.tma").decode("latin-1")
        done = 0
        for number, (field, result) in enumerate(zip(FIELDS, results)):
            command = "%s:%d;" % (field, number)
            if result.status in DONE:
                done += 1
                self.assertTrue(command in saved, "an update is lost: %r" % result)
            else:
                self.assertEqual(result.status, FAILED, result)
                self.assertFalse(command in saved, result)
                self.assertTrue(self.says_why(result, in_place=bool(options)), result)
        self.assertGreater(done, 0)
        self.assertEqual(saved.count("D-1\\X"), 2000, "the contents of two runs are mixed")

    def test_no_update_is_lost_in_silence(self):
        for _ in range(4):
            self.update_together()

    def test_no_update_is_lost_in_silence_in_place(self):
        self.write("my.ini", IN_PLACE)
        for _ in range(4):
            self.update_together("--settings", "my.ini")

    def test_two_savers_of_one_target_never_mix(self):
        self.write("my.ini", IN_PLACE)
        letters = "ABCD"
        wanted = {}
        for letter in letters:
            data = "G\\106:09;G\\PN:%s;" % letter + kavu.group_commands("D", 1, 4000).replace(
                "value of a field", letter * (100 + ord(letter)))
            self.write(letter + ".tma", data)
            wanted[letter] = self.saved(data, out="out.tma", name=letter + ".tma")
            os.remove(self.path("out.tma"))
        for options in ((), ("--settings", "my.ini")):
            results = self.run_all(*[(*options, "save", letter + ".tma", "-o", "out.tma")
                                     for letter in letters])
            self.assertTrue(self.read("out.tma") in wanted.values(), "two files are mixed")
            for result in results:
                if result.status not in DONE:
                    self.assertEqual(result.status, FAILED, result)
                    self.assertIn("Another program", result.json["messages"][-1]["text"])


if __name__ == "__main__":
    kavu.main()
