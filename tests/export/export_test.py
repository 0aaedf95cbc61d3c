#!/usr/bin/env python3
"""Reads back what `vorn export` writes, with readers that know nothing of Vorn: export_test.py VORN

Drawings are read with ezdxf, tables and GeoJSON with the standard library. What the three say of a design has to be
the same, coordinate by coordinate.
"""

import csv
import io
import json
import os
import subprocess
import sys
import tempfile
import unittest

import ezdxf

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SAMPLES = os.path.join(ROOT, "samples")
SAMPLE_NAMES = ["farm-maff-1.0", "river-2.0", "road-4.1", "road-with-geometry-4.0"]
# Documents do not tell the height of the centre line; with one, the existing ground is shown too.
HEIGHT = "62.5"
# A name that tries to end lines, records, cells and elements. Code page 932 has one of the two wave dashes.
HOSTILE = "=\"x\",'<script>^J%%d\\U+0041&表ソ〜"
KEPT = HOSTILE.replace("〜", "～")
# In drawings, percent signs beside each other are full-width ones.
DRAWN = KEPT.replace("%%", "％％")

LAYERS = [
    "DESIGN_SURFACE", "SLOPE", "PAVEMENT_LAYER", "OTHER_FORM", "GROUND", "GROUND_HATCH", "CROSSING", "CENTER_LINE",
    "CODE", "GRADE", "DIMENSION", "FRAME", "TITLE", "ORIGIN", "INDEX",
]  # fmt: skip

tool = None  # from the command line


def vorn(*arguments):
    result = subprocess.run([tool, *arguments], capture_output=True, check=False)
    if result.returncode != 0:
        raise RuntimeError(f"vorn {' '.join(arguments)}: {result.stderr.decode()}")
    return result.stdout


def sample(name):
    return os.path.join(SAMPLES, name + ".xml")


def rows_of(path, what="points", *options):
    text = vorn("export", path, "--format", "csv", "--what", what, *options).decode("utf-8")
    return list(csv.DictReader(io.StringIO(text, newline=""), strict=True))


def collection_of(path, *options):
    def refuse(constant):
        raise ValueError(constant + " is no JSON")

    return json.loads(vorn("export", path, "--format", "geojson", *options), parse_constant=refuse)


def features_of(collection, kind):
    return [feature for feature in collection["features"] if feature["properties"]["kind"] == kind]


def design_text(cell):
    """A text of the design from a table: what begins like a formula has an apostrophe before it."""
    return cell[1:] if cell.startswith("'") else cell


def utf16_pairs_joined(text):
    """Characters beyond the first 65,536 come in two halves."""
    return text.encode("utf-16", "surrogatepass").decode("utf-16")


def text_of(entity):
    return utf16_pairs_joined(ezdxf.decode_dxf_unicode(entity.plain_text()))


