"""tovcatalog, killed at any moment of create."""

import random
import resource
import signal
import statistics
import subprocess
import time

from catalogue import CATALOGUE, Figure, Place, require, without_log

# What a kill can find.
NOTHING_YET = "before the new file"
UNFINISHED = "with an unfinished file"
FINISHED = "with a finished file not yet in place"
IN_PLACE = "with the new catalogue in place"

# System calls at which a run is killed, each as often as it makes them.
CALLS = ("openat", "write", "read", "close", "flock", "fsync", "rename", "lseek", "munmap", "fchmod", "exit_group")


def create(place):
    return place.command("create", CATALOGUE, place.tree, "--threads", "2")


def duration(place):
    times = []
    for _ in range(15):
        start = time.monotonic()
        subprocess.run(create(place), cwd=place.folder, stdout=subprocess.DEVNULL, check=True)
        times.append(time.monotonic() - start)
        place.restore()
    return statistics.median(times)


def state(place):
    if place.catalogue() == place.new:
        return IN_PLACE
    if not place.names():
        return NOTHING_YET
    return FINISHED if (place.folder / place.names()[0]).read_bytes() == place.new else UNFINISHED


def check_killed(place, returncode, errors, figure):
    place.require_whole()
    if returncode == 0:
        require(place.catalogue() == place.new, "success means the new catalogue")
        figure.note("ended before the kill")
    elif returncode > 0 and returncode != 128 + signal.SIGKILL:
        require(errors.strip(), "a failure is told")
    else:
        figure.note(state(place))
    require(len(place.names()) <= 1, f"one file at most is left: {place.names()}")
    place.require_clean_next_run()


def kill_by_clock(place, moment, figure):
    start = time.monotonic()
    with subprocess.Popen(create(place), cwd=place.folder, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE) as process:
        # Sleeping is not exact enough near the end.
        while (left := start + moment - time.monotonic()) > 0:
            time.sleep(left - 0.0005 if left > 0.001 else 0)
        process.kill()
        errors = process.stderr.read()
    check_killed(place, process.returncode, errors, figure)


def kill_at_call(place, call, number, figure):
    run = subprocess.run(["strace", "-f", "-qq", "-o", "/dev/null", "-e", f"trace={call}", "-e",
                          f"inject={call}:signal=KILL:when={number}", *create(place)], cwd=place.folder,
                         stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=False)
    check_killed(place, run.returncode, without_log(run.stderr), figure)


def kill_while_writing(place, byte, figure):
    """The system ends a process that writes beyond a limit, after it has taken the bytes below the limit."""
    def prepare():
        resource.setrlimit(resource.RLIMIT_FSIZE, (byte, byte))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

    run = place.run("create", CATALOGUE, place.tree, preexec_fn=prepare)
    require(run.returncode < 0 or byte >= len(place.new), f"the run is ended: {run}")
    check_killed(place, run.returncode, run.stderr, figure)


def count_calls(place):
    """How often one thread of a run makes each call."""
    counts = {}
    for call in CALLS:
        log = place.folder / "calls.log"
        subprocess.run(["strace", "-f", "-qq", "-o", log, "-e", f"trace={call}", *create(place)], cwd=place.folder,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
        threads = [line.split()[0] for line in log.read_text().splitlines()]
        counts[call] = max(map(threads.count, set(threads)), default=0)
        log.unlink()
        place.restore()
    return counts


def attack(program, kills, by_call):
    place = Place(program)
    chance = random.Random(20)
    figure = Figure("kills of create", "the earlier catalogue or the new one whole, nothing left after the next run")
    at_calls = 0
    if by_call:
        counts = count_calls(place)
        calls = [call for call in CALLS if counts[call] > 0]
        for number in range(kills // 4):
            call = calls[number % len(calls)]
            figure.attempt(kill_at_call, place, call, chance.randint(1, counts[call]), figure)
            at_calls += 1
    writing = kills // 10
    for _ in range(writing):
        figure.attempt(kill_while_writing, place, chance.randrange(len(place.new)), figure)
    length = duration(place)
    for _ in range(kills - at_calls - writing):
        figure.attempt(kill_by_clock, place, chance.uniform(0, 1.1 * length), figure)
    print(f"detail | full-disk | Of {figure.runs} kills, {at_calls} were at a system call, {writing} inside the write "
          f"of the new file, and all others at a random moment of the {1000 * length:.0f} ms that a run takes.")
    # A few kills need not meet every moment.
    return figure.tell(kills < 500 or all(figure.notes.get(name, 0) > 0
                                          for name in (NOTHING_YET, UNFINISHED, FINISHED, IN_PLACE)))
