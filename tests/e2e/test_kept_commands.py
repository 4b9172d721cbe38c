"""What a stream's groups hold and its model does not: a rewrite asks for it, and loses nothing of it
without a word."""

import os
import re
import unittest

import kavu
from kavu import CLEAN, REPORTED

SAMPLES = os.path.join(os.path.dirname(os.path.dirname(kavu.DATA)), "samples")

GENERAL = ("G\\PN:KEPT;G\\106:%s;G\\DSI\\N:1;G\\DSI-1:RF;G\\DST-1:RF;T-1\\ID:RF;M-1\\ID:RF;"
           "M-1\\BB\\DLN:L;M-1\\BSG1:PCM;M-1\\SI\\N:0;")
FORMAT = ("P-1\\DLN:L;P-1\\D1:NRZ-L;P-1\\D2:100000;P-1\\D3:U;P-1\\D4:N;P-1\\D5:Y;P-1\\D6:N;P-1\\D7:N;"
          "P-1\\D8:N/A;P-1\\TF:TWO;P-1\\F1:16;P-1\\F2:M;P-1\\F3:NO;P-1\\MF\\N:4;P-1\\MF1:16;P-1\\MF2:256;"
          "P-1\\MF3:FPT;P-1\\MF4:16;P-1\\MF5:1111101011110011;")
COUNTER = ("P-1\\ISF\\N:1;P-1\\ISF1-1:SFID;P-1\\ISF2-1:ID;P-1\\IDC1-1:1;P-1\\IDC2-1:16;P-1\\IDC3-1:1;"
           "P-1\\IDC4-1:16;P-1\\IDC5-1:M;P-1\\IDC6-1:1;P-1\\IDC7-1:1;P-1\\IDC8-1:4;P-1\\IDC9-1:4;"
           "P-1\\IDC10-1:INC;")
SUBFRAME = ("P-1\\SF\\N-1:1;P-1\\SF1-1-1:SLOW;P-1\\SF2-1-1:NO;P-1\\SF4-1-1-1:3;P-1\\SF6-1-1:4;")
LIST = "D-1\\DLN:L;D-1\\ML\\N:1;D-1\\MLN-1:List;"
# The second one of the list is the first one of the frame.
WORDS = ("D-1\\MN\\N-1:2;D-1\\MN-1-1:LATE;D-1\\LT-1-1:MF;D-1\\MF-1-1:9;D-1\\MFM-1-1:FW;"
         "D-1\\MN-1-2:EARLY;D-1\\LT-1-2:MF;D-1\\MF-1-2:5;D-1\\MFM-1-2:FW;")
RANGES = "".join(
    "D-1\\MN-1-%(m)d:%(name)s;D-1\\LT-1-%(m)d:WDFR;D-1\\MML\\N-1-%(m)d:1;D-1\\MNF\\N-1-%(m)d-1:1;"
    "D-1\\WP-1-%(m)d-1-1:%(w)d;D-1\\WI-1-%(m)d-1-1:0;D-1\\EWP-1-%(m)d-1-1:%(w)d;"
    "D-1\\FP-1-%(m)d-1-1:1;D-1\\FI-1-%(m)d-1-1:1;D-1\\EFP-1-%(m)d-1-1:4;D-1\\WFM-1-%(m)d-1-1:FW;"
    "D-1\\WFP-1-%(m)d-1-1:1;" % {"m": m, "name": name, "w": w}
    for m, name, w in ((1, "LATE", 9), (2, "EARLY", 5)))
RANGES = "D-1\\MN\\N-1:2;" + RANGES


def stream(edition="09", measurements=WORDS, more="", counter=COUNTER + SUBFRAME):
    return GENERAL % edition + FORMAT + counter + LIST + measurements + more


