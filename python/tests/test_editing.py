"""Editing through the editor, and what an element means after the collections were rebuilt."""

from __future__ import annotations

from typing import Callable

import pytest

import vorn
from conftest import SAMPLES


def road() -> vorn.DesignDocument:
    return vorn.DesignDocument.read(SAMPLES / "road-4.1.xml")


def test_recalc_places_the_points() -> None:
    design = road()
    section = design.sets[0].sections[3]
    assert section.forms[0].points[1].offset is None
    report = vorn.DesignEditor(design).recalc(62.5)
    assert report.has_changed and report.counts["points placed"] > 0
    assert section.forms[0].points[0].height == 62.5
    place, what = report.changes[0]
    assert place.startswith("set 1") and "62.5" in what


def test_crossings_and_mirror() -> None:
    design = road()
    editor = vorn.DesignEditor(design)
    editor.recalc(62.5)
    section = design.sets[0].sections[3]
    before = list(section.forms[0].offsets)
    editor.mirror()
    assert sorted(section.forms[0].offsets) == sorted(-offset if offset else 0.0 for offset in before)
    assert editor.recalc_crossings().notes is not None
    assert editor.lost_targets() == []


def test_steps_on_forms() -> None:
    design = road()
    editor = vorn.DesignEditor(design)
    sections = design.sets[0].sections
    name, xsect_type = sections[0].forms[0].name, sections[0].forms[0].xsect_type
    editor.rename_form(xsect_type, name, "計画面")
    assert sections[0].forms[0].name == "計画面"
    last = sections[0].forms[-1].name
    editor.sort_forms([last])
    assert sections[0].forms[0].name == last
    editor.remove_form(last)
    assert all(form.name != last for section in sections for form in section.forms)
    editor.clear_codes()
    assert {point.code for section in sections for form in section.forms for point in form.points} == {""}


def test_shift() -> None:
    design = road()
    editor = vorn.DesignEditor(design)
    editor.recalc(0.0)
    section = design.sets[0].sections[0]
    before = section.forms[0].offsets
    editor.shift(-1.5)
    assert section.shift_offset == -1.5
    assert list(section.forms[0].offsets) == pytest.approx([offset - 1.5 for offset in before])
    with pytest.raises(ValueError):
        editor.shift(float("nan"))


def test_elements_expire_with_a_step_and_sections_do_not() -> None:
    design = road()
    editor = vorn.DesignEditor(design)
    section = design.sets[0].sections[0]
    points = section.forms[0].points
    form, point, target = section.forms[0], points[0], design.sets[0].targets[0]
    editor.recalc(0.0)
    uses: list[Callable[[], object]] = [
        lambda: form.name, lambda: point.code, lambda: target.codes, lambda: len(points),
        lambda: setattr(point, "code", "x"), lambda: section.forms.append(form)]
    for use in uses:
        with pytest.raises(vorn.ExpiredError):
            use()
    assert form not in section.forms
    assert section is design.sets[0].sections[0] and section.forms[0].points[0].offset == 0.0


def test_an_editor_knows_the_sections_it_was_made_for() -> None:
    design = road()
    editor = vorn.DesignEditor(design)
    del design.sets[0].sections[0]
    with pytest.raises(vorn.ExpiredError):
        editor.recalc(0.0)
    vorn.DesignEditor(design).recalc(0.0)


def test_direct_edits() -> None:
    design = road()
    section = design.sets[0].sections[5]
    form = section.forms[0]
    section.recalc(62.5)
    offsets = form.offsets
    assert form.points[0].height == 62.5
    form.recalc(60.0)
    assert form.points[0].height == 60.0
    section.mirror()
    with pytest.raises(vorn.ExpiredError):
        form.name
    assert sorted(section.forms[0].offsets) == sorted(-x if x else 0.0 for x in offsets)
    section.recalc_crossings()


def test_the_edition_of_the_document_counts() -> None:
    old = vorn.DesignDocument(vorn.Edition.V2_0)
    old.sets.append(vorn.CrossSectionSet())
    target = vorn.ControlTarget(vorn.ControlItem.WIDTH)
    target.code_text = "L1 R1"
    assert target.codes == []  # one that stands alone is read as in edition 4.1, by its points
    old.sets[0].targets.append(target)
    assert target.codes == ["L1", "R1"]
