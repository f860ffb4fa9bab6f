#!/usr/bin/env python3
"""How sharp the quick tests are: puts the small faults of tests/faults.list into a private copy of
the sources, one at a time, builds that and looks whether a test notices.

A fault is caught when a test of its own room, or else one of the others, fails twice running, the
second time alone; a test that crashes or hangs fails. A fault that isn't built is neither caught
nor survived.

What was found stands in build/sharpness/results, and a run that was stopped goes on from there. A
caught fault is tried anew when its source has changed, any other when anything has; --fresh tries
all of them.
"""

import argparse
import collections
import dataclasses
import hashlib
import json
import os
import queue
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
FOLDER = ROOT / "build" / "sharpness"
LIST = ROOT / "tests" / "faults.list"
RESULTS = FOLDER / "results"
LEAST = 95  # in a hundred
SLOW_LABELS = "^(desktop|long)$"
SHARDS = 4  # processes to a test program, which mostly waits
HANGS = "hangs: "
CAUGHT, SURVIVED, NOT_BUILT = "caught", "survived", "not built"


def fail(message):
    sys.exit(f"sharpness: {message}")


@dataclasses.dataclass
class Fault:
    number: int
    line: int  # in the list
    source: str
    before: list
    after: list = dataclasses.field(default_factory=list)
    reason: str = ""

    @property
    def room(self):
        parts = Path(self.source).parts
        return parts[1] if len(parts) > 2 else "programs"

    @property
    def key(self):
        text = "\n".join([self.source, *self.before, "->", *self.after])
        return hashlib.sha256(text.encode()).hexdigest()[:16]

    def __str__(self):
        change = " / ".join(self.before) + "  ->  " + (" / ".join(self.after) or "(nothing)")
        return f"{self.number:3} {self.source}: {change}"


def read_list():
    """The faults, and the reasons of the sources that have none."""
    faults, without, source = [], {}, None
    fault = None
    for number, text in enumerate(LIST.read_text().splitlines(), 1):
        mark, rest = text[:1], text[2:].strip()
        if text.startswith("##") or mark in ("", "#"):
            fault = None
        elif mark == "=":
            source, fault = rest, None
        elif source is None:
            fail(f"{LIST.name}:{number}: no source named above this line")
        elif mark == "0":
            without[source], fault = rest, None
        elif mark == "-":
            if fault is None or fault.after or fault.reason:
                fault = Fault(len(faults) + 1, number, source, [])
                faults.append(fault)
            fault.before.append(rest)
        elif fault is not None and mark == "+":
            if rest:
                fault.after.append(rest)
        elif fault is not None and mark == "!":
            fault.reason = f"{fault.reason} {rest}".strip()
        else:
            fail(f"{LIST.name}:{number}: not understood: {text}")
    return faults, without


def place_of(fault, lines):
    """Where the fault's lines stand; None unless they stand there once."""
    trimmed = [line.strip() for line in lines]
    count = len(fault.before)
    places = [i for i in range(len(lines)) if trimmed[i:i + count] == fault.before]
    return places[0] if len(places) == 1 else None


def check_list(faults, without):
    complaints = []
    for fault in faults:
        path = ROOT / fault.source
        if not path.is_file():
            complaints.append(f"{LIST.name}:{fault.line}: no file {fault.source}")
        elif place_of(fault, path.read_text().splitlines()) is None:
            complaints.append(f"{LIST.name}:{fault.line}: not, or not once, in {fault.source}: "
                              + " / ".join(fault.before))
        if fault.before == fault.after:
            complaints.append(f"{LIST.name}:{fault.line}: changes nothing")
    listed = {fault.source for fault in faults}
    keys = collections.Counter(fault.key for fault in faults)
    complaints += [f"{LIST.name}:{f.line}: stands there twice" for f in faults if keys[f.key] > 1]
    for path in sorted((ROOT / "src").rglob("*.cpp")):
        name = path.relative_to(ROOT).as_posix()
        if name not in listed and not without.get(name):
            complaints.append(f"{name} has no fault in {LIST.name}, and no reason for that")
    if complaints:
        fail("the list no longer fits the sources\n" + "\n".join(complaints))


def tracked_files():
    listing = subprocess.run(["git", "ls-files", "-z", "--cached", "--others",
                              "--exclude-standard"], cwd=ROOT, check=True, capture_output=True)
    names = [name for name in listing.stdout.decode().split("\0") if name]
    return sorted(name for name in names if (ROOT / name).is_file())


def digest_of(paths):
    total = hashlib.sha256()
    for path in paths:
        total.update(str(path.relative_to(ROOT)).encode() + b"\0" + path.read_bytes() + b"\0")
    return total.hexdigest()[:16]


