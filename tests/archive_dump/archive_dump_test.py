#!/usr/bin/env python3
"""Holds tools/archive_dump.py against the library's own reading and writing: archive_dump_test.py ARCHIVE_PROBE

Every record is filled with values that all differ, for every store version. What the dumper reads from those bytes has
to be what the library reads, member by member; and what the library writes at a store version has to be, for the
dumper, the members that the version holds.
"""

import importlib.util
import io
import json
import os
import re
import struct
import subprocess
import sys
import tempfile
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
TOOL = os.path.join(ROOT, "tools", "archive_dump.py")
GOLDEN = os.path.join(ROOT, "tests", "data", "archives")
DESCRIPTION = os.path.join(ROOT, "docs", "archive-format.md")

sys.dont_write_bytecode = True
_description = importlib.util.spec_from_file_location("archive_dump", TOOL)
archive_dump = importlib.util.module_from_spec(_description)
_description.loader.exec_module(archive_dump)

VERSIONS = ["01.10", "01.11", "02.50", "03.00", "03.50", "04.00", "05.00", "05.50", "06.00", "06.50"]
# With " of " and a kind behind the name where alignments of that kind are meant.
RECORDS = [
    "linear-xml-data", "info-constrcut", "info-constrcut-parts", "road-center-data", "crs-data", "crs-data-array",
    "ctrl-points", "ctrl-points-with-groups", "ctrl-point", "ctrl-point-array", "bench-mark", "bench-mark-array",
    "gm-pnts", "gm-pnts-array", "gm-pnt", "gm-pnt-array", "road-gm-data", "road-gm-data of road-geometry",
    "old-road-gm-data", "old-road-gm-data of road-geometry", "road-info", "alignments", "alignments of road-geometry",
    "alignment", "alignment of road-geometry", "up-date", "project-data", "creator-info-data",
    "creator-info-data-array", "form-ctrl", "land-xml-data", "land-xml-project", "land-xml-cg-points",
    "land-xml-cg-point", "land-xml-alignment", "land-xml-alignment-array",
    "x-sections", "x-sections-array", "x-section", "x-section-array", "build-form", "build-form-array",
    "cross-point-info", "composed-pnt", "composed-pnt-array", "measure-infos", "measure-info", "form-ctrl-target",
    "form-ctrl-target-array", "form-ctrl-target-pnt", "form-ctrl-target-pnt-array", "existing-build-form",
    "existing-build-form-array", "existing-composed-pnt", "existing-composed-pnt-array", "pres-point",
    "structure-type", "structure-type-array", "file-info", "file-info-array", "host-file-info", "x-section-type",
    "pavement-settings", "name-registry", "name-list", "name-item",
]  # fmt: skip
UNASSIGNED = 0xFFFFFFFF

probe_path = None  # from the command line


def probe(*arguments, data):
    result = subprocess.run([probe_path, *arguments], input=data, capture_output=True, check=False)
    if result.returncode != 0:
        raise RuntimeError(f"archive_probe {' '.join(arguments)}: {result.stderr.decode()}")
    return result.stdout


def library_reads(data, record, version):
    return json.loads(probe("load", record, version, data=data))


def with_kind(record):
    """The name of a record, and the kind of its alignments."""
    name, _, kind = record.partition(" of ")
    return name, kind or archive_dump.FORM_CONTROL


def dumper_reads(data, record, version, written=False):
    name, kind = with_kind(record)
    return archive_dump.load(data, name, version, written=written, kind=kind)


def type_of(record):
    return archive_dump.type_of(with_kind(record)[0])


def dump(*arguments, data=b""):
    """The dumper as a person runs it: exit code, standard output, standard error."""
    result = subprocess.run([sys.executable, TOOL, *arguments], input=data, capture_output=True, check=False)
    return result.returncode, result.stdout.decode(), result.stderr.decode()


# --- bytes of records -------------------------------------------------------------------------------------------------


