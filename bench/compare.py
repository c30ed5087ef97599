#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Says what has become worse since the last result that was committed: compare.py LAST NEW. Ratios are held against
each other, for they depend less on the computer than times do; instructions hardly at all."""
import json
import pathlib
import sys

NOISE = {"M": 0.005, "MiB": 0.03, "ms": 0.15}


def rows_of(name):
    return {row["row"]: row for row in json.loads(pathlib.Path(name).read_text())}


def main():
    if len(sys.argv) != 3:
        sys.exit("usage: compare.py LAST NEW")
    if not pathlib.Path(sys.argv[1]).exists():
        sys.exit("No result has been committed yet: ./bench.sh --keep")
    last, new = rows_of(sys.argv[1]), rows_of(sys.argv[2])
    worse = [f"{name}: {last[name]['ratio']:.2f} has become {row['ratio']:.2f} times the floor"
             for name, row in new.items()
             if name in last and row["ratio"] > last[name]["ratio"] * (1 + NOISE[row["unit"]])]
    worse += [f"{name} is not measured any more" for name in last if name not in new]
    print("\n".join(worse) if worse else "Nothing has become worse than what was committed last.")


if __name__ == "__main__":
    main()