class Results:
    """One line to a fault that was tried; the last one counts."""

    def __init__(self, tree_digest):
        self.tree_digest = tree_digest
        self.lock = threading.Lock()
        self.known = {}
        if RESULTS.is_file():
            for line in RESULTS.read_text().splitlines():
                key, verdict, digest, seconds, note = line.split("\t")
                self.known[key] = (verdict, digest, float(seconds), note)

    def digest_for(self, fault, verdict):
        return digest_of([ROOT / fault.source]) if verdict == CAUGHT else self.tree_digest

    def of(self, fault):
        known = self.known.get(fault.key)
        return known if known and known[1] == self.digest_for(fault, known[0]) else None

    def add(self, key, verdict, digest, seconds, note):
        with self.lock:
            self.known[key] = (verdict, digest, seconds, note)
            with RESULTS.open("a") as file:
                file.write(f"{key}\t{verdict}\t{digest}\t{seconds:.1f}\t{note}\n")


@dataclasses.dataclass
class Program:
    path: Path
    folder: str
    environment: dict
    seconds: float = 0  # that it takes without a fault

    @property
    def target(self):
        return self.path.name

    @property
    def limit(self):
        return 30 + 4 * self.seconds


class Process:
    """One run of a test program, or of a shard of it."""

    def __init__(self, program, environment, arguments):
        self.output = tempfile.TemporaryFile("w+", errors="replace")
        self.process = subprocess.Popen(
            [program.path, "--gtest_fail_fast", *arguments], cwd=program.folder,
            env=environment, stdin=subprocess.DEVNULL, stdout=self.output,
            stderr=subprocess.STDOUT, start_new_session=True)

    def outcome(self):
        """None while it runs, and then whether its tests passed. It is left to stop() to take leave
        of it: until then nobody else gets its number."""
        state = os.waitid(os.P_PID, self.process.pid, os.WEXITED | os.WNOHANG | os.WNOWAIT)
        return state and (state.si_code, state.si_status) == (os.CLD_EXITED, 0)

    def stop(self):
        """Ends it, and all that it has started."""
        if self.process.returncode is None:
            os.killpg(self.process.pid, signal.SIGKILL)
            self.process.wait()
            self.output.close()

    def failed_test(self):
        """The test that failed, or that was running at the end; all where none had begun."""
        self.output.seek(0)
        running = ""
        for line in self.output:
            if found := re.search(r"\[ RUN      \] (\S+)", line):
                running = found[1]
            elif found := re.search(r"\[  FAILED  \] ([^\s,]+\.[^\s,]+)", line):
                return found[1]
        return running or "*"


