"""The C interface, the C++ header and the Python module of a session, and the examples."""

import contextlib
import csv
import ctypes
import io
import os
import subprocess
import tempfile
import unittest

import kavu_sdk

import decode_frame
import export_csv
import list_measurements

DOCUMENT = (
    "G\\106:09;G\\DSI\\N:1;G\\DSI-1:Caf\xe9;G\\DST-1:RF;G\\COM:a & b\nc;M-1\\ID:Caf\xe9;"
    "M-1\\BB\\DLN:Link;M-1\\SI\\N:1;M-1\\SI\\DLN-1:Alone;"
    "P-1\\DLN:Link;P-1\\TF:ONE;P-1\\F1:8;P-1\\MF\\N:2;P-1\\MF1:5;P-1\\MF4:16;"
    "P-1\\MF5:1110101110010000;"
    "D-1\\DLN:Link;D-1\\ML\\N:1;D-1\\MLN-1:L;D-1\\MN\\N-1:4;"
    "D-1\\MN-1-1:Plain;D-1\\LT-1-1:WDFR;D-1\\MML\\N-1-1:1;D-1\\WP-1-1-1-1:1;"
    "D-1\\FP-1-1-1-1:1;D-1\\FI-1-1-1-1:1;D-1\\WFM-1-1-1-1:FW;"
    "D-1\\MN-1-2:Masked;D-1\\LT-1-2:WDFR;D-1\\MML\\N-1-2:1;D-1\\WP-1-2-1-1:2;"
    "D-1\\FP-1-2-1-1:1;D-1\\FI-1-2-1-1:1;D-1\\WFM-1-2-1-1:00111100;"
    "D-1\\MN-1-3:Whole;D-1\\LT-1-3:WDFR;D-1\\MML\\N-1-3:1;D-1\\MNF\\N-1-3-1:2;"
    "D-1\\WP-1-3-1-1:1;D-1\\FP-1-3-1-1:1;D-1\\FI-1-3-1-1:1;D-1\\WFM-1-3-1-1:FW;"
    "D-1\\WFP-1-3-1-1:2;D-1\\WP-1-3-1-2:3;D-1\\FP-1-3-1-2:1;D-1\\FI-1-3-1-2:1;"
    "D-1\\WFM-1-3-1-2:11110000;D-1\\WFP-1-3-1-2:1;"
    "D-1\\MN-1-4:Second;D-1\\LT-1-4:WDFR;D-1\\MML\\N-1-4:1;D-1\\WP-1-4-1-1:4;"
    "D-1\\FP-1-4-1-1:2;D-1\\FI-1-4-1-1:0;D-1\\EFP-1-4-1-1:2;D-1\\WFM-1-4-1-1:FW;"
    "C-7\\DCN:Plain;C-7\\DCT:COE;C-7\\CO\\N:1;C-7\\CO-1:2;")
# Sync pattern, then words 1 to 4.
FRAME = bytes([0xEB, 0x90, 0x12, 0b10101101, 0xAB, 0x44])


