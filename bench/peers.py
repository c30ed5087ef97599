#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Holds the view against other programs that show a login over the whole screen, in one run: peers.py BIN ROOT VOLUME.

They are different programs, so nothing is loaded into them: each gets an X server of its own, whose picture is watched
from outside until it stands still. A program that is not installed is left out, with a word."""
import os
import pathlib
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import time

from measure import cost, tree

ROUNDS = 7
STILL = 0.7  # seconds without a change: the page stands
PATIENCE = 20
LINE = 1024 * 4  # bytes
CURSOR = 40  # lines


class Display:
    """An X server whose picture is a file."""

    def __enter__(self):
        self.directory = tempfile.TemporaryDirectory()
        reading, writing = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1024x768x24", "-fbdir",
                                        self.directory.name], pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as number:
            self.name = ":" + number.readline().strip()
        self.picture = pathlib.Path(self.directory.name, "Xvfb_screen0")
        return self

    def __exit__(self, *_):
        self.server.terminate()
        self.server.wait()
        self.directory.cleanup()


def has_changed(shown, now):
    """More than a cursor that blinks."""
    lines = (slice(at, at + LINE) for at in range(len(now) % LINE, len(now), LINE))
    return now != shown and sum(now[line] != shown[line] for line in lines) > CURSOR


def watch(picture, before, start):
    """When the picture changed for the first and for the last time, in milliseconds."""
    first = last = None
    shown = before
    while time.monotonic() - (last or start) < (STILL if last else PATIENCE):
        now = picture.read_bytes()
        if has_changed(shown, now):
            shown, last = now, time.monotonic()
            first = first or last
        time.sleep(0.002)
    return [(each - start) * 1000 for each in (first, last)] if first else None


def run_once(command):
    with Display() as display, tempfile.TemporaryDirectory() as runtime:
        before = display.picture.read_bytes()
        variables = os.environ | {"DISPLAY": display.name, "XDG_RUNTIME_DIR": runtime, "QT_QPA_PLATFORM": "xcb"}
        start = time.monotonic()
        child = subprocess.Popen(command, env=variables, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                 stderr=subprocess.DEVNULL, start_new_session=True)
        times = watch(display.picture, before, start)
        costs = [cost(process) for process in tree(child.pid)] if times else []
        os.killpg(child.pid, signal.SIGKILL)
        child.wait()
    if not times:
        return None
    return {"first": times[0], "last": times[1], "cpu": sum(c["cpu"] for c in costs), "pss": sum(c["pss"] for c in costs)}


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    programs = pathlib.Path(sys.argv[1]).resolve()
    rivals = {"pba_host and pba_screen": [str(programs / "pba_host"), "--root", sys.argv[2], "--volume", sys.argv[3]],
              "sddm-greeter --test-mode": ["sddm-greeter", "--test-mode"], "osk-sdl -t": ["osk-sdl", "-t"]}
    print("| Program, xcb | First picture | Last change | CPU by then | Proportional memory |\n|---|---|---|---|---|")
    for name, command in rivals.items():
        samples = [run_once(command) for _ in range(ROUNDS)] if shutil.which(command[0]) else []
        samples = [sample for sample in samples if sample]
        if not samples:
            print(f"| {name} | not installed, or it shows nothing | | | |")
            continue
        first, last, cpu, pss = (statistics.median(s[key] for s in samples) for key in ("first", "last", "cpu", "pss"))
        print(f"| {name} | {first:.0f} ms | {last:.0f} ms | {cpu:.0f} ms | {pss:.1f} MiB |", flush=True)


if __name__ == "__main__":
    main()
