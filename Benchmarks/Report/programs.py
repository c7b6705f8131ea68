"""Runs the benchmark programs in turns and keeps what they measured."""

import json
import os
import re
import statistics
import subprocess
import time
from pathlib import Path

KERNEL = "TOVKernel"

# Rows in which threads meet. What they need depends on how the system schedules them, so that they are run more often.
CONTENDED = re.compile(r"queue/\dP\dC|contended lock")
ROUNDS_CONTENDED = 20

# How many undisturbed runs a row without threads shall have, and the seconds after which no more are tried. Where one of
# those that are compared has fewer than LEAST_QUIET of them, the disturbed runs of all of them count as well.
ROUNDS = 7
LONGEST = 360
LEAST_QUIET = 5

# What a program writes to a run during which something outside the machine used the processor too.
DISTURBED = "disturbed"

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
        self.quiet = []  # nanoseconds for one operation
        self.disturbed = []
        self.counts_all = False
        self.size = None  # bytes that an operation covers

    @property
    def times(self):
        return self.quiet + self.disturbed if self.counts_all else self.quiet

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
        duration = run["real_time" if "real_time" in name or "manual_time" in name else "cpu_time"]
        duration *= {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}[run["time_unit"]]
        if "items_per_second" in run:
            duration = 1e9 / run["items_per_second"]
        if "bytes_per_second" in run:
            self.size = run["bytes_per_second"] * duration * 1e-9
        (self.disturbed if run.get("label") == DISTURBED else self.quiet).append(duration)


class Program:
    """A benchmark program, and the names of what it measures."""

    def __init__(self, path, emulator=()):
        self.command = [*emulator, str(path)]
        self.name = Path(path).stem
        listing = self._run("--benchmark_list_tests=true")
        self.benchmarks = [line for line in listing.splitlines() if "|" in line]

    def probe(self):
        """The nanoseconds of the probe on a quiet processor."""
        return float(self._run("--probe"))

    def run(self, names, min_time, quiet_limit=None):
        """Runs the named benchmarks once. Returns the entries of the report."""
        # The benchmark library reads a pattern, in which any sign that is not a letter may mean something.
        names = "|".join(re.sub(r"[^\w/ ]", ".", name) for name in names)
        report = self._run("--benchmark_filter=^(" + names + ")$", "--benchmark_min_time=" + str(min_time),
                           "--benchmark_format=json", quiet_limit=quiet_limit)
        runs = json.loads(report)["benchmarks"]
        failed = [run for run in runs if run.get("error_occurred") and run["error_message"] != TOO_SLOW]
        if failed:
            raise RuntimeError(f"{self.name}: {failed[0]['name']}: {failed[0]['error_message']}")
        return [run for run in runs if not run.get("error_occurred")]

    def _run(self, *options, quiet_limit=None):
        environment = {**os.environ, "TOV_BENCH_QUIET": str(quiet_limit)} if quiet_limit else None
        done = subprocess.run([*self.command, *options], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, text=True, check=False, timeout=TIMEOUT, env=environment)
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


def find_quiet_limit(programs):
    """The time up to which the probe tells of a quiet processor: a neighbour makes it a third longer, or more."""
    return 1.12 * programs[0].probe()


def measure(programs, filters=(), rounds=ROUNDS, rounds_contended=ROUNDS_CONTENDED, min_time=0.02, quiet_limit=None,
            progress=None):
    """Runs all wanted rows. Returns a measurement for each name, "row|who"."""
    results = {}
    end = time.monotonic() + LONGEST
    for contended, least in ((False, rounds), (True, rounds_contended)):
        families = group_by_family(programs, filters, contended)
        number = 0
        while families and (number < least or time.monotonic() < end):
            # A family at a time, so that what is compared is measured within seconds. The rounds go over all families, so
            # that a slow minute of the machine spoils some runs of every row, and not all the runs of one.
            for members in families:
                for program, benchmarks in members.items():
                    take_over(results, program.run(benchmarks, min_time, None if contended else quiet_limit))
            number += 1
            if progress:
                progress(f"round {number}" + (" where threads meet" if contended else ""))
            if number >= least:
                families = still_disturbed(families, results, least)
    return results


def still_disturbed(families, results, least):
    """Returns what has fewer undisturbed runs than it shall have."""
    def left(benchmarks):
        return [one for one in benchmarks if len(results[OPTIONS.sub("", one)].quiet) < least]

    rest = [{program: left(benchmarks) for program, benchmarks in members.items()} for members in families]
    rest = [{program: benchmarks for program, benchmarks in members.items() if benchmarks} for members in rest]
    return [members for members in rest if members]


def group_by_family(programs, filters, contended):
    """Returns, for each family, the wanted benchmarks of each program."""
    families = {}
    for program in programs:
        for benchmark in program.benchmarks:
            if is_wanted(benchmark, filters) and (CONTENDED.search(benchmark) is not None) == contended:
                family = families.setdefault(row_of(benchmark).split("/")[0], {})
                family.setdefault(program, []).append(benchmark)
    return [members for _, members in sorted(families.items())]


def take_over(results, runs):
    for run in runs:
        results.setdefault(OPTIONS.sub("", run["name"]), Measurement()).add(run)
