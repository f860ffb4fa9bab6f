#!/usr/bin/env python3
"""Puts small faults, drawn at random, into a private copy of the sources, one at a time, and tells
how many of them the quick tests notice. Prints each fault, with the changed line if no test notices
it. Fails if the tests notice fewer than 95 in a hundred.

A fault is noticed if tests of its room, or else any others, fail twice in a row. A fault that
doesn't compile is replaced by another.
"""

import argparse
import json
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
FOLDER = ROOT / "build" / "sharpness"
TREE, OBJECTS = FOLDER / "tree", FOLDER / "objects"
LEAST = 95  # in a hundred
CHUNKS = 3  # of a program's tests, run at the same time
SLOW_LABELS = "^(desktop|long)$"


def swaps(*pairs):
    """A row of OPERATORS that replaces each of a pair, between blanks, by the other."""
    both = {**dict(pairs), **{new: old for old, new in pairs}}
    pattern = "|".join(rf"(?<= ){re.escape(old)}(?= )" for old in sorted(both, key=len, reverse=True))
    return pattern, lambda found: both[found[0]]


# For each kind of fault, what a line of code must match, and what replaces the match.
OPERATORS = {
    "comparison": swaps(("<", "<="), (">", ">="), ("==", "!=")),
    "arithmetic": swaps(("+", "-"), ("*", "/"), ("+=", "-=")),
    "logic": swaps(("&&", "||")),
    "truth": (r"\btrue\b|\bfalse\b|(?<=\()!(?=\w)",
              lambda found: {"true": "false", "false": "true", "!": ""}[found[0]]),
    "number": (r"(?<![\w.\"'#])\d+(?![\w.\"'])", lambda found: str(int(found[0]) + 1)),
    "call": (r"^\s+(?!return|using|delete|throw)[\w.:>()-]+\(.*\);$", lambda found: ";"),
    "assignment": (r"^\s+[\w.>()-]+ [-+|&]?= .*;$", lambda found: ";"),
}


def all_faults(rooms):
    """The faults by kind: each as its source, the line's number from 0, and the changed line."""
    faults = {operator: [] for operator in OPERATORS}
    for path in sorted((TREE / "src").rglob("*.cpp")):
        source = path.relative_to(TREE)
        if rooms and room_of(source) not in rooms:
            continue
        for number, line in enumerate(path.read_text().splitlines()):
            if re.match(r"\s*(//|#)|template|using|namespace", line):
                continue
            # Texts are blanked, so that no fault is put into them.
            code = re.sub(r'"(?:[^"\\]|\\.)*"|//.*', lambda found: "\0" * len(found[0]), line)
            for operator, (pattern, becomes) in OPERATORS.items():
                faults[operator] += [
                    (source, number, line[:found.start()] + becomes(found) + line[found.end():])
                    for found in re.finditer(pattern, code)]
    return faults


def room_of(source):
    return source.parts[1] if len(source.parts) > 2 else ""


def run(*command):
    """Whether a command succeeds. Leaves neither processes nor temporary files behind."""
    temporary = tempfile.mkdtemp()
    process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL, start_new_session=True,
                               env={**os.environ, "TMPDIR": temporary,
                                    "QT_QPA_PLATFORM": "offscreen"})
    try:
        return process.wait() == 0
    finally:
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        shutil.rmtree(temporary, ignore_errors=True)


def build(target):
    return run("cmake", "--build", OBJECTS, "--target", target)