class InterfaceTest(unittest.TestCase):
    def setUp(self):
        self._folder = tempfile.TemporaryDirectory()
        self.addCleanup(self._folder.cleanup)
        self.path = os.path.join(self._folder.name, "in.tma")
        with open(self.path, "wb") as file:
            file.write(DOCUMENT.encode("latin-1"))

    def session(self):
        session = kavu_sdk.Session(self.path)
        self.addCleanup(session.close)
        return session

    def test_lists_sources_and_streams(self):
        session = self.session()
        self.assertEqual(session.version, 2009)
        self.assertEqual(session.sources(), [kavu_sdk.Source("Caf\xe9", "RF")])
        first, second = session.streams()
        self.assertEqual((first.name, first.type, first.named, first.group("D")),
                         ("Link", "ONE", True, 1))
        self.assertEqual((second.number, second.name, second.group("P")), (2, "Alone", 0))

    def test_gives_places_and_masks_of_a_measurement(self):
        session = self.session()
        whole = session.measurement("Link", "Whole")
        self.assertEqual((whole.index, whole.word_length), (2, 12))
        (location,) = whole.locations
        self.assertEqual([(part.number, part.word.start, part.mask) for part in location.fragments],
                         [(1, 3, "11110000"), (2, 1, "FW")])
        self.assertEqual(location.fragments[0].bits, (1, 2, 3, 4))
        self.assertEqual(location.fragments[1].mask_value, 0xFF)
        self.assertTrue(location.fragments[1].full_word)
        self.assertEqual(session.word_lengths(1), [16, 8, 8, 8, 8])

    def test_reads_groups_and_conversion_records(self):
        session = self.session()
        self.assertEqual(session.group("P", 1)["mf1"], "5")
        self.assertEqual(session.group("M", "Caf\xe9"), None)
        self.assertEqual(session.group("G").get("COM"), "a & b\r\nc")
        self.assertEqual([field for field, _ in session.conversion("Plain")],
                         ["DCN", "DCT", "CO\\N", "CO-1"])
        self.assertEqual(session.conversion(7).number, 7)
        self.assertIsNone(session.conversion("Masked"))
        self.assertIsNone(session.group("P", 9))

    def test_gives_the_polynomial_of_a_record(self):
        session = self.session()
        curve = session.polynomial("Plain")
        self.assertEqual(curve, kavu_sdk.Polynomial((0.0, 2.0), False))
        self.assertEqual(curve(21), 42)
        self.assertIsNone(session.polynomial("Masked"))
        self.assertIsNone(session.polynomial(99))

    def test_substitutes_in_values(self):
        session = self.session()
        session.substitute("&", "&amp;")
        self.assertEqual(session.group("G")["COM"], "a &amp; b\r\nc")

    def test_failures_are_errors_with_their_texts(self):
        session = self.session()
        with self.assertRaisesRegex(kavu_sdk.Error, "Unable to process stream #3"):
            session.measurements(3)
        with self.assertRaisesRegex(kavu_sdk.Error, "Unable to open TMATS Stream File"):
            session.measurements("Alone")
        with self.assertRaisesRegex(kavu_sdk.Error, "There is no measurement 'None'"):
            session.measurement("Link", "None")
        with self.assertRaisesRegex(kavu_sdk.Error, "There is no data link 'Nowhere'"):
            session.measurements("Nowhere")
        with self.assertRaisesRegex(kavu_sdk.Error, "Please check TMATS pathname"):
            kavu_sdk.Session(self.path + ".none")
        self.assertEqual(len(session.errors), 2)

    def test_a_closed_session_is_empty(self):
        session = self.session()
        session.close()
        session.close()
        self.assertEqual((session.streams(), session.sources(), session.errors), ([], [], []))

    def test_two_sessions_have_nothing_in_common(self):
        first, second = self.session(), self.session()
        first.close()
        self.assertEqual(len(second.measurements(1)), 4)

    def test_the_library_shows_only_its_interface(self):
        symbols = subprocess.run(["nm", "-D", "--defined-only", os.environ["KAVU_SDK_LIBRARY"]],
                                 capture_output=True, text=True, check=True).stdout
        names = [line.split()[-1].partition("@")[0] for line in symbols.splitlines()]
        self.assertEqual([name for name in names
                          if not name.startswith("kavu_sdk_") and name != "KAVU_SDK_1"], [])
        self.assertGreater(len(names), 30)

    def test_null_pointers_are_refused(self):
        library = ctypes.CDLL(os.environ["KAVU_SDK_LIBRARY"])
        null = ctypes.c_void_p()
        for name in ("open", "load_stream", "substitute"):
            function = getattr(library, "kavu_sdk_" + name)
            function.restype = ctypes.c_int
            self.assertEqual(function(null, null, null), -1, name)
        library.kavu_sdk_free(null)
        library.kavu_sdk_close_group(null)

    # --- the examples -----------------------------------------------------------------------------

    def test_example_lists_the_measurements_of_a_stream(self):
        out = io.StringIO()
        with contextlib.redirect_stdout(out):
            self.assertEqual(list_measurements.main(self.path, "Link"), 0)
        self.assertIn("Masked: 8 bits\n  location 1, fragment 1: words [2], frames 1 to 2 by 1, "
                      "mask 00111100\n", out.getvalue())

    def test_example_decodes_a_minor_frame_into_named_values(self):
        session = self.session()
        first = decode_frame.decode(session, "Link", 1, FRAME)
        self.assertEqual(first, {"Plain": [0x12], "Masked": [0b1011], "Whole": [0xA12]})
        self.assertEqual(decode_frame.decode(session, "Link", 2, FRAME)["Second"], [0x44])
        frame = os.path.join(self._folder.name, "frame.bin")
        with open(frame, "wb") as file:
            file.write(FRAME)
        out = io.StringIO()
        with contextlib.redirect_stdout(out):
            decode_frame.main(self.path, "Link", "1", frame)
        self.assertEqual(out.getvalue(), "Plain 36.0\nMasked 11\nWhole 2578\n")
        with self.assertRaisesRegex(ValueError, "not 48"):
            decode_frame.decode(session, "Link", 1, FRAME[:-1])

    def test_example_exports_a_file_as_csv(self):
        output = os.path.join(self._folder.name, "out.csv")
        with contextlib.redirect_stderr(io.StringIO()) as err:
            self.assertEqual(export_csv.main(self.path, output), 1)
        self.assertIn("Alone: ", err.getvalue())
        with open(output, newline="", encoding="utf-8") as file:
            rows = list(csv.DictReader(file))
        self.assertEqual([(row["measurement"], row["first word"], row["conversion"])
                          for row in rows],
                         [("Plain", "1", "COE"), ("Masked", "2", ""), ("Whole", "3", ""),
                          ("Whole", "1", ""), ("Second", "4", "")])

    def run_example(self, name, *arguments):
        return subprocess.run([os.path.join(os.environ["KAVU_EXAMPLES"], name), *arguments],
                              capture_output=True, text=True, check=False)

    def test_example_in_c_lists_the_streams(self):
        result = self.run_example("list_streams", self.path)
        self.assertEqual((result.returncode, result.stdout),
                         (0, "106-09\n1 Link ONE: 4 measurements\n"
                             "2 Alone : 0 measurements (unreadable)\n"))
        self.assertEqual(self.run_example("list_streams", "/none").returncode, 2)

    def test_example_in_cpp_shows_masks(self):
        result = self.run_example("decode_masks", self.path, "1")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn("Masked: word 2, 4 bits\n", result.stdout)
        self.assertIn("Plain: word 1, 8 bits (all)\n", result.stdout)
        failed = self.run_example("decode_masks", self.path, "9")
        self.assertEqual(failed.returncode, 2)
        self.assertIn("Unable to process stream #9", failed.stderr)


if __name__ == "__main__":
    unittest.main()
