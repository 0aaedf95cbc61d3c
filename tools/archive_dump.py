#!/usr/bin/env python3
"""Prints a record of the project archive as a tree, each value with its offset in the file.

    tools/archive_dump.py --record linear-xml-data FILE
    tools/archive_dump.py --version 05.00 --record x-sections FILE
    tools/archive_dump.py --version 06.00 --record file-info-array --json - < FILE

An archive does not tell what it holds, and nearly no record tells its store version: the application that wrote it
knows both, and they have to be given here. The three parts of all road data carry their versions themselves. The name
of a record with "-array" behind it is a collection of such records. docs/archive-format.md describes the bytes; the
tables below are that description as data.

Exit codes: 0 the record was read, 1 the data is damaged or more bytes follow, 2 the command was misused or the file
could not be read.
"""

import argparse
import functools
import json
import math
import os
import re
import struct
import sys
from collections import namedtuple

# --- types -----------------------------------------------------------------------------------------------------------

# A value of fixed width: struct format, and how the tree shows it.
Number = namedtuple("Number", "code show")
Bool = namedtuple("Bool", "")
Text = namedtuple("Text", "")
Real = namedtuple("Real", "")
# A real that is never unset.
Double = namedtuple("Double", "")
Date = namedtuple("Date", "")
# The store version of the record that it heads: every other field goes by it. newest is the last one that is known,
# None when the application says which one it takes.
OwnVersion = namedtuple("OwnVersion", "newest")
# An extension table; names tells what its keys stand for.
Table = namedtuple("Table", "names")
# 32-bit count, then the elements: a type or the name of a record.
List = namedtuple("List", "element")
# A list that numbers its elements: before the count the next serial.
NumberedList = namedtuple("NumberedList", "element")
# A list whose count has a sign: below 1 it is empty.
SignedList = namedtuple("SignedList", "element")
# A count of 16 bits, or 0xFFFF and 32 bits, then the texts.
TextList = namedtuple("TextList", "")
# A record that holds data of a kind, which tells whether its alignments have cross sections.
OfKind = namedtuple("OfKind", "record kind")

COLLECTIONS = (List, NumberedList, SignedList)
KINDS = FORM_CONTROL, ROAD_GEOMETRY = "form-control", "road-geometry"

UNSET_REAL = -1e-99
UNASSIGNED = 0xFFFFFFFF


def enumeration(**names):
    texts = {value: name.rstrip("_") for name, value in names.items()}
    return Number("i", lambda value: f"{value} ({texts[value]})" if value in texts else str(value))


U8 = Number("B", str)
U16 = Number("H", str)
I32 = Number("i", str)
U32 = Number("I", str)
ID = Number("I", lambda value: "unassigned" if value == UNASSIGNED else str(value))
BITS = Number("I", lambda value: f"0x{value:08X}")
POINT_TYPE = Number("H", lambda value: f"0x{value:04X}" + " (KE)" * (value & 1) + " (cross)" * (value >> 1 & 1))
WORK_CODE = Number("i", lambda value: f"{value} ({'切土工' if value else '盛土工'})")
BOOL = Bool()
TEXT = Text()
REAL = Real()
DOUBLE = Double()
DATE = Date()
TEXTS = TextList()
TABLE = Table({})
IDS = List(ID)

DATE_STATUSES = {-1: "error", 0: "valid", 1: "invalid", 2: "null"}

