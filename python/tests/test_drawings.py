"""Drawings, tables, GeoJSON and the page for the browser: those of the command-line tool."""

from __future__ import annotations

import csv
import io
import json
import xml.etree.ElementTree
from pathlib import Path
from typing import Any, Callable

import pytest

import vorn
from conftest import SAMPLES

Tool = Callable[..., Any]
ROAD = SAMPLES / "road-4.1.xml"


def road() -> vorn.DesignDocument:
    return vorn.DesignDocument.read(ROAD)


def test_a_section_as_svg(tool: Tool, tmp_path: Path) -> None:
    section = road().sets[0].sections[2]
    svg = section.to_svg(scale=250, exaggeration=2.0, language=vorn.Language.JAPANESE)
    tool("plot", ROAD, "--index", 3, "-o", tmp_path / "a.svg", "--scale", 250, "--exaggerate", 2, "--language", "ja",
         "--json")
    assert svg == (tmp_path / "a.svg").read_text(encoding="utf-8")
    assert xml.etree.ElementTree.fromstring(svg).tag.endswith("svg")


def test_notebooks_show_a_section() -> None:
    section = road().sets[0].sections[0]
    show: Callable[[], str | None] = getattr(section, "_repr_svg_")
    assert show() == section.to_svg()
    alone = section.copy()
    show_alone: Callable[[], str | None] = getattr(alone, "_repr_svg_")
    assert show_alone() is None
    with pytest.raises(ValueError, match="stands in none"):
        alone.to_svg()


def test_a_drawing_leaves_the_design_as_it_is() -> None:
    design = road()
    before = design.to_bytes()
    point = design.sets[0].sections[0].forms[0].points[1]
    for content in vorn.TableContent:
        design.to_csv(content, center_height=62.5)
    design.to_dxf()
    design.to_html()
    design.sets[0].sections[0].to_svg(center_height=62.5)
    assert point.offset is None and design.to_bytes() == before


@pytest.mark.parametrize("content", vorn.TableContent)
def test_tables(content: vorn.TableContent, tool: Tool, tmp_path: Path) -> None:
    tool("export", ROAD, "-o", tmp_path / "tool.csv", "--what", content.value, "--bom", "--height", 62.5, "--json")
    notes = road().write_csv(tmp_path / "a.csv", content, byte_order_mark=True, center_height=62.5)
    assert (tmp_path / "a.csv").read_bytes() == (tmp_path / "tool.csv").read_bytes()
    assert notes == []
    table = road().to_csv(content, center_height=62.5)
    assert table.encode("utf-8-sig") == (tmp_path / "a.csv").read_bytes()
    rows = list(csv.DictReader(io.StringIO(table)))
    assert rows and all(float(row["station"]) >= 0.0 for row in rows)


def test_geojson(tool: Tool, tmp_path: Path) -> None:
    tool("export", ROAD, "-o", tmp_path / "tool.geojson", "--json")
    notes = road().write_geojson(tmp_path / "a.geojson")
    assert (tmp_path / "a.geojson").read_bytes() == (tmp_path / "tool.geojson").read_bytes()
    told = json.loads(road().to_geojson())
    assert told["type"] == "FeatureCollection"
    assert all(isinstance(where, str) and note for where, note in notes)


def test_dxf(tool: Tool, tmp_path: Path) -> None:
    tool("export", ROAD, "-o", tmp_path / "tool.dxf", "--scale", 200, "--language", "ja", "--json")
    road().write_dxf(tmp_path / "a.dxf", scale=200, language=vorn.Language.JAPANESE)
    drawing = road().to_dxf(scale=200, language=vorn.Language.JAPANESE)
    assert drawing == (tmp_path / "a.dxf").read_bytes() == (tmp_path / "tool.dxf").read_bytes()


def test_the_page(tool: Tool, tmp_path: Path) -> None:
    tool("report", ROAD, "-o", tmp_path / "tool.html", "--language", "ja", "--json")
    road().write_report(tmp_path / "a.html", ROAD.name, language=vorn.Language.JAPANESE)
    assert (tmp_path / "a.html").read_bytes() == (tmp_path / "tool.html").read_bytes()
    assert road().to_html(ROAD.name, language=vorn.Language.JAPANESE).encode() == (tmp_path / "a.html").read_bytes()


def test_what_is_not_shown_is_told(tmp_path: Path) -> None:
    design = road()
    design.sets[0].sections[0].forms.append(vorn.BuildForm("empty"))
    for notes in (design.write_csv(tmp_path / "a.csv"), design.write_dxf(tmp_path / "a.dxf")):
        assert any("No.0" in where and "empty" in note for where, note in notes)


def test_no_design_is_replaced(tmp_path: Path) -> None:
    copy = tmp_path / "a.xml"
    copy.write_bytes(ROAD.read_bytes())
    design = vorn.DesignDocument.read(copy)
    writes: list[Callable[[Path], object]] = [
        design.write_csv, design.write_geojson, design.write_dxf, design.write_report]
    for write in writes:
        for name in (copy, tmp_path / "b.vorn", tmp_path / "b.vorn.bak"):
            with pytest.raises(vorn.DocumentError) as caught:
                write(name)
            assert caught.value.file == str(name)
    assert copy.read_bytes() == ROAD.read_bytes() and list(tmp_path.iterdir()) == [copy]


@pytest.mark.parametrize("arguments", [
    {"scale": 0.5}, {"scale": float("nan")}, {"exaggeration": 0.0}, {"exaggeration": 101.0}, {"center_height": 1e5},
    {"center_height": float("inf")}])
def test_what_cannot_be_drawn(arguments: dict[str, float]) -> None:
    with pytest.raises(ValueError, match=f"{next(iter(arguments))} is a number from"):
        road().sets[0].sections[0].to_svg(**arguments)  # type: ignore[arg-type]
