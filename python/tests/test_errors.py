"""Errors: one hierarchy, with the place."""

from __future__ import annotations

import pickle
from pathlib import Path
from typing import Callable

import pytest

import vorn


def test_hierarchy() -> None:
    for error in (vorn.DocumentError, vorn.EditError, vorn.ExpiredError, vorn.BusyError, vorn.TextError,
                  vorn.InvalidArgumentError):
        assert issubclass(error, vorn.Error)
    assert issubclass(vorn.EditError, vorn.DocumentError)
    assert issubclass(vorn.TextError, ValueError)


def test_a_file_that_is_not_there(tmp_path: Path) -> None:
    path = tmp_path / "ない.xml"
    with pytest.raises(vorn.DocumentError) as caught:
        vorn.DesignDocument.read(path)
    assert caught.value.file == str(path)
    assert (caught.value.line, caught.value.column, caught.value.place) == (None, None, None)
    assert str(path) in str(caught.value)


def test_malformed_tells_line_and_column() -> None:
    data = b'<?xml version="1.0"?>\n<tsf:TSFormControlData>\n  <a></b>\n</tsf:TSFormControlData>'
    with pytest.raises(vorn.DocumentError) as caught:
        vorn.DesignDocument.from_bytes(data, "bad: name.xml")
    assert caught.value.file == "bad: name.xml"
    assert caught.value.line == 3
    assert caught.value.column is not None
    assert f"line 3, column {caught.value.column}" in str(caught.value)


def test_an_error_keeps_its_place_on_the_way_from_another_process() -> None:
    with pytest.raises(vorn.DocumentError) as caught:
        vorn.DesignDocument.from_bytes(b"<a>\n<b></a>")
    other = pickle.loads(pickle.dumps(caught.value))
    assert type(other) is vorn.DocumentError and str(other) == str(caught.value)
    assert (other.file, other.line, other.column) == ("document.xml", 2, caught.value.column)


def test_a_document_that_is_too_large(tmp_path: Path) -> None:
    data = vorn.sample(sections=1).to_bytes()
    (tmp_path / "a.xml").write_bytes(data)
    reads: list[Callable[[int], object]] = [
        lambda most: vorn.DesignDocument.from_bytes(data, most_bytes=most),
        lambda most: vorn.DesignDocument.read(tmp_path / "a.xml", most_bytes=most),
        lambda most: vorn.DesignFile.read(tmp_path / "a.xml", most_bytes=most)]
    for read in reads:
        read(len(data))
        with pytest.raises(vorn.DocumentError):
            read(len(data) - 1)


def test_text_that_code_page_932_cannot_hold() -> None:
    data = vorn.sample(sections=1).to_bytes().replace(b'name="No.0"', 'name="é"'.encode(), 1)
    assert "é".encode() in data
    with pytest.raises(vorn.DocumentError) as caught:
        vorn.DesignDocument.from_bytes(data)
    assert caught.value.line is not None and "é" in str(caught.value)
    assert vorn.DesignDocument.from_bytes(data, lossy=True).replaced_characters == 1

    with pytest.raises(vorn.TextError, match="U\\+00E9"):
        vorn.CrossSection().name = "é"
    with pytest.raises(UnicodeEncodeError):
        vorn.CrossSection().name = "\ud800"


def test_a_step_that_cannot_be_done_tells_the_section() -> None:
    design = vorn.sample(sections=3)
    editor = vorn.DesignEditor(design)
    for section in design.sets[0].sections:
        section.height = None
    with pytest.raises(vorn.EditError) as caught:
        editor.recalc()
    assert caught.value.place is not None
    assert caught.value.place.startswith("set 1") and "station" in caught.value.place
    assert str(caught.value).startswith(caught.value.place + ": ")
    with pytest.raises(vorn.ExpiredError):
        editor.recalc(0.0)


def test_a_damaged_project(tmp_path: Path) -> None:
    data = bytearray(vorn.Project().to_bytes())
    data[len(data) // 2] ^= 0xFF
    (tmp_path / "a.vorn").write_bytes(data)
    with pytest.raises(vorn.DocumentError) as caught:
        vorn.Project.read(tmp_path / "a.vorn")
    assert caught.value.file == str(tmp_path / "a.vorn")


def test_a_failed_write_leaves_the_file(tmp_path: Path) -> None:
    with pytest.raises(vorn.DocumentError):
        vorn.sample(sections=1).write(tmp_path)
    assert tmp_path.is_dir()


def test_wrong_types_and_values() -> None:
    point = vorn.ComposedPoint()
    for value in (float("nan"), float("inf")):
        with pytest.raises(ValueError):
            point.x = value
    for name, wrong in [("x", "1.0"), ("x", True), ("code", 1), ("code", None), ("side", 1), ("side", "Left"),
                        ("side", vorn.WorkType.CUT_WORK)]:
        with pytest.raises(TypeError):
            setattr(point, name, wrong)
    with pytest.raises(TypeError):
        vorn.BuildForm().points.append(None)  # type: ignore[arg-type]
    with pytest.raises(TypeError):
        vorn.BuildForm().points.append(vorn.BuildForm())  # type: ignore[arg-type]
