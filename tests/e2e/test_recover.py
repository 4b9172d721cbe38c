"""`recover`: what a killed run has left, listed and rebuilt."""

import os
import shutil
import signal
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED


class RecoverTest(kavu.KavuTest):
    def saving(self):
        """True once a part of the new file is written, beside its place."""
        new = ".short.tma.kavu-new"
        return self.exists(new) and os.path.getsize(self.path(new)) > 100000

    def killed_store(self, data):
        """The store of a run that was killed while it saved, moved out of the temporary root."""
        self.write("big.tma", data)
        process = self.start("save", "big.tma", "-o", "short.tma")
        self.wait_for(self.saving, process)
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
        self.assertEqual(listed[0]["source"], self.path("big.tma"))
        self.assertIs(listed[0]["complete"], True)
        self.assertIs(listed[0]["recovered"], False)

        left = self.path("left")
        shutil.move(store, left)
        before = self.store_files("left")
        result = self.run_json("recover", left, "-o", "rebuilt.tma")
        self.assertIn(result.status, (CLEAN, REPORTED), result)
        self.assertEqual(result.json["output"], "rebuilt.tma")
        after = self.store_files("left")
        mark = after.pop("KAVU9RCV.TMP")
        self.assertEqual(after, before)
        self.assertTrue(mark.endswith(b"\n" + os.fsencode(self.path("rebuilt.tma"))), mark)

        self.run_json("save", "big.tma", "-o", "sub.tma")
        expected = self.without_banner(self.read("sub.tma")).replace(b"sub.tma", b"rebuilt.tma")
        self.assertEqual(self.without_banner(self.read("rebuilt.tma")), expected)

    def listed(self):
        out, _ = self.start("--json", "recover", "--list").communicate()
        return kavu.Result(0, out, b"").json["stores"]

    def killed_in_the_split(self):
        """The store of a run that was killed while it read its file."""
        self.write("big.tma", kavu.big_document(60))
        process = self.start("check", "big.tma")

        def splitting():
            store = self.store_folder()
            return bool(store) and any(".D" in name for name in os.listdir(store))

        self.wait_for(splitting, process)
        process.kill()
        process.communicate()
        self.assertEqual(process.returncode, -signal.SIGKILL)
        left = self.path("left")
        shutil.move(self.store_folder(), left)
        return left

    def test_an_incomplete_store_is_refused_and_its_file_is_named(self):
        left = self.killed_in_the_split()
        result = self.run_json("recover", left, "-o", "rebuilt.tma")
        self.assertEqual(result.status, FAILED, result)
        self.assertFalse(self.exists("rebuilt.tma"))
        text = result.json["messages"][0]["text"]
        self.assertIn("is incomplete", text)
        self.assertIn("'%s' is as it was: open it instead" % self.path("big.tma"), text)
        self.assertNotIn("KAVU9RCV.TMP", self.store_files("left"))

    def test_a_part_of_an_incomplete_store_is_recovered_when_it_is_wanted(self):
        left = self.killed_in_the_split()
        result = self.run_json("recover", left, "--partial", "-o", "rebuilt.tma")
        self.assertEqual(result.status, REPORTED, result)
        self.assertIn("is incomplete", result.json["messages"][0]["text"])
        self.assertLess(len(self.read("rebuilt.tma")), len(self.read("big.tma")))
        self.assertTrue(self.without_banner(self.read("rebuilt.tma")).startswith(b"G\\FN:rebuilt"))

    def test_an_incomplete_store_is_listed_as_such_and_a_recovered_one_too(self):
        left = self.killed_in_the_split()
        store = os.path.join(self.temp, "KAVU-9-LEFT")
        shutil.move(left, store)
        self.assertEqual([(entry["complete"], entry["recovered"]) for entry in self.listed()],
                         [(False, False)])
        out, _ = self.start("recover", "--list").communicate()
        self.assertIn(b"big.tma (incomplete)", out)
        self.start("recover", store, "--partial", "-o", "rebuilt.tma").communicate()
        self.assertIs(self.listed()[0]["recovered"], True)
        out, _ = self.start("recover", "--list").communicate()
        self.assertIn(os.fsencode("(recovered as %s)" % self.path("rebuilt.tma")), out)
        shutil.rmtree(store)

    def test_group_files_that_are_missing_cut_off_or_no_files_are_named(self):
        data = b"".join(b"P-%d\\DLN:L%d;P-%d\\TF:ONE;" % (i, i, i) for i in range(1, 6))
        store = self.killed_store(data + self.document())
        left = self.path("left")
        shutil.move(store, left)
        os.remove(os.path.join(left, "[kavu]PCMFMT.P01"))
        for name, size in (("[kavu]PCMFMT.P02", len("P-2\\DLN:L2;\r\n")), ("[kavu]PCMFMT.P03", 5)):
            os.truncate(os.path.join(left, name), size)
        os.remove(os.path.join(left, "[kavu]PCMFMT.P04"))
        os.mkdir(os.path.join(left, "[kavu]PCMFMT.P04"))
        result = self.run_json("recover", left, "-o", "rebuilt.tma")
        self.assertEqual(result.status, REPORTED, result)
        text = result.json["messages"][0]["text"]
        for fault in ("P01' is missing", "P02' is cut off", "P03' is cut off", "P04' is no file"):
            self.assertIn("'[kavu]PCMFMT." + fault, text)
        self.assertNotIn("P05", text)
        self.assertIn(b"P-2\\DLN:L2;\r\nP-5\\DLN:L5;\r\nP-5\\TF:ONE;\r\n", self.read("rebuilt.tma"))

    def test_the_store_of_a_living_run_is_refused(self):
        self.write("big.tma", kavu.big_document(60))
        process = self.start("check", "big.tma")
        self.wait_for(lambda: self.store_folder() is not None and
                      any(name.startswith("[kavu]") for name in os.listdir(self.store_folder())),
                      process)
        process.send_signal(signal.SIGSTOP)
        store = self.store_folder()
        other = self.start("--json", "recover", store, "--partial", "-o", "rebuilt.tma")
        out, _ = other.communicate()
        process.send_signal(signal.SIGCONT)
        process.send_signal(signal.SIGINT)
        self.finish(process)
        self.assertEqual(other.returncode, FAILED)
        self.assertIn("belongs to a run that has not ended",
                      kavu.Result(0, out, b"").json["messages"][0]["text"])
        self.assertFalse(self.exists("rebuilt.tma"))

    def test_the_edition_of_a_file_that_does_not_tell_it_is_that_of_its_run(self):
        self.write("my.ini", "[KAVU-9]\r\nIRIGInputVersion=1996\r\n")
        self.write("big.tma", kavu.big_document(30).replace(b"G\\106:09;\r\n", b"G\\PN:A;\r\n"))
        process = self.start("--settings", "my.ini", "save", "big.tma", "-o", "short.tma")
        self.wait_for(self.saving, process)
        process.kill()
        process.communicate()
        left = self.path("left")
        shutil.move(self.store_folder(), left)
        result = self.run_json("recover", left, "-o", "rebuilt.tma")
        self.assertEqual(result.json["version"], 1996, result)
        self.assertTrue(self.read("rebuilt.tma").startswith(b"G\\PN:A;\r\n"))

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
