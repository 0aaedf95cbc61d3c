#!/usr/bin/env python3
"""Writes the code page 932 tables of vorn/platform from Python's own `cp932` codec.

    tools/generate_code_page_932.py [directory]      (default: vorn/platform beside this folder)

Two files come out: the encode table, which every source with a Japanese literal reads at compile time, and the
decode table, which only code_page_932.cpp reads. ASCII and the user-defined area follow a formula and are in neither.
"""

import pathlib
import sys

LEAD_BYTES = [*range(0x81, 0xA0), *range(0xE0, 0xFD)]
TRAIL_BYTES = [*range(0x40, 0x7F), *range(0x80, 0xFD)]
USER_DEFINED_LEAD_BYTES = range(0xF0, 0xFA)
COPIED_LEAD_BYTES = (0xED, 0xEE)
USER_DEFINED_CODE_POINTS = range(0xE000, 0xE000 + len(USER_DEFINED_LEAD_BYTES) * len(TRAIL_BYTES))
UNITS_A_LINE = 16

HEADER = """#pragma once

// Written by tools/generate_code_page_932.py; change it there.

#include <string_view>

namespace code_page_932::detail {
"""
FOOTER = "}  // namespace code_page_932::detail\n"


def literal(units):
    """The lines of a char16_t string literal."""
    lines = [units[i : i + UNITS_A_LINE] for i in range(0, len(units), UNITS_A_LINE)]
    return "\n".join('    u"' + "".join(f"\\x{unit:04X}" for unit in line) + '"' for line in lines)


def table(comment, name, units):
    declaration = f"inline constexpr std::u16string_view {name}(\n{literal(units)},\n    {len(units)});"
    return f"\n/// {comment}\n// clang-format off\n{declaration}\n// clang-format on\n"


def decode(*encoded):
    """The code point of one character's bytes, 0 when there is none."""
    try:
        return ord(bytes(encoded).decode("cp932"))
    except (UnicodeDecodeError, TypeError):
        return 0


def decode_rows():
    """(lead byte, code points by trail byte, 0 for none) of every row that holds characters."""
    rows = []
    for lead in LEAD_BYTES:
        units = [decode(lead, trail) for trail in TRAIL_BYTES]
        if lead not in USER_DEFINED_LEAD_BYTES and any(units):
            rows.append((lead, units))
    return rows


def encode_table(rows):
    """(code point, bytes as a number) of every character outside ASCII and the user-defined area, sorted."""
    # The codec's own choice also takes look-alikes, such as the wave dash for the full-width tilde.
    encoded = {}
    for code_point in [*range(0x80, 0xD800), *range(0xE000, 0x10000)]:
        if code_point in USER_DEFINED_CODE_POINTS:
            continue
        try:
            encoded[code_point] = int.from_bytes(chr(code_point).encode("cp932"), "big")
        except UnicodeEncodeError:
            pass
    # Some characters sit in rows FA to FC and again in ED and EE, where nobody has written them for decades.
    for lead, units in rows:
        for trail, code_point in zip(TRAIL_BYTES, units):
            if code_point and encoded[code_point] >> 8 in COPIED_LEAD_BYTES and lead not in COPIED_LEAD_BYTES:
                encoded[code_point] = lead << 8 | trail
    return sorted(encoded.items())


def main():
    here = pathlib.Path(__file__).resolve().parent
    target = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else here.parent / "vorn" / "platform"

    rows = decode_rows()
    entries = encode_table(rows)
    text = HEADER
    text += table("Code points that code page 932 holds, ascending.", "kCodePoints", [c for c, _ in entries])
    text += table("Their bytes: below 0x100 one byte, else lead and trail byte.", "kBytes", [b for _, b in entries])
    (target / "code_page_932_table.h").write_text(text + "\n" + FOOTER, encoding="ascii", newline="\n")

    text = HEADER
    text += table("Lead bytes of the rows that hold characters, ascending.", "kRowLeads", [lead for lead, _ in rows])
    comment = f"Code points by row and trail byte, {len(TRAIL_BYTES)} a row; 0 where no character is."
    text += table(comment, "kRows", [unit for _, units in rows for unit in units])
    (target / "code_page_932_decode_table.h").write_text(text + "\n" + FOOTER, encoding="ascii", newline="\n")


if __name__ == "__main__":
    main()
