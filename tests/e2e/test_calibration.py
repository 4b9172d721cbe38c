"""`calibration` and `plots`, and reports as PDF and as web pages."""

import os
import shutil
import subprocess
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED, USAGE

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
LINK = "PCM Stream 1"
RECORDS = """G\\106:09;
C-1\\DCN:OIL-T;C-1\\MN1:Oil temperature;C-1\\MN3:DEGC;C-1\\TRD5:01-02-2009;C-1\\BFM:UNS;
C-1\\DCT:PRS;C-1\\PS1:Y;C-1\\PS2:1;C-1\\PS\\N:3;
C-1\\PS3-1:0;C-1\\PS4-1:1;C-1\\PS3-2:10;C-1\\PS4-2:21;C-1\\PS3-3:20;C-1\\PS4-3:41;
C-2\\DCN:ONE-PAIR;C-2\\DCT:PRS;C-2\\PS1:Y;C-2\\PS2:1;C-2\\PS\\N:1;C-2\\PS3-1:0;C-2\\PS4-1:1;
C-3\\DCN:NO-CURVE;C-3\\DCT:PRS;C-3\\PS1:N;C-3\\PS2:1;C-3\\PS\\N:2;
C-3\\PS3-1:0;C-3\\PS4-1:1;C-3\\PS3-2:2;C-3\\PS4-2:3;
C-4\\DCN:FUEL;C-4\\DCT:PRS;C-4\\PS1:Y;C-4\\PS2:1;C-4\\PS\\N:2;
C-4\\PS3-1:0;C-4\\PS4-1:1;C-4\\PS3-2:2;C-4\\PS4-2:5;
"""


def tool(*arguments):
    return subprocess.run(arguments, check=True, stdout=subprocess.PIPE, timeout=60).stdout


class CalibrationTest(kavu.KavuTest):
    def setUp(self):
        super().setUp()
        self.write("in.tma", RECORDS)

    def sheets(self, *arguments, status=CLEAN):
        result = self.run_json("calibration", "in.tma", *arguments)
        self.assertEqual(result.status, status, result)
        return result.json["sheets"]

    def test_all_pair_sets_with_a_curve_have_a_sheet_and_failed_fits_take_no_page(self):
        sheets = self.sheets("--start-page", "7")
        self.assertEqual([(sheet["name"], sheet["page"], sheet["pageText"]) for sheet in sheets],
                         [("OIL-T", 7, "Page 7"), ("FUEL", 8, "Page 8")])
        self.assertEqual(sheets[0]["title"], "Calibration Data Sheet")
        self.assertEqual((sheets[0]["pageLocation"], sheets[0]["left"]), (2, ""))
        self.assertIn("\tDescription\tOil temperature\n", sheets[0]["text"])
        self.assertNotIn("\tDescription", sheets[1]["text"])

    def test_named_measurements_alone(self):
        self.assertEqual([sheet["name"] for sheet in self.sheets("FUEL", "NO-CURVE")], ["FUEL"])
        result = self.run_json("calibration", "in.tma", "NO-CURVE", "none")
        self.assertEqual(result.status, FAILED, result)
        self.assertEqual(result.json["sheets"], [])
        self.assertEqual(len(result.json["messages"]), 1)

    def test_a_first_page_below_one_is_message_161(self):
        result = self.run_json("calibration", "in.tma", "--start-page", "0")
        self.assertEqual((result.status, result.ids()), (FAILED, [161]), result)

    def test_the_layout_has_title_headers_and_page_number(self):
        self.run_json("layout", "new", "a.rpt")
        self.run_json("layout", "set", "a.rpt", "PlotTitle=Mine", "PlotLHdr=L", "PlotRHdr=R",
                      "PNumString=^ of ^", "PNumLoc=6")
        sheet = self.sheets("FUEL", "--layout", "a.rpt", "-o", "out.pdf")[0]
        self.assertEqual([sheet[key] for key in ("title", "left", "right", "pageText",
                                                 "pageLocation")], ["Mine", "L", "R", "1 of 1", 6])
        text = tool("pdftotext", "-layout", self.path("out.pdf"), "-").decode("utf-8")
        for part in ("Mine", "1 of 1", "Parameter Name:", "TM Value"):
            self.assertIn(part, text)

    def test_text_divides_sheets_by_a_form_feed(self):
        sheets = self.sheets("-o", "out.txt")
        self.assertEqual(self.read("out.txt").decode("utf-8"),
                         "\f".join(sheet["text"] for sheet in sheets))

    def test_a_stream_gives_places_and_word_length(self):
        shutil.copy(os.path.join(ROOT, "samples", "flight-test-11.tma"), self.work)
        result = self.run_json("calibration", "flight-test-11.tma", "--link", LINK)
        if result.json["sheets"]:
            self.assertTrue(any("Locations (FWP):\t" in sheet["text"]
                                for sheet in result.json["sheets"]), result)

    def test_a_pdf_has_embedded_fonts_an_outline_and_selectable_text(self):
        self.sheets("-o", "out.pdf")
        info = tool("pdfinfo", self.path("out.pdf")).decode("utf-8")
        self.assertIn("Title:           Calibration Data Sheet", info)
        self.assertIn("Author:          KAVU-9", info)
        self.assertRegex(info, "Pages: +2")
        fonts = tool("pdffonts", self.path("out.pdf")).decode("utf-8").splitlines()[2:]
        self.assertTrue(fonts)
        for font in fonts:
            self.assertIn("Liberation", font)
            self.assertIn("yes", font.split("CID")[-1])
        self.assertIn(b"/Outlines", self.read("out.pdf"))


