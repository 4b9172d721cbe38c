"""The commands of message data and packets: `message` and `packet`, and what `rewrite`, `check`,
`get`, `vocabulary`, `set` and `tree` make of S groups."""

import json
import re
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED, USAGE

HEAD = ("G\\PN:DATA;G\\106:%s;G\\DSI\\N:1;G\\DSI-1:Bench;G\\DST-1:RF;T-1\\ID:Bench;T-1\\SCO\\N:0;"
        "M-1\\ID:Bench;M-1\\BB\\DLN:Link;M-1\\SI\\N:1;M-1\\SI\\DLN-1:Other;")
# Two streams of a bench: a fixed binary one with all there is, and a delimited text.
MESSAGES = (
    "S-1\\DLN:Link;S-1\\TA:KX-12;S-1\\NS\\N:2;"
    "S-1\\SNA-1:Inertial;S-1\\MDT-1:BINARY;S-1\\MDL-1:FIXED;S-1\\MES-1:16;S-1\\MIDL-1:1;"
    "S-1\\MLEN-1:64;S-1\\DO-1:BIG ENDIAN;S-1\\NMS\\N-1:2;"
    "S-1\\MID-1-1:7;S-1\\MNA-1-1:Attitude;S-1\\NFLDS\\N-1-1:2;S-1\\FNUM-1-1-1:1;"
    "S-1\\FPOS-1-1-1:1;S-1\\FLEN-1-1-1:16;S-1\\FNUM-1-1-2:2;S-1\\FPOS-1-1-2:17;"
    "S-1\\FLEN-1-1-2:32;S-1\\MN\\N-1-1:2;"
    "S-1\\MN-1-1-1:PITCH;S-1\\MN1-1-1-1:EV;S-1\\MN2-1-1-1:L;S-1\\MBFM-1-1-1:FLOAT;"
    "S-1\\MFPF-1-1-1:IEEE_32;S-1\\MDO-1-1-1:B;S-1\\NML\\N-1-1-1:2;S-1\\MFN-1-1-1-1:1;"
    "S-1\\MBM-1-1-1-1:FW;S-1\\MTO-1-1-1-1:MSB;S-1\\MFP-1-1-1-1:1;S-1\\MFN-1-1-1-2:2;"
    "S-1\\MBM-1-1-1-2:00FF;S-1\\MTO-1-1-1-2:LSB;S-1\\MFP-1-1-1-2:2;"
    "S-1\\MN-1-1-2:ROLL;S-1\\MN1-1-1-2:NO;S-1\\MN2-1-1-2:T;S-1\\MBFM-1-1-2:SIGNED;"
    "S-1\\MDO-1-1-2:L;S-1\\NML\\N-1-1-2:0;"
    "S-1\\MID-1-2:8;S-1\\MNA-1-2:Status;S-1\\NFLDS\\N-1-2:0;S-1\\MN\\N-1-2:0;"
    "S-1\\SNA-2:Log;S-1\\MDT-2:ASCII;S-1\\MDL-2:DELIMITED;S-1\\MDEL-2:0D0A;S-1\\MDLEN-2:16;"
    "S-1\\FDEL-2:2C;S-1\\NMS\\N-2:1;S-1\\MID-2-1:LOG;S-1\\NFLDS\\N-2-1:1;S-1\\FNUM-2-1-1:3;"
    "S-1\\MN\\N-2-1:1;S-1\\MN-2-1-1:EVENT;S-1\\MN1-2-1-1:NO;S-1\\MN2-2-1-1:T;"
    "S-1\\MBFM-2-1-1:ASCII;S-1\\NML\\N-2-1-1:0;S-1\\COM:Bench run;")
