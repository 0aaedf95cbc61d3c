#!/usr/bin/env python3
"""Checks what the compiler cannot: include directions, header guards, and words that do not belong in the tree.

Lower layers never include higher ones, and the library includes nothing but itself and the C++ standard library.
Prints one line for each violation, file:line: message, and exits with 1 if there is any.
"""

import fnmatch
import os
import re
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))

LAYERS = ["platform", "framework", "types", "control", "model", "archive", "road", "umbrella", "host"]
RANK = {layer: rank for rank, layer in enumerate(LAYERS)}

# The folders of the host. Those of one row know nothing of each other.
HOST_ROWS = [["document"], ["drawing", "editing", "project", "sample", "settings"], ["report"], ["cli"]]
HOST_RANK = {folder: rank for rank, row in enumerate(HOST_ROWS) for folder in row}

# The build-name registry reads cross sections: it lives in types/ but belongs to the model's layer, so neither
# types/ nor control/ may include it in turn.
MOVED = {"vorn/types/bld_name_map.*": "model"}

STANDARD_HEADERS = set(
    """
    algorithm any array atomic barrier bit bitset charconv chrono codecvt compare complex concepts condition_variable
    coroutine deque exception execution filesystem format forward_list fstream functional future initializer_list
    iomanip ios iosfwd iostream istream iterator latch limits list locale map memory memory_resource mutex new numbers
    numeric optional ostream queue random ranges ratio regex scoped_allocator semaphore set shared_mutex
    source_location span sstream stack stdexcept stop_token streambuf string string_view strstream syncstream
    system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility valarray variant
    vector version
    cassert cctype cerrno cfenv cfloat cinttypes climits clocale cmath csetjmp csignal cstdarg cstddef cstdint cstdio
    cstdlib cstring ctime cuchar cwchar cwctype
    """.split()
)

# Put together from pieces so that this file does not contain what it looks for.
_SHORT = "spe" + "c"
FORBIDDEN = re.compile(
    r"(?i:\b(?:the|this|our|a)\s+" + _SHORT + r"(?:ification)?\b)"
    r"|(?i:\b" + _SHORT + r"\.md)"
    r"|\bPar" + r"ts? [1-6]\.[0-9]"
)

INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]*)"|<([^>]*)>|(\S+))')
CODE_SUFFIXES = (".h", ".hpp", ".inc", ".ipp", ".cpp")
HEADER_SUFFIXES = (".h", ".hpp")


def project_files():
    """Every file that is or could be committed, relative to the root."""
    listing = subprocess.run(
        ["git", "-c", "safe.directory=*", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
        cwd=ROOT,
        capture_output=True,
    )
    if listing.returncode == 0:
        names = listing.stdout.decode("utf-8", "replace").split("\0")
    else:  # An unpacked archive rather than a clone.
        names = []
        for directory, subdirectories, files in os.walk(ROOT):
            subdirectories[:] = [name for name in subdirectories if name not in (".git", "build", "out")]
            names += [os.path.relpath(os.path.join(directory, name), ROOT).replace(os.sep, "/") for name in files]
    return sorted({name for name in names if name and os.path.isfile(os.path.join(ROOT, name))})


def lines_of(path):
    with open(os.path.join(ROOT, path), encoding="utf-8", errors="replace") as file:
        return file.read().split("\n")


def layer_of(path):
    """The layer a file belongs to, or None if its place is unknown."""
    for pattern, layer in MOVED.items():
        if fnmatch.fnmatch(path, pattern):
            return layer
    parts = path.split("/")
    if parts[0] == "host":
        return "host"
    if parts[0] != "vorn":
        return None
    if len(parts) == 2:
        return "umbrella"  # vorn/vorn.h
    return parts[1] if parts[1] in RANK else None


def include_problem(path, quoted, angled):
    """Why a file under vorn/ or host/ may not have this include, or None if it may."""
    in_library = path.startswith("vorn/")
    if angled is not None:
        if in_library and angled not in STANDARD_HEADERS:
            return f"<{angled}> is not a C++ standard header; the library needs nothing else"
        return None
    if quoted is None:
        return "an include that names its file through a macro cannot be checked"
    if not quoted.startswith(("vorn/", "host/")):
        return f'"{quoted}": include paths start at the repository root; other libraries take angle brackets'
    own, other = layer_of(path), layer_of(quoted)
    if own is None:
        return "this folder has no place among the layers"
    if other is None:
        return f'"{quoted}" has no place among the layers'
    if own == other == "host":
        return host_include_problem(path, quoted)
    if RANK[other] <= RANK[own]:
        return None
    return f'"{quoted}": {own} must not include {other}, which stands above it'


def host_include_problem(path, quoted):
    own, other = path.split("/")[1], quoted.split("/")[1]
    for folder in (own, other):
        if folder not in HOST_RANK:
            return f"host/{folder} has no place among the host's folders"
    if own == other or HOST_RANK[other] < HOST_RANK[own]:
        return None
    return f'"{quoted}": host/{own} must not include host/{other}, which does not stand below it'


def check_code(path, lines):
    for number, line in enumerate(lines, 1):
        match = INCLUDE.match(line)
        if match and path.startswith(("vorn/", "host/")):
            problem = include_problem(path, match.group(1), match.group(2))
            if problem:
                yield number, problem
    if path.endswith(HEADER_SUFFIXES) and not any(line.strip() == "#pragma once" for line in lines):
        yield 1, "the header has no #pragma once"


def check_words(lines):
    for number, line in enumerate(lines, 1):
        match = FORBIDDEN.search(line)
        if match:
            yield number, f"'{match.group(0)}' does not belong here: say what the rule is and why it matters"


def commit_messages():
    log = subprocess.run(
        ["git", "-c", "safe.directory=*", "log", "--format=%h%n%B%x00"], cwd=ROOT, capture_output=True
    )
    if log.returncode != 0:  # No repository, or no commit yet.
        return
    for entry in log.stdout.decode("utf-8", "replace").split("\0"):
        commit, _, message = entry.lstrip("\n").partition("\n")
        if commit:
            yield "commit " + commit, message.split("\n")


def main():
    problems = []
    files = project_files()
    for path in files:
        lines = lines_of(path)
        if path.endswith(CODE_SUFFIXES):
            problems += [(path, *problem) for problem in check_code(path, lines)]
        problems += [(path, *problem) for problem in check_words(lines)]
        problems += [(path, *problem) for problem in check_words([path])]
    for commit, lines in commit_messages():
        problems += [(commit, *problem) for problem in check_words(lines)]
    for path, number, message in problems:
        print(f"{path}:{number}: {message}")
    print(f"check_layers: {len(files)} files, {len(problems)} problems", file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