LOCATION = enumeration(Unset=-1, Center=0, Left=1, Right=2)
EXISTENCE = enumeration(Unset=-1, Empty=0, false=1, true=2)
DATA_TYPE = enumeration(Unset=-1, WidthHeight=0, Percent=1, Rate=2)
SLOPE_TYPE = enumeration(Unset=-1, Percent=0, Rate=1)
COMPONENT_TYPE = enumeration(
    Unset=-1, RoadbedFill=0, RoadbedCut=1, SlopeFill=2, SlopeCut=3, BermFill=4, BermCut=5, Other=6, Roadbed=7,
    Slope=8, Berm=9,
)  # fmt: skip
ELEMENT_TYPE = enumeration(
    Unset=-1, Carriageway=0, Median=1, Shoulder=2, StoppingLane=3, Sidewalk=4, PlantingStrip=5, FrontageRoad=6,
    TrackBed=7, Separator=8, MarginalStrip=9, Subgrade=10, RoadBody=11, Excavation=12, SlopeFill=13, SlopeCut=14,
    BermFill=15, BermCut=16, RetainingWall=17, SideDitch=18, Pavement=19, Other=20, LeveeCrown=21,
    EarthworkSurfaceFill=22,
)  # fmt: skip
CATEGORY = enumeration(None_=0, Structure=1)
WORK_TYPE = enumeration(Unset=-1, CutWork=0, FillWork=1)
CONTROL_ITEM = enumeration(
    Unset=-1, SlopeLength=0, Width=1, Height=2, Thickness=3, Depth=4, XSectArea=5, Length=6, Area=7
)
TARGET_PNT_TYPE = enumeration(
    Unset=-1, ShoulderToe=0, ToeShoulder=1, InnerOuter=2, LeftRight=3, TargetPnt=4, UpperLower=5, LowerUpper=6
)
CROSS_POINT_TYPE = enumeration(None_=0)
GEO_DATUM = enumeration(Unset=-1, Jgd2000=0, Tokyo=1, World=2, Jgd2011=3)
HORIZON_COORDINATE = enumeration(Unset=-1, Geodetic=19, **{f"Plane{i + 1}": i for i in range(19)})
CTRL_CLASS = enumeration(
    Unset=-1, GnssStation=0, FirstOrder=1, SecondOrder=2, ThirdOrder=3, FourthOrder=4, Grade1=5, Grade2=6, Grade3=7,
    Grade4=8,
)  # fmt: skip
BM_CLASS = enumeration(
    Unset=-1, FirstOrder=0, SecondOrder=1, ThirdOrder=2, Grade1=3, Grade2=4, Grade3=5, Grade4=6, Simple=7
)
CLASSIFICAT = enumeration(
    Unset=-1, Type1Class1=0, Type1Class2=1, Type1Class3=2, Type1Class4=3, Type2Class1=4, Type2Class2=5, Type3Class1=6,
    Type3Class2=7, Type3Class3=8, Type3Class4=9, Type3Class5=10, Type4Class1=11, Type4Class2=12, Type4Class3=13,
    Type4Class4=14,
)  # fmt: skip
DESIGN_SPEED = enumeration(
    Unset=-1, Kmh120=0, Kmh100=1, Kmh80=2, Kmh60=3, Kmh50=4, Kmh40=5, Kmh30=6, Kmh20=7
)  # fmt: skip
SCHEMA_VERSION = enumeration(VersionUnknown=-2, Version20=0, Version40=1, Version41=2)
PROJ_PHASE = enumeration(Outline=0, Preliminary=1, Detailed=2, Construction=3)
MARK_TYPE = enumeration(Digits=0, Capitals=1, SmallLetters=2)

ELEMENT_TYPE_KEY = 1
PAVEMENT_KEYS = {1: "paveID", 2: "scaleID"}
PAVEMENT_KEYS.update({100 + i: f"kindID[{i}]" for i in range(14)})
PAVEMENT_KEYS.update({200 + i: f"furtherID[{i}]" for i in range(6)})

# --- records ---------------------------------------------------------------------------------------------------------

# A field of a record. `read` and `written` tell in which store versions it is read and written, as conditions that
# all have to hold: "" for always, ">=04.00 <05.00", "never". "number<3" and "integer>=3" look at the number that the
# version begins with. Behind " or " stands another way to hold; "road-geometry" does for data of that kind.
Field = namedtuple("Field", "name type read written")


def field(name, type_, read="", written=None):
    return Field(name, type_, read, read if written is None else written)


EXTENSION = field("extension", TABLE)

