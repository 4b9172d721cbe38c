"""The commands of a PCM stream: `stream`, `rewrite`, `word-frame`, `check --deep`, and the
summary in `tree`."""

import json
import os
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED, USAGE

ROOT = os.path.dirname(os.path.dirname(kavu.DATA))
SAMPLES = os.path.join(ROOT, "samples")
GOLDEN = os.path.join(ROOT, "tests", "golden", "streams")
STREAMS = ("PCM Stream 1", "PCM Stream 2", "PCM Stream 3")
SETTINGS = "[KAVU-9]\r\nWdFrCreation=1\r\n"

# A stream with an explicit value for everything: one of each kind of word, a fragmented and a
# word/frame measurement, an async slot.
SMALL = (
    "G\\PN:SMALL;G\\106:09;G\\DSI\\N:1;G\\DSI-1:Source;G\\DST-1:RF;"
    "T-1\\ID:Source;T-1\\SCO\\N:0;M-1\\ID:Source;M-1\\BB\\DLN:PCM 1;M-1\\SI\\N:0;"
    "P-1\\DLN:PCM 1;P-1\\D1:NRZ-L;P-1\\D2:64000;P-1\\TF:TWO;P-1\\F1:16;P-1\\MF\\N:4;P-1\\MF1:16;"
    "P-1\\MF2:264;P-1\\MF4:24;P-1\\MF5:111110101111001100100000;"
    "P-1\\ISF\\N:1;P-1\\ISF1-1:SFID;P-1\\ISF2-1:ID;P-1\\IDC1-1:1;P-1\\IDC2-1:16;P-1\\IDC3-1:1;"
    "P-1\\IDC4-1:8;P-1\\IDC5-1:M;P-1\\IDC6-1:1;P-1\\IDC7-1:1;P-1\\IDC8-1:4;P-1\\IDC9-1:4;"
    "P-1\\IDC10-1:INC;P-1\\SF\\N-1:1;P-1\\SF1-1-1:SLOW;P-1\\SF2-1-1:NO;P-1\\SF4-1-1-1:3;"
    "P-1\\SF6-1-1:4;"
    "P-1\\AEF\\N:1;P-1\\AEF\\DLN-1:EMBEDDED;P-1\\AEF1-1:NO;P-1\\AEF3-1-1:9;P-1\\AEF5-1-1:8;"
    "P-1\\AEF6-1-1:11111111;"
    "D-1\\DLN:PCM 1;D-1\\ML\\N:1;D-1\\MLN-1:List;D-1\\MN\\N-1:4;"
    "D-1\\MN-1-1:EVERY;D-1\\LT-1-1:MF;D-1\\MF-1-1:2;D-1\\MFM-1-1:FW;"
    "D-1\\MN-1-2:ONCE;D-1\\LT-1-2:SF;D-1\\SF1-1-2:SLOW;D-1\\SF2-1-2:3;D-1\\SFM-1-2:11;"
    "D-1\\MN-1-3:PARTS;D-1\\LT-1-3:MFFR;D-1\\FMF\\N-1-3:2;D-1\\FMF1-1-3:32;D-1\\FMF2-1-3:I;"
    "D-1\\FMF3-1-3:5;D-1\\FMF4-1-3:FW;D-1\\FMF5-1-3:2;"
    "D-1\\MN-1-4:RANGE;D-1\\LT-1-4:WDFR;D-1\\MML\\N-1-4:1;D-1\\MNF\\N-1-4-1:1;"
    "D-1\\WP-1-4-1-1:10;D-1\\WI-1-4-1-1:2;D-1\\EWP-1-4-1-1:14;D-1\\FP-1-4-1-1:1;"
    "D-1\\FI-1-4-1-1:1;D-1\\EFP-1-4-1-1:4;D-1\\WFM-1-4-1-1:FW;D-1\\WFP-1-4-1-1:1;"
)


def samples():
    return [(name, stream) for name in ("flight-test", "flight-test-96", "flight-test-11")
            for stream in STREAMS]


