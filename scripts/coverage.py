#!/usr/bin/env python3
"""Tells how many lines and branches of src/ the tests have run, by room and in total, from the
counters of a coverage build. Fails if the total is below the marks.

A branch counts if its line has if, for, while, switch, case, ?, && or ||, or follows a line that
ends in one of the last three. The compiler's other branches, above all those of exceptions, don't
count. --missing names the lines that were never run and those with a branch that was never taken.
"""

import argparse
import collections
import json
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
BUILD = ROOT / "build" / "coverage"
LEAST_LINES = 95  # in a hundred
LEAST_BRANCHES = 90
TEXT = re.compile(r"\"(?:[^\"\\]|\\.)*\"|'(?:[^'\\]|\\.)+'|//.*")
DECISION = re.compile(r"\b(?:if|for|while|switch|case)\b|&&|\|\||\?")
GOES_ON = re.compile(r"(?:&&|\|\||\?)\s*$")


def decides(lines, number):
    """Whether a line, numbered from 1, decides something, or is the rest of a condition."""
    line = TEXT.sub("", lines[number - 1])
    before = TEXT.sub("", lines[number - 2]) if number > 1 else ""
    return bool(DECISION.search(line) or GOES_ON.search(before))


def counted():
    """What gcovr reports of each file of src/, without the branches that don't count."""
    with tempfile.NamedTemporaryFile(suffix=".json") as out:
        subprocess.run(
            ["gcovr", "--root", str(ROOT), "--filter", str(ROOT / "src") + "/",
             "--exclude-throw-branches", "--exclude-unreachable-branches",
             "--gcov-ignore-parse-errors", "-j", str(os.cpu_count()), "--json", out.name,
             str(BUILD)],
            check=True, stdout=subprocess.DEVNULL)
        files = json.load(open(out.name, encoding="utf-8"))["files"]
    for file in files:
        lines = (ROOT / file["file"]).read_text(encoding="utf-8").splitlines()
        for line in file["lines"]:
            if not decides(lines, line["line_number"]):
                line["branches"] = []
    return files


def count(file):
    lines = [line for line in file["lines"] if not line.get("gcovr/noncode")]
    branches = [branch for line in lines for branch in line["branches"]]
    return collections.Counter(
        lines=len(lines), run=sum(line["count"] > 0 for line in lines),
        branches=len(branches), taken=sum(branch["count"] > 0 for branch in branches))


def share(part, whole):
    return 100.0 * part / whole if whole else 100.0


def row(name, of):
    return (f"{name:<36}{of['run']:>6} of {of['lines']:<6}{share(of['run'], of['lines']):6.1f} %"
            f"{of['taken']:>8} of {of['branches']:<6}{share(of['taken'], of['branches']):6.1f} %")


def room_of(file):
    parts = Path(file["file"]).parts
    return parts[1] if len(parts) > 2 else "programs"


def missing(file):
    for line in file["lines"]:
        if line.get("gcovr/noncode"):
            continue
        where = f"{file['file']}:{line['line_number']}"
        untaken = sum(branch["count"] == 0 for branch in line["branches"])
        if line["count"] == 0:
            yield f"{where}: never run"
        elif untaken:
            yield f"{where}: {untaken} of {len(line['branches'])} branches never taken"


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--missing", action="store_true")
    arguments = parser.parse_args()

    files = sorted(counted(), key=lambda file: file["file"])
    if not files:
        sys.exit("coverage: there are no counters")
    rooms = collections.defaultdict(collections.Counter)
    for file in files:
        rooms[room_of(file)] += count(file)
    total = sum(rooms.values(), collections.Counter())
    print(f"{'':<36}{'lines':>15}{'branches':>28}")
    for name in sorted(rooms):
        print(row(name, rooms[name]))
    print(row("in total", total))
    if arguments.missing:
        for file in files:
            for text in missing(file):
                print(text)

    if (share(total["run"], total["lines"]) < LEAST_LINES
            or share(total["taken"], total["branches"]) < LEAST_BRANCHES):
        sys.exit(f"coverage: below {LEAST_LINES} lines or {LEAST_BRANCHES} branches in a hundred")


if __name__ == "__main__":
    main()
