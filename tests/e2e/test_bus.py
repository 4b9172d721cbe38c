"""`bus`: the bus group of a data link, shown and edited by a script."""

import json
import os
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED, USAGE

HEAD = ("G\\PN:FLIGHT;G\\106:%s;G\\DSI\\N:1;G\\DSI-1:Radio;G\\DST-1:RF;T-1\\ID:Radio;"
        "M-1\\ID:Radio;M-1\\BSG1:PCM;M-1\\BB\\DLN:Bus 1;M-1\\SI\\N:1;M-1\\SI2-1:PCM;M-1\\SI\\DLN-1:Bare;")
BUS = ("B-1\\DLN:Bus 1;B-1\\TA:Plane;B-1\\BP:OD;B-1\\NBS\\N:2;"
       "B-1\\BID-1:000;B-1\\BNA-1:Left;B-1\\BT-1:1553;B-1\\UMN1-1:Word;B-1\\TK\\N-1:2;B-1\\TS-1-1:7;"
       "B-1\\TS-1-2:8;B-1\\NMS\\N-1:1;B-1\\MID-1-1:1;B-1\\MNA-1-1:First;B-1\\TRN-1-1:RT5;"
       "B-1\\TRA-1-1:101;B-1\\STA-1-1:00010;B-1\\TRM-1-1:0;B-1\\DWC-1-1:4;B-1\\MN\\N-1-1:1;"
       "B-1\\MN-1-1-1:A;B-1\\MT-1-1-1:D;B-1\\MN1-1-1-1:EV;B-1\\MN2-1-1-1:L;B-1\\NML\\N-1-1-1:1;"
       "B-1\\MWN-1-1-1-1:1;B-1\\MBM-1-1-1-1:FW;B-1\\MTO-1-1-1-1:MSB;B-1\\MFP-1-1-1-1:1;"
       "B-1\\BID-2:001;B-1\\BNA-2:Right;B-1\\BT-2:A429;B-1\\TK\\N-2:0;B-1\\NMS\\N-2:1;B-1\\MID-2-1:2;"
       "B-1\\LBL-2-1:017;B-1\\SDI-2-1:ALL;B-1\\MN\\N-2-1:0;B-1\\COM:one\r\ntwo;")
FORMAT = "P-1\\DLN:Bus 1;P-1\\TF:1553;P-1\\F1:24;P-1\\MF\\N:1;P-1\\MF1:128;P-1\\MF4:24;" \
         "P-1\\MF5:111110101111001100100000;"


def document(edition="11", bus=BUS, more=""):
    return HEAD % edition + bus + more


def group_lines(data, letter="B"):
    return [line for line in data.decode("latin-1").split("\r\n") if line.startswith(letter + "-")]


def lines_of(commands):
    return [text.strip() + ";" for text in commands.replace("\r\n", "\x14\x15").split(";") if text.strip()]


class BusTest(kavu.KavuTest):
    def bus(self, *arguments, data=None, link="Bus 1", status=CLEAN):
        self.write("in.tma", data or document())
        result = self.run_json("bus", "in.tma", link, *arguments)
        self.assertEqual(result.status, status, result)
        return result

    def edit(self, steps, *arguments, status=None, data=None):
        result = self.run_edit(steps, *arguments, data=data)
        if status is not None:
            self.assertEqual(result.status, status, result)
        return result

    def run_edit(self, steps, *arguments, data=None):
        self.write("in.tma", data or document())
        self.write("steps.json", json.dumps(steps))
        return self.run_json("bus", "in.tma", "Bus 1", "--edit", "steps.json", *arguments)

    def done(self, result):
        return [each["done"] for each in result.json["edits"]]


