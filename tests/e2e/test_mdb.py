"""The measurement database: `mdb`."""

import os
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED, USAGE

SAMPLES = os.path.join(os.path.dirname(os.path.dirname(kavu.DATA)), "samples")
FLIGHT = os.path.join(SAMPLES, "flight-test.tma")
STREAM = "PCM Stream 1"
DOCUMENT_MEMBERS = ["file", "opened", "changed", "version", "messages", "questions"]


def line(*fields, columns=36):
    return ";".join(list(fields) + [""] * (columns - len(fields))) + "\r\n"


class MdbTest(kavu.KavuTest):
    def mdb(self, command, *arguments, version=1, path="my.otb", status=CLEAN):
        result = self.run_json("mdb", command, *arguments, "--database", path,
                               "--database-version", str(version))
        self.assertEqual(result.status, status, result)
        return result.json

    def ids_of(self, document):
        return [message["id"] for message in document["messages"]]

    # --- records ----------------------------------------------------------------------------

    def test_records_are_added_replaced_read_and_removed(self):
        for version in (0, 1, 2):
            path = "new%d" % version
            with self.subTest(version=version):
                options = {"version": version, "path": path}
                self.mdb("add", "A", "--field", "Measurement Description=one",
                         "--field", "35=0.0 1.0", "--field", "EU type=COE", **options)
                self.mdb("add", "B", **options)
                self.assertEqual(self.mdb("list", **options)["names"], ["A", "B"])
                info = self.mdb("info", **options)
                self.assertEqual((info["columns"], info["records"]), (28 if version == 0 else 36, 2))
                got = self.mdb("get", "A", **options)
                self.assertIs(got["found"], True)
                self.assertEqual(len(got["record"]), 36)
                self.assertEqual(list(got["record"])[0], "Measurement Name")
                self.assertEqual(got["record"]["Measurement Description"], "one")
                self.assertEqual(got["record"]["Eu Conversion Data"], "0.0 1.0")
                self.assertEqual(got["columns"], 28 if version == 0 else 36)
                self.assertIs(self.mdb("put", "A", **options)["replaced"], True)
                self.assertIs(self.mdb("put", "C", **options)["replaced"], False)
                self.assertEqual(self.mdb("get", "A", **options)["record"]["EU Type"], "")
                self.assertIs(self.mdb("remove", "A", **options)["removed"], True)
                self.assertIs(self.mdb("remove", "A", **options)["removed"], False)
                self.assertIs(self.mdb("get", "A", **options)["found"], False)
                self.assertIs(self.mdb("remove", "--all", **options)["removed"], True)
                self.assertEqual(self.mdb("list", "--records", **options)["records"], [])

    def test_only_messages_and_questions_are_common_members(self):
        self.write("my.otb", line("A"))
        self.assertEqual(set(self.mdb("info")), {"columns", "records", "messages", "questions"})
        result = self.run_cli("mdb", "list", "--database", "my.otb", "--database-version", "1")
        self.assertEqual(result.text, "A\n")

    def test_line_breaks_are_real_ones_for_the_user_and_stored_in_the_file(self):
        self.mdb("add", "A", "--field", "26=one\r\ntwo", version=0)
        self.assertIn(b"one\x14\x15two", self.read("my.otb"))
        self.assertEqual(self.mdb("get", "A", version=0)["record"]["Measurement Description"],
                         "one\r\ntwo")

    def test_a_semicolon_is_refused_by_the_text_forms_alone(self):
        document = self.mdb("add", "A", "--field", "26=x;y", status=FAILED)
        self.assertEqual(self.ids_of(document), [402])
        self.assertFalse(self.exists("my.otb"))
        self.mdb("add", "A", "--field", "26=x;y", version=2, path="my.mdb")
        record = self.mdb("get", "A", version=2, path="my.mdb")["record"]
        self.assertEqual(record["Measurement Description"], "x;y")

    def test_what_only_reads_changes_no_file_and_needs_one(self):
        for command in (["info"], ["list"], ["get", "A"], ["remove", "A"], ["validate"],
                        ["convert", "--to", "2", "-o", "out.mdb"]):
            with self.subTest(command=command):
                document = self.mdb(*command, status=FAILED)
                self.assertIn(428, self.ids_of(document))
                self.assertEqual(os.listdir(self.work), [])
        odd = b" A ;x\n;none\r\n\r\nB"
        self.write("my.otb", odd)
        for command in (["info"], ["list", "--records"], ["get", "A"]):
            self.mdb(*command)
        self.mdb("validate", status=REPORTED)
        self.assertEqual(self.read("my.otb"), odd)

    def test_the_settings_say_which_database(self):
        self.write("my.ini", "[KAVU-9]\r\nMDB=mine.otb\r\nMDBVer=0\r\n")
        self.write("mine.otb", line("A", columns=28))
        result = self.run_json("mdb", "info", "--settings", "my.ini")
        self.assertEqual((result.json["columns"], result.json["records"]), (28, 1))

    def test_the_options_of_the_database_may_precede_the_command(self):
        self.write("my.otb", line("A"))
        result = self.run_json("mdb", "--database", "my.otb", "--database-version", "1", "list")
        self.assertEqual(result.json["names"], ["A"])

    def test_wrong_usage_is_told(self):
        for arguments in (["remove"], ["remove", "A", "--all"], ["add", "A", "--field", "26"],
                          ["add", "A", "--field", "none=x"], ["info", "--database-version", "3"],
                          ["convert", "-o", "x"], ["convert", "-o", "x", "--to", "9"], [],
                          ["update-stream", "a.tma", "L", "-o", "b.tma", "--fields", "7"]):
            with self.subTest(arguments=arguments):
                self.assertEqual(self.run_cli("mdb", *arguments).status, USAGE)

    # --- validate and convert ---------------------------------------------------------------

    def test_validate_has_three_results(self):
        self.write("my.otb", line("A"))
        self.assertEqual(self.mdb("validate")["result"], 1)
        self.write("my.otb", line("A", "", "", "", "m") + line("A", columns=28))
        document = self.mdb("validate", status=REPORTED)
        self.assertEqual(document["result"], 0)
        self.assertEqual(self.ids_of(document), [409, 416, 413])
        self.write("my.mdb", "<Tmats/>")
        document = self.mdb("validate", version=2, path="my.mdb", status=FAILED)
        self.assertEqual((document["result"], self.ids_of(document)), (-1, [428]))
        self.assertEqual(self.read("my.mdb"), b"<Tmats/>")

    def test_validate_asks_before_it_makes_a_database(self):
        document = self.mdb("validate", status=FAILED)
        self.assertEqual([q["id"] for q in document["questions"]], [429])
        self.assertFalse(self.exists("my.otb"))
        self.assertEqual(self.mdb("validate", "--answer", "429=yes")["result"], 1)
        self.assertEqual(self.read("my.otb"), b"")

    def test_validate_follows_the_edition(self):
        fields = [""] * 36
        fields[0], fields[18], fields[32] = "A", "OTHR", "FPT"
        self.write("my.otb", line(*fields))
        self.assertEqual(self.ids_of(self.mdb("validate", "--edition", "1996", status=REPORTED)),
                         [409])
        self.assertEqual(self.ids_of(self.mdb("validate", status=REPORTED)), [408])

    def test_a_database_goes_through_all_forms_and_back(self):
        sample = os.path.join(SAMPLES, "flight-test.mdb")
        records = self.mdb("list", "--records", version=2, path=sample)["records"]
        self.assertEqual(len(records), 8)
        done = self.mdb("convert", "--to", "1", "-o", "a.otb", version=2, path=sample)
        self.assertEqual((done["converted"], done["refused"], done["reduced"]), (8, [], 0))
        self.mdb("convert", "--to", "2", "-o", "b.mdb", path="a.otb")
        self.assertEqual(self.mdb("list", "--records", version=2, path="b.mdb")["records"], records)
        with open(sample, "rb") as file:
            self.assertEqual(self.read("b.mdb"), file.read())
        done = self.mdb("convert", "--to", "0", "-o", "c.otb", path="a.otb")
        self.assertEqual((done["converted"], done["reduced"]), (8, 2))
        self.assertEqual(self.mdb("validate", version=0, path="c.otb")["result"], 1)

    def test_convert_makes_its_output_anew_unless_it_appends(self):
        self.write("my.otb", line("A") + line("B"))
        self.write("out.otb", line("Old", columns=28))
        self.mdb("convert", "--to", "0", "-o", "out.otb", "--append")
        self.assertEqual(self.mdb("list", version=0, path="out.otb")["names"], ["Old", "A", "B"])
        self.mdb("convert", "--to", "0", "-o", "out.otb")
        self.assertEqual(self.mdb("list", version=0, path="out.otb")["names"], ["A", "B"])

    def test_convert_lists_what_the_form_cannot_hold(self):
        self.mdb("add", "Bad", "--field", "26=x;y", version=2)
        self.mdb("add", "Good", version=2)
        document = self.mdb("convert", "--to", "1", "-o", "out.otb", version=2, status=REPORTED)
        self.assertEqual((document["converted"], document["refused"]), (1, ["Bad"]))
        self.assertEqual(self.ids_of(document), [402])

    def test_convert_never_overwrites_its_source(self):
        self.write("my.otb", line("A"))
        os.symlink("my.otb", self.path("same.otb"))
        for out in ("my.otb", "same.otb"):
            self.mdb("convert", "--to", "2", "-o", out, status=FAILED)
        self.assertEqual(self.read("my.otb"), line("A").encode())

    # --- streams ----------------------------------------------------------------------------

    def test_a_stream_is_updated_from_the_sample(self):
        sample = os.path.join(SAMPLES, "flight-test.mdb")
        document = self.mdb("update-stream", FLIGHT, STREAM, "-o", "out.tma", version=2,
                            path=sample, status=REPORTED)
        self.assertEqual(list(document)[:6], DOCUMENT_MEMBERS)
        self.assertEqual((document["updated"], document["newDefinitions"], document["added"]),
                         (4, 0, []))
        self.assertEqual(self.ids_of(document), [415])
        self.assertIn("4 measurements were updated.", document["messages"][0]["text"])
        after = self.run_json("conversions", "out.tma", "ENG1-N1").json["conversions"][0]["values"]
        self.assertEqual(after["MN1"], "Engine 1 fan speed, new calibration")
        self.assertEqual((after["CO"], after["CO-1"]), ("0.0", "0.00167912"))
        self.assertEqual(after["POC1"], "Calibration desk")

    def test_children_come_with_their_root(self):
        sample = os.path.join(SAMPLES, "flight-test.mdb")
        document = self.mdb("update-stream", FLIGHT, STREAM, "-o", "out.tma", "--fields", "none",
                            "--add-children", version=2, path=sample, status=REPORTED)
        self.assertEqual(document["added"], ["EVENT-PILOT", "EVENT-ENGINEER"])
        stream = self.run_json("stream", "out.tma", STREAM).json
        cell = [cell for cell in stream["cells"]
                if any(m["Name"] == "EVENT-MARK" for m in cell["measurements"])][0]
        self.assertEqual({m["Name"] for m in cell["measurements"]},
                         {"EVENT-MARK", "EVENT-PILOT", "EVENT-ENGINEER"})
        event = self.run_json("conversions", "out.tma", "EVENT-PILOT").json["conversions"][0]
        self.assertEqual(event["values"]["DICP-2"], "Mark")

    def test_without_fields_nothing_but_the_matches_is_counted(self):
        sample = os.path.join(SAMPLES, "flight-test.mdb")
        self.run_json("rewrite", FLIGHT, STREAM, "-o", "before.tma")
        document = self.mdb("update-stream", FLIGHT, STREAM, "-o", "out.tma", "--fields", "none",
                            version=2, path=sample, status=REPORTED)
        self.assertEqual(document["updated"], 4)
        self.assertEqual(self.read("out.tma").replace(b"out.tma", b""),
                         self.read("before.tma").replace(b"before.tma", b""))

    def test_a_stream_is_saved_and_saved_again(self):
        document = self.mdb("save-stream", FLIGHT, STREAM, version=2, path="new.mdb",
                            status=REPORTED)
        self.assertEqual(len(document["added"]), 65)
        self.assertEqual(document["messages"][0]["text"],
                         "65 measurements were added to the database.")
        before = self.read("new.mdb")
        again = self.mdb("save-stream", FLIGHT, STREAM, version=2, path="new.mdb", status=REPORTED)
        self.assertEqual(again["added"], [])
        self.assertEqual(self.read("new.mdb"), before)
        self.assertEqual(self.mdb("validate", version=2, path="new.mdb")["result"], 1)
        record = self.mdb("get", "ENG1-N1", version=2, path="new.mdb")["record"]
        self.assertEqual(record["Transducer Type"], "TACHOMETER")
        self.assertEqual((record["EU Type"], record["Eu Conversion Data"]), ("COE", "0 0.00167849"))

    def test_saving_over_a_database_drops_what_was_there(self):
        self.write("my.otb", line("Old"))
        document = self.mdb("save-stream", FLIGHT, STREAM, "--overwrite", status=REPORTED)
        self.assertEqual(len(document["added"]), 65)
        self.assertNotIn("Old", self.mdb("list")["names"])

    def test_a_stream_that_was_saved_updates_itself_without_a_change(self):
        self.mdb("save-stream", FLIGHT, STREAM, version=2, path="new.mdb", status=REPORTED)
        self.run_json("rewrite", FLIGHT, STREAM, "-o", "before.tma")
        document = self.mdb("update-stream", FLIGHT, STREAM, "-o", "out.tma", version=2,
                            path="new.mdb", status=REPORTED)
        self.assertEqual(document["updated"], 65)
        before = self.run_json("conversions", "before.tma").json["conversions"]
        after = self.run_json("conversions", "out.tma").json["conversions"]
        after = {each["name"]: each["values"] for each in after}
        for each in before:
            self.assertEqual(after[each["name"]], each["values"], each["name"])

    # --- buses ------------------------------------------------------------------------------

    BUS = ("G\\PN:FLIGHT;G\\106:11;G\\DSI\\N:1;G\\DSI-1:Radio;G\\DST-1:RF;T-1\\ID:Radio;"
           "M-1\\ID:Radio;M-1\\BSG1:PCM;M-1\\BB\\DLN:Bus 1;B-1\\DLN:Bus 1;B-1\\NBS\\N:1;"
           "B-1\\BID-1:001;B-1\\TK\\N-1:0;B-1\\NMS\\N-1:1;B-1\\MID-1-1:1;B-1\\TRA-1-1:00101;"
           "B-1\\STA-1-1:00010;B-1\\TRM-1-1:1;B-1\\MN\\N-1-1:1;B-1\\MN-1-1-1:ADC-ALT;")

    def add_bus(self, *arguments, status, version=2):
        self.write("in.tma", self.BUS)
        sample = os.path.join(SAMPLES, "flight-test.mdb")
        return self.mdb("add-bus", "in.tma", "Bus 1", "-o", "out.tma", *arguments, version=version,
                        path=sample, status=status)

    def test_measurements_of_a_bus_go_to_their_message(self):
        document = self.add_bus("--answer", "418=yes", status=REPORTED)
        self.assertEqual((document["added"], document["newDefinitions"]), (["ADC-MACH"], 1))
        self.assertEqual(self.ids_of(document), [415])
        self.assertIn("1 measurements were added.", document["messages"][0]["text"])
        message = self.run_json("bus", "out.tma", "Bus 1").json["buses"][0]["messages"][0]
        self.assertEqual([m["fields"]["MN"] for m in message["measurements"]],
                         ["ADC-ALT", "ADC-MACH"])
        location = message["measurements"][1]["locations"][0]["fields"]
        self.assertEqual(location, {"MWN": "3", "MBM": "FW", "MTO": "MSB", "MFP": "1"})
        record = self.run_json("conversions", "out.tma", "ADC-MACH").json["conversions"][0]
        self.assertEqual(record["values"]["CO-1"], "0.0001")

    def test_a_bus_stays_as_it_is_without_a_yes(self):
        document = self.add_bus(status=FAILED)
        self.assertEqual([q["id"] for q in document["questions"]], [418])
        self.assertFalse(self.exists("out.tma"))

    def test_a_database_without_bus_fields_adds_none(self):
        self.write("in.tma", self.BUS)
        self.write("my.otb", line("A", columns=28))
        document = self.mdb("add-bus", "in.tma", "Bus 1", "-o", "out.tma", version=0, status=FAILED)
        self.assertEqual(self.ids_of(document), [417])

    # --- conversion data --------------------------------------------------------------------

    def test_conversion_data_goes_out_and_back(self):
        result = self.run_json("mdb", "eu-data", FLIGHT, "ENG1-N1")
        self.assertEqual(result.status, CLEAN, result)
        self.assertEqual((result.json["type"], result.json["text"]), ("COE", "0 0.00167849"))
        result = self.run_json("mdb", "eu-apply", FLIGHT, "ENG1-N1", "DIS",
                               '0="Off line" 1="On"', "-o", "out.tma")
        self.assertEqual(result.status, CLEAN, result)
        self.assertIs(result.json["stored"], True)
        result = self.run_json("mdb", "eu-data", "out.tma", "ENG1-N1")
        self.assertEqual((result.json["type"], result.json["text"]), ("DIS", "0 Off_line 1 On"))
        result = self.run_json("mdb", "eu-apply", FLIGHT, "ENG1-N1", "PRS", "1", "-o", "no.tma")
        self.assertIs(result.json["stored"], False)
        self.assertEqual(self.run_json("mdb", "eu-data", FLIGHT, "nobody").status, FAILED)

    def test_data_that_became_shorter_leaves_no_old_items_in_the_file(self):
        self.write("in.tma", "G\\PN:X;G\\106:11;C-1\\DCN:A;C-1\\DCT:COE;C-1\\CO\\N:2;C-1\\CO:1;"
                             "C-1\\CO-1:2;C-1\\CO-2:3;")
        self.run_json("mdb", "eu-apply", "in.tma", "A", "COE", "7 8", "-o", "out.tma")
        self.assertNotIn(b"CO-2", self.read("out.tma"))
        self.assertEqual(self.run_json("mdb", "eu-data", "out.tma", "A").json["text"], "7 8")


if __name__ == "__main__":
    unittest.main()