PACKETS = (
    "P-1\\DLN:Link;P-1\\D1:NRZ-L;P-1\\D2:64000;P-1\\TF:PKTM;P-1\\F1:16;P-1\\MF\\N:1;P-1\\MF1:16;"
    "P-1\\MF2:256;P-1\\MF3:FPT;P-1\\MF4:16;P-1\\MF5:1110101110010000;P-1\\ISF\\N:0;"
    "P-1\\AEF\\N:0;"
    "S-1\\DLN:Link;S-1\\ASM:0001101011001111;S-1\\FEF:1;S-1\\CEF:0;S-1\\TFL:1115;S-1\\TA:KX-12;"
    "S-1\\VID:010;S-1\\OCF:1;S-1\\SHF:1;S-1\\OSF:0;S-1\\SHL:8;S-1\\TNMS\\N:1;S-1\\TMN-1:CLOCK;"
    "S-1\\TPAR-1:EV;S-1\\TPTO-1:L;S-1\\TNML\\N-1:1;S-1\\TWP-1-1:1;S-1\\TWL-1-1:8;S-1\\TBM-1-1:FW;"
    "S-1\\TTO-1-1:MSB;S-1\\TFP-1-1:1;S-1\\DFL:1103;S-1\\SP\\N:1;S-1\\PSHF-1:1;S-1\\APID-1:42;"
    "S-1\\PDL-1:100;S-1\\PSHL-1:4;S-1\\HNMS\\N-1:1;S-1\\HMN-1-1:STAMP;S-1\\HPAR-1-1:NO;"
    "S-1\\HPTO-1-1:T;S-1\\HNML\\N-1-1:0;S-1\\SNMS\\N-1:1;S-1\\SMN-1-1:TEMP;S-1\\SPAR-1-1:OD;"
    "S-1\\SPTO-1-1:L;S-1\\SNML\\N-1-1:1;S-1\\SWP-1-1-1:1;S-1\\SWL-1-1-1:8;S-1\\SBM-1-1-1:FW;"
    "S-1\\STO-1-1-1:LSB;S-1\\SFP-1-1-1:2;S-1\\COM-1:Thermal;S-1\\COM:Bench run;")


def group(data, letter="S"):
    """The commands of a group of a saved document."""
    return [line for line in data.decode("latin-1").split("\r\n")
            if re.match(letter + r"-\d+\\", line)]


def commands(text, letter="S"):
    return [each + ";" for each in text.split(";") if each.startswith(letter + "-")]


class StreamDataTest(kavu.KavuTest):
    def document(self, commands_of_group, edition="09"):
        self.write("in.tma", HEAD % edition + commands_of_group)

    def run_on(self, command):
        result = self.run_json(command, "in.tma", "Link")
        self.assertEqual(result.status, CLEAN, result)
        return result.json

    def edit(self, command, steps, *options, status=CLEAN, out="out.tma"):
        result = self.run_json(*options, command, "in.tma", "Link", "--edit", json.dumps(steps),
                               *(["-o", out] if out else []))
        self.assertEqual(result.status, status, result)
        return result.json


