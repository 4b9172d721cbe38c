"""How command text is cut and looked up, seen from outside: the document that results."""

import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED

G = "[kavu]GTMP.G"
P1 = "[kavu]PCMFMT.P01"


def lines(text):
    return text.encode("latin-1")


class CuttingTest(kavu.KavuTest):
    def general(self, data):
        return self.stored(data)[G]

    def test_two_commands_on_one_line_are_two_commands(self):
        self.assertEqual(self.general("G\\A:1;G\\B:2;"), b"G\\A:1;\r\nG\\B:2;\r\n")

    def test_white_space_and_byte_26_in_front_and_blanks_behind_are_dropped(self):
        files = self.stored("  \r\n\t\x1aP-1\\TF:ONE ;")
        self.assertEqual(files[P1], b"P-1\\TF:ONE;\r\n")

    def test_byte_26_inside_a_command_is_kept(self):
        self.assertEqual(self.general("G\\A:x\x1ay;G\\B:z;"), b"G\\A:x\x1ay;\r\nG\\B:z;\r\n")

    def test_a_line_feed_in_a_value_is_a_stored_line_break(self):
        files = self.stored("P-1\\COM:line one\nline two;")
        self.assertEqual(files[P1], b"P-1\\COM:line one\x14\x15line two;\r\n")

    def test_a_run_of_carriage_returns_collapses_to_one(self):
        self.assertEqual(self.general("G\\A:a\r\r\nb;"), b"G\\A:a\x14\x15b;\r\n")
        self.assertEqual(self.general("G\\A:a\r\r\rb;"), b"G\\A:a\x14b;\r\n")

    def test_a_semicolon_on_its_own_is_a_command_that_matches_nothing(self):
        self.assertEqual(self.general("G\\A:1;;G\\B:2;"), b"G\\A:1;\r\nG\\B:2;\r\n")

    def test_an_empty_value_is_not_found_as_a_field(self):
        # The edition is the one of the settings, as if the field were missing.
        self.assertEqual(self.check("G\\106:;", status=CLEAN).json["version"], 2011)

    def test_a_value_of_blanks_is_cut_and_not_found_either(self):
        self.assertEqual(self.check("G\\106:  ;", status=CLEAN).json["version"], 2011)
        self.assertEqual(self.general("G\\106:  ;"), b"G\\106:;\r\n")

    def test_only_blanks_in_front_of_the_semicolon_are_removed(self):
        self.assertEqual(self.general("G\\A:x\t;G\\B: y ;"), b"G\\A:x\t;\r\nG\\B: y;\r\n")

    def test_a_last_command_without_its_semicolon_refuses_the_file(self):
        result = self.check("G\\106:09", status=FAILED)
        self.assertEqual(result.ids(), [157])

    def test_a_file_of_only_blank_lines_is_an_empty_document(self):
        result = self.check("\r\n \r\n\t\r\n", status=CLEAN)
        self.assertIs(result.json["opened"], True)

    def test_an_empty_file_is_an_empty_document(self):
        self.assertIs(self.check("", status=CLEAN).json["opened"], True)

    def test_comments_are_skipped_in_any_case(self):
        self.assertEqual(self.general("comment: anything; G\\A:1; CoMmEnT: x;"), b"G\\A:1;\r\n")

    def test_comment_with_a_blank_before_the_colon_is_no_comment(self):
        # It is a command of no known group, and a remark says so.
        self.write("in.tma", "COMMENT : x;G\\A:1;")
        notes = self.run_json("check", "in.tma").notes
        self.assertEqual(len(notes), 1, notes)
        self.assertIn("no known group", notes[0])
        self.write("in.tma", "COMMENT: x;G\\A:1;")
        notes = self.run_json("check", "in.tma").notes
        self.assertEqual(notes, ["Line 1: a comment of the file is left out: COMMENT: x;"])


class LookUpTest(kavu.KavuTest):
    def asked_about(self, data):
        questions = self.check("G\\106:09;" + data).json["questions"]
        return [question["text"] for question in questions if question["id"] == 304]

    def test_a_value_over_its_limit_is_cut_and_reported(self):
        result = self.check("G\\106:0999;", status=REPORTED)
        self.assertEqual(result.json["version"], 2009)
        text = result.json["messages"][0]["text"]
        self.assertIn("The TMATS command 'G\\106:0999;'", text)
        self.assertIn("only be 2 characters long", text)
        self.assertEqual(self.stored("G\\106:0999;")[G], b"G\\106:0999;\r\n")

    def test_a_value_of_exactly_the_limit_passes_without_a_message(self):
        self.check("G\\106:09;", status=CLEAN)
        name = "n" * 32
        self.check("G\\106:09;M-1\\BB\\DLN:%s;P-1\\DLN:%s;" % (name, name), status=CLEAN)

    def test_a_link_name_over_32_characters_is_cut_in_the_question(self):
        texts = self.asked_about("P-1\\DLN:%s;" % ("n" * 33))
        self.assertEqual(len(texts), 1)
        self.assertIn("n" * 32, texts[0])
        self.assertNotIn("n" * 33, texts[0])

    def test_field_look_up_is_not_case_sensitive_and_the_value_keeps_its_case(self):
        texts = self.asked_about("P-1\\dLn:MiXed;")
        self.assertEqual(len(texts), 1)
        self.assertIn("MiXed", texts[0])

    def test_fields_out_of_order_are_found(self):
        # The look-ups go on from where they stand and wrap around the file.
        self.assertEqual(self.asked_about("M-1\\SI\\DLN-2:B;M-1\\SI\\DLN-1:A;M-1\\SI\\N:2;"
                                          "M-1\\ID:X;P-1\\DLN:A;P-2\\DLN:B;"), [])

    def test_a_negative_count_is_none(self):
        texts = self.asked_about("M-1\\SI\\N:-7;M-1\\SI\\DLN-1:A;P-1\\DLN:A;")
        self.assertEqual(len(texts), 1)

    def test_a_value_may_hold_a_colon(self):
        self.assertEqual(self.asked_about("M-1\\BB\\DLN:a:b;P-1\\DLN:a:b;"), [])
        self.assertEqual(len(self.asked_about("M-1\\BB\\DLN:a:b;P-1\\DLN:a:c;")), 1)

    def test_a_command_without_a_colon_matches_no_field_and_is_kept(self):
        files = self.stored("P-1\\TF;P-1\\D1:X;")
        self.assertEqual(files[P1], b"P-1\\TF;\r\nP-1\\D1:X;\r\n")


if __name__ == "__main__":
    kavu.main()