class Filler:
    """Writes records as a reader expects them, with a new value in every place."""

    def __init__(self, version, kind):
        self._version = version
        self._kind = kind
        self._last = 1000
        self._bytes = io.BytesIO()

    @staticmethod
    def fill(record, version):
        filler = Filler(version, with_kind(record)[1])
        filler._value(record, type_of(record))
        return filler._bytes.getvalue()

    def _next(self):
        self._last += 1
        return self._last

    def _pack(self, code, value):
        self._bytes.write(struct.pack("<" + code, value))

    def _value(self, name, type_):
        if isinstance(type_, str):
            self._record(type_, self._kind)
        elif isinstance(type_, archive_dump.OfKind):
            self._record(type_.record, type_.kind)
        elif isinstance(type_, archive_dump.COLLECTIONS):
            if isinstance(type_, archive_dump.NumberedList) and self._version >= "05.00":
                self._pack("I", self._next())
            self._pack("I", 2)
            for _ in range(2):
                self._value("", type_.element)
        elif isinstance(type_, archive_dump.TextList):
            self._bytes.write(b"\x02\0" if self._next() % 2 else b"\xff\xff\x02\0\0\0")
            for _ in range(2):
                self._text(f"文{self._next()}")
        elif isinstance(type_, archive_dump.OwnVersion):
            self._version = min(self._version, type_.newest or self._version)
            self._bytes.write(bytes([len(self._version)]) + self._version.encode())
        elif isinstance(type_, archive_dump.Table):
            self._table(type_)
        elif isinstance(type_, archive_dump.Number):
            self._pack(type_.code, self._number(type_.code))
        elif isinstance(type_, archive_dump.Bool):
            self._pack("B", (0, 1, 255)[self._next() % 3])
        elif isinstance(type_, (archive_dump.Real, archive_dump.Double)):
            self._real()
        elif isinstance(type_, archive_dump.Date):
            self._pack("i", self._next())
            self._pack("d", self._next() + 0.25)
        else:
            self._text(f"名{self._next()}" if name != "key" else self._full_width(self._next()))

    def _record(self, name, kind):
        outside = self._version, self._kind
        self._kind = kind
        for f in archive_dump.RECORDS[name]:
            if archive_dump.has_field(f, self._version, self._kind, written=False):
                self._value(f.name, f.type)
        self._version, self._kind = outside

    def _number(self, code):
        """Every other value has its highest bit, so that signed and unsigned ones are told apart."""
        value = self._next()
        if code == "i":
            return -value if value % 2 else value
        bits = 8 * struct.calcsize("<" + code)
        return (value | value % 2 << (bits - 1)) & ((1 << bits) - 1)

    def _real(self):
        self._pack("d", -1e-99 if self._next() % 7 == 0 else self._last + 0.125)

    def _text(self, text):
        """Every eighth text takes the length's second form."""
        data = text.encode("cp932")
        if self._last % 8 == 0:
            data += "ー".encode("cp932") * 150
            self._bytes.write(b"\xff" + struct.pack("<H", len(data)) + data)
        else:
            self._bytes.write(bytes([len(data)]) + data)

    @staticmethod
    def _full_width(number):
        return "".join(chr(ord("０") + int(digit)) for digit in str(number))

    def _table(self, type_):
        keys = sorted(type_.names) or [self._next() for _ in range(self._next() % 3)]
        self._pack("I", len(keys) + 2)
        for key in keys:
            self._pack("i", key)
            self._pack("B", 1)
            self._pack("i", self._next())
        self._pack("i", -self._next())
        self._pack("B", 2)
        self._real()
        self._pack("i", self._next())
        self._pack("B", 3)
        self._text("table")


# --- what the library makes of the bytes ------------------------------------------------------------------------------

NO_CROSSING = {
    "dist": None, "id": 0, "dekiPairID": UNASSIGNED, "thDPairIDs": [], "autoLinePrev": 1, "autoLineNext": 1,
}  # fmt: skip
NO_TARGETS = {"nextSerialID": 0, "items": []}
NO_SECTIONS = {
    "refAlign": "", "refVertical": "", "projectPhase": "", "alignment": True, "xSections": [],
    "formCtrlTargets": NO_TARGETS,
}  # fmt: skip
NO_DATES = {f"date{i}": {"status": 2, "days": 0.0} for i in (1, 2, 3)}
NO_NEW_ROAD = {
    "option": 0, "schemaVersion": 0, "option2": 0, "text": "", "xSectType": {}, "fileInfos": [],
    "structureType": {"type": "", "jobName": "", "company": "", "stationType": "NO"},
}  # fmt: skip
CONTROL_ITEMS = {
    "roadCenter": "道路中心", "roadLeft": "道路(左)", "roadRight": "道路(右)", "slopeLeft": "法面(左)",
    "slopeRight": "法面(右)", "roadSurface": "道路面", "bermLeft": "小段(左)", "bermRight": "小段(右)",
    "otherLeft": "その他(左)", "otherRight": "その他(右)",
}  # fmt: skip
# What a member has when the store version does not hold it, and the members that no archive holds.
DEFAULTS = {
    "info-constrcut-parts": {"storeVersion": "05.00"},
    "ctrl-points": {"gmPnts": [{"name": "", "name2": "", "points": []}]},
    "road-gm-data": NO_NEW_ROAD,
    "old-road-gm-data": NO_NEW_ROAD,
    "alignment": {"xSections": NO_SECTIONS, "upDate": NO_DATES},
    "form-ctrl": {"roadMarks": 0, "otherMarks": 0},
    "land-xml-data": {"flagAny": 1, "option1": 1, "option2": 0, "option3": 0, "value": 5.0, "texts": []},
    "x-sections": {"projectPhase": "", "alignment": True, "formCtrlTargets": NO_TARGETS},
    "x-section": {"directionAngle": "", "targetPntID": "", "sectionID": UNASSIGNED, "height": None},
    "build-form": {
        "xSectType": "", "serialID": UNASSIGNED, "xSectTypeID": 0, "parentID": UNASSIGNED, "paveSetIdx": 0,
        "category": 0, "crossLeft": NO_CROSSING, "crossRight": NO_CROSSING, "orgSurface": False, "export": 1,
    },
    "composed-pnt": {
        "elementType": -1, "dataType": -1, "serialID": UNASSIGNED, "parentID": UNASSIGNED, "id": 0, "thDPairIDs": [],
        "ratio": None, "percent": None, "orgID": UNASSIGNED, "targetIndex": 0, "drawID": UNASSIGNED,
        "drawPairIDs": [], "autoConnect": 0, "connected": 0, "lastCode": "", "oldCmpType": -1,
    },
    "composed-pnt-detail": {
        "code": "", "xSectType": 0, "xSectNameID": 0, "xSectName": "", "dekiPairID": UNASSIGNED, "autoLinePrev": 0,
        "autoLineNext": 0, "measure": [], "formID": UNASSIGNED,
    },
    "form-ctrl-target": {"serialID": UNASSIGNED, "targetPnts": [], "export": 1},
    "form-ctrl-target-pnt": {
        "serialID": 0, "buildFormID": 0, "sectionID": 0, "crossPointType": 0, "xSectType": 0, "sectNameID": 0,
        "pntID": UNASSIGNED, "side": -1,
    },
    "name-item": {"used": 0},
}  # fmt: skip
NO_MEMBERS = {"extension", "reserved", "reserved16", "reserved32", "reservedText1", "reservedText2"}
WRITTEN_WITHOUT_MEMBER = {"reserved": UNASSIGNED, "reservedText1": "", "reservedText2": ""}
AUTO_LINES = ("autoLinePrev", "autoLineNext")


