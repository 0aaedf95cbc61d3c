"""An element keeps alive what it stands in; threads share designs safely."""

from __future__ import annotations

import gc
import threading
import time
import weakref
from pathlib import Path

import pytest

import vorn


def test_an_element_keeps_its_document() -> None:
    point = vorn.sample(sections=2).sets[0].sections[0].forms[0].points[0]
    offsets = vorn.sample(sections=2).sets[0].sections[0].forms[0].x
    gc.collect()
    vorn.sample(sections=20)
    assert point.code and len(offsets) > 0
    point.code = "Z"
    assert point.code == "Z"


def test_nothing_is_kept_for_ever() -> None:
    design = vorn.sample(sections=2)
    watched = weakref.ref(design)
    section = design.sets[0].sections[0]
    assert section.name is not None
    del design, section
    gc.collect()
    assert watched() is None


def test_iterating_while_the_collection_shrinks() -> None:
    sections = vorn.sample(sections=10).sets[0].sections
    seen = 0
    for _ in sections:
        sections.pop()
        seen += 1
    assert seen == 5


def test_many_handles_and_changes() -> None:
    design = vorn.sample(sections=30)
    sections = design.sets[0].sections
    held = [(s, s.forms, s.forms[0], s.forms[0].points[0], s.forms[0].x) for s in sections]
    for i in range(0, 20, 2):
        del sections[i % len(sections)]
        sections.insert(0, vorn.CrossSection(float(-i)))
    for section, forms, form, point, x in held:
        assert forms[0] is form and form.points[0] is point and x[0] == point.x
    sections.clear()
    del design, sections
    gc.collect()
    for section, forms, form, point, x in held:
        assert forms[0] is form and point.code is not None
        form.points.append(vorn.ComposedPoint("new"))
        assert len(x) == len(form.points) - 1


def run(*jobs) -> None:  # type: ignore[no-untyped-def]
    errors = []

    def guarded(job) -> None:  # type: ignore[no-untyped-def]
        try:
            job()
        except BaseException as error:
            errors.append(error)

    threads = [threading.Thread(target=guarded, args=(job,)) for job in jobs]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    if errors:
        raise errors[0]


def test_documents_in_several_threads(tmp_path: Path) -> None:
    data: dict[vorn.Edition, bytes] = {edition: vorn.DesignDocument.read(path).to_bytes() for edition, path in (
        (edition, Path(__file__).parents[2] / "tests" / "data" / "documents" / f"all_elements_{edition.value}.xml")
        for edition in vorn.Edition if edition is not vorn.Edition.ROAD_GEOMETRY)}

    def job(edition: vorn.Edition) -> None:
        for _ in range(20):
            design = vorn.DesignDocument.from_bytes(data[edition])
            assert design.edition is edition
            assert design.to_bytes() == data[edition]
            for section in design.sets[0].sections:
                assert section.is_valid in (True, False)

    run(*[lambda edition=edition: job(edition) for edition in data for _ in range(2)])


def test_others_go_on_while_a_document_is_read() -> None:
    data = vorn.sample(sections=3000).to_bytes()
    done = threading.Event()
    ticks = 0

    def read() -> None:
        vorn.DesignDocument.from_bytes(data)
        done.set()

    thread = threading.Thread(target=read)
    thread.start()
    while not done.is_set():
        ticks += 1
        time.sleep(0.001)
    thread.join()
    assert ticks > 3  # with the lock held there would be one or two


def test_a_design_at_work_is_busy() -> None:
    design = vorn.sample(sections=3000)
    point = design.sets[0].sections[0].forms[0].points[0]
    x = design.sets[0].sections[0].forms[0].x
    first = x[0]
    done = threading.Event()
    seen: list[float] = []

    def write() -> None:
        for _ in range(100):
            design.to_bytes()
            if seen:
                break
        done.set()

    thread = threading.Thread(target=write)
    thread.start()
    while not done.is_set():
        try:
            point.code = "W"
        except vorn.BusyError:
            seen.append(x[0])
        time.sleep(0.001)
    thread.join()
    assert seen and set(seen) == {first}
    assert point.code is not None
    with pytest.raises(vorn.Error):
        raise vorn.BusyError()
