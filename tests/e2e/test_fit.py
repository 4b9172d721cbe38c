"""`fit`, `conversions` and `evaluate`."""

import math
import os
import struct
import unittest
import xml.dom.minidom

import kavu
from kavu import CLEAN, FAILED, REPORTED, USAGE

DOCUMENT = (
    "G\\106:09;\r\n"
    "C-1\\DCN:COEF;C-1\\DCT:COE;C-1\\CO\\N:2;C-1\\CO1:N;C-1\\CO:1;C-1\\CO-1:2;C-1\\CO-2:0.5;"
    "C-2\\DCN:PAIRS;C-2\\DCT:PRS;C-2\\PS1:Y;C-2\\PS2:1;C-2\\PS\\N:2;C-2\\PS3-1:0;C-2\\PS4-1:10;"
    "C-2\\PS3-2:10;C-2\\PS4-2:30;C-2\\COM:two\r\nlines;"
    "C-3\\DCN:TABLE;C-3\\DCT:PRS;C-3\\PS\\N:1;C-3\\PS3-1:0;C-3\\PS4-1:10;"
    "C-4\\DCN:NEG;C-4\\DCT:NPC;C-4\\NPC\\N:1;C-4\\NPC1:N;C-4\\NPC:1;C-4\\NPC-1:8;"
    "C-5\\DCN:NOTHING;C-5\\DCT:NON;"
    "C-6\\DCN:SECRET;C-6\\DCT:SP;"
)
NUMBERS = "0,1\n1,2.1\n2,5.3\n3,9.8\n4,17.5\n"
MEMBERS = ["order", "bestFit", "coefficients", "coefficientsExact", "pairs", "rms", "correlation"]


def high_counts(count=41):
    """Counts 30000 to 34000, on which an order 7 fit is lost."""
    return "".join("%d,%.6f\n" % (30000 + 4000 * i // (count - 1),
                                  100 * i / (count - 1) + 3 * math.sin(9 * i / (count - 1)))
                   for i in range(count))


