"""Moving a document between editions."""

import os
import unittest

import kavu
from kavu import CLEAN, REPORTED


class EditionTest(kavu.KavuTest):
    def converted(self, data, year, source=None):
        options = ["--edition", str(year)]
        if source:
            self.write("in.ini", "[KAVU-9]\r\nIRIGInputVersion=%d\r\n" % source)
            options += ["--settings", "in.ini"]
        return self.saved(data, *options)

    def test_a_move_from_2005_to_2009_changes_one_field_only(self):
        data = b"G\\FN:out.tma;\r\nG\\106:05;\r\nT-1\\RF4:OTHR;\r\nR-1\\TC1:CASS;\r\n"
        saved = self.without_banner(self.converted(data, 2009))
        self.assertEqual(saved, data.replace(b"106:05", b"106:09"))

    def test_to_1996_the_edition_field_is_removed(self):
        self.assertEqual(self.converted("G\\106:09;G\\PN:A;", 1996), b"G\\PN:A;\r\n")

    def test_the_number_of_2000_is_00(self):
        self.assertIn(b"G\\106:00;\r\n", self.converted("G\\106:01;", 2000))

    def test_an_edition_field_is_added_when_there_is_none(self):
        self.assertIn(b"G\\106:09;\r\n", self.converted("G\\PN:A;", 2009, source=2007))

    def test_a_stream_that_stays_as_it_is_is_listed_before_the_save(self):
        self.write("in.tma", "G\\106:09;P-1\\DLN:A;P-1\\TF:OTHR;P-1\\MF1:4;D-1\\DLN:A;"
                             "D-1\\ML\\N:1;D-1\\MN\\N-1:1;D-1\\MN-1-1:M;D-1\\LT-1-1:MF;"
                             "D-1\\MF-1-1:2;")
        result = self.run_json("save", "in.tma", "-o", "out.tma", "--edition", "2011")
        self.assertEqual(result.status, REPORTED, result)
        self.assertNotIn(444, result.ids())
        texts = [message["text"] for message in result.json["messages"]]
        line = "Stream 'A' (P-1, type 'OTHR') was not converted: 1 of its measurements"
        self.assertEqual(sum(line in text for text in texts), 2, texts)

    def test_a_range_with_an_end_is_listed_with_what_it_becomes(self):
        self.write("in.tma", "G\\106:09;P-1\\DLN:A;P-1\\TF:ONE;P-1\\MF1:16;P-1\\MF\\N:4;"
                             "D-1\\DLN:A;D-1\\MN-1-1:M;D-1\\LT-1-1:WDFR;D-1\\WP-1-1-1-1:2;"
                             "D-1\\WI-1-1-1-1:3;D-1\\EWP-1-1-1-1:8;")
        result = self.run_json("save", "in.tma", "-o", "out.tma", "--edition", "2007")
        self.assertNotIn(444, result.ids())
        self.assertTrue(any("words 2 to 8 by 3 become words 2 to 14 by 3" in message["text"]
                            for message in result.json["messages"]), result)

    def test_measurements_by_word_and_frame_are_listed_below_106_04(self):
        self.write("in.tma", "G\\106:09;P-1\\DLN:A;P-1\\TF:ONE;P-1\\MF1:16;P-1\\MF\\N:4;"
                             "D-1\\DLN:A;D-1\\MN-1-1:RANGE;D-1\\LT-1-1:WDFR;D-1\\WP-1-1-1-1:2;"
                             "D-1\\MN-1-2:WORD;D-1\\LT-1-2:MF;D-1\\MF-1-2:3;")
        result = self.run_json("save", "in.tma", "-o", "out.tma", "--edition", "2001")
        self.assertEqual(result.status, REPORTED, result)
        self.assertNotIn(444, result.ids())
        texts = [message["text"] for message in result.json["messages"]]
        self.assertEqual(sum("measurement 'RANGE'" in text for text in texts), 2, texts)
        self.assertFalse(any("'WORD'" in text for text in texts), texts)

    def test_measurements_without_a_form_in_106_11_are_listed(self):
        self.write("in.tma", "G\\106:09;P-1\\DLN:A;P-1\\TF:ONE;P-1\\F1:16;P-1\\MF\\N:4;P-1\\MF1:16;"
                             "P-1\\MF2:256;P-1\\MF4:16;P-1\\MF5:1111101011110011;D-1\\DLN:A;"
                             "D-1\\ML\\N:1;D-1\\MN\\N-1:2;D-1\\MN-1-1:WORD;D-1\\LT-1-1:MF;"
                             "D-1\\MF-1-1:2;D-1\\MN-1-2:OTHER;D-1\\LT-1-2:OWN;D-1\\OWN-1-2:3;")
        result = self.run_json("save", "in.tma", "-o", "out.tma", "--edition", "2011")
        self.assertEqual(result.status, REPORTED, result)
        self.assertNotIn(444, result.ids())
        self.assertTrue(any("OTHER" in message["text"] for message in result.json["messages"]),
                        result)
        self.assertTrue(any("definition #1." in message["text"]
                            for message in result.json["messages"] if message["id"] == 239))
        self.assertIn(b"LT-1-1:WDFR;", self.read("out.tma"))

    def test_the_note_names_both_editions(self):
        self.write("in.tma", "G\\106:05;")
        result = self.run_json("save", "in.tma", "-o", "out.tma", "--edition", "2009")
        self.assertEqual(result.status, REPORTED)
        self.assertEqual(result.ids(), [444])
        text = result.json["messages"][0]["text"]
        self.assertIn("05", text)
        self.assertIn("09", text)

    def test_values_of_1996_become_those_of_1999(self):
        data = "T-1\\RF4:OTHER;T-1\\GST7:OTH;R-1\\TC1:OTH;R-1\\TC7:OTH;"
        saved = self.converted(data, 1999, source=1996)
        for command in (b"T-1\\RF4:OTHR;", b"T-1\\GST7:OTHER;", b"R-1\\TC1:OTHR;",
                        b"R-1\\TC7:OT;"):
            self.assertIn(command + b"\r\n", saved)

    def test_values_of_1999_become_those_of_1996(self):
        data = "G\\106:99;T-1\\RF4:OTHR;T-1\\GST7:OTHER;R-1\\TC1:CASS;R-1\\TC7:OT;R-1\\TT:X;"
        saved = self.converted(data, 1996)
        self.assertIn(b"T-1\\RF4:OTHER;\r\n", saved)
        self.assertIn(b"R-1\\TC7:OTH;\r\n", saved)
        self.assertNotIn(b"CASS", saved)
        self.assertNotIn(b"R-1\\TT:", saved)

    def test_while_a_file_is_read_the_limits_of_its_own_edition_hold(self):
        self.write("in.ini", "[KAVU-9]\r\nIRIGInputVersion=1996\r\n")
        self.write("in.tma", "C-1\\DCN:A;C-1\\TRD4:OTH;C-2\\DCN:B;C-2\\TRD4:WXYZ;C-3\\DCN:C;"
                   "C-3\\VOI\\E:CVSD, a longer text;")
        result = self.run_json("save", "in.tma", "-o", "out.tma", "--edition", "1999",
                               "--settings", "in.ini")
        saved = self.read("out.tma")
        self.assertIn(b"C-1\\TRD4:O;\r\n", saved)
        # The limit of the target holds when the document has moved, and what it costs is told.
        self.assertIn(b"C-2\\TRD4:WX;\r\n", saved)
        self.assertIn(b"C-3\\VOI\\E:CVSD;\r\n", saved)
        self.assertEqual(result.ids().count(315), 1, result)
        self.assertTrue([m for m in result.json["messages"] if "C-2\\TRD4:WXYZ" in m["text"]])
        # The other way round nothing is too long.
        self.write("in.tma", "G\\106:99;C-1\\DCN:A;C-1\\TRD4:OTH;")
        result = self.run_json("save", "in.tma", "-o", "out.tma", "--edition", "1996")
        self.assertEqual(result.ids().count(315), 1, result)
        self.assertIn(b"C-1\\TRD4:OT;\r\n", self.read("out.tma"))

    def test_a_record_that_a_move_empties_is_listed_found_and_not_doubled(self):
        self.write("to96.ini", "[KAVU-9]\r\nIRIGOutputMethod=2\r\nIRIGOutputVersion=1996\r\n")
        self.write("in.tma", "G\\106:99;C-1\\DCN:A;C-1\\MOT5:x;C-2\\DCN:B;C-2\\DCT:PTM;"
                   "C-3\\DCN:C;C-3\\TRD1:x;")
        for command in (("conversions", "in.tma"), ("tree", "in.tma")):
            found = self.run_json("--settings", "to96.ini", *command).json["conversions"]
            names = [each if isinstance(each, str) else each["name"] for each in found]
            self.assertEqual(names, ["A", "B", "C"], command)
        one = self.run_json("--settings", "to96.ini", "conversions", "in.tma", "A")
        self.assertEqual([each["name"] for each in one.json["conversions"]], ["A"])
        saved = self.converted("G\\106:99;C-1\\DCN:A;C-1\\MOT5:x;", 1996)
        self.assertEqual(saved.count(b"DCN:A;"), 1)

    def test_fqpsk_b_goes_below_2000(self):
        self.assertNotIn(b"FQPSK-B", self.converted("G\\106:00;T-1\\RF4:FQPSK-B;", 1999))
        self.assertIn(b"FQPSK-B", self.converted("G\\106:00;T-1\\RF4:FQPSK-B;", 2001))