def model(type_, dumped):
    """The library's object, from what the dumper read."""
    if isinstance(type_, archive_dump.OfKind):
        type_ = type_.record
    if isinstance(type_, archive_dump.NumberedList):
        items = [model(type_.element, item) for item in dumped["items"]]
        return {"nextSerialID": dumped.get("nextSerialID", 0), "items": items}
    if isinstance(type_, archive_dump.COLLECTIONS):
        return [model(type_.element, item) for item in dumped]
    if not isinstance(type_, str):
        return dumped
    members = dict(DEFAULTS.get(type_, {}))
    types = {f.name: f.type for f in archive_dump.RECORDS[type_]}
    members.update({name: model(types[name], value) for name, value in dumped.items() if name not in NO_MEMBERS})
    return MADE_FROM.get(type_, lambda same, _: same)(members, dumped)


def form_model(form, _):
    code = form.pop("oldWorkCode", None)
    if code is not None:
        form["xSectType"] = "切土工" if code else "盛土工"
    return form


def section_model(section, _):
    positions = section.pop("presPoints", None)
    if positions is not None:
        points = [{"clDist": p["first"], "gh": p["second"], "name": ""} for p in positions]
        section["existingBuildForms"] = [{"name": "", "composedPnts": points}] if points else []
    return section


def point_model(point, dumped):
    flags = [point.pop(name, 0) for name in AUTO_LINES]
    if "main" in point:
        point["elementType"] = next(e["value"] for e in dumped["extension"] if e["key"] == 1)
        flags += [dumped[role].get(name, 0) for role in ("main", "sub") for name in AUTO_LINES]
        point["oldCmpType"] = point["componentType"]
    else:
        main = dict(DEFAULTS["composed-pnt-detail"])
        main.update({name: point.pop(name) for name in list(main) if name in point})
        main.update(zip(AUTO_LINES, flags))
        point["lastCode"] = main["code"]
        point["main"] = main
        point["sub"] = dict(main, measure=[])
    for flag in flags:
        point["autoConnect"] |= flag
    return point


def form_control_model(form_control, dumped):
    """The names of an archive that does not have all of them do not count."""
    return form_control if "otherLeft" in dumped else form_control | CONTROL_ITEMS


def land_xml_model(data, _):
    if data["storeVersion"] == "01.10":
        data["flagAny"] = int(any(alignment["flag"] for alignment in data["alignments"]))
    return data


def registry_model(registry, _):
    return sorted(registry["classes"], key=lambda c: c["key"].encode("cp932"))


def pavement_model(_, dumped):
    values = {e["key"]: e["value"] for e in dumped["settings"] if e["type"] == "integer"}
    return {"paveID": values[1], "scaleID": values[2], "kindIDs": [values[100 + i] for i in range(14)]}


# How the library makes an object from members that it does not take as they stand.
MADE_FROM = {
    "x-section": section_model,
    "build-form": form_model,
    "composed-pnt": point_model,
    "form-ctrl": form_control_model,
    "land-xml-data": land_xml_model,
    "measure-infos": lambda members, _: members["infos"],
    "name-registry": registry_model,
    "name-list": lambda members, _: members["items"],
    "pavement-settings": pavement_model,
    "x-section-type": lambda _members, _dumped: {},
}


