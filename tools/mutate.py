#!/usr/bin/env python3
"""Changes vorn/ in one place at a time and asks the tests: tools/mutate.py [--count N] [--seed S] [--file PATTERN]

A mutant that no test notices shows what the tests do not look at. Mutants that do not compile, or whose machine code is
that of the original, do not count. The sources stay as they are: a changed file stands in a folder of its own, and only
what includes it is compiled anew, with the rest of BUILD, a build of the preset `coverage`. Which programs run a line
comes from what `make coverage` left there. BUILD/mutants/outcomes.jsonl keeps what became of every mutant, from which
the next run resumes; BUILD/mutants/survivors.txt lists what was not caught. Survivors that equivalent_mutants.toml
beside this file explains do not count. Exits with 1 where fewer than 95 % of the others are caught, or where that list
is wrong.

Sources are taken to be formatted: an operator between blanks has two operands, `<` without them opens a template's
arguments.
"""

import argparse
import concurrent.futures
import fnmatch
import glob
import hashlib
import json
import math
import os
import random
import re
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import threading
import time
import tomllib
from collections import namedtuple

from coverage import PROGRAMS, ROOT, report_path

LEAST_CAUGHT = 95.0
LIBRARY = "libvorn.so"
EQUIVALENT_MUTANTS = os.path.join("tools", "equivalent_mutants.toml")

DATA_TABLES = "vorn/platform/code_page_932*table.h"  # numbers by the thousand, which no one wrote by hand

# What includes a header is compiled anew: of wide ones, which many objects include, only a few mutants are tried.
MOST_DEPENDENTS = 14
HEADER_SHARE = 0.1
WIDE_HEADER_SHARE = 1 / 30

# What mutants run does not count as covered: where it would be written to is no folder.
UNCOUNTED = dict(os.environ, GCOV_PREFIX="/dev/null", CCACHE_DISABLE="1")

# Tests that try inputs by the thousand and take as long as all others together: only asked about files they stand near.
SLOW_TESTS = "CountedArchive.DoesNotGrowAgain*:*/Damaged*Archive.*:OleDateTime.KeepsEvery*:FixedDecimal.Rounds*AsByHand"

COMPILER_SECONDS = 120
WALL_SECONDS = 900  # for what sleeps; everything else is limited by the processor's time
MEMORY = 8 << 30

# --- Reading the sources ---------------------------------------------------------------------------------------------

Token = namedtuple("Token", "kind text start end")
Mutation = namedtuple("Mutation", "kind start end replacement")

TOKEN = re.compile(
    r"""
    (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<directive>^[ \t]*\#(?:[^\n\\]|\\.|\\\n)*)
  | (?P<raw>(?:u8|[uUL])?R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)")
  | (?P<text>(?:u8|[uUL])?"(?:[^"\\\n]|\\.)*"|(?:u8|[uUL])?'(?:[^'\\\n]|\\.)+')
  | (?P<number>(?:0[xX][0-9a-fA-F']+|(?:\d[\d']*\.?[\d']*|\.\d+)(?:[eE][+-]?\d+)?)[uUlLfF]*)
  | (?P<word>[A-Za-z_]\w*)
  | (?P<sign><=>|<<=|>>=|\.\.\.|->|::|\+\+|--|<<|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|\[\[|\]\]|[-+*/%&|^~!<>=?:;,.(){}\[\]])
    """,
    re.VERBOSE | re.MULTILINE | re.DOTALL,
)
NO_CODE = ("comment", "directive")


def tokens_of(text):
    tokens = (Token(found.lastgroup, found.group(), found.start(), found.end()) for found in TOKEN.finditer(text))
    return [token for token in tokens if token.kind not in NO_CODE]


OPEN = {"(": ")", "[": "]", "{": "}", "[[": "]]"}
CLOSE = {close: opening for opening, close in OPEN.items()}


def matching(tokens, index):
    """Where the bracket at an index closes."""
    depth = 0
    for at in range(index, len(tokens)):
        depth += tokens[at].text in OPEN
        depth -= tokens[at].text in CLOSE
        if depth == 0:
            return at
    return len(tokens) - 1


def matching_angle(tokens, index):
    depth = 0
    for at in range(index, len(tokens)):
        depth += tokens[at].text == "<"
        depth -= {">": 1, ">>": 2}.get(tokens[at].text, 0)
        if depth <= 0:
            return at
    return len(tokens) - 1


