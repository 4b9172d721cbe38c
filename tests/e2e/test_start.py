"""The start of a run: what it needs of its surroundings, and what it does without."""

import os
import pwd
import unittest

import kavu
from kavu import CLEAN, REPORTED

RUNS = 25


class StartTest(kavu.KavuTest):
    def check_with(self, **changes):
        """Checks a small document in another environment."""
        self.write("in.tma", "G\\106:09;")
        return self.run_json("check", "in.tma", env=changes)

    def test_many_runs_start_at_once(self):
        self.write("in.tma", "G\\106:09;G\\PN:A;")
        runs = [self.start("--json", "save", "in.tma", "-o", "out%d.tma" % number)
                for number in range(RUNS)]
        for number, run in enumerate(runs):
            out, err = run.communicate()
            self.assertEqual((run.returncode, err), (CLEAN, b""), out)
            self.assertIn(b"G\\PN:A;", self.read("out%d.tma" % number))
        self.assertEqual(os.listdir(self.temp), [])

    def test_a_home_that_cannot_be_written_is_a_remark(self):
        in_the_way = self.write("file", "x")
        result = self.check_with(HOME=in_the_way)
        self.assertEqual(result.status, CLEAN, result)
        self.assertEqual(result.json["messages"], [])
        self.assertIn("Settings cannot be stored: '%s': Not a directory." % in_the_way,
                      " ".join(result.notes))
        self.assertEqual(self.read("file"), b"x")

    def test_settings_are_held_in_memory_then(self):
        self.write("in.tma", "G\\106:09;T-1\\ID:X;")
        self.write("file", "x")
        self.write("out.tma", "old")
        result = self.run_json("save", "in.tma", "-o", "out.tma", "--edition", "2004",
                               env={"HOME": self.path("file")})
        self.assertIn(result.status, (CLEAN, REPORTED), result)
        self.assertEqual(self.read("out.bak"), b"old", "every setting has its default")
        self.assertIn(b"G\\106:04;", self.read("out.tma"))

    def test_without_temp_and_home_the_store_is_elsewhere(self):
        in_the_way = self.write("file", "x")
        result = self.check_with(HOME=in_the_way, TEMP=None)
        self.assertEqual(result.status, CLEAN, result)

    @unittest.skipUnless(os.geteuid() == 0, "needs an account whose home is not there")
    def test_without_home_that_of_the_account_is_used(self):
        home = pwd.getpwuid(65534).pw_dir
        self.assertFalse(os.path.exists(home))
        self.write("in.tma", "G\\106:09;")
        for folder in (self.root, self.work, self.temp):
            os.chmod(folder, 0o777)
        result = self.run_json("check", "in.tma", env={"HOME": None},
                               preexec_fn=kavu.drop_privileges)
        self.assertEqual(result.status, CLEAN, result)
        self.assertIn("Settings cannot be stored: '%s" % home, " ".join(result.notes))


if __name__ == "__main__":
    kavu.main()
