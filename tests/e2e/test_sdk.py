"""`sdk`: a session over a file, without a document."""

import os
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED, USAGE

GENERAL = ("G\\106:09;G\\DSI\\N:1;G\\DSI-1:RF 1;G\\DST-1:RF;M-1\\ID:RF 1;M-1\\BB\\DLN:Link;"
           "M-1\\SI\\N:1;M-1\\SI\\DLN-1:Alone;")
FORMAT = ("P-1\\DLN:Link;P-1\\TF:ONE;P-1\\F1:16;P-1\\MF\\N:4;P-1\\MF1:9;P-1\\MF4:16;"
          "P-1\\MF5:1110101110010000;P-2\\DLN:Free;P-2\\TF:TWO;P-2\\F1:8;P-2\\MF\\N:1;P-2\\MF1:5;")
DATA = ("D-1\\DLN:Link;D-1\\ML\\N:1;D-1\\MLN-1:L;D-1\\MN\\N-1:2;"
        "D-1\\MN-1-1:Zeta;D-1\\LT-1-1:WDFR;D-1\\MML\\N-1-1:1;D-1\\MNF\\N-1-1-1:1;"
        "D-1\\WP-1-1-1-1:5;D-1\\WI-1-1-1-1:0;D-1\\FP-1-1-1-1:1;D-1\\FI-1-1-1-1:1;"
        "D-1\\WFM-1-1-1-1:FW;"
        "D-1\\MN-1-2:Alpha;D-1\\LT-1-2:MF;D-1\\MF-1-2:3;D-1\\MFM-1-2:0000000000001001;")
RECORDS = "C-3\\DCN:Zeta;C-3\\TRD1:ABC;C-3\\DCT:COE;C-3\\CO\\N:1;C-3\\CO-1:2;"


