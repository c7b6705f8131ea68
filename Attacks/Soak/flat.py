#!/usr/bin/env python3
"""Tells whether the samples of a soak are flat, as figures of the row "soak".

Flat means, of the samples after the first minute: the line fitted to the resident memory rises by less than 1 KB in a
minute, the highest sample of the last sixth is within 64 KB of that of the first sixth, and descriptors, threads and the
library's own handles have not grown; of the latter, too, the highest samples of both sixths are compared, since some are
open for a moment. Of the threads of the library that were started, the handles stay open as is
described: each counts as one own handle, and its memory, which was measured apart, is not counted.
"""

import argparse
from dataclasses import dataclass
from pathlib import Path

MAX_SLOPE = 1.0  # KB a minute
MAX_RISE = 64.0  # KB
LONG_SECONDS = 240.0  # below this, chance has more weight than what a line is to show


@dataclass
class Sample:
    second: float
    resident: float
    proportional: float
    handles: int
    threads: int
    own_handles: int
    started: int
    rounds: int


def read_samples(text):
    samples = []
    for line in text.splitlines():
        words = line.split()
        if len(words) == 9 and words[0] == "sample":
            samples.append(Sample(*(float(word) for word in words[1:4]), *(int(word) for word in words[4:])))
    return samples


def slope_of(points):
    """The slope of the line through the points that makes the squares of the distances smallest."""
    mean_x = sum(x for x, _ in points) / len(points)
    mean_y = sum(y for _, y in points) / len(points)
    square = sum((x - mean_x) ** 2 for x, _ in points)
    return sum((x - mean_x) * (y - mean_y) for x, y in points) / square if square else 0.0


def tell(what, figure, wanted, holds):
    print(f"figure | soak | {what} | {figure} | {wanted} | {'yes' if holds else 'no'}")


def highest_of_sixths(values):
    """The highest of the first sixth and of the last one."""
    sixth = max(len(values) // 6, 1)
    return max(values[:sixth]), max(values[-sixth:])


def tell_memory(system, samples, kept):
    if not any(sample.resident for sample in samples):
        print(f"detail | soak | {system} tells no resident memory of a process.")
        return
    points = [(sample.second / 60, sample.resident - sample.started * kept / 1024) for sample in samples]
    first, last = highest_of_sixths([y for _, y in points])
    tell(f"resident memory on {system}, the last sixth above the first", f"{last - first:+.0f} KB of {last:.0f} KB",
         f"<= {MAX_RISE:.0f} KB", last - first <= MAX_RISE)
    if samples[-1].second >= LONG_SECONDS:
        slope = slope_of(points)
        tell(f"slope of resident memory on {system}", f"{slope:+.2f} KB a minute", f"< {MAX_SLOPE:.0f} KB a minute",
             slope < MAX_SLOPE)


def tell_handles(system, samples):
    first, last = samples[0], samples[-1]
    limit, _ = highest_of_sixths([sample.handles for sample in samples])
    grown = max(sample.handles for sample in samples) - limit
    if limit > 0:
        tell(f"open handles of the system on {system}, grown by", grown, "0", grown <= 0)
    else:
        print(f"detail | soak | {system} tells no number of handles; a new handle has a higher value if others are left.")
    grown = last.threads - first.threads
    tell(f"threads on {system}, grown by", grown, "0", grown <= 0)
    # A thread of the library keeps its handle; on Windows, such values are multiples of 4.
    step = 4 if system == "Windows" else 1
    limit, highest = highest_of_sixths([sample.own_handles - step * sample.started for sample in samples])
    grown = highest - limit
    tell(f"own handles on {system}, grown by", grown, "0", grown <= 0)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("system")
    parser.add_argument("log", type=Path)
    parser.add_argument("--kept", type=float, default=0.0, help="bytes that each started thread keeps")
    arguments = parser.parse_args()

    text = arguments.log.read_text(encoding="utf-8", errors="replace")
    samples = read_samples(text)
    wrong = [line for line in text.splitlines() if line.startswith("wrong ")]
    tell(f"results that were wrong on {arguments.system}", wrong[0].split()[1] if wrong else "the run ended early", "0",
         bool(wrong) and wrong[0].split()[1] == "0")
    duration = samples[-1].second if samples else 0
    samples = [sample for sample in samples if sample.second >= min(60, duration / 3)]
    if not samples:
        return
    print(f"detail | soak | {arguments.system}: {samples[-1].rounds} rounds of all parts in {duration:.0f} seconds, "
          f"{samples[-1].started} threads of the library started, each of which keeps {arguments.kept:.0f} bytes; the "
          f"proportional share of memory was {samples[-1].proportional:.0f} KB in the end.")
    tell_memory(arguments.system, samples, arguments.kept)
    tell_handles(arguments.system, samples)


if __name__ == "__main__":
    main()