class FitTest(kavu.KavuTest):
    def fit(self, text, *options, status=CLEAN):
        self.write("pairs.csv", text)
        result = self.run_json("fit", "pairs.csv", *options)
        self.assertEqual(result.status, status, result)
        return result.json

    def test_the_members_have_their_names_and_order(self):
        document = self.fit(NUMBERS)
        self.assertEqual(list(document)[:7], MEMBERS)
        self.assertEqual(list(document["pairs"][0]), ["x", "y", "computed", "error", "marked"])
        self.assertEqual(document["messages"], [])

    def test_the_best_fit_is_taken_unless_an_order_is_given(self):
        self.assertEqual(self.fit(NUMBERS)["order"], 2)
        self.assertEqual(self.fit(NUMBERS, "--best")["order"], 2)
        line = self.fit(NUMBERS, "--order", "1")
        self.assertEqual((line["order"], line["bestFit"]), (1, 2))
        self.assertEqual(self.fit(NUMBERS, "--max-order", "1")["order"], 1)
        self.assertEqual(self.fit(NUMBERS, "--order", "0")["order"], 0)

    def test_coefficients_are_texts_as_written_and_exact_numbers(self):
        document = self.fit(NUMBERS, "--order", "1", "--precision", "3")
        self.assertEqual(document["coefficients"], ["-1.000E+00", "4.070E+00"])
        self.assertAlmostEqual(document["coefficientsExact"][1], 4.07, places=12)
        self.write("settings.ini", "[KAVU-9]\r\nFloatPrecision=2\r\n")
        document = self.fit(NUMBERS, "--order", "1", "--settings", "settings.ini")
        self.assertEqual(document["coefficients"], ["-1.00E+00", "4.07E+00"])

    def test_numbers_read_back_to_the_same_double(self):
        document = self.fit(NUMBERS)
        c = document["coefficientsExact"]
        for pair in document["pairs"]:
            x = pair["x"]
            computed = 0.0
            for i, value in enumerate(c):
                computed += value * (1.0 if i == 0 else x if i == 1 else math.pow(x, i))
            self.assertEqual(struct.pack("<d", computed), struct.pack("<d", pair["computed"]))
            self.assertEqual(pair["computed"] - pair["y"], pair["error"])

    def test_an_x_of_0_is_shown_as_it_was_given(self):
        self.assertEqual(self.fit(NUMBERS)["pairs"][0]["x"], 0.0)

    def test_rows_half_a_percent_off_are_marked(self):
        marked = [pair["marked"] for pair in self.fit("0,0\n10,50\n20,100.6\n30,150\n40,200\n",
                                                      "--order", "1")["pairs"]]
        self.assertEqual(marked, [False, False, False, False, False])
        marked = [pair["marked"] for pair in self.fit("0,0\n10,50\n20,103\n30,150\n40,200\n",
                                                      "--order", "1")["pairs"]]
        self.assertEqual(marked, [False, False, True, False, False])

    def test_the_text_is_that_of_the_pair_set_page(self):
        self.write("pairs.csv", NUMBERS)
        result = self.run_cli("fit", "pairs.csv", "--precision", "4")
        self.assertEqual(result.status, CLEAN, result)
        for part in ("Best Fit: 2", "c(0) = 1.0714E+00", "Corrected EU Value", "-0.231429*",
                     "Correlation Coefficient: 0.9994", "RMS: 0.2122"):
            self.assertIn(part, result.text)

    def test_two_pairs_are_a_line(self):
        document = self.fit("1,2\n3,7\n")
        self.assertEqual((document["order"], document["bestFit"]), (1, 1))

    def test_order_10_is_taken_and_order_11_is_not(self):
        text = "".join("%g,%g\n" % (i / 10, math.sin(i)) for i in range(12))
        document = self.fit(text, "--order", "10", "--precision", "16")
        self.assertEqual(len(document["coefficients"]), 11)
        self.write("pairs.csv", text)
        self.assertEqual(self.run_cli("fit", "pairs.csv", "--order", "11").status, USAGE)

    def test_why_there_is_no_fit_is_told(self):
        document = self.fit("1,2\n2,3\n3,4\n", "--order", "3", status=FAILED)
        self.assertIn("There are only 3 pair set points defined. 'Order Of Fit' cannot be any "
                      "larger than 2", document["messages"][0]["text"])
        self.assertEqual(document["coefficients"], [])
        document = self.fit("1,2\n", status=FAILED)
        self.assertIn("There must be at least 2 pair sets defined", document["messages"][0]["text"])
        document = self.fit("", status=FAILED)
        self.assertEqual(document["messages"][0]["text"],
                         "Unable to draw graph. No data points defined")
        document = self.fit("5,1\n5,2\n5,3\n", status=FAILED)
        self.assertEqual(document["messages"][0]["text"], "ERROR: Unable to calculate coefficients")

    def test_values_that_are_no_numbers_are_told(self):
        for bad, axis in (("1,2\nabc,3\n", "X"), ("1,2\n3,abc\n", "Y"), ("1,2\nnan,3\n", "X"),
                          ("1,2\n3,inf\n", "Y"), ("1,2\n3,1e999\n", "Y"), ("1,2\n3\n", "Y")):
            document = self.fit(bad, status=FAILED)
            self.assertEqual(document["messages"][0]["text"],
                             "Error in row #2. %s Value found is not a valid floating point number"
                             % axis, bad)
            self.assertEqual(document["pairs"], [])

    def test_a_third_column_and_a_unit_are_told_with_their_row(self):
        for bad, why in (("1,2\n3,4,5\n", "There are more than two columns: '5'"),
                         ("1 2\n3 4 V\n", "There are more than two columns: 'V'"),
                         ("1\t2\n3\t4V\n", "Y Value found is not a valid floating point number"),
                         ("1;2\n3;4 V\n", "Y Value found is not a valid floating point number"),
                         ("1;2\n3,5\n", "Y Value found is not a valid floating point number"),
                         ("1;2\n32,768;5\n", "X Value found is not a valid floating point number: "
                          "the comma of '32,768' can be a decimal comma or separate thousands")):
            document = self.fit(bad, status=FAILED)
            self.assertEqual(document["messages"][0]["text"], "Error in row #2. " + why, bad)
            self.assertEqual(document["pairs"], [])

    def test_decimal_commas_are_understood(self):
        for text in ("1,5;2,5\n2,5;4,5\n", "1,5\t2,5\n2,5\t4,5\n", "1,5 2,5\n2,5 4,5\n",
                     "Zeit;Druck\n\"1,5\";\"2,5\"\n2,5;4,5\n"):
            pairs = self.fit(text)["pairs"]
            self.assertEqual([(pair["x"], pair["y"]) for pair in pairs], [(1.5, 2.5), (2.5, 4.5)],
                             text)

    def test_numbers_near_the_end_of_the_range_are_no_fit(self):
        document = self.fit("1,1\n2,2\n1e308,3\n", status=FAILED)
        self.assertEqual(document["coefficients"], [])

    def test_a_large_file_is_taken(self):
        text = "".join("%d %d\n" % (i, 2 * i + 1) for i in range(100000))
        document = self.fit(text, "--order", "1")
        self.assertEqual(len(document["pairs"]), 100000)

    def test_a_file_that_is_not_there_is_told(self):
        for name in ("none.csv", "."):
            result = self.run_json("fit", name)
            self.assertEqual(result.status, FAILED, result)
            self.assertIn("Unable to read", result.json["messages"][0]["text"])

    def test_wrong_usage(self):
        self.write("pairs.csv", NUMBERS)
        for options in (["--order", "x"], ["--order", "-1"], ["--order", "1", "--best"],
                        ["--max-order", "0"], ["--max-order", "11"], ["--precision", "41"],
                        ["--precision", "-1"], ["--bits", "0"], ["--bits", "65"], ["--svg"]):
            self.assertEqual(self.run_cli("fit", "pairs.csv", *options).status, USAGE, options)
        self.assertEqual(self.run_cli("fit").status, USAGE)


