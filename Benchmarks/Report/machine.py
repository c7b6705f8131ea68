"""What the machine is, and what is measured from outside: memory, sizes, and the start and the end of a program."""

import json
import os
import platform
import re
import shutil
import statistics
import subprocess
import tempfile
import time
from pathlib import Path


def run(*command):
    return subprocess.run([str(word) for word in command], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, text=True, check=True).stdout


def first_line(*command):
    return run(*command).splitlines()[0]


def machine_facts(packages):
    """Returns pairs of a name and a text."""
    processor = re.search(r"^model name\s*:\s*(.*)$", Path("/proc/cpuinfo").read_text(encoding="utf-8"), re.M)
    flags = set(re.search(r"^flags\s*:\s*(.*)$", Path("/proc/cpuinfo").read_text(encoding="utf-8"), re.M)[1].split())
    memory = re.search(r"^MemTotal:\s*(\d+)", Path("/proc/meminfo").read_text(encoding="utf-8"), re.M)
    system = re.search(r'^PRETTY_NAME="(.*)"$', Path("/etc/os-release").read_text(encoding="utf-8"), re.M)
    wide = [flag for flag in ("sse4_2", "avx2", "pclmulqdq", "vpclmulqdq", "avx512f") if flag in flags]
    facts = [
        ("processor", f"{processor[1] if processor else platform.machine()}, {os.cpu_count()} processors"),
        ("instructions", ", ".join(wide)),
        ("memory", f"{int(memory[1]) / 2**20:.0f} GB"),
        ("system", f"{system[1] if system else platform.system()}, Linux {platform.release()}"),
        ("compiler", first_line("g++", "--version")),
    ]
    versions = run("dpkg-query", "-W", "-f", "${Package} ${Version}\\n", *packages)
    facts.append(("peers", ", ".join(sorted(versions.splitlines()))))
    return facts


def busy_share():
    """How much of the processors' time other programs use, by a look of a second."""
    def times():
        numbers = [int(word) for word in Path("/proc/stat").read_text(encoding="utf-8").splitlines()[0].split()[1:]]
        return numbers[3] + numbers[4], sum(numbers)

    idle, total = times()
    time.sleep(1)
    idle_later, total_later = times()
    return 1 - (idle_later - idle) / (total_later - total)


class Timing:
    """What a command needed, over all its runs."""

    def __init__(self, line):
        report = json.loads(line)
        self.seconds = statistics.median(report["seconds"])
        self.processor = statistics.median(report["processor"])
        self.peak = report["peak"]  # KB


def stopwatch(folder, rounds, commands):
    """Runs the commands in turns. Returns a timing for each."""
    words = []
    for command in commands:
        words += ["---", *command]
    lines = run(folder / "Stopwatch", rounds, *words[1:]).splitlines()
    return [Timing(line) for line in lines]


def measure_start(folder):
    """Returns the milliseconds that a program needs from start to end, without the library and with it."""
    runtime, kernel = stopwatch(folder, 200, [[folder / "StartRuntime"], [folder / "StartKernel"]])
    return runtime.seconds * 1e3, kernel.seconds * 1e3


def measure_memory(folder):
    """Returns {what: {who: bytes}}."""
    memory = {}
    for case in range(6):
        what, who, size = run(folder / "MemoryUse", case).strip().split("|")
        memory.setdefault(what, {})[who] = int(size)
    return memory


def stripped_size(library, strip):
    """The library's size in bytes without symbols and debugging information."""
    with tempfile.TemporaryDirectory() as place:
        copy = Path(place) / "library"
        shutil.copyfile(library, copy)
        run(strip, copy)
        return copy.stat().st_size