class ShowTest(BusTest):
    def test_every_level_is_shown_with_the_fields_of_the_edition(self):
        model = self.bus().json
        self.assertEqual(list(model)[:9], ["file", "opened", "changed", "version", "messages", "questions",
                                           "stream", "group", "fields"])
        self.assertEqual((model["stream"], model["group"], model["changed"]), ("Bus 1", 1, False))
        self.assertEqual(model["fields"], {"DLN": "Bus 1", "TA": "Plane", "BP": "OD", "COM": "one\r\ntwo"})
        left, right = model["buses"]
        self.assertEqual(list(left), ["number", "fields", "tracks", "remoteTerminals", "subTerminals", "messages"])
        self.assertEqual(list(left["fields"])[:8], ["BID", "BNA", "BT", "UMN1", "U1P", "U1PT", "U1M", "U1T"])
        self.assertEqual(len(left["fields"]), 18)
        self.assertEqual(left["tracks"], ["7", "8"])
        self.assertEqual(left["remoteTerminals"], [{"name": "RT5", "address": "00101"}])
        self.assertEqual(left["subTerminals"], [{"name": "", "address": "00010"}])
        message = left["messages"][0]
        self.assertEqual(list(message), ["number", "type", "fields", "receive", "measurements"])
        self.assertEqual(message["type"], "Controller To RT")
        self.assertEqual(list(message["fields"]),
                         ["MID", "MNA", "CWE", "CMD", "TRN", "TRA", "STN", "STA", "TRM", "DWC", "SPR",
                          "BMG\\FOT", "RCWE", "RCMD", "MCD", "MCW"])
        self.assertEqual(message["fields"]["TRA"], "101")
        self.assertEqual(message["receive"], [{"RTRN": "", "RTRA": "", "RSTN": "", "RSTA": "", "RDWC": ""}])
        measurement = message["measurements"][0]
        self.assertEqual(measurement["fields"], {"MN": "A", "MT": "D", "MN1": "EV", "MN2": "L", "BME\\FOT": ""})
        self.assertEqual(measurement["locations"],
                         [{"number": 1, "fields": {"MWN": "1", "MBM": "FW", "MTO": "MSB", "MFP": "1"}}])
        self.assertEqual(right["messages"][0]["fields"]["LBL"], "017")
        self.assertEqual(right["messages"][0]["fields"]["SDI"], "ALL")

    def test_older_editions_have_fewer_fields(self):
        fields = self.bus(data=document("99")).json["buses"][0]
        self.assertEqual(list(fields["fields"]), ["BID", "BNA"])
        self.assertNotIn("BMG\\FOT", fields["messages"][0]["fields"])
        self.assertEqual(len(fields["messages"][0]["receive"]), 1)
        self.assertEqual(list(self.bus(data=document("99")).json["fields"]), ["DLN", "TA", "COM"])
        self.write("in.ini", "[KAVU-9]\r\nIRIGInputVersion=1996\r\n")
        model = self.bus("--settings", "in.ini", data=document().replace("G\\106:11;", "")).json
        self.assertEqual(model["version"], 1996)
        self.assertEqual(model["buses"][0]["messages"][0]["receive"], [])

    def test_a_link_without_a_group_gives_an_empty_model(self):
        model = self.bus(link="Bare").json
        self.assertEqual((model["group"], model["buses"]), (0, []))
        self.assertEqual(model["fields"]["DLN"], "Bare")

    def test_a_link_that_is_not_there_is_a_failure(self):
        result = self.bus(link="None", status=FAILED)
        self.assertNotIn("buses", result.json)
        self.assertIn("'None'", result.json["messages"][0]["text"])

    def test_people_get_tables(self):
        self.write("in.tma", document())
        result = self.run_cli("bus", "in.tma", "Bus 1")
        self.assertEqual(result.status, CLEAN, result)
        for part in ("Number  Name", "Left", "Controller To RT", "Data Word"):
            self.assertIn(part, result.text)

    def test_bus_groups_of_recorders_open_and_stay_as_they_are(self):
        # As recorders write them: without the counts of tracks and messages, in another order, and
        # with numbers of buses that the standard does not have.
        first = "B-2\\DLN:In 1;B-2\\NBS\\N:1;B-2\\BID-1:00000000;B-2\\BNA-1:Bus;B-2\\BT-1:1553;"
        second = "B-3\\DLN:In 2;B-3\\NBS\\N:1;B-3\\BT-1:A429;B-3\\BNA-1:In 2;B-3\\BID-1:1;B-3\\NMS\\N-1:0;"
        data = document("06".replace("06", "07"), first + second)
        self.write("in.tma", data)
        for link, name, kind in (("In 1", "Bus", "1553"), ("In 2", "In 2", "A429")):
            model = self.run_json("bus", "in.tma", link).json
            self.assertEqual(model["buses"][0]["fields"]["BNA"], name)
            self.assertEqual(model["buses"][0]["fields"]["BT"], kind)
        result = self.run_json("save", "in.tma", "-o", "out.tma")
        self.assertLess(result.status, FAILED, result)
        self.assertEqual(group_lines(self.read("out.tma")), lines_of(first + second))

    def test_get_and_vocabulary_know_the_group_and_set_names_the_editor(self):
        self.write("in.tma", document())
        values = self.run_json("get", "in.tma", "B-1\\MN-1-1-1", "B-1\\BNA-2").json["values"]
        self.assertEqual(values, {"B-1\\MN-1-1-1": ["A"], "B-1\\BNA-2": ["Right"]})
        fields = {each["code"]: each for each in self.run_json("vocabulary", "B").json["fields"]}
        self.assertEqual(fields["MWN-n-m-k-j"]["limit"], 3)
        self.assertEqual([each["value"] for each in fields["BP"]["choices"]], ["NO", "OD", "EV"])
        result = self.run_json("set", "in.tma", "B-1\\TA=x", "-o", "out.tma")
        self.assertEqual(result.status, FAILED)
        self.assertIn("Use 'bus' with --edit.", result.json["messages"][-1]["text"])
        self.assertFalse(self.exists("out.tma"))