class MessageTest(StreamDataTest):
    def setUp(self):
        super().setUp()
        self.document(MESSAGES)

    def test_every_level_is_printed_with_its_row_and_its_label(self):
        model = self.run_on("message")
        self.assertEqual((model["stream"], model["group"]), ("Link", 1))
        self.assertEqual(model["fields"], {"TA": "KX-12", "COM": "Bench run"})
        self.assertEqual(model["label"], "Streams")
        first, second = model["streams"]
        self.assertEqual(first["number"], 1)
        self.assertEqual(first["label"],
                         "Stream:Inertial, Type:Binary, Layout:Fixed, Element Size:16, ID Location:1, "
                         "Length:64, Delimiter:, Delimiter Length:, Field Delimiter:, "
                         "Orientation:Big Endian")
        self.assertEqual(second["row"],
                         {"name": "Log", "dataType": "ASCII", "layout": "Delimited",
                          "elementSize": "", "idLocation": "", "length": "", "delimiter": "0D0A",
                          "delimiterLength": "16", "fieldDelimiter": "2C", "orientation": ""})
        message = first["messages"][0]
        self.assertEqual(message["label"], "Message:7, Description:Attitude")
        self.assertEqual(message["row"], {"id": "7", "name": "Attitude"})
        self.assertEqual(message["fields"][1],
                         {"number": 2, "label": "Number:2, Position:17, Length:32",
                          "row": {"number": "2", "position": "17", "length": "32"}})
        pitch = message["measurements"][0]
        self.assertEqual(pitch["row"],
                         {"name": "PITCH", "parity": "Even", "parityTransferOrder": "Leads Word",
                          "dataType": "Float", "floatingPointFormat": "IEEE 754 Single Precision",
                          "orientation": "Big Endian"})
        self.assertEqual(pitch["locations"][1],
                         {"number": 2, "label": "Message Field Number:2, Bitmask:00FF, Transfer "
                                                "Order:LSB, Fragment:2",
                          "row": {"number": "2", "bitmask": "00FF", "transferOrder": "LSB",
                                  "fragment": "2"}})
        self.assertEqual(second["messages"][0]["measurements"][0]["row"]["orientation"], "")
        self.assertNotIn("edits", model)
        self.assertNotIn("output", model)

    def test_a_person_gets_the_tree(self):
        result = self.run_cli("message", "in.tma", "Link")
        self.assertEqual(result.status, CLEAN, result)
        lines = result.text.splitlines()
        self.assertEqual(lines[0], "Streams")
        self.assertIn("    Message:7, Description:Attitude", lines)
        self.assertIn("        Number:1, Position:1, Length:16", lines)

    def test_what_is_not_edited_comes_back_as_it_was(self):
        saved = self.edit("message", [], out="out.tma")
        self.assertEqual(saved["output"], "out.tma")
        self.assertEqual(group(self.read("out.tma")), commands(MESSAGES))

    def test_without_an_output_nothing_is_written(self):
        before = self.read("in.tma")
        model = self.edit("message", [{"do": "set", "at": [1, 1], "values": {"name": "New"}}], out=None)
        self.assertEqual(model["streams"][0]["messages"][0]["row"]["name"], "New")
        self.assertEqual(model["edits"], [{"step": 1, "done": True}])
        self.assertEqual(self.read("in.tma"), before)
        self.assertFalse(model["changed"])

    def test_a_message_with_three_measurements_is_added_and_nothing_else_changes(self):
        steps = [{"do": "add", "at": [1], "values": {"id": "9", "name": "Rates"}},
                 {"do": "add", "at": [1, 3, "F"], "values": {"number": "1", "position": "1", "length": "8"}}]
        for name in ("P", "Q", "R"):
            steps.append({"do": "add", "at": [1, 3, "M"], "values": {"name": name, "dataType": "Signed"}})
        steps.append({"do": "add", "at": [1, 3, "M", 2],
                      "values": {"number": "1", "bitmask": "FW", "transferOrder": "MSB", "fragment": "1"}})
        model = self.edit("message", steps)
        self.assertTrue(all(each["done"] for each in model["edits"]))
        self.assertTrue(model["changed"])
        before, after = commands(MESSAGES), group(self.read("out.tma"))
        added = [line for line in after if line not in before]
        self.assertEqual([line for line in before if line not in after], ["S-1\\NMS\\N-1:2;"])
        expected = ["S-1\\NMS\\N-1:3;", "S-1\\MID-1-3:9;", "S-1\\MNA-1-3:Rates;", "S-1\\NFLDS\\N-1-3:1;",
                    "S-1\\FNUM-1-3-1:1;", "S-1\\FPOS-1-3-1:1;", "S-1\\FLEN-1-3-1:8;", "S-1\\MN\\N-1-3:3;"]
        for number, name in enumerate("PQR", 1):
            at = f"-1-3-{number}"
            expected += [f"S-1\\MN{at}:{name};", f"S-1\\MN1{at}:NO;", f"S-1\\MN2{at}:T;",
                         f"S-1\\MBFM{at}:SIGNED;", f"S-1\\MDO{at}:B;",
                         f"S-1\\NML\\N{at}:{int(number == 2)};"]
            if number == 2:
                expected += [f"S-1\\MFN{at}-1:1;", f"S-1\\MBM{at}-1:FW;", f"S-1\\MTO{at}-1:MSB;",
                             f"S-1\\MFP{at}-1:1;"]
        self.assertEqual(added, expected)
        again = self.run_json("message", "out.tma", "Link").json
        self.assertEqual(again["streams"], model["streams"])

    def test_every_row_is_set_and_read_again(self):
        steps = [
            {"do": "set", "at": [], "values": {"TA": "A,B", "COM": "two\nlines"}},
            {"do": "set", "at": [1], "values": {"name": "N", "elementSize": "8", "idLocation": "2",
                                                "length": "128", "orientation": "Little Endian"}},
            {"do": "set", "at": [1, 1], "values": {"id": "70", "name": "M"}},
            {"do": "set", "at": [1, 1, "F", 2], "values": {"number": "4", "position": "5", "length": "6"}},
            {"do": "set", "at": [1, 1, "M", 2],
             "values": {"name": "YAW", "parity": "Odd", "parityTransferOrder": "Leads Word",
                        "dataType": "Float", "floatingPointFormat": "TI Extended Precision",
                        "orientation": "Big Endian"}},
            {"do": "set", "at": [1, 1, "M", 1, 1],
             "values": {"number": "3", "bitmask": "1", "transferOrder": "LSB", "fragment": "4"}}]
        self.edit("message", steps)
        model = self.run_json("message", "out.tma", "Link").json
        stream = model["streams"][0]
        self.assertEqual(model["fields"], {"TA": "A,B", "COM": "two\r\nlines"})
        for step in steps[1:]:
            at = step["at"]
            node = {1: stream, 2: stream["messages"][0]}.get(len(at))
            if len(at) == 4:
                node = stream["messages"][0]["fields" if at[2] == "F" else "measurements"][at[3] - 1]
            elif len(at) == 5:
                node = stream["messages"][0]["measurements"][at[3] - 1]["locations"][at[4] - 1]
            for name, value in step["values"].items():
                self.assertEqual(node["row"][name], value, step)
        self.assertIn("S-1\\MFPF-1-1-2:TI_40;", group(self.read("out.tma")))
        self.assertIn("S-1\\DO-1:LITTLE ENDIAN;", group(self.read("out.tma")))

    def test_a_refused_step_changes_nothing_and_says_why(self):
        refused = [
            ({"do": "set", "at": [1, 1], "values": {"name": "a;b"}}, 402),
            ({"do": "set", "at": [1, 1], "values": {"name": "a,b"}}, 0),
            ({"do": "set", "at": [1, 1], "values": {"colour": "red"}}, 0),
            ({"do": "set", "at": [2], "values": {"length": "5"}}, 0),
            ({"do": "set", "at": [2, 1, "F", 1], "values": {"position": "5"}}, 0),
            ({"do": "set", "at": [1, 1, "M", 1], "values": {"parity": "Both"}}, 0),
            ({"do": "set", "at": [1, 1, "M", 1, 1], "values": {"transferOrder": "Big"}}, 0),
            ({"do": "add", "at": [1, 1], "values": {}}, 0),
            ({"do": "set", "at": [9], "values": {}}, 0),
            ({"do": "delete", "at": [1, 1, "M"]}, 0)]
        model = self.edit("message", [step for step, _ in refused], status=REPORTED)
        self.assertEqual([each["done"] for each in model["edits"]], [False] * len(refused))
        self.assertEqual([each["id"] for each in model["messages"]], [number for _, number in refused])
        self.assertEqual(group(self.read("out.tma")), commands(MESSAGES))

    def test_a_delete_asks_and_the_rows_behind_it_move(self):
        step = [{"do": "delete", "at": [1, 1]}]
        model = self.edit("message", step)
        self.assertEqual([(q["id"], q["text"], q["reply"]) for q in model["questions"]],
                         [(82, "Are You Sure?", "no")])
        self.assertEqual(model["edits"], [{"step": 1, "done": False}])
        model = self.edit("message", step, "--answer", "82=yes")
        self.assertEqual([m["row"]["id"] for m in model["streams"][0]["messages"]], ["8"])
        lines = group(self.read("out.tma"))
        self.assertIn("S-1\\MID-1-1:8;", lines)
        self.assertFalse([line for line in lines if "PITCH" in line or "-1-2:" in line])

    def test_a_name_of_another_stream_is_refused_where_names_are_checked(self):
        self.write("in.tma", HEAD % "09" + MESSAGES + "P-1\\DLN:Other;P-1\\TF:ONE;D-1\\DLN:Other;"
                   "D-1\\ML\\N:1;D-1\\MN\\N-1:1;D-1\\MN-1-1:SPEED;")
        self.write("on.ini", "[KAVU-9]\r\nCheckForDupMeasurements=1\r\n")
        step = [{"do": "set", "at": [1, 1, "M", 1], "values": {"name": "SPEED"}}]
        model = self.edit("message", step, "--settings", "on.ini", status=REPORTED)
        self.assertEqual([each["id"] for each in model["messages"]], [455])
        self.assertIn("stream #2", model["messages"][0]["text"])
        self.write("off.ini", "[KAVU-9]\r\nCheckForDupMeasurements=0\r\n")
        self.assertTrue(self.edit("message", step, "--settings", "off.ini")["edits"][0]["done"])

    def test_commands_that_no_row_reads_are_kept_if_the_user_wants(self):
        own = "S-1\\XYZ:mine;S-1\\SNA-3:behind;S-1\\MLEN-2:4;"
        self.document(MESSAGES + own)
        model = self.edit("message", [])
        self.assertEqual([q["reply"] for q in model["questions"]], ["no"])
        for line in commands(own):
            self.assertIn(line, model["questions"][0]["text"])
        self.assertEqual(group(self.read("out.tma")), commands(MESSAGES))
        self.edit("message", [], "--answer-all", "yes")
        self.assertEqual(group(self.read("out.tma")), commands(MESSAGES) + commands(own))

    def test_a_link_without_a_group_is_empty_and_gets_one(self):
        model = self.run_json("message", "in.tma", "Other").json
        self.assertEqual((model["group"], model["streams"]), (0, []))
        self.assertEqual(model["fields"], {"TA": "", "COM": ""})
        steps = json.dumps([{"do": "add", "at": [], "values": {"name": "First"}}])
        result = self.run_json("message", "in.tma", "Other", "--edit", steps, "-o", "out.tma")
        self.assertEqual((result.status, result.json["group"]), (CLEAN, 2), result)
        lines = [line for line in group(self.read("out.tma")) if line.startswith("S-2\\")]
        self.assertEqual(lines, ["S-2\\DLN:Other;", "S-2\\NS\\N:1;", "S-2\\SNA-1:First;", "S-2\\MDT-1:BINARY;",
                                 "S-2\\MDL-1:FIXED;", "S-2\\DO-1:LITTLE ENDIAN;", "S-2\\NMS\\N-1:0;"])

    def test_no_such_link_is_a_failure_without_a_model(self):
        result = self.run_json("message", "in.tma", "Nowhere")
        self.assertEqual(result.status, FAILED, result)
        self.assertIn("Nowhere", result.json["messages"][0]["text"])
        self.assertNotIn("streams", result.json)
        self.assertNotIn("stream", result.json)

    def test_wrong_steps_are_wrong_usage(self):
        for steps in ("[", "{}", '[{"do":"paint","at":[1]}]', '[{"do":"set","at":[1]}]',
                      '[{"do":"add","values":{}}]', '[{"do":"add-terminal","at":[1],"values":{}}]',
                      '[{"do":"set","at":[0],"values":{}}]', '[{"do":"set","at":[1],"values":{"name":1}}]'):
            result = self.run_cli("message", "in.tma", "Link", "--edit", steps, "-o", "out.tma")
            self.assertEqual(result.status, USAGE, steps)
            self.assertFalse(self.exists("out.tma"))

    def test_values_over_their_limits_are_reported_and_kept(self):
        long = MESSAGES.replace("KX-12", "K" * 17).replace("Bench run", "c" * 3201)
        self.document(long)
        model = self.edit("message", [], status=REPORTED)
        self.assertEqual(len(model["messages"]), 2)
        self.assertEqual(group(self.read("out.tma")), commands(long))

    def test_ten_thousand_measurements_are_edited_and_written(self):
        count = 10000
        self.document("S-1\\DLN:Link;S-1\\NS\\N:1;S-1\\NMS\\N-1:1;S-1\\NFLDS\\N-1-1:0;"
                      f"S-1\\MN\\N-1-1:{count};" +
                      "".join(f"S-1\\MN-1-1-{n}:M{n};S-1\\MN1-1-1-{n}:NO;S-1\\MN2-1-1-{n}:T;"
                              f"S-1\\NML\\N-1-1-{n}:1;S-1\\MFN-1-1-{n}-1:{n};"
                              for n in range(1, count + 1)))
        model = self.edit("message", [{"do": "delete", "at": [1, 1, "M", 1]},
                                      {"do": "add", "at": [1, 1, "M"], "values": {"name": "LAST"}}],
                          "--answer", "82=yes")
        self.assertEqual(len(model["streams"][0]["messages"][0]["measurements"]), count)
        lines = group(self.read("out.tma"))
        self.assertEqual(len(lines), 5 + 5 * count - 1)
        self.assertIn("S-1\\MFN-1-1-9999-1:10000;", lines)
        self.assertIn("S-1\\MN-1-1-10000:LAST;", lines)


