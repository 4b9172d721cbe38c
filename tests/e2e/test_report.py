"""`layout` and `report`: layouts, and the reports of a stream as text and as delimited text.

The golden files are the reports of the samples; RENEW_GOLDEN=1 writes them anew.
"""

import os
import shutil
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED, USAGE

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
GOLDEN = os.path.join(ROOT, "tests", "golden", "reports")
LINK = "PCM Stream 1"
ALL_COLUMNS = ["M%d=1" % n for n in range(1, 23)]
ALL_BUS_COLUMNS = ["M1553%d=1" % n for n in range(1, 25)]


class ReportTest(kavu.KavuTest):
    def setUp(self):
        super().setUp()
        for name in ("flight-test.tma", "flight-test-11.tma"):
            shutil.copy(os.path.join(ROOT, "samples", name), self.work)

    def layout(self, *assignments, name="a.rpt"):
        if not self.exists(name):
            self.assertEqual(self.run_json("layout", "new", name).status, CLEAN)
        if assignments:
            result = self.run_json("layout", "set", name, *assignments)
            self.assertIn(result.status, (CLEAN, REPORTED), result)
        return name

    def report(self, *arguments, link=LINK, file="flight-test.tma", status=None, out="out.txt"):
        result = self.run_json("report", file, link, *arguments, "-o", out, "--overwrite")
        if status is not None:
            self.assertEqual(result.status, status, result)
        return result.json

    def assertGolden(self, name, out="out.txt"):
        path = os.path.join(GOLDEN, name)
        if os.environ.get("RENEW_GOLDEN"):
            os.makedirs(GOLDEN, exist_ok=True)
            shutil.copy(self.path(out), path)
        with open(path, "rb") as file:
            self.assertEqual(self.read(out).decode("latin-1"), file.read().decode("latin-1"), name)


class LayoutTest(ReportTest):
    def test_a_new_layout_has_every_key_and_shows_them(self):
        name = self.layout()
        document = self.run_json("layout", "show", name).json
        self.assertEqual(list(document["keys"])[:3], ["Fmt", "FrameRpt", "MesRpt"])
        self.assertEqual(document["keys"]["PNumString"], "Page ^")
        self.assertEqual(document["keys"]["MFReptStyle"], "1")
        self.assertEqual(len(document["columns"]), 22)
        self.assertEqual(document["columns"][0], {"key": "M1", "selected": False,
                                                  "name": "Measurement Location Type"})
        self.assertEqual(document["busColumns"][0], {"key": "M15531", "name": "Bus Address",
                                                     "selected": False})
        self.assertNotIn("file", document)

    def test_a_new_layout_replaces_no_file_unless_told_so(self):
        name = self.layout()
        self.assertEqual(self.run_json("layout", "new", name).status, FAILED)
        self.assertEqual(self.run_json("layout", "new", name, "--overwrite").status, CLEAN)

    def test_set_keeps_all_other_lines(self):
        self.write("b.rpt", b"; mine\r\n[Reports]\r\nMine=1\r\nDest=0\r\n")
        result = self.run_json("layout", "set", "b.rpt", "dest=3", "MesReptTitle=One\nTwo")
        self.assertEqual(result.status, REPORTED, result)  # for the key that is none
        self.assertEqual(self.read("b.rpt"), b"; mine\r\n[Reports]\r\nMine=1\r\nDest=3\r\n"
                                             b"MesReptTitle=One\x15Two\r\n")
        document = self.run_json("layout", "show", "b.rpt").json
        self.assertEqual(document["keys"]["MesReptTitle"], "One\nTwo")
        self.assertEqual(self.run_json("layout", "set", "b.rpt", "Dest=1", "-o", "c.rpt").status,
                         REPORTED)
        self.assertIn(b"Dest=3", self.read("b.rpt"))
        self.assertIn(b"Dest=1", self.read("c.rpt"))

    def test_check_lists_what_means_nothing(self):
        self.write("b.rpt", b"[Reports]\r\nDest=x\r\nM23=1\r\nMine=3\r\nM1=1\r\n")
        result = self.run_json("layout", "check", "b.rpt")
        self.assertEqual(result.status, REPORTED, result)
        self.assertEqual(result.json["problems"], [
            {"key": "Dest", "value": "x", "kind": "value"},
            {"key": "M23", "value": "1", "kind": "column"},
            {"key": "Mine", "value": "3", "kind": "unknown"}])
        self.assertEqual(self.run_json("layout", "check", self.layout()).status, CLEAN)

    def test_a_missing_layout_and_wrong_usage(self):
        self.assertEqual(self.run_json("layout", "show", "none.rpt").status, FAILED)
        self.assertEqual(self.run_cli("layout", "set", self.layout(), "Dest").status, USAGE)
        self.assertEqual(self.run_cli("layout").status, USAGE)


