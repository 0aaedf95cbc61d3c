"""Values are those that the command-line tool tells."""

from __future__ import annotations

from pathlib import Path
from typing import Any, Callable

import pytest

import vorn
from conftest import DOCUMENTS, PROJECTS, SAMPLES, stem

Tool = Callable[..., Any]
FILES = sorted([*SAMPLES.glob("*.xml"), *DOCUMENTS.glob("*.xml")])


@pytest.mark.parametrize("path", FILES, ids=stem)
def test_info(path: Path, tool: Tool) -> None:
    told = tool("info", path, "--json")
    design = vorn.DesignDocument.read(path)
    assert design.edition.value == told["edition"]
    assert design.encoding_name == told["encoding"]
    assert len(design.sets) == len(told["sets"])
    for section_set, row in zip(design.sets, told["sets"]):
        forms = [form for section in section_set.sections for form in section.forms]
        stations = [section.station for section in section_set.sections if section.station is not None]
        ground = [form for section in section_set.sections for form in section.ground_forms]
        assert section_set.ref_align == row["refAlign"]
        assert section_set.is_along_alignment == row["alignment"]
        assert len(section_set.sections) == row["crossSections"]["count"]
        assert min(stations, default=None) == row["crossSections"]["firstStation"]
        assert max(stations, default=None) == row["crossSections"]["lastStation"]
        assert sum(s.is_behind_change for s in section_set.sections) == row["crossSections"]["changesOfShape"]
        assert len(forms) == row["buildForms"]["count"]
        assert sum(len(form.points) for form in forms) == row["buildForms"]["points"]
        assert {form.name for form in forms} == {name["name"] for name in row["buildForms"]["byName"]}
        targets = len(section_set.targets) + sum(len(form.targets) for form in forms)
        assert targets == row["controlTargets"]["count"]
        assert sum(len(form.points) for form in ground) == row["existingGround"]["points"]


@pytest.mark.parametrize("path", FILES, ids=stem)
def test_check(path: Path, tool: Tool) -> None:
    told = tool("check", path, "--json", "--verbose")
    found = vorn.DesignDocument.read(path).check()
    assert sum(finding.severity is vorn.Severity.ERROR for finding in found) == told["errors"]
    assert sum(finding.severity is vorn.Severity.NOTE for finding in found) == told["notes"]


@pytest.mark.parametrize("path", sorted(SAMPLES.glob("*.xml")), ids=stem)
def test_points(path: Path, tool: Tool, tmp_path: Path) -> None:
    tool("edit", path, tmp_path / "a.vorn", "--recalc", "62.5", "--json")
    project = vorn.Project.read(tmp_path / "a.vorn")
    design = project.give_design()
    exported = tool("export", tmp_path / "a.vorn", "--format", "geojson")
    lines = [f for f in exported["features"] if f["properties"]["kind"] == "form"]
    assert lines
    for line in lines:
        properties = line["properties"]
        section = design.sets[properties["set"] - 1].sections[properties["section"] - 1]
        form = section.forms[properties["form"] - 1]
        assert (form.name, section.station) == (properties["name"], properties["station"])
        offsets, heights, x, y = form.offsets, form.heights, form.x, form.y
        for (offset, height), row in zip(line["geometry"]["coordinates"], properties["points"]):
            index = row["point"] - 1
            assert form.points[index].code == row["code"]
            assert (x[index], y[index]) == (row["inputX"], row["inputY"])
            assert offsets[index] == pytest.approx(offset, abs=1e-9)
            assert heights[index] == pytest.approx(height, abs=1e-9)


def test_an_edit_is_that_of_the_tool(tool: Tool, tmp_path: Path) -> None:
    source = SAMPLES / "road-4.1.xml"
    tool("edit", source, tmp_path / "a.xml", "--recalc", "62.5", "--cross-points", "--mirror", "--json")
    design = vorn.DesignDocument.read(source)
    editor = vorn.DesignEditor(design)
    editor.recalc(62.5)
    editor.recalc_crossings()
    editor.mirror()
    assert design.to_bytes() == (tmp_path / "a.xml").read_bytes()


@pytest.mark.parametrize("path", sorted(PROJECTS.glob("road-*.vorn")), ids=stem)
def test_projects(path: Path, tool: Tool) -> None:
    told = tool("info", path, "--json")["project"]
    project = vorn.Project.read(path)
    data = project.data
    assert project.store_version == told["storeVersion"]
    assert data.road_center.project.name == told["name"]
    assert [crs.name for crs in data.construction.coordinate_systems] == told["coordinateSystems"]
    assert len(data.construction.control_points.horizontal_points) == told["controlPoints"]
    assert len(data.construction.control_points.bench_marks) == told["benchMarks"]
    assert sum(len(group.points) for group in data.road_center.groups) == told["groundPoints"]


def test_vertical_datums(tool: Tool) -> None:
    told = [tuple(datum.values()) for datum in tool("datums", "--json")["verticalDatums"]]
    assert vorn.vertical_datums() == told
