"""`recover`: what a killed run has left, listed and rebuilt."""

import os
import shutil
import signal
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED


class RecoverTest(kavu.KavuTest):
    def killed_store(self, data):
        """The store of a run that was killed while it saved, moved out of the temporary root."""
        self.write("big.tma", data)
        process = self.start("save", "big.tma", "-o", "short.tma")
        # The new file takes its place at the end; until then it grows beside it.
        beside = ".short.tma.kavu-new"
        self.wait_for(lambda: self.exists(beside)
                      and os.path.getsize(self.path(beside)) > 100000, process)
        process.kill()
        process.communicate()
        self.assertEqual(process.returncode, -signal.SIGKILL)
        return self.store_folder()

    def document(self):
        return (kavu.big_document(30)
                + b"C-7\\DCN:MEAS;\r\nC-7\\DCT:OTH;\r\nC-7\\OTH:words;\r\n")

    def test_a_killed_run_is_listed_and_rebuilt_and_the_store_stays_as_it_was(self):
        data = self.document()
        store = self.killed_store(data)
        self.assertEqual(self.read("big.tma"), data)

        process = self.start("--json", "recover", "--list")
        out, _ = process.communicate()
        self.assertEqual(process.returncode, CLEAN)
        listed = kavu.Result(0, out, b"").json["stores"]
        self.assertEqual([entry["folder"] for entry in listed], [store])
        self.assertRegex(listed[0]["modified"], r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d$")

        left = self.path("left")
        shutil.move(store, left)
        before = self.store_files("left")
        result = self.run_json("recover", left, "-o", "rebuilt.tma")
        self.assertIn(result.status, (CLEAN, REPORTED), result)
        self.assertEqual(result.json["output"], "rebuilt.tma")
        self.assertEqual(self.store_files("left"), before)

        self.run_json("save", "big.tma", "-o", "sub.tma")
        expected = self.without_banner(self.read("sub.tma")).replace(b"sub.tma", b"rebuilt.tma")
        self.assertEqual(self.without_banner(self.read("rebuilt.tma")), expected)

    def test_nothing_left_behind_is_an_empty_list(self):
        self.assertEqual(self.run_json("recover", "--list").json, {"stores": []})
        result = self.run_cli("recover", "--list")
        self.assertEqual((result.status, result.text), (CLEAN, "No folder was left behind.\n"))

    def test_a_living_run_is_not_listed(self):
        self.write("big.tma", kavu.big_document(60))
        process = self.start("check", "big.tma")
        self.wait_for(lambda: self.store_folder() is not None, process)
        other = self.start("--json", "recover", "--list")
        out, _ = other.communicate()
        self.assertIsNone(process.poll(), "the run ended too early to tell")
        process.send_signal(signal.SIGINT)
        self.finish(process)
        self.assertEqual(kavu.Result(0, out, b"").json, {"stores": []})

    def test_the_copied_store_of_a_whole_document_is_rebuilt(self):
        data = "G\\106:09;G\\PN:A;T-1\\ID:X;C-1\\DCN:M1;C-1\\DCT:OTH;C-1\\OTH:x;"
        self.write("in.tma", data)
        self.run_json("store", "in.tma", "--into", "store")
        result = self.run_json("recover", "store", "-o", "out.tma")
        self.assertIn(result.status, (CLEAN, REPORTED), result)
        self.assertEqual(result.json["file"], "store")
        self.assertIs(result.json["opened"], True)
        self.assertEqual(result.json["version"], 2009)
        recovered = self.without_banner(self.read("out.tma"))
        self.assertEqual(recovered, self.without_banner(self.saved(data)))

    def test_a_folder_that_is_no_store_is_refused(self):
        os.mkdir(self.path("other"))
        self.write("other/notes.txt", "x")
        result = self.run_json("recover", "other", "-o", "out.tma")
        self.assertEqual(result.status, FAILED)
        self.assertIs(result.json["opened"], False)
        self.assertIn("holds no files of a TMATS document", result.json["messages"][0]["text"])
        self.assertFalse(self.exists("out.tma"))

    def test_a_missing_folder_is_refused(self):
        result = self.run_json("recover", "absent", "-o", "out.tma")
        self.assertEqual(result.status, FAILED)
        self.assertIn("No such file or directory", result.json["messages"][0]["text"])


if __name__ == "__main__":
    kavu.main()
