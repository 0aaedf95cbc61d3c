#!/usr/bin/env python3
"""Shows a header to Doxygen as its readers understand it.

- Every file belongs to the group of its folder, which docs/doxygen/groups.dox describes.
- What the language itself prescribes (`= default`, `= delete`) needs no comment and is left out.
- A comment, but for its parameters, speaks for the accessors and overloads of the same name right below it: that of `GetX` for the other
  `GetX`, for `SetX` and for `X`, that of `GetAttr1` for `GetAttr2`, that of `begin` for `end`.
- The comment behind several variables of one line speaks for each of them.

Lines keep their numbers, so that messages lead to the place in the header.
"""

import re
import sys

COMMENT = re.compile(r"\s*///(?!<)")
NAME = re.compile(r"(~?\w+|operator\s*\S+?)\s*\(")
USING = re.compile(r"\s*using (?:\w+::)?(\w+);")
SPECIAL = re.compile(r"=\s*(default|delete);")
SCOPE = re.compile(r"\s*(public|protected|private):")
HOST_BEGIN, HOST_END = "\nnamespace vorn_host {", "\n}  // namespace vorn_host"
VARIABLES = re.compile(r"(\s*(?:double|int) )([^()]*,[^()]*);(\s*///<.*)$")
SAME = {"end": "begin", "GetSize": "GetCount", "operator<<": "operator>>", "AddTail": "Add"}


def group_of(path):
    """host/cli and vorn/model are the groups host_cli and vorn_model."""
    parts = re.split(r"[\\/]", path)
    for top in ("vorn", "host"):
        if top in parts[:-1]:
            at = len(parts) - 2 - parts[-2::-1].index(top)
            inner = parts[at + 1 : -1]
            return "_".join([top, *inner[:1]])
    return None


def stem_of(line):
    """What a declaration is about, the same for all accessors of one value; None for what is no function."""
    found = NAME.search(line.split("//")[0]) or USING.match(line)
    if found is None:
        return None
    name = re.sub(r"\s", "", found.group(1))
    name = SAME.get(name, name)
    return re.sub(r"\d+$", "", re.sub(r"^(Get|Set|Is)(?=[A-Z])", "", name)) or name


def filtered(lines):
    comment, stem, depth, body = [], None, 0, False
    pending = []
    for line in lines:
        if COMMENT.match(line):
            pending.append(line)
            yield line
            continue
        if not line.strip() or SCOPE.match(line):
            stem, pending = None, []
            yield line
            continue
        if SPECIAL.search(line) and "virtual" not in line and "= 0" not in line:
            pending = []
            yield ""
            continue
        if depth == 0:
            own = stem_of(line)
            if pending:
                comment, stem = pending, own
            elif own is not None and own == stem:
                line = said_again(comment) + line.strip()
        pending = []
        variables = VARIABLES.match(line)
        if variables:
            type_name, names, said = variables.groups()
            said = said.strip().removeprefix("///<").strip()
            yield " ".join(f"{type_name.strip()} {name.strip()}; /**< {said} */" for name in names.split(","))
        else:
            yield line
        depth = body_depth(line, depth)


def said_again(comment):
    """A comment on one line, without what it says of parameters."""
    return "/** " + " ".join(line.strip()[3:].strip() for line in comment if "@param" not in line) + " */ "


def body_depth(line, depth):
    """How deep in function bodies the next line is: one that begins on this line and does not end on it."""
    code = re.sub(r'"(\\.|[^"])*"|//.*', "", line)
    if depth == 0 and not (re.search(r"\)[^;{]*\{\s*$", code) or code.strip() == "}"):
        return 0
    return max(0, depth + code.count("{") - code.count("}"))


def main(path):
    with open(path, encoding="utf-8") as file:
        lines = file.read().split("\n")
    text = "\n".join(filtered(lines))
    group = group_of(path)
    if group:
        # Doxygen leaves a group at the beginning of a namespace.
        begin, end = (HOST_BEGIN, HOST_END) if HOST_BEGIN in text else ("#pragma once", None)
        text = text.replace(begin, f"{begin} /** @addtogroup {group} */ /** @{{ */", 1)
        text = text.replace(end, f"\n/** @}} */ {end.strip()}", 1) if end else text + "/** @} */\n"
    sys.stdout.write(text)


if __name__ == "__main__":
    main(sys.argv[1])