def left_alone(tokens):
    """The indices of tokens that are no code that runs: heads of templates, static_assert, attributes."""
    alone = set()
    for at, token in enumerate(tokens[:-1]):
        if token.text == "template" and tokens[at + 1].text == "<":
            alone.update(range(at, matching_angle(tokens, at + 1) + 1))
        elif token.text in ("static_assert", "noexcept", "explicit", "decltype") and tokens[at + 1].text == "(":
            alone.update(range(at, matching(tokens, at + 1) + 1))
        elif token.text == "[[":
            alone.update(range(at, matching(tokens, at) + 1))
        elif token.text == "operator":
            alone.update((at, at + 1))
        elif token.text in ("concept", "using"):
            end = next((i for i in range(at, len(tokens)) if tokens[i].text == ";"), at)
            alone.update(range(at, end + 1))
    return alone


# --- The kinds of mutations ------------------------------------------------------------------------------------------

OTHER_OPERATORS = {
    "relational": {
        "<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"), "==": ("!=",), "!=": ("==",),
    },
    "arithmetic": {
        "+": ("-",), "-": ("+",), "*": ("/",), "/": ("*",), "%": ("*",), "&": ("|",), "|": ("&",), "^": ("&",),
        "<<": (">>",), ">>": ("<<",), "+=": ("-=",), "-=": ("+=",), "*=": ("/=",), "/=": ("*=",), "|=": ("&=",),
        "&=": ("|=",),
    },
    "logical": {"&&": ("||",), "||": ("&&",)},
}  # fmt: skip
OPERANDS_END = ("number", "word", "text", "raw")
NOT_A_STATEMENT = set(
    """
    return if else for while do switch case default using namespace template class struct enum union public private
    protected friend typedef static constexpr const constinit auto operator try catch throw goto extern inline explicit
    virtual static_assert
    """.split()
)
LABELS = ("case", "default", "public", "private", "protected")
ASSIGNMENTS = {"=", "+=", "-=", "*=", "/=", "|=", "&=", "%=", "^=", "<<=", ">>="}


def mutate_operators(text, tokens):
    for token in tokens:
        between_blanks = text[token.start - 1].isspace() and text[token.end : token.end + 1].isspace()
        if token.kind != "sign" or not between_blanks:
            continue
        for kind, others in OTHER_OPERATORS.items():
            for other in others.get(token.text, ()):
                yield Mutation(kind, token.start, token.end, other)


def begins_operand(before):
    return before.text == "return" or before.kind == "sign" and before.text not in (")", "]")


def mutate_unary(text, tokens):
    for before, token, after in zip(tokens, tokens[1:], tokens[2:]):
        if token.text in ("++", "--"):
            yield Mutation("increment", token.start, token.end, "--" if token.text == "++" else "++")
        elif token.text == "!" and after.text != "=":
            yield Mutation("negation", token.start, token.end, "")
        elif token.text == "-" and after.start == token.end and begins_operand(before):
            yield Mutation("arithmetic", token.start, token.end, "")


def other_numbers(number):
    whole = re.fullmatch(r"(0[xX][0-9a-fA-F]+|\d+)([uUlL]*)", number.replace("'", ""))
    if whole:
        value = int(whole[1], 16 if whole[1][:2] in ("0x", "0X") else 10)
        return [f"{other}{whole[2]}" for other in (value + 1, value - 1) if other >= 0]
    if "e" in number.lower():
        return [f"({number} * 2.0)", f"({number} / 2.0)"]
    return [f"({number} + 1.0)", f"({number} - 1.0)"]


def mutate_constants(text, tokens):
    for token in tokens:
        if token.kind == "number":
            for other in other_numbers(token.text):
                yield Mutation("constant", token.start, token.end, other)
        elif token.text in ("true", "false"):
            yield Mutation("constant", token.start, token.end, "false" if token.text == "true" else "true")


def mutate_conditions(text, tokens):
    for at, token in enumerate(tokens[:-1]):
        if token.text not in ("if", "while") or tokens[at + 1].text != "(":
            continue
        end = matching(tokens, at + 1)
        inside = tokens[at + 2 : end]
        first = next((i + 1 for i, inner in enumerate(inside) if inner.text == ";"), 0)
        if not inside[first:] or inside[first].text == "!" and not {"&&", "||"} & {inner.text for inner in inside}:
            continue  # changed as a negation
        start, stop = inside[first].start, inside[-1].end
        yield Mutation("condition", start, stop, f"!({text[start:stop]})")