class PacketTest(StreamDataTest):
    def setUp(self):
        super().setUp()
        self.document(PACKETS, "07")

    def test_the_frame_and_its_packets_are_printed(self):
        for edition in ("05", "07"):
            self.document(PACKETS, edition)
            model = self.run_on("packet")
            self.assertEqual((model["stream"], model["group"]), ("Link", 1))
            self.assertEqual(model["fields"],
                             {"ASM": "0001101011001111", "FEF": "1", "CEF": "0", "TFL": "1115", "TA": "KX-12",
                              "VID": "010", "OCF": "1", "SHF": "1", "OSF": "0", "SHL": "8", "DFL": "1103",
                              "COM": "Bench run"})
            self.assertEqual(model["shown"],
                             {"FEF": "1 - Frame Error Control Field is present",
                              "CEF": "0 - Convolutional Error Correction/Detection is not used",
                              "VID": "010 (2)", "OCF": "1 - Field Present", "SHF": "1 - Field Present",
                              "OSF": "0 - Octet-synced, forward-ordered source packets, or idle data are "
                                     "inserted"})
            self.assertEqual(model["label"], "Source Packets")
            packet = model["packets"][0]
            self.assertEqual(packet["label"],
                             "Secondary Header Flag:1, Process ID:42, Data Length:100, Secondary Header Length:4")
            self.assertEqual(packet["comment"], "Thermal")
            self.assertEqual(packet["fields"], {"PSHF": "1", "APID": "42", "PDL": "100", "PSHL": "4"})
            self.assertEqual(packet["secondaryHeader"],
                             [{"number": 1, "label": "Measurement:STAMP, Parity:NO, Parity Transfer Order:T",
                               "fields": {"MN": "STAMP", "PAR": "NO", "PTO": "T"}, "locations": []}])
            self.assertEqual(packet["sourceData"][0]["locations"],
                             [{"number": 1, "label": "Position:1, Word Length:8, BitMask:FW, Transfer "
                                                     "Order:LSB, Fragment:2",
                               "fields": {"WP": "1", "WL": "8", "BM": "FW", "TO": "LSB", "FP": "2"}}])
            self.assertEqual(model["transferMeasurements"][0]["fields"]["MN"], "CLOCK")

    def test_a_person_gets_the_fields_and_the_tree(self):
        result = self.run_cli("packet", "in.tma", "Link")
        self.assertEqual(result.status, CLEAN, result)
        self.assertRegex(result.text, r"VID +Virtual Channel ID +010 \(2\)\n")
        self.assertIn("\n    Source Data\n      Measurement:TEMP, Parity:OD, Parity Transfer Order:L\n", result.text)

    def test_what_is_not_edited_comes_back_as_it_was(self):
        self.edit("packet", [])
        self.assertEqual(group(self.read("out.tma")), commands(PACKETS))

    def test_every_level_is_added_set_and_deleted(self):
        steps = [{"do": "add", "at": [], "values": {"APID": "7"}},
                 {"do": "add", "at": [2, "S"], "values": {"MN": "NEW"}},
                 {"do": "add", "at": [2, "S", 1], "values": {"FP": "9"}},
                 {"do": "add", "at": ["T"], "values": {"MN": "T2", "PAR": "OD"}},
                 {"do": "set", "at": [1], "values": {"PSHL": "", "COM": "Hot"}},
                 {"do": "set", "at": [], "values": {"FEF": "0", "VID": "111"}},
                 {"do": "set", "at": ["T", 1, 1], "values": {"TO": "LSB"}},
                 {"do": "delete", "at": [1, "H", 1]}]
        model = self.edit("packet", steps, "--answer", "82=yes")
        self.assertTrue(all(each["done"] for each in model["edits"]), model)
        before, after = commands(PACKETS), group(self.read("out.tma"))
        self.assertEqual([line for line in after if line not in before],
                         ["S-1\\FEF:0;", "S-1\\VID:111;", "S-1\\TNMS\\N:2;", "S-1\\TTO-1-1:LSB;",
                          "S-1\\TMN-2:T2;", "S-1\\TPAR-2:OD;", "S-1\\TPTO-2:L;", "S-1\\TNML\\N-2:0;",
                          "S-1\\SP\\N:2;", "S-1\\HNMS\\N-1:0;", "S-1\\COM-1:Hot;", "S-1\\PSHF-2:0;",
                          "S-1\\APID-2:7;", "S-1\\PDL-2:0;", "S-1\\PSHL-2:0;", "S-1\\HNMS\\N-2:0;",
                          "S-1\\SNMS\\N-2:1;", "S-1\\SMN-2-1:NEW;", "S-1\\SPAR-2-1:NO;",
                          "S-1\\SPTO-2-1:L;", "S-1\\SNML\\N-2-1:1;", "S-1\\SWP-2-1-1:1;",
                          "S-1\\SWL-2-1-1:1;", "S-1\\SBM-2-1-1:FW;", "S-1\\STO-2-1-1:MSB;",
                          "S-1\\SFP-2-1-1:9;"])
        self.assertFalse([line for line in after if "STAMP" in line or "PSHL-1" in line])

    def test_a_refused_step_changes_nothing_and_says_why(self):
        refused = [({"do": "set", "at": [], "values": {"COM": "a;b"}}, 402),
                   ({"do": "set", "at": [], "values": {"FEF": "2"}}, 0),
                   ({"do": "set", "at": [1, "S", 1, 1], "values": {"FP": "10"}}, 0),
                   ({"do": "set", "at": [1, "S", 1], "values": {"MN": "n" * 33}}, 0),
                   ({"do": "set", "at": [1], "values": {"MN": "x"}}, 0),
                   ({"do": "add", "at": ["H"], "values": {}}, 0)]
        model = self.edit("packet", [step for step, _ in refused], status=REPORTED)
        self.assertEqual([each["done"] for each in model["edits"]], [False] * len(refused))
        self.assertEqual([each["id"] for each in model["messages"]], [number for _, number in refused])
        self.assertEqual(group(self.read("out.tma")), commands(PACKETS))

    def test_unknown_and_absent_values_of_lists_are_not_touched(self):
        self.document("S-1\\DLN:Link;S-1\\FEF:7;S-1\\TNMS\\N:0;S-1\\SP\\N:0;", "07")
        model = self.edit("packet", [{"do": "set", "at": [], "values": {"TFL": "9"}}])
        self.assertEqual(model["shown"]["FEF"], "7")
        self.assertEqual(model["shown"]["VID"], "000 (0)")
        self.assertEqual(model["fields"]["VID"], "")
        self.assertEqual(group(self.read("out.tma")),
                         ["S-1\\DLN:Link;", "S-1\\FEF:7;", "S-1\\TFL:9;", "S-1\\TNMS\\N:0;", "S-1\\SP\\N:0;"])


