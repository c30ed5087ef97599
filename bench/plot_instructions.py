#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Draws where the instructions of a start go, by library: plot_instructions.py OUT.svg NAME=PROFILE... with profiles as
callgrind writes them."""
import collections
import html
import re
import sys

WIDTH, BAR, LEFT, TOP = 620, 15, 190, 40
COLOURS = ("#006300", "#9bbf9b", "#4a7ab0")
LIBRARY = re.compile(r"(c?)ob=(\(\d+\)) ?(.*)")
COST = re.compile(r"[\d+*-]\d* (\d+)$")
GROUPS = (("ld-linux", "loading and linking"), ("libc.so", "C library"), ("Qt6Widgets", "toolkit: widgets"),
          ("Qt6Gui", "toolkit: painting, text"), ("Qt6Core", "toolkit: core"), ("fontconfig", "finding fonts"),
          ("freetype", "reading fonts"), ("harfbuzz", "shaping text"), ("libz", "unpacking pictures"),
          ("expat", "reading font rules"), ("pba_view", "ours: module"), ("libpbe", "ours: platform"),
          ("pba_screen", "ours: screen"))


def group_of(library):
    return next((name for part, name in GROUPS if part in library), "else")


def by_group(profile):
    """The costs of functions themselves; the line behind "calls=" tells what was called in turn."""
    counts, names, group, called = collections.Counter(), {}, "else", False
    for line in open(profile, encoding="utf-8", errors="replace"):
        if library := LIBRARY.match(line):
            called_one, number, name = library.groups()
            names[number] = name or names[number]
            group = group if called_one else group_of(names[number])
        elif (cost := COST.match(line)) and not called:
            counts[group] += int(cost.group(1))
        called = line.startswith("calls=")
    return counts


def text(x, y, words, anchor="start"):
    return f'<text x="{x}" y="{y}" text-anchor="{anchor}">{html.escape(words)}</text>'


def draw(profiles):
    names = [name for name, _ in profiles]
    groups = sorted({g for _, counts in profiles for g in counts}, key=lambda g: -profiles[0][1][g])
    most = max(max(counts.values()) for _, counts in profiles)
    height = TOP + len(groups) * (len(profiles) * BAR + 10) + 20
    lines = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH + LEFT + 70}" height="{height}" '
             'font-family="DejaVu Sans, sans-serif" font-size="12">', '<rect width="100%" height="100%" fill="white"/>']
    for index, name in enumerate(names):
        lines += [f'<rect x="{LEFT + index * 200}" y="12" width="12" height="12" fill="{COLOURS[index]}"/>',
                  text(LEFT + index * 200 + 18, 22, name)]
    y = TOP
    for group in groups:
        lines.append(text(LEFT - 8, y + len(profiles) * BAR / 2 + 4, group, "end"))
        for index, (_, counts) in enumerate(profiles):
            size = counts[group] / most * WIDTH
            lines += [f'<rect x="{LEFT}" y="{y}" width="{size:.1f}" height="{BAR - 2}" fill="{COLOURS[index]}"/>',
                      text(LEFT + size + 5, y + BAR - 4, f"{counts[group] / 1e6:.1f}")]
            y += BAR
        y += 10
    return "\n".join(lines + [text(LEFT, height - 8, "million instructions until the page is painted"), "</svg>"])


def main():
    if len(sys.argv) < 3:
        sys.exit("usage: plot_instructions.py OUT.svg NAME=PROFILE...")
    profiles = [(name, by_group(file)) for name, _, file in (each.partition("=") for each in sys.argv[2:])]
    with open(sys.argv[1], "w", encoding="utf-8") as out:
        out.write(draw(profiles) + "\n")


if __name__ == "__main__":
    main()
