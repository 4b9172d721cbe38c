"""`workbook`, and reports as workbooks: what spreadsheet programs read from them is what was written."""

import csv
import json
import os
import shutil
import subprocess
import unittest
import xml.etree.ElementTree as ElementTree

import kavu
from kavu import CLEAN, FAILED, REPORTED, USAGE

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
LINK = "PCM Stream 1"
GREY = {"flags": 128, "fill": "c0c0c0"}
SHEETS = {"sheets": [
    {"name": "It's <one>", "columns": 3, "widths": [50.5, 0, 80], "header": "&LLeft",
     "printTitles": {"rows": [1, 2]},
     "rows": [{"cells": [{"text": "Merged & centred", "style": {"flags": 1}, "across": 2}]},
              {"style": GREY, "cells": [{"text": "Köln"}, {"text": "a\nb"}, {"text": "=1+1"}]},
              {"index": 5, "height": 20.5,
               "cells": [{"number": "1.5"}, {"number": 42}, {"number": "A1"}]},
              {"cells": [{"date": "2011-03-04T05:06:07"}, {"text": "007"}, {"text": ""}]}]},
    {"name": "It's <one>", "columns": 1, "rows": [{"cells": [{"text": "second"}]}]}]}


class WorkbookTest(kavu.KavuTest):
    def describe(self, description, name="sheets.json"):
        self.write(name, json.dumps(description).encode("utf-8"))
        return name

    def workbook(self, description, *options, status=CLEAN, out="out.xml"):
        result = self.run_json("workbook", self.describe(description), "-o", out, "--overwrite",
                               *options)
        self.assertEqual(result.status, status, result)
        return result

    def test_a_description_becomes_well_formed_xml(self):
        self.workbook(SHEETS)
        tree = ElementTree.fromstring(self.read("out.xml"))
        space = "{urn:schemas-microsoft-com:office:spreadsheet}"
        names = [sheet.get(space + "Name") for sheet in tree.iter(space + "Worksheet")]
        self.assertEqual(names, ["It's <one>", "It's <one> (Part 2)"])
        self.assertEqual([row.get(space + "Index") for row in tree.iter(space + "Row")][:4],
                         [None, None, "5", None])

    def test_delimited_text_replaces_nothing(self):
        self.workbook(SHEETS, "--delimited", out="out.csv")
        self.assertEqual(self.read("out.csv").decode("utf-8"),
                         '"Merged & centred";\n"Köln";"a\nb";"=1+1";\n"1.5";"42";"A1";\n'
                         '"04.03.2011";"007";"";\n"second";\n')

    def test_a_sheet_that_is_refused_or_too_wide_is_a_message(self):
        result = self.workbook({"sheets": [
            {"name": "None", "columns": 0, "rows": [{"cells": [{"text": "lost"}]}]},
            {"name": "Wide", "columns": 300, "rows": [{"cells": [{"text": "kept"}]}]}]},
            status=REPORTED)
        self.assertEqual([message["text"][:44] for message in result.json["messages"]],
                         ["Unable to create Worksheet 'None'. Number of",
                          "Error trying to create the Excel worksheet n"])
        self.assertNotIn(b"lost", self.read("out.xml"))
        self.assertIn(b"kept", self.read("out.xml"))

    def test_a_description_that_is_none_is_named_with_its_place(self):
        for description, words in (({}, "sheets is missing"), ({"sheets": [{}]}, "sheet 1.name"),
                                   ({"sheets": [{"name": "S", "columns": "x"}]}, "sheet 1.columns"),
                                   ([], "no object")):
            result = self.run_json("workbook", self.describe(description), "-o", "none.xml")
            self.assertEqual(result.status, FAILED, result)
            self.assertIn(words, result.json["messages"][0]["text"])
        self.write("sheets.json", b"{")
        self.assertEqual(self.run_json("workbook", "sheets.json", "-o", "none.xml").status, FAILED)
        self.assertFalse(self.exists("none.xml"))
        self.assertEqual(self.run_cli("workbook", "sheets.json").status, USAGE)


