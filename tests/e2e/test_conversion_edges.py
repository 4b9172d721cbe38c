"""The conversion records, from the opened file to the saved one."""

import unittest

import kavu
from kavu import CLEAN, REPORTED

HEAD = "G\\106:09;"


class ConversionTest(kavu.KavuTest):
    def chunks(self, data):
        return sorted(name for name in self.stored(data) if name.endswith(".C_O"))

    def c_group(self, data, *options):
        return [line for line in self.saved(data, *options).split(b"\r\n")
                if line.startswith(b"C-")]

    def record(self, index, name, *fields):
        return "".join("C-%d\\%s;" % (index, field) for field in ("DCN:" + name, *fields))

    def test_25_indices_share_a_chunk(self):
        def named(*indices):
            return HEAD + "".join(self.record(i, "M%d" % i) for i in indices)

        self.assertEqual(len(self.chunks(named(1, 26, 51))), 3)
        self.assertEqual(len(self.chunks(named(1, 2, 3))), 1)
        self.assertEqual(len(self.chunks(named(1, 25))), 2)

    def test_chunk_numbers_have_no_holes(self):
        data = HEAD + self.record(1, "A") + self.record(100, "B") + self.record(2000000000, "C")
        self.assertEqual(self.chunks(data),
                         ["[kavu]%08d.C_O" % number for number in range(3)])
        names = [line for line in self.c_group(data) if b"\\DCN:" in line]
        self.assertEqual(sorted(line.split(b":")[1] for line in names), [b"A;", b"B;", b"C;"])

    def test_a_name_of_33_characters_is_cut_and_its_like_is_a_duplicate(self):
        name = "n" * 33
        data = HEAD + self.record(1, name) + self.record(2, name[:32])
        result = self.check(data, status=REPORTED)
        self.assertEqual(result.ids(), [318, 317])
        self.assertIs(result.json["changed"], True)
        self.assertEqual(self.c_group(data)[0], b"C-1\\DCN:" + b"n" * 32 + b";")
        self.assertFalse([line for line in self.c_group(data) if line.startswith(b"C-2")])

    def test_a_definition_without_a_name_vanishes_and_is_listed_without_a_number(self):
        data = HEAD + "C-1\\DCT:OTH;C-1\\OTH:x;"
        self.assertEqual(self.check(data, status=REPORTED).ids(), [0])
        self.assertEqual(self.c_group(data), [])

    def test_indices_are_dense_from_1_on_saving(self):
        lines = self.c_group(HEAD + self.record(5, "A") + self.record(9, "B"))
        self.assertEqual([line for line in lines if b"DCN" in line],
                         [b"C-1\\DCN:A;", b"C-2\\DCN:B;"])

    def test_coefficients_without_any_write_an_empty_pair_set(self):
        lines = self.c_group("G\\106:07;" + self.record(1, "A", "DCT:COE", "CO\\N:0"))
        for line in (b"C-1\\DCT:COE;", b"C-1\\PS\\N:0;", b"C-1\\PS1:N;", b"C-1\\PS2:1;"):
            self.assertIn(line, lines)
        self.assertFalse([line for line in lines if line.startswith(b"C-1\\CO")])

    def test_the_length_of_a_pair_count_is_checked_and_that_of_derived_inputs_is_not(self):
        self.check(HEAD + self.record(1, "A", "DCT:DER", "DP\\N:123"), status=CLEAN)
        data = HEAD + self.record(1, "A", "DCT:PRS", "PS\\N:123")
        self.assertEqual(self.check(data, status=REPORTED).ids(), [315])
        self.assertIn(b"C-1\\PS\\N:12;", self.c_group(data))

    def test_a_voice_format_is_cut_to_4_characters_except_in_1996(self):
        fields = self.record(1, "A", "DCT:VOI", "VOI\\E:ABCDE")
        self.assertIn(b"C-1\\VOI\\E:ABCD;", self.c_group(HEAD + fields))
        self.write("old.ini", "[KAVU-9]\r\nIRIGInputVersion=1996\r\n")
        self.assertIn(b"C-1\\VOI\\E:ABCDE;", self.c_group(fields, "--settings", "old.ini"))

    def test_a_comment_of_40000_characters_has_a_file_of_its_own_and_is_saved_whole(self):
        text = "long comment " * 3077
        data = HEAD + self.record(1, "A", "COM:" + text) + self.record(2, "B")
        files = self.stored(data)
        self.assertEqual(files["[kavu]A.C_COM"].rstrip(b"\r\n"), text.rstrip(" ").encode())
        lines = self.c_group(data)
        self.assertIn(b"C-1\\COM:" + text.rstrip(" ").encode() + b";", lines)
        self.assertIn(b"C-2\\DCN:B;", lines)

    def test_a_name_that_would_leave_the_folder_stays_in_it(self):
        text = "x" * 40000
        for name in ("../../escape", "/etc/escape", "..", "a/b", ".hidden"):
            with self.subTest(name=name):
                data = HEAD + self.record(1, name, "COM:" + text)
                lines = self.c_group(data)
                self.assertIn(b"C-1\\DCN:" + name.encode() + b";", lines)
                self.assertIn(b"C-1\\COM:" + text.encode() + b";", lines)

    def test_names_that_differ_only_in_case_are_two_records(self):
        data = HEAD + self.record(1, "Mix", "DCT:OTH", "OTH:one") \
            + self.record(2, "MIX", "DCT:OTH", "OTH:two")
        self.check(data, status=CLEAN)
        lines = self.c_group(data)
        for line in (b"C-1\\DCN:Mix;", b"C-1\\OTH:one;", b"C-2\\DCN:MIX;", b"C-2\\OTH:two;"):
            self.assertIn(line, lines)

    def test_a_record_that_has_only_its_name_is_kept(self):
        lines = self.c_group(HEAD + self.record(1, "A"))
        self.assertEqual(lines[0], b"C-1\\DCN:A;")
        self.assertIn(b"C-1\\DCT:NON;", lines)

    def test_a_measurement_whose_name_is_a_number_is_no_duplicate(self):
        self.check(HEAD + self.record(1, "0") + self.record(2, "1") + self.record(3, "2"),
                   status=CLEAN)


if __name__ == "__main__":
    kavu.main()
