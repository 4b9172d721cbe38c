"""`vocabulary`, `get`, `set`: the commands of the attribute groups by their codes."""

import os
import re
import unittest

import kavu
from kavu import CLEAN, FAILED, USAGE

FLIGHT = (
    "G\\PN:FLIGHT;G\\106:09;G\\X:1;G\\POC\\N:1;G\\POC1-1:Me;G\\DSI\\N:2;G\\DSI-1:Radio;"
    "G\\DST-1:RF;G\\DSI-2:Tape;G\\DST-2:TAP;G\\X:2;G\\COM:one\r\ntwo;"
    "T-1\\ID:Radio;T-1\\RF1:2200.5;T-1\\ZZ:unknown;R-1\\ID:Tape;"
    "M-1\\ID:Radio;M-1\\BSG1:PCM;M-1\\BB\\DLN:Link;M-2\\ID:Tape;M-2\\BSG1:OTH;"
    "P-1\\DLN:Link;P-1\\TF:ONE;P-1\\D2:1000000;"
)


class VocabularyTest(kavu.KavuTest):
    def fields(self, *arguments):
        result = self.run_json("vocabulary", *arguments)
        self.assertEqual(result.status, CLEAN, result)
        return result.json

    def test_the_members_have_their_names_and_order(self):
        document = self.fields("T")
        self.assertEqual(list(document)[:3], ["group", "edition", "fields"])
        self.assertEqual((document["group"], document["edition"]), ("T", 2011))
        field = [each for each in document["fields"] if each["code"] == "RF1"][0]
        self.assertEqual(list(field)[:9], ["code", "label", "page", "limit", "kind", "from", "to",
                                           "element", "choices"])
        self.assertEqual([field[key] for key in list(field)[:9]],
                         ["RF1", "Frequency:", "RF1", 6, "text", 1996, 0,
                          "SourceRFAttributes/Frequency", []])

    def test_choices_have_value_text_and_xml(self):
        fields = self.fields("T")["fields"]
        choices = [each for each in fields if each["code"] == "RF4"][0]["choices"]
        self.assertEqual(choices[0], {"value": "FM", "text": "FM", "xml": "FM"})
        self.assertIn({"value": "OTHR", "text": "OTHR", "xml": "Other"}, choices)

    def test_the_edition_decides_what_there_is(self):
        limits = {}
        for edition in ("1996", "1999", "2011"):
            fields = {each["code"]: each for each in self.fields("T", "--edition", edition)["fields"]}
            limits[edition] = fields["RF4"]["limit"]
        self.assertEqual(limits, {"1996": 5, "1999": 4, "2011": 8})
        codes = [each["code"] for each in self.fields("r", "--edition", "2007")["fields"]]
        self.assertNotIn("RML", codes)
        self.assertIn("RML", [each["code"] for each in self.fields("R")["fields"]])

    def test_every_group_with_a_table_is_served_in_file_order(self):
        firsts = {letter: self.fields(letter)["fields"][0]["code"] for letter in "GTRMPDBSAC"}
        self.assertEqual(firsts, {"G": "PN", "T": "ID", "R": "ID", "M": "ID", "P": "DLN", "D": "DLN", "B": "DLN",
                                  "S": "DLN", "A": "DLN", "C": "DCN"})
        codes = [each["code"] for each in self.fields("R")["fields"]]
        self.assertLess(codes.index("TK1-n"), codes.index("COM"))
        self.assertIn("ADL-n-m", codes)

    def test_the_stream_group_has_its_counters_and_embedded_formats(self):
        for edition, has_subframes in (("2009", True), ("2011", False)):
            fields = {each["code"]: each for each in self.fields("P", "--edition", edition)["fields"]}
            self.assertEqual("SF4-n-m-k" in fields, has_subframes, edition)
            self.assertEqual("AEF8-n-k-j" in fields, not has_subframes, edition)
        self.assertEqual([each["value"] for each in fields["IDC10-n"]["choices"]], ["INC", "DEC"])
        codes = list(fields)
        self.assertLess(codes.index("MFW1-n"), codes.index("ISF\\N"))
        self.assertLess(codes.index("AEF6-n-k"), codes.index("ADM\\N"))
        self.assertEqual(codes[-1], "COM")

    def test_a_conversion_record_has_the_commands_of_all_types(self):
        fields = {each["code"]: each for each in self.fields("C")["fields"]}
        codes = list(fields)
        self.assertLess(codes.index("TRD1"), codes.index("DCT"))
        self.assertLess(codes.index("DCT"), codes.index("PS\\N"))
        self.assertLess(codes.index("VID\\D"), codes.index("COM"))
        self.assertEqual(fields["MC2-n"]["list"], "MC\\N")
        self.assertEqual((fields["MC\\N"]["kind"], fields["MC\\N"]["rows"]), ("count", 9))
        self.assertEqual((fields["DCN"]["limit"], fields["TRD4"]["limit"]), (32, 2))
        types = [each["value"] for each in fields["DCT"]["choices"]]
        self.assertEqual(types[:4] + types[-3:], ["NON", "PRS", "COE", "NPC", "SP", "VID", "VOI"])
        older = {each["code"]: each for each in self.fields("C", "--edition", "1996")["fields"]}
        self.assertEqual((older["TRD4"]["limit"], older["VOI\\E"]["limit"]), (4, 64))
        self.assertIn("MA1", older)
        self.assertNotIn("MA1-n", older)
        self.assertNotIn("NPC1", older)
        self.assertIn("MA1-n", fields)
        self.assertNotIn("MA1", fields)

    def test_measurements_have_the_texts_of_their_dialog(self):
        fields = {each["code"]: each for each in self.fields("D", "--edition", "2009")["fields"]}
        texts = {code: [each["text"] for each in fields[code]["choices"]]
                 for code in ("MN1-n-m", "MN2-n-m", "MN3-n-m", "MFOT-n-m", "WFT-n-m-k-f")}
        orders = ["MSB", "LSB", "Default"]
        self.assertEqual(texts, {"MN1-n-m": ["EVEN", "ODD", "NONE", "DEFAULT"],
                                 "MN2-n-m": ["Leads Word", "Trails Word", "Default"],
                                 "MN3-n-m": orders, "WFT-n-m-k-f": orders,
                                 "MFOT-n-m": ["Overwrite", "Filter", "No Filtering"]})
        self.assertEqual(fields["MN1-n-m"]["choices"][0],
                         {"value": "EV", "text": "EVEN", "xml": "Even"})

    def test_a_person_reads_a_table(self):
        result = self.run_cli("vocabulary", "G")
        self.assertEqual(result.status, CLEAN, result)
        self.assertIn("General information (G), IRIG 106-11 (2011)", result.text)
        self.assertRegex(result.text, r"(?m)^SC +1 +choice +Security Classification: +U, C, S, T, O$")

    def test_a_group_without_a_table_is_wrong_usage(self):
        for arguments in (["X"], [""], ["GT"], ["H"], ["G", "--edition", "1998"], []):
            self.assertEqual(self.run_cli("vocabulary", *arguments).status, USAGE, arguments)