class SpreadsheetTest(kavu.KavuTest):
    """One start of each program converts all files."""

    def reports(self):
        shutil.copy(os.path.join(ROOT, "samples", "flight-test.tma"), self.work)
        self.write("sheets.json", json.dumps(SHEETS).encode("utf-8"))
        self.assertEqual(self.run_json("workbook", "sheets.json", "-o", "described.xml").status,
                         CLEAN)
        self.assertEqual(self.run_json("layout", "new", "all.rpt").status, CLEAN)
        self.run_json("layout", "set", "all.rpt", *["M%d=1" % n for n in range(1, 13)])
        for name, form in (("list.xml", "workbook"), ("list.xlsx", "xlsx"), ("list.csv", "csv")):
            result = self.run_json("report", "flight-test.tma", LINK, "--kind", "measurements",
                                   "--to", form, "--layout", "all.rpt", "-o", name)
            self.assertEqual(result.status, CLEAN, result)
        for name, form in (("frame.xml", "workbook"), ("frame.xlsx", "xlsx"), ("frame.csv", "csv")):
            result = self.run_json("report", "flight-test.tma", LINK, "--kind", "frame",
                                   "--to", form, "-o", name)
            self.assertEqual(result.status, CLEAN, result)

    @staticmethod
    def rows(path):
        with open(path, newline="", encoding="utf-8") as file:
            rows = [[cell.rstrip() for cell in row] for row in csv.reader(file)]
        while rows and not any(rows[-1]):
            rows.pop()
        return rows

    def delimited(self, name):
        return [line.split(";") for line in self.read(name).decode("utf-8").splitlines()]

    def check_list(self, rows):
        expected = self.delimited("list.csv")
        self.assertEqual(rows[0][0], "Measurement Report")
        self.assertEqual(rows[3][0], "Date: 01-02-2026 Time: 03:04:05")
        self.assertEqual(rows[4][:3], ["Name", "Loc", "Frag"])
        self.assertEqual([row[:len(expected[0])] for row in rows[6:]], expected[1:])

    def check_frame(self, rows):
        expected = [[str(number)] + [cell.replace("/", "\n") for cell in line]
                    for number, line in enumerate(self.delimited("frame.csv"), 1)]
        self.assertEqual(rows[4][1:3], ["1", "2"])
        shown = {row[0]: row for row in rows[5:]}
        for line in expected:
            row = shown.get(line[0], [line[0]])
            self.assertEqual((row + [""] * len(line))[:len(line)], line)

    def check_described(self, rows):
        self.assertEqual(rows[0][0], "Merged & centred")
        self.assertEqual(rows[1], ["Köln", "a\nb", "=1+1"])
        self.assertEqual(rows[4], ["1.5", "42", "A1"])
        self.assertEqual(rows[5][1], "007")
        self.assertRegex(rows[5][0], "11")  # in the notation of the place
        self.assertRegex(rows[5][0], "4")

    def convert(self, arguments, folder):
        environment = dict(os.environ, HOME=self.home, LC_ALL="C.UTF-8")
        return subprocess.run(arguments, cwd=folder, env=environment, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, timeout=280, check=False)

    def test_libreoffice_reads_every_cell_as_it_was(self):
        self.reports()
        names = ["described.xml", "list.xml", "list.xlsx", "frame.xml", "frame.xlsx"]
        out = self.folder("calc")
        for name in names:  # the ends of the names tell the outputs apart
            shutil.copy(self.path(name), os.path.join(out, name.replace(".", "-") +
                                                      os.path.splitext(name)[1]))
        run = self.convert(
            ["soffice", "--headless", "-env:UserInstallation=file://" + self.folder("profile"),
             "--convert-to", "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,false,false,"
             "false,-1"] + sorted(os.listdir(out)), out)
        made = {name: os.path.join(out, name) for name in os.listdir(out) if name.endswith(".csv")}

        def sheet(start, part=""):
            found = [path for name, path in sorted(made.items())
                     if name.startswith(start) and part in name]
            self.assertTrue(found, (start, sorted(made), run.stdout))
            return self.rows(found[0])
        self.check_list(sheet("list-xml"))
        self.check_list(sheet("list-xlsx"))
        self.check_frame(sheet("frame-xml"))
        self.check_frame(sheet("frame-xlsx"))
        first = [name for name in made if name.startswith("described") and "Part" not in name]
        self.check_described(self.rows(made[first[0]]))
        self.assertEqual(sheet("described", "Part"), [["second"]])

    def test_gnumeric_reads_every_cell_as_it_was(self):
        self.reports()
        out = self.folder("gnumeric")
        for name, check in (("described.xml", self.check_described), ("list.xml", self.check_list),
                            ("list.xlsx", self.check_list), ("frame.xml", self.check_frame),
                            ("frame.xlsx", self.check_frame)):
            run = self.convert(["ssconvert", "-S", self.path(name), name + ".%n.csv"], out)
            path = os.path.join(out, name + ".0.csv")
            self.assertTrue(os.path.exists(path), run.stdout)
            with self.subTest(name):
                check(self.rows(path))


if __name__ == "__main__":
    kavu.main()