def statement_end(tokens, at):
    """The semicolon that ends what begins at an index; those of lambdas within are passed over."""
    while tokens[at].text != ";":
        at = matching(tokens, at) + 1 if tokens[at].text in OPEN else at + 1
    return at


def mutate_returns(text, tokens):
    for at, token in enumerate(tokens[:-1]):
        if token.text != "return" or tokens[at + 1].text in (";", "{", "["):
            continue
        end = statement_end(tokens, at)
        start, stop = tokens[at + 1].start, tokens[end - 1].end
        if end - at == 2 and (tokens[at + 1].kind == "number" or tokens[at + 1].text in ("true", "false", "nullptr")):
            continue  # changed as a constant
        yield Mutation("return", start, stop, f"!({text[start:stop]})")


def ends_type(before, first):
    """Whether a word behind this names what is declared."""
    return before.kind == "word" or before.text in (">", "&", "*", "&&") and before is not first


def is_removable(statement):
    """Whether tokens up to a semicolon are a call or an assignment, and no declaration."""
    words = [token.text for token in statement]
    if words in (["break"], ["continue"], ["return"]):
        return True
    if words[0] in NOT_A_STATEMENT or words[-1] in ("default", "delete"):
        return False
    if statement[0].kind != "word" and words[0] not in ("++", "--", "*", "("):
        return False
    depth = 0
    for before, token in zip([None, *statement], statement):
        if token.text in ASSIGNMENTS and depth == 0:
            return True
        if depth == 0 and before and token.kind == "word" and ends_type(before, statement[0]):
            return False
        depth += token.text in OPEN
        depth -= token.text in CLOSE
    return words[-1] == ")" or words[0] in ("++", "--") or words[-1] in ("++", "--")


def mutate_statements(text, tokens):
    start = 0
    for at, token in enumerate(tokens):
        if at < start:
            continue  # within the parentheses of a loop or a condition
        if token.text == ";" and at > start and is_removable(tokens[start:at]):
            yield Mutation("statement", tokens[start].start, tokens[at - 1].end, "")
        if token.text in (";", "{", "}", "else") or token.text == ":" and tokens[start].text in LABELS:
            start = at + 1
        elif token.text in ("if", "for", "while", "switch") and at + 2 < len(tokens):
            start = matching(tokens, at + 1 + (tokens[at + 1].text == "constexpr")) + 1


MUTATORS = [
    mutate_operators, mutate_unary, mutate_constants, mutate_conditions, mutate_returns, mutate_statements,
]  # fmt: skip


def mutations_of(text):
    every = tokens_of(text)
    alone = left_alone(every)
    spans = [(every[i].start, every[i].end) for i in alone]
    found = {mutation for mutator in MUTATORS for mutation in mutator(text, every)}
    starts = {start for start, _ in spans}
    return sorted(mutation for mutation in found if mutation.start not in starts)


# --- The sample ------------------------------------------------------------------------------------------------------


def whole_lines(text, start, end):
    """The lines that a stretch of a text stands in, as one."""
    first = text.rfind("\n", 0, start) + 1
    return " ".join(text[first : text.index("\n", end)].split())


class Mutant:
    """One change of one file."""

    def __init__(self, path, text, mutation):
        self.path = path
        self.mutation = mutation
        self.line = text.count("\n", 0, mutation.start) + 1
        self.last_line = text.count("\n", 0, mutation.end) + 1
        self.text = text[: mutation.start] + mutation.replacement + text[mutation.end :]
        self.line_before = whole_lines(text, mutation.start, mutation.end)
        self.line_after = whole_lines(self.text, mutation.start, mutation.start + len(mutation.replacement))
        before = text[mutation.start : mutation.end]
        self.change = f"{' '.join(before.split())}  ->  {' '.join(mutation.replacement.split()) or '(nothing)'}"
        self.key = hashlib.sha256(f"{path}\0{self.text}".encode()).hexdigest()[:16]


def mutants_of(path):
    with open(os.path.join(ROOT, path), encoding="utf-8") as file:
        text = file.read()
    return [Mutant(path, text, mutation) for mutation in mutations_of(text)]


def draw_few_mutants(paths, count, seed):
    """No more than so many mutants, of whichever files."""
    drawn = draw_mutants(paths, count, seed)
    random.Random(seed).shuffle(drawn)
    return drawn[:count]