class GetTest(kavu.KavuTest):
    def setUp(self):
        super().setUp()
        self.write("in.tma", FLIGHT)

    def test_every_command_of_a_code_in_file_order(self):
        result = self.run_json("get", "in.tma", "G\\X", "p-1\\d2", "G\\COM", "G\\NONE", "T-7\\ID")
        self.assertEqual(result.status, CLEAN, result)
        self.assertEqual(list(result.json)[-1], "values")
        self.assertEqual(result.json["values"], {"G\\X": ["1", "2"], "p-1\\d2": ["1000000"],
                                                 "G\\COM": ["one\r\ntwo"], "G\\NONE": [],
                                                 "T-7\\ID": []})

    def test_a_person_reads_lines(self):
        result = self.run_cli("get", "in.tma", "G\\X", "T-1\\RF1")
        self.assertEqual(result.text.splitlines()[:3], ["G\\X      1", "G\\X      2",
                                                        "T-1\\RF1  2200.5"])

    def test_a_command_of_a_large_group_takes_no_more_memory_than_the_open(self):
        # In pieces: what this process holds would count as the program's until that is running.
        with open(self.path("large.tma"), "w", encoding="ascii") as file:
            file.write("G\\PN:x;P-1\\DLN:L;D-1\\DLN:L;")
            for number in range(1, 200001):
                file.write(f"D-1\\MN-1-{number}:{number:060};")
        peaks = []
        for code, expected in (("G\\PN", "x"), ("D-1\\MN-1-77", f"{77:060}")):
            process = self.start("--quiet", "get", "large.tma", code)
            self.addCleanup(process.stdout.close)
            self.addCleanup(process.stderr.close)
            self.assertIn(expected, process.stdout.read().decode("ascii"))
            _, _, usage = os.wait4(process.pid, 0)
            process.returncode = 0
            peaks.append(usage.ru_maxrss)
        # In kilobytes: less than half of what the group would take.
        self.assertLess(peaks[1] - peaks[0], 4096, peaks)

    def test_what_is_no_code_is_wrong_usage(self):
        for code in ("PN", "G\\", "T\\RF1", "T-100\\RF1", "C-1\\DCN", "G\\PN:x"):
            self.assertEqual(self.run_cli("get", "in.tma", code).status, USAGE, code)
        self.assertEqual(self.run_cli("get", "in.tma").status, USAGE)