RECORDS = {
    "linear-xml-data": [
        field("infoConstrcut", "info-constrcut"),
        field("roadCenter", "road-center-data"),
        field("landXml", "land-xml-data"),
    ],
    "info-constrcut": [
        field("storeVersion", OwnVersion(None)),
        field("crsArray", SignedList("crs-data")),
        field("ctrlPoints", "ctrl-points"),
        field("roadGm", OfKind("road-gm-data", FORM_CONTROL)),
        field("formCtrl", "form-ctrl"),
    ],
    "info-constrcut-parts": [
        field("crsArray", SignedList("crs-data")),
        field("ctrlPoints", "ctrl-points"),
        field("roadGm", OfKind("road-gm-data", FORM_CONTROL)),
        field("formCtrl", "form-ctrl"),
    ],
    "road-center-data": [
        field("storeVersion", OwnVersion(None)),
        field("project", "project-data"),
        field("crsArray", SignedList("crs-data")),
        field("gmPnts", SignedList("gm-pnts")),
        field("roadGm", OfKind("road-gm-data", ROAD_GEOMETRY)),
    ],
    "crs-data": [
        field("name", TEXT),
        field("geoDatum", GEO_DATUM),
        field("verticalDatum", TEXT),
        field("verticalHeight", DOUBLE),
        field("horizonCoordinate", HORIZON_COORDINATE),
        field("auxCode", I32),
        field("auxText", TEXT),
    ],
    "ctrl-points": [
        field("name", TEXT),
        field("ctrlPos", SignedList("ctrl-point")),
        field("benchMarks", SignedList("bench-mark")),
    ],
    "ctrl-points-with-groups": [
        field("name", TEXT),
        field("ctrlPos", SignedList("ctrl-point")),
        field("benchMarks", SignedList("bench-mark")),
        field("gmPnts", SignedList("gm-pnts")),
    ],
    "ctrl-point": [field("number", U16), field("ctrlClass", CTRL_CLASS), field("name", TEXT)],
    "bench-mark": [field("number", U16), field("bmClass", BM_CLASS), field("name", TEXT)],
    "gm-pnts": [field("name", TEXT), field("name2", TEXT), field("points", SignedList("gm-pnt"))],
    "gm-pnt": [field("number", U16), field("name", TEXT)],
    "road-gm-data": [
        field("extension", TABLE, "number>=3"),
        field("roadInfo", "road-info", "number>=3"),
        field("option", I32, "number>=3"),
        field("schemaVersion", SCHEMA_VERSION, "number>=3"),
        field("option2", I32, "number>=3"),
        field("text", TEXT, "number>=3"),
        field("alignments", "alignments", "number>=3"),
        field("xSectType", "x-section-type", "number>=3"),
        field("fileInfos", List("file-info"), "number>=3"),
        field("structureType", "structure-type", "number>=3"),
        # Before 03.00.
        field("roadInfo", "road-info", "number<3", written="never"),
        field("option", I32, "number<3 integer>=3", written="never"),
        field("alignments", "alignments", "number<3"),
        field("extension", TABLE, "number<3 integer>=3"),
    ],
    "old-road-gm-data": [
        field("roadInfo", "road-info", written="never"),
        field("option", I32, "integer>=3", written="never"),
        field("alignments", "alignments"),
        field("extension", TABLE, "integer>=3"),
    ],
    "road-info": [
        field("name", TEXT),
        field("classificat", CLASSIFICAT),
        field("designSpeed", DESIGN_SPEED),
        field("traffic", I32),
    ],
    "alignments": [field("current", I32), field("items", SignedList("alignment"))],
    "alignment": [
        field("name", TEXT),
        field("crsName", TEXT),
        field("auxText", TEXT),
        field("attr1", U16),
        field("attr2", U16),
        field("attr3", U16),
        field("xSections", "x-sections", ">=02.50 or road-geometry", written=""),
        field("upDate", "up-date", ">=02.50 or road-geometry", written=""),
    ],
    "up-date": [field("date1", DATE), field("date2", DATE), field("date3", DATE)],
    "project-data": [
        field("name", TEXT),
        field("date", DATE),
        field("projPhase", PROJ_PHASE),
        field("text", TEXT),
        field("creators", SignedList("creator-info-data")),
    ],
    "creator-info-data": [field("name", TEXT), field("text", TEXT)],
    "form-ctrl": [
        field("reservedText1", TEXT),
        field("reservedText2", TEXT),
        field("roadCenter", TEXT),
        field("roadLeft", TEXT),
        field("roadRight", TEXT),
        field("slopeLeft", TEXT),
        field("slopeRight", TEXT),
        field("roadSurface", TEXT),
        field("bermLeft", TEXT),
        field("bermRight", TEXT),
        field("otherLeft", TEXT, ">=02.50", written=""),
        field("otherRight", TEXT, ">=02.50", written=""),
        field("slopeMarks", MARK_TYPE),
        field("bermMarks", MARK_TYPE),
        field("roadMarks", MARK_TYPE, ">=02.50", written=""),
        field("otherMarks", MARK_TYPE, ">=02.50", written=""),
        field("value", DOUBLE),
    ],
    "land-xml-data": [
        field("storeVersion", OwnVersion("01.11")),
        field("flagAny", I32, ">=01.11"),
        field("option1", I32, ">=01.11"),
        field("option3", I32, ">=01.11"),
        field("value", DOUBLE, ">=01.11"),
        field("texts", TEXTS, ">=01.11"),
        field("project", "land-xml-project"),
        field("cgPoints", "land-xml-cg-points"),
        field("alignments", SignedList("land-xml-alignment")),
    ],
    "land-xml-project": [field("name", TEXT), field("desc", TEXT)],
    "land-xml-cg-points": [
        field("points", SignedList("land-xml-cg-point")),
        field("option1", I32),
        field("option2", I32),
    ],
    "land-xml-cg-point": [field("number", U16)],
    "land-xml-alignment": [
        field("name", TEXT),
        field("text", TEXT),
        field("flag", I32),
        field("code1", U16),
        field("code2", U16),
        field("code3", U16),
    ],
    "x-sections": [
        EXTENSION,
        field("refAlign", TEXT),
        field("refVertical", TEXT),
        field("projectPhase", TEXT, ">03.00"),
        field("alignment", BOOL, ">03.00"),
        field("xSections", List("x-section")),
        field("formCtrlTargets", NumberedList("form-ctrl-target"), ">03.00"),
    ],
    "x-section": [
        EXTENSION,
        field("cumulativeDist", REAL, written=">03.00"),
        field("xSectChg", BOOL, written=">03.00"),
        field("controlSect", BOOL, written=">03.00"),
        field("name", TEXT, written=">03.00"),
        field("shiftGH", REAL, written=">03.00"),
        field("shiftDist", REAL, written=">03.00"),
        field("directionAngle", TEXT, ">03.00"),
        field("targetPntID", TEXT, ">03.00"),
        field("sectionID", ID, ">03.00"),
        field("height", REAL, ">=05.00"),
        field("buildForms", NumberedList("build-form")),
        field("existingBuildForms", List("existing-build-form"), ">03.00"),
        field("presPoints", List("pres-point"), "<=03.00"),
    ],
    "build-form": [
        EXTENSION,
        field("name", TEXT),
        field("xSectType", TEXT, ">=04.00"),
        field("oldWorkCode", WORK_CODE, "<04.00", written="never"),
        field("exportForm", I32),
        field("serialID", ID, ">=05.00"),
        field("xSectTypeID", U32, ">=05.00"),
        field("parentID", ID, ">=05.00"),
        field("paveSetIdx", U8, ">=05.00"),
        field("category", CATEGORY, ">=05.00"),
        field("crossLeft", "cross-point-info", ">=05.00"),
        field("crossRight", "cross-point-info", ">=05.00"),
        field("orgSurface", BOOL, ">=05.50"),
        field("composedPnts", NumberedList("composed-pnt")),
        field("formCtrlTargets", NumberedList("form-ctrl-target")),
    ],
    "cross-point-info": [
        EXTENSION,
        field("dist", REAL),
        field("id", U32),
        field("dekiPairID", ID),
        field("thDPairIDs", IDS),
        field("autoLinePrev", I32),
        field("autoLineNext", I32),
    ],
    "composed-pnt": [
        field("extension", Table({ELEMENT_TYPE_KEY: "elementType"}), ">=06.00"),
        field("dataType", DATA_TYPE, ">=06.00"),
        field("clDist", REAL, ">=06.00"),
        field("gh", REAL, ">=06.00"),
        field("x", REAL, ">=06.00"),
        field("y", REAL, ">=06.00"),
        field("seriesPnt", BOOL, ">=06.00"),
        field("existence", EXISTENCE, ">=06.00"),
        field("ctrlFlags", BITS, ">=06.00"),
        field("reserved", BITS, ">=06.00"),
        field("pointType", POINT_TYPE, ">=06.00"),
        field("location", LOCATION, ">=06.00"),
        field("componentType", COMPONENT_TYPE, ">=06.00"),
        field("slopeType", SLOPE_TYPE, ">=06.00"),
        field("serialID", ID, ">=06.00"),
        field("parentID", ID, ">=06.00"),
        field("id", U32, ">=06.00"),
        field("thDPairIDs", IDS, ">=06.00"),
        field("autoLinePrev", I32, "=06.00"),
        field("autoLineNext", I32, "=06.00"),
        field("ratio", REAL, ">=06.00"),
        field("percent", REAL, ">=06.00"),
        field("main", "composed-pnt-detail", ">=06.00"),
        field("sub", "composed-pnt-detail", ">=06.00"),
        # Before 06.00 a point has one detail record, whose fields are spread over the point's own.
        field("extension", TABLE, "<06.00"),
        field("dataType", DATA_TYPE, ">=04.00 <06.00"),
        field("clDist", REAL, "<06.00"),
        field("gh", REAL, "<06.00"),
        field("x", REAL, "<06.00"),
        field("y", REAL, "<06.00"),
        field("code", TEXT, "<06.00"),
        field("seriesPnt", BOOL, "<06.00"),
        field("existence", EXISTENCE, "<06.00"),
        field("ctrlFlags", BITS, "<06.00"),
        field("reserved", BITS, "<06.00"),
        field("pointType", POINT_TYPE, "<06.00"),
        field("location", LOCATION, "<06.00"),
        field("componentType", COMPONENT_TYPE, "<06.00"),
        field("slopeType", SLOPE_TYPE, "<06.00"),
        field("serialID", ID, ">=05.00 <06.00"),
        field("parentID", ID, ">=05.00 <06.00"),
        field("id", U32, ">=05.00 <06.00"),
        field("dekiPairID", ID, ">=05.00 <06.00"),
        field("thDPairIDs", IDS, ">=05.00 <06.00"),
        field("xSectType", U32, ">=05.00 <06.00"),
        field("xSectName", TEXT, ">=05.00 <06.00"),
        field("xSectNameID", U32, ">=05.00 <06.00"),
        field("autoLinePrev", I32, ">=05.00 <06.00"),
        field("autoLineNext", I32, ">=05.00 <06.00"),
        field("ratio", REAL, ">=05.00 <06.00"),
        field("percent", REAL, ">=05.00 <06.00"),
        field("measure", "measure-infos", ">=05.00 <06.00"),
    ],
    "composed-pnt-detail": [
        field("code", TEXT),
        field("xSectType", U32),
        field("xSectNameID", U32),
        field("xSectName", TEXT),
        field("dekiPairID", ID),
        field("autoLinePrev", I32, "=06.00"),
        field("autoLineNext", I32, "=06.00"),
        field("measure", "measure-infos"),
        EXTENSION,
    ],
    "measure-infos": [EXTENSION, field("infos", List("measure-info"))],
    "measure-info": [EXTENSION, field("first", I32), field("second", I32)],
    "form-ctrl-target": [
        EXTENSION,
        field("code", TEXT),
        field("workType", WORK_TYPE),
        field("controlItem", CONTROL_ITEM),
        field("targetScope", TEXT),
        field("targetRegio", TEXT),
        field("targetPntType", TARGET_PNT_TYPE),
        field("lr", LOCATION),
        field("serialID", ID, ">=05.00", written=""),
        field("targetPnts", List("form-ctrl-target-pnt"), ">=04.00"),
    ],
    "form-ctrl-target-pnt": [
        EXTENSION,
        field("cumulativeDist", REAL),
        field("xSectChg", BOOL),
        field("buildFormName", TEXT),
        field("code", TEXT),
        field("reserved16", U16),
        field("reserved32", U32),
        field("serialID", ID, ">=05.00", written=""),
        field("buildFormID", ID, ">=05.00", written=""),
        field("sectionID", ID, ">=05.00", written=""),
        field("crossPointType", CROSS_POINT_TYPE, ">=05.00", written=""),
        field("xSectType", U32, ">=06.00"),
        field("sectNameID", U32, ">=06.00"),
    ],
    "existing-build-form": [
        field("name", TEXT),
        field("composedPnts", List("existing-composed-pnt")),
        EXTENSION,
    ],
    "existing-composed-pnt": [field("clDist", REAL), field("gh", REAL), field("name", TEXT), EXTENSION],
    "pres-point": [EXTENSION, field("first", REAL), field("second", REAL)],
    "structure-type": [
        field("type", TEXT),
        field("jobName", TEXT),
        field("company", TEXT),
        field("stationType", TEXT),
        EXTENSION,
    ],
    "file-info": [field("createDate", DATE), field("changeDate", DATE), field("note", TEXT), EXTENSION],
    "host-file-info": [EXTENSION, field("createDate", DATE), field("changeDate", DATE), field("note", TEXT)],
    "x-section-type": [field("settings", TABLE)],
    "pavement-settings": [field("settings", Table(PAVEMENT_KEYS))],
    "name-registry": [EXTENSION, field("classes", List("name-class"))],
    "name-class": [field("key", TEXT), field("names", "name-list")],
    "name-list": [EXTENSION, field("items", List("name-item"))],
    "name-item": [EXTENSION, field("name", TEXT), field("color", BITS)],
}