class TrustTest(kavu.KavuTest):
    def test_an_order_that_does_not_hold_is_told_with_one_that_does(self):
        self.write("pairs.csv", high_counts())
        result = self.run_json("fit", "pairs.csv", "--order", "7")
        self.assertEqual(result.status, REPORTED, result)
        document = result.json
        self.assertFalse(document["trust"]["holds"])
        self.assertGreater(document["trust"]["overPairs"], 0.1)
        order = document["trust"]["holdingOrder"]
        self.assertIn("Order %d would hold" % order, document["messages"][0]["text"])
        again = self.run_json("fit", "pairs.csv", "--order", str(order))
        self.assertEqual(again.status, CLEAN, again)
        self.assertTrue(again.json["trust"]["holds"])

    def test_the_note_changes_no_number(self):
        self.write("pairs.csv", high_counts())
        one = self.run_json("fit", "pairs.csv", "--order", "3", "--precision", "2").json
        other = self.run_json("fit", "pairs.csv", "--order", "3", "--precision", "16").json
        self.assertEqual(one["coefficientsExact"], other["coefficientsExact"])
        self.assertFalse(one["trust"]["holds"])
        self.assertTrue(other["trust"]["holds"])

    def test_the_range_of_a_word_is_judged_if_it_is_given(self):
        self.write("pairs.csv", "".join("%d,%g\n" % (i, math.sin(i)) for i in range(20)))
        self.assertEqual(self.run_json("fit", "pairs.csv", "--order", "5").status, CLEAN)
        result = self.run_json("fit", "pairs.csv", "--order", "5", "--bits", "16")
        self.assertEqual(result.status, REPORTED, result)
        self.assertIn("over the range of the counts", result.json["messages"][0]["text"])
        self.assertIn("the curve is extrapolated there", result.json["messages"][0]["text"])
        # 31 is beyond the pairs by less than the 19 that they span.
        near = self.run_json("fit", "pairs.csv", "--order", "5", "--bits", "5").json
        self.assertFalse(near["trust"]["extrapolates"])
        self.assertNotIn("extrapolated", str(near["messages"]))


class PictureTest(kavu.KavuTest):
    def test_a_picture_is_drawn(self):
        self.write("pairs.csv", NUMBERS)
        result = self.run_json("fit", "pairs.csv", "--svg", "fit.svg")
        self.assertEqual(result.status, CLEAN, result)
        self.assertEqual(result.json["svg"], "fit.svg")
        picture = xml.dom.minidom.parseString(self.read("fit.svg"))
        texts = [node.firstChild.data for node in picture.getElementsByTagName("text")]
        self.assertIn("TM Value", texts)
        self.assertIn("EU Value", texts)
        self.assertEqual(len(picture.getElementsByTagName("ellipse")), 5)

    def test_a_picture_of_no_fit_tells_why(self):
        self.write("pairs.csv", "1,2\n")
        result = self.run_json("fit", "pairs.csv", "--svg", "fit.svg")
        self.assertEqual(result.status, FAILED, result)
        self.assertIn(b"There must be at least 2 pair sets defined", self.read("fit.svg"))

    def test_a_picture_that_can_not_be_written_is_told(self):
        self.write("pairs.csv", NUMBERS)
        result = self.run_json("fit", "pairs.csv", "--svg", os.path.join("none", "fit.svg"))
        self.assertEqual(result.status, FAILED, result)
        self.assertIn("Unable to write", result.json["messages"][0]["text"])
        self.assertNotIn("svg", result.json)

    def test_a_file_that_is_there_is_replaced_only_if_that_is_wanted(self):
        self.write("pairs.csv", NUMBERS)
        self.write("fit.svg", "drawn by hand")
        result = self.run_json("fit", "pairs.csv", "--svg", "fit.svg")
        self.assertEqual(result.status, FAILED, result)
        self.assertIn("'fit.svg' exists", result.json["messages"][0]["text"])
        self.assertEqual(self.read("fit.svg"), b"drawn by hand")
        result = self.run_json("--overwrite", "fit", "pairs.csv", "--svg", "fit.svg")
        self.assertEqual(result.status, CLEAN, result)
        self.assertIn(b"<svg", self.read("fit.svg"))
        self.assertEqual(sorted(os.listdir(self.work)), ["fit.svg", "pairs.csv"])

    def test_an_input_is_never_the_output(self):
        self.write("pairs.csv", NUMBERS)
        self.write("my.ini", "[KAVU-9]\r\n")
        os.symlink("pairs.csv", self.path("link.svg"))
        for name in ("pairs.csv", "link.svg", "my.ini"):
            before = self.read(name)
            result = self.run_json("--overwrite", "--settings", "my.ini", "fit", "pairs.csv",
                                   "--svg", name)
            self.assertEqual(result.status, FAILED, result)
            self.assertIn("is an input", result.json["messages"][0]["text"])
            self.assertEqual(self.read(name), before)