class Work(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = directory.name

    def path(self, name):
        return os.path.join(self.directory, name)

    def drawing(self, path, *options):
        """The drawing of a design, read and audited."""
        vorn("export", path, "-o", self.path("x.dxf"), *options)
        drawing = ezdxf.readfile(self.path("x.dxf"))
        audit = drawing.audit()
        self.assertEqual([str(error.message) for error in audit.errors], [])
        self.assertEqual([str(fix.message) for fix in audit.fixes], [])
        return drawing

    def hostile(self):
        """A sample whose names are hostile."""
        with open(sample("road-4.1"), encoding="utf-8") as file:
            text = file.read()
        escaped = HOSTILE.replace("&", "&amp;").replace("<", "&lt;").replace('"', "&quot;")
        path = self.path("hostile.xml")
        with open(path, "w", encoding="utf-8") as file:
            file.write(text.replace("盛土面", escaped).replace('code="L1"', 'code="' + escaped + '"'))
        self.assertNotEqual(text.count("盛土面"), 0)
        return path


class Drawings(Work):
    def test_every_sample_is_a_sound_drawing(self):
        for name in SAMPLE_NAMES:
            for options in ([], ["--height", HEIGHT], ["--language", "ja"]):
                with self.subTest(sample=name, options=options):
                    drawing = self.drawing(sample(name), *options)
                    self.assertEqual(drawing.dxfversion, "AC1009")
                    self.assertEqual(drawing.encoding, "cp932")
                    self.assertEqual(set(LAYERS) - {layer.dxf.name for layer in drawing.layers}, set())
                    used = {entity.dxf.layer for entity in drawing.modelspace()}
                    self.assertLessEqual(used, set(LAYERS))

    def test_each_section_has_its_origin_view_and_index_entry(self):
        for name in SAMPLE_NAMES:
            with self.subTest(sample=name):
                drawing = self.drawing(sample(name))
                sections = features_of(collection_of(sample(name)), "section")
                space = drawing.modelspace()
                origins = list(space.query('POINT[layer=="ORIGIN"]'))
                self.assertEqual(len(origins), len(sections))
                self.assertEqual(len(drawing.views), len(sections))
                index = {text_of(text) for text in space.query('TEXT[layer=="INDEX"]')}
                for section in sections:
                    self.assertIn(section["properties"]["stationText"], index)
                titles = " ".join(text_of(text) for text in space.query('TEXT[layer=="TITLE"]'))
                for section in sections:
                    self.assertIn(section["properties"]["stationText"], titles)

    def test_every_line_of_the_design_lies_where_the_design_has_it(self):
        for name in SAMPLE_NAMES:
            for options in ([], ["--height", HEIGHT]):
                with self.subTest(sample=name, options=options):
                    self.lines_lie_in_the_drawing(name, options)

    def lines_lie_in_the_drawing(self, name, options):
        collection = collection_of(sample(name), *options)
        drawing = self.drawing(sample(name), *options)
        drawn, origins = self.places_drawn(drawing), self.origins(drawing)
        sections = features_of(collection, "section")
        self.assertEqual(len(origins), len(sections))
        grounds = 0
        for section, origin in zip(sections, origins):
            center_height = section["properties"]["centerHeight"]
            reference = 0.0 if center_height is None else center_height // 1
            lines = [
                feature for feature in collection["features"]
                if feature["geometry"] is not None and feature["geometry"]["type"] == "LineString"
                and all(feature["properties"][key] == section["properties"][key] for key in ("set", "section"))
            ]  # fmt: skip
            forms = [line for line in lines if line["properties"]["kind"] == "form"]
            offsets = [place[0] for form in forms for place in form["geometry"]["coordinates"]]
            for line in lines:
                # The ground goes on beyond the drawing; what lies between the ends of the design is all there.
                is_ground = line["properties"]["kind"] == "ground"
                for offset, height in line["geometry"]["coordinates"]:
                    if is_ground and not min(offsets) <= offset <= max(offsets):
                        continue
                    grounds += is_ground
                    place = (round(origin[0] + offset, 6), round(origin[1] + height - reference, 6))
                    self.assertIn(place, drawn, line["properties"])
        if options and name != "river-2.0":
            self.assertGreater(grounds, 10)

    @staticmethod
    def origins(drawing):
        return [tuple(point.dxf.location)[:2] for point in drawing.modelspace().query('POINT[layer=="ORIGIN"]')]

    @staticmethod
    def places_drawn(drawing):
        """Every place that a line of the design or the ground goes through."""
        shapes = {"DESIGN_SURFACE", "SLOPE", "PAVEMENT_LAYER", "OTHER_FORM", "GROUND"}
        places = set()
        for entity in drawing.modelspace():
            if entity.dxf.layer not in shapes:
                continue
            if entity.dxftype() == "LINE":
                ends = [entity.dxf.start, entity.dxf.end]
            elif entity.dxftype() == "POLYLINE":
                ends = [vertex.dxf.location for vertex in entity.vertices]
            else:
                continue
            places.update((round(end[0], 6), round(end[1], 6)) for end in ends)
        return places

    def test_nothing_lies_on_another_sheet(self):
        drawing = self.drawing(sample("road-4.1"), "--height", HEIGHT)
        areas = []
        for view in drawing.views:
            x, y = view.dxf.center[0], view.dxf.center[1]
            areas.append((x - view.dxf.width / 2, y - view.dxf.height / 2, x + view.dxf.width / 2,
                          y + view.dxf.height / 2))  # fmt: skip
        for i, a in enumerate(areas):
            for b in areas[i + 1 :]:
                self.assertTrue(a[2] <= b[0] or b[2] <= a[0] or a[3] <= b[1] or b[3] <= a[1])
        for entity in drawing.modelspace().query("LINE"):
            if entity.dxf.layer == "INDEX":
                continue
            inside = [
                all(a[0] - 1e-6 <= p[0] <= a[2] + 1e-6 and a[1] - 1e-6 <= p[1] <= a[3] + 1e-6
                    for p in (entity.dxf.start, entity.dxf.end))
                for a in areas
            ]  # fmt: skip
            self.assertEqual(sum(inside), 1, entity.dxf.layer)

    def test_everything_lies_within_the_extents_of_the_header(self):
        drawing = self.drawing(sample("river-2.0"))
        low, high = drawing.header["$EXTMIN"], drawing.header["$EXTMAX"]
        for entity in drawing.modelspace().query("LINE"):
            for place in (entity.dxf.start, entity.dxf.end):
                self.assertTrue(low[0] <= place[0] <= high[0] and low[1] <= place[1] <= high[1], entity.dxf.layer)

    def test_texts_are_as_large_as_told(self):
        for scale in ("50", "200"):
            heights = {
                round(text.dxf.height * 1000 / int(scale), 6)
                for text in self.drawing(sample("road-4.1"), "--scale", scale).modelspace().query("TEXT")
            }
            self.assertTrue(all(1.0 <= height <= 10.0 for height in heights), heights)

    def test_japanese_and_hostile_texts_come_back(self):
        path = self.hostile()
        texts = [text_of(text) for text in self.drawing(path).modelspace().query("TEXT")]
        self.assertTrue(any(DRAWN in text for text in texts), texts)

    def test_a_large_design_takes_little_memory(self):
        import resource

        vorn("sample", self.path("large.xml"), "--sections", "1000")
        drawing = self.drawing(self.path("large.xml"))
        self.assertEqual(len(drawing.views), 1000)
        peak = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss  # kilobytes
        self.assertLess(peak, 500_000)


class Tables(Work):
    def test_points_are_those_of_the_lines(self):
        for name in SAMPLE_NAMES:
            with self.subTest(sample=name):
                rows = rows_of(sample(name))
                self.assertGreater(len(rows), 50)
                points = {}
                for feature in features_of(collection_of(sample(name)), "form"):
                    properties, geometry = feature["properties"], feature["geometry"]
                    places = [geometry["coordinates"]] if geometry["type"] == "Point" else geometry["coordinates"]
                    for point, place in zip(properties["points"], places, strict=True):
                        key = (properties["set"], properties["section"], properties["form"], point["point"])
                        points[key] = (properties["name"], point["code"], *place)
                self.assertEqual(len(rows), len(points))
                for row in rows:
                    key = tuple(int(row[column]) for column in ("set", "section", "form", "point"))
                    self.assertEqual(points[key], (design_text(row["form_name"]), design_text(row["code"]),
                                                   float(row["offset"]), float(row["height"])))  # fmt: skip

    def test_ground_is_that_of_the_features(self):
        for name in SAMPLE_NAMES:
            rows = rows_of(sample(name), "ground", "--height", HEIGHT)
            places = [[float(row["offset"]), float(row["height"])] for row in rows]
            grounds = features_of(collection_of(sample(name), "--height", HEIGHT), "ground")
            self.assertEqual(places, [place for ground in grounds for place in ground["geometry"]["coordinates"]])
            self.assertNotEqual(places, []) if name != "river-2.0" else None

    def test_targets_are_those_of_the_features(self):
        for name in SAMPLE_NAMES:
            rows = rows_of(sample(name), "targets")
            targets = features_of(collection_of(sample(name)), "target")
            named = [point["name"] for target in targets for point in target["properties"]["points"]]
            self.assertEqual([design_text(row["point_name"]) for row in rows if row["target_point"]], named)
            self.assertNotEqual(named, [])

    def test_begin_with_a_byte_order_mark_on_request(self):
        plain = vorn("export", sample("road-4.1"), "--format", "csv")
        marked = vorn("export", sample("road-4.1"), "--format", "csv", "--bom")
        self.assertEqual(marked, b"\xef\xbb\xbf" + plain)

    def test_hostile_texts_come_back_and_are_no_formulas(self):
        rows = rows_of(self.hostile())
        self.assertIn(KEPT, {design_text(row["form_name"]) for row in rows})
        self.assertIn(KEPT, {design_text(row["code"]) for row in rows})
        for row in rows:
            self.assertFalse(row["form_name"].startswith("="))

    def test_a_file_is_what_the_standard_output_gets(self):
        for form in ("csv", "geojson", "dxf"):
            vorn("export", sample("river-2.0"), "-o", self.path("x." + form))
            with open(self.path("x." + form), "rb") as file:
                self.assertEqual(file.read(), vorn("export", sample("river-2.0"), "--format", form))


class Collections(Work):
    def test_every_sample_is_a_sound_collection(self):
        for name in SAMPLE_NAMES:
            with self.subTest(sample=name):
                collection = collection_of(sample(name), "--height", HEIGHT)
                self.assertEqual(collection["type"], "FeatureCollection")
                self.assertEqual(collection["metadata"]["coordinates"], ["offset", "height"])
                kinds = {self.sound(feature) for feature in collection["features"]}
                self.assertLessEqual({"section", "form", "target"}, kinds)

    def sound(self, feature):
        """The feature's kind, once its structure is seen to be right."""
        self.assertEqual(set(feature), {"type", "geometry", "properties"})
        self.assertEqual(feature["type"], "Feature")
        geometry = feature["geometry"]
        if geometry is not None:
            self.assertEqual(set(geometry), {"type", "coordinates"})
            places = geometry["coordinates"]
            if geometry["type"] == "Point":
                places = [places]
            else:
                self.assertIn(geometry["type"], ("LineString", "MultiPoint"))
                self.assertGreaterEqual(len(places), 2)
            for place in places:
                self.assertEqual([type(number) for number in place], [float, float])
        return feature["properties"]["kind"]

    def test_projects_tell_the_same_as_their_documents(self):
        for name in SAMPLE_NAMES:
            with self.subTest(sample=name):
                project = self.path(name + ".vorn")
                vorn("convert", sample(name), project)
                self.assertEqual(collection_of(project)["features"], collection_of(sample(name))["features"])

    def test_hostile_texts_come_back(self):
        names = {f["properties"]["name"] for f in features_of(collection_of(self.hostile()), "form")}
        self.assertIn(KEPT, names)


if __name__ == "__main__":
    tool = os.path.abspath(sys.argv.pop(1))
    unittest.main(verbosity=2)