# Records whose collections number their elements.
NUMBERED = ("build-form", "composed-pnt", "form-ctrl-target")
# Records whose collections have a count with a sign.
SIGNED = (
    "crs-data", "ctrl-point", "bench-mark", "gm-pnts", "gm-pnt", "alignment", "creator-info-data", "land-xml-cg-point",
    "land-xml-alignment",
)  # fmt: skip
# What an element of a collection takes at least. A count that the bytes left cannot back is not believed.
LEAST_BYTES = {
    "x-sections": 10, "build-form": 18, "existing-build-form": 9, "crs-data": 23, "ctrl-point": 7, "bench-mark": 7,
    "gm-pnts": 6, "gm-pnt": 3, "alignment": 9, "creator-info-data": 2, "land-xml-cg-point": 2,
    "land-xml-alignment": 12,
}  # fmt: skip
LEAST_BYTES_OF_OTHERS = 4


def record_of(name):
    """The record that a name is of, which may be that of a collection."""
    return name[: -len("-array")] if name.endswith("-array") else name


def type_of(record_name):
    """The type of a record or, with "-array" behind the name, of a collection of it; None when there is none."""
    record = record_of(record_name)
    if record not in RECORDS:
        return None
    if record == record_name:
        return record
    if record in NUMBERED:
        return NumberedList(record)
    return SignedList(record) if record in SIGNED else List(record)