class EditTest(BusTest):
    MESSAGE = {"MID": "9", "MNA": "New", "TRA": "111", "STA": "00011", "TRM": "0", "DWC": "3"}

    def test_a_message_with_three_measurements_is_added_to_the_file(self):
        steps = [{"do": "add", "at": [1], "values": self.MESSAGE}]
        for n, name in enumerate(("X", "Y", "Z"), 1):
            steps.append({"do": "add", "at": [1, 2], "values": {"MN": name, "MT": "D", "MN1": "NO"}})
            steps.append({"do": "add", "at": [1, 2, n],
                          "values": {"MWN": str(n), "MBM": "FW", "MTO": "MSB", "MFP": "1"}})
        result = self.edit(steps, "-o", "out.tma", status=CLEAN)
        self.assertEqual(self.done(result), [True] * 7)
        self.assertEqual(result.json["output"], "out.tma")
        self.assertTrue(result.json["changed"])
        self.assertEqual(result.json["buses"][0]["messages"][1]["fields"]["TRA"], "00111")
        before = lines_of(BUS)
        added = ["B-1\\MID-1-2:9;", "B-1\\MNA-1-2:New;", "B-1\\TRA-1-2:00111;", "B-1\\STA-1-2:00011;",
                 "B-1\\TRM-1-2:0;", "B-1\\DWC-1-2:3;", "B-1\\MN\\N-1-2:3;"]
        for n, name in enumerate(("X", "Y", "Z"), 1):
            added += ["B-1\\MN-1-2-%d:%s;" % (n, name), "B-1\\MT-1-2-%d:D;" % n, "B-1\\MN1-1-2-%d:NO;" % n,
                      "B-1\\NML\\N-1-2-%d:1;" % n, "B-1\\MWN-1-2-%d-1:%d;" % (n, n),
                      "B-1\\MBM-1-2-%d-1:FW;" % n, "B-1\\MTO-1-2-%d-1:MSB;" % n, "B-1\\MFP-1-2-%d-1:1;" % n]
        at = before.index("B-1\\BID-2:001;")
        expected = before[:at] + added + before[at:]
        expected[expected.index("B-1\\NMS\\N-1:1;")] = "B-1\\NMS\\N-1:2;"
        written = self.read("out.tma")
        self.assertEqual(group_lines(written)[:-1], expected[:-1])
        self.assertIn(b"B-1\\COM:one\r\ntwo;", written)
        # And the file shows what was printed.
        self.assertEqual(self.run_json("bus", "out.tma", "Bus 1").json["buses"], result.json["buses"])

    def test_every_level_is_set_and_deleted(self):
        steps = [{"do": "set", "at": [], "values": {"COM": "new"}},
                 {"do": "set", "at": [1], "tracks": ["9"], "values": {"BNA": "Port"}},
                 {"do": "set", "at": [1, 1], "type": "RT To RT",
                  "values": {"RTRA": "00111", "RSTA": "00011"}},
                 {"do": "set", "at": [1, 1, 1], "values": {"MT": "C"}},
                 {"do": "set", "at": [1, 1, 1, 1], "values": {"MBM": "0101"}},
                 {"do": "add", "at": [], "values": {"BID": "011"}},
                 {"do": "delete", "at": [3]}, {"do": "delete", "at": [1, 1, 1, 1]},
                 {"do": "delete", "at": [1, 1, 1]}]
        result = self.edit(steps, "--answer", "82=yes", status=REPORTED)
        self.assertEqual(self.done(result), [True] * 9)
        self.assertEqual(result.ids(), [382])
        self.assertEqual(result.asked(), [82, 82, 82])
        model = result.json
        self.assertEqual(model["fields"]["COM"], "new")
        self.assertEqual(model["buses"][0]["tracks"], ["9"])
        self.assertEqual(model["buses"][0]["messages"][0]["type"], "RT To RT")
        self.assertEqual(model["buses"][0]["messages"][0]["measurements"], [])
        self.assertEqual(len(model["buses"]), 2)
        self.assertNotIn("output", model)

    def test_a_delete_asks_and_no_is_the_default(self):
        result = self.edit([{"do": "delete", "at": [1]}], status=CLEAN)
        self.assertEqual(self.done(result), [False])
        question = result.json["questions"][0]
        self.assertEqual((question["id"], question["title"], question["reply"]), (82, 0, "no"))
        self.assertEqual(len(result.json["buses"]), 2)

    def test_refused_addresses_and_words_change_nothing(self):
        before = self.bus().json["buses"]
        cases = [({"TRA": "00201"}, 376), ({"RSTA": "x"}, 376), ({"CWE": "W", "CMD": "XYZ"}, 392),
                 ({"TRA": "11111"}, 377), ({"MNA": "a;b"}, 402), ({"DWC": ""}, 384),
                 ({"TRN": "", "TRA": ""}, 383), ({"MNA": "x" * 33}, 0)]
        result = self.edit([{"do": "set", "at": [1, 1], "values": values} for values, _ in cases],
                           status=REPORTED)
        self.assertEqual(self.done(result), [False] * len(cases))
        self.assertEqual(result.ids(), [number for _, number in cases])
        self.assertEqual(result.json["buses"], before)

    def test_a_later_step_is_done_though_one_before_it_was_refused(self):
        result = self.edit([{"do": "set", "at": [9], "values": {}},
                            {"do": "set", "at": [1], "values": {"BNA": "Port"}},
                            {"do": "add", "at": [1, "M"], "values": {}}], status=REPORTED)
        self.assertEqual(result.json["edits"], [{"step": 1, "done": False}, {"step": 2, "done": True},
                                                {"step": 3, "done": False}])
        self.assertEqual(result.json["buses"][0]["fields"]["BNA"], "Port")

    def test_wrong_lists_are_wrong_usage_and_nothing_is_done(self):
        self.write("in.tma", document())
        for steps in ('[{"do":', '{}', '[{"do":"move","at":[1]}]', '[{"do":"delete"}]',
                      '[{"do":"add","at":[1]}]', '[{"do":"set","at":[1],"values":{"BNA":7}}]'):
            result = self.run_cli("bus", "in.tma", "Bus 1", "--edit", steps, "-o", "out.tma")
            self.assertEqual(result.status, USAGE, result)
            self.assertFalse(self.exists("out.tma"))
        result = self.run_cli("bus", "in.tma", "Bus 1", "--edit", "missing.json")
        self.assertEqual(result.status, USAGE, result)
        self.assertIn(b"missing.json", result.err)

    def test_terminals_are_added_kept_and_loaded(self):
        self.write("kavu.ini", "")
        keep = self.edit([{"do": "add-terminal", "at": [1], "list": "sub",
                           "values": {"name": "Sub", "address": "1"}},
                          {"do": "save-terminals", "at": [1]}],
                         "--settings", "kavu.ini", "--answer", "394=yes", status=CLEAN)
        self.assertEqual(self.done(keep), [True, True])
        self.assertEqual(keep.asked(), [394])
        self.assertEqual(keep.json["buses"][0]["subTerminals"][-1], {"name": "Sub", "address": "00001"})
        load = self.edit([{"do": "load-terminals", "at": [2]}], "--settings", "kavu.ini",
                         "--answer", "393=yes", status=CLEAN)
        self.assertEqual(load.json["buses"][1]["remoteTerminals"], [{"name": "RT5", "address": "00101"}])
        self.assertIn("\tRT5\t00101\n", load.json["questions"][0]["text"])
        again = self.edit([{"do": "add-terminal", "at": [1], "list": "sub",
                            "values": {"name": "Sub", "address": "1"}},
                           {"do": "load-terminals", "at": [1]}], "--settings", "kavu.ini", status=REPORTED)
        self.assertEqual(self.done(again), [True, False])
        self.assertEqual(again.json["messages"][0]["text"],
                         "No new default terminal definitions existed, or they are already defined")

    def test_a_group_is_made_for_a_link_without_one(self):
        self.write("in.tma", document())
        result = self.run_json("bus", "in.tma", "Bare", "--edit",
                               '[{"do":"add","at":[],"values":{"BNA":"New"}}]', "-o", "out.tma")
        self.assertEqual((result.status, result.json["group"]), (CLEAN, 2), result)
        self.assertEqual(group_lines(self.read("out.tma"))[-5:],
                         ["B-2\\DLN:Bare;", "B-2\\NBS\\N:1;", "B-2\\BNA-1:New;", "B-2\\TK\\N-1:0;",
                          "B-2\\NMS\\N-1:0;"])

    def test_what_would_be_dropped_is_asked_about(self):
        data = document(more="B-1\\XYZ-1:mine;")
        for options, kept in (((), False), (("--answer-all", "yes"), True)):
            result = self.edit([], "-o", "out.tma", *options, data=data)
            self.assertEqual(result.status, CLEAN, result)
            self.assertIn("B-1\\XYZ-1:mine;", result.json["questions"][0]["text"])
            self.assertEqual(b"B-1\\XYZ-1:mine;" in self.read("out.tma"), kept)

    def test_measurement_names_of_other_streams_are_refused(self):
        more = ("P-2\\DLN:Bare;P-2\\TF:ONE;D-1\\DLN:Bare;D-1\\ML\\N:1;D-1\\MN\\N-1:1;D-1\\MN-1-1:Taken;")
        steps = [{"do": "add", "at": [1, 1], "values": {"MN": "Taken"}}]
        result = self.edit(steps, status=REPORTED, data=document(more=more))
        self.assertIn(455, result.ids())
        self.assertEqual(self.done(result), [False])


