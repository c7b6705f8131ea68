"""Measures everything and writes the page, or measures some rows and prints them. ./bench calls this."""

import argparse
import os
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import targets
from catalogue import measure_catalogue
from growth import measure_growth
from machine import busy_share, machine_facts, measure_memory, measure_start, stripped_size
from page import print_table, totals, write_page
from programs import find_programs, find_quiet_limit, measure

PROJECT = Path(__file__).resolve().parents[2]
START = time.monotonic()

# What is asked there is whether anything is slower by an order of magnitude.
WINDOWS_ROUNDS = 3


def progress(text):
    print(f"{time.monotonic() - START:5.0f} s  {text}", flush=True)


def read_arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("--linux", type=Path, required=True, help="the folder with the native programs")
    parser.add_argument("--windows", type=Path, help="the folder with the Windows programs")
    parser.add_argument("--packages", nargs="*", default=[], help="whose versions the page names")
    parser.add_argument("--rounds", type=int)
    parser.add_argument("--print", action="store_true", help="print the rows, and write nothing")
    parser.add_argument("filters", nargs="*", help="parts of the names of rows")
    return parser.parse_args()


def measure_rows(label, programs, filters, **options):
    results = measure(programs, filters, progress=lambda what: progress(f"{label}: {what}"), **options)
    rows = targets.read_targets(PROJECT / "Benchmarks" / "Targets.txt")
    return targets.fill(rows, results), rows, results


def print_rows(arguments):
    options = {"rounds": arguments.rounds, "rounds_contended": arguments.rounds} if arguments.rounds else {}
    programs = find_programs(arguments.linux)
    # Who wants a quick look does not wait for a quiet processor.
    quiet_limit = None if arguments.rounds else find_quiet_limit(programs)
    rows, _, _ = measure_rows("rows", programs, arguments.filters, quiet_limit=quiet_limit, **options)
    if not rows:
        print("no row has a name with " + " or ".join(arguments.filters), file=sys.stderr)
        return 1
    print_table(rows)
    return 0


def measure_windows(arguments):
    emulator = [str(PROJECT / "CMake" / "wine-run")]
    programs = find_programs(arguments.windows, emulator, ".exe")
    rows, _, _ = measure_rows("rows on Windows", programs, (), min_time=0.005, rounds=WINDOWS_ROUNDS,
                              rounds_contended=WINDOWS_ROUNDS)
    progress("growth on Windows")
    return rows, measure_growth(programs)


def write(arguments, place):
    busy = busy_share()
    if busy > 0.1:
        progress(f"other programs use {busy:.0%} of the processors: what is measured is noisy")
    programs = find_programs(arguments.linux)
    rows, all_rows, results = measure_rows("rows", programs, (), quiet_limit=find_quiet_limit(programs))
    problems = targets.complain(all_rows, results)
    if problems:
        print("\n".join(problems), file=sys.stderr)
        return 1
    progress("growth")
    series = measure_growth(programs)
    progress("start and end of a program, memory")
    start = measure_start(arguments.linux)
    memory = measure_memory(arguments.linux)
    catalogue = measure_catalogue(arguments.linux, place, lambda what: progress("tovcatalog: " + what))
    sizes = {"Linux, libTOVKernel.so": stripped_size(arguments.linux / "libTOVKernel.so", "strip")}
    windows = None
    if arguments.windows:
        windows = measure_windows(arguments)
        sizes["Windows, TOVKernel.dll"] = stripped_size(arguments.windows / "TOVKernel.dll", "i686-w64-mingw32-strip")
    remarks = targets.read_remarks(PROJECT / "Benchmarks" / "Remarks.md")
    facts = machine_facts(arguments.packages)
    write_page(PROJECT / "Documentation", facts, rows, remarks, windows, series, catalogue, start, memory, sizes)
    progress("written: Documentation/Performance.md")
    print(totals(rows).replace("*", ""))
    return 0


def main():
    arguments = read_arguments()
    # Files are in memory, where a disk's speed does not count.
    memory = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
    with tempfile.TemporaryDirectory(prefix="tov-bench-", dir=memory) as place:
        os.environ["TOV_BENCH_FOLDER"] = place
        try:
            return print_rows(arguments) if arguments.print or arguments.filters else write(arguments, place)
        except subprocess.CalledProcessError as error:
            print(f"{error.cmd[0]} ended with {error.returncode}: {error.stderr}", file=sys.stderr)
        except (RuntimeError, subprocess.TimeoutExpired) as error:
            print(error, file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(main())