class SetTest(kavu.KavuTest):
    def setUp(self):
        super().setUp()
        self.write("in.tma", FLIGHT)

    def set(self, *assignments):
        result = self.run_json("set", "in.tma", *assignments, "-o", "out.tma")
        self.assertEqual(result.status, CLEAN, result)
        return result.json

    def values(self, *codes):
        return self.run_json("get", "out.tma", *codes).json["values"]

    def lines(self, name):
        return [line for line in self.read(name).decode("latin-1").split("\r\n")
                if not line.startswith(("COMMENT", "G\\FN"))]

    def refusal(self, *assignments):
        result = self.run_json("set", "in.tma", *assignments, "-o", "out.tma")
        self.assertEqual(result.status, FAILED, result)
        self.assertFalse(self.exists("out.tma"))
        self.assertFalse(result.json["changed"])
        return result.json["messages"][-1]["text"].split("\n\n")[-1]

    def test_only_what_was_set_differs_from_a_save(self):
        document = self.set("G\\PN=NEW", "T-1\\RF2=4", "G\\SC=top")
        self.assertEqual((document["changed"], document["output"]), (True, "out.tma"))
        self.run_cli("save", "in.tma", "-o", "plain.tma")
        before, after = self.lines("plain.tma"), self.lines("out.tma")
        self.assertEqual([line for line in after if line not in before],
                         ["G\\PN:NEW;", "G\\SC:T;", "T-1\\RF2:4;"])
        self.assertEqual([line for line in before if line not in after], ["G\\PN:FLIGHT;"])
        self.assertEqual(after.index("T-1\\RF2:4;"), after.index("T-1\\RF1:2200.5;") + 1)

    def test_an_empty_value_removes(self):
        self.set("G\\PN=", "T-1\\RF1=")
        self.assertEqual(self.values("G\\PN", "T-1\\RF1", "T-1\\ZZ"),
                         {"G\\PN": [], "T-1\\RF1": [], "T-1\\ZZ": ["unknown"]})

    def test_a_value_may_hold_anything_but_a_semicolon(self):
        self.set("G\\COM=a=b:c\nd", "T-1\\TID=[x, y]")
        self.assertEqual(self.values("G\\COM", "T-1\\TID"),
                         {"G\\COM": ["a=b:c\r\nd"], "T-1\\TID": ["[x, y]"]})

    def test_the_vocabulary_refuses_with_a_reason(self):
        self.assertEqual(self.refusal("G\\PN=" + "x" * 17),
                         "The value can only be 16 characters long.")
        self.assertEqual(self.refusal("G\\PN=a;b"), "A value cannot hold a semi-colon.")
        self.assertEqual(self.refusal("G\\SC=Q"), "The value is not one of: U, C, S, T, O.")
        self.assertEqual(self.refusal("G\\OD=12-31-99"),
                         "The value is not of the form MM-DD-YYYY.")
        self.assertEqual(self.refusal("G\\POC\\N=10"), "The list can have 9 rows.")
        self.assertEqual(self.refusal("G\\POC1-2=You"),
                         "The list has 1 rows. Set 'G\\POC\\N' first.")
        self.assertTrue(self.refusal("R-1\\RML=I").startswith("It is known from IRIG 106-11"))
        self.assertEqual(self.refusal("P-1\\D2=1"),
                         "The commands of group P cannot be set one by one.")
        self.assertEqual(self.refusal("T-2\\RF1=1"),
                         "There is no group T-2 in this document.")

    def test_every_value_that_the_vocabulary_lists_is_accepted(self):
        # A cut text, and what XML has for it.
        cut = {("AN2", "LINE"): "LIN", ("GST5", "Non"): "NON"}
        recorder = b"".join(b"R-1\\%s:1;" % code for code in
                            (b"N", b"TK1-1", b"ACH\\N-1", b"NDM\\N-1", b"NUS\\N-1", b"MFD\\N-1",
                             b"EV\\N", b"RT\\N", b"RIM\\N", b"RMM\\N"))
        self.write("in.tma", FLIGHT.replace("G\\106:09", "G\\106:11").encode() + recorder +
                   b"M-1\\SI\\N:1;A-1\\DLN:Link;A-1\\ISF\\N:1;A-1\\SF\\N:1;")
        tried = 0
        for letter in "GTRMA":
            head = "G\\" if letter == "G" else letter + "-1\\"
            for field in self.run_json("vocabulary", letter).json["fields"]:
                code = head + re.sub(r"-[a-z](?=-|$)", "-1", field["code"])
                for choice in field["choices"]:
                    value = choice["value"]
                    result = self.run_json("--overwrite", "set", "in.tma", code + "=" + value,
                                           "-o", "out.tma")
                    self.assertNotEqual(result.status, FAILED, result)
                    stored = cut.get((field["code"], value), value)
                    self.assertEqual(self.values(code)[code], [stored])
                    tried += 1
        self.assertGreater(tried, 200)

    def test_a_text_is_stored_as_the_value_that_xml_knows(self):
        for assignment, stored in (("R-1\\TC1=SSR", "SSR"), ("R-1\\TC1=solid state recorder", "SSR"),
                                   ("T-1\\RF4=SOQPSK-TG", "SOQPSK-TG"), ("T-1\\AN2=LINEAR", "LIN"),
                                   ("T-1\\GST5=None", "NON")):
            self.set(assignment)
            code = assignment.split("=")[0]
            self.assertEqual(self.values(code)[code], [stored])
        os.remove(self.path("out.tma"))
        self.assertEqual(self.refusal("R-1\\TC1=Drum"),
                         "The value is not one of: ANAL, HDDR, PARA, OTHR, CASS, SSR, MD, N.")

    def test_rows_that_do_not_exist_are_refused(self):
        self.write("in.tma", FLIGHT.encode() + b"R-1\\N:2;R-1\\TK1-1:1;R-1\\ACH\\N-1:1;"
                   b"R-1\\AMN-1-1:M;")
        for assignment, rows, count in (("R-1\\CHE-4=T", 2, "R-1\\N"), ("R-1\\TK1-50=3", 2, "R-1\\N"),
                                        ("R-1\\TK1-1000=3", 2, "R-1\\N"),
                                        ("R-1\\AMN-1-3=x", 1, "R-1\\ACH\\N-1"),
                                        ("R-1\\AMN-4-1=x", 2, "R-1\\N"),
                                        ("R-1\\ACH\\N-9=1", 2, "R-1\\N"),
                                        ("R-1\\EV\\ID-2=x", 0, "R-1\\EV\\N"),
                                        ("G\\DST-3=RF", 2, "G\\DSI\\N")):
            self.assertEqual(self.refusal(assignment),
                             "The list has %d rows. Set '%s' first." % (rows, count))

    def test_the_row_after_the_last_track_is_a_new_one(self):
        self.write("in.tma", FLIGHT.encode() + b"R-1\\N:1;R-1\\TK1-1:1;R-1\\CHE-3:T;")
        result = self.run_json("set", "in.tma", "R-1\\TK1-2=5", "R-1\\CHE-2=T", "R-1\\AMN-2-1=M",
                               "-o", "out.tma")
        self.assertEqual(result.status, CLEAN, result)
        self.assertEqual(result.notes, ["R-1\\N is 2 now: the row is a new one.",
                                        "R-1\\ACH\\N-2 is 1 now: the row is a new one."])
        codes = ("R-1\\N", "R-1\\TK1-2", "R-1\\CHE-2", "R-1\\ACH\\N-2", "R-1\\AMN-2-1")
        self.assertEqual(self.values(*codes), dict(zip(codes, (["2"], ["5"], ["T"], ["1"], ["M"]))))
        # What the file has of a row behind the count is not the property of a new one.
        os.rename(self.path("out.tma"), self.path("in.tma"))
        self.assertIn("Row 3 was behind the count", self.refusal("R-1\\TK3-3=REV"))
        self.write("in.tma", FLIGHT.encode() + b"R-1\\N:2;R-1\\TK1-1:1;R-1\\TK1-2:2;R-1\\AMN-1-1:old;")
        self.assertIn("Row 1 was behind the count", self.refusal("R-1\\AMN-1-1=new"))
        self.set("R-1\\AMN-2-1=new")

    def test_names_are_changed_by_the_commands_for_it(self):
        for assignment in ("G\\DSI-1=New", "T-1\\ID=New", "M-1\\ID="):
            self.assertIn("'source rename'", self.refusal(assignment))
        self.assertIn("'link rename'", self.refusal("M-1\\BB\\DLN=New"))
        self.assertIn("'source delete'", self.refusal("G\\DSI\\N=1"))

    def test_one_refusal_leaves_the_others_undone(self):
        self.refusal("G\\PN=NEW", "G\\SC=Q")

    def test_rows_that_a_higher_count_shows_are_told_and_not_written_over(self):
        data = ("G\\106:09;G\\POC\\N:1;G\\POC1-1:Ann;G\\POC1-2:Bob;G\\POC2-2:Lab;G\\POC9-2:x;"
                "R-1\\ID:Deck;R-1\\N:1;R-1\\TK1-1:1;R-1\\DSI-2:lost;R-1\\EV\\N:1;"
                "R-1\\EV\\ID-1:A;R-1\\EV\\ID-2:B;")
        self.write("in.tma", data)
        for count, field in (("G\\POC\\N=2", "G\\POC1-2=New"), ("R-1\\N=2", "R-1\\TK1-2=2"),
                             ("R-1\\EV\\N=2", "R-1\\EV\\D-2=text")):
            self.assertIn("behind the count", self.refusal(count, field))
        result = self.run_json("set", "in.tma", "G\\POC\\N=2", "-o", "out.tma")
        self.assertEqual(result.status, CLEAN, result)
        self.assertIn("G\\POC\\N: what was behind the count is in the list now (2).", result.notes)
        saved = self.read("out.tma")
        for line in (b"G\\POC\\N:2;", b"G\\POC1-2:Bob;", b"G\\POC2-2:Lab;", b"G\\POC9-2:x;",
                     b"R-1\\DSI-2:lost;", b"R-1\\EV\\ID-2:B;"):
            self.assertIn(line, saved)
        # Once it is a row it is set like any other.
        self.write("in.tma", saved)
        result = self.run_json("set", "in.tma", "G\\POC1-2=New", "R-1\\TK1-2=2", "-o", "more.tma")
        self.assertEqual(result.status, CLEAN, result)
        self.assertEqual(result.notes, ["R-1\\TK1-2 makes a track of commands of this number that "
                                        "the file had already."])

    def test_wrong_usage(self):
        for arguments in (["G\\PN"], ["=x"], ["PN=x"], ["C-1\\DCN=x"], []):
            result = self.run_cli("set", "in.tma", *arguments, "-o", "out.tma")
            self.assertEqual(result.status, USAGE, arguments)
        self.assertEqual(self.run_cli("set", "in.tma", "G\\PN=x").status, USAGE)


if __name__ == "__main__":
    unittest.main()