def occurrences(model):
    """How often each measurement is in the major frame, from the members of `stream`."""
    frames = model["attributes"]["NumberOfFrames"]
    depths = {word["fwp"]: word["depth"] if word["type"] == "SubframeWord" else 1
              for word in model["words"]}
    hits, parts = {}, {}
    for cell in model["cells"]:
        repetitions = (frames - cell["index"]) // depths[cell["fwp"]] + 1
        for measurement in cell["measurements"]:
            if measurement["AsyncNumber"] > 0:
                continue
            name = measurement["Name"]
            hits[name] = hits.get(name, 0) + repetitions
            if measurement["LocationType"] == "WDFR":
                definition = model["wordFrameDefinitions"][measurement["WordFrameIndex"] - 1]
                parts[name] = max(location["FragmentCount"]
                                  for location in definition["Locations"])
            elif measurement["LocationType"] in ("MFFR", "SFFR"):
                parts[name] = measurement["LocationCount"]
    return {name: count // parts.get(name, 1) for name, count in hits.items()}


class StreamTest(kavu.KavuTest):
    def setUp(self):
        super().setUp()
        self.write("kavu.ini", SETTINGS)
        self.write("kavu96.ini", SETTINGS + "IRIGInputVersion=1996\r\n")

    def options(self, name):
        return ["--settings", "kavu96.ini" if name.endswith("96") else "kavu.ini"]

    def sample(self, name):
        return os.path.join(SAMPLES, name + ".tma")

    def model(self, file, link, settings=("--settings", "kavu.ini"), status=CLEAN):
        result = self.run_json(*settings, "stream", file, link)
        self.assertEqual(result.status, status, result)
        return result.json

    # --- stream -------------------------------------------------------------------------

    def test_the_cells_of_ranges_have_the_masks_of_their_fragments(self):
        self.write("in.tma", SMALL.replace("WFM-1-4-1-1:FW", "WFM-1-4-1-1:11110000"))
        masks = {(cell["fwp"], measurement["Name"]): measurement["Mask"]
                 for cell in self.model("in.tma", "PCM 1")["cells"]
                 for measurement in cell["measurements"]}
        self.assertEqual([masks[word, "RANGE"] for word in (10, 12, 14)], ["11110000"] * 3)

    def test_the_members_have_their_names_and_order(self):
        self.write("in.tma", SMALL)
        model = self.model("in.tma", "PCM 1")
        self.assertEqual(list(model), [
            "file", "opened", "changed", "version", "messages", "questions", "stream", "result",
            "implicitSubframes", "attributes", "measurementLists", "words", "idCounters",
            "asyncFormats", "cells", "wordFrameDefinitions"])
        self.assertEqual(list(model["words"][0]), ["fwp", "type", "length", "depth",
                                                   "idCounterIndex", "subframeIndex"])
        self.assertEqual(list(model["idCounters"][0]), [
            "index", "fwp", "Name", "Type", "WordLength", "MsbStartBit", "CounterLength",
            "TransferOrder", "InitialValue", "StartFrame", "EndValue", "EndFrame",
            "CountDirection", "Subframes"])
        self.assertEqual(list(model["idCounters"][0]["Subframes"][0]), [
            "index", "fwps", "Name", "Hidden", "Supercommutated", "LocationMode", "Interval",
            "Depth"])
        self.assertEqual(list(model["cells"][0]["measurements"][0]), [
            "Name", "Parity", "ParityTransferOrder", "TransferOrder", "FilterOverwrite",
            "LocationType", "AsyncNumber", "Mask", "LocationMode", "LocationCount", "Interval",
            "ReconstructedLength", "FragmentTransferOrder", "FragmentNumber", "WordFrameIndex"])
        self.assertEqual(list(model["asyncFormats"][0])[:6], [
            "number", "IsDataMerge", "DataLinkName", "Supercom", "LocationMode", "Interval"])
        attributes = list(model["attributes"])
        self.assertEqual((attributes[0], attributes[-1]), ("CommonWordLength", "BitRate"))
        self.assertNotIn("Changed", attributes)
        self.assertNotIn("FormatEdited", attributes)

    def test_the_whole_model_is_the_golden_one(self):
        self.write("in.tma", SMALL)
        model = self.model("in.tma", "PCM 1")
        path = os.path.join(GOLDEN, "small.json")
        if os.environ.get("KAVU_WRITE_GOLDEN"):
            with open(path, "w", encoding="utf-8") as file:
                file.write(json.dumps(model, indent=1) + "\n")
        with open(path, encoding="utf-8") as file:
            self.assertEqual(model, json.load(file))

    def test_the_places_of_the_small_stream(self):
        self.write("in.tma", SMALL)
        model = self.model("in.tma", "PCM 1")
        places = {}
        for cell in model["cells"]:
            for measurement in cell["measurements"]:
                places.setdefault(measurement["Name"], []).append((cell["fwp"], cell["index"]))
        self.assertEqual(places, {"EVERY": [(2, 1)], "ONCE": [(3, 3)], "PARTS": [(5, 1), (7, 1)],
                                  "": [(9, 1)], "RANGE": [(10, 1), (12, 1), (14, 1)]})
        self.assertEqual(model["asyncFormats"][0]["locations"],
                         [{"fwp": 9, "mask": "11111111", "frames": [[1, 1, 4]]}])
        self.assertEqual(occurrences(model), {"EVERY": 4, "ONCE": 1, "PARTS": 4, "RANGE": 12})
        types = [word["type"] for word in model["words"][:4]]
        self.assertEqual(types, ["SyncWord", "IdCounterWord", "MinorWord", "SubframeWord"])

    def test_every_stream_of_the_samples_loads_clean(self):
        for name, link in samples():
            with self.subTest(name=name, link=link):
                model = self.model(self.sample(name), link, self.options(name))
                self.assertEqual(model["result"], 0)
                self.assertEqual(model["messages"], [])

    def test_all_editions_of_a_sample_have_the_same_samples(self):
        for link in STREAMS:
            counts = [occurrences(self.model(self.sample(name), link, self.options(name)))
                      for name in ("flight-test", "flight-test-11")]
            self.assertEqual(counts[0], counts[1], link)

    def test_a_corrected_stream_says_so(self):
        self.write("in.tma", SMALL.replace("P-1\\MF2:264", "P-1\\MF2:999"))
        model = self.model("in.tma", "PCM 1", status=REPORTED)
        self.assertEqual(model["result"], 1)
        self.assertEqual([message["id"] for message in model["messages"]], [176])
        self.assertEqual(model["attributes"]["BitsPerMinorFrame"], 264)

    def test_a_load_that_fails_has_no_model(self):
        self.write("in.tma", SMALL.replace("D-1\\LT-1-1:MF;", ""))
        result = self.run_json("--settings", "kavu.ini", "stream", "in.tma", "PCM 1")
        self.assertEqual(result.status, FAILED, result)
        self.assertEqual(result.json["result"], -1)
        self.assertNotIn("cells", result.json)
        self.assertEqual(result.asked(), [241])
        answered = self.run_json("--settings", "kavu.ini", "--answer", "241=yes", "stream",
                                 "in.tma", "PCM 1")
        self.assertEqual((answered.status, answered.json["result"]), (CLEAN, 1), answered)

    def test_a_link_that_nobody_bears_is_told(self):
        self.write("in.tma", SMALL)
        result = self.run_json("--settings", "kavu.ini", "stream", "in.tma", "PCM 2")
        self.assertEqual(result.status, FAILED, result)
        self.assertIn("There is no stream 'PCM 2'", result.json["messages"][0]["text"])
        self.assertIn(b"not done", result.err)

    def not_loaded(self, data, link):
        """The one message of a run that has no stream to show."""
        self.write("in.tma", data)
        opened = self.run_json("--settings", "kavu.ini", "check", "in.tma")
        result = self.run_json("--settings", "kavu.ini", "stream", "in.tma", link)
        self.assertEqual((result.status, result.json["result"]), (FAILED, -1), result)
        self.assertNotIn("cells", result.json)
        said = result.json["messages"][len(opened.json["messages"]):]
        self.assertEqual(len(said), 1, result)
        return said[0]["text"]

    def test_names_that_differ_in_case_are_two_streams(self):
        second = "P-2\\DLN:pcm 1;P-2\\D2:1000;P-2\\TF:ONE;P-2\\F1:16;P-2\\MF\\N:1;P-2\\MF1:6;"
        self.write("in.tma", SMALL + second)
        small = self.model("in.tma", "PCM 1")
        self.assertEqual((small["result"], small["attributes"]["WordsPerMinorFrame"]), (0, 16))
        other = self.model("in.tma", "pcm 1", status=REPORTED)
        self.assertEqual(other["attributes"]["WordsPerMinorFrame"], 6)
        self.assertEqual(self.not_loaded(SMALL + second, "Pcm 1"),
                         "There is no stream 'Pcm 1' in this document, but there is a 'PCM 1'.")

    def test_a_stream_that_no_pcm_group_defines_is_told(self):
        linked = "G\\106:%s;G\\DSI\\N:1;G\\DSI-1:S;G\\DST-1:RF;T-1\\ID:S;M-1\\ID:S;M-1\\BB\\DLN:X;%s"
        self.assertEqual(self.not_loaded(linked % ("05", "S-1\\DLN:X;"), "X"),
                         "'X' is a packet stream, and no PCM stream. This file is 106-05; streams "
                         "of messages are known from 106-09 on.")
        self.assertEqual(self.not_loaded(linked % ("09", "A-1\\DLN:X;"), "X"),
                         "'X' is a PAM stream, and no PCM stream.")
        self.assertEqual(self.not_loaded(linked % ("09", "B-1\\DLN:Y;S-2\\DLN:X;"), "Y"),
                         "The bus stream 'Y' is not a data link of any data source.")

    def test_the_question_for_a_counter_takes_a_word(self):
        plain = SMALL.split("P-1\\ISF")[0] + "D-1" + SMALL.split("D-1", 1)[1]
        data = plain.replace("MN\\N-1:4", "MN\\N-1:1").replace("D-1\\LT-1-1:MF;",
                                                              "D-1\\LT-1-1:WDFR;")
        data = data.replace("D-1\\MF-1-1:2;D-1\\MFM-1-1:FW;",
                            "D-1\\MML\\N-1-1:1;D-1\\WP-1-1-1-1:2;D-1\\FP-1-1-1-1:3;")
        data = data.split("D-1\\MN-1-2")[0]
        self.write("in.tma", data)
        result = self.run_json("--settings", "kavu.ini", "--answer", "358=12", "stream", "in.tma",
                               "PCM 1")
        model = result.json
        self.assertEqual([question["id"] for question in model["questions"]][:1], [358], result)
        self.assertEqual(model["idCounters"][0]["fwp"], 12)
        self.assertEqual(occurrences(model), {"EVERY": 1})

    def test_the_text_form_is_aligned(self):
        self.write("in.tma", SMALL)
        result = self.run_cli("--settings", "kavu.ini", "stream", "in.tma", "PCM 1")
        self.assertEqual(result.status, CLEAN, result)
        lines = result.text.splitlines()
        self.assertEqual(lines[:2], ["PCM 1: PCM (Class 2)",
                                     "16 words, 4 frames, 64000 bit/s, 1 ID counter, 1 subframe, "
                                     "4 measurements"])
        for heading in ("Attributes", "Measurement lists", "Words", "ID counters", "Subframes",
                        "Async formats", "Measurements"):
            self.assertIn(heading, lines)
        rows = lines[lines.index("Measurements") + 1:][:5]
        self.assertEqual([row.split()[0] for row in rows],
                         ["Name", "EVERY", "ONCE", "PARTS", "RANGE"])
        self.assertEqual(len({row.index(kind) for row, kind in
                              zip(rows, ("Location", "MF", "SF", "MFFR", "WDFR"))}), 1, rows)
        self.assertFalse([line for line in lines if line != line.rstrip()])

    # --- rewrite ------------------------------------------------------------------------

    def rewritten(self, file, link, *settings, command="rewrite", status=CLEAN):
        result = self.run_json(*settings, command, file, link, "-o", "out.tma")
        self.assertEqual(result.status, status, result)
        self.assertEqual(result.json["output"], "out.tma")
        self.assertTrue(result.json["changed"])
        return result

    def without_group_numbers(self, model):
        """What two loads of one stream have in common, whatever the numbers of definitions."""
        definitions = {entry["number"]: entry["Locations"]
                       for entry in model["wordFrameDefinitions"]}
        cells = json.loads(json.dumps(model["cells"]))
        for cell in cells:
            for measurement in cell["measurements"]:
                number = measurement.pop("WordFrameIndex")
                measurement["WordFrame"] = definitions.get(number)
        return {key: model[key] for key in ("attributes", "measurementLists", "asyncFormats")}, cells

    def test_a_rewritten_sample_has_the_same_model(self):
        for name, link in samples():
            with self.subTest(name=name, link=link):
                settings = self.options(name)
                before = self.model(self.sample(name), link, settings)
                self.rewritten(self.sample(name), link, *settings)
                after = self.model("out.tma", link, settings)
                self.assertEqual(self.without_group_numbers(after),
                                 self.without_group_numbers(before))

    def test_a_second_rewrite_changes_nothing(self):
        for link in STREAMS:
            settings = self.options("flight-test")
            self.rewritten(self.sample("flight-test"), link, *settings)
            once = self.read("out.tma")
            os.rename(self.path("out.tma"), self.path("in.tma"))
            self.rewritten("in.tma", link, *settings)
            self.assertEqual(self.read("out.tma"), once, link)

    def test_the_other_groups_stay_as_a_save_leaves_them(self):
        self.write("in.tma", SMALL)
        self.run_json("save", "in.tma", "-o", "saved.tma")
        self.rewritten("in.tma", "PCM 1", "--settings", "kavu.ini")
        kept = [[line for line in self.read(name).split(b"\r\n")
                 if not line.startswith((b"P-1", b"D-1", b"COMMENT", b"G\\FN"))]
                for name in ("saved.tma", "out.tma")]
        self.assertEqual(kept[0], kept[1])

    def test_an_output_is_needed(self):
        for command in ("rewrite", "word-frame"):
            self.assertEqual(self.run_cli(command, "in.tma", "PCM 1").status, USAGE)
        self.assertEqual(self.run_cli("stream", "in.tma").status, USAGE)

    def test_nothing_is_written_for_a_stream_that_is_not_there(self):
        self.write("in.tma", SMALL)
        for command in ("rewrite", "word-frame"):
            result = self.run_json("--settings", "kavu.ini", command, "in.tma", "X", "-o", "o.tma")
            self.assertEqual(result.status, FAILED, result)
            self.assertFalse(self.exists("o.tma"))
            self.assertFalse(result.json["changed"])

    # --- word-frame ---------------------------------------------------------------------

    def test_a_conversion_keeps_every_sample(self):
        for link in STREAMS:
            settings = self.options("flight-test")
            before = self.model(self.sample("flight-test"), link, settings)
            self.rewritten(self.sample("flight-test"), link, *settings, command="word-frame")
            after = self.model("out.tma", link, settings)
            self.assertEqual(occurrences(after), occurrences(before), link)
            types = {measurement["LocationType"] for cell in after["cells"]
                     for measurement in cell["measurements"] if not measurement["AsyncNumber"]}
            self.assertEqual(types, {"WDFR"}, link)

    def test_an_older_edition_is_refused(self):
        self.write("in.tma", SMALL.replace("G\\106:09", "G\\106:01").split("D-1\\MN-1-4")[0])
        result = self.run_json("--settings", "kavu.ini", "word-frame", "in.tma", "PCM 1", "-o",
                               "out.tma")
        self.assertEqual(result.status, FAILED, result)
        self.assertFalse(self.exists("out.tma"))
        self.assertIn("106-04 and later", result.json["messages"][-1]["text"])

    def test_the_move_to_106_11_converts_the_streams(self):
        before = [occurrences(self.model(self.sample("flight-test"), link)) for link in STREAMS]
        result = self.run_json("--settings", "kavu.ini", "save", self.sample("flight-test"), "-o",
                               "out.tma", "--edition", "2011")
        self.assertEqual(result.ids(), [444], result)
        after = [occurrences(self.model("out.tma", link)) for link in STREAMS]
        self.assertEqual(after, before)

    # --- check --deep and tree ----------------------------------------------------------

    def test_a_deep_check_names_the_stream_of_each_message(self):
        second = SMALL[SMALL.index("P-1"):].replace("P-1\\", "P-2\\").replace("D-1\\", "D-2\\")
        data = SMALL.replace("P-1\\MF2:264", "P-1\\MF2:1").replace(
            "M-1\\SI\\N:0;", "M-1\\SI\\N:1;M-1\\SI\\DLN-1:PCM 2;")
        # One name in two streams would be told as well.
        for name in ("EVERY", "ONCE", "PARTS", "RANGE"):
            second = second.replace(name, name + "-2")
        data += second.replace("PCM 1", "PCM 2").replace("P-2\\SF6-1-1:4", "P-2\\SF6-1-1:1")
        self.write("in.tma", data)
        result = self.run_json("--settings", "kavu.ini", "check", "--deep", "in.tma")
        self.assertEqual(result.status, REPORTED, result)
        document = result.json
        self.assertEqual([(message["stream"], message["id"]) for message in document["messages"]],
                         [("PCM 1", 176), ("PCM 2", 212)])
        self.assertIn("depth of '1'", document["messages"][1]["text"])
        self.assertEqual(document["streams"], [{"stream": "PCM 1", "result": 1},
                                               {"stream": "PCM 2", "result": 1}])
        plain = self.run_json("--settings", "kavu.ini", "check", "in.tma")
        self.assertEqual((plain.status, plain.json["messages"]), (CLEAN, []))
        self.assertNotIn("streams", plain.json)

    def test_a_deep_check_goes_on_behind_a_stream_that_fails(self):
        self.write("in.tma", SMALL.replace("D-1\\LT-1-1:MF;", ""))
        result = self.run_json("--settings", "kavu.ini", "check", "--deep", "in.tma")
        self.assertEqual(result.status, REPORTED, result)
        self.assertEqual(result.json["streams"], [{"stream": "PCM 1", "result": -1}])
        self.assertEqual(result.json["questions"][0]["stream"], "PCM 1")

    def test_a_deep_check_of_the_samples_is_clean(self):
        for name in ("flight-test", "flight-test-96", "flight-test-11"):
            result = self.run_cli(*self.options(name), "check", "--deep", self.sample(name))
            self.assertEqual(result.status, CLEAN, result)
            self.assertIn("PCM Stream 1  clean", result.text)

    def test_the_tree_sums_up_each_stream(self):
        self.write("in.tma", SMALL)
        self.assertIn("16 words, 4 frames, 64000 bit/s, 1 ID counter, 1 subframe, 4 measurements",
                      self.run_cli("tree", "in.tma").text)

    # --- bad input ----------------------------------------------------------------------

    def test_wild_numbers_end_soon_and_are_told(self):
        for wild in ("1000000000", "99999999999999999999", "-1", "0", "2147483647"):
            for code in ("P-1\\MF\\N", "P-1\\MF1", "P-1\\ISF\\N", "P-1\\SF\\N-1", "P-1\\F1",
                         "P-1\\AEF\\N", "D-1\\ML\\N", "D-1\\MN\\N-1", "D-1\\FMF\\N-1-3",
                         "D-1\\FMF5-1-3", "D-1\\MML\\N-1-4", "D-1\\MNF\\N-1-4-1",
                         "D-1\\WI-1-4-1-1", "D-1\\EWP-1-4-1-1", "D-1\\FI-1-4-1-1",
                         "D-1\\EFP-1-4-1-1", "P-1\\SF6-1-1", "P-1\\IDC9-1"):
                with self.subTest(code=code, wild=wild):
                    start = SMALL.index(code + ":") + len(code) + 1
                    data = SMALL[:start] + wild + SMALL[SMALL.index(";", start):]
                    self.write("in.tma", data)
                    process = self.start("--settings", "kavu.ini", "--json", "rewrite", "in.tma",
                                         "PCM 1", "-o", "out.tma")
                    result = self.finish(process, timeout=20)
                    self.assertIn(result.status, (CLEAN, REPORTED, FAILED), result)
                    self.assertIn(result.json["result"], (-1, 0, 1))

    def test_an_interrupt_leaves_nothing(self):
        lists = "".join("D-1\\MN-1-%d:M%d;D-1\\LT-1-%d:MF;D-1\\MF-1-%d:%d;\r\n" %
                        (m, m, m, m, 2 + m % 13) for m in range(1, 60001))
        data = SMALL.split("D-1\\MN\\N")[0] + "D-1\\MN\\N-1:60000;" + lists
        self.write("in.tma", data)
        process = self.start("--settings", "kavu.ini", "--json", "rewrite", "in.tma", "PCM 1",
                             "-o", "out.tma")
        self.wait_for(lambda: self.store_folder() is not None, process)
        kavu.interrupt(process)
        result = self.finish(process)
        self.assertEqual(result.status, FAILED, result)
        self.assertFalse(self.exists("out.tma"))


if __name__ == "__main__":
    kavu.main()
