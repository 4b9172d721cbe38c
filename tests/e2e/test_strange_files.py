"""Real files are stranger than the examples of a standard: each case, and what is reported."""

import os
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED

G = "[kavu]GTMP.G"
STRANGE = os.path.join(kavu.DATA, "strange")


class StrangeTest(kavu.KavuTest):
    def opened(self, data, status=CLEAN):
        """Opens a document; its working store and the remarks of the load."""
        self.write("strange.tma", data)
        result = self.run_json("store", "strange.tma", "--into", "store-%d" % self.count())
        self.assertEqual(result.status, status, result)
        self.result = result
        return self.store_files(result.json["into"]), result.notes

    def count(self):
        self.number = getattr(self, "number", 0) + 1
        return self.number

    def one_note(self, notes, *parts):
        self.assertEqual(len(notes), 1, notes)
        for part in parts:
            self.assertIn(part, notes[0])

    def test_everything_on_one_line(self):
        files, notes = self.opened("G\\106:09;G\\PN:A;T-1\\ID:X;P-1\\TF:ONE;P-1\\D1:NRZ-L;")
        self.assertEqual(files[G], b"G\\106:09;\r\nG\\PN:A;\r\n")
        self.assertEqual(files["[kavu]PCMFMT.P01"], b"P-1\\TF:ONE;\r\nP-1\\D1:NRZ-L;\r\n")
        self.assertEqual(notes, [])

    def test_carriage_return_alone_as_line_end(self):
        files, notes = self.opened("G\\106:09;\rG\\PN:A\rB;\r")
        self.assertEqual(files[G], b"G\\106:09;\r\nG\\PN:A\x14B;\r\n")
        self.assertEqual(notes, [])

    def test_tabs_behind_the_colon_are_part_of_the_value(self):
        files, _ = self.opened("G\\106:09;G\\PN:\tA;")
        self.assertEqual(files[G], b"G\\106:09;\r\nG\\PN:\tA;\r\n")

    def test_nul_bytes_are_kept_and_remarked(self):
        files, notes = self.opened(b"G\\106:09;\r\nG\\PN:a\0b;\r\n")
        self.assertEqual(files[G], b"G\\106:09;\r\nG\\PN:a\0b;\r\n")
        self.one_note(notes, "NUL bytes", "line 2")
        self.assertIn(b"G\\PN:a\0b;\r\n", self.saved(b"G\\106:09;\r\nG\\PN:a\0b;\r\n"))

    def test_a_byte_order_mark_is_left_out_and_remarked(self):
        files, notes = self.opened(b"\xef\xbb\xbfG\\106:09;", REPORTED)
        self.assertEqual(files[G], b"G\\106:09;\r\n")
        self.one_note(notes, "byte order mark")
        self.assertNotIn(b"\xef\xbb\xbf", self.saved(b"\xef\xbb\xbfG\\106:09;"))

    def test_filler_after_the_last_command_is_left_out_and_told(self):
        # Setup records of recordings are filled with NUL up to the length of a packet.
        data = b"G\\106:09;\r\nG\\PN:A;\r\n"
        padded = data + b"\0" * 70000 + b" \r\n\x1a"
        files, notes = self.opened(padded, REPORTED)
        self.assertEqual(files[G], data)
        self.one_note(notes, "70006 bytes of filler")
        self.assertEqual(self.result.ids(), [0])
        self.assertIs(self.result.json["changed"], False)
        self.assertEqual(self.saved(padded), self.saved(data))
        self.check(data + b"\r\n \t\r\n", status=CLEAN)
        for partial in (data + b"\0\0G\\TA", data + b"G\\TA\0\0", b"\0\0"):
            self.assertEqual(self.check(partial, status=FAILED).ids(), [157])

    def test_no_end_of_line_at_the_end(self):
        files, notes = self.opened("G\\106:09;\r\nG\\PN:A;")
        self.assertEqual(files[G], b"G\\106:09;\r\nG\\PN:A;\r\n")
        self.assertEqual(notes, [])

    def test_a_semicolon_typed_as_a_colon_joins_two_commands_and_is_remarked(self):
        files, notes = self.opened("G\\106:09;\r\nG\\PN:A:\r\nG\\TA:B;\r\nG\\OD:x;\r\n")
        self.assertEqual(files[G], b"G\\106:09;\r\nG\\PN:A:\x14\x15G\\TA:B;\r\nG\\OD:x;\r\n")
        self.one_note(notes, "looks like another command", "G\\TA:B;")

    def test_upper_and_lower_case_mixed(self):
        files, notes = self.opened("G\\106:09;g\\PN:A;G\\pn:B;p-1\\TF:ONE;", REPORTED)
        self.assertEqual(files[G], b"G\\106:09;\r\nG\\pn:B;\r\n")
        self.one_note(notes, "2 commands of no known group")

    def test_a_value_of_100_megabytes(self):
        value = b"0123456789" * 10000000
        data = b"G\\106:09;G\\COM:" + value + b";\r\n"
        self.assertIn(b"G\\COM:" + value + b";\r\n", self.saved(data))

    def test_two_data_sources_of_one_name(self):
        files, _ = self.opened("G\\106:09;G\\DSI\\N:2;G\\DSI-1:A;G\\DSI-2:A;T-1\\ID:A;T-2\\ID:A;")
        self.assertIn("[kavu]DSRCE.T01", files)
        self.assertIn("[kavu]DSRCE.T02", files)

    def test_one_code_ninety_times_keeps_its_order(self):
        commands = b"".join(b"R-1\\COM:%d;\r\n" % (i * 37 % 90) for i in range(90))
        self.assertIn(commands, self.saved(b"G\\106:09;" + commands))

    def test_groups_interleaved(self):
        data = b"".join(b"T-%d\\X%d:a;P-%d\\X%d:b;" % (i % 3 + 1, i, i % 2 + 1, i)
                        for i in range(12))
        files, notes = self.opened(b"G\\106:09;" + data)
        self.assertEqual(files["[kavu]DSRCE.T01"],
                         b"".join(b"T-1\\X%d:a;\r\n" % i for i in range(0, 12, 3)))
        self.assertEqual(files["[kavu]PCMFMT.P02"],
                         b"".join(b"P-2\\X%d:b;\r\n" % i for i in range(1, 12, 2)))
        self.assertEqual(notes, [])

    def test_an_index_with_leading_zeros_is_its_number(self):
        files, notes = self.opened("G\\106:09;P-01\\TF:ONE;P-1\\D1:X;P-001\\D2:Y;", REPORTED)
        self.assertEqual(files["[kavu]PCMFMT.P01"],
                         b"P-1\\TF:ONE;\r\nP-1\\D1:X;\r\nP-1\\D2:Y;\r\n")
        self.one_note(notes, "2 commands have an index with a 0", "line 2", "P-01\\TF:ONE;")
        self.assertEqual(self.result.ids(), [0])
        self.assertIs(self.result.json["changed"], True)

    def test_a_document_of_leading_zeros_is_the_one_without_them(self):
        data = ("G\\106:09;G\\DSI\\N:1;G\\DSI-%(n)s:RF;G\\DST-%(n)s:RF;T-%(n)s\\ID:RF;"
                "T-%(n)s\\RF1:2200;M-%(n)s\\ID:RF;M-%(n)s\\BB\\DLN:L;P-%(n)s\\DLN:L;P-%(n)s\\TF:ONE;"
                "P-%(n)s\\F1:16;P-%(n)s\\MF\\N:1;P-%(n)s\\MF1:4;P-%(n)s\\MF2:64;P-%(n)s\\MF4:16;"
                "D-%(n)s\\DLN:L;D-%(n)s\\ML\\N:1;D-%(n)s\\MLN-%(n)s:List;D-%(n)s\\MN\\N-%(n)s:1;"
                "D-%(n)s\\MN-%(n)s-%(n)s:A;D-%(n)s\\LT-%(n)s-%(n)s:MF;D-%(n)s\\MF-%(n)s-%(n)s:2;"
                "C-%(n)s\\DCN:A;C-%(n)s\\DCT:COE;C-%(n)s\\CO\\N:1;C-%(n)s\\CO:1;C-%(n)s\\CO-%(n)s:2;")
        runs = []
        for number in ("1", "01", "0001"):
            name = "in.tma"
            self.write(name, data % {"n": number})
            stream = self.run_json("stream", name, "L").json
            tree = self.run_json("tree", name).json
            records = self.run_json("conversions", name).json["conversions"]
            values = self.run_json("get", name, "T-1\\RF1", "T-01\\RF1").json["values"]
            saved = self.saved(data % {"n": number})
            renamed = self.run_json("link", "rename", name, "L", "New", "-o", "out.tma")
            self.assertTrue(renamed.json["opened"], renamed)
            runs.append((stream["cells"], stream["attributes"], tree["dataSources"], records,
                         values, saved, self.read("out.tma")))
        self.assertEqual(runs[0][4], {"T-1\\RF1": ["2200"], "T-01\\RF1": ["2200"]})
        self.assertEqual([cell["measurements"][0]["Name"] for cell in runs[0][0]], ["A"])
        self.assertEqual(runs[1], runs[0])
        self.assertEqual(runs[2], runs[0])

    def test_an_index_of_0_is_lost_and_remarked(self):
        _, notes = self.opened("G\\106:09;\r\nP-0\\TF:ONE;\r\n", REPORTED)
        self.one_note(notes, "not 1 to 99", "P-0\\TF:ONE;")
        self.assertNotIn(b"P-0", self.saved("G\\106:09;P-0\\TF:ONE;"))

    def test_a_comment_without_its_semicolon_swallows_the_next_command(self):
        files, notes = self.opened(
            "G\\106:09;\r\nCOMMENT: note\r\nG\\PN:A;\r\nG\\TA:B;\r\n", REPORTED)
        self.assertEqual(files[G], b"G\\106:09;\r\nG\\TA:B;\r\n")
        self.assertEqual(len(notes), 2, notes)
        self.assertIn("a comment of the file is left out", notes[0])
        self.assertIn("COMMENT without its semicolon", notes[1])
        self.assertIn("G\\PN:A;", notes[1])

    def test_a_code_without_a_colon_is_kept_and_remarked(self):
        files, notes = self.opened("G\\106:09;\r\nG\\PN;\r\n")
        self.assertEqual(files[G], b"G\\106:09;\r\nG\\PN;\r\n")
        self.one_note(notes, "without a colon", "G\\PN;", "Line 2")

    def test_dates_of_other_forms_stay_as_they_are(self):
        dates = ("G\\OD:2009-03-01;\r\nG\\RD:1 March 2009;\r\nG\\UD:03/01/09;\r\n")
        self.assertIn(dates.encode(), self.saved("G\\106:09;\r\n" + dates))

    def test_text_in_front_of_binary_bytes_is_refused_as_cut_off(self):
        binary = bytes(range(128, 256)) * 4
        self.write("strange.tma", b"G\\106:09;\r\n" + binary)
        result = self.run_json("check", "strange.tma")
        self.assertEqual(result.status, FAILED)
        self.assertEqual(result.ids(), [157])

    def test_text_behind_binary_bytes_loses_its_first_command_and_is_remarked(self):
        binary = bytes(range(128, 256)) * 4
        files, notes = self.opened(binary + b"G\\PN:A;\r\nG\\106:09;\r\n", REPORTED)
        self.assertEqual(files[G], b"G\\106:09;\r\n")
        self.one_note(notes, "no known group")

    def test_only_binary_bytes(self):
        self.write("strange.tma", bytes(range(256)) * 16)
        result = self.run_json("check", "strange.tma")
        # The byte of the semicolon is among them: garbled commands, and the rest is cut off.
        self.assertEqual(result.status, FAILED)
        self.assertEqual(result.ids(), [157])


class StrangeFilesTest(kavu.KavuTest):
    """Every strange file of the repository: opened, or refused with a message."""

    def files(self):
        self.assertTrue(os.path.isdir(STRANGE), STRANGE)
        names = sorted(name for name in os.listdir(STRANGE) if name.endswith((".tma", ".tmt")))
        self.assertTrue(names)
        return [(name, os.path.join(STRANGE, name)) for name in names]

    def test_each_is_opened_or_refused_with_a_message(self):
        for name, path in self.files():
            with self.subTest(file=name):
                result = self.run_json("check", path)
                if result.status == FAILED:
                    self.assertIs(result.json["opened"], False)
                    self.assertTrue(result.json["messages"], result)
                else:
                    self.assertIs(result.json["opened"], True)

    def test_each_that_is_opened_is_saved_and_then_stays_as_it_is(self):
        for name, path in self.files():
            with self.subTest(file=name):
                if self.run_json("save", path, "-o", "once.tma").status == FAILED:
                    continue
                os.replace(self.path("once.tma"), self.path("first.tma"))
                self.run_json("save", "first.tma", "-o", "once.tma")
                self.assertEqual(self.read("once.tma"), self.read("first.tma"))


if __name__ == "__main__":
    kavu.main()