class TextReportTest(ReportTest):
    def test_the_three_styles_of_the_frame_are_the_golden_ones(self):
        for style in ("1", "2", "3"):
            self.report("--kind", "frame", "--layout", self.layout("MFReptStyle=" + style))
            self.assertGolden("frame-style-%s.txt" % style)

    def test_the_list_and_the_format_are_the_golden_ones(self):
        name = self.layout(*ALL_COLUMNS, "MesRptSort=1")
        document = self.report("--kind", "measurements", "--layout", name)
        self.assertEqual(document["reports"], ["measurements"])
        self.assertEqual(document["output"], "out.txt")
        self.assertGolden("measurements.txt")
        self.report("--kind", "format")
        self.assertGolden("format.txt")

    def test_the_delimited_forms_are_the_golden_ones(self):
        name = self.layout(*ALL_COLUMNS)
        self.report("--kind", "frame", "--to", "csv", "--layout", name)
        self.assertGolden("frame.csv")
        self.report("--kind", "measurements", "--to", "csv", "--layout", name)
        self.assertGolden("measurements.csv")

    def test_the_report_of_a_bus_is_the_golden_one(self):
        name = self.layout(*ALL_BUS_COLUMNS)
        for form, end in (("text", "txt"), ("csv", "csv")):
            self.report("--kind", "measurements", "--to", form, "--layout", name,
                        link="1553 Bus 1", file="flight-test-11.tma")
            self.assertGolden("bus." + end)
        document = self.report("--kind", "frame", link="1553 Bus 1", file="flight-test-11.tma",
                               status=FAILED, out="none.txt")
        self.assertEqual(document["reports"], [])
        self.assertFalse(self.exists("none.txt"))

    def test_every_style_and_report_is_the_golden_one_as_workbook_and_as_web_page(self):
        name = self.layout(*ALL_COLUMNS)
        for form, end in (("workbook", "xml"), ("html", "html")):
            for style in ("1", "2", "3"):
                self.layout("MFReptStyle=" + style)
                self.report("--kind", "frame", "--to", form, "--layout", name, link="PCM Stream 3")
                self.assertGolden("frame-style-%s.%s" % (style, end))
            for kind in ("format", "measurements"):
                self.report("--kind", kind, "--to", form, "--layout", name, link="PCM Stream 3")
                self.assertGolden("%s.%s" % (kind, end))

    def test_reports_are_made_in_their_order_and_divided_by_a_form_feed(self):
        name = self.layout("Fmt=1", "FrameRpt=1", "MesRpt=1")
        document = self.report("--layout", name)
        self.assertEqual(document["reports"], ["format", "frame", "measurements"])
        parts = self.read("out.txt").split(b"\f")
        self.assertEqual([part.split(b"\n")[0] for part in parts],
                         [b"PCM Stream Attributes Report", b"PCM Major Frame Report",
                          b"Measurement Report"])
        document = self.report("--kind", "measurements", "--kind", "format")
        self.assertEqual(document["reports"], ["format", "measurements"])

    def test_with_nothing_checked_there_is_no_output(self):
        document = self.report(status=CLEAN, out="none.txt")
        self.assertEqual(document["reports"], [])
        self.assertNotIn("output", document)
        self.assertFalse(self.exists("none.txt"))

    def test_delimited_files_have_boxes_of_their_own(self):
        document = self.report("--to", "csv", "--layout", self.layout("Fmt=1", "FrameDel=1"))
        self.assertEqual(document["reports"], ["frame"])

    def test_an_option_that_cannot_be_read_is_message_404_and_drops_one_report(self):
        for value in ("", "7"):
            name = self.layout("MFReptStyle=" + value)
            result = self.run_json("report", "flight-test.tma", LINK, "--kind", "frame", "--kind",
                                   "format", "--layout", name, "-o", "out.txt", "--overwrite")
            self.assertEqual((result.status, result.ids()), (REPORTED, [404]), result)
            self.assertEqual(result.json["reports"], ["format"])
            result = self.run_json("report", "flight-test.tma", LINK, "--kind", "frame",
                                   "--layout", name, "-o", "none.txt")
            self.assertEqual((result.status, result.ids()), (FAILED, [404]), result)
            self.assertFalse(self.exists("none.txt"))

    def test_pages_are_broken_on_request_only(self):
        self.report("--kind", "measurements")
        self.assertNotIn(b"\f", self.read("out.txt"))
        self.report("--kind", "measurements", "--page-lines", "20")
        pages = self.read("out.txt").split(b"\f")
        self.assertEqual(len(pages[0].split(b"\n")), 21)
        self.assertTrue(pages[1].startswith(b"Name"))

    def test_the_width_of_the_page_cuts_the_frame_into_blocks(self):
        self.report("--kind", "frame", "--page-width", "60")
        for line in self.read("out.txt").split(b"\n")[9:]:
            self.assertLessEqual(len(line), 60)

    def test_an_output_that_cannot_be_written_is_message_403(self):
        result = self.run_json("report", "flight-test.tma", LINK, "--kind", "format",
                               "-o", "none/out.txt")
        self.assertEqual((result.status, result.ids()), (FAILED, [403]), result)

    def test_wrong_usage(self):
        for arguments in (["--kind", "all"], ["--to", "doc"], ["--page-width", "0"],
                          ["--page-lines", "-1"], ["--kind", "format", "--to", "csv"]):
            result = self.run_cli("report", "flight-test.tma", LINK, *arguments, "-o", "out.txt")
            self.assertEqual(result.status, USAGE, (arguments, result))
        result = self.run_json("report", "flight-test.tma", "None", "--kind", "format",
                               "-o", "out.txt")
        self.assertEqual(result.status, FAILED, result)


if __name__ == "__main__":
    kavu.main()