class StreamTest(BusTest):
    def rewrite(self, data, *options):
        self.write("in.tma", data)
        result = self.run_json("rewrite", "in.tma", "Bus 1", "-o", "out.tma", *options)
        self.assertLess(result.status, FAILED, result)
        return result

    def test_rewrite_writes_the_bus_group_and_makes_no_format(self):
        self.rewrite(document(bus="B-1\\NBS\\N:1;B-1\\BNA-1:Left;B-1\\DLN:Bus 1;"))
        written = self.read("out.tma")
        self.assertEqual(group_lines(written), ["B-1\\DLN:Bus 1;", "B-1\\NBS\\N:1;", "B-1\\BNA-1:Left;",
                                                "B-1\\TK\\N-1:0;", "B-1\\NMS\\N-1:0;"])
        self.assertEqual(group_lines(written, "P"), [])

    def test_rewrite_writes_both_groups_of_a_stream_with_a_format(self):
        self.rewrite(document(more=FORMAT))
        written = self.read("out.tma")
        self.assertEqual(group_lines(written)[:-1], lines_of(BUS)[:-1])
        self.assertIn("P-1\\TF:1553;", group_lines(written, "P"))

    def test_the_deep_check_loads_buses(self):
        for more in ("", FORMAT):
            self.write("in.tma", document(more=more))
            streams = self.run_json("check", "--deep", "in.tma").json["streams"]
            self.assertIn("Bus 1", [each["stream"] for each in streams])
            self.assertTrue(all(each["result"] >= 0 for each in streams), streams)


if __name__ == "__main__":
    unittest.main()
