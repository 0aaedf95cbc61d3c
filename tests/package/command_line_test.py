#!/usr/bin/env python3
"""Holds the man page and the completions against the tool, and lets the shells complete: command_line_test.py VORN"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
PACKAGING = os.path.join(ROOT, "packaging")
COMPLETIONS = os.path.join(PACKAGING, "completions")
FILES = ["vorn.1", "completions/vorn.bash", "completions/vorn.zsh", "completions/vorn.fish"]

tool = None  # from the command line


def text_of(name, folder=PACKAGING):
    with open(os.path.join(folder, name), encoding="utf-8") as file:
        return file.read()


def run(*command, **options):
    return subprocess.run(command, capture_output=True, check=True, text=True, **options).stdout


def help_of(*words):
    return run(tool, *words, "--help")


def commands(*above):
    """Every command with the options in its help, found without the script that writes the files."""
    text = help_of(*above)
    yield above, set(re.findall(r"^  (?:-\w,)?(--[\w-]+)", text, re.M)) - {"--help"}
    for name in re.findall(r"^  (\w+)", text.partition("Subcommands:")[2], re.M):
        yield from commands(*above, name)


class WrittenFiles(unittest.TestCase):
    def test_are_those_of_this_tool(self):
        with tempfile.TemporaryDirectory() as folder:
            run(sys.executable, os.path.join(ROOT, "tools", "describe_command_line.py"), tool, folder)
            for name in FILES:
                self.assertEqual(text_of(name), text_of(name, folder), f"{name}: make command-line")

    def test_hold_every_command_and_option(self):
        names = list(commands())
        self.assertGreater(len(names), 12)
        fish = [line for line in text_of("completions/vorn.fish").splitlines() if line.startswith("complete")]
        man = text_of("vorn.1").replace("\\-", "-").replace("\\fB", "").replace("\\fR", "")
        for words, options in names:
            below = self.zsh_part(words)
            for option in options:
                self.assertIn(option, below, f"zsh: {words}")
                self.assertTrue(
                    any(f"-l {option[2:]} " in line and all(f" {w}" in line for w in words) for line in fish),
                    f"fish: {words} {option}",
                )
                self.assertRegex(self.man_part(man, words), rf"(?m)(^|, ){option}\b", f"man page: {words}")
            self.assertLessEqual(options | {"--help"}, set(bash("vorn", *words, "-")))

    def zsh_part(self, words):
        text = text_of("completions/vorn.zsh")
        for word in words:
            function = text.partition(f"_vorn_{word}() {{")[2]
            text = function or text.partition(f"{word})\n")[2].partition(";;")[0]
        return text

    def man_part(self, man, words):
        if words in ((), ("settings",)):  # a group has no options of its own
            return man
        return man.partition(f'.SS "{" ".join(["vorn", *words])}"')[2].partition(".SS")[0]

    @unittest.skipUnless(shutil.which("man") and shutil.which("groff"), "man is not installed")
    def test_man_page_is_set_without_a_warning(self):
        result = subprocess.run(
            ["man", "--warnings", "-E", "UTF-8", "-l", os.path.join(PACKAGING, "vorn.1")],
            capture_output=True, check=True, env={**os.environ, "MANWIDTH": "80", "MANPAGER": "cat"},
        )  # fmt: skip
        self.assertEqual(b"", result.stderr)
        self.assertIn("vorn settings set", result.stdout.decode("utf-8"))


def bash(*words, folder=None):
    """What bash offers for the last word."""
    script = f"""
      source {COMPLETIONS}/vorn.bash
      COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
      _vorn 2>/dev/null
      printf '%s\\n' "${{COMPREPLY[@]}}"
    """
    return run("bash", "--norc", "-c", script, "bash", *words, cwd=folder).splitlines()


class Bash(unittest.TestCase):
    def test_completes_commands_options_and_values(self):
        self.assertEqual(["convert"], bash("vorn", "conv"))
        self.assertEqual(["--cross-points"], bash("vorn", "edit", "a.xml", "b.xml", "--cr"))
        self.assertEqual(["4.0", "4.1"], bash("vorn", "convert", "a.xml", "b.xml", "--edition", "4"))
        self.assertEqual(["list"], bash("vorn", "settings", "l"))
        self.assertEqual(["--ts"], bash("vorn", "settings", "list", "--t"))

    def test_completes_names_of_files_with_blanks(self):
        with tempfile.TemporaryDirectory() as folder:
            for name in ["design one.xml", "design.xml"]:
                open(os.path.join(folder, name), "w", encoding="utf-8").close()
            self.assertEqual(["design one.xml", "design.xml"], sorted(bash("vorn", "check", "des", folder=folder)))
            self.assertEqual(["design.xml"], bash("vorn", "plot", "-o", "design.", folder=folder))

    def test_registers_itself(self):
        self.assertIn("-F _vorn vorn", run("bash", "--norc", "-c", f"source {COMPLETIONS}/vorn.bash; complete -p vorn"))


@unittest.skipUnless(shutil.which("fish"), "fish is not installed")
class Fish(unittest.TestCase):
    def complete(self, line):
        with tempfile.TemporaryDirectory() as home:
            out = run(
                "fish", "--no-config", "-c", f"source {COMPLETIONS}/vorn.fish; complete -C '{line}'",
                env={**os.environ, "HOME": home, "XDG_DATA_HOME": home}, cwd=home,
            )  # fmt: skip
        return [offer.partition("\t")[0] for offer in out.splitlines()]

    def test_completes_commands_options_and_values(self):
        self.assertEqual(["convert"], self.complete("vorn conv"))
        self.assertEqual(["--cross-points"], self.complete("vorn edit a.xml b.xml --cr"))
        self.assertEqual(["4.0", "4.1"], self.complete("vorn convert a.xml b.xml --edition 4"))
        self.assertEqual(["list"], self.complete("vorn settings li"))


@unittest.skipUnless(shutil.which("zsh"), "zsh is not installed")
class Zsh(unittest.TestCase):
    # A shell of its own, in a terminal of its own, is typed into; what it has made of the line is read back.
    SCRIPT = """
      zmodload zsh/zpty
      zpty shell "PS1= RPROMPT= zsh -f -i"
      type() { zpty -w shell "$1"; }
      type "unsetopt beep promptcr promptsp zle_bracketed_paste"
      type "fpath=($2 \\$fpath); autoload -U compinit; compinit -u -D"
      type "typed() { print -r -- \\"<\\$BUFFER>\\"; BUFFER=; zle accept-line }; zle -N typed; bindkey '^G' typed"
      type "print rea''dy"
      zpty -r shell text '*ready*'
      zpty -w -n shell "$1"$'\\t\\a'
      zpty -r shell text '*<*>*'
      print -r -- "$text"
    """

    def complete(self, line):
        with tempfile.TemporaryDirectory() as folder:
            shutil.copyfile(os.path.join(COMPLETIONS, "vorn.zsh"), os.path.join(folder, "_vorn"))
            out = run("zsh", "-f", "-c", self.SCRIPT, "zsh", line, folder, cwd=folder, timeout=60)
        return re.findall(r"<([^<>]*)>", out)[-1].rstrip()

    def test_completes_commands_options_and_values(self):
        self.assertEqual("vorn convert", self.complete("vorn conv"))
        self.assertEqual("vorn edit a.xml b.xml --cross-points", self.complete("vorn edit a.xml b.xml --cr"))
        line = "vorn convert a.xml b.xml --edition 2"
        self.assertEqual(line + ".0", self.complete(line))
        self.assertEqual("vorn settings list", self.complete("vorn settings l"))


if __name__ == "__main__":
    tool = sys.argv.pop(1)
    unittest.main()