class EditionTest(StreamDataTest):
    def test_each_command_serves_its_editions(self):
        text = ("This is a 106-%s TMATS file. The feature you are trying to access was not introduced until IRIG "
                "version 106-%s")
        for command, edition, expected in (
                ("message", "07", text % ("07", "09")), ("message", "04", text % ("04", "09")),
                ("packet", "04", text % ("04", "05")),
                ("packet", "09", text % ("09", "05") + ", and was removed in 106-09"),
                ("packet", "11", text % ("11", "05") + ", and was removed in 106-09")):
            self.document("S-1\\DLN:Link;", edition)
            result = self.run_json(command, "in.tma", "Link")
            self.assertEqual(result.status, FAILED, result)
            told = [each for each in result.json["messages"] if each["id"] == 73]
            self.assertEqual([each["text"] for each in told], [expected])
            self.assertNotIn("stream", result.json)

    def test_a_packet_group_is_no_message_data_and_its_commands_are_asked_about(self):
        self.document("S-1\\DLN:Link;S-1\\FEF:1;S-1\\SP\\N:1;S-1\\APID-1:4;", "09")
        model = self.edit("message", [])
        self.assertEqual(model["streams"], [])
        self.assertIn("S-1\\FEF:1;", model["questions"][0]["text"])
        self.assertEqual(group(self.read("out.tma")), ["S-1\\DLN:Link;", "S-1\\NS\\N:0;"])
        self.edit("message", [], "--answer-all", "yes")
        self.assertIn("S-1\\APID-1:4;", group(self.read("out.tma")))


