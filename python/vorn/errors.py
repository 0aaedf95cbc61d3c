"""The errors of Vorn: one hierarchy below `vorn.Error`."""

from __future__ import annotations

import re
from typing import Optional

_LINE = re.compile(r"line (\d+)(?:, column (\d+))?: ")


class Error(Exception):
    """Base of all errors of Vorn."""


class DocumentError(Error):
    """A file cannot be read or written, or a design cannot be converted. The message names the place and the reason."""

    #: The file, as it was named; None when the error is about a design in memory.
    file: Optional[str] = None
    #: Line of the file, from 1; None when the error is about none.
    line: Optional[int] = None
    #: Column of the line in characters, from 1; None when it is not known.
    column: Optional[int] = None
    #: Place in the design, such as "set 1 (CL-1) > station 120.0000 (No.6)"; None when it is not known.
    place: Optional[str] = None

    @classmethod
    def _of(cls, message: str, file: Optional[str]) -> DocumentError:
        error = cls(message)
        reason = message
        if file is not None:
            error.file = file
            reason = message.removeprefix(file + ": ")
        position = _LINE.match(reason)
        if position:
            error.line = int(position[1])
            error.column = int(position[2]) if position[2] else None
        elif reason.startswith("set ") and ": " in reason:
            # A name in the path may have a colon itself; what follows the last step of the path is the reason.
            last = reason.rfind(" > ") + 1
            end = reason.find(": ", last)
            error.place = reason[: end if end >= 0 else reason.find(": ")]
        return error


class EditError(DocumentError):
    """A step that cannot be done. The design may be half edited and must not be written."""


class ExpiredError(Error, RuntimeError):
    """The object was taken from a collection that an edit has rebuilt since, or its design was handed over."""


class BusyError(Error, RuntimeError):
    """Another thread is at work on this design."""


class TextError(Error, ValueError):
    """A text that the model cannot hold: it keeps texts in code page 932."""


class InvalidArgumentError(Error, ValueError):
    """An argument outside its range."""


for _error in (Error, DocumentError, EditError, ExpiredError, BusyError, TextError, InvalidArgumentError):
    _error.__module__ = "vorn"
