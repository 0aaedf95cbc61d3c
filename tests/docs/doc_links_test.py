#!/usr/bin/env python3
"""Checks that what the documentation points to is there.

In every Markdown file of the project: relative links and their anchors, files and folders in backticks, functions and
classes in backticks (`VornXSection::SwapLR`), tests (`XSectionShift.LeavesEveryHeight`), and the targets of `make`.
Prints one line for each that is missing, file:line: message, and exits with 1 if there is any.
"""

import fnmatch
import os
import re
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, os.path.join(ROOT, "tools"))
sys.dont_write_bytecode = True  # the sources stay as they are

from check_layers import project_files  # noqa: E402

LINK = re.compile(r"(?<!`)\[[^\]]*\]\(([^)\s]+)\)")
CODE = re.compile(r"`([^`]+)`")
PATH = re.compile(r"\.?[\w<>*+.-]+(/[\w<>*+.-]+)*/?")
QUALIFIED = re.compile(r"(?:vorn_host::)?([A-Za-z_]\w*)::(~?[A-Za-z_]\w*)(?:\(.*\))?")
OWN_NAME = re.compile(r"(?:Vorn|VORN_|Nur|Wex|Pim|Kel)[A-Z_0-9]\w*")
TEST = re.compile(r"([A-Z]\w+)\.([A-Z]\w+)")
MAKE = re.compile(r"make ([a-z][\w-]*)$")
FILE_SUFFIXES = (".h", ".cpp", ".cmake", ".py", ".sh", ".md", ".js", ".css", ".html", ".dox", ".in", ".yml", ".txt")
# Files of the user, of an installation or of a build, which the project does not hold.
ELSEWHERE = ("build/", "out/", "~/", "vorn/vorn.toml", "lib/", "share/", "include/")
# Names that belong to the language and to other libraries.
FOREIGN_SCOPES = {"std", "pugi", "testing", "benchmark", "GTest", "vorn", "toml", "nlohmann"}


def text_of(name):
    with open(os.path.join(ROOT, name), encoding="utf-8", errors="replace") as file:
        return file.read()


def slug_of(heading):
    """The anchor that a heading gets."""
    plain = re.sub(r"[`*]|\[([^\]]*)\]\([^)]*\)", lambda m: m.group(1) or "", heading.strip().lower())
    return re.sub(r"[^\w -]", "", plain).replace(" ", "-")


class Project:
    def __init__(self):
        self.files = project_files()
        self.folders = {""}
        for name in self.files:
            parts = name.split("/")
            self.folders.update("/".join(parts[:at]) for at in range(1, len(parts)))
        self.top = {name.split("/")[0] for name in self.files}
        self.basenames = {os.path.basename(name) for name in self.files}
        code = [name for name in self.files if name.endswith((".h", ".cpp", ".inc", ".pyi", ".js", ".cmake", "CMakeLists.txt"))]
        self.words = set(re.findall(r"\w+", "\n".join(text_of(name) for name in code)))
        tests = "\n".join(text_of(name) for name in code if name.startswith("tests/"))
        self.tests = set(re.findall(r"\b(?:TYPED_)?TEST\w*\(\s*(\w+),\s*(\w+)\)", tests))
        self.make_targets = set()
        if "Makefile" in self.files:
            self.make_targets = set(re.findall(r"^([a-z][\w %-]*):", text_of("Makefile"), re.M))
            self.make_targets = {name for names in self.make_targets for name in names.split()}

    def has(self, path):
        path = os.path.normpath(path).replace(os.sep, "/")
        path = "" if path == "." else path
        if path in self.folders or path in self.basenames or os.path.isfile(os.path.join(ROOT, path)):
            return True
        return "*" in path and bool(fnmatch.filter(self.files, path) or fnmatch.filter(self.folders, path))

    def anchors_of(self, name):
        return {slug_of(line.lstrip("#")) for line in text_of(name).split("\n") if line.startswith("#")}


def link_problem(project, name, target):
    if re.match(r"[a-z]+:", target):
        return None
    path, _, anchor = target.partition("#")
    full = os.path.normpath(os.path.join(os.path.dirname(name), path)) if path else name
    if not project.has(full):
        return f"the link leads to {target}, which is not there"
    if anchor and full.endswith(".md") and anchor not in project.anchors_of(full):
        return f"the link leads to {target}, but there is no such heading"
    return None


def path_problem(project, name, code):
    if not PATH.fullmatch(code) or code.startswith((*ELSEWHERE, "_")) or "<" in code:
        return None
    is_path = "/" in code and code.split("/")[0] in project.top
    is_file = code.endswith(FILE_SUFFIXES) and ("/" in code or "_" in code)
    if not is_path and not is_file:
        return None
    if project.has(code) or project.has(os.path.join(os.path.dirname(name), code)):
        return None
    return f"there is no {code}"


def name_problem(project, code):
    qualified = QUALIFIED.fullmatch(code)
    if qualified:
        if qualified.group(1) in FOREIGN_SCOPES:
            return None
        missing = [word for word in qualified.groups() if word.lstrip("~") not in project.words]
    else:
        plain = re.sub(r"\(.*\)$", "", code)
        missing = [plain] if OWN_NAME.fullmatch(plain) and plain not in project.words else []
    return f"no source names {missing[0]}" if missing else None


def make_problem(project, code):
    made = MAKE.fullmatch(code)
    if made and made.group(1) not in project.make_targets:
        return f"the Makefile has no target {made.group(1)}"
    return None


def test_problem(project, code):
    test = TEST.fullmatch(code)
    return f"there is no test {code}" if test and test.groups() not in project.tests else None


def problems_of(project, name):
    in_block = False
    for number, line in enumerate(text_of(name).split("\n"), 1):
        if line.lstrip().startswith("```"):
            in_block = not in_block
            continue
        if in_block:
            continue
        for target in LINK.findall(line):
            yield number, link_problem(project, name, target)
        for code in CODE.findall(line):
            yield number, path_problem(project, name, code)
            yield number, name_problem(project, code)
            yield number, make_problem(project, code)
            yield number, test_problem(project, code)


def main():
    project = Project()
    pages = [name for name in project.files if name.endswith(".md") and not name.startswith("tests/data/")]
    found = 0
    for name in pages:
        for number, problem in problems_of(project, name):
            if problem:
                found += 1
                print(f"{name}:{number}: {problem}")
    print(f"doc_links: {len(pages)} pages, {found} problems")
    return 1 if found or not pages else 0


if __name__ == "__main__":
    sys.exit(main())
