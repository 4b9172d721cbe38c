"""Read access to TMATS files (IRIG 106 Chapter 9).

A session is opened on one file, which it never changes:

    import kavu_sdk

    with kavu_sdk.Session("flight.tma") as session:
        for stream in session.streams():
            for measurement in session.measurements(stream.number):
                print(stream.name, measurement.name, measurement.word_length)

Texts that are not valid UTF-8 are read as Windows-1252. The library is found as `libkavu_sdk.so.1`,
or where the environment variable KAVU_SDK_LIBRARY says.
"""

from __future__ import annotations

import ctypes
import os
from dataclasses import dataclass
from types import TracebackType
from typing import Any, Iterator, List, Optional, Tuple, Type, Union

__all__ = ["Error", "Fragment", "Group", "Location", "Measurement", "Polynomial", "Range", "Session", "Source",
           "Stream"]

_INTERFACE = 1


class Error(Exception):
    """What a session could not do; the text is the last of its errors."""


@dataclass(frozen=True)
class Range:
    """From start by the interval to end; an interval of 0 is one place."""

    start: int
    interval: int
    end: int

    def __iter__(self) -> Iterator[int]:
        return iter(range(self.start, self.end + 1, self.interval or self.end - self.start + 1))


@dataclass(frozen=True)
class Fragment:
    """One part of a value: where it is, and which bits of its word it takes."""

    number: int
    word: Range
    frame: Range
    word_length: int
    mask: str
    full_word: bool
    mask_value: int
    bits: Tuple[int, ...]
    transfer_order: str


@dataclass(frozen=True)
class Location:
    """The fragments that make one value."""

    fragments: Tuple[Fragment, ...]


@dataclass(frozen=True)
class Measurement:
    """A measurement of the stream that was asked for; `index` counts from 0."""

    index: int
    name: str
    location_type: str
    word_length: int
    bus: int
    message: int
    locations: Tuple[Location, ...]


@dataclass(frozen=True)
class Source:
    """A data source of the G group, with its stored type."""

    name: str
    type: str


@dataclass(frozen=True)
class Stream:
    """A data link; `number` counts from 1, groups are the numbers of its groups, 0 for none."""

    number: int
    name: str
    type: str
    named: bool
    groups: Tuple[Tuple[str, int], ...]

    def group(self, letter: str) -> int:
        """The number of its group of a letter, 0 for none."""
        return dict(self.groups).get(letter, 0)


@dataclass(frozen=True)
class Polynomial:
    """The coefficients of a conversion in ascending powers of the telemetry value, or, if
    `negative`, in descending ones: 0, -1, -2."""

    coefficients: Tuple[float, ...]
    negative: bool

    def __call__(self, telemetry: float) -> float:
        powers = range(len(self.coefficients))
        return sum(coefficient * telemetry ** (-power if self.negative else power)
                   for power, coefficient in zip(powers, self.coefficients))


class _Range(ctypes.Structure):
    _fields_ = [(name, ctypes.c_int) for name in ("start", "interval", "end")]


class _Stream(ctypes.Structure):
    _fields_ = [("name", ctypes.c_char_p), ("type", ctypes.c_char_p), ("named", ctypes.c_int)] + [
        (letter, ctypes.c_int) for letter in "pdbas"]


class _Measurement(ctypes.Structure):
    _fields_ = [("name", ctypes.c_char_p), ("location_type", ctypes.c_char_p),
                ("word_length", ctypes.c_int), ("locations", ctypes.c_int),
                ("bus", ctypes.c_int), ("message", ctypes.c_int)]


class _Fragment(ctypes.Structure):
    _fields_ = [("number", ctypes.c_int), ("word", _Range), ("frame", _Range),
                ("word_length", ctypes.c_int), ("full_word", ctypes.c_int),
                ("transfer_order", ctypes.c_char)]


