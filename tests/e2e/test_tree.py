"""`tree`: data sources, links and streams, measurements."""

import unittest

import kavu
from kavu import CLEAN

FLIGHT = (
    "G\\PN:FLIGHT;G\\106:09;G\\DSI\\N:3;G\\DSI-1:RF Data Source;G\\DST-1:RF;"
    "G\\DSI-2:Recorder;G\\DST-2:TAP;G\\DSI-3:Lab;G\\DST-3:OTH;"
    "T-1\\ID:RF Data Source;R-1\\ID:Recorder;"
    "M-1\\ID:Recorder;M-1\\BB\\DLN:BUS 1;"
    "M-2\\ID:RF Data Source;M-2\\BB\\DLN:PCM Stream 1;M-2\\SI\\N:2;"
    "M-2\\SI\\DLN-1:PCM Stream 3;M-2\\SI\\DLN-2:NOWHERE;"
    "P-1\\DLN:PCM Stream 1;P-1\\TF:ONE;P-1\\AEF\\N:1;P-1\\AEF\\DLN-1:PCM Stream 2;"
    "P-2\\DLN:PCM Stream 2;P-2\\TF:TWO;P-3\\DLN:PCM Stream 3;P-3\\TF:TWO;"
    "P-4\\DLN:BUS 1;P-4\\TF:1553;"
    "D-1\\DLN:PCM Stream 1;D-1\\ML\\N:1;D-1\\MLN-1:List;D-1\\MN\\N-1:3;"
    "D-1\\MN-1-1:MEAS1;D-1\\MN-1-2:MEAS2;D-1\\MN-1-3:MEAS3;"
    "B-1\\DLN:BUS 1;"
    "C-1\\DCN:MEAS2;C-2\\DCN:MEAS1;"
)


class TreeTest(kavu.KavuTest):
    def tree(self, data):
        self.write("in.tma", data)
        result = self.run_json("tree", "in.tma")
        self.assertEqual(result.status, CLEAN, result)
        return result.json

    def test_the_members_have_their_names_and_order(self):
        document = self.tree(FLIGHT)
        self.assertEqual(list(document), ["file", "opened", "changed", "version", "messages",
                                          "questions", "dataSources", "conversions"])
        source = document["dataSources"][0]
        self.assertEqual(list(source), ["name", "type", "class", "group", "multiplex", "links"])
        self.assertEqual(list(source["links"][0]),
                         ["name", "kind", "group", "measurements", "embedded"])

    def test_data_sources_name_their_groups(self):
        sources = [[source[key] for key in ("name", "type", "class", "group", "multiplex")]
                   for source in self.tree(FLIGHT)["dataSources"]]
        self.assertEqual(sources, [["RF Data Source", "RF", "R", 1, 2],
                                   ["Recorder", "TAP", "T", 1, 1],
                                   ["Lab", "OTH", "O", 0, 0]])

    def test_links_name_their_streams(self):
        links = self.tree(FLIGHT)["dataSources"][0]["links"]
        self.assertEqual(links, [
            {"name": "PCM Stream 1", "kind": "PCM (Class 1)", "group": 1, "measurements": 3,
             "embedded": ["PCM Stream 2"]},
            {"name": "PCM Stream 3", "kind": "PCM (Class 2)", "group": 3, "measurements": 0,
             "embedded": []},
            {"name": "NOWHERE", "kind": "", "group": 0, "measurements": 0, "embedded": []}])

    def test_a_bus_is_1553(self):
        link = self.tree(FLIGHT)["dataSources"][1]["links"][0]
        self.assertEqual((link["name"], link["kind"], link["group"]), ("BUS 1", "1553", 4))

    def test_conversions_stand_in_store_order(self):
        self.assertEqual(self.tree(FLIGHT)["conversions"], ["MEAS2", "MEAS1"])

    def test_an_empty_document_has_an_empty_tree(self):
        document = self.tree("")
        self.assertEqual(document["dataSources"], [])
        self.assertEqual(document["conversions"], [])

    def test_two_data_sources_of_one_name_are_two(self):
        sources = self.tree("G\\106:09;G\\DSI\\N:2;G\\DSI-1:A;G\\DST-1:RF;"
                            "G\\DSI-2:A;G\\DST-2:TAP;")["dataSources"]
        self.assertEqual([(source["name"], source["type"]) for source in sources],
                         [("A", "RF"), ("A", "TAP")])

    def test_the_text_form_is_an_indented_tree(self):
        self.write("in.tma", FLIGHT)
        result = self.run_cli("tree", "in.tma")
        lines = result.text.splitlines()
        self.assertTrue(lines[0].startswith("RF Data Source"), result)
        self.assertTrue(lines[1].startswith("  PCM Stream 1"), result)
        self.assertTrue(lines[2].startswith("    PCM Stream 2"), result)
        self.assertIn("PCM (Class 1)", lines[1])
        self.assertIn("3 measurements", lines[1])
        # The columns are aligned: the kinds of all links begin at one place.
        self.assertEqual(lines[1].index("PCM (Class 1)"), lines[3].index("PCM (Class 2)"))
        for name in ("Recorder", "Lab", "  BUS 1", "  MEAS1", "  MEAS2"):
            self.assertTrue(any(line.startswith(name) for line in lines), name)

    def test_names_of_any_bytes_are_shown(self):
        data = b"G\\106:09;G\\DSI\\N:1;G\\DSI-1:caf\xe9;G\\DST-1:RF;C-1\\DCN:\xb0C;"
        document = self.tree(data)
        self.assertEqual(document["dataSources"][0]["name"], "caf\u00e9")
        self.assertEqual(document["conversions"], ["\u00b0C"])


if __name__ == "__main__":
    kavu.main()
