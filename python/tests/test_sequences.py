"""Collections are Python sequences, and elements follow."""

from __future__ import annotations

import collections.abc
import copy

import pytest

import vorn


@pytest.fixture
def form() -> vorn.BuildForm:
    form = vorn.BuildForm("路面")
    form.points.extend(vorn.ComposedPoint(code) for code in "ABCDE")
    return form


def codes(form: vorn.BuildForm) -> str:
    return "".join(point.code for point in form.points)


def test_reading(form: vorn.BuildForm) -> None:
    points = form.points
    assert isinstance(points, collections.abc.Sequence)
    assert len(points) == 5 and points
    assert (points[0].code, points[-1].code, points[-5].code) == ("A", "E", "A")
    assert [p.code for p in points[1:3]] == ["B", "C"]
    assert [p.code for p in points[::-2]] == ["E", "C", "A"]
    assert [p.code for p in reversed(points)] == list("EDCBA")
    assert points[0] is points[0] and points[0] in points
    assert points.index(points[3]) == 3 and points.count(points[3]) == 1
    assert vorn.ComposedPoint("A") not in points
    code: object = "A"
    assert code not in points
    for index in (5, -6):
        with pytest.raises(IndexError):
            points[index]
    with pytest.raises(ValueError):
        points.index(vorn.ComposedPoint("A"))
    assert not vorn.BuildForm().points


def test_changing(form: vorn.BuildForm) -> None:
    points = form.points
    points.insert(0, vorn.ComposedPoint("0"))
    points.insert(-1, vorn.ComposedPoint("x"))
    points.insert(99, vorn.ComposedPoint("9"))
    assert codes(form) == "0ABCDxE9"
    del points[0], points[-1]
    del points[1:4]
    assert codes(form) == "AxE"
    points[1] = vorn.ComposedPoint("y")
    assert codes(form) == "AyE"
    assert points.pop().code == "E" and points.pop(0).code == "A"
    points.remove(points[0])
    assert codes(form) == ""
    with pytest.raises(IndexError):
        points.pop()
    points.extend(vorn.ComposedPoint(code) for code in "abcdef")
    del points[::2]
    assert codes(form) == "bdf"
    points.clear()
    assert len(points) == 0


def test_extend_adds_all_or_none(form: vorn.BuildForm) -> None:
    with pytest.raises(TypeError):
        form.points.extend([vorn.ComposedPoint("F"), "G"])  # type: ignore[list-item]
    assert codes(form) == "ABCDE"
    form.points.extend(form.points)
    assert codes(form) == "ABCDEABCDE"


def test_elements_follow(form: vorn.BuildForm) -> None:
    b, d = form.points[1], form.points[3]
    form.points.insert(0, vorn.ComposedPoint("0"))
    del form.points[3]
    assert (b.code, d.code, form.points.index(b), form.points.index(d)) == ("B", "D", 2, 3)
    d.code = "d"
    assert codes(form) == "0ABdE"


def test_a_removed_element_lives_on_alone(form: vorn.BuildForm) -> None:
    c = form.points[2]
    del form.points[2]
    assert c.code == "C" and c not in form.points
    c.code = "c"
    assert codes(form) == "ABDE"
    form.points.append(c)
    assert codes(form) == "ABDEc" and form.points[-1] is c
    kept = form.points[0]
    form.points[0] = vorn.ComposedPoint("a")
    assert kept.code == "A" and codes(form) == "aBDEc"
    kept_all = list(form.points)
    form.points.clear()
    assert "".join(p.code for p in kept_all) == "aBDEc"


def test_an_added_element_is_that_of_the_collection() -> None:
    section, form = vorn.CrossSection(0.0), vorn.BuildForm("a")
    point = vorn.ComposedPoint("P")
    form.points.append(point)
    section.forms.append(form)
    form.name = "b"
    point.code = "Q"
    assert (section.forms[0].name, section.forms[0].points[0].code) == ("b", "Q")
    assert section.forms[0] is form and form.points[0] is point


def test_an_element_of_a_collection_is_added_as_a_copy(form: vorn.BuildForm) -> None:
    other = vorn.BuildForm()
    other.points.append(form.points[0])
    other.points[0].code = "Z"
    assert codes(form) == "ABCDE" and codes(other) == "Z"
    form.points[1] = form.points[1]
    assert codes(form) == "ABCDE"


def test_serials_are_given(form: vorn.BuildForm) -> None:
    assert [p.serial_id for p in form.points] == [1, 2, 3, 4, 5]
    section = vorn.CrossSection()
    section.forms.append(vorn.BuildForm("a"))
    section.forms.append(vorn.BuildForm("b"))
    assert [f.serial_id for f in section.forms] == [0, 1] and section.forms[0].is_surface


def test_copies_stand_alone(form: vorn.BuildForm) -> None:
    for other in (form.copy(), copy.copy(form), copy.deepcopy(form)):
        other.points[0].code = "Z"
        assert codes(form) == "ABCDE"


def test_sections_in_order() -> None:
    section_set = vorn.CrossSectionSet()
    for station in (20.0, 0.0, 40.0, 20.0000001, 10.0):
        section_set.add_section(vorn.CrossSection(station))
    assert [s.station for s in section_set.sections] == [0.0, 10.0, 20.0, 20.0000001, 40.0]
    assert section_set.find_section(10.0) is section_set.sections[1]
    assert section_set.find_section(11.0) is None
    with pytest.raises(ValueError):
        section_set.add_section(vorn.CrossSection())
