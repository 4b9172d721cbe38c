"""The comments of a file, its COMMENT commands: left out with a remark, or kept in their places."""

import re
import unittest

import kavu
from kavu import CLEAN, REPORTED

STREAM = ("P-%(n)d\\DLN:L%(n)d;P-%(n)d\\TF:ONE;P-%(n)d\\D1:NRZ-L;P-%(n)d\\D2:100000;P-%(n)d\\D3:U;"
          "P-%(n)d\\D4:N;P-%(n)d\\D5:Y;P-%(n)d\\D6:N;P-%(n)d\\D7:N;P-%(n)d\\D8:N/A;P-%(n)d\\F1:16;"
          "P-%(n)d\\F2:M;P-%(n)d\\F3:NO;P-%(n)d\\MF\\N:1;P-%(n)d\\MF1:8;P-%(n)d\\MF2:144;"
          "P-%(n)d\\MF3:FPT;P-%(n)d\\MF4:16;P-%(n)d\\MF5:1111101011110011;"
          "P-%(n)d\\MFW1-1:3;P-%(n)d\\MFW2-1:32;P-%(n)d\\COM:about stream %(n)d;"
          "D-%(n)d\\DLN:L%(n)d;D-%(n)d\\ML\\N:1;D-%(n)d\\MLN-1:List %(n)d;D-%(n)d\\MN\\N-1:3;"
          "D-%(n)d\\MN-1-1:A%(n)d;D-%(n)d\\LT-1-1:MF;D-%(n)d\\MF-1-1:5;D-%(n)d\\MFW-1-1:1;"
          "D-%(n)d\\MN-1-2:B%(n)d;D-%(n)d\\LT-1-2:MF;D-%(n)d\\MF-1-2:4;D-%(n)d\\MFW-1-2:1;"
          "D-%(n)d\\MN-1-3:C%(n)d;D-%(n)d\\LT-1-3:MF;D-%(n)d\\MF-1-3:2;D-%(n)d\\MFW-1-3:1;")
SOURCE = ("T-%(n)d\\ID:RF%(n)d;T-%(n)d\\RF1:22%(n)d0;M-%(n)d\\ID:RF%(n)d;M-%(n)d\\BB1:PCM;"
          "M-%(n)d\\BSG1:PCM;M-%(n)d\\BB\\DLN:L%(n)d;M-%(n)d\\SI\\N:0;")
DOCUMENT = ("G\\PN:Name;G\\106:09;G\\DSI\\N:2;G\\DSI-1:RF1;G\\DST-1:RF;G\\DSI-2:RF2;G\\DST-2:RF;"
            "G\\COM:a value;" + "".join((SOURCE + STREAM) % {"n": n} for n in (1, 2)) +
            "R-1\\ID:RF2;R-1\\TK\\N:2;R-1\\TK1-1:1;R-1\\TK2-1:PC-TK;R-1\\TK1-2:2;R-1\\TK2-2:AN-TK;"
            "A-1\\DLN:PAM;A-1\\A:1;B-1\\DLN:BUS;B-1\\NBS\\N:1;S-1\\DLN:MSG;V-1\\ID:RF1;V-1\\X:1;"
            "H\\X:1;C-4\\DCN:A1;C-4\\TRD1:type one;C-4\\DCT:COE;C-4\\CO\\N:1;C-4\\CO:1.5;C-4\\CO-1:2.5;"
            "C-7\\DCN:B2;C-7\\TRD1:type two;C-7\\DCT:NON;")
BANNER = b"COMMENT: This file saved on "


def commented():
    """The document with a comment in front of every command, and one at its end."""
    commands = DOCUMENT.split(";")[:-1]
    text = "".join("COMMENT: %d in front of %s\nover two lines;%s;\r\n" % (
        number, command.split(":")[0], command) for number, command in enumerate(commands))
    return text + "COMMENT: %d at the end\nover two lines;" % len(commands), commands


def key(command):
    """A command whatever its group and row are."""
    code, _, value = command.partition(":")
    letter, _, field = code.partition("\\")
    return letter[0] + "\\" + re.sub(r"-\d+", "-n", field), value


