#!/usr/bin/env python3
"""Runs the examples and holds what they print against what they are to show: examples_test.py FOLDER"""

import glob
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SAMPLES = os.path.join(ROOT, "samples")
MOST_LINES = 69  # of an example: it is seen as a whole

programs = None  # from the command line


class Examples(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="vorn-examples-")
        self.addCleanup(shutil.rmtree, self.folder)

    def file(self, name):
        return os.path.join(self.folder, name)

    def run_example(self, name, *arguments, code=0):
        program = os.path.join(programs, name)
        result = subprocess.run([program, *arguments], capture_output=True, check=False)
        self.assertEqual(code, result.returncode, result.stderr.decode("utf-8"))
        self.stderr = result.stderr.decode("utf-8")
        return result.stdout.decode("utf-8").splitlines()

    def test_read_document(self):
        lines = self.run_example("read_document", os.path.join(SAMPLES, "farm-maff-1.0.xml"))
        self.assertEqual(["edition maff-1.0, 見本地区ほ場整備工事", "ほ場中心線, 78 control targets"], lines[:2])
        self.assertEqual("  No.1 at 20 m", lines[5])
        self.assertEqual("    基盤面 (整地工): CL 0/-0.15 L1 22/-0.002 R1 22/-0.002", lines[7])

    def test_read_document_says_why_it_cannot(self):
        self.assertEqual([], self.run_example("read_document", self.file("none.xml"), code=1))
        self.assertIn("none.xml", self.stderr)

    def test_examples_say_what_they_cannot_take(self):
        design = os.path.join(SAMPLES, "road-4.1.xml")
        for name, arguments, code, words in [
            ("recompute_crossings", [design, "7x", self.file("o.xml")], 1, "HEIGHT is in metres: 7x"),
            ("recompute_crossings", [design, "nan", self.file("o.xml")], 1, "HEIGHT is in metres: nan"),
            ("check_folder", [self.file("none")], 2, "none"),
            ("own_settings_store", [design], 2, "of this program"),
            ("read_old_project", [self.file("none.vorn"), self.file("o.vorn")], 1, "none.vorn"),
        ]:
            with self.subTest(name=name, arguments=arguments):
                self.assertEqual([], self.run_example(name, *arguments, code=code))
                self.assertIn(words, self.stderr)
        self.assertEqual([], os.listdir(self.folder))

    def test_build_section(self):
        editions = ["2.0", "4.0", "4.1", "maff-1.0"]
        self.assertEqual(
            [f"section-{edition}.xml: no point moved by more than 0 m" for edition in editions],
            self.run_example("build_section", self.folder),
        )
        for edition in editions:
            document = self.run_example("read_document", self.file(f"section-{edition}.xml"))
            self.assertTrue(document[0].startswith(f"edition {edition}"), document)
            self.assertIn("CL 0/0 L1 3.5/-2 L2 -4/1.5 R1 3.5/-2 R2 -4/1.5", document[3])
        self.assertEqual([f"section-{edition}.xml: valid" for edition in editions],
                         self.run_example("check_folder", self.folder))  # fmt: skip

    def test_recompute_crossings(self):
        road = os.path.join(SAMPLES, "road-4.1.xml")
        lines = self.run_example("recompute_crossings", road, "77", self.file("out.xml"))
        self.assertEqual(
            "set 1 (道路中心線) > station 20.0000 (No.1): left XL at -9.6069, right XR at 15.0201", lines[1]
        )
        self.assertIn("not in set 1 (道路中心線) > station 100.0000 (No.5): the left does not meet the ground", lines)
        written = " ".join(self.run_example("read_document", self.file("out.xml")))
        self.assertEqual(6, written.count(" XL "))

    def test_read_old_project(self):
        old = os.path.join(ROOT, "tests", "data", "projects", "road-01.10.vorn")
        self.assertEqual(
            ["store version 01.10", "system crs1", "system crs2", "road road", "alignment A: 2 cross sections",
             "alignment A: 2 cross sections", "store version 06.00"],
            self.run_example("read_old_project", old, self.file("new.vorn")),
        )  # fmt: skip

    def test_own_xml_tree(self):
        self.assertEqual(
            ["tsf:ExistingComposedPnt: -10.0000 72.1000", "tsf:ExistingComposedPnt: 0.0000 72.5000",
             "tsf:ExistingComposedPnt: 10.0000 73.0000", "3 points came back"],
            self.run_example("own_xml_tree"),
        )  # fmt: skip

    def test_own_settings_store(self):
        for marks in (0, 1):  # the second process finds what the first one kept
            self.assertEqual([f"marks of slopes: {marks}"],
                             self.run_example("own_settings_store", self.file("settings.txt")))  # fmt: skip

    @unittest.skipIf(os.name == "nt", "processes are started as on Unix")
    def test_check_folder(self):
        for sample in glob.glob(os.path.join(SAMPLES, "*.xml")):
            shutil.copy(sample, self.folder)
        with open(self.file("damaged.xml"), "w", encoding="ascii") as file:
            file.write("<no")
        self.assertEqual(
            ["damaged.xml: cannot be read", "farm-maff-1.0.xml: valid", "river-2.0.xml: valid", "road-4.1.xml: valid",
             "road-with-geometry-4.0.xml: valid"],
            self.run_example("check_folder", self.folder),
        )  # fmt: skip
        self.assertTrue(self.stderr.endswith("5 of 5\n"))

    def test_each_fits_on_a_screen_and_is_described(self):
        with open(os.path.join(ROOT, "examples", "README.md"), encoding="utf-8") as file:
            described = file.read()
        sources = glob.glob(os.path.join(ROOT, "examples", "*.cpp"))
        self.assertEqual(7, len(sources))
        for path in sources:
            self.assertIn(os.path.basename(path), described)
            with open(path, encoding="utf-8") as file:
                self.assertLessEqual(len(file.readlines()), MOST_LINES, path)


if __name__ == "__main__":
    programs = sys.argv.pop(1)
    unittest.main()