class Copy:
    """A private copy of the sources with a build of its own."""

    def __init__(self, number):
        self.tree = FOLDER / str(number) / "tree"
        self.objects = FOLDER / str(number) / "objects"
        self.temporary = Path(tempfile.mkdtemp(prefix="sharpness-"))
        self.environment = {**os.environ, "TMPDIR": str(self.temporary)}
        self.environment.setdefault("CCACHE_BASEDIR", str(ROOT))
        self.environment.setdefault("CCACHE_NOHASHDIR", "1")
        self.programs = []
        self.processes = []

    def take_sources(self, names):
        wanted = set(names)
        for path in list(self.tree.rglob("*")):
            if path.is_file() and path.relative_to(self.tree).as_posix() not in wanted:
                path.unlink()
        for name in names:
            mine, theirs = self.tree / name, (ROOT / name).read_bytes()
            if not mine.is_file() or mine.read_bytes() != theirs:
                mine.parent.mkdir(parents=True, exist_ok=True)
                mine.write_bytes(theirs)

    def configure(self):
        if (self.objects / "build.ninja").is_file():
            return
        arguments = ["cmake", "-G", "Ninja", "-S", self.tree, "-B", self.objects,
                     # No optimising and no debug information: what counts is the time to build.
                     # No warnings: they shall not catch what the tests miss.
                     "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=",
                     "-DCMAKE_CXX_FLAGS=-O0 -w", "-DKELVANE_BENCH=OFF"]
        if shutil.which("ld.lld"):
            arguments.append("-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld")
        if shutil.which("ccache"):
            arguments.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
        subprocess.run(arguments, check=True, env=self.environment, stdout=subprocess.DEVNULL)

    def build(self, target, jobs):
        """What the builder says where it fails; empty where it is built."""
        run = subprocess.run(["cmake", "--build", self.objects, "--target", target, "--parallel",
                              str(jobs), "--", "-k", "0"], env=self.environment,
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        return run.stdout if run.returncode else ""

    def find_programs(self, baseline):
        listing = subprocess.run(["ctest", "--test-dir", self.objects, "--show-only=json-v1",
                                  "--label-exclude", SLOW_LABELS], check=True,
                                 env=self.environment, capture_output=True, text=True)
        programs = {}
        for test in json.loads(listing.stdout)["tests"]:
            if "command" not in test:
                continue  # of a test program that the quick tests leave out, and that isn't built
            properties = {entry["name"]: entry["value"] for entry in test["properties"]}
            path = Path(test["command"][0])
            if not path.is_relative_to(self.objects):
                continue  # a look at the sources, which every fault changes
            own = dict(entry.split("=", 1) for entry in properties.get("ENVIRONMENT", []))
            programs[path] = Program(path, properties["WORKING_DIRECTORY"], own,
                                     baseline.get(path.name, 0))
        self.programs = sorted(programs.values(), key=lambda program: program.seconds)
        if not self.programs:
            fail("found no test programs")

    def start(self, program, arguments=(), **environment):
        process = Process(program, {**self.environment, **program.environment, **environment},
                          arguments)
        self.processes.append(process)
        return process

    def clear(self):
        """Ends what still runs, and removes what it left behind."""
        for process in self.processes:
            process.stop()
        self.processes.clear()
        for left in self.temporary.iterdir():
            if left.is_dir() and not left.is_symlink():
                shutil.rmtree(left, ignore_errors=True)
            else:
                left.unlink(missing_ok=True)

    def failure_of(self, program, limit):
        """The first test of the program to fail; empty where none does."""
        shards = [self.start(program, GTEST_TOTAL_SHARDS=str(SHARDS), GTEST_SHARD_INDEX=str(i))
                  for i in range(SHARDS)]
        try:
            return self.first_failure(shards, limit) or ""
        finally:
            for shard in shards:
                shard.stop()

    @staticmethod
    def first_failure(processes, limit):
        end = time.monotonic() + limit
        while time.monotonic() < end:
            outcomes = [process.outcome() for process in processes]
            if False in outcomes:
                return processes[outcomes.index(False)].failed_test()
            if None not in outcomes:
                return None
            time.sleep(0.03)
        return HANGS + processes[outcomes.index(None)].failed_test()

    def fails_again(self, program, failure):
        """Whether what failed among the shards, or hung, does so alone as well. A machine that is
        busy for a while makes nothing hang twice running."""
        process = self.start(program, [f"--gtest_filter={failure.removeprefix(HANGS)}"])
        try:
            return self.first_failure([process], program.limit) is not None
        finally:
            process.stop()

    def caught_by(self, program, limit=None):
        """The first test of the program that fails, alone as well; empty where none does."""
        for _ in range(2):
            failure = self.failure_of(program, limit or program.limit)
            if not failure:
                return ""
            if self.fails_again(program, failure):
                return failure
        return ""

    def try_fault(self, fault, jobs):
        """The verdict, and what caught it or kept it from being built."""
        path = self.tree / fault.source
        original = path.read_text()
        lines = original.splitlines(keepends=True)
        place = place_of(fault, lines)
        indent = re.match(r"\s*", lines[place])[0]
        lines[place:place + len(fault.before)] = [f"{indent}{line}\n" for line in fault.after]
        path.write_text("".join(lines))
        try:
            own = [p for p in self.programs if p.path.parent.name == fault.room]
            for program in own:
                if complaint := self.build(program.target, jobs):
                    return NOT_BUILT, first_error(complaint)
                if caught := self.caught_by(program):
                    return CAUGHT, caught
            built_before = {p.path: p.path.stat().st_mtime_ns for p in self.programs}
            if complaint := self.build("quick_tests", jobs):
                return NOT_BUILT, first_error(complaint)
            for program in self.programs:
                sees_it = program.path.stat().st_mtime_ns != built_before[program.path]
                if sees_it and program not in own and (caught := self.caught_by(program)):
                    return CAUGHT, caught
            return SURVIVED, ""
        finally:
            path.write_text(original)
            self.clear()


def first_error(output):
    for line in output.splitlines():
        if "error:" in line:
            return line.split("error:", 1)[1].strip().replace("\t", " ")
    return "the build fails"


def prepare(copy, names, results, jobs):
    """Brings a copy up to date, and makes sure that its tests pass without a fault."""
    copy.take_sources(names)
    copy.configure()
    if complaint := copy.build("quick_tests", jobs):
        fail("the sources aren't built as they are\n" + complaint[-4000:])
    known = results.known.get("baseline")
    baseline = json.loads(known[3]) if known and known[1] == results.tree_digest else {}
    copy.find_programs(baseline)
    if baseline:
        return
    for program in copy.programs:
        begin = time.monotonic()
        if failure := copy.caught_by(program, limit=300):
            fail(f"without any fault {program.target} fails: {failure}")
        program.seconds = time.monotonic() - begin
    times = {program.target: round(program.seconds, 1) for program in copy.programs}
    results.add("baseline", "passed", results.tree_digest, sum(times.values()), json.dumps(times))


def table(faults, results):
    """Prints what is known of these faults; whether it is good enough."""
    rows = collections.defaultdict(collections.Counter)
    complaints = []
    for fault in faults:
        known = results.of(fault)
        verdict = known[0] if known else "to be tried"
        for row in (fault.room, "all"):
            rows[row][verdict] += 1
            rows[row]["explained"] += verdict == SURVIVED and bool(fault.reason)
        if verdict == SURVIVED and not fault.reason:
            complaints.append(f"survived:  {fault}")
        elif verdict == NOT_BUILT:
            complaints.append(f"not built: {fault}\n           {known[3]}")
        elif verdict == CAUGHT and fault.reason:
            complaints.append(f"caught, though a reason says why it can't be:  {fault}")
    print(f"\n{'room':12} {'faults':>7} {CAUGHT:>7} {SURVIVED:>9} {'explained':>10} "
          f"{NOT_BUILT:>10} {'to be tried':>12} {'in a hundred':>13}")
    rows["all"] = rows.pop("all")
    for room, row in rows.items():
        tried = row[CAUGHT] + row[SURVIVED]
        total = tried + row[NOT_BUILT] + row["to be tried"]
        share = f"{100 * row[CAUGHT] / tried:.1f}" if tried else "-"
        print(f"{room:12} {total:7} {row[CAUGHT]:7} {row[SURVIVED]:9} {row['explained']:10} "
              f"{row[NOT_BUILT]:10} {row['to be tried']:12} {share:>13}")
    print("\n".join(["", *complaints]) if complaints else "")
    total = rows["all"]
    enough = 100 * total[CAUGHT] >= LEAST * (total[CAUGHT] + total[SURVIVED])
    if not enough:
        print(f"sharpness: below {LEAST} in a hundred")
    return enough and not complaints and not total["to be tried"]


def chosen_faults(faults, arguments):
    first, last = 1, len(faults)
    if arguments.range:
        bounds = re.fullmatch(r"(\d+)-(\d+)", arguments.range) or fail("a range is like 20-40")
        first, last = int(bounds[1]), int(bounds[2])
    return [fault for fault in faults if first <= fault.number <= last
            and arguments.room in (None, fault.room)]


def run(faults, names, results, arguments):
    waiting = queue.Queue()
    for fault in faults:
        if results.of(fault) is None:
            waiting.put(fault)
    if waiting.empty():
        return
    end = time.monotonic() + arguments.minutes * 60 if arguments.minutes else float("inf")
    copies = [Copy(number + 1) for number in range(min(arguments.jobs, waiting.qsize()))]
    jobs = max(1, arguments.jobs // len(copies))
    stopping = threading.Event()

    def work(copy):
        while not stopping.is_set() and time.monotonic() < end:
            try:
                fault = waiting.get_nowait()
            except queue.Empty:
                return
            begin = time.monotonic()
            verdict, note = copy.try_fault(fault, jobs)
            seconds = time.monotonic() - begin
            if stopping.is_set():
                return
            results.add(fault.key, verdict, results.digest_for(fault, verdict), seconds, note)
            print(f"{verdict:9} {seconds:5.1f} s  {fault}" + (f"  [{note}]" if note else ""),
                  flush=True)

    try:
        for copy in copies:
            prepare(copy, names, results, arguments.jobs)
        workers = [threading.Thread(target=work, args=(copy,), daemon=True) for copy in copies]
        for worker in workers:
            worker.start()
        for worker in workers:
            worker.join()
    finally:
        stopping.set()
        for copy in copies:
            copy.clear()
            copy.temporary.rmdir()


def main():
    parser = argparse.ArgumentParser(
        prog="test.sh sharpness", description=__doc__,
        formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--room", help="only the faults of this folder of src/")
    parser.add_argument("--range", help="only the faults of these numbers, as in 20-40")
    parser.add_argument("--minutes", type=float, help="begin with no further fault after so long")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(),
                        help="how many faults to try at a time, each in a copy of its own")
    parser.add_argument("--fresh", action="store_true", help="forget what was found before")
    parser.add_argument("--list", action="store_true", help="run nothing, print the faults")
    arguments = parser.parse_args()

    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    faults, without = read_list()
    check_list(faults, without)
    faults = chosen_faults(faults, arguments)
    if not faults:
        fail("no fault is chosen")
    if arguments.list:
        print("\n".join(map(str, faults)))
        return
    FOLDER.mkdir(parents=True, exist_ok=True)
    if arguments.fresh:
        RESULTS.unlink(missing_ok=True)
    names = tracked_files()
    results = Results(digest_of([ROOT / n for n in names if n.startswith(("src/", "tests/"))
                                 and n != LIST.relative_to(ROOT).as_posix()]))
    run(faults, names, results, arguments)
    sys.exit(0 if table(faults, results) else 1)


if __name__ == "__main__":
    main()