def carries_version(record_name):
    """Whether a record, or each of its parts, is headed by its own store version."""
    types = [f.type for f in RECORDS[record_name]]
    if isinstance(types[0], OwnVersion):
        return True
    return all(isinstance(type_, str) and carries_version(type_) for type_ in types)


_CONDITION = re.compile(r"(number|integer)?(>=|<=|>|<|=)([\d.]+)")
_NUMBERS = {
    "number": re.compile(r"[ \t\n\v\f\r]*([+-]?(?:[0-9]+\.?[0-9]*|\.[0-9]+)(?:[eE][+-]?[0-9]+)?)"),
    "integer": re.compile(r"[ \t\n\v\f\r]*([+-]?[0-9]+)"),
}


def leading_number(text, of):
    """The number or integer that a text begins with, 0 when there is none."""
    found = _NUMBERS[of].match(text)
    return float(found.group(1)) if found else 0.0


def _holds_alone(condition, version, kind):
    if condition == ROAD_GEOMETRY:
        return kind == ROAD_GEOMETRY
    of, operator, other = _CONDITION.fullmatch(condition).groups()
    if of:
        version, other = leading_number(version, of), float(other)
    order = (version > other) - (version < other)
    return {">=": order >= 0, "<=": order <= 0, ">": order > 0, "<": order < 0, "=": order == 0}[operator]


