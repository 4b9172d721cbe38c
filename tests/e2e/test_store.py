"""`store`: the files of the working store as they are after the open."""

import os
import unittest

import kavu
from kavu import CLEAN, FAILED

SIMPLE = "G\\106:09;G\\PN:A;C-1\\DCN:M1;C-1\\DCT:OTH;C-1\\OTH:x;"


class StoreTest(kavu.KavuTest):
    def store(self, into, *options, data=SIMPLE):
        self.write("in.tma", data)
        return self.run_json("store", "in.tma", "--into", into, *options)

    def test_a_missing_folder_is_made_with_its_parents(self):
        result = self.store("a/b")
        self.assertEqual(result.status, CLEAN, result)
        self.assertIn("[kavu]GTMP.G", os.listdir(self.path("a/b")))

    def test_an_empty_folder_is_used(self):
        os.mkdir(self.path("store"))
        self.assertEqual(self.store("store").status, CLEAN)

    def test_the_document_lists_folder_and_files(self):
        document = self.store("store").json
        self.assertEqual(document["into"], "store")
        self.assertEqual(document["files"], sorted(os.listdir(self.path("store"))))

    def test_the_conversion_chunks_are_complete(self):
        self.store("store")
        chunk = self.read("store/[kavu]00000000.C_O")
        self.assertTrue(chunk.startswith(b"[M1]"), chunk)
        self.assertIn(b"OTH=x", chunk)

    def test_scratch_files_of_the_load_are_gone(self):
        self.store("store")
        for name in ("DATA1.TMP", "DATA2.TMP", "KAVU9TMP.TMP"):
            self.assertFalse(self.exists("store/" + name), name)

    def test_a_folder_that_is_not_empty_is_refused_before_the_file_is_opened(self):
        os.mkdir(self.path("store"))
        self.write("store/mine", "x")
        result = self.store("store", data="P-1\\DLN:L;")
        self.assertEqual(result.status, FAILED)
        self.assertIs(result.json["opened"], False)
        self.assertEqual(result.json["questions"], [])
        self.assertIn("is not empty", result.json["messages"][0]["text"])
        self.assertEqual(self.read("store/mine"), b"x")

    def test_a_file_in_place_of_the_folder_is_refused(self):
        self.write("store", "x")
        result = self.store("store")
        self.assertEqual(result.status, FAILED)
        self.assertIn("Not a directory", result.json["messages"][0]["text"])

    def test_a_folder_that_can_not_be_made_is_told(self):
        self.write("file", "x")
        result = self.store("file/store")
        self.assertEqual(result.status, FAILED)
        self.assertIn("'file': ", result.json["messages"][0]["text"])

    def test_a_file_that_is_not_opened_makes_no_folder(self):
        self.assertEqual(self.store("store", data="G\\PN").status, FAILED)
        self.assertFalse(self.exists("store"))

    def test_the_text_form_lists_the_files(self):
        self.write("in.tma", "G\\106:09;")
        result = self.run_cli("store", "in.tma", "--into", "store")
        lines = result.text.splitlines()
        self.assertIn("[kavu]GTMP.G", lines)
        self.assertRegex(lines[-2], r"^\d+ files? copied into store$")


if __name__ == "__main__":
    kavu.main()