class CommentTest(kavu.KavuTest):
    def commands_saved(self, name="out.tma"):
        return [command.lstrip("\r\n") for command in self.read(name).decode().split(";")][:-1]

    def comments_in(self, commands):
        """What follows each comment: its number to the next command."""
        found = {}
        for place, command in enumerate(commands):
            number = re.match(r"COMMENT: (\d+) [^;]*\r\nover two lines$", command)
            if number:
                self.assertNotIn(int(number.group(1)), found, "twice")
                rest = (each for each in commands[place:] if not each.startswith("COMMENT:"))
                found[int(number.group(1))] = next(rest, None)
        return found

    def assertInPlace(self, what, gone=(), changed=()):
        """Checks that each comment is in front of its command, if that is still there."""
        saved = self.commands_saved()
        found = self.comments_in(saved)
        self.assertEqual(sum(command.startswith(BANNER.decode()) for command in saved),
                         1 if self.banner else 0)
        keys = [key(command) for command in saved if not command.startswith("COMMENT:")]
        compared = 0
        for number, command in enumerate(self.commands):
            if command.startswith(gone):
                continue
            self.assertIn(number, found, (what, command))
            # A command that is there once is the one; of others it is the code that counts.
            if keys.count(key(command)) == 1 and not command.startswith(changed):
                self.assertEqual(key(found[number] or ":"), key(command), (what, command))
                compared += 1
        self.assertIn(len(self.commands), found, what)
        return compared

    def run_on_comments(self, *command, options=("--keep-comments",), banner=True):
        text, self.commands = commented()
        self.banner = banner
        self.write("in.tma", text)
        result = self.run_json(*options, *command, "-o", "out.tma")
        self.assertIn(result.status, (CLEAN, REPORTED), result)
        return result

    def test_they_are_left_out_and_counted(self):
        result = self.run_on_comments("save", "in.tma", options=())
        count = len(self.commands) + 1
        self.assertEqual(result.status, REPORTED)
        self.assertEqual([message["text"] for message in result.json["messages"]
                          if message["id"] == 0],
                         ["%d comments of the file are left out, the first at line 2: "
                          "COMMENT: 0 in front of G\\PN  over two lines;" % count])
        self.assertIs(result.json["changed"], False)
        saved = self.read("out.tma")
        self.assertEqual(saved.count(b"COMMENT:"), 5)
        # The program's own banner is none of them.
        again = self.run_json("check", "out.tma")
        self.assertEqual([m for m in again.json["messages"] if m["id"] == 0], [])
        self.assertEqual(again.notes, [])

    def test_a_banner_that_somebody_has_changed_is_a_comment(self):
        self.run_on_comments("save", "in.tma", options=())
        saved = self.read("out.tma")
        for old, new in ((b"COMMENT: Help:", b"COMMENT: See"), (b"COMMENT: **", b"COMMENT: +*"),
                         (b"saved on", b"saved by")):
            self.assertIn("5 comments", " ".join(self.check(saved.replace(old, new, 1)).notes))

    def test_a_save_keeps_each_in_its_place(self):
        result = self.run_on_comments("save", "in.tma")
        self.assertEqual([note for note in result.notes if "comment" in note], [])
        self.assertGreater(self.assertInPlace("save"), 50)
        first = self.read("out.tma")
        # Those of the C group and of the G group, too, which are written again.
        self.assertIn(b"over two lines;\r\nC-1\\CO:1.5;\r\n", first)
        self.assertIn(b"over two lines;\r\nG\\106:09;\r\n", first)
        for _ in range(2):
            self.run_json("--keep-comments", "save", "out.tma", "-o", "out.tma")
            self.assertEqual(self.read("out.tma"), first)

    def test_a_document_of_1996_keeps_them_without_a_banner(self):
        self.write("old.ini", "[KAVU-9]\r\nIRIGInputVersion=1996\r\nKeepComments=1\r\n")
        self.write("in.tma", "COMMENT: one;G\\PN:A;COMMENT: two;")
        self.run_json("--settings", "old.ini", "save", "in.tma", "-o", "out.tma")
        self.assertEqual(self.read("out.tma"), b"COMMENT: one;\r\nG\\PN:A;\r\nCOMMENT: two;\r\n")

    def test_every_edit_keeps_them(self):
        for command in (("set", "in.tma", "T-1\\RF1=2300", "R-1\\RI1=x", "M-2\\BB2=POS", "G\\TA=y",
                         "G\\PN=", "A-1\\A2=N", "T-2\\RF2=10"),
                        ("rewrite", "in.tma", "L1"), ("word-frame", "in.tma", "L2"),
                        ("link", "rename", "in.tma", "L1", "New"),
                        ("source", "rename", "in.tma", "RF1", "New"),
                        ("source", "copy", "in.tma", "RF2", "Copy")):
            with self.subTest(command=command):
                self.run_on_comments(*command)
                # Word/frame locations take the place of the others.
                changed = ("D-2\\MF",) if command[0] == "word-frame" else ()
                self.assertGreater(self.assertInPlace(command, changed=changed), 30)

    def test_a_renumbering_keeps_them(self):
        self.run_on_comments("--answer-all", "yes", "source", "delete", "in.tma", "RF1")
        self.assertIn(b"T-1\\ID:RF2;", self.read("out.tma"))
        # With the source goes what nothing names.
        gone = tuple("%s-1\\" % letter for letter in "TMPDVABS")
        self.assertGreater(self.assertInPlace("delete", gone), 50)

    def test_a_measurement_that_has_moved_takes_its_comments_along(self):
        # The display sorts measurements by their place in the frame: C, B, A.
        self.run_on_comments("rewrite", "in.tma", "L1")
        saved = self.commands_saved()
        found = self.comments_in(saved)
        for name in ("A1", "B1", "C1"):
            number = next(i for i, command in enumerate(self.commands)
                          if command.startswith("D-1\\MN-1-") and command.endswith(name))
            self.assertTrue(found[number].endswith(":" + name), found[number])
            row = found[number].split(":")[0][len("D-1\\MN"):]
            self.assertTrue(found[number + 2].startswith("D-1\\MF" + row + ":"), found[number + 2])
        self.assertIn("D-1\\MN-1-1:C1", saved)

    def test_another_edition_keeps_them(self):
        for edition in (1996, 1999, 2004, 2005, 2011):
            with self.subTest(edition=edition):
                self.run_on_comments("save", "in.tma", "--edition", str(edition),
                                     banner=edition >= 1999)
                gone = (("S-",) if edition < 2005 else ()) + (("V-",) if edition < 2004 else ())
                self.assertInPlace(edition, gone)

    def test_comments_around_commands_that_are_left_out_are_kept(self):
        data = ("G\\106:09;COMMENT: 1;X-1\\A:1;COMMENT: 2;T-100\\A:1;COMMENT: 3;T-1\\ID:x;"
                "COMMENT: 4;C-1\\DCT:NON;COMMENT: 5;C-2;COMMENT: 6;C-3\\DCN:A;COMMENT: 7;"
                "C-3\\NOSUCH:1;COMMENT: 8;C-3\\TRD1:x;COMMENT: 9;C-4\\DCN:A;")
        self.write("in.tma", data)
        self.run_json("--keep-comments", "save", "in.tma", "-o", "out.tma")
        rest = self.read("out.tma").split(b"*;\r\n")[2].decode().split("\r\n")
        self.assertEqual(rest, [
            "G\\FN:out.tma;", "G\\106:09;", "COMMENT: 1;", "COMMENT: 2;", "COMMENT: 3;", "T-1\\ID:x;",
            "COMMENT: 6;", "COMMENT: 9;", "C-1\\DCN:A;", "COMMENT: 8;", "C-1\\TRD1:x;", "C-1\\MC\\N:N;",
            "C-1\\MA\\N:N;", "C-1\\DCT:NON;", "COMMENT: 7;", "COMMENT: 4;", "COMMENT: 5;", "C-2;", ""])


if __name__ == "__main__":
    kavu.main()