def draw_mutants(paths, count, seed):
    """So many mutants, at least one of every file, otherwise as many of each as there is to change in it."""
    everything = {}
    for path in sorted(paths):
        mutants = mutants_of(path)
        random.Random(f"{seed} {path}").shuffle(mutants)
        if mutants:
            everything[path] = mutants
    total = sum(len(mutants) for mutants in everything.values())
    share = count / total if total else 0.0
    drawn = []
    for mutants in everything.values():
        drawn += mutants[: max(1, math.floor(share * len(mutants) + 0.5))]
    return drawn


class EquivalentMutants:
    """The mutants that nobody could notice, as the sources list them."""

    def __init__(self):
        self.keys = set()
        self.mistakes = []
        with open(os.path.join(ROOT, EQUIVALENT_MUTANTS), "rb") as file:
            entries = tomllib.load(file)["mutant"]
        self.files = {entry["file"]: None for entry in entries}
        for path in self.files:
            self.files[path] = mutants_of(path) if os.path.exists(os.path.join(ROOT, path)) else []
        for entry in entries:
            for after in entry["becomes"]:
                self._add(entry["file"], entry["line"], after)

    def _add(self, path, before, after):
        meant = [m for m in self.files[path] if (m.line_before, m.line_after) == (before, after)]
        if len(meant) != 1:
            self.mistakes.append(f"{path}: {len(meant)} mutants of this kind: {before}  ->  {after}")
        self.keys.update(mutant.key for mutant in meant)

    def excuse(self, outcomes):
        """Marks the survivors among the outcomes that are equivalent; one that was caught is none."""
        for outcome in outcomes:
            if outcome["key"] not in self.keys:
                continue
            if outcome["outcome"] == "survived":
                outcome["outcome"] = "equivalent"
            elif outcome["outcome"] in CAUGHT:
                self.mistakes.append(f"{outcome['place']}: a test notices it: {outcome['change']}")


# --- Building and running --------------------------------------------------------------------------------------------


