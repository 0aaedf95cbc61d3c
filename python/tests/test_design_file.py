"""Files of either kind by their names."""

from __future__ import annotations

import pickle
from pathlib import Path

import pytest

import vorn
from conftest import DOCUMENTS, PROJECTS, SAMPLES

ROAD = SAMPLES / "road-4.1.xml"


def test_reading_either_kind(tmp_path: Path) -> None:
    document = vorn.DesignFile.read(ROAD)
    assert document.project is None and document.design.edition is vorn.Edition.V4_1
    project = vorn.DesignFile.read(PROJECTS / "road-05.00.vorn")
    assert project.project is not None and project.project.store_version == "05.00"
    assert len(project.design.sets) > 0 and project.design is project.design
    assert repr(document) == "<vorn.DesignFile with <vorn.DesignDocument edition 4.1, 1 sets>>"
    with pytest.raises(vorn.DocumentError) as caught:
        vorn.DesignFile.read(tmp_path / "none.vorn")
    assert caught.value.file == str(tmp_path / "none.vorn")
    assert vorn.holds_design(ROAD) and not vorn.holds_design(__file__)


@pytest.mark.parametrize("edition", ["2.0", "4.0", "4.1", "maff-1.0"])
def test_a_document_becomes_a_project_and_one_again(edition: str, tmp_path: Path) -> None:
    file = vorn.DesignFile.read(DOCUMENTS / f"all_elements_{edition}.xml")
    design, section = file.design, file.design.sets[0].sections[0]
    form, before = section.forms[0], file.design.to_bytes()
    report = file.write(tmp_path / "a.vorn")
    assert (report.store_version, report.former_file, report.has_left_road_data) == ("06.00", None, False)
    assert file.design is design and file.project is None
    assert design.edition.value == edition and design.to_bytes() == before
    assert section is design.sets[0].sections[0]
    with pytest.raises(vorn.ExpiredError):
        form.name
    assert vorn.DesignFile.read(tmp_path / "a.vorn").design.to_bytes() == before

    again = file.write(tmp_path / "a.vorn", store_version="05.00")
    assert again.store_version == "05.00" and again.former_file == str(tmp_path / "a.vorn.bak")
    assert pickle.loads(pickle.dumps(again)) == again != report
    assert vorn.DesignFile.read(tmp_path / "a.vorn.bak").design.to_bytes() == before


def test_writing_a_document(tmp_path: Path) -> None:
    file = vorn.DesignFile.read(ROAD)
    form = file.design.sets[0].sections[0].forms[0]
    x = form.x
    report = file.write(tmp_path / "a.xml", encoding=vorn.Encoding.SHIFT_JIS)
    assert (report.store_version, report.document.replaced_characters, report.losses) == (None, 0, [])
    assert vorn.DesignDocument.read(tmp_path / "a.xml").encoding_name == "Shift_JIS"
    form.name = "計画面"
    assert file.design.sets[0].sections[0].forms[0] is form and form.x.tolist() == x.tolist()


def test_a_project_keeps_its_road_data(tmp_path: Path) -> None:
    file = vorn.DesignFile.read(PROJECTS / "road-06.00.vorn")
    project = file.project
    assert project is not None
    road = project.data.construction.road_geometry.road
    road.name = "環状線"
    file.design.sets[0].sections[0].name = "始点"
    assert file.write(tmp_path / "a.xml").has_left_road_data
    for name in ("a.vorn", "b.vorn"):
        assert file.write(tmp_path / name).store_version == "06.00"
        assert road.name == "環状線" and file.project is project
        read = vorn.DesignFile.read(tmp_path / name)
        assert read.design.sets[0].sections[0].name == "始点"
        assert read.project is not None and read.project.data.construction.road_geometry.road.name == "環状線"


def test_a_write_that_fails_leaves_all_as_it_was(tmp_path: Path) -> None:
    for source in (PROJECTS / "road-06.00.vorn", ROAD):
        file = vorn.DesignFile.read(source)
        before = file.design.to_bytes()
        for name, version in (("none/a.vorn", None), ("none/a.xml", None), ("a.vorn", "01.00")):
            with pytest.raises(vorn.DocumentError) as caught:
                file.write(tmp_path / name, store_version=version)
            assert caught.value.file == str(tmp_path / name)
            assert file.design.to_bytes() == before
        assert list(tmp_path.iterdir()) == []
        file.write(tmp_path / "b.vorn")
        (tmp_path / "b.vorn").unlink()


def test_a_new_design(tmp_path: Path) -> None:
    design = vorn.sample(sections=2)
    vorn.DesignFile(design).write(tmp_path / "a.vorn")
    assert len(vorn.Project.read(tmp_path / "a.vorn").give_design().sets[0].sections) == len(design.sets[0].sections)
    with pytest.raises(TypeError):
        vorn.DesignFile(None)  # type: ignore[arg-type]
