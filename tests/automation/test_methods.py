"""Every method over the bus, with good and with bad input, on the flight test sample."""

import math
import os
import unittest

from private_bus import INTERFACE, PrivateBusTest, type_library

NO_HWND = 0
STREAM, WORDS, FRAMES, COUNTER = "PCM Stream 1", 64, 32, "SFID"
# Methods that need no loaded format.
OF_DOCUMENT = {"IsTmatsFileChanged", "SaveTmatsFile", "CloseTmatsFile", "EditGeneralInfo", "EditMultiplexInfo",
               "EditRFInfo", "EditTapeInfo", "CountPCMStreams", "GetPCMStreamName", "LoadPCMFormat"}
GOOD = {"x": 0, "i": 1, "s": "X", "b": False, "d": 1.0}


class MethodsTest(PrivateBusTest):

    def setUp(self):
        super().setUp()
        self.start_bus()
        self.server = self.start_server()
        self.path = self.sample()
        self.editor = self.kavu()

    def opened(self, stream=1):
        self.editor.OpenTmatsFile(NO_HWND, self.path)
        self.editor.LoadPCMFormat(NO_HWND, stream)
        return self.editor

    def reloaded(self):
        """What the file holds by now."""
        self.editor.SaveTmatsFile(NO_HWND)
        self.editor.CloseTmatsFile(NO_HWND, False)
        return self.opened()

    # --- order of the errors --------------------------------------------------------------------

    def every_method(self):
        for tag, name, arguments in type_library()[INTERFACE]:
            if tag == "method" and name != "OpenTmatsFile":
                yield name, [GOOD[kind] for _, kind, direction in arguments if direction == "in"]

    def test_without_a_document_every_method_says_so(self):
        for name, arguments in self.every_method():
            with self.subTest(method=name):
                self.fails("NoDocument", getattr(self.editor, name), *arguments)

    def test_without_a_format_every_method_on_it_says_so(self):
        self.editor.OpenTmatsFile(NO_HWND, self.path)
        for name, arguments in self.every_method():
            if name in OF_DOCUMENT or "MeasurementEu" in name:
                continue
            with self.subTest(method=name):
                self.fails("NoFormat", getattr(self.editor, name), *arguments)

    def test_without_a_display_windows_need_one_after_their_names_were_found(self):
        editor = self.opened()
        for method in (editor.EditGeneralInfo, editor.EditMultiplexInfo, editor.EditRFInfo,
                       editor.EditTapeInfo, editor.ShowPCMFormatDialog, editor.ShowPCMDisplay):
            for window in (0, 1, 2 ** 31, -1):
                self.fails("NoDisplay", method, window)
        for method, name in ((editor.EditSFID, COUNTER), (editor.EditSubframe, "SF-TEMP"),
                             (editor.EditMeasurementByName, "ENG1-N1"),
                             (editor.ShowMeasurementEuDialog, "ENG1-N1")):
            self.fails("NoDisplay", method, NO_HWND, name)
            self.fails("NotFound", method, NO_HWND, "nothing of that name")
        self.fails("NoDisplay", editor.EditMeasurementsAt, NO_HWND, 14, 1)
        self.fails("OutOfRange", editor.EditMeasurementsAt, NO_HWND, 64, 1)

    # --- document and format ----------------------------------------------------------------------

    def test_a_document_is_opened_saved_and_closed(self):
        editor = self.editor
        self.fails("BadValue", editor.OpenTmatsFile, NO_HWND, "flight-test.tma")
        self.fails("BadValue", editor.OpenTmatsFile, NO_HWND, "  ")
        self.fails("FileError", editor.OpenTmatsFile, NO_HWND, self.path + ".none")
        editor.OpenTmatsFile(NO_HWND, self.path[:-len(".tma")])
        self.assertFalse(editor.IsTmatsFileChanged())
        editor.LoadPCMFormat(NO_HWND, 1)
        editor.SetBitRate(123456)
        self.assertTrue(editor.IsPCMFormatChanged())
        self.assertFalse(editor.IsTmatsFileChanged())
        self.fails("Unsaved", editor.OpenTmatsFile, NO_HWND, self.path)
        editor.SaveTmatsFile(NO_HWND)
        self.assertFalse(editor.IsPCMFormatChanged())
        editor.SetBitRate(222)
        editor.CloseTmatsFile(NO_HWND, False)
        self.fails("NoDocument", editor.GetBitRate)
        self.assertEqual(self.opened().GetBitRate(), 123456)
        editor.SetBitRate(333)
        editor.CloseTmatsFile(NO_HWND, True)
        self.assertEqual(self.opened().GetBitRate(), 333)
        self.fails("FileError", editor.OpenTmatsFile, NO_HWND, self.path + ".none")
        self.assertEqual(editor.GetBitRate(), 333)

    def test_streams_are_counted_and_loaded(self):
        editor = self.editor
        editor.OpenTmatsFile(NO_HWND, self.path)
        self.assertEqual(editor.CountPCMStreams(), 3)
        self.assertEqual([editor.GetPCMStreamName(number) for number in (1, 2, 3)],
                         ["PCM Stream 1", "PCM Stream 2", "PCM Stream 3"])
        for number in (0, 4, -1, 2 ** 31 - 1, -2 ** 31):
            self.fails("OutOfRange", editor.GetPCMStreamName, number)
            self.fails("OutOfRange", editor.LoadPCMFormat, NO_HWND, number)
        editor.LoadPCMFormat(NO_HWND, 1)
        editor.SetBitRate(5)
        editor.LoadPCMFormat(NO_HWND, 1)
        self.assertEqual(editor.GetBitRate(), 5)
        self.fails("Unsaved", editor.LoadPCMFormat, NO_HWND, 2)
        editor.SavePCMFormat(NO_HWND)
        self.assertTrue(editor.IsTmatsFileChanged())
        editor.LoadPCMFormat(NO_HWND, 2)
        self.assertEqual(editor.GetWordsPerMinorFrame(), 48)

    def test_attributes_of_the_format(self):
        editor = self.opened()
        self.assertEqual((editor.GetCommonWordLength(), editor.GetNumberOfFrames(),
                          editor.GetWordsPerMinorFrame(), editor.GetBitRate()), (16, 32, 64, 1040000))
        self.assertIn("spare", editor.GetPCMComment())
        editor.SetPCMComment("one\ntwo")
        editor.SetCommonWordLength(NO_HWND, 14)
        editor.SetNumberOfFrames(NO_HWND, 16)
        editor.SetWordsPerMinorFrame(NO_HWND, 60)
        editor = self.reloaded()
        self.assertEqual((editor.GetCommonWordLength(), editor.GetNumberOfFrames(),
                          editor.GetWordsPerMinorFrame()), (14, 16, 60))
        self.assertEqual(editor.GetPCMComment().splitlines(), ["one", "two"])
        for method in (editor.SetCommonWordLength, editor.SetNumberOfFrames, editor.SetWordsPerMinorFrame):
            for number in (0, -1, 2 ** 31 - 1, -2 ** 31):
                with self.subTest(number=number):
                    with self.assertRaises(Exception):
                        method(NO_HWND, number)
        self.assertEqual((editor.GetCommonWordLength(), editor.GetNumberOfFrames(),
                          editor.GetWordsPerMinorFrame()), (14, 16, 60))
        self.assertFalse(editor.IsPCMFormatChanged())

    def test_the_sync_pattern(self):
        editor = self.opened()
        editor.SetFrameSyncPatternByLength(NO_HWND, 24)
        self.assertEqual(editor.GetFrameSyncPattern().replace(" ", ""), "111110101111001100100000")
        editor.SetFrameSyncPatternByValue(NO_HWND, "1110101110010000")
        self.assertEqual(editor.GetFrameSyncPattern().replace(" ", ""), "1110101110010000")
        self.assertTrue(self.fails("Refused", editor.SetFrameSyncPatternByLength, NO_HWND,
                                   34).startswith("440: "))
        self.fails("OutOfRange", editor.SetFrameSyncPatternByLength, NO_HWND, -1)
        self.assertTrue(self.fails("Refused", editor.SetFrameSyncPatternByValue, NO_HWND,
                                   " ").startswith("439: "))

    # --- counters and subframes -------------------------------------------------------------------

    def test_counters(self):
        editor = self.opened()
        self.assertEqual(editor.GetNumberOfSFIDs(), 1)
        self.assertEqual(tuple(editor.GetSFIDInfo(1)), (COUNTER, 1))
        self.fails("OutOfRange", editor.GetSFIDInfo, 2)
        editor.CreateSFID(NO_HWND, 63)
        name, word = editor.GetSFIDInfo(2)
        self.assertEqual(word, 63)
        self.fails("Refused", editor.CreateSFID, NO_HWND, 14)
        self.fails("OutOfRange", editor.CreateSFID, NO_HWND, 64)
        editor.SetSFIDName(NO_HWND, name, "SECOND")
        self.assertTrue(self.fails("Refused", editor.SetSFIDName, NO_HWND, "SECOND",
                                   COUNTER).startswith("365: "))
        self.fails("NotFound", editor.SetSFIDName, NO_HWND, name, "THIRD")
        for get, setter, value in (
                (editor.GetSFIDCountDirection, editor.SetSFIDCountDirection, "DEC"),
                (editor.GetSFIDCounterLength, editor.SetSFIDCounterLength, 6),
                (editor.GetSFIDEndFrame, editor.SetSFIDEndFrame, 16),
                (editor.GetSFIDStartFrame, editor.SetSFIDStartFrame, 2),
                (editor.GetSFIDStartValue, editor.SetSFIDStartValue, 40),
                (editor.GetSFIDEndValue, editor.SetSFIDEndValue, 7),
                (editor.GetSFIDMSBStartBit, editor.SetSFIDMSBStartBit, 3),
                (editor.GetSFIDTransferOrder, editor.SetSFIDTransferOrder, "L"),
                (editor.GetSFIDWordLength, editor.SetSFIDWordLength, 12)):
            setter("SECOND", value)
            self.assertEqual(get("SECOND"), value)
            self.fails("NotFound", get, "second")
            self.fails("NotFound", setter, "second", value)
            bad = "?" if isinstance(value, str) else 2 ** 31 - 1
            self.fails("BadValue" if isinstance(value, str) else "OutOfRange", setter, "SECOND", bad)
            self.assertEqual(get("SECOND"), value)
        editor.DeleteSFID(NO_HWND, "SECOND")
        self.fails("NotFound", editor.DeleteSFID, NO_HWND, "SECOND")
        self.assertEqual(editor.GetNumberOfSFIDs(), 1)

    def test_subframes(self):
        editor = self.opened()
        self.assertEqual(editor.GetSubframeName(12), "SF-DISCRETE")
        self.assertEqual(tuple(editor.GetSubframeLocations("SF-DISCRETE")), (12, 4, 16))
        self.assertEqual(editor.GetSubframeDepth("SF-DISCRETE"), 8)
        self.assertEqual(editor.GetSubframeIDCounter("SF-DISCRETE"), COUNTER)
        self.fails("NotFound", editor.GetSubframeName, 14)
        self.fails("OutOfRange", editor.GetSubframeName, 64)
        editor.CreateSubframe(NO_HWND, 63, "NEW", 4, 1, 0)
        self.assertEqual((editor.GetSubframeName(63), editor.GetSubframeDepth("NEW")), ("NEW", 4))
        editor.SetSubframeDepth(NO_HWND, "NEW", 8)
        editor.SetSubframeName(NO_HWND, "NEW", "NEWER")
        self.assertTrue(self.fails("Refused", editor.SetSubframeName, NO_HWND, "NEWER",
                                   "SF-TEMP").startswith("354: "))
        self.fails("NotFound", editor.SetSubframeName, NO_HWND, "NEW", "NEWEST")
        self.fails("NotFound", editor.SetSubframeIDCounter, NO_HWND, "NEWER", "no counter")
        editor.SetSubframeIDCounter(NO_HWND, "NEWER", COUNTER)
        editor = self.reloaded()
        self.assertEqual((editor.GetSubframeName(63), editor.GetSubframeDepth("NEWER")),
                         ("NEWER", 8))
        self.fails("Refused", editor.SetSubframeDepth, NO_HWND, "NEWER", 5)
        editor.SetSubframeLocations(NO_HWND, "SF-SPARE", 1, 0)
        self.assertEqual(tuple(editor.GetSubframeLocations("SF-SPARE"))[:2], (8, 1))
        editor.DeleteSubframe(NO_HWND, "NEWER")
        self.fails("NotFound", editor.GetSubframeName, 63)

    # --- measurements -----------------------------------------------------------------------------

    def test_measurements(self):
        editor = self.opened()
        self.assertEqual(editor.CountMeasurementsAt(14, 1), 1)
        self.assertEqual(editor.GetMeasurementName(14, 1, 1), "ENG1-N1")
        self.fails("OutOfRange", editor.GetMeasurementName, 14, 1, 2)
        self.fails("OutOfRange", editor.GetMeasurementName, 64, 1, 1)
        self.fails("OutOfRange", editor.GetMeasurementName, 14, 33, 1)
        self.fails("OutOfRange", editor.CountMeasurementsAt, -1, 1)
        self.assertEqual(editor.CountMeasurementOccurences("ENG1-N1"), 32)
        self.assertEqual(tuple(editor.GetMeasurementOccurence("eng1-n1", 2)), (14, 2))
        self.fails("OutOfRange", editor.GetMeasurementOccurence, "ENG1-N1", 33)
        editor.CreateMeasurement(NO_HWND, 63, 1, "NEW", "1111000000000000", "", "", "", 1, 0)
        self.assertTrue(self.fails("Refused", editor.CreateMeasurement, NO_HWND, 63, 1, "NEW", "", "",
                                   "", "", 1, 0)[:1].isdigit())
        self.fails("OutOfRange", editor.CreateMeasurement, NO_HWND, 64, 1, "X", "", "", "", "", 1, 0)
        self.fails("BadValue", editor.CreateMeasurement, NO_HWND, 63, 1, "X", "", "?", "", "", 1, 0)
        for get, setter, value in (
                (editor.GetMeasurementBitMask, editor.SetMeasurementBitMask, "0000111100000000"),
                (editor.GetMeasurementParity, editor.SetMeasurementParity, "EV"),
                (editor.GetMeasurementParityXfer, editor.SetMeasurementParityXfer, "L"),
                (editor.GetMeasurementXferOrder, editor.SetMeasurementXferOrder, "L")):
            setter("NEW", value)
            self.assertEqual(get("NEW"), value)
            self.fails("NotFound", get, "none")
            self.fails("NotFound", setter, "none", value)
            with self.assertRaises(Exception):
                setter("NEW", "?")
            self.assertEqual(get("NEW"), value)
        editor.SetMeasurementWordLength(NO_HWND, "NEW", 20)
        self.assertEqual(editor.GetMeasurementWordLength("NEW"), 20)
        self.fails("NotFound", editor.SetMeasurementWordLength, NO_HWND, "none", 20)
        editor.SetMeasurementName("NEW", "NEWER")
        self.fails("NotFound", editor.SetMeasurementName, "NEW", "X")
        self.fails("Refused", editor.SetMeasurementName, "NEWER", "")
        editor = self.reloaded()
        self.assertEqual(editor.GetMeasurementName(63, 1, 1), "NEWER")
        editor.DeleteMeasurement("NEWER")
        self.fails("NotFound", editor.DeleteMeasurement, "NEWER")
        self.assertEqual(editor.CountMeasurementsAt(63, 1), 0)

    def test_texts_beyond_ascii_are_utf_8(self):
        editor = self.opened()
        editor.SetMeasurementName("ENG1-N1", "Köln")
        self.assertEqual(editor.GetMeasurementName(14, 1, 1), "Köln")
        self.assertEqual(editor.CountMeasurementOccurences("Köln"), 32)
        editor.SetMeasurementEuUnits("Köln", "°C")
        self.assertEqual(editor.GetMeasurementEuUnits("Köln"), "°C")

    def test_names_of_windows_1252_files_are_found(self):
        with open(self.path, "rb") as file:
            text = file.read()
        with open(self.path, "wb") as file:
            file.write(text.replace(b"ENG1-N1;", b"K\xf6ln;"))
        editor = self.opened()
        name = editor.GetMeasurementName(14, 1, 1)
        self.assertEqual(name, "Köln")
        self.assertEqual(editor.CountMeasurementOccurences(name), 32)

    # --- conversions ------------------------------------------------------------------------------

    def test_texts_of_a_conversion(self):
        self.editor.OpenTmatsFile(NO_HWND, self.path)
        editor = self.editor
        # A low one may not be above its high one at any time.
        for what, value in (("Description", "a text"), ("LowLimit", "-9"), ("LowValue", "-8"),
                            ("LowWarning", "-8.5"), ("HiLimit", "9"), ("HiValue", "8"), ("HiWarning", "8.5"),
                            ("SampleRate", "12.5"), ("Units", "degC"), ("BinaryFormat", "TWO")):
            get = getattr(editor, "GetMeasurementEu" + what)
            setter = getattr(editor, "SetMeasurementEu" + what)
            setter("ENG1-N1", value)
            self.assertEqual(get("ENG1-N1"), value, what)
            self.fails("NotFound", get, "nothing of that name")
            self.fails("NotFound", setter, "nothing of that name", value)
            self.fails("BadValue", setter, "ENG1-N1", "a\x01b")
        self.assertTrue(editor.IsTmatsFileChanged())

    def test_coefficients_and_pairs(self):
        self.editor.OpenTmatsFile(NO_HWND, self.path)
        editor = self.editor
        editor.SetMeasurementEuConversionType("ENG1-N1", "COE")
        self.assertEqual(editor.GetMeasurementEuConversionType("ENG1-N1"), "COE")
        self.fails("BadValue", editor.SetMeasurementEuConversionType, "ENG1-N1", "?")
        editor.SetMeasurementEuCoefficient("ENG1-N1", 3, 0.1)
        self.assertEqual(editor.GetMeasurementEuCoefficient("ENG1-N1", 3), 0.1)
        self.assertEqual(editor.GetMeasurementEuCoefficientOrderOfFit("ENG1-N1"), 3)
        for term in (-1, 11, 2 ** 31 - 1):
            self.fails("OutOfRange", editor.SetMeasurementEuCoefficient, "ENG1-N1", term, 1.0)
            self.fails("OutOfRange", editor.GetMeasurementEuCoefficient, "ENG1-N1", term)
        for number in (math.nan, math.inf, -math.inf):
            self.fails("BadValue", editor.SetMeasurementEuCoefficient, "ENG1-N1", 0, number)
        editor.SetMeasurementEuConversionType("ENG1-N2", "PRS")
        before = editor.GetMeasurementEuPairSetNumberOfPairs("ENG1-N2")
        editor.SetMeasurementEuPairSet("ENG1-N2", before + 1, 100, 2.5)
        self.assertEqual(editor.GetMeasurementEuPairSetNumberOfPairs("ENG1-N2"), before + 1)
        self.assertEqual(tuple(editor.GetMeasurementEuPairSet("ENG1-N2", before + 1)), (100, 2.5))
        for pair in (0, before + 3, 2 ** 31 - 1):
            self.fails("OutOfRange", editor.SetMeasurementEuPairSet, "ENG1-N2", pair, 1, 1.0)
        self.fails("BadValue", editor.SetMeasurementEuPairSet, "ENG1-N2", 1, 1, math.nan)
        self.fails("OutOfRange", editor.GetMeasurementEuPairSet, "ENG1-N2", 0)
        editor.SetMeasurementEuConversionType("ENG1-N2", "NON")
        self.fails("WrongType", editor.GetMeasurementEuCoefficient, "ENG1-N2", 0)

    # --- the end ------------------------------------------------------------------------------------

    def test_unsaved_changes_are_left_for_recovery_when_the_bus_ends(self):
        editor = self.opened()
        editor.SetBitRate(424242)
        self.bus_process.kill()
        self.assertEqual(self.server.wait(timeout=60), 0)
        self.assertEqual(len(os.listdir(self.temp)), 1)
        out = os.path.join(self.work, "recovered.tma")
        folder = os.path.join(self.temp, os.listdir(self.temp)[0])
        result = self.run_program(os.environ["KAVU_CLI"], "recover", folder, "-o", out)
        self.assertIn(result.returncode, (0, 1), result.stderr)
        with open(out, encoding="latin-1") as file:
            self.assertIn("424242", file.read())

    def test_a_signal_drops_unsaved_changes(self):
        self.opened().SetBitRate(424242)
        self.terminate(self.server)
        self.assertEqual(os.listdir(self.temp), [])
        with open(self.path, encoding="latin-1") as file:
            self.assertNotIn("424242", file.read())


if __name__ == "__main__":
    unittest.main()