class OtherCommandsTest(StreamDataTest):
    def rewrite(self, *options, link="Link", status=CLEAN):
        result = self.run_json(*options, "rewrite", "in.tma", link, "-o", "out.tma")
        self.assertEqual(result.status, status, result)
        return result.json

    def test_rewrite_of_a_link_without_a_format_writes_its_group_alone(self):
        self.document(MESSAGES.replace("MBFM-1-1-2:SIGNED", "MBFM-1-1-2:signed"))
        self.assertEqual(self.rewrite()["result"], 0)
        self.assertEqual(group(self.read("out.tma")), commands(MESSAGES))
        self.assertEqual(group(self.read("out.tma"), "P"), [])
        self.assertEqual(group(self.read("out.tma"), "D"), [])

    def test_rewrite_of_a_packet_stream_writes_its_format_and_its_packets(self):
        self.document(PACKETS.replace("S-1\\SNMS\\N-1:1", "S-1\\SNMS\\N-1: 1"), "07")
        self.rewrite()
        self.assertEqual(group(self.read("out.tma")), commands(PACKETS))
        self.assertIn("P-1\\TF:PKTM;", group(self.read("out.tma"), "P"))
        self.assertEqual(group(self.read("out.tma"), "D"), [])

    def test_rewrite_of_a_stream_with_message_data_writes_all_of_it(self):
        stream = ("P-1\\DLN:Link;P-1\\TF:ONE;P-1\\F1:16;P-1\\MF\\N:1;P-1\\MF1:4;P-1\\MF2:64;P-1\\MF4:16;"
                  "P-1\\MF5:1110101110010000;D-1\\DLN:Link;D-1\\ML\\N:1;D-1\\MLN-1:List;"
                  "D-1\\MN\\N-1:1;D-1\\MN-1-1:WORD;D-1\\LT-1-1:MF;D-1\\MF-1-1:1;D-1\\MFM-1-1:FW;")
        self.document(stream + MESSAGES.replace("MDL-1:FIXED", "MDL-1:fixed"))
        result = self.run_json("rewrite", "in.tma", "Link", "-o", "out.tma")
        self.assertIn(result.status, (CLEAN, REPORTED), result)
        saved = self.read("out.tma")
        self.assertEqual(group(saved), commands(MESSAGES))
        self.assertIn("D-1\\MN-1-1:WORD;", group(saved, "D"))
        self.assertIn("P-1\\MF1:4;", group(saved, "P"))
        streams = self.run_json("check", "--deep", "in.tma").json["streams"]
        self.assertEqual([each["stream"] for each in streams], ["Link"])

    def test_rewrite_asks_before_it_drops_what_no_row_reads(self):
        self.document(MESSAGES + "S-1\\XYZ:mine;")
        told = self.rewrite()["questions"]
        self.assertIn("S-1\\XYZ:mine;", told[0]["text"])
        self.assertEqual(group(self.read("out.tma")), commands(MESSAGES))
        self.rewrite("--answer-all", "yes")
        self.assertEqual(group(self.read("out.tma"))[-1], "S-1\\XYZ:mine;")

    def test_rewrite_leaves_an_s_group_alone_that_is_not_of_a_packet_stream(self):
        odd = PACKETS.replace("TF:PKTM", "TF:ONE").replace("SP\\N:1", "SP\\N: 1")
        self.document(odd, "07")
        result = self.run_json("rewrite", "in.tma", "Link", "-o", "out.tma")
        self.assertIn(result.status, (CLEAN, REPORTED), result)
        self.assertIn("S-1\\SP\\N: 1;", group(self.read("out.tma")))

    def test_the_deep_check_loads_message_data_and_packets(self):
        self.document(MESSAGES)
        result = self.run_json("check", "--deep", "in.tma")
        self.assertEqual(result.json["streams"], [{"stream": "Link", "result": 0}], result)
        self.document(MESSAGES.replace("KX-12", "K" * 20))
        result = self.run_json("check", "--deep", "in.tma")
        self.assertEqual(result.json["streams"], [{"stream": "Link", "result": 1}], result)
        self.assertEqual(result.status, REPORTED)
        self.document(PACKETS.replace("SMN-1-1:TEMP", "SMN-1-1:" + "n" * 40), "07")
        result = self.run_json("check", "--deep", "in.tma")
        self.assertEqual(result.json["streams"], [{"stream": "Link", "result": 1}], result)

    def test_the_deep_check_tells_of_rows_behind_their_count(self):
        self.document(MESSAGES.replace("S-1\\NML\\N-1-1-1:2;", "S-1\\NML\\N-1-1-1:1;"))
        result = self.run_json("check", "--deep", "in.tma")
        told = [each["text"] for each in result.json["messages"]]
        self.assertTrue(any("NML\\N-1-1-1" in text for text in told), told)

    def test_get_and_vocabulary_know_the_group(self):
        self.document(MESSAGES)
        values = self.run_json("get", "in.tma", "S-1\\MN-1-1-2", "S-1\\NS\\N").json["values"]
        self.assertEqual(values, {"S-1\\MN-1-1-2": ["ROLL"], "S-1\\NS\\N": ["2"]})
        for edition, first, count in (("2004", None, 0), ("2007", "ASM", 49), ("2009", "TA", 33)):
            fields = self.run_json("vocabulary", "S", "--edition", edition).json["fields"]
            self.assertEqual(len(fields), count)
            if first:
                self.assertEqual([fields[0]["code"], fields[1]["code"]], ["DLN", first])
        by_code = {each["code"]: each for each in fields}
        self.assertEqual(by_code["TA"]["limit"], 16)
        self.assertEqual(by_code["COM"]["limit"], 3200)
        self.assertEqual([each["value"] for each in by_code["MBFM-n-m-k"]["choices"]],
                         ["ASCII", "FLOAT", "SIGNED", "UNSIGNED", "HEX", "OCTAL", "BINARY"])

    def test_set_refuses_the_group_and_names_the_commands_for_it(self):
        self.document(MESSAGES)
        result = self.run_json("set", "in.tma", "S-1\\SNA-1=X", "-o", "out.tma")
        self.assertEqual(result.status, FAILED, result)
        text = result.json["messages"][0]["text"]
        for word in ("--edit", "'message'", "'packet'"):
            self.assertIn(word, text)

    def test_names_of_message_data_are_names_of_its_stream(self):
        self.document(MESSAGES)
        link = self.run_json("tree", "in.tma").json["dataSources"][0]["links"][0]
        self.assertEqual((link["kind"], link["measurements"]), ("Message Data", 3))


if __name__ == "__main__":
    kavu.main()
