"""What one sees in the interpreter: how objects show themselves, what they refuse, how they are copied and sent."""

from __future__ import annotations

import copy
import enum
import inspect
import pickle
import re
from typing import Callable

import pytest

import vorn
from conftest import PROJECTS, ROOT


def design() -> vorn.DesignDocument:
    return vorn.sample(sections=3)


def test_every_class_shows_itself() -> None:
    for name, cls in vars(vorn).items():
        if inspect.isclass(cls) and cls.__module__ == "vorn":
            assert vars(cls).get("__repr__") or issubclass(cls, (Exception, enum.Enum)), name
            assert cls.__qualname__ == name


def test_what_is_shown() -> None:
    road = vorn.Project.read(PROJECTS / "road-06.00.vorn")
    document = design()
    section = document.sets[0].sections[1]
    shown = [
        (document, "<vorn.DesignDocument edition 4.1, 1 sets>"),
        (document.sets, "<vorn.CrossSectionSets of 1>"),
        (section, f"<vorn.CrossSection station {section.station:.4f} '{section.name}', {len(section.forms)} forms>"),
        (vorn.ComposedPoint("L1"), "<vorn.ComposedPoint 'L1' offset unset height unset>"),
        (vorn.FileInfo(), "<vorn.FileInfo created unset, changed unset>"),
        (vorn.ControlTarget(), "<vorn.ControlTarget without an item, 0 points>"),
        (vorn.StructureType(vorn.Work.ROAD_EARTHWORK), "<vorn.StructureType '道路土工'>"),
        (road, "<vorn.Project in store version 06.00>"),
        (road.data.construction.control_names, "<vorn.ControlItemNames>"),
        (road.data.construction.road_geometry.alignments[0], "<vorn.Alignment 'alignment1', 2 sections>"),
        (vorn.DesignEditor(document), "<vorn.DesignEditor of <vorn.DesignDocument edition 4.1, 1 sets>>"),
    ]
    for value, text in shown:
        assert repr(value) == text


def test_what_is_gone_still_shows_itself() -> None:
    document = design()
    form = document.sets[0].sections[0].forms[0]
    points = form.points
    vorn.DesignEditor(document).recalc(0.0)
    assert [repr(form), repr(points)] == ["<vorn.BuildForm (expired)>", "<vorn.ComposedPoints (expired)>"]
    vorn.Project().take_design(document)
    assert repr(document) == "<vorn.DesignDocument (expired)>"


@pytest.mark.parametrize("use, message", [
    (lambda s: setattr(s, "station", "1"), r"station\(\).*\(self: vorn.CrossSection, value: Optional\[float\]\)"),
    (lambda s: setattr(s, "name", None), r"name\(\).*value: str\)"),
    (lambda s: setattr(s, "statoin", 1.0), "'vorn.CrossSection' object has no attribute 'statoin'"),
    (lambda s: s.forms.append(s), r"append\(\).*element: vorn.BuildForm"),
    (lambda s: vorn.CrossSection(statoin=1.0), "statoin=1.0"),  # type: ignore[call-arg]
])
def test_mistakes_are_named(use: Callable[[vorn.CrossSection], object], message: str) -> None:
    with pytest.raises((TypeError, AttributeError)) as caught:
        use(design().sets[0].sections[0])
    assert re.search(message, str(caught.value), re.DOTALL)


def test_equality_is_identity() -> None:
    section = design().sets[0].sections[0]
    assert section.forms[0] == section.forms[0] and section.forms[0] != section.forms[0].copy()
    assert len({section.forms[0], section.forms[0], section.forms[1]}) == 2


def test_a_copied_collection_is_a_list() -> None:
    forms = design().sets[0].sections[0].forms
    shallow: object = copy.copy(forms)
    deep = copy.deepcopy(forms)
    assert shallow == [*forms]
    assert [form.name for form in deep] == [form.name for form in forms]
    deep[0].name = "another"
    assert forms[0].name != "another"


def test_index_takes_a_part_of_the_collection() -> None:
    points = design().sets[0].sections[0].forms[0].points
    point = points[2]
    assert (points.index(point, 1), points.index(point, -len(points), 3)) == (2, 2)
    for part in ((3,), (0, 2), (2, 2)):
        with pytest.raises(ValueError):
            points.index(point, *part)


def test_what_is_not_pickled_says_so() -> None:
    document = design()
    for value in (document, vorn.Project()):
        uses: list[Callable[[object], object]] = [pickle.dumps, copy.copy, copy.deepcopy]
        for use in uses:
            with pytest.raises(TypeError, match="to_bytes"):
                use(value)
    for element in (document.sets, document.sets[0].sections[0], vorn.DesignEditor(document)):
        with pytest.raises(TypeError, match="cannot pickle 'vorn."):
            pickle.dumps(element)


def test_reports_are_plain_values() -> None:
    document = design()
    document.sets[0].sections[1].forms[0].name = ""
    data = document.to_bytes().replace(b'location="Left"', b'location="Lefft"', 1)
    unread = vorn.DesignDocument.from_bytes(data).unread_values
    reports = [*document.check(), *unread, vorn.DesignEditor(document).recalc(1.0),
               document.convert(vorn.Edition.V2_0)]
    for report in reports:
        for other in (pickle.loads(pickle.dumps(report)), copy.copy(report), copy.deepcopy(report)):
            assert other == report and repr(other) == repr(report)
    assert reports[0] != reports[-1] and reports[0] != "a text"
    finding = pickle.loads(pickle.dumps(reports[0]))
    assert (finding.set_index, finding.section_index) == (0, 1)


def test_version() -> None:
    assert f'version = "{vorn.__version__}"' in (ROOT / "python" / "pyproject.toml").read_text()
