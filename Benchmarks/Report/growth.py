"""How the work grows with its size: the measured exponents, beside those that the headers promise."""

import math
from dataclasses import dataclass

from programs import take_over

MIN_TIME = 0.005
ROUNDS = 3

# The exponent of the size with which a series may grow, by the beginning of its name.
EXPECTED = [
    ("narrow text: ", 1, "linear"),
    ("wide text: ", 1, "linear"),
    ("array: Sort", 1, "n log n"),
    ("array: ", 1, "linear"),
    ("bits: ", 1, "linear"),
    ("classes: ", 0.1, "one search"),
    ("listeners: ", 1, "linear"),
    ("path: ", 1, "linear"),
    ("open files: Read", 0, "constant"),
    ("open files: ", 1, "linear: the lowest free slot"),
]
# What caches and a logarithm add.
TOLERANCE = 0.3


@dataclass
class Series:
    name: str
    promise: str
    expected: float
    points: list  # (size, nanoseconds), by size
    complete: bool  # no size was left out

    @property
    def exponent(self):
        """The slope between logarithms, by least squares over the largest sizes, at which no constant part counts."""
        points = [(math.log(size), math.log(time)) for size, time in self.points[-3:]]
        mean_x = sum(x for x, _ in points) / len(points)
        mean_y = sum(y for _, y in points) / len(points)
        spread = sum((x - mean_x) ** 2 for x, _ in points)
        return sum((x - mean_x) * (y - mean_y) for x, y in points) / spread if spread else 0.0

    @property
    def is_too_steep(self):
        return not self.complete or self.exponent > self.expected + TOLERANCE


def measure_growth(programs, rounds=ROUNDS):
    """Returns the series, in the order of the program."""
    program = next(program for program in programs if program.name == "BenchGrowth")
    results = {}
    for _ in range(rounds):
        take_over(results, program.run(program.benchmarks, MIN_TIME))
    sizes = {}
    for benchmark in program.benchmarks:
        name, size = benchmark.removeprefix("growth/").split("|")
        sizes.setdefault(name, []).append(int(size))
    series = []
    for name, all_sizes in sizes.items():
        points = [(size, results[f"growth/{name}|{size}"].time) for size in all_sizes
                  if f"growth/{name}|{size}" in results]
        _, expected, promise = next(entry for entry in EXPECTED if name.startswith(entry[0]))
        series.append(Series(name, promise, expected, points, len(points) == len(all_sizes)))
    return series
