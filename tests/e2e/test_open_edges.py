"""Opening: what is split where, what is refused, and what is dropped."""

import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED

G = "[kavu]GTMP.G"


class SplittingTest(kavu.KavuTest):
    def test_an_empty_file_is_opened_with_a_word_about_it(self):
        self.write("in.tma", "")
        result = self.run_json("check", "in.tma")
        self.assertEqual(result.notes, ["'in.tma' is empty."])
        self.assertIs(result.json["opened"], True)

    def test_a_file_of_only_comments_opens_as_an_empty_document(self):
        result = self.check("COMMENT: one;\r\ncomment: two;\r\n", status=REPORTED)
        self.assertEqual(result.ids(), [0])
        self.assertIs(result.json["opened"], True)
        self.assertEqual(result.json["questions"], [])
        self.assertFalse([name for name in self.stored("COMMENT: one;") if "." in name
                          and not name.endswith(".TMP")])

    def test_a_comment_and_a_command_on_one_line_keep_the_command(self):
        self.assertEqual(self.stored("COMMENT: x; G\\PN:A;")[G], b"G\\PN:A;\r\n")

    def test_a_file_whose_last_semicolon_is_missing_is_refused_completely(self):
        result = self.check("G\\PN:A;\r\nG\\TA:B;\r\nG\\OD:01-01-2009\r\n", status=FAILED)
        self.assertEqual(result.ids(), [157])
        # The number is the counter of the reader: the two commands, and the line feed in
        # the third; it begins with 1, and the end of the file counts once more.
        self.assertIn("5", result.json["messages"][0]["text"])

    def test_a_command_in_lower_case_vanishes(self):
        files = self.stored("p-1\\TF:ONE;G\\PN:A;")
        self.assertNotIn("[kavu]PCMFMT.P01", files)
        self.assertEqual(files[G], b"G\\PN:A;\r\n")

    def test_a_group_in_several_pieces_is_gathered_in_file_order(self):
        files = self.stored("T-1\\ID:X;P-1\\TF:ONE;T-1\\CF:Y;")
        self.assertEqual(files["[kavu]DSRCE.T01"], b"T-1\\ID:X;\r\nT-1\\CF:Y;\r\n")
        self.assertEqual(files["[kavu]PCMFMT.P01"], b"P-1\\TF:ONE;\r\n")

    def test_a_command_of_an_unknown_group_is_lost_and_listed_without_a_number(self):
        result = self.check("X-1\\A:B;G\\PN:A;", status=REPORTED)
        self.assertEqual(result.ids(), [0])
        self.assertIn("X-1\\A:B;", result.json["messages"][0]["text"])
        self.assertEqual(len(result.notes), 1)
        self.assertIn("X-1\\A:B;", result.notes[0])

    def test_a_value_over_several_lines_comes_out_with_its_line_breaks(self):
        data = b"G\\COM:one\r\ntwo\r\n  three;\r\n"
        self.assertEqual(self.stored(data)[G], b"G\\COM:one\x14\x15two\x14\x15  three;\r\n")
        self.assertIn(data, self.saved(data))

    def test_a_c_command_whose_group_is_no_number_is_stored(self):
        saved = self.saved("G\\106:09;C-abc\\DCN:M1;C-abc\\DCT:OTH;C-abc\\OTH:text;")
        self.assertIn(b"C-1\\DCN:M1;\r\n", saved)
        self.assertIn(b"C-1\\OTH:text;\r\n", saved)

    def test_every_group_has_its_file(self):
        files = self.stored("G\\106:09;H\\A:1;T-1\\A:1;R-2\\A:1;M-3\\A:1;V-4\\A:1;P-5\\A:1;"
                            "D-6\\A:1;B-7\\A:1;A-8\\A:1;S-99\\A:1;")
        for name in ("[kavu]GTMP.G", "[kavu]H.HHH", "[kavu]DSRCE.T01", "[kavu]DSRCE.R02",
                     "[kavu]MULT.M03", "[kavu]V.V04", "[kavu]PCMFMT.P05", "[kavu]PCMMEAS.D06",
                     "[kavu]PCM1553.B07", "[kavu]PCMPAM.A08", "[kavu]PCMS.S99"):
            self.assertIn(name, files)
            self.assertTrue(files[name].endswith(b"A:1;\r\n")
                            or files[name] == b"G\\106:09;\r\n", name)

    def test_an_index_of_100_gives_a_file_that_is_never_read_again(self):
        data = "G\\106:09;P-100\\TF:ONE;P-0\\TF:ONE;P-1\\TF:ONE;"
        self.assertIn("[kavu]PCMFMT.P100", self.stored(data))
        saved = self.saved(data)
        self.assertIn(b"P-1\\TF:ONE;", saved)
        self.assertNotIn(b"P-100", saved)
        self.assertNotIn(b"P-0", saved)
        self.write("in.tma", data)
        self.assertIn("not 1 to 99", " ".join(self.run_json("check", "in.tma").notes))

    def test_an_index_that_no_integer_holds_is_out_of_range(self):
        self.check("G\\106:09;P-99999999999999999999\\TF:ONE;C-99999999999999999999\\DCN:A;",
                   status=REPORTED)

    def test_a_file_that_does_not_name_its_edition_is_of_the_settings_edition(self):
        self.assertEqual(self.check("G\\PN:A;").json["version"], 2011)