class ConversionsTest(kavu.KavuTest):
    def setUp(self):
        super().setUp()
        self.write("in.tma", DOCUMENT)

    def test_every_record_has_every_key(self):
        result = self.run_json("conversions", "in.tma")
        self.assertEqual(result.status, CLEAN, result)
        records = result.json["conversions"]
        self.assertEqual([record["name"] for record in records],
                         ["COEF", "PAIRS", "TABLE", "NEG", "NOTHING", "SECRET"])
        self.assertEqual(records[0]["values"], {"DCT": "COE", "CO\\N": "2", "CO1": "N", "CO": "1",
                                                "CO-1": "2", "CO-2": "0.5"})
        self.assertEqual(records[1]["values"]["COM"], "two\r\nlines")

    def test_one_record_by_its_name(self):
        records = self.run_json("conversions", "in.tma", "NEG").json["conversions"]
        self.assertEqual([record["name"] for record in records], ["NEG"])
        text = self.run_cli("conversions", "in.tma", "NEG").text
        self.assertIn("NPC-1", text)
        self.assertNotIn("PAIRS", text)

    def test_a_name_that_is_not_there_fails(self):
        result = self.run_json("conversions", "in.tma", "OTHER")
        self.assertEqual(result.status, FAILED, result)
        self.assertIn("There is no conversion record of 'OTHER'",
                      result.json["messages"][0]["text"])

    def test_a_long_comment_is_shown_whole(self):
        self.write("in.tma", "G\\106:09;C-1\\DCN:A;C-1\\COM:%s;C-1\\DCT:NON;" % ("x" * 40000))
        values = self.run_json("conversions", "in.tma").json["conversions"][0]["values"]
        self.assertEqual(values["COM"], "x" * 40000)

    def test_a_document_without_records_has_none(self):
        self.write("in.tma", "G\\106:09;")
        result = self.run_json("conversions", "in.tma")
        self.assertEqual((result.status, result.json["conversions"]), (CLEAN, []))


class EvaluateTest(kavu.KavuTest):
    def evaluate(self, *arguments, status=CLEAN):
        self.write("in.tma", DOCUMENT)
        result = self.run_json("evaluate", "in.tma", *arguments)
        self.assertEqual(result.status, status, result)
        return result.json

    def values(self, *arguments, status=CLEAN):
        return [row["y"] for row in self.evaluate(*arguments, status=status)["values"]]

    def test_coefficients_pairs_and_negative_powers(self):
        self.assertEqual(self.values("COEF", "0", "4", "-2"), [1.0, 17.0, -1.0])
        self.assertAlmostEqual(self.values("PAIRS", "5")[0], 20.0, places=9)
        self.assertEqual(self.values("NEG", "2"), [5.0])

    def test_negative_numbers_and_fractions_are_values(self):
        self.assertEqual(self.values("COEF", "-.5", "-1e0", ".5"), [0.125, -0.5, 2.125])

    def test_a_value_without_a_result_is_told(self):
        self.assertEqual(self.values("NEG", "0", "4", status=REPORTED), [None, 3.0])

    def test_why_not_is_told(self):
        for name, why in (("TABLE", "do not define a polynomial curve fit"),
                          ("NOTHING", "It has no conversion"), ("SECRET", '"SP" is no polynomial'),
                          ("OTHER", "There is no conversion record")):
            document = self.evaluate(name, "1", status=FAILED)
            self.assertIn(why, document["messages"][-1]["text"])
            self.assertNotIn("values", document)

    def test_text_is_wrong_usage(self):
        self.write("in.tma", DOCUMENT)
        for arguments in (["COEF"], ["COEF", "x"], ["COEF", "1", "nan"], ["COEF", "inf"], []):
            result = self.run_cli("evaluate", "in.tma", *arguments)
            self.assertEqual(result.status, USAGE, arguments)

    def test_the_text_has_two_columns(self):
        self.write("in.tma", DOCUMENT)
        self.assertIn("4   17\n", self.run_cli("evaluate", "in.tma", "COEF", "4", "10").text)


if __name__ == "__main__":
    kavu.main()
