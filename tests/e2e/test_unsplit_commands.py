"""Commands that cannot be taken apart, for want of a colon or of a backslash in front of it.

Nothing finds, numbers or changes them, so that every way through the program has to keep them,
byte for byte, in the group where the file has them.
"""

import unittest

import kavu
from kavu import CLEAN, REPORTED

STREAM = ("P-%(n)d\\DLN:L%(n)d;|P-%(n)d\\TF:ONE;P-%(n)d\\D1:NRZ-L;P-%(n)d\\D2:100000;P-%(n)d\\F1:16;"
          "P-%(n)d\\MF\\N:1;P-%(n)d\\MF1:4;P-%(n)d\\MF2:64;P-%(n)d\\MF4:16;"
          "D-%(n)d\\DLN:L%(n)d;D-%(n)d\\ML\\N:1;D-%(n)d\\MLN-1:List;D-%(n)d\\MN\\N-1:2;"
          "D-%(n)d\\MN-1-1:A%(n)d;|D-%(n)d\\LT-1-1:MF;D-%(n)d\\MF-1-1:2;"
          "D-%(n)d\\MN-1-2:B%(n)d;D-%(n)d\\LT-1-2:MF;D-%(n)d\\MF-1-2:3;")
SOURCE = ("T-%(n)d\\ID:RF%(n)d;|T-%(n)d\\RF1:2200;M-%(n)d\\ID:RF%(n)d;|M-%(n)d\\BB\\DLN:L%(n)d;")
DOCUMENT = ("G\\PN:Name;G\\106:%s;G\\DSI\\N:3;G\\DSI-1:RF1;G\\DST-1:RF;G\\DSI-2:RF2;G\\DST-2:RF;"
            "G\\DSI-3:Box;G\\DST-3:SSR;R-1\\ID:Box;|R-1\\TK\\N:1;R-1\\TK1-1:1;R-1\\TK2-1:PC-TK;"
            "R-1\\DSI-1:RF1;R-1\\TK1:9;R-1\\CDLN-1-1:BUS;A-1\\DLN:PAM;|A-1\\A:1;"
            "B-1\\DLN:BUS;|B-1\\NBS\\N:1;V-1\\ID:Box;|V-1\\X:1;H\\X:1;|"
            "C-1\\DCN:A1;|C-1\\DCT:NON;" + "".join((SOURCE + STREAM) % {"n": n} for n in (1, 2)))


def document(edition="09"):
    """The document, and its commands that cannot be taken apart, in pairs with their group."""
    parts = (DOCUMENT % edition).split("|")
    text, unsplit = parts[0], []
    for part in parts[1:]:
        head = text[text.rindex(";", 0, -1) + 1:].split("\\")[0]
        for command in ("%s\\NOTHING %d;", "%s;", "%s:no code \\here %d;"):
            if head == "H" and "\\" not in command.split(":")[0]:
                continue  # it would be of no group
            command = command % ((head, len(unsplit)) if "%d" in command else head)
            unsplit.append(command)
            text += "\r\n" + command
        text += part
    return text, unsplit


class UnsplitTest(kavu.KavuTest):
    def assertKept(self, what, lost=()):
        """Checks that the saved file holds the commands that cannot be taken apart, once."""
        lines = self.read("out.tma").decode("latin-1").split("\r\n")
        for command in self.unsplit:
            expected = 0 if command.startswith(lost) else self.unsplit.count(command)
            self.assertEqual(lines.count(command), expected, (what, command))

    def run_on_document(self, *command, edition="09"):
        text, self.unsplit = document(edition)
        self.write("in.tma", text)
        result = self.run_json("--answer-all", "no", *command, "-o", "out.tma")
        self.assertIn(result.status, (CLEAN, REPORTED), result)
        return result

    def test_a_save_keeps_them_and_says_so(self):
        result = self.run_on_document("save", "in.tma")
        self.assertKept("save")
        count = len(self.unsplit)
        self.assertTrue([note for note in result.notes if note.startswith(
            "%d commands without a colon" % count)], result.notes)
        first = self.read("out.tma")
        self.run_json("save", "out.tma", "-o", "out.tma")
        self.assertEqual(self.read("out.tma"), first)

    def test_every_rewrite_keeps_them(self):
        for command in (("rewrite", "in.tma", "L1"), ("word-frame", "in.tma", "L2"),
                        ("link", "rename", "in.tma", "L1", "New"),
                        ("source", "rename", "in.tma", "RF1", "New"),
                        ("source", "copy", "in.tma", "RF2", "Copy"),
                        ("set", "in.tma", "T-1\\RF1=2300", "R-1\\RI1=x", "M-2\\BB1=PCM", "G\\TA=y",
                         "A-1\\A2=N")):
            with self.subTest(command=command):
                self.run_on_document(*command)
                self.assertKept(command)

    def test_a_renumbering_keeps_them(self):
        text, self.unsplit = document()
        self.write("in.tma", text)
        self.run_json("--answer-all", "yes", "source", "delete", "in.tma", "RF1", "-o", "out.tma")
        saved = self.read("out.tma")
        self.assertIn(b"T-1\\ID:RF2;", saved)
        self.assertIn(b"P-1\\DLN:L2;", saved)
        gone = tuple("%s-1%s" % (letter, rest) for letter in "TMPD" for rest in "\\;:")
        self.assertKept("delete", lost=gone)

    def test_another_edition_keeps_them(self):
        for edition in ("1999", "2000", "2004", "2005", "2007", "2011"):
            with self.subTest(edition=edition):
                self.run_on_document("save", "in.tma", "--edition", edition)
                self.assertKept(edition, lost=("V-",) if edition < "2004" else ())
        self.run_on_document("save", "in.tma", "--edition", "2011", edition="99")
        self.assertKept("99 to 11")


if __name__ == "__main__":
    kavu.main()
