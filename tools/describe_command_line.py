#!/usr/bin/env python3
"""Writes the man page and the shell completions of the tool from its own help: describe_command_line.py VORN FOLDER

They are kept in packaging/, so that they can be installed where the tool cannot be run. A test compares them with the
tool; `make command-line` writes them anew.
"""

import dataclasses
import os
import re
import subprocess
import sys

MAN_PAGE_FRAME = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "packaging", "vorn.1.in")
HELP_COLUMN = 30  # where descriptions begin


@dataclasses.dataclass
class Argument:
    names: list  # "-o", "--output", or the one name of a positional argument
    value: str  # what the option takes, such as EDITION; empty for a flag
    choices: list
    text: str

    @property
    def is_file(self):
        return self.value in ("OUT", "PAGE") or self.names[0] in ("FILE", "IN", "OUT")


@dataclasses.dataclass
class Command:
    words: list  # ["settings", "list"]; empty for the tool itself
    text: str = ""
    usage: str = ""
    positionals: list = dataclasses.field(default_factory=list)
    options: list = dataclasses.field(default_factory=list)
    commands: list = dataclasses.field(default_factory=list)

    @property
    def title(self):
        return " ".join(["vorn", *self.words])


def parse_argument(left, text):
    head, _, rest = left.partition(" ")
    value, choices = "", []
    if match := re.match(r"([A-Z][A-Z,:=]*[A-Z]|[A-Z])(?::\{([^}]*)\})?", rest):
        value = match.group(1).split(":")[0]
        choices = match.group(2).split(",") if match.group(2) else []
    if not head.startswith("-") or rest.startswith("Needs"):
        value = ""
    return Argument(head.split(",") if head.startswith("-") else [head], value, choices, text)


def entries(lines):
    """(left column, description) of the lines of a section of the help."""
    lines = iter(lines)
    for line in lines:
        if line[HELP_COLUMN - 1 : HELP_COLUMN] == " ":
            yield line[:HELP_COLUMN].strip(), line[HELP_COLUMN:].strip()
        elif "  " in line.strip():
            yield [part.strip() for part in line.strip().split("  ", 1)]
        else:
            yield line.strip(), next(lines).strip()


def read_command(tool, words):
    text = subprocess.run([tool, *words, "--help"], capture_output=True, check=True).stdout.decode("utf-8")
    summary, rest = text.split("\n", 1)
    command = Command(words, summary)
    for section in re.split(r"\n\n(?=[A-Z])", rest.strip("\n")):
        head, *lines = section.split("\n")
        if head.startswith("Usage: "):
            command.usage = head.removeprefix("Usage: ")
        elif head == "Positionals:":
            command.positionals = [parse_argument(left, what) for left, what in entries(lines)]
        elif head == "Options:":
            command.options = [parse_argument(left, what) for left, what in entries(lines)]
        elif head == "Subcommands:":
            command.commands = [read_command(tool, [*words, left]) for left, _ in entries(lines)]
        else:
            raise SystemExit(f"{command.title} --help: {head!r} is not understood")
    return command


def all_commands(command):
    yield command
    for below in command.commands:
        yield from all_commands(below)


# The man page


def roff(text):
    text = text.replace("\\", "\\e").replace("-", "\\-").replace("〓", "\\[u3013]")
    return re.sub(r"^([.'])", r"\\&\1", text)


def man_argument(argument):
    names = ", ".join(f"\\fB{roff(name)}\\fR" if name.startswith("-") else f"\\fI{name}\\fR" for name in argument.names)
    value = f" \\fI{roff(argument.value)}\\fR" if argument.value else ""
    text = argument.text
    if argument.choices and any(choice not in text for choice in argument.choices):
        text += ": " + ", ".join(argument.choices)
    return f".TP\n{names}{value}\n{roff(text[0].upper() + text[1:])}.\n"


def man_command(command):
    usage = roff(command.usage.replace("[OPTIONS] ", "[OPTION]... ").replace("[OPTIONS]", "[OPTION]..."))
    yield f'.SS "{roff(command.title)}"\n{roff(command.text)}.\n.PP\n.B {usage}\n'
    for argument in command.positionals + [option for option in command.options if "--help" not in option.names]:
        yield man_argument(argument)


def man_page(tool):
    commands = "".join(
        "".join(man_command(command)) for command in all_commands(tool) if command.words and not command.commands
    )
    general = "".join(man_argument(option) for option in tool.options)
    with open(MAN_PAGE_FRAME, encoding="utf-8") as file:
        frame = file.read()
    return frame.replace("@GENERAL@\n", general).replace("@COMMANDS@\n", commands)


# bash


