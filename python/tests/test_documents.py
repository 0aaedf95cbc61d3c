"""Reading, writing, checking and converting documents of every edition."""

from __future__ import annotations

from pathlib import Path

import pytest

import vorn
from conftest import DOCUMENTS, SAMPLES

EDITIONS = [vorn.Edition.V2_0, vorn.Edition.V4_0, vorn.Edition.V4_1, vorn.Edition.MAFF_1_0]


def document_of(edition: vorn.Edition) -> Path:
    return DOCUMENTS / f"all_elements_{edition.value}.xml"


@pytest.mark.parametrize("edition", EDITIONS)
def test_what_was_written_reads_the_same(edition: vorn.Edition, tmp_path: Path) -> None:
    design = vorn.DesignDocument.read(document_of(edition))
    assert design.edition is edition
    report = design.write(tmp_path / "a.xml")
    assert (report.replaced_characters, report.unplaced) == (0, [])
    assert vorn.DesignDocument.read(tmp_path / "a.xml").to_bytes() == design.to_bytes()
    assert (tmp_path / "a.xml").read_bytes() == design.to_bytes()


@pytest.mark.parametrize("source", EDITIONS)
@pytest.mark.parametrize("target", EDITIONS)
def test_converting(source: vorn.Edition, target: vorn.Edition) -> None:
    design = vorn.DesignDocument.read(document_of(source))
    report = design.convert(target)
    assert design.edition is target
    assert report.far_points == 0
    assert vorn.DesignDocument.from_bytes(design.to_bytes()).edition is target


def test_both_encodings() -> None:
    design = vorn.sample(sections=2)
    form = design.sets[0].sections[0].forms[0]
    utf8, shift_jis = design.to_bytes(), design.to_bytes(encoding=vorn.Encoding.SHIFT_JIS)
    assert form.name.encode("utf-8") in utf8
    assert form.name.encode("cp932") in shift_jis
    again = vorn.DesignDocument.from_bytes(shift_jis)
    assert again.encoding_name == "Shift_JIS"
    assert again.sets[0].sections[0].forms[0].name == form.name


def test_new_document() -> None:
    point = vorn.ComposedPoint("CL", vorn.Side.CENTER)
    left = vorn.ComposedPoint("L1", vorn.Side.LEFT, -3.5, -2.0, vorn.DataType.PERCENT)
    form = vorn.BuildForm("路面", "盛土工")
    form.points.extend([point, left])
    section = vorn.CrossSection(20.0, "No.1")
    section.forms.append(form)
    design = vorn.DesignDocument(vorn.Edition.V4_1)
    design.sets.append(vorn.CrossSectionSet("CL-1", "P-1"))
    design.sets[0].sections.append(section)
    again = vorn.DesignDocument.from_bytes(design.to_bytes())
    read = again.sets[0].sections[0].forms[0]
    assert (read.name, read.xsect_type, [p.code for p in read.points]) == ("路面", "盛土工", ["CL", "L1"])
    assert read.points[1].data_type is vorn.DataType.PERCENT
    assert (read.points[1].x, read.points[1].y) == (-3.5, -2.0)
    with pytest.raises(ValueError):
        vorn.DesignDocument(vorn.Edition.ROAD_GEOMETRY)


def test_check_tells_the_place() -> None:
    design = vorn.sample(sections=4)
    assert [f for f in design.check() if f.severity is vorn.Severity.ERROR] == []
    design.sets[0].sections[1].forms[0].name = ""
    findings = [f for f in design.check() if f.severity is vorn.Severity.ERROR]
    assert findings
    assert (findings[0].set_index, findings[0].section_index) == (0, 1)
    assert "set 1" in findings[0].place
    assert findings[0].reason


def test_what_is_not_understood(tmp_path: Path) -> None:
    text = vorn.sample(sections=2).to_bytes().replace(b'location="Left"', b'location="Lefft"', 1)
    [value] = vorn.DesignDocument.from_bytes(text).unread_values
    assert value.text == "Lefft"
    assert text.decode().splitlines()[value.line - 1].count("Lefft") == 1


def test_carried_content_stays() -> None:
    design = vorn.DesignDocument.read(SAMPLES / "road-with-geometry-4.0.xml")
    assert any(name == "rgm:RoadGm" for name, _ in design.carried)
    assert b"rgm:RoadGm" in design.to_bytes()


def test_structure_type() -> None:
    design = vorn.DesignDocument()
    assert design.structure_type is None
    design.structure_type = vorn.StructureType(vorn.Work.ROAD_EARTHWORK)
    structure = design.structure_type
    assert structure is not None and structure.work is vorn.Work.ROAD_EARTHWORK
    structure.company = "建設会社"
    assert design.structure_type.company == "建設会社"
    structure.work = None
    assert (structure.work, structure.work_name) == (None, "")
    design.structure_type = None
    assert design.structure_type is None


def test_samples_are_reproducible() -> None:
    for kind in vorn.SampleKind:
        assert vorn.sample(kind, 3, 7).to_bytes() == vorn.sample(kind, 3, 7).to_bytes()
    assert vorn.sample(seed=1).to_bytes() != vorn.sample(seed=2).to_bytes()


def test_a_document_with_more_to_carry_over_than_allowed_is_refused() -> None:
    text = vorn.DesignDocument(vorn.Edition.V4_1).to_bytes() + b"<!-- a --><!-- b -->"
    assert vorn.DesignDocument.from_bytes(text, most_carried_items=2) is not None
    with pytest.raises(vorn.DocumentError, match="more than 1 "):
        vorn.DesignDocument.from_bytes(text, most_carried_items=1)
