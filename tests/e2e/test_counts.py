"""Counts that are smaller than what is there: no load may pass over the rest without a word."""

import unittest

import kavu
from kavu import CLEAN, REPORTED

GENERAL = ("G\\106:%s;G\\DSI\\N:1;G\\DSI-1:RF;G\\DST-1:RF;T-1\\ID:RF;M-1\\ID:RF;M-1\\BB\\DLN:L;"
           "M-1\\BSG1:PCM;M-1\\SI\\N:0;P-1\\DLN:L;P-1\\TF:TWO;P-1\\D1:NRZ-L;P-1\\D2:100000;P-1\\D3:U;"
           "P-1\\D4:N;P-1\\D5:Y;P-1\\D6:N;P-1\\D7:N;P-1\\D8:N/A;P-1\\F1:16;P-1\\F2:M;P-1\\F3:NO;"
           "P-1\\MF\\N:4;P-1\\MF1:8;P-1\\MF2:128;P-1\\MF3:FPT;P-1\\MF4:16;P-1\\MF5:1111101011110011;"
           "P-1\\ISF\\N:1;P-1\\ISF1-1:SFID;P-1\\ISF2-1:ID;P-1\\IDC1-1:1;P-1\\IDC2-1:16;P-1\\IDC3-1:1;"
           "P-1\\IDC4-1:2;P-1\\IDC5-1:M;P-1\\IDC6-1:0;P-1\\IDC7-1:1;P-1\\IDC8-1:3;P-1\\IDC9-1:4;"
           "P-1\\IDC10-1:INC;D-1\\DLN:L;D-1\\ML\\N:1;D-1\\MLN-1:List;")
WORDS = ("D-1\\MN\\N-1:2;"
         "D-1\\MN-1-1:A;D-1\\LT-1-1:WDFR;D-1\\MML\\N-1-1:2;"
         "D-1\\WP-1-1-1-1:2;D-1\\WI-1-1-1-1:0;D-1\\EWP-1-1-1-1:2;D-1\\FP-1-1-1-1:1;"
         "D-1\\FI-1-1-1-1:1;D-1\\EFP-1-1-1-1:4;"
         "D-1\\WP-1-1-2-1:3;D-1\\WI-1-1-2-1:0;D-1\\EWP-1-1-2-1:3;D-1\\FP-1-1-2-1:1;"
         "D-1\\FI-1-1-2-1:1;D-1\\EFP-1-1-2-1:4;"
         "D-1\\MN-1-2:B;D-1\\LT-1-2:WDFR;D-1\\MML\\N-1-2:1;D-1\\MNF\\N-1-2-1:2;D-1\\MWL-1-2-1:32;"
         "D-1\\WP-1-2-1-1:4;D-1\\FP-1-2-1-1:1;D-1\\FI-1-2-1-1:1;D-1\\EFP-1-2-1-1:4;"
         "D-1\\WFM-1-2-1-1:FW;D-1\\WFP-1-2-1-1:1;"
         "D-1\\WP-1-2-1-2:5;D-1\\FP-1-2-1-2:1;D-1\\FI-1-2-1-2:1;D-1\\EFP-1-2-1-2:4;"
         "D-1\\WFM-1-2-1-2:FW;D-1\\WFP-1-2-1-2:2;")
OLDER = ("D-1\\MN\\N-1:2;D-1\\MN-1-1:A;D-1\\LT-1-1:MFSC;D-1\\MFS\\N-1-1:2;D-1\\MFS1-1-1:E;"
         "D-1\\MFSW-1-1-1:2;D-1\\MFSW-1-1-2:6;D-1\\MN-1-2:B;D-1\\LT-1-2:MFFR;D-1\\FMF\\N-1-2:2;"
         "D-1\\FMF1-1-2:32;D-1\\FMF2-1-2:E;D-1\\FMF6-1-2-1:4;D-1\\FMF9-1-2-1:1;D-1\\FMF6-1-2-2:5;"
         "D-1\\FMF9-1-2-2:2;")


