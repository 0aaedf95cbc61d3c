"""Projects of each store version."""

from __future__ import annotations

import datetime
from pathlib import Path
from typing import Callable

import pytest

import vorn
from conftest import PROJECTS, SAMPLES, stem

FILES = sorted(PROJECTS.glob("road-*.vorn"))


@pytest.mark.parametrize("path", FILES, ids=stem)
def test_reading_every_store_version(path: Path, tmp_path: Path) -> None:
    project = vorn.Project.read(path)
    assert project.store_version == path.stem.removeprefix("road-")
    project.save(tmp_path / "a.vorn")
    again = vorn.Project.read(tmp_path / "a.vorn")
    assert again.store_version == "06.00"
    assert again.give_design().to_bytes() == project.give_design().to_bytes()


@pytest.mark.parametrize("version", ["05.00", "05.50", "06.00"])
def test_saving_every_store_version(version: str, tmp_path: Path) -> None:
    project = vorn.Project()
    project.take_design(vorn.DesignDocument.read(SAMPLES / "road-4.1.xml"))
    project.save(tmp_path / "a.vorn", version)
    project.save(tmp_path / "a.vorn", store_version=version)
    assert (tmp_path / "a.vorn.bak").exists()
    read = vorn.Project.from_bytes((tmp_path / "a.vorn").read_bytes())
    assert read.store_version == version
    assert len(read.give_design().sets[0].sections) == 10
    with pytest.raises(vorn.DocumentError):
        project.save(tmp_path / "b.vorn", "04.00")
    assert not (tmp_path / "b.vorn").exists()


def test_a_project_with_more_than_allowed_is_refused(tmp_path: Path) -> None:
    text = vorn.DesignDocument(vorn.Edition.V4_1).to_bytes() + b"<!-- a --><!-- b -->"
    project = vorn.Project()
    project.take_design(vorn.DesignDocument.from_bytes(text))
    project.save(tmp_path / "a.vorn")
    data = (tmp_path / "a.vorn").read_bytes()
    reads: list[Callable[..., object]] = [
        lambda **most: vorn.Project.from_bytes(data, **most),
        lambda **most: vorn.Project.read(tmp_path / "a.vorn", **most),
        lambda **most: vorn.DesignFile.read(tmp_path / "a.vorn", **most)]
    for read in reads:
        assert read(most_bytes=len(data), most_carried_items=2) is not None
        with pytest.raises(vorn.DocumentError, match="more than 1 "):
            read(most_carried_items=1)
        with pytest.raises(vorn.DocumentError, match="larger than"):
            read(most_bytes=len(data) - 1)


def test_the_design_goes_out_and_back(tmp_path: Path) -> None:
    project = vorn.Project()
    design = vorn.sample(sections=3)
    section = design.sets[0].sections[0]
    project.take_design(design)
    uses: list[Callable[[], object]] = [
        lambda: design.edition, lambda: section.name, lambda: len(design.sets), lambda: design.check()]
    for use in uses:
        with pytest.raises(vorn.ExpiredError):
            use()
    geometry = project.data.construction.road_geometry
    inside = geometry.alignments[0].section_set
    assert len(inside.sections) == 3
    given = project.give_design()
    assert not project.holds_road_data
    with pytest.raises(vorn.ExpiredError):
        inside.sections
    with pytest.raises(vorn.DocumentError, match="handed out"):
        project.save(tmp_path / "a.vorn")
    given.sets[0].sections[0].name = "始点"
    project.take_design(given)
    assert geometry.alignments[0].section_set.sections[0].name == "始点"
    project.save(tmp_path / "a.vorn")


def test_road_data(tmp_path: Path) -> None:
    project = vorn.Project()
    data = project.data
    road = data.construction.road_geometry.road
    road.name, road.speed_kmh, road.road_class = "環状線", 60, vorn.RoadClass.TYPE3_CLASS2
    crs = vorn.CoordinateSystem()
    crs.name, crs.geodetic_datum, crs.coordinates = "9系", vorn.GeodeticDatum.JGD2011, vorn.HorizontalCoordinates.PLANE9
    data.construction.coordinate_systems.append(crs)
    mark = vorn.BenchMark()
    mark.number, mark.name, mark.point_class = 3, "BM-3", vorn.BenchMarkClass.GRADE1
    data.construction.control_points.bench_marks.append(mark)
    geometry = data.construction.road_geometry
    geometry.alignments.append(vorn.Alignment("本線"))
    geometry.current_alignment = geometry.alignments[0]
    data.road_center.project.name = "工事"
    data.road_center.project.date = datetime.datetime(2024, 4, 1)
    data.construction.control_names.road_left = "左"
    project.save(tmp_path / "a.vorn")

    read = vorn.Project.read(tmp_path / "a.vorn").data
    geometry = read.construction.road_geometry
    assert (geometry.road.name, geometry.road.speed_kmh, geometry.road.road_class_text) == ("環状線", 60, "第3種第2級")
    [crs] = read.construction.coordinate_systems
    assert (crs.name, crs.datum_code, crs.system_code) == ("9系", "JGD2011", "9(X,Y)")
    [mark] = read.construction.control_points.bench_marks
    assert (mark.number, mark.name, mark.point_class) == (3, "BM-3", vorn.BenchMarkClass.GRADE1)
    assert geometry.current_alignment is geometry.alignments[0]
    assert geometry.alignments[0].dates == [None, None, None]
    assert read.road_center.project.date == datetime.datetime(2024, 4, 1)
    assert read.construction.control_names.road_left == "左"
    with pytest.raises(ValueError):
        geometry.current_alignment = vorn.Alignment("another")


def test_land_xml(tmp_path: Path) -> None:
    project = vorn.Project()
    settings = project.data.land_xml
    settings.project_name, settings.project_description = "工事", "説明"
    settings.points.append(vorn.LandXmlPoint(7))
    alignment = vorn.LandXmlAlignment("本線")
    alignment.flag, alignment.code2 = 1, 12
    settings.alignments.append(alignment)
    settings.texts, settings.value, settings.option3, settings.point_option1 = ["一", "二"], 2.5, 3, 4
    project.save(tmp_path / "a.vorn")

    read = vorn.Project.read(tmp_path / "a.vorn").data.land_xml
    assert repr(read) == "<vorn.LandXmlSettings '工事', 1 alignments>"
    assert (read.project_name, read.project_description) == ("工事", "説明")
    assert [point.number for point in read.points] == [7]
    [alignment] = read.alignments
    assert (alignment.name, alignment.flag) == ("本線", 1)
    assert (alignment.code1, alignment.code2, alignment.code3) == (None, 12, None)
    assert (read.texts, read.value, read.option3, read.point_option1) == (["一", "二"], 2.5, 3, 4)
    with pytest.raises(ValueError):
        read.value = float("nan")


def test_project_names() -> None:
    assert vorn.is_project_name("a.VORN") and not vorn.is_project_name(Path("a.xml"))


def test_a_document_never_takes_the_place_of_a_project(tmp_path: Path) -> None:
    design = vorn.DesignDocument.read(SAMPLES / "road-4.1.xml")
    path = tmp_path / "a.vorn"
    vorn.Project().save(path)
    before = path.read_bytes()
    with pytest.raises(vorn.DocumentError, match="this is a project"):
        design.write(path)
    renamed = tmp_path / "a.dat"
    path.rename(renamed)
    with pytest.raises(vorn.DocumentError, match="this is a project"):
        design.write(renamed)
    assert renamed.read_bytes() == before