# (name, result, arguments); a session or a group is a pointer.
_P = ctypes.c_void_p
_TEXT = ctypes.c_char_p
_INT = ctypes.c_int
_SIZE = ctypes.c_size_t
_PLACE = [_P, _SIZE, _INT, _INT]
_FUNCTIONS: List[Tuple[str, Any, List[Any]]] = [
    ("interface", _INT, []),
    ("new", _P, []),
    ("free", None, [_P]),
    ("open", _INT, [_P, _TEXT]),
    ("close", None, [_P]),
    ("error_count", _SIZE, [_P]),
    ("error", _TEXT, [_P, _SIZE]),
    ("version", _INT, [_P]),
    ("substitute", _INT, [_P, _TEXT, _TEXT]),
    ("source_count", _SIZE, [_P]),
    ("source_name", _TEXT, [_P, _SIZE]),
    ("source_type", _TEXT, [_P, _SIZE]),
    ("stream_count", _INT, [_P]),
    ("get_stream", _INT, [_P, _INT, ctypes.POINTER(_Stream)]),
    ("find_stream", _INT, [_P, _TEXT]),
    ("load_stream", _INT, [_P, _INT]),
    ("words_per_frame", _INT, [_P]),
    ("frame_count", _INT, [_P]),
    ("word_length", _INT, [_P, _INT]),
    ("measurement_count", _SIZE, [_P]),
    ("get_measurement", _INT, [_P, _SIZE, ctypes.POINTER(_Measurement)]),
    ("find_measurement", ctypes.c_long, [_P, _TEXT]),
    ("fragment_count", _INT, [_P, _SIZE, _INT]),
    ("get_fragment", _INT, _PLACE + [ctypes.POINTER(_Fragment)]),
    ("mask", _INT, _PLACE + [ctypes.c_char_p, _SIZE]),
    ("mask_words", _INT, _PLACE + [ctypes.POINTER(ctypes.c_uint32)]),
    ("mask_bits", _INT, _PLACE + [ctypes.POINTER(_INT), _SIZE]),
    ("open_group", _P, [_P, ctypes.c_char, _INT]),
    ("open_named_group", _P, [_P, ctypes.c_char, _TEXT]),
    ("open_conversion", _P, [_P, ctypes.c_int64]),
    ("open_named_conversion", _P, [_P, _TEXT]),
    ("close_group", None, [_P]),
    ("coefficients", _INT, [_P, _P, ctypes.POINTER(ctypes.c_double), _SIZE,
                            ctypes.POINTER(_INT)]),
    ("group_number", ctypes.c_int64, [_P]),
    ("group_size", _SIZE, [_P]),
    ("group_field", _TEXT, [_P, _SIZE]),
    ("group_value", _TEXT, [_P, _SIZE]),
    ("group_find", _TEXT, [_P, _TEXT]),
]


class _Library:
    """The functions of the C interface by their names without `kavu_sdk_`."""

    def __init__(self) -> None:
        library = ctypes.CDLL(os.environ.get("KAVU_SDK_LIBRARY") or "libkavu_sdk.so.1")
        for name, result, arguments in _FUNCTIONS:
            function = getattr(library, "kavu_sdk_" + name)
            function.restype = result
            function.argtypes = arguments
            setattr(self, name, function)
        if self.interface() < _INTERFACE:
            raise ImportError("libkavu_sdk is older than this module")

    def __getattr__(self, name: str) -> Any:
        raise AttributeError(name)


_library: Optional[_Library] = None


def _functions() -> _Library:
    """The library, loaded when it is needed first."""
    global _library
    if _library is None:
        _library = _Library()
    return _library


def _text(raw: Optional[bytes]) -> str:
    if raw is None:
        return ""
    try:
        return raw.decode("utf-8")
    except UnicodeDecodeError:
        # Five bytes stand for nothing in Windows-1252.
        return "".join(bytes([byte]).decode("cp1252", "ignore") or chr(byte) for byte in raw)


