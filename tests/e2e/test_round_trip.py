"""What a read and a write keep and change, over generated documents.

KAVU_ROUND_TRIPS sets how many documents are tried; a failure names its seed.
"""

import os
import unittest

import kavu
import roundtrip
from kavu import CLEAN, FAILED, REPORTED

COUNT = int(os.environ.get("KAVU_ROUND_TRIPS", "150"))
EDITIONS = (1996, 1999, 2000, 2001, 2004, 2005, 2007, 2009, 2011)


class ModelTest(unittest.TestCase):
    """The model itself, on cases worked out by hand."""

    def test_cutting(self):
        self.assertEqual(roundtrip.commands_of(b" \r\n\t\x1aP-1\\TF:ONE ;"), [b"P-1\\TF:ONE;"])
        self.assertEqual(roundtrip.commands_of(b"a\r\r\nb;"), [b"a\r\nb;"])
        self.assertEqual(roundtrip.commands_of(b"a\nb;;x:  ;"), [b"a\r\nb;", b";", b"x:;"])
        self.assertIsNone(roundtrip.commands_of(b"A:1;B"))

    def test_saving(self):
        model = roundtrip.Model(2009, b"out.tma")
        self.assertEqual(
            model.saved(b"P-2\\A:1;T-1\\A:1;X-1\\A:1;P-1\\A:1;G\\PN:x;P-2\\B:2;P-0\\A:1;"),
            b"G\\FN:out.tma;\r\nG\\PN:x;\r\nT-1\\A:1;\r\nP-1\\A:1;\r\nP-2\\A:1;\r\n"
            b"P-2\\B:2;\r\n")
        self.assertEqual(model.saved(b"G\\FN-01:x-01;P-002\\A-010-00:0;P-02\\A;V-03\\A-01:1;"),
                         b"G\\FN:out.tma;\r\nG\\FN-1:x-01;\r\nP-2\\A-10-0:0;\r\nP-02\\A;\r\n"
                         b"V-3\\A-01:1;\r\n")
        self.assertEqual(roundtrip.Model(1996, b"o").saved(b"S-1\\A:1;V-1\\A:1;A-1\\A:1;"),
                         b"A-1\\A:1;\r\n")


class RoundTripTest(kavu.KavuTest):
    def save(self, data, edition, name="in.tma", out="out.tma"):
        self.write(name, data)
        self.write("my.ini", "[KAVU-9]\r\nCreateBackup=0\r\nIRIGInputVersion=%d\r\n" % edition)
        return self.run_json("save", name, "-o", out, "--settings", "my.ini")

    def behind_banner(self, data, edition):
        return data if edition < 1999 else self.without_banner(data)

    def test_generated_documents_are_saved_by_the_rules(self):
        for seed in range(COUNT):
            edition = EDITIONS[seed % len(EDITIONS)]
            data = roundtrip.Generator(seed).document(edition)
            expected = roundtrip.Model(edition, b"out.tma").saved(data)
            with self.subTest(seed=seed, edition=edition):
                result = self.save(data, edition)
                self.assertIn(result.status, (CLEAN, REPORTED), result)
                self.assertEqual(result.json["version"], edition)
                self.assertEqual(self.behind_banner(self.read("out.tma"), edition), expected)
                self.assertEqual(self.read("in.tma"), data)

    def test_a_saved_file_is_saved_again_as_it_is(self):
        # The first save may use up values that hold "G\\FN:", so it is the second that counts.
        for seed in range(1000, 1000 + COUNT // 3):
            edition = EDITIONS[seed % len(EDITIONS)]
            data = roundtrip.Generator(seed).document(edition)
            with self.subTest(seed=seed, edition=edition):
                self.save(data, edition)
                self.save(self.read("out.tma"), edition)
                second = self.read("out.tma")
                self.save(second, edition)
                self.assertEqual(self.read("out.tma"), second)

    def test_a_cut_document_is_refused_and_nothing_is_written(self):
        for seed in range(2000, 2000 + COUNT // 5):
            data = roundtrip.Generator(seed).document(2009).rstrip() + b"G\\PN:cut"
            with self.subTest(seed=seed):
                result = self.save(data, 2009, out="never.tma")
                self.assertEqual(result.status, FAILED)
                self.assertEqual(result.ids(), [157])
                self.assertFalse(self.exists("never.tma"))


class RuleTest(kavu.KavuTest):
    """Each rule on its own."""

    def behind(self, data, **options):
        return self.without_banner(self.saved(data, **options))

    def test_commands_the_system_does_not_know_are_kept(self):
        self.assertIn(b"T-1\\NOSUCH\\FIELD-9:kept;\r\n", self.behind("T-1\\NOSUCH\\FIELD-9:kept;"))

    def test_comments_of_the_source_are_lost(self):
        self.assertNotIn(b"mine", self.saved("COMMENT: mine;G\\106:09;"))

    def test_groups_stand_in_their_order_and_by_rising_index(self):
        data = ("V-1\\A:1;H\\A:1;C-1\\DCN:M;A-1\\A:1;S-1\\A:1;B-1\\A:1;D-1\\A:1;P-2\\A:1;"
                "P-1\\A:1;M-1\\A:1;R-1\\A:1;T-1\\A:1;G\\106:09;")
        fronts = [line.split(b"\\")[0] for line in self.behind(data).split(b"\r\n") if line]
        unique = sorted(set(fronts), key=fronts.index)
        self.assertEqual(unique, [b"G", b"T-1", b"R-1", b"M-1", b"P-1", b"P-2", b"D-1", b"B-1",
                                  b"S-1", b"A-1", b"C-1", b"H", b"V-1"])

    def test_c_groups_are_numbered_anew_and_unknown_fields_of_theirs_lost(self):
        saved = self.behind("G\\106:09;C-5\\DCN:A;C-5\\NOSUCH:x;C-9\\DCN:B;")
        self.assertIn(b"C-1\\DCN:A;\r\n", saved)
        self.assertIn(b"C-2\\DCN:B;\r\n", saved)
        self.assertNotIn(b"NOSUCH", saved)

    def test_a_conversion_without_a_name_is_lost(self):
        self.assertNotIn(b"C-", self.behind("G\\106:09;C-1\\DCT:OTH;C-1\\OTH:x;"))


if __name__ == "__main__":
    kavu.main()
