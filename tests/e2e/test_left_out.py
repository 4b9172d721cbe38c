"""All that a load or a save leaves out or normalises is in the messages, and in the exit status."""

import unittest

import kavu
from kavu import CLEAN, REPORTED

HEAD = "G\\106:09;"
RECORD = HEAD + "C-1\\DCN:A;C-1\\DCT:NON;"

# What is wrong with a document, what `check` and `save` have to tell of it, and what a save makes of
# it.
LOADS = {
    "a byte order mark": (b"\xef\xbb\xbfG\\106:09;", "byte order mark", None),
    "filler after the last command": (HEAD + "\0\0", "filler", None),
    "filler in front of a command": (HEAD + "\r\n\x1a\x1aG\\PN:A;\x1aG\\TA:B;",
                                     "3 bytes of filler (Ctrl-Z) in front", "G\\PN:A;"),
    "a comment": (HEAD + "COMMENT: x;", "comment", None),
    "an unknown group": (HEAD + "X-1\\A:B;", "no known group", None),
    "a group in lower case": (HEAD + "g\\PN:x;", "no known group", None),
    "a lone semicolon": (HEAD + ";", "no known group", None),
    "an index that is not saved": (HEAD + "T-0\\ID:x;", "will not be saved", None),
    "an index with a leading zero": (HEAD + "T-01\\ID:x;", "a 0 at its front", "T-1\\ID:x;"),
    "no edition": ("G\\106:08;", "no edition", None),
    "a byte that stands for a line break": (HEAD + "G\\COM:a\x14b;", "byte 20 or 21", "G\\COM:a\rb;"),
    "a record without a name": (HEAD + "C-1\\DCT:NON;", "without a name", None),
    "a code that no record has": (RECORD + "C-1\\ZZ:x;", "C-1\\ZZ:x;", None),
    "a command of another type": (RECORD + "C-1\\CO:1;", "C-1\\CO:1;", None),
    "a command of a record without a value": (RECORD + "C-1\\TRD1:;", "C-1\\TRD1:;", None),
    "a command of a record that comes again": (HEAD + "C-1\\DCN:A;C-1\\TRD1:x;C-1\\TRD1:y;",
                                               "not be saved: C-1\\TRD1:x;", "C-1\\TRD1:y;"),
    "an item that comes again": (HEAD + "C-1\\DCN:A;C-1\\DCT:COE;C-1\\CO\\N:1;C-1\\CO-1:2;"
                                 "C-1\\CO-1:3;", "not be saved: C-1\\CO-1:2;", "C-1\\CO-1:3;"),
    "a second name of a record": (RECORD + "C-1\\DCN:B;", "C-1\\DCN:B;", None),
    "a key of the program": (RECORD + "C-1\\Chg:1;", "C-1\\Chg:1;", None),
    "a code in lower case": (HEAD + "C-1\\DCN:A;C-1\\trd1:x;", "another spelling: C-1\\trd1:x;",
                             "C-1\\TRD1:x;"),
    "a name in lower case": (HEAD + "C-1\\dcn:A;C-1\\DCT:NON;", "another spelling: C-1\\dcn:A;",
                             "C-1\\DCN:A;"),
    "a group of records that is no number": (HEAD + "C-x\\DCN:A;C-x\\DCT:NON;",
                                             "another spelling: C-x\\DCN:A;", "C-1\\DCN:A;"),
    "blanks in front of a value": (HEAD + "C-1\\DCN:A;C-1\\TRD1: x;",
                                   "another spelling: C-1\\TRD1: x;", "C-1\\TRD1:x;"),
}

# What only the save leaves out.
SAVES = {
    "a message group of an old edition": ("G\\106:04;S-1\\DLN:x;", "no S groups: 1 left out"),
    "a vendor group of an old edition": ("G\\106:01;V-1\\ID:x;", "no V groups: 1 left out"),
    "a value that holds the text of a comment": (HEAD + "G\\COM:see COMMENT: here;", "COMMENT:"),
}


class LeftOutTest(kavu.KavuTest):
    def assertTold(self, result, text):
        self.assertEqual(result.status, REPORTED, result)
        messages = result.json["messages"]
        self.assertEqual([each["id"] for each in messages], [0], result)
        self.assertIn(text, messages[0]["text"])

    def test_what_a_load_leaves_out_or_normalises_is_told(self):
        for name, (data, text, line) in LOADS.items():
            with self.subTest(name):
                self.write("in.tma", data)
                self.assertTold(self.run_json("check", "in.tma"), text)
                self.assertTold(self.run_json("save", "in.tma", "-o", "out.tma"), text)
                if line is not None:
                    self.assertIn(b"\r\n" + line.encode("latin-1") + b"\r\n", self.read("out.tma"))
                # What was told is gone: the saved document is clean, unless it is of no edition.
                status = REPORTED if name == "no edition" else CLEAN
                self.assertEqual(self.run_json("check", "out.tma").status, status)

    def test_what_a_save_leaves_out_is_told(self):
        for name, (data, text) in SAVES.items():
            with self.subTest(name):
                self.write("in.tma", data)
                self.assertEqual(self.run_json("check", "in.tma").status, CLEAN)
                self.assertTold(self.run_json("save", "in.tma", "-o", "out.tma"), text)

    def test_white_space_between_commands_is_no_content(self):
        self.write("in.tma", "  G\\106:09;\r\n\r\n\tG\\PN:A  ;G\\COM:a\r\r\r\nb;\r")
        self.assertEqual(self.run_json("check", "in.tma").status, CLEAN)

    def test_what_a_crashed_run_has_cut_off_is_told(self):
        self.write("in.tma", HEAD)
        result = self.run_json("store", "in.tma", "--into", "store")
        self.assertEqual(result.status, CLEAN)
        self.write("store/[kavu]GTMP.G", b"G\\106:09;\r\nG\\PN:cut")
        result = self.run_json("recover", "store", "--partial", "-o", "out.tma")
        self.assertEqual(result.status, REPORTED, result)
        self.assertIn("cut off", "".join(each["text"] for each in result.json["messages"]))


if __name__ == "__main__":
    unittest.main()