def _bytes(text: Union[str, bytes, "os.PathLike[str]"]) -> bytes:
    return os.fsencode(text)


class Group:
    """The commands of a group or of a conversion record, in the order of the file."""

    def __init__(self, number: int, commands: List[Tuple[str, str]]) -> None:
        self.number = number
        self.commands = commands
        self._first: dict[str, str] = {}
        for field, value in commands:
            if value:
                self._first.setdefault(field.lower(), value)

    def __len__(self) -> int:
        return len(self.commands)

    def __iter__(self) -> Iterator[Tuple[str, str]]:
        return iter(self.commands)

    def get(self, field: str, default: Optional[str] = None) -> Optional[str]:
        """The first value of a field ("MF1", "MN-1-2") that is not empty, in any case."""
        return self._first.get(field.lower(), default)

    def __getitem__(self, field: str) -> str:
        return self._first[field.lower()]

    def __contains__(self, field: str) -> bool:
        return field.lower() in self._first


class Session:
    """A session on a file; raises an `Error` if that cannot be read. To be closed, or used with
    `with`."""

    def __init__(self, path: Union[str, "os.PathLike[str]"]) -> None:
        self._c = _functions()
        self._session = self._c.new()
        if not self._session:
            raise MemoryError
        if self._c.open(self._session, _bytes(path)) < 0:
            error = self._last_error()
            self.close()
            raise error

    def __enter__(self) -> "Session":
        return self

    def __exit__(self, kind: Optional[Type[BaseException]], value: Optional[BaseException],
                 trace: Optional[TracebackType]) -> None:
        self.close()

    def __del__(self) -> None:
        self.close()

    def close(self) -> None:
        """Deletes the files of the session. A closed session is as one of an empty file."""
        if getattr(self, "_session", None):
            self._c.free(self._session)
        self._session = None

    @property
    def version(self) -> int:
        """The edition of the standard as a year; 2011 when the file states none."""
        return int(self._c.version(self._session))

    @property
    def errors(self) -> List[str]:
        """What went wrong so far."""
        return [_text(self._c.error(self._session, index))
                for index in range(self._c.error_count(self._session))]

    def substitute(self, old: str, new: str) -> None:
        """Replaces a text in all values of groups that are read from here on."""
        self._c.substitute(self._session, _bytes(old), _bytes(new))

    def sources(self) -> List[Source]:
        """The data sources."""
        return [Source(_text(self._c.source_name(self._session, index)),
                       _text(self._c.source_type(self._session, index)))
                for index in range(self._c.source_count(self._session))]

    def streams(self) -> List[Stream]:
        """The data links: those of the M groups in their order, then all others."""
        found = []
        for number in range(1, self._c.stream_count(self._session) + 1):
            raw = _Stream()
            self._check(self._c.get_stream(self._session, number, ctypes.byref(raw)))
            groups = tuple((letter.upper(), getattr(raw, letter)) for letter in "pdbas")
            found.append(Stream(number, _text(raw.name), _text(raw.type), bool(raw.named), groups))
        return found

    def load_stream(self, stream: Union[int, str]) -> int:
        """Loads a stream by its number or name, and returns the number."""
        number = stream
        if isinstance(stream, str):
            number = self._c.find_stream(self._session, _bytes(stream))
            if number < 0:
                raise Error(f"There is no data link '{stream}'.")
        self._check(self._c.load_stream(self._session, number))
        return int(number)

    def word_lengths(self, stream: Union[int, str]) -> List[int]:
        """The bits of each word of the minor frame, the sync pattern first; empty for a bus."""
        self.load_stream(stream)
        words = self._c.words_per_frame(self._session)
        return [self._c.word_length(self._session, word) for word in range(words)]

    def measurements(self, stream: Union[int, str]) -> List[Measurement]:
        """The measurements of a stream in the order of the file."""
        self.load_stream(stream)
        return [self._measurement(index)
                for index in range(self._c.measurement_count(self._session))]

    def measurement(self, stream: Union[int, str], name: str) -> Measurement:
        """The measurement of a name; raises an `Error` if there is none."""
        self.load_stream(stream)
        index = self._c.find_measurement(self._session, _bytes(name))
        if index < 0:
            raise Error(f"There is no measurement '{name}'.")
        return self._measurement(index)

    def group(self, letter: str, group: Union[int, str] = 0) -> Optional[Group]:
        """A group by its letter and its number or name; the number of G and H is ignored."""
        key = letter.encode("ascii")
        if isinstance(group, str):
            return self._group(self._c.open_named_group(self._session, key, _bytes(group)))
        return self._group(self._c.open_group(self._session, key, group))

    def conversion(self, record: Union[int, str]) -> Optional[Group]:
        """The conversion record of a measurement, or that of a number."""
        if isinstance(record, str):
            return self._group(self._c.open_named_conversion(self._session, _bytes(record)))
        return self._group(self._c.open_conversion(self._session, record))

    def polynomial(self, record: Union[int, str]) -> Optional["Polynomial"]:
        """The polynomial of a conversion record, that of its pair set among them; None for a
        record that there is not. Raises an `Error` for a record of another type."""
        if isinstance(record, str):
            handle = self._c.open_named_conversion(self._session, _bytes(record))
        else:
            handle = self._c.open_conversion(self._session, record)
        if not handle:
            return None
        try:
            values = (ctypes.c_double * 128)()
            negative = ctypes.c_int()
            count = self._check(self._c.coefficients(self._session, handle, values, len(values),
                                                     ctypes.byref(negative)))
            return Polynomial(tuple(values[:count]), bool(negative.value))
        finally:
            self._c.close_group(handle)

    def _last_error(self) -> Error:
        errors = self.errors
        return Error(errors[-1].strip() if errors else "There is no such place.")

    def _check(self, result: int) -> int:
        if result < 0:
            raise self._last_error()
        return result

    def _group(self, handle: Optional[int]) -> Optional[Group]:
        if not handle:
            return None
        try:
            commands = [(_text(self._c.group_field(handle, index)),
                         _text(self._c.group_value(handle, index)))
                        for index in range(self._c.group_size(handle))]
            return Group(int(self._c.group_number(handle)), commands)
        finally:
            self._c.close_group(handle)

    def _measurement(self, index: int) -> Measurement:
        raw = _Measurement()
        self._check(self._c.get_measurement(self._session, index, ctypes.byref(raw)))
        name, location_type = _text(raw.name), _text(raw.location_type)
        locations = tuple(self._location(index, location)
                          for location in range(1, raw.locations + 1))
        return Measurement(index, name, location_type, raw.word_length, raw.bus, raw.message,
                           locations)

    def _location(self, index: int, location: int) -> Location:
        count = self._check(self._c.fragment_count(self._session, index, location))
        return Location(tuple(self._fragment(index, location, number)
                              for number in range(1, count + 1)))

    def _fragment(self, index: int, location: int, number: int) -> Fragment:
        place = (self._session, index, location, number)
        raw = _Fragment()
        self._check(self._c.get_fragment(*place, ctypes.byref(raw)))
        # A mask has at most 64 characters.
        mask = ctypes.create_string_buffer(128)
        self._check(self._c.mask(*place, mask, len(mask)))
        words = (ctypes.c_uint32 * 2)()
        self._check(self._c.mask_words(*place, words))
        bits = (ctypes.c_int * 256)()
        count = self._check(self._c.mask_bits(*place, bits, len(bits)))
        return Fragment(raw.number, Range(raw.word.start, raw.word.interval, raw.word.end),
                        Range(raw.frame.start, raw.frame.interval, raw.frame.end),
                        raw.word_length, _text(mask.value), bool(raw.full_word),
                        words[0] << 32 | words[1], tuple(bits[:min(count, len(bits))]),
                        raw.transfer_order.decode("latin-1"))
