"""tovcatalog from end to end, beside other programs that read the same files."""

import os
import shutil
from dataclasses import dataclass
from pathlib import Path

from machine import stopwatch

ROUNDS = 3
SMALL_FILES = 100_000
SMALL_SIZE = 1024
LARGE_FILES = 4
LARGE_SIZE = 128 * 2**20


@dataclass
class Result:
    name: str
    timing: object
    files: int
    size: int  # bytes


def make_small_files(folder, count):
    """A tree of folders with 250 files each."""
    content = os.urandom(SMALL_SIZE + 256)
    for number in range(count):
        if number % 250 == 0:
            place = folder / f"{number // 5000:03}" / f"{number:06}"
            place.mkdir(parents=True)
        start = number % 256
        with open(place / f"{number:06}.dat", "wb") as file:
            file.write(content[start:start + SMALL_SIZE])


def make_large_files(folder):
    folder.mkdir(parents=True)
    with open(folder / "0.dat", "wb") as file:
        for _ in range(LARGE_SIZE // 2**20):
            file.write(os.urandom(2**20))
    for number in range(1, LARGE_FILES):
        shutil.copyfile(folder / "0.dat", folder / f"{number}.dat")


def commands_for(program, tree, place):
    """Pairs of a name and a command."""
    catalogs = [str(place / f"{threads}.catalog") for threads in (1, 2)]
    create = [[program, "create", "--threads", str(threads), catalogs[threads - 1], tree] for threads in (1, 2)]
    return [
        ("tovcatalog create, 1 thread", create[0]),
        ("tovcatalog create, 2 threads", create[1]),
        ("tovcatalog verify, 2 threads", [program, "verify", "--threads", "2", catalogs[1]]),
        ("rhash --crc32", ["rhash", "--crc32", "-r", tree]),
        ("7z h, 1 thread", ["7z", "h", "-scrccrc32", "-mmt1", tree]),
        ("7z h, 2 threads", ["7z", "h", "-scrccrc32", "-mmt2", tree]),
        ("cksum (POSIX CRC)", ["sh", "-c", 'find "$1" -type f -exec cksum {} +', "sh", tree]),
        ("cksfv", ["cksfv", "-q", "-R", tree]),
    ]


def measure_tree(folder, tree, place, files, size):
    commands = commands_for(folder / "tovcatalog", tree, place)
    timings = stopwatch(folder, ROUNDS, [command for _, command in commands])
    return [Result(name, timing, files, size) for (name, _), timing in zip(commands, timings)]


def measure_catalogue(folder, place, progress):
    """Returns the results for small files and for large ones, and the KB that a file needs in memory."""
    place = Path(place) / "catalogue"
    place.mkdir()
    try:
        progress(f"tree of {SMALL_FILES:,} small files")
        small = place / "small"
        few = place / "few"
        make_small_files(small, SMALL_FILES)
        make_small_files(few, 250)
        small_results = measure_tree(folder, small, place, SMALL_FILES, SMALL_FILES * SMALL_SIZE)
        least = stopwatch(folder, 1, [[folder / "tovcatalog", "create", place / "few.catalog", few]])[0]
        shutil.rmtree(small)
        progress(f"{LARGE_FILES} large files")
        large = place / "large"
        make_large_files(large)
        large_results = measure_tree(folder, large, place, LARGE_FILES, LARGE_FILES * LARGE_SIZE)
    finally:
        shutil.rmtree(place)
    per_file = (small_results[0].timing.peak - least.peak) / (SMALL_FILES - 250)
    return small_results, large_results, per_file