class EditionTest(kavu.KavuTest):
    def test_edition_96_is_reported_and_the_default_holds(self):
        result = self.check("G\\106:96;", status=REPORTED)
        self.assertEqual(result.ids(), [442])
        self.assertEqual(result.json["version"], 2011)

    def test_an_edition_that_is_too_new_is_reported_and_2011_holds(self):
        result = self.check("G\\106:12;", status=REPORTED)
        self.assertEqual(result.ids(), [443])
        self.assertEqual(result.json["version"], 2011)

    def test_a_value_that_is_no_edition_keeps_its_year_and_is_told(self):
        for value, year in (("AB", 2000), ("03", 2003), ("10", 2010), ("1A", 2001), (" 03", 2003)):
            result = self.check("G\\106:%s;" % value, status=REPORTED)
            self.assertEqual(result.json["version"], year)
            self.assertEqual(result.ids(), [0])
            self.assertIn("'%s'" % value.strip(), result.json["messages"][0]["text"])
            self.assertIn(str(year), result.json["messages"][0]["text"])

    def test_blanks_and_tabs_around_the_edition_make_no_difference(self):
        for value in (" 09", "\t09\t", " 09 ", "  \t 09"):
            self.assertEqual(self.check("G\\106:%s;" % value, status=CLEAN).json["version"], 2009)
        self.assertEqual(self.check("G\\106:\t;", status=CLEAN).json["version"], 2011)
        self.assertEqual(self.check("G\\106: 96;", status=REPORTED).ids(), [442])
        self.assertEqual(self.check("G\\106: 12 ;", status=REPORTED).ids(), [443])

    def test_every_edition_is_recognised(self):
        for number, year in (("99", 1999), ("00", 2000), ("01", 2001), ("04", 2004),
                             ("05", 2005), ("07", 2007), ("09", 2009), ("11", 2011)):
            result = self.check("G\\106:%s;" % number, status=CLEAN)
            self.assertEqual(result.json["version"], year)
            self.assertIs(result.json["changed"], False)


class LinkTest(kavu.KavuTest):
    def test_an_orphan_stream_gets_a_data_source_when_told_so(self):
        saved = self.saved("P-1\\DLN:L1;", "--answer", "304=yes")
        for command in (b"G\\DSI\\N:1;", b"G\\DSI-1:Data Source #1;", b"G\\DST-1:RF;",
                        b"T-1\\ID:Data Source #1;", b"M-1\\ID:Data Source #1;",
                        b"M-1\\BB\\DLN:L1;", b"M-1\\SI\\N:0;"):
            self.assertIn(command + b"\r\n", saved)

    def test_an_orphan_stream_stays_when_told_so(self):
        saved = self.saved("G\\106:09;P-1\\DLN:L1;")
        self.assertNotIn(b"DSI", saved)

    def test_an_embedded_stream_needs_no_home(self):
        result = self.check("G\\106:09;M-1\\BB\\DLN:L1;P-1\\DLN:L1;P-1\\AEF\\N:1;"
                            "P-1\\AEF\\DLN-1:L2;P-2\\DLN:L2;", status=CLEAN)
        self.assertEqual(result.json["questions"], [])

    def test_a_name_in_another_case_is_no_home(self):
        result = self.check("G\\106:09;M-1\\BB\\DLN:Link;P-1\\DLN:LINK;P-1\\AEF\\N:1;"
                            "P-1\\AEF\\DLN-1:Inner;P-2\\DLN:inner;")
        texts = [question["text"] for question in result.json["questions"]]
        self.assertEqual(len(texts), 2, texts)
        self.assertIn("LINK", texts[0])
        self.assertIn("inner", texts[1])

    def test_a_name_in_two_streams_is_reported_once(self):
        data = "G\\106:09;M-1\\BB\\DLN:A;M-1\\SI\\N:1;M-1\\SI\\DLN-1:B;P-1\\DLN:A;P-2\\DLN:B;"
        for group, link in ((1, "A"), (2, "B")):
            data += ("D-%d\\DLN:%s;D-%d\\ML\\N:1;D-%d\\MLN-1:L;D-%d\\MN\\N-1:2;"
                     "D-%d\\MN-1-1:SAME;D-%d\\MN-1-2:OTHER;"
                     % (group, link, group, group, group, group, group))
        self.assertEqual(self.check(data, status=REPORTED).ids(), [456])
        self.write("off.ini", "[KAVU-9]\r\nCheckForDupMeasurements=0\r\n")
        self.check(data, "--settings", "off.ini", status=CLEAN)


if __name__ == "__main__":
    kavu.main()