@functools.lru_cache(maxsize=None)
def holds(condition, version, kind=FORM_CONTROL):
    """Whether a condition of a field holds. Store versions are compared as texts, byte by byte."""
    if condition == "never":
        return False
    return any(
        all(_holds_alone(part, version, kind) for part in way.split()) for way in condition.split(" or ")
    )


def has_field(f, version, kind, written):
    """Whether a store version has the field of a record."""
    return holds(f.written if written else f.read, version, kind)


# --- decoding --------------------------------------------------------------------------------------------------------


class ArchiveError(Exception):
    """The bytes at an offset are not in the archive's form."""

    def __init__(self, offset, path, message):
        super().__init__(f"offset {offset} (0x{offset:X}){', ' + path if path else ''}: {message}")
        self.offset = offset


class Decoder:
    """Reads values from bytes and hands them to a sink, in the order of the archive."""

    LEAST_TABLE_ENTRY = 6
    LEAST_TEXT = 1

    def __init__(self, data, version, sink, offset=0, written=False, kind=FORM_CONTROL):
        self.data = data
        self.at = offset
        self._version = version
        self._sink = sink
        self._written = written
        self._kind = kind
        self._path = []

    def value(self, name, type_):
        """Reads a value of any type."""
        self._path.append(name)
        if isinstance(type_, str):
            self._record(name, type_, self._kind)
        elif isinstance(type_, OfKind):
            self._record(name, type_.record, type_.kind)
        elif isinstance(type_, COLLECTIONS):
            self._list(name, type_)
        elif isinstance(type_, TextList):
            self._text_list(name)
        elif isinstance(type_, OwnVersion):
            self._own_version(name, type_)
        elif isinstance(type_, Table):
            self._table(name, type_)
        else:
            offset = self.at
            value, shown = self._scalar(type_)
            self._sink.leaf(name, offset, value, shown)
        self._path.pop()

    def _record(self, name, record_name, kind):
        """A record; a store version or a kind of its own ends with it."""
        outside = self._version, self._kind
        self._kind = kind
        self._sink.open_record(name, self.at, record_name)
        for f in RECORDS[record_name]:
            if has_field(f, self._version, self._kind, self._written):
                self.value(f.name, f.type)
        self._sink.close()
        self._version, self._kind = outside

    def _own_version(self, name, type_):
        offset = self.at
        version, shown = self._scalar(TEXT)
        self._sink.leaf(name, offset, version, shown)
        if type_.newest is not None and version > type_.newest:
            raise self._error(offset, f"store version {shown} is newer than {type_.newest}, the last one known")
        self._version = version

    def _list(self, name, type_):
        offset = self.at
        next_serial = None
        numbered = isinstance(type_, NumberedList)
        if numbered and (self._written or holds(">=05.00", self._version)):
            next_serial = self._number("I")
        least = LEAST_BYTES.get(type_.element, LEAST_BYTES_OF_OTHERS)
        count = self._count(least, "i" if isinstance(type_, SignedList) else "I")
        self._sink.open_list(name, offset, count, numbered, next_serial)
        for i in range(count):
            self.value(f"[{i}]", type_.element)
        self._sink.close()

    def _text_list(self, name):
        offset = self.at
        count = self._number("H")
        if count == 0xFFFF:
            count = self._number("I")
        self._require_count(offset, count, self.LEAST_TEXT)
        self._sink.open_list(name, offset, count, False, None)
        for i in range(count):
            self.value(f"[{i}]", TEXT)
        self._sink.close()

    def _table(self, name, type_):
        offset = self.at
        entries = []
        for _ in range(self._count(self.LEAST_TABLE_ENTRY)):
            key = self._number("i")
            kind = self._number("B")
            entry_types = {1: ("integer", I32), 2: ("real", REAL), 3: ("text", TEXT)}
            if kind not in entry_types:
                raise self._error(self.at - 1, f"type {kind} of key {key} in a table is not 1, 2 or 3")
            kind_name, value_type = entry_types[kind]
            if type_.names.get(key) == "elementType" and value_type is I32:
                value_type = ELEMENT_TYPE
            value, shown = self._scalar(value_type)
            label = f"{key} ({type_.names[key]})" if key in type_.names else str(key)
            entries.append(({"key": key, "type": kind_name, "value": value}, f"{label} = {shown}"))
        shown = ", ".join(text for _, text in entries) or "empty"
        self._sink.leaf(name, offset, [entry for entry, _ in entries], shown)

    def _scalar(self, type_):
        """The value as JSON has it, and as the tree shows it."""
        if isinstance(type_, Number):
            value = self._number(type_.code)
            return value, type_.show(value)
        if isinstance(type_, Bool):
            value = self._number("B") != 0
            return value, str(value).lower()
        if isinstance(type_, Real):
            value = self._number("d")
            return json_real(value), "unset" if value == UNSET_REAL else repr(value)
        if isinstance(type_, Double):
            value = self._number("d")
            return json_real(value, unset=None), repr(value)
        if isinstance(type_, Date):
            status = self._number("i")
            days = self._number("d")
            shown = f"{DATE_STATUSES.get(status, status)}, {days!r} days since 1899-12-30"
            return {"status": status, "days": json_real(days, unset=None)}, shown
        text = self._text()
        return text, json.dumps(text, ensure_ascii=False).encode("utf-8", "backslashreplace").decode()

    def _text(self):
        offset = self.at
        length = self._number("B")
        if length == 0xFF:
            length = self._number("H")
            if length == 0xFFFE:
                raise self._error(offset, "a text of two-byte characters, which this archive does not have")
            if length == 0xFFFF:
                length = self._number("I")
        if length > self._remaining():
            raise self._error(offset, f"a text of {length} bytes, but only {self._remaining()} bytes are left")
        # A byte that is no character becomes U+DC80 to U+DCFF, so that nothing is lost.
        return self._take(length).decode("cp932", "surrogateescape")

    def _count(self, least, code="I"):
        offset = self.at
        count = max(self._number(code), 0)
        self._require_count(offset, count, least)
        return count

    def _require_count(self, offset, count, least):
        """A count is believed as far as the bytes left can back it."""
        if count * least > self._remaining():
            raise self._error(offset, f"a count of {count}, which the {self._remaining()} bytes left cannot back")
        if count > 0x7FFFFFFF:
            raise self._error(offset, f"a count of {count}, more than a collection holds")

    def _number(self, code):
        size = struct.calcsize("<" + code)
        if size > self._remaining():
            raise self._error(self.at, f"{size} bytes expected, but only {self._remaining()} are left")
        return struct.unpack("<" + code, self._take(size))[0]

    def _take(self, size):
        self.at += size
        return self.data[self.at - size : self.at]

    def _remaining(self):
        return len(self.data) - self.at

    def _error(self, offset, message):
        return ArchiveError(offset, ".".join(self._path).replace(".[", "["), message)