class SdkTest(kavu.KavuTest):
    def setUp(self):
        super().setUp()
        self.write("in.tma", (GENERAL + FORMAT + DATA + RECORDS).encode())

    def sdk(self, *arguments, status=CLEAN):
        result = self.run_json("sdk", *arguments)
        self.assertEqual(result.status, status, result)
        document = result.json
        for member in ("opened", "changed", "messages", "questions"):
            self.assertNotIn(member, document)
        self.assertEqual(list(document)[:3], ["file", "version", "errors"])
        return document

    def test_streams_are_listed_by_the_m_groups_and_then_the_unnamed(self):
        document = self.sdk("streams", "in.tma", status=REPORTED)
        self.assertEqual(document["version"], 2009)
        self.assertEqual(document["sources"], [{"name": "RF 1", "type": "RF"}])
        self.assertEqual(document["links"], [
            {"name": "Link", "number": 1, "named": True, "type": "ONE",
             "groups": {"P": 1, "D": 1, "B": 0, "A": 0, "S": 0}, "measurements": 2, "result": 0},
            {"name": "Alone", "number": 2, "named": True, "type": "",
             "groups": {"P": 0, "D": 0, "B": 0, "A": 0, "S": 0}, "measurements": 0, "result": -1},
            {"name": "Free", "number": 3, "named": False, "type": "TWO",
             "groups": {"P": 2, "D": 0, "B": 0, "A": 0, "S": 0}, "measurements": 0, "result": 0}])
        self.assertEqual(document["errors"], [
            "ERROR: Unable to open TMATS Stream File for Data Link 'Alone'.\n\n"])

    def test_streams_without_errors_are_clean(self):
        self.write("one.tma", b"G\\PN:x;P-1\\DLN:a;P-1\\TF:ONE;P-1\\MF\\N:1;P-1\\MF1:5;")
        document = self.sdk("streams", "one.tma")
        self.assertEqual((document["version"], document["errors"]), (2011, []))

    def test_measurements_are_in_the_order_of_the_file(self):
        for link in ("Link", "#1"):
            document = self.sdk("measurements", "in.tma", link)
            self.assertEqual([document[key] for key in ("stream", "number", "result", "count")],
                             ["Link", 1, 0, 2])
            self.assertEqual(document["measurements"], [
                {"index": 1, "name": "Zeta", "wordLength": 16, "locations": 1, "conversion": True},
                {"index": 2, "name": "Alpha", "wordLength": 16, "locations": 1,
                 "conversion": False}])

    def test_a_measurement_has_places_and_masks(self):
        document = self.sdk("measurement", "in.tma", "Link", "Zeta")
        self.assertEqual([document[key] for key in ("stream", "number", "result", "index", "name",
                                                    "wordLength")], ["Link", 1, 0, 1, "Zeta", 16])
        self.assertEqual(document["locations"], [{"fragments": [
            {"number": 1, "word": [5, 0, 5], "frame": [1, 1, 4], "mask": "FW", "fullWord": True,
             "maskWords": "000000000000FFFF", "bits": list(range(1, 17)), "transferOrder": "D"}]}])

    def test_a_location_of_an_older_type_is_a_range_of_words_and_frames(self):
        document = self.sdk("measurement", "in.tma", "#1", "#2")
        fragment = document["locations"][0]["fragments"][0]
        self.assertEqual((fragment["word"], fragment["frame"]), ([3, 0, 3], [1, 1, 4]))
        self.assertEqual((fragment["maskWords"], fragment["bits"], fragment["fullWord"]),
                         ("0000000000000009", [13, 16], False))

    def test_a_conversion_record_has_its_fields_in_the_order_of_the_file(self):
        for name in ("Zeta", "#3"):
            document = self.sdk("eu", "in.tma", name)
            self.assertEqual([document[key] for key in ("result", "name", "index")],
                             [0, "Zeta", 3])
            self.assertEqual(list(document["fields"].items()),
                             [("TRD1", "ABC"), ("DCT", "COE"), ("CO\\N", "1"), ("CO-1", "2")])

    def test_what_is_not_there_fails_with_its_text(self):
        for arguments, error in (
                (("measurements", "in.tma", "#4"),
                 "ERROR: Unable to process stream #4.\nThere are only 3 streams in this TMATS "
                 "file.\n\n"),
                (("measurements", "in.tma", "None"), "ERROR: There is no data link 'None'.\n\n"),
                (("measurement", "in.tma", "Link", "x"),
                 "ERROR: There is no measurement 'x' in this stream.\n\n"),
                (("eu", "in.tma", "#9"),
                 "ERROR: Invalid C-Index value passed to GetMeasurementEUInfoByIndex.\n\n"),
                (("eu", "in.tma", "x"),
                 "ERROR: There is no conversion record of measurement 'x'.\n\n")):
            document = self.sdk(*arguments, status=FAILED)
            self.assertEqual((document["result"], document["errors"]), (-1, [error]))

    def test_a_file_that_cannot_be_opened_fails(self):
        document = self.sdk("streams", "none.tma", status=FAILED)
        self.assertEqual(document["errors"],
                         ["Unable to open 'none.tma'. Please check TMATS pathname.\n\n"])

    def test_a_file_name_that_is_not_utf8_is_shown(self):
        name = os.fsdecode(b"in\xe9.tma")
        self.write(name, b"G\\PN:x;")
        self.assertEqual(self.sdk("streams", name)["file"], "in\xe9.tma")

    def test_text_for_a_person_has_tables(self):
        result = self.run_cli("sdk", "streams", "in.tma")
        self.assertEqual(result.status, REPORTED)
        self.assertIn("P-1 D-1", result.text)
        self.assertIn("Unable to open TMATS Stream File", result.text)
        self.assertIn("5", self.run_cli("sdk", "measurement", "in.tma", "Link", "Zeta").text)

    def test_wrong_usage(self):
        self.assertEqual(self.run_cli("sdk").status, USAGE)
        self.assertEqual(self.run_cli("sdk", "eu", "in.tma").status, USAGE)


if __name__ == "__main__":
    unittest.main()
