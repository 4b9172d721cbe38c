"""`xml-export` and `xml-import` one after the other: in the schema's dialect nothing is lost that the
schema can hold."""

import os
import unittest

import kavu
import tmats_commands

SAMPLES = os.path.join(os.path.dirname(kavu.DATA), "..", "samples")


class BothWaysTest(kavu.KavuTest):
    maxDiff = None

    def both_ways(self, name, data, *options):
        self.write(name, data)
        there = self.run_json("xml-export", name, "-o", name + ".xml", *options)
        self.assertTrue(there.json["created"], there)
        back = self.run_json("xml-import", name + ".xml", "-o", "back.tma", *options)
        self.assertTrue(back.json["created"], back)
        with open(self.path("back.tma"), "rb") as file:
            return there.json, file.read()

    def assert_all_back(self, data, there, back):
        """Each command is back that the export does not name as lost."""
        left = tmats_commands.missing(data, back, there["losses"])
        # The group of a vendor is a comment in XML.
        self.assertEqual([(code, value) for code, value in left
                          if not code.endswith((" V\\ID", " V\\VN"))], [])

    def sample(self, name):
        with open(os.path.join(SAMPLES, name), "rb") as file:
            return file.read()

    def test_a_whole_document_comes_back_by_the_schema(self):
        data = self.sample("flight-test-11.tma")
        there, back = self.both_ways("in.tma", data, "--schema")
        self.assert_all_back(data, there, back)

    def test_each_group_comes_back_by_the_schema(self):
        data = (b"G\\PN:P;\nG\\TA:T;\nG\\FN:F;\nG\\106:11;\nG\\OD:01-02-2011;\nG\\RN:1;\n"
                b"G\\POC\\N:1;\nG\\POC1-1:N;\nG\\POC4-1:5;\nG\\DSI\\N:2;\nG\\DSI-1:S;\nG\\DST-1:RF;\n"
                b"G\\DSI-2:R;\nG\\DST-2:STO;\nG\\SC:C;\nG\\COM:c;\n"
                b"T-1\\ID:S;\nT-1\\RF4:FM;\nT-1\\FM1:1;\nT-1\\PLL:2;\nT-1\\GST7:B&DPR;\n"
                b"R-1\\ID:R;\nR-1\\RID:I;\nR-1\\TC5:15.0;\nR-1\\TT:RO;\nR-1\\N:1;\nR-1\\RI3:Y;\n"
                b"R-1\\RI5:01-02-2011-03-04-05;\nR-1\\RI9:7;\nR-1\\RI10:8;\nR-1\\RSS:CP;\n"
                b"R-1\\RMM\\N:1;\nR-1\\RMMID-1:M;\nR-1\\TK1-1:1;\nR-1\\CDT-1:PCMIN;\n"
                b"R-1\\PDP-1:UN;\nR-1\\CDLN-1:L;\n"
                b"M-1\\ID:S;\nM-1\\BB1:PCM;\nM-1\\BB2:POS;\nM-1\\BSG1:PCM;\nM-1\\BB\\DLN:L;\n"
                b"M-1\\SO:Y;\nM-2\\ID:R;\n"
                b"P-1\\DLN:L;\nP-1\\D1:NRZ-L;\nP-1\\D2:1000;\nP-1\\D3:U;\nP-1\\TF:ONE;\nP-1\\F1:16;\n"
                b"P-1\\MF\\N:1;\nP-1\\MF1:10;\nP-1\\MF2:176;\nP-1\\MF3:FPT;\nP-1\\MF4:16;\n"
                b"P-1\\MF5:1110101110010000;\nP-1\\SYNC1:NS;\n"
                b"D-1\\DLN:L;\nD-1\\ML\\N:1;\nD-1\\MLN-1:ML;\nD-1\\MN\\N-1:1;\nD-1\\MN-1-1:A;\n"
                b"D-1\\MN1-1-1:DE;\nD-1\\MN2-1-1:D;\nD-1\\MN3-1-1:D;\nD-1\\LT-1-1:WDFR;\n"
                b"D-1\\MML\\N-1-1:1;\nD-1\\MNF\\N-1-1-1:1;\nD-1\\WP-1-1-1-1:3;\n"
                b"D-1\\WI-1-1-1-1:0;\nD-1\\FP-1-1-1-1:1;\nD-1\\FI-1-1-1-1:0;\nD-1\\WFM-1-1-1-1:FW;\n"
                b"D-1\\WFT-1-1-1-1:M;\nD-1\\WFP-1-1-1-1:1;\n"
                b"C-1\\DCN:A;\nC-1\\MN3:V;\nC-1\\BFM:SIG;\nC-1\\MC\\N:2;\nC-1\\MC1-1:1;\nC-1\\MC2-1:2;\n"
                b"C-1\\MC1-2:3;\nC-1\\DCT:COE;\nC-1\\CO\\N:1;\nC-1\\CO1:N;\nC-1\\CO:0.5;\nC-1\\CO-1:2;\n")
        there, back = self.both_ways("in.tma", data, "--schema")
        self.assertEqual(there["losses"], [])
        self.assert_all_back(data, there, back)

    def test_in_the_default_form_the_two_directions_are_not_inverse(self):
        data = (b"G\\PN:P;\nG\\106:11;\nG\\DSI\\N:1;\nG\\DSI-1:S;\nG\\DST-1:RF;\nT-1\\ID:S;\n"
                b"T-1\\RF1:1;\nT-1\\FM1:2;\nM-1\\ID:S;\nM-1\\BB1:PCM;\nM-1\\BSG1:PAM;\n")
        _, back = self.both_ways("in.tma", data)
        codes = [code for code, _ in tmats_commands.commands(back)]
        self.assertIn(" G\\PN", codes)
        self.assertIn("S M\\BSG1", codes)
        self.assertFalse([code for code in codes if code.endswith(("\\FM1", "\\BB1"))])


if __name__ == "__main__":
    unittest.main()