def passes(folder):
    """Whether the quick tests of a build folder pass. Runs many tests of a program in one process,
    which takes less time than CTest's process for each test."""
    listing = subprocess.run(
        ["ctest", "--test-dir", folder, "--show-only=json-v1", "--label-exclude", SLOW_LABELS,
         "--exclude-regex", "_NOT_BUILT$"], check=True, capture_output=True)
    names = {}
    for test in json.loads(listing.stdout)["tests"]:
        program, *arguments = test["command"]
        names.setdefault(program, []).append(arguments[0].removeprefix("--gtest_filter="))
    chunks = [(program, ":".join(tests[first::CHUNKS]))
              for program, tests in names.items() for first in range(min(CHUNKS, len(tests)))]
    failed = threading.Event()

    def check(chunk):
        program, tests = chunk
        command = ["timeout", "200", program, "--gtest_fail_fast", "--gtest_filter=" + tests]
        if not (failed.is_set() or run(*command) or run(*command)):
            failed.set()

    with ThreadPoolExecutor(CHUNKS) as pool:
        list(pool.map(check, chunks))
    return not failed.is_set()


def prepare():
    """Brings the copy up to date with the sources, builds it, and checks that its tests pass."""
    listing = subprocess.run(["git", "ls-files", "-z"], cwd=ROOT, check=True, capture_output=True)
    names = set(listing.stdout.decode().split("\0"))
    for path in list(TREE.rglob("*")):
        if path.is_file() and str(path.relative_to(TREE)) not in names:
            path.unlink()
    for name in names:
        mine, theirs = TREE / name, ROOT / name
        if theirs.is_file() and not (mine.is_file() and mine.read_bytes() == theirs.read_bytes()):
            mine.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(theirs, mine)
    # Optimising takes time, and warnings would notice faults that the tests don't.
    if not (run("cmake", "-G", "Ninja", "-S", TREE, "-B", OBJECTS, "-DCMAKE_BUILD_TYPE=Debug",
                "-DCMAKE_CXX_FLAGS_DEBUG=", "-DCMAKE_CXX_FLAGS=-O0 -w", "-DKELVANE_BENCH=OFF")
            and build("quick_tests") and passes(OBJECTS)):
        sys.exit("sharpness: the sources as they are don't build, or fail a test")


def verdict_on(source, number, changed):
    """"caught" or "survived"; None if the fault doesn't compile."""
    path = TREE / source
    before = path.read_text()
    lines = before.splitlines()
    lines[number] = changed
    path.write_text("\n".join(lines) + "\n")
    try:
        room = f"tests/{room_of(source)}"
        if room_of(source) and (TREE / room).is_dir():
            if not build(f"{room}/all"):
                return None
            if not passes(OBJECTS / room):
                return "caught"
        if not build("quick_tests"):
            return None
        return "survived" if passes(OBJECTS) else "caught"
    finally:
        path.write_text(before)


def main():
    arguments = argparse.ArgumentParser(description=__doc__)
    arguments.add_argument("--count", type=int, default=150, help="of faults (150)")
    arguments.add_argument("--seed", type=int, help="of the draw, to have it again")
    arguments.add_argument("--room", action="append", help="a folder of src; all where none is named")
    options = arguments.parse_args()
    seed = options.seed if options.seed is not None else random.randrange(10 ** 6)
    draw = random.Random(seed)
    prepare()
    faults = {name: of for name, of in all_faults(options.room).items() if of}
    print(f"{sum(map(len, faults.values()))} faults to draw from, seed {seed}", flush=True)
    survivors, tried = 0, 0
    while tried < options.count and any(faults.values()):
        operator = draw.choice([name for name, of in faults.items() if of])
        source, number, changed = faults[operator].pop(draw.randrange(len(faults[operator])))
        verdict = verdict_on(source, number, changed)
        if verdict is None:
            continue
        tried += 1
        survivors += verdict == "survived"
        former = (TREE / source).read_text().splitlines()[number].strip()
        print(f"{tried:4} {verdict:8} {operator:10} {source}:{number + 1}: {former}"
              + (f"  ->  {changed.strip()}" if verdict == "survived" else ""), flush=True)
    share = 100 * (tried - survivors) / max(tried, 1)
    print(f"{tried - survivors} of {tried} caught: {share:.1f} %")
    sys.exit(share < LEAST)


main()