def json_real(value, unset=UNSET_REAL):
    """JSON has neither an unset real nor infinities and NaN."""
    if value == unset:
        return None
    return value if math.isfinite(value) else repr(value)


# --- output ----------------------------------------------------------------------------------------------------------


class Tree:
    """Writes one line for each value, as it comes: what stands before a fault is shown."""

    def __init__(self, out):
        self._out = out
        self._depth = 0

    def _line(self, offset, text):
        self._out.write(f"{offset:08x}  {'  ' * self._depth}{text}\n")

    def leaf(self, name, offset, _value, shown):
        self._line(offset, f"{name}: {shown}")

    def open_record(self, name, offset, record_name):
        self._line(offset, name if name == record_name else f"{name}: {record_name}")
        self._depth += 1

    def open_list(self, name, offset, count, _numbered, next_serial):
        self._line(offset, f"{name}: {count}" + ("" if next_serial is None else f", next serial {next_serial}"))
        self._depth += 1

    def close(self):
        self._depth -= 1


class Json:
    """Builds objects for records, arrays for collections. A collection that numbers its elements is an object with
    "nextSerialID" (when the archive has it) and "items"."""

    def __init__(self):
        self.value = None
        self._open = []

    def _put(self, name, value):
        if not self._open:
            self.value = value
        elif isinstance(self._open[-1], list):
            self._open[-1].append(value)
        else:
            self._open[-1][name] = value

    def leaf(self, name, _offset, value, _shown):
        self._put(name, value)

    def open_record(self, name, _offset, _record_name):
        record = {}
        self._put(name, record)
        self._open.append(record)

    def open_list(self, name, _offset, _count, numbered, next_serial):
        items = []
        if numbered:
            self._put(name, {"items": items} if next_serial is None else {"nextSerialID": next_serial, "items": items})
        else:
            self._put(name, items)
        self._open.append(items)

    def close(self):
        self._open.pop()


