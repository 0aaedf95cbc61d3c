"""NumPy arrays of a form's points."""

from __future__ import annotations

import gc

import numpy as np
import pytest

import vorn


def placed() -> vorn.DesignDocument:
    design = vorn.sample(sections=3)
    vorn.DesignEditor(design).recalc(10.0)
    return design


def test_values_are_those_of_the_points() -> None:
    form = placed().sets[0].sections[1].forms[0]
    for column, name in [(form.offsets, "offset"), (form.heights, "height"), (form.x, "x"), (form.y, "y")]:
        assert column.dtype == np.float64 and column.shape == (len(form.points),)
        assert column.tolist() == [getattr(point, name) for point in form.points]


def test_nothing_is_copied_and_nothing_can_be_written() -> None:
    form = placed().sets[0].sections[1].forms[0]
    first, second = form.offsets, form.offsets
    assert np.shares_memory(first, second) and not first.flags.owndata
    assert form.heights.strides[0] > 8
    for array in (first, form.heights[1:]):
        assert not array.flags.writeable
        with pytest.raises(ValueError):
            array[0] = 1.0
    with pytest.raises(ValueError):
        first.flags.writeable = True


def test_unset_is_nan() -> None:
    form = placed().sets[0].sections[1].forms[0]
    form.points[1].offset = None
    assert np.isnan(form.offsets).tolist() == [p.offset is None for p in form.points]
    assert not form.offsets.flags.writeable
    assert vorn.BuildForm().offsets.shape == (0,)
    assert not np.shares_memory(form.offsets, form.offsets)


@pytest.mark.parametrize("change", [
    lambda d, f: setattr(f.points[0], "offset", 99.0),
    lambda d, f: setattr(f.points[0], "offset", None),
    lambda d, f: f.points.append(vorn.ComposedPoint("x")),
    lambda d, f: f.points.insert(0, vorn.ComposedPoint("x")),
    lambda d, f: f.points.clear(),
    lambda d, f: f.recalc(50.0),
    lambda d, f: d.sets[0].sections[1].mirror(),
    lambda d, f: d.sets[0].sections[1].forms.clear(),
    lambda d, f: d.sets[0].sections.clear(),
    lambda d, f: d.sets.clear(),
    lambda d, f: vorn.DesignEditor(d).mirror(),
    lambda d, f: d.convert(vorn.Edition.V2_0),
    lambda d, f: vorn.Project().take_design(d),
    lambda d, f: d.to_bytes(),
])
def test_an_array_keeps_what_it_showed(change) -> None:  # type: ignore[no-untyped-def]
    design = placed()
    form = design.sets[0].sections[1].forms[0]
    offsets, x = form.offsets, form.x
    before = offsets.tolist(), x.tolist()
    change(design, form)
    del design, form
    gc.collect()
    vorn.sample(sections=50)  # takes the memory that is free
    assert (offsets.tolist(), x.tolist()) == before


def test_a_form_goes_on_after_its_arrays() -> None:
    form = placed().sets[0].sections[1].forms[0]
    old = form.offsets
    form.points[0].offset = 99.0
    assert form.offsets[0] == 99.0 and old[0] == 0.0
    assert not np.shares_memory(form.offsets, old)
    point = form.points[0]
    point.offset = 98.0
    assert form.offsets[0] == 98.0


def test_a_form_with_arrays_is_added() -> None:
    form = vorn.BuildForm("a")
    form.points.extend([vorn.ComposedPoint("A", x=1.0), vorn.ComposedPoint("B", x=2.0)])
    x = form.x
    section = vorn.CrossSection(0.0)
    section.forms.append(form)
    form.points[0].x = 5.0
    assert x.tolist() == [1.0, 2.0] and section.forms[0].x.tolist() == [5.0, 2.0]
    kept = form.x
    del section.forms[0]
    form.points[0].x = 6.0
    assert (kept.tolist(), form.x.tolist()) == ([5.0, 2.0], [6.0, 2.0])


def test_ground() -> None:
    ground = vorn.GroundForm("現況")
    ground.points.extend([vorn.GroundPoint(-5.0, 1.5), vorn.GroundPoint(5.0, None)])
    assert ground.offsets.tolist() == [-5.0, 5.0]
    assert ground.heights[0] == 1.5 and np.isnan(ground.heights[1])
