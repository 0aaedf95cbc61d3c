"""The user's settings as a mapping."""

from __future__ import annotations

import collections.abc
from pathlib import Path
from typing import Any, Callable

import pytest

import vorn


def test_it_is_a_mapping(tmp_path: Path) -> None:
    settings = vorn.UserSettings.at(tmp_path / "a.toml")
    assert isinstance(settings, collections.abc.Mapping)
    assert len(settings) == len(list(settings)) == len(settings.keys()) == len(settings.values())
    assert dict(settings) == dict(settings.items())
    assert "RoadInfo.speed" in settings and "roadinfo.SPEED" in settings and "RoadInfo.sped" not in settings
    assert settings.get("RoadInfo.sped") is None and settings.get("RoadInfo.sped", 5) == 5
    for use in (settings.__getitem__, settings.is_stored, settings.default):
        with pytest.raises(KeyError):
            use("RoadInfo.sped")
    assert repr(settings) == f"<vorn.UserSettings in {tmp_path / 'a.toml'}>"
    assert not (tmp_path / "a.toml").exists()


def test_values(tmp_path: Path) -> None:
    path = tmp_path / "a.toml"
    settings = vorn.UserSettings.at(path)
    text = next(name for name, value in settings.items() if isinstance(value, str))
    assert settings["RoadInfo.speed"] == settings.default("RoadInfo.speed")
    assert not settings.is_stored("RoadInfo.speed")
    settings["RoadInfo.speed"] = 3
    settings[text] = "道路中心"
    assert (settings["RoadInfo.speed"], settings[text], settings.is_stored(text)) == (3, "道路中心", True)
    assert settings.meaning("RoadInfo.speed", 3) == "60 km/h"
    assert settings.meaning("RoadInfo.speed", 99) is None and settings.meaning(text, "a") is None
    assert vorn.UserSettings.at(path)["RoadInfo.speed"] == 3
    wrong: list[tuple[str, int | str, type[Exception]]]
    wrong = [("RoadInfo.speed", 99, ValueError), ("RoadInfo.speed", "60", TypeError),
             (text, 1, TypeError), (text, "é", vorn.TextError), ("RoadInfo.sped", 1, KeyError)]
    for name, value, error in wrong:
        with pytest.raises(error):
            settings[name] = value
    assert settings["RoadInfo.speed"] == 3


def test_the_total_station_edition_is_apart(tmp_path: Path) -> None:
    path = tmp_path / "a.toml"
    vorn.UserSettings.at(path, total_station=True)["RoadInfo.speed"] = 3
    assert vorn.UserSettings.at(path, total_station=True)["RoadInfo.speed"] == 3
    assert not vorn.UserSettings.at(path).is_stored("RoadInfo.speed")


def test_a_place_that_cannot_be_read_or_written(tmp_path: Path) -> None:
    path = tmp_path / "a.toml"
    path.write_text("this is [ not TOML", encoding="utf-8")
    with pytest.warns(RuntimeWarning, match="a.toml"):
        assert vorn.UserSettings.at(path)["RoadInfo.speed"] == vorn.UserSettings.default("RoadInfo.speed")
    (tmp_path / "file").write_text("", encoding="utf-8")
    with pytest.raises(vorn.DocumentError):
        vorn.UserSettings.at(tmp_path / "file" / "a.toml")["RoadInfo.speed"] = 3


def test_projects_take_and_give_settings(tmp_path: Path) -> None:
    settings = vorn.UserSettings.at(tmp_path / "a.toml")
    project = vorn.Project()
    names, geometry = project.data.construction.control_names, project.data.construction.road_geometry
    names.road_center, names.slope_marks = "中心", vorn.MarkType.CAPITALS
    geometry.road.speed_kmh, geometry.road.traffic_class = 60, 3
    settings.store_names(names)
    settings.store_road(geometry)
    assert (settings["FormCtrl.basec"], settings["RoadInfo.speed"], settings["RoadInfo.traffic"]) == ("中心", 3, 3)

    new = vorn.Project().data.construction
    assert new.control_names.road_center != "中心"
    settings.load_names(new.control_names)
    settings.load_road(new.road_geometry)
    assert (new.control_names.road_center, new.control_names.slope_marks) == ("中心", vorn.MarkType.CAPITALS)
    assert (new.road_geometry.road.speed_kmh, new.road_geometry.road.traffic_class) == (60, 3)
    (tmp_path / "file").write_text("", encoding="utf-8")
    nowhere = vorn.UserSettings.at(tmp_path / "file" / "a.toml")
    with pytest.raises(vorn.DocumentError):
        nowhere.store_names(names)
    with pytest.raises(vorn.DocumentError):
        nowhere.store_road(geometry)


def test_the_tool_has_the_same(tmp_path: Path, tool: Callable[..., Any], monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv("XDG_CONFIG_HOME", str(tmp_path))
    settings = vorn.UserSettings()
    settings["RoadInfo.speed"] = 3
    told = tool("settings", "list", "--json")
    assert told["place"] == settings.place
    assert {row["key"]: row["value"] for row in told["settings"]} == dict(settings)