def load(data, record_name, version, written=False, kind=FORM_CONTROL):
    """The record as JSON has it, from all of the bytes. Throws ArchiveError."""
    sink = Json()
    decoder = Decoder(data, version, sink, written=written, kind=kind)
    decoder.value(record_name, type_of(record_name))
    refuse_rest(decoder)
    return sink.value


def refuse_rest(decoder):
    rest = len(decoder.data) - decoder.at
    if rest > 0:
        raise ArchiveError(decoder.at, "", f"{rest} bytes are left behind the record")


# --- command line ----------------------------------------------------------------------------------------------------


def parse_arguments(arguments):
    parser = argparse.ArgumentParser(
        description="Prints a record of the project archive as a tree, each value with its offset in the file.",
        epilog="Records, each also as a collection with -array behind the name: " + ", ".join(RECORDS) + ".",
    )
    parser.add_argument(
        "--version", help='store version of the archive, such as "05.50"; not for a record that carries its own'
    )
    parser.add_argument("--record", required=True, help="what the archive holds")
    parser.add_argument(
        "--kind",
        choices=KINDS,
        default=FORM_CONTROL,
        help=f"of which kind alignments outside their set are ({FORM_CONTROL})",
    )
    parser.add_argument("--json", action="store_true", help="JSON for programs")
    parser.add_argument(
        "--as-written",
        action="store_true",
        help="read what this library writes; before 05.00 that is not what it reads",
    )
    parser.add_argument("--offset", type=lambda text: int(text, 0), default=0, help="where the record begins (0)")
    parser.add_argument("--partial", action="store_true", help="more bytes may follow the record")
    parser.add_argument("file", metavar="FILE", help='"-" for standard input')
    options = parser.parse_args(arguments)
    if type_of(options.record) is None:
        parser.error(f'there is no record "{options.record}"; known are {", ".join(RECORDS)}, and each with -array')
    if carries_version(record_of(options.record)):
        options.version = ""
    elif not re.fullmatch(r"[0-9]{2}\.[0-9]{2}", options.version or ""):
        parser.error('--version: a store version is two digits, a point and two digits, such as "05.50"')
    if options.offset < 0:
        parser.error("an offset is not negative")
    return options


def main(arguments):
    options = parse_arguments(arguments)
    try:
        if options.file == "-":
            data = sys.stdin.buffer.read()
        else:
            with open(options.file, "rb") as file:
                data = file.read()
    except OSError as error:
        print(f"archive_dump: {options.file}: {error.strerror}", file=sys.stderr)
        return 2
    if options.offset > len(data):
        print(f"archive_dump: {options.file}: has only {len(data)} bytes", file=sys.stderr)
        return 2

    sys.stdout.reconfigure(encoding="utf-8")
    sink = Json() if options.json else Tree(sys.stdout)
    decoder = Decoder(data, options.version, sink, options.offset, options.as_written, options.kind)
    try:
        decoder.value(options.record, type_of(options.record))
        if not options.partial:
            refuse_rest(decoder)
    except ArchiveError as error:
        sys.stdout.flush()
        print(f"archive_dump: {options.file}: {error}", file=sys.stderr)
        return 1
    if options.json:
        json.dump(sink.value, sys.stdout, indent=2)
        print()
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv[1:]))
    except BrokenPipeError:  # the reader, such as head, has seen enough
        os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())