class CountTest(kavu.KavuTest):
    def deep(self, data, status):
        return self.check(data, "--deep", status=status)

    def test_counts_that_hold_are_clean(self):
        for edition, measurements in (("11", WORDS), ("09", WORDS), ("09", OLDER)):
            result = self.deep(GENERAL % edition + measurements, CLEAN)
            self.assertEqual(result.json["streams"], [{"stream": "L", "result": 0}])

    def test_every_count_that_is_too_small_is_told(self):
        cases = (
            ("11", WORDS, "MML\\N-1-1:2;", "MML\\N-1-1:1;", "D-1\\MML\\N-1-1 states 1"),
            ("09", WORDS, "MNF\\N-1-2-1:2;", "MNF\\N-1-2-1:1;", "D-1\\MNF\\N-1-2-1 states 1 or"),
            ("11", WORDS, "MN\\N-1:2;", "MN\\N-1:1;", "D-1\\MN\\N-1 states 1 or nothing"),
            ("11", WORDS, "MN\\N-1:2;", "MN\\N-1:0;", "D-1\\MN\\N-1 states 0"),
            ("11", WORDS, "MN\\N-1:2;", "MN\\N-1:x;", "D-1\\MN\\N-1 states 0"),
            ("11", WORDS, "D-1\\MN\\N-1:2;", "D-1\\MN\\N-1:2;D-1\\MLN-2:Second;",
             "D-1\\ML\\N states 1 or nothing, but the file has commands of number 2"),
            # A row after a gap is beyond the count as well.
            ("11", WORDS, "MN\\N-1:2;", "MN\\N-1:2;D-1\\WFM-1-7-1-1:FW;",
             "D-1\\MN\\N-1 states 2, but the file has commands of number 7"),
            ("09", OLDER, "MFS\\N-1-1:2;", "MFS\\N-1-1:1;", "D-1\\MFS\\N-1-1 states 1"),
            ("09", OLDER, "FMF\\N-1-2:2;", "FMF\\N-1-2:1;", "D-1\\FMF\\N-1-2 states 1"),
            ("09", OLDER, "P-1\\ISF\\N:1;", "P-1\\ISF\\N:1;P-1\\ISF1-2:Second;",
             "P-1\\ISF\\N states 1, but the file has commands of number 2"),
            ("09", OLDER, "P-1\\ISF\\N:1;", "P-1\\ISF\\N:1;P-1\\SF\\N-1:1;P-1\\SF1-1-1:S;"
             "P-1\\SF2-1-1:NO;P-1\\SF4-1-1-1:6;P-1\\SF4-1-1-2:7;P-1\\SF6-1-1:4;",
             "P-1\\SF2-1-1 states 1, but the file has commands of number 2"),
            ("09", OLDER, "T-1\\ID:RF;", "T-1\\ID:RF;T-1\\SCO\\N:1;T-1\\SCO1-2:3;",
             "T-1\\SCO\\N states 1, but the file has commands of number 2"),
            ("09", OLDER, "G\\DSI\\N:1;", "G\\DSI\\N:1;G\\DSI-3:Third;", "G\\DSI\\N states 1"),
            ("09", OLDER, "G\\DSI\\N:1;", "G\\DSI\\N:1;G\\POC1-1:Somebody;",
             "G\\POC\\N states nothing, but"),
        )
        for edition, measurements, old, new, told in cases:
            with self.subTest(count=new):
                data = GENERAL % edition + measurements
                self.assertIn(old, data)
                data = data.replace(old, new)
                result = self.deep(data, REPORTED)
                texts = [m["text"] for m in result.json["messages"] if m["id"] == 0]
                self.assertTrue([text for text in texts if told in text], result)
                plain = self.run_cli("check", "--deep", "in.tma")
                self.assertEqual(plain.status, REPORTED)
                if told[0] in "PD":
                    self.assertNotIn("clean", plain.text)

    def test_every_count_of_the_groups_that_is_too_small_is_told(self):
        # A list of each group, with a count that is smaller, 0, no number, or not there.
        lists = (("G\\POC\\N", "G\\POC1-2:x;"), ("T-1\\SCO\\N", "T-1\\SCO1-2:3;"),
                 ("R-1\\N", "R-1\\TK1-2:7;"),
                 ("R-1\\NUS\\N-1", "R-1\\N:1;R-1\\USCN-1-2:7;"),
                 ("R-1\\RIM\\N", "R-1\\RIMI-2:a;"), ("R-1\\EV\\N", "R-1\\EV\\D-2:a;"),
                 ("R-1\\EV\\PM\\N-1", "R-1\\EV\\N:1;R-1\\EV\\PM\\MN-1-2:a;"),
                 ("M-1\\SI\\N", "M-1\\SI1-2:7;"), ("A-1\\SF\\N", "A-1\\SF1-2:1;"))
        general = GENERAL.replace("M-1\\SI\\N:0;", "") % "11" + WORDS + "R-1\\ID:Deck;A-1\\DLN:Other;"
        for code, rows in lists:
            for stated in ("1", "0", "x", None):
                with self.subTest(count=code, stated=stated):
                    count = "" if stated is None else "%s:%s;" % (code, stated)
                    result = self.check(general + count + rows, "--deep", "--answer-all", "no",
                                        status=REPORTED)
                    texts = " ".join(m["text"] for m in result.json["messages"] if m["id"] == 0)
                    self.assertIn(code + " states", texts)
                    self.assertIn("commands of number 2", texts)

    def test_a_count_of_a_conversion_record_that_hides_something_is_told_and_nothing_goes(self):
        lists = (("PRS", "PS\\N", "PS3-2:1;", "PS4-2:2;"), ("COE", "CO\\N", "CO-2:2.5;", ""),
                 ("NPC", "NPC\\N", "NPC-2:2.5;", ""), ("DER", "DP\\N", "DP-2:B;", ""),
                 ("DER", "DPC\\N", "DPC-2:B;", ""), ("DIS", "DIC\\N", "DICC-2:1;", "DICP-2:On;"),
                 ("NON", "MC\\N", "MC1-2:5;", "MC3-2:7;"), ("NON", "MA\\N", "MA1-2:5;", "MA2-2:7;"))
        for kind, code, first, second in lists:
            for stated in ("1", "0", "x", None):
                with self.subTest(count=code, stated=stated):
                    count = "" if stated is None else "C-7\\%s:%s;" % (code, stated)
                    rows = "".join("C-7\\" + row for row in (first, second) if row)
                    data = "G\\106:11;C-7\\DCN:A;C-7\\DCT:%s;" % kind + count + rows
                    for arguments in ((), ("--deep",)):
                        result = self.check(data, *arguments, status=REPORTED)
                        texts = " ".join(m["text"] for m in result.json["messages"])
                        self.assertIn("C-7\\%s states" % code, texts)
                        self.assertIn("commands of number 2", texts)
                        self.assertNotIn("will not be saved", " ".join(result.notes))
                    self.assertNotIn("clean", self.run_cli("check", "--deep", "in.tma").text)
                    saved = self.saved(data)
                    for row in (first, second):
                        self.assertIn(b"C-1\\" + row.encode() if row else b"", saved)
                    self.assertEqual(self.saved(saved).split(b"C-1")[1:], saved.split(b"C-1")[1:])

    def test_a_count_of_a_conversion_record_that_is_no_number_is_told(self):
        self.check("G\\106:11;C-1\\DCN:A;C-1\\MC\\N:N;C-1\\MA\\N:N;", status=CLEAN)
        result = self.check("G\\106:11;C-1\\DCN:A;C-1\\DCT:PRS;C-1\\PS\\N:ab;", status=REPORTED)
        self.assertIn("C-1\\PS\\N states 'ab', which is no number.",
                      [message["text"] for message in result.json["messages"]])

    def test_what_is_no_part_of_a_conversion_record_is_told(self):
        record = "G\\106:%s;C-1\\DCN:A;C-1\\DCT:%s;"
        for edition, kind, commands, number in (
                ("11", "NON", "C-1\\XYZ:1;C-1\\MC1-x:1;C-1\\MC1-01-1:1;", 3),
                ("11", "NON", "C-1\\OTH:other;C-1\\PS\\N:1;C-1\\PS3-1:1;", 3),
                ("11", "NON", "C-1\\MN1:one;C-1\\MN1:two;C-1\\DCN:B;", 2),
                ("11", "UNS", "C-1\\MC\\N:1;C-1\\MC1-1:a;C-1\\MC1-1:b;", 1),
                ("11", "NON", "C-1\\BWT\\N:1;C-1\\BWTB-1:3;", 2),
                ("99", "NON", "C-1\\MA1:1;C-1\\CRT:x;", 2)):
            with self.subTest(commands=commands):
                result = self.check(record % (edition, kind) + commands, status=REPORTED)
                told = [note for note in result.notes if "no part of " in note]
                self.assertEqual(len(told), 1, result)
                head = "%d commands of C groups" % number if number > 1 else "A command of a C group"
                self.assertTrue(told[0].startswith(head), told)

    def test_a_measurement_without_a_location_is_told(self):
        for count in ("D-1\\MML\\N-1-1:0;", "D-1\\MML\\N-1-1:x;", "D-1\\MML\\N-1-1:;", ""):
            for edition in ("09", "11"):
                data = GENERAL % edition + WORDS.replace("D-1\\MML\\N-1-1:2;", count)
                result = self.deep(data, REPORTED)
                texts = [m["text"] for m in result.json["messages"] if m["id"] == 0]
                self.assertTrue([text for text in texts if "Measurement 'A' has no place" in text
                                 and "D-1\\MML\\N-1-1" in text], result)
                self.assertEqual(result.json["streams"][0]["result"], 1)
        data = GENERAL % "09" + OLDER.replace("MFS\\N-1-1:2;", "MFS\\N-1-1:none;")
        self.assertIn("'none'", self.deep(data, REPORTED).json["messages"][0]["text"])

    def test_a_load_that_leaves_something_out_has_changed_nothing(self):
        # The stream is as it was read: nobody is asked to save it.
        data = GENERAL % "11" + WORDS.replace("MN\\N-1:2;", "MN\\N-1:1;")
        self.write("in.tma", data)
        self.assertIs(self.run_json("stream", "in.tma", "L").json["changed"], False)


if __name__ == "__main__":
    kavu.main()