class KeptCommandsTest(kavu.KavuTest):
    def rewrite(self, reply, *, name="in.tma", out="out.tma", command="rewrite"):
        result = self.run_json("--answer-all", reply, command, name, "L", "-o", out)
        self.assertIn(result.status, (CLEAN, REPORTED), result)
        return result

    def lines(self, name="out.tma"):
        """The commands of P and D groups."""
        return [line for line in self.read(name).decode("latin-1").split("\r\n")
                if line[:2] in ("P-", "D-")]

    def asked(self, result):
        """The commands that the questions list."""
        return "\n".join(question["text"] for question in result.json["questions"])

    def assertKept(self, data, kept, **options):
        """A rewrite keeps commands, a second one changes nothing any more, and with No they are
        listed before they go."""
        self.write("in.tma", data)
        result = self.rewrite("yes", **options)
        lines = self.lines()
        for command in kept:
            self.assertEqual(lines.count(command), 1, (command, lines))
        self.rewrite("yes", name="out.tma", out="again.tma")
        self.assertEqual(self.lines("again.tma"), lines)
        refused = self.rewrite("no", out="none.tma", **options)
        self.assertIn("would be dropped", self.asked(refused))
        self.assertEqual(len(refused.json["questions"]), 1, refused)
        for command in kept:
            self.assertNotIn(command, self.lines("none.tma"))
        return result, lines

    # --- commands of no model -------------------------------------------------------------

    def test_commands_of_other_programs_stay_with_their_numbers(self):
        unknown = ["P-1\\XYZ:1;", "P-1\\ISF9-1:own;", "P-1\\VND\\A-3-2:own;", "D-1\\VND:1;",
                   "D-1\\VND\\L-1:of the list;"]
        result, _ = self.assertKept(stream(more="".join(unknown)), unknown)
        for command in unknown:
            self.assertIn(command, self.asked(result))

    def test_those_of_a_measurement_go_where_it_goes(self):
        self.assertKept(stream(more="D-1\\VND-1-1:of LATE;D-1\\VND-1-2-4:of EARLY;"),
                        ["D-1\\VND-1-2:of LATE;", "D-1\\VND-1-1-4:of EARLY;"])

    def test_attributes_of_another_edition_are_kept(self):
        # Filtering is of 106-09 alone, and only later editions name the counter.
        self.assertKept(stream("04", RANGES, "D-1\\MFOT-1-1:O;D-1\\IDCN-1-2:SFID;"),
                        ["D-1\\MFOT-1-2:O;", "D-1\\IDCN-1-1:SFID;"])
        # From 106-11 on there are no subframes.
        kept = [command + ";" for command in SUBFRAME.split(";") if command]
        self.assertKept(stream("11", RANGES), kept)

    def test_measurements_of_a_former_edition_come_back(self):
        data = stream("11", WORDS.replace("N-1:2", "N-1:3") +
                      "D-1\\MN-1-3:RANGE;D-1\\LT-1-3:WDFR;D-1\\MML\\N-1-3:1;D-1\\MNF\\N-1-3-1:1;"
                      "D-1\\WP-1-3-1-1:7;D-1\\FP-1-3-1-1:1;D-1\\FI-1-3-1-1:1;D-1\\VND-1-3:own;",
                      counter=COUNTER)
        _, lines = self.assertKept(data, [
            "D-1\\MN-1-2:LATE;", "D-1\\LT-1-2:MF;", "D-1\\MF-1-2:9;", "D-1\\MFM-1-2:FW;",
            "D-1\\MN-1-3:EARLY;", "D-1\\MF-1-3:5;", "D-1\\VND-1-1:own;"])
        self.assertIn("D-1\\MN-1-1:RANGE;", lines)
        self.assertIn("D-1\\MN\\N-1:3;", lines)
        self.assertIn("D-1\\MN\\N-1:1;", self.lines("none.tma"))

    def test_a_whole_document_of_a_former_edition_comes_back(self):
        with open(os.path.join(SAMPLES, "flight-test-96.tma"), "rb") as file:
            data = file.read().decode("latin-1")
        data = re.sub(r"G\\106:[^;]*;", r"G\\106:11;", data)
        self.write("in.tma", data)
        result = self.run_json("--answer-all", "yes", "rewrite", "in.tma", "PCM Stream 1",
                               "-o", "out.tma")
        self.assertIn(result.status, (CLEAN, REPORTED), result)

        def names(text):
            return sorted(re.findall(r"D-1\\MN-\d+-\d+:([^;]*);", text))
        saved = self.read("out.tma").decode("latin-1")
        self.assertGreater(len(names(data)), 50)
        self.assertEqual(names(saved), names(data))
        count = re.search(r"D-1\\MN\\N-1:(\d+);", data).group(1)
        self.assertIn("D-1\\MN\\N-1:%s;" % count, saved)

    # --- measurements that a load leaves out ------------------------------------------------

    def test_a_measurement_that_is_left_out_is_kept_whole(self):
        cases = (
            (242, "09", "D-1\\LT-1-3:MF;D-1\\MFM-1-3:FW;"),
            (243, "09", "D-1\\LT-1-3:SF;D-1\\SF1-1-3:NONE;D-1\\SF2-1-3:1;"),
            (254, "09", "D-1\\LT-1-3:MFFR;D-1\\FMF2-1-3:E;D-1\\FMF6-1-3-1:4;"),
            (257, "09", "D-1\\LT-1-3:MFFR;D-1\\FMF\\N-1-3:2;D-1\\FMF2-1-3:E;D-1\\FMF9-1-3-1:1;"),
            (258, "09", "D-1\\LT-1-3:SFFR;D-1\\FSF2\\N-1-3:1;D-1\\FSF3-1-3-1:SLOW;"),
            (259, "09", "D-1\\LT-1-3:SFFR;D-1\\FSF\\N-1-3:1;D-1\\FSF3-1-3-1:SLOW;"),
            (260, "09", "D-1\\LT-1-3:SFFR;D-1\\FSF\\N-1-3:1;D-1\\FSF2\\N-1-3:1;"
                        "D-1\\FSF3-1-3-1:NONE;"),
            (261, "09", "D-1\\LT-1-3:SFFR;D-1\\FSF\\N-1-3:1;D-1\\FSF2\\N-1-3:1;"
                        "D-1\\FSF3-1-3-1:SLOW;D-1\\FSF4-1-3-1:I;"),
            (263, "09", "D-1\\LT-1-3:SFFR;D-1\\FSF\\N-1-3:1;D-1\\FSF2\\N-1-3:1;"
                        "D-1\\FSF3-1-3-1:SLOW;D-1\\FSF4-1-3-1:E;D-1\\FSF8-1-3-1-1:2;"),
            (264, "09", "D-1\\LT-1-3:OWN;D-1\\OWN1-1-3:4;"),
            (264, "11", "D-1\\LT-1-3:MF;D-1\\MF-1-3:4;"),
            (276, "09", "D-1\\LT-1-3:MF;D-1\\MF-1-3:99;"),
            (276, "11", "D-1\\LT-1-3:WDFR;D-1\\MML\\N-1-3:1;D-1\\WP-1-3-1-1:99;"
                        "D-1\\FP-1-3-1-1:1;"),
            (277, "09", "D-1\\LT-1-3:MF;D-1\\MF-1-3:3;"),
            (283, "01", "D-1\\LT-1-3:WDFR;D-1\\MML\\N-1-3:1;D-1\\WP-1-3-1-1:4;D-1\\FP-1-3-1-1:1;"),
            (284, "09", "D-1\\LT-1-3:WDFR;D-1\\MML\\N-1-3:1;D-1\\WP-1-3-1-1:4;"),
            (286, "11", "D-1\\LT-1-3:WDFR;D-1\\MML\\N-1-3:1;D-1\\WP-1-3-1-1:4;D-1\\FP-1-3-1-1:9;"),
            (287, "11", "D-1\\LT-1-3:WDFR;D-1\\MML\\N-1-3:1;D-1\\WP-1-3-1-1:1;D-1\\FP-1-3-1-1:2;"),
            (0, "09", "D-1\\LT-1-3:WDFR;D-1\\MML\\N-1-3:0;D-1\\WP-1-3-1-1:4;D-1\\FP-1-3-1-1:1;"),
            (278, "09", "D-1\\LT-1-3:MF;D-1\\MF-1-3:4;"),
            (281, "09", "D-1\\LT-1-3:MF;D-1\\MF-1-3:4;"),
        )
        for message, edition, commands in cases:
            with self.subTest(message=message, edition=edition):
                name = {278: "", 281: "D-1\\MN-1-3:EARLY;"}.get(message, "D-1\\MN-1-3:LEFT;")
                measurements = RANGES if edition == "11" else WORDS
                data = stream(edition, measurements.replace("N-1:2", "N-1:3"),
                              name + "D-1\\VND-1-3:own;" + commands)
                kept = [command + ";" for command in (name + commands).split(";") if command]
                result, lines = self.assertKept(data, kept)
                self.assertIn(message, result.ids())
                self.assertIn("D-1\\MN\\N-1:3;", lines)

    def test_a_location_that_is_left_out_is_kept_after_the_others(self):
        three = ("D-1\\MN\\N-1:1;D-1\\MN-1-1:MANY;D-1\\LT-1-1:MFSC;D-1\\MFS\\N-1-1:3;D-1\\MFS1-1-1:E;"
                 "D-1\\MFSW-1-1-1:2;D-1\\MFSW-1-1-2:99;D-1\\MFSM-1-1-2:0011;D-1\\MFSW-1-1-3:4;")
        _, lines = self.assertKept(stream(measurements=three),
                                   ["D-1\\MFSW-1-1-3:99;", "D-1\\MFSM-1-1-3:0011;"])
        self.assertIn("D-1\\MFS\\N-1-1:2;", lines)
        self.assertIn("D-1\\MFSW-1-1-2:4;", lines)

    # --- counts -------------------------------------------------------------------------

    def test_what_is_beyond_a_count_is_kept_and_told_again(self):
        ranges = RANGES + "D-1\\WP-1-1-2-1:10;D-1\\FP-1-1-2-1:1;"
        cases = (
            ("09", WORDS, "MN\\N-1:2;", "MN\\N-1:1;", ["D-1\\MN-1-2:EARLY;", "D-1\\MF-1-2:5;"]),
            ("09", WORDS, "MN\\N-1:2;", "MN\\N-1:0;", ["D-1\\MN-1-1:LATE;", "D-1\\MN-1-2:EARLY;"]),
            ("09", WORDS, "MN\\N-1:2;", "MN\\N-1:x;", ["D-1\\MN-1-1:LATE;", "D-1\\MF-1-1:9;"]),
            ("09", WORDS, "MN\\N-1:2;", "MN\\N-1:2;D-1\\MLN-2:Second;D-1\\MN-2-1:OTHER;",
             ["D-1\\MLN-2:Second;", "D-1\\MN-2-1:OTHER;"]),
            ("11", ranges, "MML\\N-1-1:1;", "MML\\N-1-1:1;", ["D-1\\WP-1-2-2-1:10;"]),
            ("11", ranges, "MML\\N-1-1:1;", "MML\\N-1-1:0;",
             ["D-1\\MN-1-2:LATE;", "D-1\\WP-1-2-1-1:9;", "D-1\\WP-1-2-2-1:10;"]),
            ("11", RANGES, "MNF\\N-1-1-1:1;", "MNF\\N-1-1-1:1;D-1\\WP-1-1-1-2:10;",
             ["D-1\\WP-1-2-1-2:10;"]),
            ("09", WORDS, "P-1\\ISF\\N:1;", "P-1\\ISF\\N:1;P-1\\ISF1-2:Second;P-1\\IDC1-2:8;",
             ["P-1\\ISF1-2:Second;", "P-1\\IDC1-2:8;"]),
            ("09", WORDS, "P-1\\SF\\N-1:1;", "P-1\\SF\\N-1:1;P-1\\SF1-1-2:S;P-1\\SF4-1-2-1:7;",
             ["P-1\\SF1-1-2:S;", "P-1\\SF4-1-2-1:7;"]),
            ("09", WORDS, "P-1\\SF6-1-1:4;", "P-1\\SF6-1-1:4;P-1\\SF4-1-1-2:7;",
             ["P-1\\SF4-1-1-2:7;"]),
            ("09", WORDS, "P-1\\MF1:16;", "P-1\\MF1:16;P-1\\AEF\\N:0;P-1\\AEF\\DLN-1:E;P-1\\AEF3-1-1:9;",
             ["P-1\\AEF\\DLN-1:E;", "P-1\\AEF3-1-1:9;"]),
            ("09", WORDS, "P-1\\MF1:16;", "P-1\\MF1:16;P-1\\ADM\\DMN-1:E;P-1\\ADM3-1-1:9;",
             ["P-1\\ADM\\DMN-1:E;", "P-1\\ADM3-1-1:9;"]),
            ("09", WORDS, "P-1\\MF1:16;", "P-1\\MF1:16;P-1\\MLC\\N:0;P-1\\MLC1-1:01;P-1\\FSC2-1:X;",
             ["P-1\\MLC1-1:01;", "P-1\\FSC2-1:X;"]),
            ("09", WORDS, "P-1\\MF1:16;", "P-1\\MF1:16;P-1\\MFF\\N:1;P-1\\MFF\\MFN-2:3;",
             ["P-1\\MFF\\MFN-2:3;"]),
        )
        for edition, measurements, old, new, kept in cases:
            with self.subTest(count=new):
                data = stream(edition, measurements)
                self.assertIn(old, data)
                _, lines = self.assertKept(data.replace(old, new, 1), kept)
                for name in ("in.tma", "out.tma"):
                    told = self.run_json("check", "--deep", name)
                    self.assertEqual(told.status, REPORTED, told)
                    self.assertEqual(told.json["streams"][0]["result"], 1, (name, lines))

    # --- word/frame -------------------------------------------------------------------------

    def test_a_conversion_keeps_what_it_does_not_know(self):
        self.assertKept(stream(more="P-1\\XYZ:1;D-1\\VND-1-1:of LATE;"),
                        ["P-1\\XYZ:1;", "D-1\\VND-1-2:of LATE;"], command="word-frame")

    def test_what_a_conversion_replaces_is_told(self):
        self.write("in.tma", stream(more="D-1\\MML\\N-1-1:7;D-1\\WP-1-1-1-1:3;"))
        result = self.rewrite("yes", command="word-frame")
        texts = [m["text"] for m in result.json["messages"] if "They are replaced" in m["text"]]
        self.assertEqual(len(texts), 1, result)
        self.assertIn("D-1\\MML\\N-1-2:7;", texts[0])
        self.assertNotIn("D-1\\WP", texts[0])
        self.assertIn("D-1\\WP-1-2-2-1:3;", self.lines(), "a second location, beyond the count")

    # --- the other groups -------------------------------------------------------------------

    BESIDE = ["T-1\\SCO\\N:1;", "T-1\\SCO1-1:10;", "T-1\\SCO1-3:behind the count;",
              "T-1\\SCO9-1:of a row;", "T-1\\SCO9-3:of none;", "T-1\\EV\\X-2:of no list;",
              "T-1\\XYZ:own;", "M-1\\SI1-2:behind the count;", "M-1\\SI9-2:own;", "M-1\\BB9-1:own;",
              "G\\DSIX-1:own;", "G\\POC1-1:behind the count;", "G\\XYZ:own;"]

    def beside(self, name):
        """The commands of the groups that no stream writes."""
        return sorted(line for line in self.read(name).decode("latin-1").split("\r\n")
                      if line[:2] in ("G\\", "T-", "M-") and not line.startswith("G\\FN:"))

    def test_the_groups_beside_the_stream_keep_all_they_have(self):
        self.write("in.tma", stream(more="".join(self.BESIDE)))
        self.run_json("save", "in.tma", "-o", "saved.tma")
        saved = self.beside("saved.tma")
        for command in self.BESIDE:
            self.assertIn(command, saved)
        for reply in ("yes", "no"):
            for command in ("rewrite", "word-frame"):
                result = self.rewrite(reply, command=command)
                self.assertEqual(result.json["questions"], [], command)
                self.assertEqual(self.beside("out.tma"), saved, command)

    def test_a_change_of_the_transmission_keeps_what_it_does_not_know(self):
        self.write("in.tma", stream(more="".join(self.BESIDE)))
        for reply in ("yes", "no"):
            result = self.run_json("--answer-all", reply, "set", "in.tma", "T-1\\RF1=2210.5",
                                   "-o", "out.tma", "--overwrite")
            self.assertIn(result.status, (CLEAN, REPORTED), result)
            for command in [*self.BESIDE, "T-1\\RF1:2210.5;"]:
                self.assertIn(command, self.beside("out.tma"))

    # --- nothing to ask -----------------------------------------------------------------------

    def test_a_stream_that_the_model_holds_asks_nothing(self):
        for edition, measurements in (("09", WORDS), ("09", RANGES), ("11", RANGES)):
            data = stream(edition, measurements,
                          counter=COUNTER if edition == "11" else COUNTER + SUBFRAME)
            self.write("in.tma", data)
            self.assertEqual(self.rewrite("no").json["questions"], [])


if __name__ == "__main__":
    kavu.main()