def bash(tool):
    cases = []
    values = {}
    for command in all_commands(tool):
        words = [name for option in command.options for name in option.names]
        words += [below.words[-1] for below in command.commands]
        takes_files = any(argument.is_file for argument in command.positionals)
        cases.append(f'    "{" ".join(command.words)}") words="{" ".join(words)}" files={int(takes_files)} ;;\n')
        for option in command.options:
            if option.value:
                key = "files" if option.is_file else " ".join(option.choices)
                values.setdefault(key, set()).update(
                    f'"{" ".join([*command.words, name])}"' for name in option.names
                )
    taken = []
    for key, options in sorted(values.items()):
        if key == "files":
            reply = "compopt -o filenames; COMPREPLY=($(compgen -f -- \"$current\"))"
        else:
            reply = f'COMPREPLY=($(compgen -W "{key}" -- "$current"))' if key else ":"
        patterns = " | \\\n    ".join(sorted(options))
        taken.append(f"    {patterns})\n      {reply}\n      return ;;\n")
    groups = " | ".join(f'"{" ".join(command.words)}"' for command in all_commands(tool) if command.commands)
    return f"""# Completion of vorn for bash. Written by tools/describe_command_line.py.

_vorn() {{
  local IFS=$' \\n' current="${{COMP_WORDS[COMP_CWORD]}}" command="" words="" files=0 index
  COMPREPLY=()
  for ((index = 1; index < COMP_CWORD; ++index)); do
    case "$command" in
      {groups}) ;;
      *) break ;;
    esac
    [[ ${{COMP_WORDS[index]}} == -* ]] || command="${{command:+$command }}${{COMP_WORDS[index]}}"
  done
  local previous="${{COMP_WORDS[COMP_CWORD - 1]}}"
  case "${{command:+$command }}$previous" in
{"".join(taken)}  esac
  case "$command" in
{"".join(cases)}  esac
  COMPREPLY=($(compgen -W "$words" -- "$current"))
  if [[ $files == 1 && $current != -* ]]; then
    local IFS=$'\\n'
    compopt -o filenames 2>/dev/null
    COMPREPLY=($(compgen -f -- "$current"))
  fi
}}

complete -F _vorn vorn
"""


# zsh


def quoted(text):
    return "'" + text.replace("'", "'\\''") + "'"


def zsh_text(text):
    return re.sub(r"([\[\]:\\])", r"\\\1", text)


def zsh_option(option, repeated):
    exclusive = "(" + " ".join(option.names) + ")" if len(option.names) > 1 else ""
    names = "{" + ",".join(option.names) + "}" if len(option.names) > 1 else option.names[0]
    action = ""
    if option.value:
        action = f":{zsh_text(option.value)}:"
        action += "_files" if option.is_file else f"({' '.join(option.choices)})" if option.choices else " "
    before = exclusive or ("*" if repeated else "")
    return (quoted(before) if before else "") + names + quoted(f"[{zsh_text(option.text)}]{action}")


def zsh_command(command):
    repeated = command.words == ["edit"]  # a step may be done again
    lines = [zsh_option(option, repeated) for option in command.options]
    for positional in command.positionals:
        lines.append(quoted(f":{zsh_text(positional.text)}:" + ("_files" if positional.is_file else " ")))
    return "_arguments -S " + " \\\n        ".join(lines)


def zsh_function(command):
    """The completion of a command that has others below it."""
    name = "_" + "_".join(["vorn", *command.words])
    below = "\n".join(f"    {quoted(c.words[-1] + ':' + zsh_text(c.text))}" for c in command.commands)
    cases = ""
    for c in command.commands:
        action = "_" + "_".join(["vorn", *c.words]) if c.commands else zsh_command(c)
        cases += f"      {c.words[-1]})\n        {action}\n        ;;\n"
    options = " ".join(zsh_option(option, repeated=False) for option in command.options)
    text = f"""{name}() {{
  local state line
  local -a commands
  commands=(
{below}
  )
  _arguments -C {options} '1: :->command' '*:: :->argument'
  case $state in
    command) _describe command commands ;;
    argument)
      case $line[1] in
{cases.replace("      ", "        ")}      esac
      ;;
  esac
}}
"""
    return "\n".join([text, *(zsh_function(c) for c in command.commands if c.commands)])


def zsh(tool):
    return "#compdef vorn\n# Completion of vorn for zsh. Written by tools/describe_command_line.py.\n\n" + (
        zsh_function(tool) + "\n_vorn \"$@\"\n"
    )


# fish


def fish_condition(command):
    if not command.words:
        return "__fish_use_subcommand"
    seen = [f"__fish_seen_subcommand_from {word}" for word in command.words]
    if command.commands:
        words = " ".join(below.words[-1] for below in command.commands)
        seen.append(f"not __fish_seen_subcommand_from {words}")
    return "; and ".join(seen)


def fish_options(command):
    condition = quoted(fish_condition(command))
    for below in command.commands:
        yield f"complete -c vorn -f -n {condition} -a {below.words[-1]} -d {quoted(below.text)}"
    for option in command.options:
        names = " ".join(f"-l {n[2:]}" if n.startswith("--") else f"-s {n[1:]}" for n in option.names)
        value = ""
        if option.value:
            value = " -r" if option.is_file else " -x"
            value += f" -a {quoted(' '.join(option.choices))}" if option.choices else ""
        yield f"complete -c vorn -n {condition} {names}{value} -d {quoted(option.text)}"
    if command.words and not command.commands and not any(p.is_file for p in command.positionals):
        yield f"complete -c vorn -f -n {condition}"


def fish(tool):
    lines = ["# Completion of vorn for fish. Written by tools/describe_command_line.py.", ""]
    for command in all_commands(tool):
        lines += fish_options(command)
    return "\n".join(lines) + "\n"


def main():
    program, folder = sys.argv[1:]
    tool = read_command(program, [])
    files = {
        "vorn.1": man_page(tool),
        "completions/vorn.bash": bash(tool),
        "completions/vorn.zsh": zsh(tool),
        "completions/vorn.fish": fish(tool),
    }
    os.makedirs(os.path.join(folder, "completions"), exist_ok=True)
    for name, text in files.items():
        with open(os.path.join(folder, name), "w", encoding="utf-8", newline="\n") as file:
            file.write(text)


if __name__ == "__main__":
    main()