def run_limited(command, cpu_seconds, **options):
    """The exit code of a program that may take so much time and memory; None where it took more time."""
    limits = ["prlimit", f"--cpu={cpu_seconds}:{cpu_seconds + 5}", f"--as={MEMORY}", "--core=0"]
    options.setdefault("stdout", subprocess.DEVNULL)
    silent = {"stdin": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
    try:
        code = subprocess.run([*limits, *command], check=False, timeout=WALL_SECONDS, **silent, **options).returncode
    except subprocess.TimeoutExpired:
        return None
    return None if code == -signal.SIGXCPU else code


class Workshop:
    """The build that mutants are put into piece by piece. Nothing in it changes."""

    def __init__(self, build):
        self.build = build
        self.directory = os.path.join(build, "mutants")
        os.makedirs(self.directory, exist_ok=True)
        self.tests = sorted(glob.glob("tests/**/*_test.cpp", root_dir=ROOT, recursive=True))
        self.commands = self._commands()
        self.dependents = self._dependents()
        self._seconds = {}
        self._timing = threading.Lock()

    def _link(self, program):
        """Makes a program that loads the library; once for each state of the objects."""
        made = [os.path.join(self.directory, name) for name in (LIBRARY, program)]
        objects = [os.path.join(self.build, target) for target in self.commands if target.endswith(".o")]
        if all(map(os.path.exists, made)) and max(map(os.path.getmtime, objects)) < min(map(os.path.getmtime, made)):
            return True
        return self.link_library(self.directory, {}) and self.link_program(program, self.directory, {})

    def test_seconds(self, program):
        with self._timing:
            if program not in self._seconds:
                if not self._link(program):
                    raise RuntimeError("The build is not complete: make coverage")
                self._seconds[program] = self._time_tests(program)
            return self._seconds[program]

    def _time_tests(self, program):
        """How much of the processor's time the tests take when nothing is changed; they have to pass. Once a build."""
        kept = os.path.join(self.directory, program + ".seconds")
        if os.path.exists(kept) and os.path.getmtime(kept) > os.path.getmtime(os.path.join(self.directory, program)):
            with open(kept, encoding="utf-8") as file:
                return int(file.read())
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        environment = dict(UNCOUNTED, LD_LIBRARY_PATH=self.directory)
        command = [os.path.join(self.directory, program), "--gtest_brief=1", "--gtest_filter=-" + SLOW_TESTS]
        log = os.path.join(self.directory, program + ".log")
        with open(log, "w", encoding="utf-8") as output:
            if run_limited(command, WALL_SECONDS, env=environment, stdout=output) != 0:
                raise RuntimeError(f"{program} fails without any change: {log}")
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        seconds = math.ceil(after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime)
        with open(kept, "w", encoding="utf-8") as file:
            file.write(str(seconds))
        return seconds

    def _ninja(self, *arguments):
        command = ["ninja", "-C", self.build, *arguments]
        return subprocess.run(command, capture_output=True, text=True, check=True).stdout

    def _commands(self):
        """How each object, the library and each program are made."""
        commands = {}
        programs = ["tests/" + program for program in PROGRAMS]
        for command in self._ninja("-t", "commands", *programs).split("\n"):
            for part in command.split(" && "):
                output = re.search(r" -o (\S+)", part)
                if output and "g++" in part:
                    commands[output.group(1)] = shlex.split(part)
        return commands

    def _dependents(self):
        """The objects that include each file."""
        dependents = {}
        target = None
        for line in self._ninja("-t", "deps").split("\n"):
            if line and not line.startswith(" "):
                target = line.split(":")[0]
            elif line and target in self.commands:
                path = os.path.relpath(os.path.join(self.build, line.strip()), ROOT)
                dependents.setdefault(path, []).append(target)
        return dependents

    def compile(self, target, folder, mutant, optimize=False):
        """The object as the mutant makes it, None where it does not compile."""
        command = list(self.commands[target])
        output = os.path.join(folder, target.replace("/", "_") + (".optimized" if optimize else ""))
        command[command.index("-o") + 1] = output
        for option in ("-MF", "-MT"):
            at = command.index(option)
            del command[at : at + 2]
        for option in ("-MD", "--coverage"):  # nobody counts what mutants run, and it takes time
            command.remove(option)
        if mutant:
            changed = {os.path.join(ROOT, mutant.path): os.path.join(folder, mutant.path)}
            command = [changed.get(word, word) for word in command]
            own = next(at for at, word in enumerate(command) if word.startswith("-I"))
            command.insert(own, "-I" + folder)  # a changed header takes the place of the original
        if optimize:
            command.append("-O2")
        done = run_limited([*command, "-w"], COMPILER_SECONDS, cwd=self.build, env=UNCOUNTED) == 0
        return output if done else None

    def link_library(self, folder, replaced):
        """The library as one that programs load, with some of its objects replaced."""
        objects = [replaced.get(target, target) for target in self.commands if target.startswith("vorn/")]
        command = ["g++", "--coverage", "-shared", "-Wl,-soname," + LIBRARY, "-o", os.path.join(folder, LIBRARY)]
        return run_limited(command + objects, COMPILER_SECONDS, cwd=self.build) == 0

    def link_program(self, program, folder, replaced, only=None):
        """A test program that loads the library, with some of its objects replaced, and of only some if these are said."""
        words = self.commands["tests/" + program]
        left_out = {word for word in words if only is not None and word.endswith(".o") and word not in only}
        command = [replaced.get(word, word) for word in words if word not in left_out]
        command = [os.path.join(folder, LIBRARY) if word.endswith("libvorn.a") else word for word in command]
        command[command.index("-o") + 1] = os.path.join(folder, program)
        return run_limited(command, COMPILER_SECONDS, cwd=self.build) == 0


INCLUDED = re.compile(r'^#include "((?:vorn|tests)/[^"]*)"', re.MULTILINE)


def included_by_test(path):
    """The headers of vorn/ that a test includes, itself or by what it has from tests/."""
    with open(os.path.join(ROOT, path), encoding="utf-8") as file:
        names = INCLUDED.findall(file.read())
    below = [included_by_test(name) for name in names if name.startswith("tests/")]
    return set().union(*below, (name for name in names if name.startswith("vorn/")))


def near_tests(workshop, program, path):
    """The sources of the tests of a program that a file is asked first."""
    sources = [test for test in workshop.tests if f"tests/CMakeFiles/{program}.dir/{test[6:]}.o" in workshop.commands]
    folder, name = os.path.split(os.path.splitext(path)[0])
    if program == "vorn_tests":  # those that stand where the file's own would: those of its name, or of its folder
        stem = re.sub(r"_record$", "", name)
        near = [test for test in sources if os.path.basename(test) == stem + "_test.cpp"]
        return near or [test for test in sources if test.startswith(folder.replace("vorn/", "tests/", 1) + "/")]
    included = {test: included_by_test(test) for test in sources}
    near = [test for test in sources if f"{folder}/{name}.h" in included[test]]
    return near or [test for test in sources if any(os.path.dirname(header) == folder for header in included[test])]


def filter_of(tests):
    """What the test framework takes for the tests of some sources."""
    suites = set()
    for test in tests:
        with open(os.path.join(ROOT, test), encoding="utf-8") as file:
            suites.update(re.findall(r"^\s*(?:TYPED_)?TEST(?:_[FP])?\(\s*(\w+),", file.read(), re.MULTILINE))
    return ":".join(pattern for suite in sorted(suites) for pattern in (f"{suite}.*", f"*/{suite}.*", f"{suite}/*.*"))


class DoesNotCompile(Exception):
    """A mutant that is no program."""


class Trial:
    """Finds out what becomes of one mutant."""

    def __init__(self, workshop, lines_run, mutant):
        self.workshop = workshop
        self.lines_run = lines_run
        self.mutant = mutant
        self.folder = os.path.join(workshop.directory, "trials", mutant.key)
        self.targets = [t for t in workshop.dependents.get(mutant.path, ()) if t in workshop.commands]
        self.replaced = {}  # what was compiled in place of an object

    def outcome(self):
        """What became of it, and which tests caught it."""
        shutil.rmtree(self.folder, ignore_errors=True)
        file = os.path.join(self.folder, self.mutant.path)
        os.makedirs(os.path.dirname(file))
        with open(file, "w", encoding="utf-8") as copy:
            copy.write(self.mutant.text)
        try:
            return self._try()
        except DoesNotCompile:
            return "does not compile", ""
        finally:
            shutil.rmtree(self.folder, ignore_errors=True)

    def _try(self):
        self._compile("vorn/")
        if not self.workshop.link_library(self.folder, self.replaced):
            raise DoesNotCompile
        programs = [p for p in PROGRAMS if self._runs_line(p)]
        if len(self.targets) > MOST_DEPENDENTS and PROGRAMS[0] in programs:
            caught = self._ask_near_alone(PROGRAMS[0])
            if caught:
                return caught, PROGRAMS[0]
        caught = self._ask_each(programs[:1])
        if caught:
            return caught
        if self._same_code():  # told sooner than by the other programs, which take longer
            return "same code", ""
        return self._ask_each(programs[1:]) or ("survived", "" if programs else "no test runs the line")

    def _compile(self, below):
        """Compiles what includes the file and begins so."""
        for target in self.targets:
            if target.startswith(below) and target not in self.replaced:
                compiled = self.workshop.compile(target, self.folder, self.mutant)
                if not compiled:
                    raise DoesNotCompile
                self.replaced[target] = compiled

    def _runs_line(self, program):
        """Lines that no program knows are no code, such as constants: anybody may use these."""
        numbers = range(self.mutant.line, self.mutant.last_line + 1)
        counts = {p: [self.lines_run[p].get((self.mutant.path, n)) for n in numbers] for p in PROGRAMS}
        known = any(count is not None for of_program in counts.values() for count in of_program)
        return not known or any(counts[program])

    def _ask_near_alone(self, program):
        """Asks the near tests in a program of their own: where a header is wide, compiling all others takes minutes. All
        of that program has the mutant. Where it cannot be linked without the other tests, there is no answer."""
        objects = f"tests/CMakeFiles/{program}.dir/"
        near = near_tests(self.workshop, program, self.mutant.path)
        own = [f"{objects}{test[6:]}.o" for test in near]
        own += [t for t in self.workshop.commands if t.startswith(objects + "support/")]
        for target in own:
            self._compile(target)
        if not near or not self.workshop.link_program(program, self.folder, self.replaced, own):
            return None
        return self._run(self.folder, program, filter_of(near), 2)

    def _ask_each(self, programs):
        """How the first program that notices the mutant caught it, and which it is."""
        for program in programs:
            caught = self._ask(program)
            if caught:
                return caught, program
        return None

    def _ask(self, program):
        folder = self.workshop.directory
        own = f"tests/CMakeFiles/{program}.dir/"
        self._compile(own)
        if any(target.startswith(own) for target in self.replaced):
            folder = self.folder
            if not self.workshop.link_program(program, folder, self.replaced):
                raise DoesNotCompile
        near = filter_of(near_tests(self.workshop, program, self.mutant.path))
        caught = self._run(folder, program, near, 2) if near else None
        return caught or self._run(folder, program, f"-{SLOW_TESTS}:{near}", 3)

    def _run(self, folder, program, tests, times):
        """Runs tests of a program: how they caught the mutant, or None. They may take so many times what all take."""
        limit = times * self.workshop.test_seconds(program) + 2
        environment = dict(UNCOUNTED, LD_LIBRARY_PATH=self.folder, TMPDIR=self.folder)
        command = [os.path.join(folder, program), "--gtest_fail_fast", "--gtest_brief=1", f"--gtest_filter={tests}"]
        code = run_limited(command, limit, env=environment, cwd=self.folder)
        if code is None:
            return "took too long"
        return "caught" if code != 0 else None

    def _same_code(self):
        """Whether the optimizer makes the same of it: then it is the same program."""
        for target in self.targets:
            changed = self.workshop.compile(target, self.folder, self.mutant, optimize=True)
            content = read_code(changed)
            if content != read_code(self.workshop.compile(target, self.folder, None, optimize=True)):
                return False
        return bool(self.targets)


def read_code(path):
    subprocess.run(["strip", "--strip-unneeded", "--remove-section=.comment", path], check=True)
    subprocess.run(["objcopy", "--remove-section=.note*", path], check=True)
    with open(path, "rb") as file:
        return file.read()


# --- The whole -------------------------------------------------------------------------------------------------------

CAUGHT = ("caught", "took too long")


def lines_that_run(build):
    """How often each program runs each line: {program: {(path, line): count}}."""
    lines = {}
    for program in PROGRAMS:
        with open(report_path(build, program), encoding="utf-8") as file:
            files = json.load(file)["files"]
        lines[program] = {(f["file"], line["line_number"]): line["count"] for f in files for line in f["lines"]}
    return lines


def checksum_of_tests():
    digest = hashlib.sha256()
    for path in sorted(glob.glob(os.path.join(ROOT, "tests/**/*.*"), recursive=True)):
        if path.endswith((".cpp", ".h")):
            with open(path, "rb") as file:
                digest.update(file.read())
    return digest.hexdigest()[:16]


def outcomes_path(directory):
    return os.path.join(directory, "outcomes.jsonl")


def forget_outcomes(directory):
    """Puts what is known aside: no test catches for ever what it caught once."""
    path = outcomes_path(directory)
    if os.path.exists(path):
        os.replace(path, path + ".former")


def former_outcomes(path, tests, equivalent):
    """What is known already; what survived is asked again when the tests have changed, if anybody could notice it."""
    if not os.path.exists(path):
        return {}
    with open(path, encoding="utf-8") as file:
        outcomes = {outcome["key"]: outcome for outcome in map(json.loads, file)}
    return {
        key: o for key, o in outcomes.items()
        if o["outcome"] != "survived" or o["tests"] == tests or key in equivalent
    }  # fmt: skip


def try_mutants(workshop, mutants, lines_run, equivalent, jobs, minutes):
    """The outcomes of as many mutants as the time allows."""
    deadline = time.monotonic() + 60 * minutes
    path = outcomes_path(workshop.directory)
    tests = checksum_of_tests()
    outcomes = former_outcomes(path, tests, equivalent)
    waiting = [mutant for mutant in mutants if mutant.key not in outcomes]

    def attempt(mutant):
        start = time.monotonic()
        if start > deadline:
            return None
        outcome, by = Trial(workshop, lines_run, mutant).outcome()
        return {
            "key": mutant.key, "outcome": outcome, "by": by, "tests": tests, "kind": mutant.mutation.kind,
            "place": f"{mutant.path}:{mutant.line}", "change": mutant.change,
            "seconds": round(time.monotonic() - start, 1),
        }  # fmt: skip

    with open(path, "a", encoding="utf-8") as file, concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for number, outcome in enumerate(pool.map(attempt, waiting), 1):
            if not outcome:
                continue
            outcomes[outcome["key"]] = outcome
            file.write(json.dumps(outcome, ensure_ascii=False) + "\n")
            file.flush()
            what = f"{outcome['outcome']}: {outcome['place']}: {outcome['change']}"
            print(f"[{number}/{len(waiting)}] {what}", flush=True)
    return [outcomes[mutant.key] for mutant in mutants if mutant.key in outcomes]


def sum_up(directory, outcomes):
    survivors = [o for o in outcomes if o["outcome"] == "survived"]
    caught = sum(o["outcome"] in CAUGHT for o in outcomes)
    with open(os.path.join(directory, "survivors.txt"), "w", encoding="utf-8") as file:
        for o in survivors:
            file.write(f"{o['place']}: {o['kind']}: {o['change']}{' (' + o['by'] + ')' if o['by'] else ''}\n")
    kinds = sorted({o["kind"] for o in outcomes})
    others = {"survived": 10, "equivalent": 12, "same code": 11, "does not compile": 18}
    print(f"\n{'':<14}{'mutants':>9}{'caught':>9}" + "".join(f"{name:>{width}}" for name, width in others.items()))
    for kind in [*kinds, "all"]:
        of_kind = [o["outcome"] for o in outcomes if kind in (o["kind"], "all")]
        row = "".join(f"{of_kind.count(name):>{width}}" for name, width in others.items())
        print(f"{kind:<14}{len(of_kind):>9}{sum(o in CAUGHT for o in of_kind):>9}{row}")
    counted = caught + len(survivors)
    share = 100.0 * caught / counted if counted else 100.0
    seconds = sum(o["seconds"] for o in outcomes)
    print(f"{caught} of {counted} caught, {share:.1f} %, in {seconds / 60:.0f} minutes")
    return share


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--count", type=int, default=300, help="about how many mutants to try")
    parser.add_argument("--seed", type=int, default=1, help="another number gives other mutants")
    parser.add_argument("--file", default="vorn/*", help="only those files, such as 'vorn/model/*'")
    parser.add_argument("--jobs", type=int, default=1, help="how many mutants at a time")
    parser.add_argument("--minutes", type=float, default=math.inf, help="how long to go on; the next run resumes")
    parser.add_argument("--build", default=os.path.join(ROOT, "build", "coverage"), help="of the preset coverage")
    parser.add_argument("--again", action="store_true", help="forget what is known; resume such a run without this")
    parser.add_argument("--list", action="store_true", help="show the mutants and try none")
    options = parser.parse_args()

    workshop = Workshop(os.path.abspath(options.build))
    named = {path for path in workshop.dependents if fnmatch.fnmatch(path, options.file) and path.startswith("vorn/")}
    units = [path for path in named if path.endswith(".cpp")]
    every_header = [path for path in named if path.endswith(".h") and not fnmatch.fnmatch(path, DATA_TABLES)]
    wide = [path for path in every_header if len(workshop.dependents[path]) > MOST_DEPENDENTS]
    headers = [path for path in every_header if path not in wide]
    of_wide = (round(options.count * WIDE_HEADER_SHARE) if units or headers else options.count) if wide else 0
    of_headers = (round(options.count * HEADER_SHARE) if units else options.count - of_wide) if headers else 0
    mutants = draw_mutants(units, options.count - of_headers, options.seed)
    mutants += draw_mutants(headers, of_headers, options.seed)
    mutants += draw_few_mutants(wide, of_wide, options.seed)
    # Whatever was tried when the time is up stands for all of it. What takes long comes last: mutants of headers, and
    # those that every test is asked about, as none will notice them.
    equivalent = EquivalentMutants()
    random.Random(options.seed).shuffle(mutants)
    mutants.sort(key=lambda mutant: (mutant.key in equivalent.keys, mutant.path in wide, mutant.path in headers))
    if options.list:
        for mutant in mutants:
            print(f"{mutant.path}:{mutant.line}: {mutant.mutation.kind}: {mutant.change}")
        return 0
    if options.again:
        forget_outcomes(workshop.directory)
    lines_run = lines_that_run(workshop.build)
    outcomes = try_mutants(workshop, mutants, lines_run, equivalent.keys, options.jobs, options.minutes)
    equivalent.excuse(outcomes)
    share = sum_up(workshop.directory, outcomes)
    for mistake in equivalent.mistakes:
        print(f"{EQUIVALENT_MUTANTS}: {mistake}", file=sys.stderr)
    return 0 if share >= LEAST_CAUGHT and not equivalent.mistakes else 1


if __name__ == "__main__":
    sys.exit(main())