class Reading(unittest.TestCase):
    def test_the_dumper_reads_what_the_library_reads(self):
        for record in RECORDS:
            for version in VERSIONS:
                with self.subTest(record=record, version=version):
                    self.maxDiff = None
                    self.alike(Filler.fill(record, version), record, version)

    def alike(self, data, record, version=""):
        """Both read the same; gives what the library reads."""
        read = library_reads(data, record, version)
        self.assertEqual(model(type_of(record), dumper_reads(data, record, version)), read)
        return read

    def test_each_part_of_all_road_data_has_its_own_version(self):
        for versions in [("02.00", "05.00", "01.10"), ("06.00", "02.00", "01.11"), ("03.50", "06.50", "01.00")]:
            parts = zip(("info-constrcut", "road-center-data", "land-xml-data"), versions)
            data = b"".join(Filler.fill(record, version) for record, version in parts)
            read = self.alike(data, "linear-xml-data")
            self.assertEqual(tuple(part["storeVersion"] for part in read.values()), versions)

    def test_the_road_data_of_every_age_are_read_alike(self):
        files = sorted(name for name in os.listdir(GOLDEN) if name.startswith("road-"))
        self.assertGreaterEqual(len(files), 8)
        for name in files:
            with self.subTest(file=name), open(os.path.join(GOLDEN, name), "rb") as file:
                self.alike(file.read(), "linear-xml-data")

    def test_a_road_geometry_takes_its_version_for_a_number(self):
        for version in ["3", "+3.0", " 03.00", "\t10", ".3e1", "2.999", "0299e-2", "300e-3", "03e", "-3", "x", ""]:
            for record in ["road-gm-data", "road-gm-data of road-geometry", "old-road-gm-data"]:
                with self.subTest(record=record, version=version):
                    self.alike(Filler.fill(record, version), record, version)

    def test_the_flag_of_an_old_export_is_that_of_any_alignment(self):
        head = b"\x0501.10" + b"\0\0" + struct.pack("<iii", 0, 1, 0)
        alignment = b"\0\0" + struct.pack("<iHHH", 0, 1, 2, 3)
        flagged = b"\0\0" + struct.pack("<iHHH", -1, 1, 2, 3)
        for alignments, expected in [([], 0), ([alignment] * 2, 0), ([alignment, flagged], 1)]:
            data = head + struct.pack("<i", len(alignments)) + b"".join(alignments)
            self.assertEqual(self.alike(data, "land-xml-data")["flagAny"], expected)
        older = head.replace(b"01.10", b"01.09") + struct.pack("<i", 0)
        self.assertEqual(self.alike(older, "land-xml-data")["flagAny"], 1)

    def test_each_cut_is_noticed_by_both(self):
        for record in [
            "composed-pnt", "form-ctrl-target", "file-info", "name-registry", "cross-point-info", "form-ctrl",
            "land-xml-data", "project-data", "ctrl-points-with-groups", "road-gm-data of road-geometry",
        ]:  # fmt: skip
            data = Filler.fill(record, "06.00")
            for kept in range(0, len(data), 1 + len(data) // 25):
                with self.subTest(record=record, kept=kept):
                    self.assertRaises(archive_dump.ArchiveError, dumper_reads, data[:kept], record, "06.00")
                    self.assertRaises(RuntimeError, library_reads, data[:kept], record, "06.00")


# --- what the library writes ------------------------------------------------------------------------------------------


class Writing(unittest.TestCase):
    def written_matches(self, type_, dumped, whole, path):
        """Every member that the dumper finds in written bytes is the model's."""
        if isinstance(type_, archive_dump.OfKind):
            type_ = type_.record
        if isinstance(type_, archive_dump.NumberedList):
            self.assertEqual(dumped["nextSerialID"], whole["nextSerialID"], path)
            dumped, whole = dumped["items"], whole["items"]
        if isinstance(type_, archive_dump.COLLECTIONS):
            self.assertEqual(len(dumped), len(whole), path)
            for i, (item, member) in enumerate(zip(dumped, whole)):
                self.written_matches(type_.element, item, member, f"{path}[{i}]")
            return
        if not isinstance(type_, str):
            return self.assertEqual(dumped, whole, path)
        types = {f.name: f.type for f in archive_dump.RECORDS[type_]}
        for name, value in dumped.items():
            here = f"{path}.{name}"
            if name == "extension":
                keeps = type_ == "composed-pnt" and "main" in dumped
                entries = [{"key": 1, "type": "integer", "value": whole["elementType"]}] if keeps else []
                self.assertEqual(value, entries, here)
            elif name in NO_MEMBERS:
                self.assertEqual(value, WRITTEN_WITHOUT_MEMBER.get(name, 0), here)
            elif name == "storeVersion":
                self.assertEqual(value, types[name].newest or self.version, here)
            elif name in AUTO_LINES and type_ in ("composed-pnt", "composed-pnt-detail"):
                self.assertEqual(value, 0, here)
            elif name == "presPoints" or type_ == "x-section-type":
                self.assertEqual(value, [], here)
            elif type_ in ("measure-infos", "name-list", "name-registry"):
                self.written_matches(types[name], value, whole, here)
            elif type_ == "composed-pnt" and "main" not in dumped and name in whole["main"]:
                self.written_matches(types[name], value, whole["main"][name], here)
            else:
                self.written_matches(types[name], value, whole[name], here)

    def test_the_dumper_reads_what_the_library_writes(self):
        tables = ("x-section-type", "pavement-settings")
        for record in [name for name in RECORDS if name not in tables]:
            for version in VERSIONS:
                with self.subTest(record=record, version=version):
                    self.version = version
                    # A store version that fills every member which the version written has a place for.
                    source = "05.50" if version < "06.00" else "06.00"
                    data = Filler.fill(record, source)
                    stored = probe("store", record, source, version, data=data)
                    dumped = dumper_reads(stored, record, version, written=True)
                    self.written_matches(type_of(record), dumped, library_reads(data, record, source), record)

    def test_what_is_written_from_0500_on_reads_back_alike(self):
        for record in [name for name in RECORDS if not name.startswith("old-")]:
            for version in [v for v in VERSIONS if v >= "05.00"]:
                with self.subTest(record=record, version=version):
                    self.maxDiff = None
                    stored = probe("store", record, version, version, data=Filler.fill(record, version))
                    dumped = dumper_reads(stored, record, version)
                    self.assertEqual(model(type_of(record), dumped), library_reads(stored, record, version))

    def test_what_does_not_read_back_before_its_version(self):
        for record, version in [
            ("alignment", "02.00"), ("road-gm-data", "02.50"), ("form-ctrl", "02.00"), ("info-constrcut", "02.00"),
            ("road-center-data", "02.50"), ("old-road-gm-data", "06.00"),
        ]:  # fmt: skip
            with self.subTest(record=record):
                stored = probe("store", record, "06.00", version, data=Filler.fill(record, "06.00"))
                self.assertRaises(RuntimeError, library_reads, stored, record, version)
                self.assertRaises(archive_dump.ArchiveError, dumper_reads, stored, record, version)
                self.assertTrue(dumper_reads(stored, record, version, written=True))

    def test_the_export_is_written_in_its_newest_version(self):
        data = Filler.fill("land-xml-data", "01.10")
        self.assertEqual(dumper_reads(data, "land-xml-data", "")["storeVersion"], "01.10")
        stored = probe("store", "land-xml-data", "", "01.10", data=data)
        self.assertEqual(dumper_reads(stored, "land-xml-data", "")["storeVersion"], "01.11")

    def test_the_pavement_settings_are_written_with_all_their_keys(self):
        stored = probe("store", "pavement-settings", "06.00", "06.00", data=struct.pack("<I", 0))
        keys = [entry["key"] for entry in archive_dump.load(stored, "pavement-settings", "06.00")["settings"]]
        self.assertEqual(keys, [1, 2, *range(100, 114), *range(200, 206)])

    def test_a_collection_written_before_0500_is_not_readable(self):
        stored = probe("store", "form-ctrl-target-array", "05.50", "04.00",
                       data=Filler.fill("form-ctrl-target-array", "05.50"))  # fmt: skip
        self.assertRaises(RuntimeError, library_reads, stored, "form-ctrl-target-array", "04.00")
        self.assertRaises(archive_dump.ArchiveError, archive_dump.load, stored, "form-ctrl-target-array", "04.00")
        self.assertEqual(len(archive_dump.load(stored, "form-ctrl-target-array", "04.00", written=True)["items"]), 2)


# --- primitives -------------------------------------------------------------------------------------------------------


class Primitives(unittest.TestCase):
    def note(self, length_bytes, text):
        date = struct.pack("<id", 0, 1.5)
        data = date + date + length_bytes + text + struct.pack("<I", 0)
        dumped = archive_dump.load(data, "file-info", "06.00")
        self.assertEqual(dumped, library_reads(data, "file-info", "06.00") | {"extension": []})
        self.assertEqual(len(dumped["note"]), len(text))

    def test_texts_have_three_forms_of_length(self):
        self.note(b"\x00", b"")
        self.note(b"\xfe", b"n" * 0xFE)
        self.note(b"\xff\xff\x00", b"n" * 0xFF)
        self.note(b"\xff\xfd\xff", b"n" * 0xFFFD)
        self.note(b"\xff\xff\xff\xfe\xff\x00\x00", b"n" * 0xFFFE)
        self.note(b"\xff\xff\xff\x03\x00\x00\x00", b"abc")

    def test_counts_of_texts_have_two_forms(self):
        head, options = b"\x0501.11", struct.pack("<iiid", 1, 2, 3, 4.5)
        rest = b"\0\0" + struct.pack("<iiii", 0, 0, 0, 0)
        for count, texts in [
            (b"\0\0", 0), (b"\x01\0", 1), (b"\xfe\xff", 0xFFFE), (b"\xff\xff\xff\xff\0\0", 0xFFFF),
            (b"\xff\xff\x01\0\0\0", 1),
        ]:  # fmt: skip
            data = head + options + count + b"\x01t" * texts + rest
            dumped = dumper_reads(data, "land-xml-data", "")
            self.assertEqual(dumped["texts"], ["t"] * texts)
            self.assertEqual(library_reads(data, "land-xml-data", "")["texts"], ["t"] * texts)

    def test_counts_of_road_records_below_one_are_none(self):
        for count in (0, -1, -(1 << 31)):
            for record in ("crs-data-array", "land-xml-alignment-array"):
                data = struct.pack("<i", count)
                self.assertEqual(dumper_reads(data, record, "05.00"), [])
                self.assertEqual(library_reads(data, record, "05.00"), [])

    def test_a_double_is_never_unset(self):
        data = b"\0" + struct.pack("<i", 0) + b"\0" + struct.pack("<dii", -1e-99, 0, 0) + b"\0"
        dumped = dumper_reads(data, "crs-data", "05.00")
        self.assertEqual(dumped, library_reads(data, "crs-data", "05.00"))
        self.assertEqual(dumped["verticalHeight"], -1e-99)

    def test_reals_that_json_does_not_have(self):
        data = struct.pack("<Iddd", 0, float("inf"), float("nan"), -1e-99)
        dumped = archive_dump.load(data[:20], "pres-point", "06.00")
        self.assertEqual(dumped, {"extension": [], "first": "inf", "second": "nan"})
        dumped = archive_dump.load(data[12:] + struct.pack("<BI", 0, 0), "existing-composed-pnt", "06.00")
        self.assertEqual((dumped["clDist"], dumped["gh"]), ("nan", None))

    def test_bytes_that_are_no_character_are_not_lost(self):
        dumped = archive_dump.load(b"\0\0\0\0\x03a\x81\x30\0\0\0\0", "name-item", "06.00")
        self.assertEqual(dumped["name"].encode("cp932", "surrogateescape"), b"a\x810")


# --- damage -----------------------------------------------------------------------------------------------------------


class Damage(unittest.TestCase):
    def refused(self, data, record, offset, message, version="06.00"):
        with self.assertRaises(archive_dump.ArchiveError) as caught:
            archive_dump.load(data, record, version)
        self.assertEqual(caught.exception.offset, offset)
        self.assertIn(message, str(caught.exception))
        self.assertRaises(RuntimeError, library_reads, data, record, version)

    def test_counts_that_the_rest_cannot_back(self):
        self.refused(b"\x02\0\0\0" + b"\0" * 7, "pres-point", 0, "a count of 2, which the 7 bytes left")
        self.refused(b"\xff\xff\xff\xff" + b"\0" * 99, "file-info-array", 0, "a count of 4294967295")
        self.refused(b"\0\0\0\0\x05\0\0\0" + b"\0" * 19, "measure-infos", 4, "measure-infos.infos: a count of 5")

    def test_counts_that_the_rest_cannot_back_by_the_shortest_form(self):
        for record, least in archive_dump.LEAST_BYTES.items():
            if record in archive_dump.NUMBERED:
                continue  # the next serial comes first
            name = record + "-array"
            message = f"a count of 2, which the {2 * least - 1} bytes left cannot back"
            data = struct.pack("<I", 2) + b"\0" * (2 * least - 1)
            with self.assertRaises(archive_dump.ArchiveError) as caught:
                dumper_reads(data, name, "05.00")
            self.assertEqual((caught.exception.offset, message in str(caught.exception)), (0, True), record)
            try:
                dumper_reads(data + b"\0", name, "05.00")
            except archive_dump.ArchiveError as error:  # the count is believed, an element needs more
                self.assertGreaterEqual(error.offset, 4, record)

    def test_lists_of_more_texts_than_bytes(self):
        data = b"\x0501.11" + struct.pack("<iiidH", 1, 2, 3, 4.5, 9) + b"\0" * 8
        self.refused(data, "land-xml-data", 26, "a count of 9, which the 8 bytes left cannot back")

    def test_an_export_newer_than_the_library(self):
        self.refused(b"\x0501.12" + b"\0" * 99, "land-xml-data", 0, '"01.12" is newer than 01.11')

    def test_road_data_newer_than_the_library_are_shown(self):
        data = Filler.fill("info-constrcut", "07.00")
        self.assertRaisesRegex(RuntimeError, "newer", library_reads, data, "info-constrcut", "")
        self.assertEqual(dumper_reads(data, "info-constrcut", "")["storeVersion"], "07.00")

    def test_texts_that_end_behind_the_archive(self):
        self.refused(b"\0\0\0\0\x04abc", "name-item", 4, "a text of 4 bytes, but only 3 bytes are left")
        self.refused(b"\0\0\0\0\xff\xfe\xffa", "name-item", 4, "two-byte characters")

    def test_types_that_no_table_has(self):
        self.refused(b"\x01\0\0\0\x07\0\0\0\x04" + b"\0" * 99, "pres-point", 8, "type 4 of key 7")

    def test_places_name_the_member(self):
        data = struct.pack("<II", 0, 1) + struct.pack("<I", 0) + b"\x01"
        self.refused(data, "measure-infos", 12, "offset 12 (0xC), measure-infos.infos[0].first: 4 bytes expected")

    def test_bytes_left_over(self):
        self.refused(b"\0" * 22, "pres-point", 20, "2 bytes are left behind the record")


class CommandLine(unittest.TestCase):
    def test_a_tree_shows_offsets_and_names_values(self):
        data = struct.pack("<IdIIIIii", 0, -1e-99, 7, UNASSIGNED, 1, 9, 1, 0)
        code, out, error = dump("--version", "06.00", "--record", "cross-point-info", "-", data=data)
        self.assertEqual((code, error), (0, ""))
        self.assertEqual(
            out.splitlines(),
            [
                "00000000  cross-point-info",
                "00000000    extension: empty",
                "00000004    dist: unset",
                "0000000c    id: 7",
                "00000010    dekiPairID: unassigned",
                "00000014    thDPairIDs: 1",
                "00000018      [0]: 9",
                "0000001c    autoLinePrev: 1",
                "00000020    autoLineNext: 0",
            ],
        )

    def test_json_is_what_programs_get(self):
        data = Filler.fill("x-sections-array", "05.50")
        with tempfile.TemporaryDirectory() as directory:
            path = os.path.join(directory, "archive")
            with open(path, "wb") as file:
                file.write(b"head" + data + b"tail")
            code, out, error = dump(
                "--version", "05.50", "--record", "x-sections-array", "--json", "--offset", "4", "--partial", path
            )
        self.assertEqual((code, error), (0, ""))
        self.assertEqual(json.loads(out), archive_dump.load(data, "x-sections-array", "05.50"))

    def test_road_data_need_no_version(self):
        data = Filler.fill("linear-xml-data", "05.00")
        code, out, error = dump("--record", "linear-xml-data", "--json", "-", data=data)
        self.assertEqual((code, error), (0, ""))
        self.assertEqual(json.loads(out), dumper_reads(data, "linear-xml-data", ""))

    def test_the_kind_of_an_alignment_is_given(self):
        for kind in archive_dump.KINDS:
            data = Filler.fill(f"alignment of {kind}", "02.00")
            arguments = ("--version", "02.00", "--record", "alignment", "--kind", kind, "--json", "-")
            code, out, _ = dump(*arguments, data=data)
            self.assertEqual(code, 0)
            self.assertEqual("xSections" in json.loads(out), kind == archive_dump.ROAD_GEOMETRY)

    def test_enumerations_are_named_in_the_tree(self):
        data = Filler.fill("composed-pnt", "06.00")
        at = 4 + 9  # the second half of the first entry: its value
        data = data[: at - 4] + struct.pack("<i", 17) + data[at:]
        _, out, _ = dump("--version", "06.00", "--record", "composed-pnt", "-", data=data)
        self.assertIn("1 (elementType) = 17 (RetainingWall)", out)

    def test_damage_shows_what_came_before_it(self):
        code, out, error = dump("--version", "06.00", "--record", "pres-point", "-", data=b"\0" * 13)
        self.assertEqual(code, 1)
        self.assertIn("first: 0.0", out)
        self.assertEqual(
            error, "archive_dump: -: offset 12 (0xC), pres-point.second: 8 bytes expected, but only 1 are left\n"
        )
        code, out, _ = dump("--version", "06.00", "--record", "pres-point", "--json", "-", data=b"\0" * 13)
        self.assertEqual((code, out), (1, ""))

    def test_misuse(self):
        for arguments in [
            ("--version", "6.0", "--record", "pres-point", "-"),
            ("--version", "06.00", "--record", "road", "-"),
            ("--version", "06.00", "--record", "pres-point", "--offset", "1", "-"),
            ("--version", "06.00", "--record", "pres-point", "/nonexistent/archive"),
            ("--record", "pres-point", "-"),
            ("--record", "road-gm-data", "-"),
            ("--version", "05.00", "--record", "alignment", "--kind", "other", "-"),
        ]:
            with self.subTest(arguments=arguments):
                code, out, error = dump(*arguments)
                self.assertEqual((code, out), (2, ""))
                self.assertNotEqual(error, "")


# --- the description of the format ------------------------------------------------------------------------------------


class Description(unittest.TestCase):
    """docs/archive-format.md tells what the dumper does."""

    def setUp(self):
        with open(DESCRIPTION, encoding="utf-8") as file:
            self.lines = file.read().splitlines()

    def tables(self):
        """The rows of every record's table; those of the two layouts of a composed point behind each other."""
        records, record, columns = {}, None, None
        for line in self.lines:
            name = re.match(r"`([a-z-]+)`(?:,|$| is the form)", line)
            if name or line.startswith("#"):
                record, columns = name and name.group(1), None
            elif line.startswith("**Before 06.00**"):
                record, columns = "composed-pnt", None
            elif line.startswith("| Field |") and record:
                columns = [cell.strip() for cell in line.strip("|").split("|")]
            elif columns and line.startswith("|") and not line.startswith("|---"):
                cells = dict(zip(columns, [cell.strip() for cell in line.strip("|").split("|")]))
                records.setdefault(record, []).append(cells)
        return records

    @staticmethod
    def condition(cell):
        cell = cell.replace("always", "").replace(",", "").replace("≥", ">=").replace("≤", "<=")
        cell = cell.replace("road geometry", archive_dump.ROAD_GEOMETRY)
        return re.sub(r"(number|integer|[<>=]) ", r"\1", cell)

    @staticmethod
    def kind(type_):
        """What the description calls a type, without what it points to."""
        if isinstance(type_, str):
            return f"record `{type_}`"
        numbers = {"B": "`u8`", "H": "`u16`", "I": "`u32`", "i": "`i32`"}
        kinds = {
            archive_dump.OfKind: lambda: f"record `{type_.record}` of kind {type_.kind.replace('-', ' ')}",
            archive_dump.OwnVersion: lambda: "`text`",
            archive_dump.TextList: lambda: "list of texts",
            archive_dump.SignedList: lambda: "signed collection of",
            archive_dump.Number: lambda: numbers[type_.code],
            archive_dump.NumberedList: lambda: "numbered collection of",
            archive_dump.List: lambda: "list of" if type_.element is archive_dump.ID else "collection of",
        }
        return kinds.get(type(type_), lambda: f"`{type(type_).__name__.lower()}`")()

    def test_the_tables_are_those_of_the_dumper(self):
        described = self.tables()
        for record, fields in archive_dump.RECORDS.items():
            if record in ("x-section-type", "pavement-settings"):
                continue  # one table of values each
            with self.subTest(record=record):
                rows = described[record]
                self.assertEqual([row["Field"] for row in rows], [f.name for f in fields])
                for row, f in zip(rows, fields):
                    always = row.get("Versions", "always")
                    self.assertEqual(self.condition(row.get("Read", always)), f.read, f.name)
                    written = self.condition(row.get("Written", always))
                    self.assertEqual(written, f.written, f.name)
                    kind = row["Type"].replace("`id`", "`u32`").replace("`enum`", "`i32`")
                    self.assertTrue(kind.startswith(self.kind(f.type)), f"{f.name}: {kind}")

    def test_the_shortest_forms_are_those_of_the_dumper(self):
        first = self.lines.index("### Shortest forms")
        rows = [line for line in self.lines[first:] if line.startswith("| `")]
        pairs = [re.findall(r"`([a-z-]+)` \| (\d+)", row) for row in rows]
        described = {record: int(least) for row in pairs for record, least in row}
        for record, least in archive_dump.LEAST_BYTES.items():
            self.assertEqual(described[record], least)
            self.assertEqual(least, min(self.shortest(record, version) for version in VERSIONS), record)
        self.assertEqual(described.keys(), archive_dump.LEAST_BYTES.keys())

    def shortest(self, type_, version):
        """The bytes of a value that is empty wherever it can be."""
        if isinstance(type_, str):
            fields = archive_dump.RECORDS[type_]
            held = [f for f in fields if archive_dump.has_field(f, version, archive_dump.FORM_CONTROL, written=False)]
            return sum(self.shortest(f.type, version) for f in held)
        if isinstance(type_, archive_dump.Number):
            return struct.calcsize("<" + type_.code)
        if isinstance(type_, archive_dump.NumberedList):
            return 8 if version >= "05.00" else 4
        sizes = {
            archive_dump.Bool: 1, archive_dump.Text: 1, archive_dump.Real: 8, archive_dump.Double: 8,
            archive_dump.Date: 12, archive_dump.Table: 4, archive_dump.List: 4, archive_dump.SignedList: 4,
        }  # fmt: skip
        return sizes[type(type_)]

    def test_the_enumerations_are_those_of_the_dumper(self):
        """Each value that the page names in a table is named alike in the tree."""
        fields = [f for record in archive_dump.RECORDS.values() for f in record]
        shows = {f.name: f.type.show for f in fields if isinstance(f.type, archive_dump.Number)}
        for title, name in [
            ("Geodetic datum", "geoDatum"), ("Control point class", "ctrlClass"), ("Bench mark class", "bmClass"),
            ("Road class", "classificat"), ("Design speed", "designSpeed"), ("Element type", None),
            ("Component type", "componentType"), ("Control item", "controlItem"),
            ("Pair of points", "targetPntType"),
        ]:  # fmt: skip
            show = shows[name] if name else archive_dump.ELEMENT_TYPE.show
            first = self.lines.index("#### " + title)
            section = self.lines[first + 1 :]
            ends = [i for i, line in enumerate(section) if line.startswith("#")]
            named = re.findall(r"\| (-?\d+) \| (\w+) (?=\|)", " ".join(section[: ends[0]]))
            self.assertGreater(len(named), 4, title)
            for value, text in named:
                self.assertEqual(show(int(value)), f"{value} ({text})", title)

    def example_is_read(self, number, record, version):
        """An example of the page is what the library reads and writes and what the dumper prints."""
        example = "\n".join(self.lines).split("```")[2 * number + 1].strip("\n")
        hexes = [(line[:4].strip(), line[5:56]) for line in example.split("\n")]
        data = b"".join(bytes.fromhex(text) for _, text in hexes)
        at = 0
        for offset, text in hexes:
            if offset:
                self.assertEqual(int(offset, 16), at)
            at += len(bytes.fromhex(text))
        self.assertEqual(library_reads(data, record, version), model(record, dumper_reads(data, record, version)))
        self.assertEqual(probe("store", record, version, version, data=data), data)
        _, out, _ = dump("--version", version, "--record", record, "-", data=data)
        self.assertEqual([line[56:] for line in example.split("\n")], [line[10:] for line in out.splitlines()])
        return data

    def test_the_cross_section_is_what_the_library_reads(self):
        self.assertEqual(len(self.example_is_read(0, "x-section", "06.00")), 487)

    def test_the_new_road_data_are_what_the_library_reads(self):
        self.example_is_read(1, "linear-xml-data", "05.00")


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    probe_path = sys.argv.pop(1)
    unittest.main()