class PlotsTest(kavu.KavuTest):
    def setUp(self):
        super().setUp()
        self.write("in.tma", RECORDS)

    def plots(self, *arguments, status=CLEAN):
        result = self.run_json("plots", "in.tma", *arguments)
        self.assertEqual(result.status, status, result)
        return result.json

    def test_rows_have_their_fit(self):
        document = self.plots("OIL-T", "ONE-PAIR", "NO-CURVE", "gone")
        self.assertEqual((document["title"], document["xAxis"], document["yAxis"]),
                         ("Multiple Item Calibration Plots", "TM Value", "EU Value"))
        self.assertEqual([row["name"] for row in document["rows"]], ["OIL-T", "ONE-PAIR"])
        self.assertEqual(document["rows"][0]["date"], "01-02-2009")
        self.assertEqual(document["rows"][0]["fit"], "1")
        self.assertEqual(document["rows"][0]["polynomial"],
                         "(1.00000000E+00) + (2.00000000E+00)*Count")
        self.assertEqual([document["rows"][1][key] for key in
                          ("fit", "rms", "correlation", "polynomial")], ["", "", "", ""])

    def test_beyond_eight_no_more_are_taken(self):
        self.assertEqual(len(self.plots(*["FUEL"] * 9)["rows"]), 8)
        self.plots("NO-CURVE", status=FAILED)

    def test_the_output_is_what_its_name_says(self):
        for name, start in (("p.pdf", b"%PDF-"), ("p.svg", b"<?xml"), ("p.png", b"\x89PNG")):
            self.plots("OIL-T", "FUEL", "-o", name)
            self.assertTrue(self.read(name).startswith(start), name)


class PrintedReportTest(kavu.KavuTest):
    def report(self, form, *arguments, out):
        shutil.copy(os.path.join(ROOT, "samples", "flight-test.tma"), self.work)
        result = self.run_json("report", "flight-test.tma", LINK, "--to", form, "-o", out,
                               *arguments)
        self.assertEqual(result.status, CLEAN, result)
        return self.read(out)

    def test_a_pdf_has_every_name_of_the_text(self):
        self.report("pdf", "--kind", "format", "--kind", "frame", "--start-page", "3", out="r.pdf")
        text = tool("pdftotext", "-layout", self.path("r.pdf"), "-").decode("utf-8")
        for part in ("PCM Stream Attributes Report", "PCM Major Frame Report", "ENG1-OIL-P",
                     "Common Word Length:", "Page 3", "Frame Sync Pattern:"):
            self.assertIn(part, text)
        fonts = tool("pdffonts", self.path("r.pdf")).decode("utf-8")
        self.assertIn("LiberationMono", fonts)
        self.assertIn("LiberationSans-Bold", fonts)

    def test_printed_pages_say_what_the_golden_ones_say(self):
        for kind in ("format", "frame"):
            self.report("pdf", "--kind", kind, out=kind + ".pdf")
            said = tool("pdftotext", "-layout", self.path(kind + ".pdf"), "-").decode("utf-8")
            with open(os.path.join(ROOT, "tests", "golden", "reports",
                                   {"format": "format.txt", "frame": "frame-style-1.txt"}[kind]),
                      encoding="utf-8") as file:
                names = set(file.read().split())
            # A caption is one text of the page and may be set closer than its tabs were.
            missing = {name for name in names if name not in said and "=" not in name}
            self.assertEqual(missing, set(), kind)

    def test_a_web_page_stands_alone(self):
        page = self.report("html", "--kind", "measurements", out="r.html").decode("utf-8")
        self.assertIn("<td>ENG1-OIL-P</td>", page)
        self.assertNotIn("http", page)

    def test_two_runs_write_the_same_bytes(self):
        for form in ("pdf", "xlsx", "workbook", "html"):
            first = self.report(form, "--kind", "frame", out="a." + form)
            self.assertEqual(first, self.report(form, "--kind", "frame", out="b." + form), form)


if __name__ == "__main__":
    kavu.main()
