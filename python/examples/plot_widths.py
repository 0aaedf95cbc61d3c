#!/usr/bin/env python3
"""Plots the width of the carriageway, left and right of the centre line, along each alignment of a design.

    plot_widths.py design.xml -o widths.png --codes L1,R1

The edges of the carriageway are the points of the two codes. Without codes, they are the outermost points of the
roadbed, which then includes the shoulders.
"""

import argparse

import matplotlib

matplotlib.use("Agg")  # the picture goes into a file
matplotlib.rcParams["font.family"] = ["DejaVu Sans", "Noto Sans CJK JP"]  # names are Japanese
import matplotlib.pyplot as plt

import vorn

ROADBED = {vorn.ComponentType.ROADBED, vorn.ComponentType.ROADBED_FILL, vorn.ComponentType.ROADBED_CUT}


def width(form: vorn.BuildForm, side: vorn.Side, code: str) -> float:
    """Distance in metres from the centre line to the edge of the carriageway on a side; NaN where there is none."""
    edges = [p for p in form.points if p.side is side and (p.code == code or not code and p.component_type in ROADBED)]
    return max((abs(edge.offset) for edge in edges if edge.offset is not None), default=float("nan"))


def plot(axes: plt.Axes, section_set: vorn.CrossSectionSet, codes: list[str]) -> None:
    sections = [s for s in section_set.sections if s.forms and s.station is not None]
    stations = [s.station for s in sections]
    left = [width(s.forms[0], vorn.Side.LEFT, codes[0]) for s in sections]
    right = [-width(s.forms[0], vorn.Side.RIGHT, codes[1]) for s in sections]
    axes.fill_between(stations, right, left, color="0.92")
    axes.plot(stations, left, marker=".", color="tab:blue", label="left")
    axes.plot(stations, right, marker=".", color="tab:orange", label="right")
    axes.axhline(0.0, color="black", linewidth=0.8)
    axes.yaxis.set_major_formatter(lambda value, _: f"{abs(value):g}")  # a width has no sign
    axes.set(xlabel="station [m]", ylabel="width [m]", title=section_set.ref_align or "alignment")
    axes.legend(loc="center right")


def main() -> None:
    parser = argparse.ArgumentParser(description="Plots the width of the carriageway along the alignment.")
    parser.add_argument("design", help="a document")
    parser.add_argument("-o", "--output", default="widths.png", help="the picture (widths.png)")
    parser.add_argument("--codes", default=",", help="codes of the edges on the left and on the right, such as L1,R1")
    arguments = parser.parse_args()
    codes = arguments.codes.split(",")
    if len(codes) != 2:
        parser.error("--codes takes two codes with a comma between them")

    try:
        design = vorn.DesignDocument.read(arguments.design)
    except vorn.Error as error:
        parser.error(str(error))
    # Documents hold no positions: they are computed from the input values, here relative to the centre line.
    vorn.DesignEditor(design).recalc(0.0)

    figure, rows = plt.subplots(len(design.sets), figsize=(10, 4 * len(design.sets)), squeeze=False)
    for axes, section_set in zip(rows[:, 0], design.sets):
        plot(axes, section_set, codes)
    figure.tight_layout()
    try:
        figure.savefig(arguments.output, dpi=120)
    except OSError as error:
        parser.error(str(error))


if __name__ == "__main__":
    main()
