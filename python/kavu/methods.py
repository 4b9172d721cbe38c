"""The methods of both interfaces, under their names on the bus and with its arguments.

Indices count from 1, but for the term of a coefficient. `hWnd` is the window that dialogs and
messages belong to: 0 for none, which shows no messages.
"""

from __future__ import annotations

from typing import Any, NamedTuple


class SFIDInfo(NamedTuple):
    """An ID counter: its name and its word."""

    Name: str
    Fwp: int


class SubframeLocations(NamedTuple):
    """The words of a subframe; an interval of 0 means that they are listed one by one."""

    Fwp: int
    NumberOfLocs: int
    Interval: int


class MeasurementOccurence(NamedTuple):
    """A place of a measurement."""

    Fwp: int
    Fn: int


class EuPair(NamedTuple):
    """A pair of a pair set: counts and engineering units."""

    X: int
    Y: float


class _Caller:
    """Who sends the calls."""

    def _call(self, method: str, signature: str, *arguments: Any) -> Any:
        raise NotImplementedError


class KavuMethods(_Caller):
    """`Kavu.IKavu`: the open document with its loaded format. Failures raise `kavu.Error`."""

    def OpenTmatsFile(self, hWnd: int, PathName: str) -> None:
        """Opens a file by its absolute path; an open one is closed first. `Unsaved` if it has changes."""
        self._call("OpenTmatsFile", "xs", hWnd, PathName)

    def SaveTmatsFile(self, hWnd: int) -> None:
        """Writes a changed format to the document, and the document to its file."""
        self._call("SaveTmatsFile", "x", hWnd)

    def CloseTmatsFile(self, hWnd: int, AllowSave: bool) -> None:
        """Closes the document; a changed one is saved with `AllowSave`, and dropped without."""
        self._call("CloseTmatsFile", "xb", hWnd, AllowSave)

    def IsTmatsFileChanged(self) -> bool:
        """Whether the document differs from its file. A format that is not saved does not count."""
        return bool(self._call("IsTmatsFileChanged", ""))

    def EditGeneralInfo(self, hWnd: int) -> None:
        """Opens the sheet of the general information."""
        self._call("EditGeneralInfo", "x", hWnd)

    def EditMultiplexInfo(self, hWnd: int) -> None:
        """Opens the dialog of a multiplex definition."""
        self._call("EditMultiplexInfo", "x", hWnd)

    def EditRFInfo(self, hWnd: int) -> None:
        """Opens the sheet of a transmission group."""
        self._call("EditRFInfo", "x", hWnd)

    def EditTapeInfo(self, hWnd: int) -> None:
        """Opens the sheet of a recorder."""
        self._call("EditTapeInfo", "x", hWnd)

    def CountPCMStreams(self) -> int:
        """How many PCM streams the document has."""
        return int(self._call("CountPCMStreams", ""))

    def GetPCMStreamName(self, Stream: int) -> str:
        """The name of a stream, counted from 1."""
        return str(self._call("GetPCMStreamName", "i", Stream))

    def LoadPCMFormat(self, hWnd: int, Stream: int) -> None:
        """Takes the format of a stream, counted from 1, into memory."""
        self._call("LoadPCMFormat", "xi", hWnd, Stream)

    def SavePCMFormat(self, hWnd: int) -> None:
        """Writes the loaded format to the document."""
        self._call("SavePCMFormat", "x", hWnd)

    def IsPCMFormatChanged(self) -> bool:
        """Whether the loaded format differs from the document."""
        return bool(self._call("IsPCMFormatChanged", ""))

    def ShowPCMFormatDialog(self, hWnd: int) -> None:
        """Opens the sheet of the loaded format."""
        self._call("ShowPCMFormatDialog", "x", hWnd)

    def ShowPCMDisplay(self, hWnd: int) -> None:
        """Opens the display of the major frame."""
        self._call("ShowPCMDisplay", "x", hWnd)

    def GetBitRate(self) -> int:
        """The bit rate in bits per second. `NotANumber` if the field holds another text."""
        return int(self._call("GetBitRate", ""))

    def SetBitRate(self, BitRate: int) -> None:
        """Sets the bit rate; 9 characters of it are kept."""
        self._call("SetBitRate", "i", BitRate)

    def GetCommonWordLength(self) -> int:
        """The common length of the words in bits."""
        return int(self._call("GetCommonWordLength", ""))

    def SetCommonWordLength(self, hWnd: int, Length: int) -> None:
        """Sets the common length; words of that length follow."""
        self._call("SetCommonWordLength", "xi", hWnd, Length)

    def GetFrameSyncPattern(self) -> str:
        """The frame sync pattern as it is shown."""
        return str(self._call("GetFrameSyncPattern", ""))

    def SetFrameSyncPatternByLength(self, hWnd: int, NewLength: int) -> None:
        """Takes the recommended pattern of a length from 0 to 33."""
        self._call("SetFrameSyncPatternByLength", "xi", hWnd, NewLength)

    def SetFrameSyncPatternByValue(self, hWnd: int, NewFsp: str) -> None:
        """Sets the frame sync pattern."""
        self._call("SetFrameSyncPatternByValue", "xs", hWnd, NewFsp)

    def GetNumberOfFrames(self) -> int:
        """The minor frames of the major frame."""
        return int(self._call("GetNumberOfFrames", ""))

    def SetNumberOfFrames(self, hWnd: int, Frames: int) -> None:
        """Sets the number of minor frames; counters and depths are cut to it."""
        self._call("SetNumberOfFrames", "xi", hWnd, Frames)

    def GetPCMComment(self) -> str:
        """The comment of the stream."""
        return str(self._call("GetPCMComment", ""))

    def SetPCMComment(self, Comment: str) -> None:
        """Sets the comment of the stream."""
        self._call("SetPCMComment", "s", Comment)

    def GetWordsPerMinorFrame(self) -> int:
        """The words of a minor frame."""
        return int(self._call("GetWordsPerMinorFrame", ""))

    def SetWordsPerMinorFrame(self, hWnd: int, Words: int) -> None:
        """Sets the number of words; what was behind them is deleted."""
        self._call("SetWordsPerMinorFrame", "xi", hWnd, Words)

    def CreateSFID(self, hWnd: int, Fwp: int) -> None:
        """Makes an ID counter at a word."""
        self._call("CreateSFID", "xi", hWnd, Fwp)

    def DeleteSFID(self, hWnd: int, Name: str) -> None:
        """Deletes an ID counter."""
        self._call("DeleteSFID", "xs", hWnd, Name)

    def EditSFID(self, hWnd: int, Name: str) -> None:
        """Opens the form of an ID counter."""
        self._call("EditSFID", "xs", hWnd, Name)

    def GetNumberOfSFIDs(self) -> int:
        """How many ID counters the format has."""
        return int(self._call("GetNumberOfSFIDs", ""))

    def GetSFIDInfo(self, SFIDNumber: int) -> SFIDInfo:
        """The name and the word of a counter, counted from 1."""
        return SFIDInfo(*self._call("GetSFIDInfo", "i", SFIDNumber))

    def GetSFIDCountDirection(self, Name: str) -> str:
        """The direction of a counter: "INC" or "DEC"."""
        return str(self._call("GetSFIDCountDirection", "s", Name))

    def SetSFIDCountDirection(self, Name: str, Direction: str) -> None:
        """Sets the direction; the end value follows."""
        self._call("SetSFIDCountDirection", "ss", Name, Direction)

    def GetSFIDCounterLength(self, Name: str) -> int:
        """The length of a counter in bits."""
        return int(self._call("GetSFIDCounterLength", "s", Name))

    def SetSFIDCounterLength(self, Name: str, Length: int) -> None:
        """Sets the length of a counter in bits."""
        self._call("SetSFIDCounterLength", "si", Name, Length)

    def GetSFIDEndFrame(self, Name: str) -> int:
        """The frame in which a counter ends."""
        return int(self._call("GetSFIDEndFrame", "s", Name))

    def SetSFIDEndFrame(self, Name: str, Value: int) -> None:
        """Sets the end frame; the end value follows."""
        self._call("SetSFIDEndFrame", "si", Name, Value)

    def GetSFIDEndValue(self, Name: str) -> int:
        """The last value of a counter."""
        return int(self._call("GetSFIDEndValue", "s", Name))

    def SetSFIDEndValue(self, Name: str, Value: int) -> None:
        """Sets the last value as it is given."""
        self._call("SetSFIDEndValue", "si", Name, Value)

    def GetSFIDMSBStartBit(self, Name: str) -> int:
        """The bit at which a counter starts."""
        return int(self._call("GetSFIDMSBStartBit", "s", Name))

    def SetSFIDMSBStartBit(self, Name: str, StartBit: int) -> None:
        """Sets the bit at which a counter starts."""
        self._call("SetSFIDMSBStartBit", "si", Name, StartBit)

    def SetSFIDName(self, hWnd: int, OldName: str, NewName: str) -> None:
        """Renames a counter."""
        self._call("SetSFIDName", "xss", hWnd, OldName, NewName)

    def GetSFIDStartFrame(self, Name: str) -> int:
        """The frame in which a counter starts."""
        return int(self._call("GetSFIDStartFrame", "s", Name))

    def SetSFIDStartFrame(self, Name: str, Frame: int) -> None:
        """Sets the start frame; the end value follows."""
        self._call("SetSFIDStartFrame", "si", Name, Frame)

    def GetSFIDStartValue(self, Name: str) -> int:
        """The first value of a counter."""
        return int(self._call("GetSFIDStartValue", "s", Name))

    def SetSFIDStartValue(self, Name: str, Value: int) -> None:
        """Sets the first value; the end value follows."""
        self._call("SetSFIDStartValue", "si", Name, Value)

    def GetSFIDTransferOrder(self, Name: str) -> str:
        """The transfer order of a counter: "M", "L" or "D"."""
        return str(self._call("GetSFIDTransferOrder", "s", Name))

    def SetSFIDTransferOrder(self, Name: str, TransferOrder: str) -> None:
        """Sets the transfer order of a counter."""
        self._call("SetSFIDTransferOrder", "ss", Name, TransferOrder)

    def GetSFIDWordLength(self, Name: str) -> int:
        """The length of a counter's word in bits."""
        return int(self._call("GetSFIDWordLength", "s", Name))

    def SetSFIDWordLength(self, Name: str, Length: int) -> None:
        """Sets the length of a counter's word."""
        self._call("SetSFIDWordLength", "si", Name, Length)

    def CreateSubframe(self, hWnd: int, Fwp: int, Name: str, Depth: int, NumberOfLocs: int,
                       Interval: int) -> None:
        """Makes a subframe at a word; a depth below 1 is the counter's."""
        self._call("CreateSubframe", "xisiii", hWnd, Fwp, Name, Depth, NumberOfLocs, Interval)

    def DeleteSubframe(self, hWnd: int, Name: str) -> None:
        """Deletes a subframe with what it holds."""
        self._call("DeleteSubframe", "xs", hWnd, Name)

    def EditSubframe(self, hWnd: int, Name: str) -> None:
        """Opens the form of a subframe."""
        self._call("EditSubframe", "xs", hWnd, Name)

    def GetSubframeDepth(self, Name: str) -> int:
        """The depth of a subframe."""
        return int(self._call("GetSubframeDepth", "s", Name))

    def SetSubframeDepth(self, hWnd: int, Name: str, Depth: int) -> None:
        """Sets the depth of a subframe."""
        self._call("SetSubframeDepth", "xsi", hWnd, Name, Depth)

    def GetSubframeIDCounter(self, SfName: str) -> str:
        """The name of the counter that a subframe goes with."""
        return str(self._call("GetSubframeIDCounter", "s", SfName))

    def SetSubframeIDCounter(self, hWnd: int, SfName: str, IDName: str) -> None:
        """Lets a subframe go with another counter."""
        self._call("SetSubframeIDCounter", "xss", hWnd, SfName, IDName)

    def GetSubframeLocations(self, Name: str) -> SubframeLocations:
        """The first word of a subframe, the number of its words and their interval."""
        return SubframeLocations(*self._call("GetSubframeLocations", "s", Name))

    def SetSubframeLocations(self, hWnd: int, Name: str, NumberOfLocs: int, Interval: int) -> None:
        """Sets number and interval of the words of a subframe."""
        self._call("SetSubframeLocations", "xsii", hWnd, Name, NumberOfLocs, Interval)

    def GetSubframeName(self, Fwp: int) -> str:
        """The name of the subframe at a word."""
        return str(self._call("GetSubframeName", "i", Fwp))

    def SetSubframeName(self, hWnd: int, OldName: str, NewName: str) -> None:
        """Renames a subframe."""
        self._call("SetSubframeName", "xss", hWnd, OldName, NewName)

    def CreateMeasurement(self, hWnd: int, Fwp: int, Fn: int, Name: str, BitMask: str, MesXferOrder: str,
                          MesParity: str, MesParityXferOrder: str, NumberOfLocs: int, Interval: int) -> None:
        """Makes a measurement at a place, in all of its locations or in none."""
        self._call("CreateMeasurement", "xiisssssii",
                   hWnd, Fwp, Fn, Name, BitMask, MesXferOrder, MesParity, MesParityXferOrder, NumberOfLocs, Interval)

    def DeleteMeasurement(self, Name: str) -> None:
        """Deletes a measurement everywhere, with its conversion."""
        self._call("DeleteMeasurement", "s", Name)

    def EditMeasurementByName(self, hWnd: int, Name: str) -> None:
        """Opens the form of a measurement."""
        self._call("EditMeasurementByName", "xs", hWnd, Name)

    def EditMeasurementsAt(self, hWnd: int, Fwp: int, Fn: int) -> None:
        """Opens the form of what is at a place."""
        self._call("EditMeasurementsAt", "xii", hWnd, Fwp, Fn)

    def CountMeasurementsAt(self, Fwp: int, Fn: int) -> int:
        """How many measurements are at a place."""
        return int(self._call("CountMeasurementsAt", "ii", Fwp, Fn))

    def CountMeasurementOccurences(self, Name: str) -> int:
        """How often a measurement is defined."""
        return int(self._call("CountMeasurementOccurences", "s", Name))

    def GetMeasurementBitMask(self, Name: str) -> str:
        """The mask of a measurement."""
        return str(self._call("GetMeasurementBitMask", "s", Name))

    def SetMeasurementBitMask(self, Name: str, BitMask: str) -> None:
        """Sets the mask of a measurement."""
        self._call("SetMeasurementBitMask", "ss", Name, BitMask)

    def GetMeasurementName(self, Fwp: int, Fn: int, MesIndex: int) -> str:
        """The name of a measurement at a place, counted from 1."""
        return str(self._call("GetMeasurementName", "iii", Fwp, Fn, MesIndex))

    def SetMeasurementName(self, OldName: str, NewName: str) -> None:
        """Renames a measurement everywhere, with its conversion."""
        self._call("SetMeasurementName", "ss", OldName, NewName)

    def GetMeasurementOccurence(self, Name: str, Occurence: int) -> MeasurementOccurence:
        """The place of an occurrence of a measurement, counted from 1."""
        return MeasurementOccurence(*self._call("GetMeasurementOccurence", "si", Name, Occurence))

    def GetMeasurementParity(self, Name: str) -> str:
        """The parity of a measurement."""
        return str(self._call("GetMeasurementParity", "s", Name))

    def SetMeasurementParity(self, Name: str, Parity: str) -> None:
        """Sets the parity of a measurement."""
        self._call("SetMeasurementParity", "ss", Name, Parity)

    def GetMeasurementParityXfer(self, Name: str) -> str:
        """The transfer order of a measurement's parity."""
        return str(self._call("GetMeasurementParityXfer", "s", Name))

    def SetMeasurementParityXfer(self, Name: str, ParityXfer: str) -> None:
        """Sets the transfer order of a measurement's parity."""
        self._call("SetMeasurementParityXfer", "ss", Name, ParityXfer)

    def GetMeasurementWordLength(self, Name: str) -> int:
        """The length of a measurement's word in bits."""
        return int(self._call("GetMeasurementWordLength", "s", Name))

    def SetMeasurementWordLength(self, hWnd: int, Name: str, Length: int) -> None:
        """Sets the length of every word that bears a measurement."""
        self._call("SetMeasurementWordLength", "xsi", hWnd, Name, Length)

    def GetMeasurementXferOrder(self, Name: str) -> str:
        """The transfer order of a measurement."""
        return str(self._call("GetMeasurementXferOrder", "s", Name))

    def SetMeasurementXferOrder(self, Name: str, Xfer: str) -> None:
        """Sets the transfer order of a measurement."""
        self._call("SetMeasurementXferOrder", "ss", Name, Xfer)

    def ShowMeasurementEuDialog(self, hWnd: int, MesName: str) -> None:
        """Opens the sheet of a measurement's conversion."""
        self._call("ShowMeasurementEuDialog", "xs", hWnd, MesName)

    def GetMeasurementEuBinaryFormat(self, MesName: str) -> str:
        """The binary format of a measurement."""
        return str(self._call("GetMeasurementEuBinaryFormat", "s", MesName))

    def SetMeasurementEuBinaryFormat(self, MesName: str, Format: str) -> None:
        """Sets the binary format of a measurement."""
        self._call("SetMeasurementEuBinaryFormat", "ss", MesName, Format)

    def GetMeasurementEuCoefficientOrderOfFit(self, MesName: str) -> int:
        """The order of the polynomial."""
        return int(self._call("GetMeasurementEuCoefficientOrderOfFit", "s", MesName))

    def GetMeasurementEuCoefficient(self, MesName: str, Term: int) -> float:
        """The coefficient of a term; 0 is the offset."""
        return float(self._call("GetMeasurementEuCoefficient", "si", MesName, Term))

    def SetMeasurementEuCoefficient(self, MesName: str, Term: int, Coefficient: float) -> None:
        """Sets the coefficient of a term from 0 to 10."""
        self._call("SetMeasurementEuCoefficient", "sid", MesName, Term, Coefficient)

    def GetMeasurementEuConversionType(self, MesName: str) -> str:
        """The type of a conversion."""
        return str(self._call("GetMeasurementEuConversionType", "s", MesName))

    def SetMeasurementEuConversionType(self, MesName: str, Type: str) -> None:
        """Sets the type of a conversion."""
        self._call("SetMeasurementEuConversionType", "ss", MesName, Type)

    def GetMeasurementEuDescription(self, MesName: str) -> str:
        """The description of a measurement."""
        return str(self._call("GetMeasurementEuDescription", "s", MesName))

    def SetMeasurementEuDescription(self, MesName: str, Description: str) -> None:
        """Sets the description of a measurement."""
        self._call("SetMeasurementEuDescription", "ss", MesName, Description)

    def GetMeasurementEuHiLimit(self, MesName: str) -> str:
        """The high limit."""
        return str(self._call("GetMeasurementEuHiLimit", "s", MesName))

    def SetMeasurementEuHiLimit(self, MesName: str, HiLimit: str) -> None:
        """Sets the high limit."""
        self._call("SetMeasurementEuHiLimit", "ss", MesName, HiLimit)

    def GetMeasurementEuHiValue(self, MesName: str) -> str:
        """The highest value."""
        return str(self._call("GetMeasurementEuHiValue", "s", MesName))

    def SetMeasurementEuHiValue(self, MesName: str, HiValue: str) -> None:
        """Sets the highest value."""
        self._call("SetMeasurementEuHiValue", "ss", MesName, HiValue)

    def GetMeasurementEuHiWarning(self, MesName: str) -> str:
        """The high warning."""
        return str(self._call("GetMeasurementEuHiWarning", "s", MesName))

    def SetMeasurementEuHiWarning(self, MesName: str, HiWarn: str) -> None:
        """Sets the high warning."""
        self._call("SetMeasurementEuHiWarning", "ss", MesName, HiWarn)

    def GetMeasurementEuLowLimit(self, MesName: str) -> str:
        """The low limit."""
        return str(self._call("GetMeasurementEuLowLimit", "s", MesName))

    def SetMeasurementEuLowLimit(self, MesName: str, LowLimit: str) -> None:
        """Sets the low limit."""
        self._call("SetMeasurementEuLowLimit", "ss", MesName, LowLimit)

    def GetMeasurementEuLowValue(self, MesName: str) -> str:
        """The lowest value."""
        return str(self._call("GetMeasurementEuLowValue", "s", MesName))

    def SetMeasurementEuLowValue(self, MesName: str, LowValue: str) -> None:
        """Sets the lowest value."""
        self._call("SetMeasurementEuLowValue", "ss", MesName, LowValue)

    def GetMeasurementEuLowWarning(self, MesName: str) -> str:
        """The low warning."""
        return str(self._call("GetMeasurementEuLowWarning", "s", MesName))

    def SetMeasurementEuLowWarning(self, MesName: str, LowWarn: str) -> None:
        """Sets the low warning."""
        self._call("SetMeasurementEuLowWarning", "ss", MesName, LowWarn)

    def GetMeasurementEuPairSetNumberOfPairs(self, MesName: str) -> int:
        """How many pairs the pair set has."""
        return int(self._call("GetMeasurementEuPairSetNumberOfPairs", "s", MesName))

    def GetMeasurementEuPairSet(self, MesName: str, Pair: int) -> EuPair:
        """A pair of the pair set, counted from 1."""
        return EuPair(*self._call("GetMeasurementEuPairSet", "si", MesName, Pair))

    def SetMeasurementEuPairSet(self, MesName: str, Pair: int, X: int, Y: float) -> None:
        """Replaces a pair, or adds the one behind the last."""
        self._call("SetMeasurementEuPairSet", "siid", MesName, Pair, X, Y)

    def GetMeasurementEuSampleRate(self, MesName: str) -> str:
        """The sample rate of a measurement."""
        return str(self._call("GetMeasurementEuSampleRate", "s", MesName))

    def SetMeasurementEuSampleRate(self, MesName: str, SampleRate: str) -> None:
        """Sets the sample rate of a measurement."""
        self._call("SetMeasurementEuSampleRate", "ss", MesName, SampleRate)

    def GetMeasurementEuUnits(self, MesName: str) -> str:
        """The engineering units of a measurement."""
        return str(self._call("GetMeasurementEuUnits", "s", MesName))

    def SetMeasurementEuUnits(self, MesName: str, Units: str) -> None:
        """Sets the engineering units of a measurement."""
        self._call("SetMeasurementEuUnits", "ss", MesName, Units)


class KavuGuiMethods(_Caller):
    """`Kavu.IKavuGui`: the program itself. Failures raise `kavu.Error`."""

    def GetKAVU9ModulePathname(self) -> str:
        """The path of the program."""
        return str(self._call("GetKAVU9ModulePathname", ""))

    def StartKAVU9(self, TmatsFile: str) -> None:
        """Starts the editor in a window of its own on a file."""
        self._call("StartKAVU9", "s", TmatsFile)
