#!/usr/bin/env python3
"""What of src/ the tests have run: lines and branches, by room and in total, from the counters that
a coverage build has left. Fails where the total is below the mark.

A branch counts where the source decides something: on a line with if, for, while, switch, case, ?,
&& or ||, or with the last operand of such a condition. What the compiler branches on by itself,
above all to clean up behind exceptions, is no decision of the sources. --files tells each file,
--missing the lines that nothing has run and those of which a branch has never been taken.
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
    """Whether the line of that number, from 1 on, holds a decision or a condition's last operand."""
    line = TEXT.sub("", lines[number - 1])
    before = TEXT.sub("", lines[number - 2]) if number > 1 else ""
    return bool(DECISION.search(line) or GOES_ON.search(before))


def counted():
    """The files of src/ with their lines and branches."""
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


class Tally:
    def __init__(self):
        self.lines = self.lines_run = self.branches = self.branches_taken = 0

    def take(self, file):
        for line in file["lines"]:
            if line.get("gcovr/noncode"):
                continue
            self.lines += 1
            self.lines_run += line["count"] > 0
            self.branches += len(line["branches"])
            self.branches_taken += sum(branch["count"] > 0 for branch in line["branches"])

    @staticmethod
    def share(part, whole):
        return 100.0 * part / whole if whole else 100.0

    def line_share(self):
        return self.share(self.lines_run, self.lines)

    def branch_share(self):
        return self.share(self.branches_taken, self.branches)

    def row(self, name):
        return (f"{name:<36}{self.lines_run:>6} of {self.lines:<6}{self.line_share():6.1f} %"
                f"{self.branches_taken:>8} of {self.branches:<6}{self.branch_share():6.1f} %")


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
    parser.add_argument("--files", action="store_true")
    parser.add_argument("--missing", action="store_true")
    arguments = parser.parse_args()

    files = sorted(counted(), key=lambda file: file["file"])
    if not files:
        sys.exit("coverage: there are no counters")
    rooms = collections.defaultdict(Tally)
    total = Tally()
    print(f"{'':<36}{'lines':>15}{'branches':>28}")
    for file in files:
        alone = Tally()
        for tally in (alone, rooms[room_of(file)], total):
            tally.take(file)
        if arguments.files:
            print(alone.row(file["file"]))
    for name in sorted(rooms):
        print(rooms[name].row(name))
    print(total.row("in total"))
    if arguments.missing:
        for file in files:
            for text in missing(file):
                print(text)

    if total.line_share() < LEAST_LINES or total.branch_share() < LEAST_BRANCHES:
        sys.exit(f"coverage: below {LEAST_LINES} lines or {LEAST_BRANCHES} branches in a hundred")


if __name__ == "__main__":
    main()
