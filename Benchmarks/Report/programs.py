"""Runs the benchmark programs in turns and keeps what they measured."""

import json
import os
import re
import statistics
import subprocess
from pathlib import Path

KERNEL = "TOVKernel"

# Rows in which threads meet. What they need depends on how the system schedules them, so that they are run more often.
CONTENDED = re.compile(r"queue/\dP\dC|contended lock")
ROUNDS = 5
ROUNDS_CONTENDED = 20

# A row whose runs lie further apart than this, measured from the lower to the upper quartile, is called noisy.
NOISY = 0.15

# The seconds after which a program hangs.
TIMEOUT = 600

# A step of a growing series that was left out, as the one before it took long.
TOO_SLOW = "too slow"

# What the benchmark library appends to a name.
OPTIONS = re.compile(r"(/(real_time|manual_time|iterations:\d+))+$")


class Measurement:
    """What one benchmark needed in each run."""

    def __init__(self):
        self.times = []  # nanoseconds for one operation
        self.size = None  # bytes that an operation covers

    @property
    def time(self):
        return statistics.median(self.times)

    @property
    def worst(self):
        return max(self.times)

    @property
    def spread(self):
        if len(self.times) < 4:
            return 0.0
        quartiles = statistics.quantiles(self.times, n=4)
        return (quartiles[2] - quartiles[0]) / self.time

    def add(self, run):
        """Takes over one entry of the benchmark library's report."""
        name = run["name"]
        time = run["real_time" if "real_time" in name or "manual_time" in name else "cpu_time"]
        time *= {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}[run["time_unit"]]
        if "items_per_second" in run:
            time = 1e9 / run["items_per_second"]
        if "bytes_per_second" in run:
            self.size = run["bytes_per_second"] * time * 1e-9
        self.times.append(time)


class Program:
    """A benchmark program, and the names of what it measures."""

    def __init__(self, path, emulator=()):
        self.command = [*emulator, str(path)]
        self.name = Path(path).stem
        listing = self._run("--benchmark_list_tests=true")
        self.benchmarks = [line for line in listing.splitlines() if "|" in line]

    def run(self, names, min_time):
        """Runs the named benchmarks once. Returns the entries of the report."""
        # The benchmark library reads a pattern, in which any sign that is not a letter may mean something.
        names = "|".join(re.sub(r"[^\w/ ]", ".", name) for name in names)
        report = self._run("--benchmark_filter=^(" + names + ")$", "--benchmark_min_time=" + str(min_time),
                           "--benchmark_format=json")
        runs = json.loads(report)["benchmarks"]
        failed = [run for run in runs if run.get("error_occurred") and run["error_message"] != TOO_SLOW]
        if failed:
            raise RuntimeError(f"{self.name}: {failed[0]['name']}: {failed[0]['error_message']}")
        return [run for run in runs if not run.get("error_occurred")]

    def _run(self, *options):
        done = subprocess.run([*self.command, *options], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, text=True, check=False, timeout=TIMEOUT)
        if done.returncode != 0:
            raise RuntimeError(f"{self.name} ended with {done.returncode}: {done.stderr[-2000:]}")
        return done.stdout


def find_programs(folder, emulator=(), suffix=""):
    """The library's programs come first, so that each round begins with them."""
    paths = [path for pattern in ("Bench*", "Peer*") for path in sorted(Path(folder).glob(pattern + suffix))]
    return [Program(path, emulator) for path in paths if path.suffix == suffix and os.access(path, os.X_OK)]


def row_of(benchmark):
    return benchmark.split("|")[0]


def is_wanted(benchmark, filters):
    if benchmark.startswith("growth/"):
        return False
    return not filters or any(re.search(r"(^|[/ (])" + re.escape(part), row_of(benchmark)) for part in filters)


def measure(programs, filters=(), rounds=ROUNDS, rounds_contended=ROUNDS_CONTENDED, min_time=0.02, progress=None):
    """Runs all wanted rows. Returns a measurement for each name, "row|who"."""
    results = {}
    # A family at a time, so that what is compared is measured within seconds, and the contended rows for themselves.
    groups = {}
    for program in programs:
        for benchmark in program.benchmarks:
            if is_wanted(benchmark, filters):
                contended = CONTENDED.search(benchmark) is not None
                group = groups.setdefault((row_of(benchmark).split("/")[0], contended), {})
                group.setdefault(program, []).append(benchmark)
    for (family, contended), members in sorted(groups.items(), key=lambda group: (group[0][1], group[0][0])):
        count = rounds_contended if contended else rounds
        if progress:
            progress(family + (", contended" if contended else ""), count)
        for _ in range(count):
            for program, benchmarks in members.items():
                take_over(results, program.run(benchmarks, min_time))
    return results


def take_over(results, runs):
    for run in runs:
        results.setdefault(OPTIONS.sub("", run["name"]), Measurement()).add(run)
