#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Starts the bare dialog and the view by turns until the login page is painted, and prints a table of what either
costs: wall clock, CPU, memory and instructions, for the page's process and for all of them. Other work on the computer
meets both alike; what is printed is the median.

  measure.py PLATFORM BIN ROOT VOLUME [--rounds N] [--json FILE]

BIN is the directory of the programs, FILE gets the rows, behind those that are in it already."""
import argparse
import json
import os
import pathlib
import re
import signal
import statistics
import subprocess
import sys
import time

TARGETS = {"wall": 1.4, "cpu": 1.4, "pss": 1.15, "peak": 1.15, "instructions": 1.30}
UNITS = {"wall": "ms", "cpu": "ms", "pss": "MiB", "peak": "MiB", "instructions": "M"}
NAMES = {"wall": "Start to the painted page", "cpu": "CPU until then", "pss": "Proportional memory",
         "peak": "Peak memory", "instructions": "Instructions until then"}


def fail(what):
    sys.exit(f"measure.py: {what}")


def tree(process):
    """The process and all that it has started, which are all single-threaded parents here."""
    yield process
    for task in pathlib.Path(f"/proc/{process}/task").iterdir():
        for child in (task / "children").read_text().split():
            yield from tree(int(child))


def number_in(path, name):
    return int(re.search(rf"^{name}:\s+(\d+) kB", path.read_text(), re.M).group(1)) / 1024


def cost(process):
    base = pathlib.Path(f"/proc/{process}")
    cpu = sum(int((task / "schedstat").read_text().split()[0]) for task in (base / "task").iterdir())
    return {"cpu": cpu / 1e6, "pss": number_in(base / "smaps_rollup", "Pss"),
            "peak": number_in(base / "status", "VmHWM")}


def environment(programs):
    return os.environ | {"LD_PRELOAD": str(programs / "libbench_probe_loader.so"),
                         "BENCH_PAINT_PROBE": str(programs / "libbench_paint_probe.so")}


def run_once(command, programs):
    """What the page's process costs, what all cost together, and the time."""
    start = time.monotonic_ns()
    child = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, env=environment(programs))
    line = child.stdout.readline()
    if not line:
        fail(f"{command[0]} ended before it had painted its login button")
    wall = (int(line) - start) / 1e6
    costs = [cost(process) for process in tree(child.pid)]
    for process in reversed(list(tree(child.pid))):
        os.kill(process, signal.SIGKILL)
    child.wait()
    whole = {name: sum(each[name] for each in costs) for name in costs[0]}
    return {"page": costs[-1] | {"wall": wall}, "whole": whole | {"wall": wall}}


def median_of(samples, name):
    return statistics.median(sample[name] for sample in samples)


def instructions(command, programs):
    """Of one process alone, in millions; none where there is no valgrind."""
    # System calls cannot be filtered inside of it.
    preload = f"{programs}/libbench_probe_loader.so {programs}/libbench_no_filter.so"
    full = ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", *command]
    if command[0].endswith("pba_screen"):
        full = [str(programs / "serve_screen"), *full]
    counted = subprocess.run(full, stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False,
                             env=environment(programs) | {"LD_PRELOAD": preload, "BENCH_PROBE_ENDS": "1"})
    found = re.search(r"Collected : (\d+)", counted.stderr)
    return int(found.group(1)) / 1e6 if found and counted.stdout else None


def row(what, name, view, bare, full):
    """Instructions are held against the dialog, the rest against the one that fills the screen as the view does."""
    floor = bare if name == "instructions" else full
    return {"row": f"{NAMES[name]}, {what}", "unit": UNITS[name], "view": round(view, 2), "bare": round(bare, 2),
            "full": round(full, 2), "ratio": round(view / floor, 2), "target": TARGETS[name]}


def as_text(each):
    unit = each["unit"]
    missed = "" if each["ratio"] <= each["target"] else " (missed)"
    return (f"| {each['row']} | {each['view']:.1f} {unit} | {each['bare']:.1f} {unit} | {each['full']:.1f} {unit} | "
            f"{each['ratio']:.2f} | at most {each['target']:.2f}{missed} |")


def measure(arguments):
    programs = pathlib.Path(arguments.bin).resolve()
    commands = {"bare": [str(programs / "bench_bare_dialog")], "full": [str(programs / "bench_bare_dialog"), "full"],
                "view": [str(programs / "pba_host"), "--root", arguments.root, "--volume", arguments.volume]}
    samples = {name: [] for name in commands}
    for round_number in range(arguments.rounds + 1):
        for name, command in commands.items():
            sample = run_once(command, programs)
            if round_number > 0:  # the first one warms the file cache
                samples[name].append(sample)
    for what in ("page", "whole"):
        for name in ("wall", "cpu", "pss", "peak") if what == "page" else ("cpu", "pss"):
            title = f"{arguments.platform}" if name == "wall" else f"{what}, {arguments.platform}"
            values = [median_of([s[what] for s in samples[k]], name) for k in ("view", "bare", "full")]
            yield row(title, name, *values)
    if arguments.platform != "offscreen":
        return  # a server's answers come when they come, and waiting for them counts, too
    user = ["--user", "65534:65534"] if os.geteuid() == 0 else []
    screen = [str(programs / "pba_screen"), "--root", arguments.root, *user]
    counts = [instructions(command, programs) for command in (screen, commands["bare"], commands["full"])]
    if all(counts):
        yield row(f"page, {arguments.platform}", "instructions", *counts)


def main():
    parser = argparse.ArgumentParser()
    for name in ("platform", "bin", "root", "volume"):
        parser.add_argument(name)
    parser.add_argument("--rounds", type=int, default=31)
    parser.add_argument("--json")
    arguments = parser.parse_args()
    rows = []
    for each in measure(arguments):
        print(as_text(each), flush=True)
        rows.append(each)
    if arguments.json:
        file = pathlib.Path(arguments.json)
        former = json.loads(file.read_text()) if file.exists() else []
        file.write_text(json.dumps(former + rows, indent=1) + "\n")


if __name__ == "__main__":
    main()