class WorkingStoreTest(kavu.KavuTest):
    """The names and places of the working store."""

    def test_s_files_of_a_document_of_2004_are_not_saved_and_go_with_the_folder(self):
        files = self.stored("G\\106:04;S-1\\X:A;")
        self.assertIn("[kavu]PCMS.S01", files)
        self.assertNotIn(b"S-1", self.saved("G\\106:04;S-1\\X:A;"))

    def test_the_folder_is_private_and_named_by_a_guid(self):
        self.write("big.tma", kavu.big_document(40))
        process = self.start("check", "big.tma")
        self.wait_for(lambda: self.store_folder() is not None, process)
        folder = self.store_folder()
        mode = os.stat(folder).st_mode & 0o777
        kavu.interrupt(process)
        self.finish(process)
        self.assertEqual(mode, 0o700)
        self.assertRegex(os.path.basename(folder),
                         r"^KAVU-9-[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$")

    def test_without_temp_the_store_lies_beside_the_settings(self):
        self.write("big.tma", kavu.big_document(40))
        found = []

        def store():
            found[:] = [os.path.join(folder, name)
                        for folder, names, _ in os.walk(self.home) for name in names
                        if name.startswith("KAVU-9-")]
            return bool(found)

        process = self.start("check", "big.tma", env={"TEMP": ""})
        self.wait_for(store, process)
        folder = found[0]
        kavu.interrupt(process)
        self.finish(process)
        self.assertEqual(os.path.dirname(folder), os.path.join(self.home, ".config"))
        self.assertTrue(os.path.isdir(os.path.join(self.home, ".config", "KavuSupportFiles")))
        self.assertFalse(store(), found)


if __name__ == "__main__":
    kavu.main()
