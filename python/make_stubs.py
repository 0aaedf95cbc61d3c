#!/usr/bin/env python3
"""Writes the type stubs of the package from the signatures and docstrings of the compiled module.

    make_stubs.py PACKAGE_DIRECTORY > python/vorn/__init__.pyi

The tests compare the stubs in the sources with what this gives.
"""

from __future__ import annotations

import enum
import inspect
import re
import sys
import textwrap

HEAD = '''\
# Made by python/make_stubs.py.
import datetime
import enum
import os
from collections.abc import Iterable, Iterator, Sequence
from typing import Any, Dict, List, Optional, Tuple, TypeVar, Union, overload

import numpy
import numpy.typing

from .errors import BusyError as BusyError
from .errors import DocumentError as DocumentError
from .errors import EditError as EditError
from .errors import Error as Error
from .errors import ExpiredError as ExpiredError
from .errors import InvalidArgumentError as InvalidArgumentError
from .errors import TextError as TextError

__all__: List[str]
__version__: str

_Element = TypeVar("_Element")

class _Collection(Sequence[_Element]):
    def __len__(self) -> int: ...
    def __bool__(self) -> bool: ...
    def __iter__(self) -> Iterator[_Element]: ...
    def __contains__(self, element: object) -> bool: ...
    @overload
    def __getitem__(self, index: int) -> _Element: ...
    @overload
    def __getitem__(self, index: slice) -> List[_Element]: ...
    def __setitem__(self, index: int, element: _Element) -> None: ...
    def __delitem__(self, index: Union[int, slice]) -> None: ...
    def append(self, element: _Element) -> None: ...
    def insert(self, index: int, element: _Element) -> None: ...
    def extend(self, elements: Iterable[_Element]) -> None: ...
    def pop(self, index: int = ...) -> _Element: ...
    def remove(self, element: _Element) -> None: ...
    def clear(self) -> None: ...
    def index(self, element: Any, start: int = ..., stop: int = ...) -> int: ...
    def count(self, element: Any) -> int: ...
    def __copy__(self) -> List[_Element]: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> List[_Element]: ...
'''

REPLACEMENTS = [
    (r"\bvorn\._vorn\.", ""),
    (r"\bvorn\.", ""),
    (r"\bdict\b", "Dict[str, int]"),
    (r"\bos\.PathLike\b", "Union[str, os.PathLike[str]]"),
    (r"\bnumpy\.ndarray\[numpy\.float64\]", "numpy.typing.NDArray[numpy.float64]"),
    (r"Annotated\[List\[(.+?)\], FixedSize\(\d+\)\]", r"List[\1]"),
    (r"List\[(.+?)\]\[\d+\]", r"List[\1]"),
    (r" = <[^>]*>", " = ..."),
    (r" = (None|True|False|-?\d[\d.]*|'[^']*')", " = ..."),
]


def cleaned(signature: str) -> str:
    for pattern, replacement in REPLACEMENTS:
        signature = re.sub(pattern, replacement, signature)
    return re.sub(r"\bself: \w+", "self", signature)


def quoted(doc: str, indent: str) -> str:
    if not doc:
        return ""
    return textwrap.indent('"""' + doc.strip() + '"""\n', indent)


def split(doc: str) -> tuple[str, str]:
    """The signature and the text of a function."""
    signature, _, text = (doc or "").partition("\n")
    return signature, text.strip()


def method(name: str, value: object, indent: str, is_static: bool) -> str:
    signature, text = split(inspect.getdoc(value) or "")
    head = "@staticmethod\n" + indent if is_static else ""
    body = quoted(text, indent + "    ")
    end = ":\n" + body.rstrip("\n") + "\n" if body else ": ...\n"
    return f"{indent}{head}def {cleaned(signature)}{end}"


def of_property(name: str, value: property) -> str:
    getter = cleaned(split(value.fget.__doc__)[0])
    type_name = getter.split("-> ", 1)[1]
    lines = f"    @property\n    def {name}(self) -> {type_name}:\n"
    lines += quoted(value.__doc__ or "", "        ") or "        ...\n"
    if value.fset is not None:
        setter = cleaned(split(value.fset.__doc__)[0])
        argument = re.search(r"value: (.+)\) -> None", setter)[1]
        lines += f"    @{name}.setter\n    def {name}(self, value: {argument}) -> None: ...\n"
    return lines


def of_enum(cls: type[enum.Enum]) -> str:
    lines = f"class {cls.__name__}(enum.Enum):\n" + quoted(cls.__doc__ or "", "    ")
    return lines + "".join(f"    {member.name} = {member.value!r}\n" for member in cls)


def of_collection(cls: type) -> str:
    element = cleaned(split(cls.pop.__doc__)[0]).split("-> ", 1)[1]
    return f"class {cls.__name__}(_Collection[{element}]):\n" + quoted(cls.__doc__ or "", "    ")


def of_class(cls: type) -> str:
    if hasattr(cls, "append"):
        return of_collection(cls)
    lines = f"class {cls.__name__}:\n" + quoted(cls.__doc__ or "", "    ")
    own = vars(cls)
    if (cls.__init__.__doc__ or "").startswith("__init__("):
        lines += method("__init__", own["__init__"], "    ", False)
    for name, value in own.items():
        if isinstance(value, property):
            lines += of_property(name, value)
        elif name in ("__copy__", "__deepcopy__"):
            memo = ", memo: Dict[Any, Any]" if name == "__deepcopy__" else ""
            lines += f"    def {name}(self{memo}) -> {cls.__name__}: ...\n"
        elif name in ("__getitem__", "__setitem__", "__contains__", "__len__"):
            lines += method(name, value, "    ", False)
        elif name == "__iter__":
            lines += "    def __iter__(self) -> Iterator[str]: ...\n"
        elif name == "__eq__":
            lines += "    def __eq__(self, other: object) -> bool: ...\n"
        elif not name.startswith("_"):
            lines += method(name, getattr(cls, name), "    ", isinstance(value, staticmethod))
    return lines


def stubs(vorn) -> str:
    text = HEAD
    for name, value in vars(vorn._vorn).items():
        if name.startswith("_"):
            continue
        text += "\n"
        if isinstance(value, type):
            text += of_enum(value) if issubclass(value, enum.Enum) else of_class(value)
        else:
            text += method(name, value, "", False)
    return text


if __name__ == "__main__":
    sys.path.insert(0, sys.argv[1])
    import vorn

    sys.stdout.write(stubs(vorn))
