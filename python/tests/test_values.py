"""Values in both directions: unset is None, text is str, dates are datetimes, enumerations are Python's."""

from __future__ import annotations

import datetime
import enum

import pytest

import vorn


def test_unset_is_none() -> None:
    point = vorn.ComposedPoint()
    assert (point.offset, point.height, point.side, point.data_type) == (None, None, None, None)
    point.offset = -3
    assert point.offset == -3.0 and isinstance(point.offset, float)
    point.offset = None
    assert point.offset is None
    point.side = vorn.Side.LEFT
    assert point.side is vorn.Side.LEFT
    point.side = None
    assert point.side is None
    assert (point.serial_id, vorn.BuildForm().parent_id) == (None, None)
    point.serial_id = 7
    assert point.serial_id == 7
    point.serial_id = None
    assert point.serial_id is None
    target_point = vorn.ControlTargetPoint()
    assert (target_point.offset, target_point.elevation, target_point.station) == (None, None, None)


def test_text_is_str() -> None:
    section = vorn.CrossSection(name="測点No.1～①")
    assert section.name == "測点No.1～①"
    section.name = ""
    assert section.name == ""


def test_dates() -> None:
    info = vorn.FileInfo()
    assert (info.create_date, info.change_date) == (None, None)
    moment = datetime.datetime(2024, 2, 29, 23, 59, 58)
    info.create_date = moment
    assert info.create_date == moment
    info.create_date = moment.replace(microsecond=999999)
    assert info.create_date == moment
    info.create_date = None
    assert info.create_date is None
    for year in (100, 1899, 1900, 9999):
        date = datetime.datetime(year, 12, 31, 12, 0, 1)
        assert vorn.FileInfo(date).create_date == date
    with pytest.raises(ValueError):
        info.create_date = datetime.datetime(99, 1, 1)
    with pytest.raises(ValueError):
        info.create_date = moment.replace(tzinfo=datetime.timezone.utc)
    with pytest.raises(TypeError):
        info.create_date = datetime.date(2024, 1, 1)  # type: ignore[assignment]

    design = vorn.DesignDocument()
    design.file_infos.append(vorn.FileInfo(moment, moment, "註"))
    design.sets.append(vorn.CrossSectionSet("a", "b"))
    [read] = vorn.DesignDocument.from_bytes(design.to_bytes()).file_infos
    assert (read.create_date, read.change_date, read.note) == (moment, moment, "註")


def test_enumerations() -> None:
    assert issubclass(vorn.Side, enum.Enum)
    assert vorn.Edition("4.1") is vorn.Edition.V4_1
    assert vorn.Side.LEFT.value == 1
    assert vorn.Side.LEFT.__class__.__module__ == "vorn"
    point = vorn.ComposedPoint()
    for member in vorn.ElementType:
        point.element_type = member
        assert point.element_type is member
    for kind in vorn.ComponentType:
        point.component_type = kind
        assert point.component_type is kind


def test_speed() -> None:
    road = vorn.Project().data.construction.road_geometry.road
    road.speed_kmh = 60
    with pytest.raises(ValueError, match="61 km/h"):
        road.speed_kmh = 61
    assert road.design_speed is vorn.DesignSpeed.KMH60
    road.speed_kmh = None
    speeds = [road.speed_kmh, road.design_speed]
    assert speeds == [None, None]


def test_both_roles_of_a_point() -> None:
    point = vorn.ComposedPoint("A")
    assert (point.sub_code, point.pair_id, point.sub_pair_id, point.form_id, point.sub_form_id) == ("", *[None] * 4)
    assert point.measurements == point.sub_measurements == []
    point.xsect_type_id, point.sub_xsect_type_id = 1, 2
    point.xsect_name_id, point.sub_xsect_name_id = 3, 4
    point.pair_id, point.sub_pair_id, point.form_id, point.sub_form_id = 5, 6, 7, 8
    point.measurements, point.sub_measurements = [(1, -2)], [(3, 4), (5, 6)]
    point.sub_connects_to_previous = point.connects_to_next = True
    other = point.copy()
    point.sub_measurements = []
    assert (other.xsect_type_id, other.sub_xsect_type_id, other.xsect_name_id, other.sub_xsect_name_id) == (1, 2, 3, 4)
    assert (other.pair_id, other.sub_pair_id, other.form_id, other.sub_form_id) == (5, 6, 7, 8)
    assert (other.measurements, other.sub_measurements) == ([(1, -2)], [(3, 4), (5, 6)])
    connects = [other.connects_to_previous, other.connects_to_next, other.sub_connects_to_previous,
                other.sub_connects_to_next]
    assert connects == [False, True, True, False]
    other.sub_pair_id = None
    assert other.sub_pair_id is None and other.pair_id == 5
    with pytest.raises(TypeError, match="sub_measurements"):
        point.sub_measurements = [(1, 2, 3)]  # type: ignore[list-item]


def test_connections_of_a_point() -> None:
    point = vorn.ComposedPoint()
    point.draw_pair_ids, point.spatial_pair_ids, point.connection_id = [1, 2], [3], 4
    point.connects_by_itself = point.is_connected = True
    point.target_index = 5
    other = point.copy()
    assert (other.draw_pair_ids, other.spatial_pair_ids, other.connection_id) == ([1, 2], [3], 4)
    assert other.connects_by_itself and other.is_connected and other.target_index == 5
