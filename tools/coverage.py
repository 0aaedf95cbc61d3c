#!/usr/bin/env python3
"""Tells which lines and branches of vorn/ the library's own tests run: tools/coverage.py [BUILD]

BUILD is a build of the preset `coverage`. Prints a table by folder and every line and branch that no test takes, and
writes a page for the browser and what each test program ran to BUILD/coverage/. Exits with 1 where too little is run.

A branch is one that the source decides. Where a call may throw, the compiler adds two, to the next statement and to
whatever is destroyed then: neither is counted. What is made several times of one line, of a template or in several
objects, counts once, and a branch of it is taken when any of them takes it.
"""

import argparse
import json
import os
import subprocess
import sys
from collections import defaultdict

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))

# The tests of vorn/ that need no host, in the folder tests/ of a build.
PROGRAMS = ["vorn_tests", "vorn_allocation_failure_tests", "vorn_archive_memory_tests"]

LEAST_LINES = 98.0
LEAST_BRANCHES = 90.0

def counts_below(build):
    return [os.path.join(at, name) for at, _, files in os.walk(build) for name in files if name.endswith(".gcda")]


def forget_counts(build):
    for counts in counts_below(build):
        os.remove(counts)


def report_path(build, program):
    return os.path.join(build, "coverage", program + ".json")


def decisions(branches):
    """The branches that the source decides: a call that may throw has an arc for each outcome."""
    return [
        branch["count"] for branch, after in zip(branches, [*branches[1:], None])
        if not branch["throw"] and not (after and after["throw"])
    ]  # fmt: skip


def add_counts(sums, counts):
    """Adds numbers place by place; where there are none yet, these are the first."""
    for at, count in enumerate(counts):
        if at < len(sums):
            sums[at] += count
        else:
            sums.append(count)


class Counts:
    """How often each line of vorn/ ran, and each of its branches."""

    def __init__(self):
        self.lines = defaultdict(lambda: defaultdict(int))
        self.branches = defaultdict(list)

    def add_object(self, report):
        """What gcov says of an object."""
        for file in report["files"]:
            path = os.path.relpath(os.path.join(report["current_working_directory"], file["file"]), ROOT)
            if not path.startswith("vorn" + os.sep):
                continue
            for line in file["lines"]:
                self._add_line(path, line)

    def _add_line(self, path, line):
        self.lines[path][line["line_number"]] += line["count"]
        counts = decisions(line["branches"])
        # Functions with as many branches in one line are taken for one that is made of a template several times.
        add_counts(self.branches[path, line["line_number"], len(counts)], counts)

    def add(self, other):
        for path, lines in other.lines.items():
            for number, count in lines.items():
                self.lines[path][number] += count
        for place, counts in other.branches.items():
            add_counts(self.branches[place], counts)

    def files(self):
        """In the form of gcovr, which makes the page of them."""
        branches = defaultdict(list)
        for (path, number, _), counts in sorted(self.branches.items()):
            branches[path, number] += [{"count": count, "fallthrough": False, "throw": False} for count in counts]
        return [
            {
                "file": path,
                "functions": [],
                "lines": [
                    {
                        "line_number": number, "count": count, "branches": branches[path, number],
                        "gcovr/excluded": False, "gcovr/noncode": False,
                    } for number, count in sorted(lines.items())
                ],
            } for path, lines in sorted(self.lines.items())
        ]  # fmt: skip

    def write(self, path):
        with open(path, "w", encoding="utf-8") as file:
            json.dump({"gcovr/format_version": "0.3", "files": self.files()}, file)


def count_program(build, program):
    """Runs a test program and keeps what it ran."""
    forget_counts(build)
    subprocess.run([os.path.join(build, "tests", program), "--gtest_brief=1"], stdout=subprocess.DEVNULL, check=True)
    gcov = ["gcov", "--branch-probabilities", "--json-format", "--stdout", "--relative-only", "--source-prefix", ROOT]
    reports = subprocess.run([*gcov, *counts_below(build)], capture_output=True, text=True, check=True).stdout
    counts = Counts()
    for report in reports.splitlines():
        if report.startswith("{"):
            counts.add_object(json.loads(report))
    counts.write(report_path(build, program))
    return counts


def write_page(build, counts):
    merged = report_path(build, "all")
    counts.write(merged)
    page = os.path.join(build, "coverage", "index.html")
    subprocess.run(["gcovr", "--root", ROOT, "--add-tracefile", merged, "--html-details", page], check=True)
    return page


class Tally:
    """How many lines and branches there are, and how many were run."""

    def __init__(self):
        self.lines = self.lines_run = self.branches = self.branches_run = 0

    def add(self, line):
        self.lines += 1
        self.lines_run += line["count"] > 0
        self.branches += len(line["branches"])
        self.branches_run += sum(branch["count"] > 0 for branch in line["branches"])

    @property
    def line_share(self):
        return 100.0 * self.lines_run / self.lines if self.lines else 100.0

    @property
    def branch_share(self):
        return 100.0 * self.branches_run / self.branches if self.branches else 100.0

    def row(self, name):
        return (
            f"{name:<16}{self.lines_run:>6} of {self.lines:<6}{self.line_share:>6.1f} %"
            f"{self.branches_run:>8} of {self.branches:<6}{self.branch_share:>6.1f} %"
        )


def gaps_of(file):
    """What no test takes in a file, a line of text each."""
    with open(os.path.join(ROOT, file["file"]), encoding="utf-8") as source:
        text = source.read().split("\n")
    for line in file["lines"]:
        number = line["line_number"]
        missed = sum(branch["count"] == 0 for branch in line["branches"])
        what = "not run" if line["count"] == 0 else f"{missed} of {len(line['branches'])} branches not taken"
        if line["count"] == 0 or missed:
            yield f"{file['file']}:{number}: {what}: {text[number - 1].strip()}"


def print_report(files):
    folders = defaultdict(Tally)
    total = Tally()
    for file in files:
        for line in file["lines"]:
            folders[os.path.dirname(file["file"])].add(line)
            total.add(line)
    for file in files:
        for gap in gaps_of(file):
            print(gap)
    print(f"\n{'':<16}{'lines run':^24}{'branches taken':^24}")
    for folder in sorted(folders):
        print(folders[folder].row(folder))
    print(total.row("all"))
    return total


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("build", nargs="?", default=os.path.join(ROOT, "build", "coverage"))
    build = os.path.abspath(parser.parse_args().build)
    os.makedirs(os.path.join(build, "coverage"), exist_ok=True)
    counts = Counts()
    for program in PROGRAMS:
        counts.add(count_program(build, program))
    page = write_page(build, counts)
    total = print_report(counts.files())
    print(f"\n{page}")
    if total.line_share < LEAST_LINES or total.branch_share < LEAST_BRANCHES:
        print(f"Too little: {LEAST_LINES} % of the lines and {LEAST_BRANCHES} % of the branches", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
