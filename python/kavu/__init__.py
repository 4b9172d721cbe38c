"""Drives the editor for TMATS files (IRIG 106 Chapter 9) over the session bus.

    import kavu

    editor = kavu.Kavu()
    editor.OpenTmatsFile(0, "/data/flight.tma")
    editor.LoadPCMFormat(0, 1)
    editor.SetMeasurementEuUnits("ENG1-OIL-T", "degF")
    editor.SaveTmatsFile(0)
    editor.CloseTmatsFile(0, False)

The bus starts the program when it is needed; all clients of a session share its one document. A
call that fails raises an `Error`, of the class that has the name of the failure.
"""

from __future__ import annotations

from typing import Any, Callable, Dict, Optional, Type

import dbus

from .methods import EuPair, KavuGuiMethods, KavuMethods, MeasurementOccurence, SFIDInfo, SubframeLocations

__all__ = ["BadValue", "Busy", "Cancelled", "Error", "EuPair", "FileError", "Kavu", "KavuGui",
           "MeasurementOccurence", "NoDisplay", "NoDocument", "NoFormat", "NotANumber", "NotFound",
           "NotInEdition", "OutOfRange", "Refused", "SFIDInfo", "SubframeLocations", "Unsaved", "WrongType"]

# A dialog may be open for as long as its user wants.
_PATIENCE = 2_000_000.0


class Error(Exception):
    """A call that failed; `name` is that of the bus. It has changed nothing, but: a file or stream
    that fails to load leaves none open, and a frame of too many words has 2048."""

    def __init__(self, name: str, text: str) -> None:
        super().__init__(text)
        self.name = name


class NoDocument(Error):
    """No file is open."""


class NoFormat(Error):
    """No PCM format is loaded."""


class NotFound(Error):
    """Nothing has this name."""


class OutOfRange(Error):
    """No word, frame, stream, counter, term, pair or field can have this number."""


class BadValue(Error):
    """The field cannot take this text."""


class NotANumber(Error):
    """The field of a number holds another text."""


class WrongType(Error):
    """The type of the conversion has no such field."""


class NotInEdition(Error):
    """The edition of the document has no such field."""


class Refused(Error):
    """A rule does not allow it: `number` is that of the message, 0 for a rule without one."""

    def __init__(self, name: str, text: str) -> None:
        super().__init__(name, text)
        number, _, message = text.partition(": ")
        self.number = int(number) if number.isdecimal() else 0
        self.message = message if number.isdecimal() else text


class Unsaved(Error):
    """Changes would be lost."""


class Cancelled(Error):
    """The user took Cancel or No."""


class NoDisplay(Error):
    """The call needs a window, and there is no display."""


class Busy(Error):
    """A dialog of another call is open."""


class FileError(Error):
    """A file cannot be opened, read or written."""


_ERRORS: Dict[str, Type[Error]] = {
    "Kavu.Error." + each.__name__: each
    for each in (BadValue, Busy, Cancelled, FileError, NoDisplay, NoDocument, NoFormat, NotANumber,
                 NotFound, NotInEdition, OutOfRange, Refused, Unsaved, WrongType)}


def _plain(value: Any) -> Any:
    """A value of the bus as one of the language."""
    if isinstance(value, dbus.Boolean):
        return bool(value)
    for kind in (str, int, float):
        if isinstance(value, kind):
            return kind(value)
    return tuple(_plain(each) for each in value) if isinstance(value, (tuple, list)) else value


class _Client:
    """Sends the calls of one interface, and waits for each."""

    _name = ""
    _path = ""
    _interface = ""

    def __init__(self, bus: Optional[dbus.connection.Connection] = None) -> None:
        """Without a bus that of the session is used."""
        self._bus = bus if bus is not None else dbus.SessionBus()

    def _call(self, method: str, signature: str, *arguments: Any) -> Any:
        try:
            return _plain(self._bus.call_blocking(self._name, self._path, self._interface, method, signature,
                                                  arguments, timeout=_PATIENCE))
        except dbus.DBusException as error:
            name = error.get_dbus_name() or ""
            raise _ERRORS.get(name, Error)(name, error.get_dbus_message() or "") from None


class Kavu(_Client, KavuMethods):
    """The open document and its loaded PCM format."""

    _name, _path, _interface = "Kavu.Kavu", "/Kavu/Kavu", "Kavu.IKavu"

    def on_document_opened(self, call: Callable[[str], None]) -> None:
        """Calls with the path of each document that is opened. As all signals these need a main
        loop: `dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)` before the bus is used."""
        self._listen("DocumentOpened", lambda path: call(str(path)))

    def on_document_saved(self, call: Callable[[str], None]) -> None:
        """Calls with the path of each document that is saved."""
        self._listen("DocumentSaved", lambda path: call(str(path)))

    def on_document_closed(self, call: Callable[[str], None]) -> None:
        """Calls with the path of each document that is closed."""
        self._listen("DocumentClosed", lambda path: call(str(path)))

    def on_format_changed(self, call: Callable[[str, bool], None]) -> None:
        """Calls with the name of the loaded stream when its changed state turns."""
        self._listen("FormatChanged", lambda name, changed: call(str(name), bool(changed)))

    def _listen(self, signal: str, call: Callable[..., None]) -> None:
        self._bus.add_signal_receiver(call, signal, self._interface, self._name, self._path)


class KavuGui(_Client, KavuGuiMethods):
    """The program itself."""

    _name, _path, _interface = "Kavu.KavuGui", "/Kavu/KavuGui", "Kavu.IKavuGui"
